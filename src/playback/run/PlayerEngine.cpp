#include "playback/run/PlayerEngine.h"

#include "playback/run/Renewal.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace daylark {

namespace {

__extension__ typedef __int128 Wide;

/// The same moment in ticks of another clock, rounded down: a frame starts on a whole tick, so the frame
/// stays the same.
qint64 ticksOnScale(const MediaTime& time, qint64 timeScale) {
    const qint64 scale = qint32(time.scale); // archives may carry flags above
    if (scale <= 0) return 0;
    const Wide product = Wide(time.value) * timeScale;
    return product < 0 ? 0 : qint64(std::min<Wide>(product / scale, qint64(1) << 62));
}

} // namespace

void Player::Engine::announce() {
    if (!announced_.exchange(true))
        post([this] {
            announced_ = false;
            present();
        });
}

void Player::Engine::forget() {
    ++generation_;
    isRenewing_ = false;
    changed_.clear();
    const bool wasRunning = rate_ != 0;
    run_.leaveMovie();
    rate_ = 0;
    rolling_ = false;
    timer_.stop();
    open_ = false;
    index_ = std::make_shared<SampleIndex>();
    frame_ = shownNumber_ = -1;
    ticks_ = 0;
    shown_ = {};
    tally_ = {};
    decoderName_.clear();
    range_ = {};
    hand_.forgetAsked();
    endedAt_ = 0;
    travel_ = 1;
    cache_.reset(generation_);
    if (wasRunning) Q_EMIT q_.rateChanged(0);
}

void Player::Engine::open(const QString& path, const MovieSound& sound) {
    forget();
    run_.expectMovie(path, sound);
    decoder_.open(generation_, path);
    Q_EMIT q_.positionChanged();
}

void Player::Engine::renew(const QString& path, const std::vector<qint64>& changed, const MovieSound& sound) {
    if (!open_) return open(path, sound);
    ++generation_;
    isRenewing_ = true;
    changed_.insert(changed_.end(), changed.begin(), changed.end());
    cache_.carryOver(generation_);
    run_.expectMovie(path, sound);
    decoder_.open(generation_, path);
}

void Player::Engine::close() {
    forget();
    decoder_.close(generation_);
    Q_EMIT q_.positionChanged();
}

void Player::Engine::openingDone(const DecodeThread::Opening& opening) {
    if (opening.generation != generation_) return;
    if (isRenewing_) return renewalDone(opening);
    if (!opening.index || opening.index->count() == 0) {
        Q_EMIT q_.openFailed(opening.index ? QStringLiteral("no pictures in the file") : opening.reason);
        return;
    }
    index_ = opening.index;
    decoderName_ = opening.decoder;
    open_ = true;
    run_.setMovie(index_);
    frame_ = 0;
    holdDemands_ = true;
    Q_EMIT q_.opened();
    holdDemands_ = false;
    if (opening.generation != generation_) return;
    Q_EMIT q_.positionChanged();
    demand();
    present();
}

/// Where nothing but pictures changed, a run goes on as if nothing had been; where there are more, or fewer, from its frame.
void Player::Engine::renewalDone(const DecodeThread::Opening& opening) {
    isRenewing_ = false;
    if (!opening.index || opening.index->count() == 0) {
        forget();
        Q_EMIT q_.positionChanged();
        Q_EMIT q_.openFailed(opening.reason);
        return;
    }
    const std::shared_ptr<const SampleIndex> before = std::exchange(index_, opening.index);
    decoderName_ = opening.decoder;
    const std::vector<qint64> anew = framesToReadAnew(*before, *index_, std::exchange(changed_, {}));
    cache_.drop(anew);
    if (std::find(anew.begin(), anew.end(), shownNumber_) != anew.end()) {
        shownNumber_ = -1;
        runFrom_ = frame_; // shown once more, in a run as well
    }
    if (!hasSameTimes(*before, *index_)) {
        frame_ = std::min(frame_, last());
        ticks_ = index_->timeOf(frame_).value;
        endedAt_ = 0;
        rolling_ = false;
        run_.stop();
        run_.setMovie(index_);
        if (rate_ != 0) startRun();
    }
    Q_EMIT q_.renewed();
    if (opening.generation != generation_) return;
    Q_EMIT q_.positionChanged();
    demand();
    present();
}

void Player::Engine::place(qint64 ticks, int direction) {
    ticks_ = std::clamp<qint64>(ticks, 0, index_->endTicks);
    frame_ = index_->frameAt({ticks_, index_->timeScale});
    travel_ = direction;
    endedAt_ = 0;
    if (rate_ != 0) { // the run goes on from here
        rolling_ = false;
        run_.stop();
        startRun();
    }
    Q_EMIT q_.positionChanged();
    demand();
    present();
}

