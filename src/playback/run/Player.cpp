#include "playback/run/Player.h"

#include "media/index/SampleTables.h"
#include "playback/run/PlayerEngine.h"

#include <utility>

namespace daylark {

Player::Player(PlaybackClock& clock, QObject* parent, qint64 cacheBudget, SoundOutput* sound,
               std::shared_ptr<SampleTables> tables)
    : QObject(parent)
    , engine_(std::make_unique<Engine>(*this, clock, cacheBudget, sound,
                                       tables ? std::move(tables) : std::make_shared<SampleTables>())) {
    engine_->setVolume(engine_->volume_);
}

Player::~Player() = default;

void Player::open(const QString& path, const MovieSound& sound) {
    engine_->open(path, sound);
}
void Player::renew(const QString& path, const std::vector<qint64>& changed, const MovieSound& sound) {
    std::vector<qint64> frames;
    for (const qint64 number : changed)
        frames.push_back(number - 1);
    engine_->renew(path, frames, sound);
}
void Player::setSound(const MovieSound& sound) {
    engine_->run_.setSound(sound);
}
void Player::close() {
    engine_->close();
}
const std::shared_ptr<SampleTables>& Player::sampleTables() const {
    return engine_->tables_;
}
bool Player::isOpen() const {
    return engine_->open_;
}
const SampleIndex& Player::index() const {
    return *engine_->index_;
}
MediaTime Player::duration() const {
    return engine_->index_->duration();
}
MediaTime Player::currentTime() const {
    return {engine_->ticks_, engine_->index_->timeScale};
}
void Player::setCurrentTime(const MediaTime& time) {
    engine_->moveTo(time);
}
qint64 Player::currentFrame() const {
    return engine_->frame_ + 1;
}
bool Player::pictureIsCurrent() const {
    return engine_->open_ && engine_->shownNumber_ == engine_->frame_;
}
float Player::rate() const {
    return engine_->rate_;
}
void Player::setRate(float rate) {
    engine_->setRate(rate);
}
void Player::gotoBeginning() {
    engine_->moveTo({0, 1});
}
void Player::stepForward() {
    engine_->step(1);
}
void Player::stepBackward() {
    engine_->step(-1);
}
bool Player::isRolling() const {
    return engine_->rolling_;
}
void Player::setLoops(bool loops) {
    engine_->setLoops(loops);
}
void Player::setRange(qint64 first, qint64 last, RangeEnd atEnd) {
    engine_->setRange({first - 1, last - 1}, atEnd);
}
void Player::setNeighbours(std::vector<NeighbourMovie> movies) {
    engine_->neighbours_.want(std::move(movies));
}
void Player::setDragging(bool dragging) {
    engine_->setDragging(dragging);
}
void Player::setCacheBudget(qint64 bytes) {
    engine_->setCacheBudget(bytes);
}
void Player::setVolume(float volume) {
    engine_->setVolume(volume);
}
float Player::volume() const {
    return engine_->volume_;
}
VideoFrame Player::shownFrame() const {
    return engine_->shown_;
}
void Player::tick() {
    engine_->tick();
}

PlayerStatistics Player::statistics() const {
    const Engine& engine = *engine_;
    PlayerStatistics statistics;
    statistics.rateReached = engine.tally_.rate(engine.clock_.nanoseconds());
    statistics.shown = engine.tally_.shown();
    statistics.dropped = engine.tally_.dropped();
    statistics.cacheBytes = engine.cache_.byteCount() + engine.cache_.elsewhere();
    statistics.cacheBudget = engine.cache_.budget();
    statistics.decoder = engine.decoderName_;
    return statistics;
}

std::vector<std::pair<qint64, qint64>> Player::readyRanges() const {
    auto ranges = engine_->cache_.readyRanges();
    for (auto& [first, last] : ranges) {
        ++first;
        ++last;
    }
    return ranges;
}

} // namespace daylark