void Player::Engine::moveTo(const MediaTime& time) {
    if (!open_) return;
    const qint64 ticks = std::clamp<qint64>(ticksOnScale(time, index_->timeScale), 0, index_->endTicks);
    const qint64 frame = index_->frameAt({ticks, index_->timeScale}), by = frame - frame_;
    if (hand_.isDragging()) {
        hand_.moveTo(frame, clock_.nanoseconds());
        rest_.start();
        return place(ticks, 1);
    }
    constexpr qint64 aStepOrTwo = 3; // a short way back is a hand that steps; a long one is a jump
    place(ticks, by == 0 ? travel_ : by < 0 && by >= -aStepOrTwo ? -1 : 1);
}

void Player::Engine::step(int direction) {
    if (open_) place(index_->timeOf(std::clamp<qint64>(frame_ + direction, 0, last())).value, direction);
}

void Player::Engine::demand() {
    if (!open_ || holdDemands_) return;
    hand_.ask(frame_);
    const ReadDemand demand = currentDemand();
    const int direction = demand.dragging ? demand.heading : demand.direction;
    cache_.setTravel({frame_, direction, rate_ != 0 ? lap() : Lap()});
    decoder_.want(generation_, demand);
}

ReadDemand Player::Engine::currentDemand() const {
    return {.target = frame_,
            .direction = rate_ != 0 ? direction() : travel_,
            .playing = rate_ != 0,
            .lap = lap(),
            .dragging = hand_.isSeeking(),
            .heading = hand_.heading(),
            .reach = hand_.reach()};
}

void Player::Engine::setDragging(bool dragging) {
    if (dragging == hand_.isDragging()) return;
    hand_.setDragging(dragging);
    rest_.stop();
    demand();
    present();
}

void Player::Engine::setCacheBudget(qint64 bytes) {
    const qint64 budget = bytes > 0 ? bytes : FrameCache::defaultBudget();
    neighbours_.setBudget(budget);
    cache_.setBudget(budget);
}

void Player::Engine::present() {
    if (!open_ || holdDemands_) return;
    if (rolling_) {
        hand_.forgetAsked();
        const qint64 left = (frame_ - runFrom_) * direction();
        const auto ready = left < 0 ? std::nullopt : cache_.nearestBetween(runFrom_, frame_);
        if (ready) {
            tally_.drop((*ready - runFrom_) * direction());
            tally_.show(clock_.nanoseconds());
            runFrom_ = *ready + direction(); // older pictures of this run come too late now
            show(cache_.find(*ready), *ready);
        }
        return;
    }
    if (const auto frame = hand_.toShow(cache_, frame_, shownNumber_)) show(cache_.find(*frame), *frame);
    if (!hand_.isDragging()) tryToRoll();
}

void Player::Engine::show(const VideoFrame& picture, qint64 frame) {
    if (picture.isNull()) return;
    shown_ = picture;
    shownNumber_ = frame;
    Q_EMIT q_.frameShown(picture, frame + 1);
}

void Player::Engine::setRate(float rate) {
    if (!open_ || rate == rate_ || !std::isfinite(rate)) return;
    const bool sameDirection = rolling_ && rate * rate_ > 0;
    if (endedAt_ != 0 &&
        rate * float(endedAt_) > 0) { // a run onto the end where it stands begins at the other end
        frame_ = rate > 0 ? stretch().first : stretch().last;
        ticks_ = index_->timeOf(frame_).value;
        endedAt_ = 0;
        Q_EMIT q_.positionChanged();
    }
    if (rate_ == 0) tally_.begin(clock_.nanoseconds());
    rate_ = rate;
    if (rate == 0) {
        stopRun();
    } else if (!sameDirection) {
        rolling_ = false;
        run_.stop();
        travel_ = direction();
        startRun();
    } else {
        run_.setRate(rate);
    }
    Q_EMIT q_.rateChanged(rate);
    demand();
    present();
    arm();
}

void Player::Engine::setLoops(bool loops) {
    if (loops == loops_) return;
    loops_ = loops;
    handLapToSound();
    demand();
}

void Player::Engine::setRange(const Lap& range, RangeEnd atEnd) {
    if (range == range_ && atEnd == rangeEnd_) return;
    range_ = range;
    rangeEnd_ = atEnd;
    handLapToSound();
    demand();
}

/// The range, where a run from the current frame comes to it.
std::optional<Lap> Player::Engine::rangeAhead() const {
    const Lap range{std::max<qint64>(range_.first, 0), std::min(range_.last, last())};
    const bool comesThere = !range.isEmpty() && (direction() > 0 ? frame_ <= range.last : frame_ >= range.first);
    return comesThere ? std::optional(range) : std::nullopt;
}

void Player::Engine::handLapToSound() {
    const Lap lap = this->lap();
    if (!open_ || lap.isEmpty()) return run_.setLap({});
    const auto scale = double(index_->timeScale);
    run_.setLap({double(index_->timeOf(lap.first).value) / scale, double(endOfFrame(lap.last)) / scale});
}

qint64 Player::Engine::endOfFrame(qint64 frame) const {
    return frame >= last() ? index_->endTicks : index_->timeOf(frame + 1).value;
}

void Player::Engine::startRun() {
    runFrom_ = frame_;
    handLapToSound();
    run_.placeAt(double(direction() > 0 ? index_->timeOf(frame_).value : endOfFrame(frame_)));
}

void Player::Engine::tryToRoll() {
    if (rate_ == 0 || rolling_ || !isReadyToRoll()) return;
    rolling_ = true;
    run_.start(rate_);
    runFrom_ = frame_ + (shownNumber_ == frame_ ? direction() : 0);
    arm();
}

bool Player::Engine::isReadyToRoll() const {
    if (!cache_.contains(frame_)) return false;
    const auto keyFrameBefore = [this](qint64 frame) {
        while (frame > 0 && !index_->samples[size_t(frame)].key)
            --frame;
        return frame;
    };
    const ReadDemand demand = currentDemand();
    const qint64 wanted = readyToRoll(demand, {index_->count(), -1, keyFrameBefore}, cache_);
    qint64 frame = frame_;
    for (qint64 ahead = 1; ahead <= wanted; ++ahead) {
        frame = demand.lap.after(frame, demand.direction);
        if (frame < 0 || frame > last() || frame == frame_) break;
        if (!cache_.contains(frame)) return decoder_.isResting(); // no more to come
    }
    return true;
}

void Player::Engine::stopRun() {
    timer_.stop();
    rolling_ = false;
    tally_.end();
    run_.stop();
    if (rate_ != 0) {
        rate_ = 0;
        Q_EMIT q_.rateChanged(0);
    }
}

// Backwards a frame lasts from its end down to just before its start.
qint64 Player::Engine::ticksAtPosition(double position) const {
    return qint64(direction() > 0 ? std::floor(position) : std::ceil(position) - 1);
}

qint64 Player::Engine::frameAtPosition(double position) const {
    return index_->frameAt({ticksAtPosition(position), index_->timeScale});
}

void Player::Engine::tick() {
    if (!open_ || rate_ == 0) return;
    if (!rolling_)
        present();
    else
        advance();
    arm();
}

void Player::Engine::advance() {
    double position = run_.position();
    const Lap lap = stretch();
    const auto from = double(index_->timeOf(lap.first).value), until = double(endOfFrame(lap.last));
    if (direction() > 0 ? position >= until : position <= from) {
        const double length = until - from;
        if (!turns() || length <= 0) return end();
        const double passed = std::floor((position - from) / length) * length;
        position = from + std::fmod(position - from, length);
        if (direction() < 0) position += length;
        run_.comeRound(position, passed);
        tally_.drop((direction() > 0 ? lap.last - runFrom_ : runFrom_ - lap.first) + 1);
        runFrom_ = direction() > 0 ? lap.first : lap.last;
    }
    const qint64 frame = frameAtPosition(position);
    ticks_ = std::clamp<qint64>(ticksAtPosition(position), 0, index_->endTicks);
    if (frame == frame_) return;
    frame_ = frame;
    endedAt_ = 0;
    handLapToSound(); // a run that has come round the movie may have come to the range
    const quint64 generation = generation_;
    Q_EMIT q_.positionChanged();
    if (generation != generation_) return;
    demand();
    present();
}

void Player::Engine::end() {
    const int direction = this->direction();
    const Lap stretch = this->stretch();
    frame_ = direction > 0 ? stretch.last : stretch.first;
    ticks_ = frame_ == last() && direction > 0 ? index_->endTicks : index_->timeOf(frame_).value;
    endedAt_ = direction;
    tally_.drop((frame_ - runFrom_) * direction); // the last one is shown now, however late
    const quint64 generation = generation_;
    stopRun();
    if (generation != generation_) return;
    Q_EMIT q_.positionChanged();
    demand();
    present();
    if (generation == generation_ && rate_ == 0) Q_EMIT q_.didEnd();
}

void Player::Engine::arm() {
    if (rate_ == 0 || !rolling_) return timer_.stop();
    const double position = run_.position();
    const qint64 frame = std::clamp<qint64>(frameAtPosition(position), 0, last());
    const double boundary = double(direction() > 0 ? endOfFrame(frame) : index_->timeOf(frame).value);
    const double seconds = (boundary - position) / (double(rate_) * double(index_->timeScale));
    timer_.start(std::clamp(int(std::ceil(seconds * 1000.0)), 1, 100));
}

void Player::Engine::setVolume(float volume) {
    volume_ = std::clamp(volume, 0.0f, 1.0f);
    run_.setVolume(volume_);
}

} // namespace daylark
