#include "playback/sound/DeviceSound.h"

#include "playback/sound/SoundReadAhead.h"
#include "playback/sound/TimeStretch.h"

#include <QObject>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <deque>
#include <vector>

namespace daylark {

namespace {

using SoundTime = std::chrono::steady_clock;

constexpr int soundRate = SoundDevice::samplesASecond;
constexpr double readPatience = 0.3;   // seconds that a picture waits for its sound to be read
constexpr double beginPatience = 0.7;  // and for the device to begin
constexpr double slowBeginning = 5;    // seconds without progress that make a device a lost one ...
constexpr double stallPatience = 0.4;  // ... and once it has begun; the picture stands meanwhile
constexpr double deviceStep = 0.03;    // seconds; devices tell their progress in steps up to this long
constexpr double settlingTime = 0.2;   // seconds after which a device's word on its progress can be relied on
constexpr double fadingTime = 0.3;     // seconds until what was faded out is certainly played
constexpr float fadeStep = 1.0f / 240; // a sample: 5 ms, too short to hear and long enough not to click
constexpr int lookEveryMilliseconds = 10, retryAfterMilliseconds = 1000;
constexpr int retrySoonMilliseconds = 200; // a device that was heard just now may only have been changed

double secondsBetween(SoundTime::time_point from, SoundTime::time_point until) {
    return std::chrono::duration<double>(until - from).count();
}
double secondsSince(SoundTime::time_point time) {
    return secondsBetween(time, SoundTime::now());
}
SoundTime::time_point later(SoundTime::time_point time, double seconds) {
    return time + std::chrono::duration_cast<SoundTime::duration>(std::chrono::duration<double>(seconds));
}

/// Which moment of the movie is heard at which second of the device's run: straight between its marks.
class HearingMap {
public:
    struct Mark {
        double device = 0, movie = 0; ///< seconds
    };
    void clear() { marks_.clear(); }
    void add(Mark mark) { marks_.push_back(mark); }
    void forgetBefore(double device) {
        while (marks_.size() > 2 && marks_[1].device < device)
            marks_.pop_front();
    }
    /// None before the first mark; after the last one it stands.
    [[nodiscard]] std::optional<double> movieAt(double device) const {
        if (marks_.empty() || device < marks_.front().device) return std::nullopt;
        const auto after = std::find_if(marks_.begin(), marks_.end(),
                                        [&](const Mark& mark) { return mark.device > device; });
        if (after == marks_.end()) return marks_.back().movie;
        const Mark& before = *std::prev(after);
        const double share = (device - before.device) / (after->device - before.device);
        return before.movie + share * (after->movie - before.movie);
    }

private:
    std::deque<Mark> marks_;
};

} // namespace

/// Lives on the thread that feeds the device; what the interface thread calls is told apart below.
class DeviceSound::Feeder : public QObject {
public:
    explicit Feeder(SoundDeviceMaker makeDevice);
    ~Feeder() override;

    // Interface thread
    void setMovie(const QString& path, std::shared_ptr<const SampleIndex> pictures, const MovieSound& sound);
    void play(double seconds, double rate, Start start);
    void setRate(double rate);
    void stop(bool softly);
    std::optional<double> position() const;
    std::atomic<float> volume_ = 0.5f;
    SoundReadAhead& readAhead() { return readAhead_; }

private:
    void post() { QMetaObject::invokeMethod(this, &Feeder::look, Qt::QueuedConnection); }
    void look();
    void begin();
    void halt();
    void turn();
    void feed();
    bool join();
    void apply(std::vector<float>& pairs);
    void follow();
    void giveUp();
    [[nodiscard]] double writtenSeconds() const { return double(written_) / soundRate; }
    [[nodiscard]] double pictureIn(double seconds) const { // under the lock
        return pictureAt_ + rate_ * (secondsSince(pictureTime_) + seconds);
    }

    mutable std::mutex mutex_; // guards down to the blank line
    quint64 run_ = 0;
    bool wanted_ = false; ///< the run is to be heard
    bool softly_ = false; ///< the last one ended by fading
    bool joins_ = false;  ///< the picture did not wait
    bool begun_ = false;  ///< the device is at it
    double rate_ = 1;
    mutable double pictureAt_ = 0;              ///< where the picture stood (seconds of the movie) ...
    mutable SoundTime::time_point pictureTime_; ///< ... when it last went by the sound, or moved off
    SoundTime::time_point waitsUntil_;          ///< when the picture moves off at the latest
    std::optional<double> played_;              ///< seconds of the device at playedAt_
    SoundTime::time_point playedAt_;
    HearingMap map_;

    quint64 soundRun_ = 0; // this thread's own, as is what follows
    bool sounding_ = false, joined_ = false;
    std::optional<SoundTime::time_point> fadingSince_;
    qint64 written_ = 0; ///< pairs given to the device in this run
    double lastPlayed_ = -1;
    SoundTime::time_point progressAt_;
    float gain_ = 0, envelope_ = 0;
    std::vector<float> pairs_;
    const SoundDeviceMaker makeDevice_;
    std::unique_ptr<SoundDevice> device_;
    QTimer timer_{this}, retry_{this};
    TimeStretch stretch_;

    QThread thread_;
    SoundReadAhead readAhead_; // last: its thread ends before what it speaks to
};

DeviceSound::Feeder::Feeder(SoundDeviceMaker makeDevice)
    : makeDevice_(std::move(makeDevice))
    , stretch_(soundRate, [this](float* pairs, qint64 count) { readAhead_.take(soundRun_, pairs, count); })
    , readAhead_(soundRate, [this] { post(); }) {
    timer_.setTimerType(Qt::PreciseTimer);
    timer_.setInterval(lookEveryMilliseconds);
    connect(&timer_, &QTimer::timeout, this, &Feeder::turn);
    retry_.setSingleShot(true);
    connect(&retry_, &QTimer::timeout, this, &Feeder::look);
    moveToThread(&thread_);
    thread_.setObjectName(QStringLiteral("sound"));
    thread_.start();
}

DeviceSound::Feeder::~Feeder() {
    QMetaObject::invokeMethod(
        this,
        [this] {
            halt();
            retry_.stop();
            device_.reset();
        },
        Qt::BlockingQueuedConnection);
    thread_.quit();
    thread_.wait();
}

void DeviceSound::Feeder::setMovie(const QString& path, std::shared_ptr<const SampleIndex> pictures,
                                   const MovieSound& sound) {
    stop(false);
    readAhead_.setMovie(path, std::move(pictures), sound);
}

void DeviceSound::Feeder::play(double seconds, double rate, Start start) {
    quint64 run = 0;
    {
        const std::lock_guard lock(mutex_);
        run = ++run_;
        wanted_ = true;
        begun_ = false;
        joins_ = start == Start::joins;
        rate_ = rate;
        pictureAt_ = seconds;
        pictureTime_ = SoundTime::now();
        waitsUntil_ = later(pictureTime_, readPatience);
        played_.reset();
        map_.clear();
    }
    readAhead_.start(run, std::llround(seconds * soundRate));
    post();
}

void DeviceSound::Feeder::setRate(double rate) {
    const std::lock_guard lock(mutex_);
    pictureAt_ = pictureIn(0);
    pictureTime_ = SoundTime::now();
    rate_ = rate;
}

void DeviceSound::Feeder::stop(bool softly) {
    {
        const std::lock_guard lock(mutex_);
        if (!wanted_) return;
        ++run_;
        wanted_ = false;
        softly_ = softly;
        played_.reset();
    }
    if (!softly) readAhead_.stop(); // fading takes a little of what was read
    post();
}

std::optional<double> DeviceSound::Feeder::position() const {
    const bool hasSound = readAhead_.state() != SoundReadAhead::State::none;
    const std::lock_guard lock(mutex_);
    if (!wanted_ || !hasSound) return std::nullopt;
    std::optional<double> heard;
    if (played_) {
        heard = map_.movieAt(*played_ + std::min(secondsSince(playedAt_), deviceStep));
    } else if (!joins_) {
        const double patience = begun_ ? beginPatience - readPatience : 0;
        if (secondsSince(waitsUntil_) < patience) heard = pictureAt_;
    }
    if (!heard) return std::nullopt;
    pictureAt_ = *heard; // should the sound be lost, the picture goes on from here
    pictureTime_ = SoundTime::now();
    return heard;
}

/// Brings the device to what is wanted now.
void DeviceSound::Feeder::look() {
    const SoundReadAhead::State state = readAhead_.state();
    const bool hasSound = state == SoundReadAhead::State::filling || state == SoundReadAhead::State::ready;
    quint64 run = 0;
    bool wanted = false, softly = false;
    {
        const std::lock_guard lock(mutex_);
        run = run_;
        wanted = wanted_;
        softly = softly_;
    }
    if (sounding_ && !wanted && softly) {
        if (!fadingSince_) fadingSince_ = SoundTime::now();
        return;
    }
    if (run != soundRun_) {
        halt();
        soundRun_ = run;
        retry_.stop();
        if (wanted && device_ && !device_->isPreferred()) device_.reset();
    }
    if (retry_.isActive()) return;
    if (device_ && !sounding_ && device_->isLost()) device_.reset();
    if (hasSound && !device_) device_ = makeDevice_();
    if (!wanted || sounding_) return;
    if (hasSound && !device_) return giveUp();
    if (state == SoundReadAhead::State::ready) begin();
}

void DeviceSound::Feeder::begin() {
    {
        const std::lock_guard lock(mutex_);
        if (run_ != soundRun_) return; // a newer one is on its way here
        if (secondsSince(waitsUntil_) > 0) joins_ = true;
        joined_ = !joins_;
        begun_ = true;
        map_.clear();
        if (joined_) {
            map_.add({0, pictureAt_});
            stretch_.begin(std::llround(pictureAt_ * soundRate), rate_);
        } else { // what it will come in with is read meanwhile
            readAhead_.skipTo(soundRun_, std::llround(pictureIn(0) * soundRate));
        }
    }
    if (!device_->start()) return giveUp();
    written_ = 0;
    gain_ = volume_;
    envelope_ = 0;
    fadingSince_.reset();
    sounding_ = true;
    lastPlayed_ = -1;
    progressAt_ = SoundTime::now();
    feed();
    timer_.start();
}

void DeviceSound::Feeder::halt() {
    timer_.stop();
    fadingSince_.reset();
    if (std::exchange(sounding_, false)) device_->stop();
}

/// There is no device, or no more: the picture goes on without, until another look finds one.
void DeviceSound::Feeder::giveUp() {
    timer_.stop();
    joined_ = false;
    const bool wasHeard = std::exchange(sounding_, false) && lastPlayed_ > 0;
    device_.reset();
    const std::lock_guard lock(mutex_);
    if (run_ != soundRun_) return; // a newer one is on its way here
    joins_ = true;
    begun_ = false;
    played_.reset();
    map_.clear();
    retry_.start(wasHeard ? retrySoonMilliseconds : retryAfterMilliseconds);
}

void DeviceSound::Feeder::turn() {
    if (fadingSince_ && secondsSince(*fadingSince_) > fadingTime) return halt();
    feed();
    follow();
}

/// Fills what room the device has. Written here rather than drawn by the device, which takes whole periods
/// only and never begins where its buffer is not a multiple of them.
void DeviceSound::Feeder::feed() {
    const qint64 count = device_->room();
    if (count <= 0) return;
    pairs_.assign(size_t(count) * 2, 0.0f);
    if (joined_ || join()) {
        double rate = 1;
        {
            const std::lock_guard lock(mutex_);
            rate = rate_;
        }
        if (!fadingSince_) stretch_.setSpeed(rate);
        stretch_.give(pairs_.data(), count);
        apply(pairs_);
    }
    device_->write(pairs_.data(), count);
    written_ += count;
    if (!joined_ || fadingSince_) return;
    const std::lock_guard lock(mutex_);
    map_.add({writtenSeconds(), stretch_.position() / soundRate});
}

/// Lets the sound come in with the next sample written, at the place of the movie where the picture will be
/// when that is heard. False while the device has not told yet when that will be.
bool DeviceSound::Feeder::join() {
    const std::lock_guard lock(mutex_);
    if (run_ != soundRun_ || !played_ || *played_ < settlingTime) return false;
    const double ahead = writtenSeconds() - *played_ - secondsSince(playedAt_);
    const double movie = pictureIn(ahead);
    const qint64 position = std::llround(movie * soundRate);
    readAhead_.skipTo(soundRun_, position);
    stretch_.begin(position, rate_);
    map_.add({writtenSeconds(), movie});
    return joined_ = true;
}

/// Volume, and a soft beginning and end.
void DeviceSound::Feeder::apply(std::vector<float>& pairs) {
    const float volume = volume_;
    const float step = fadingSince_ ? -fadeStep : fadeStep;
    for (size_t i = 0; i < pairs.size(); i += 2) {
        gain_ += (volume - gain_) * 0.002f; // a volume that jumps clicks
        envelope_ = std::clamp(envelope_ + step, 0.0f, 1.0f);
        const float factor = gain_ * envelope_;
        for (const size_t side : {i, i + 1})
            pairs[side] = std::clamp(pairs[side] * factor, -1.0f, 1.0f);
    }
}

/// Compares the device's word on how far it is with the time gone by, and follows it softly: devices speak in
/// steps.
void DeviceSound::Feeder::follow() {
    const SoundTime::time_point now = SoundTime::now();
    const double said = device_->played();
    if (device_->isLost()) return giveUp();
    if (said > lastPlayed_) {
        lastPlayed_ = said;
        progressAt_ = now;
    } else if (secondsBetween(progressAt_, now) > (said > 0 ? stallPatience : slowBeginning)) {
        return giveUp();
    }
    if (said <= 0) return;
    const std::lock_guard lock(mutex_);
    if (run_ != soundRun_) return;
    if (!played_ && !joins_ && secondsSince(waitsUntil_) > beginPatience - readPatience) {
        joins_ = true; // the picture has gone on without a device as slow as this
        joined_ = false;
        envelope_ = 0;
        map_.clear();
    }
    constexpr double jump = 0.06, share = 0.05;
    double assumed = played_ ? *played_ + secondsBetween(playedAt_, now) : said;
    assumed = std::min(assumed, said + deviceStep); // a device that has not begun yet, or stutters
    const double error = said - assumed;
    played_ = error > jump ? said : assumed + share * error;
    playedAt_ = now;
    map_.forgetBefore(*played_ - 1);
}

DeviceSound::DeviceSound(SoundDeviceMaker makeDevice)
    : feeder_(std::make_unique<Feeder>(std::move(makeDevice))) {}

DeviceSound::~DeviceSound() = default;

void DeviceSound::setMovie(const QString& path, std::shared_ptr<const SampleIndex> pictures,
                           const MovieSound& sound) {
    feeder_->setMovie(path, std::move(pictures), sound);
}
void DeviceSound::play(double seconds, float rate, Start start) {
    feeder_->play(seconds, double(rate), start);
}
void DeviceSound::setRate(float rate) {
    feeder_->setRate(double(rate));
}
void DeviceSound::stop() {
    feeder_->stop(false);
}
void DeviceSound::fade() {
    feeder_->stop(true);
}
void DeviceSound::setLap(const SoundLap& lap) {
    feeder_->readAhead().setLap(lap);
}
void DeviceSound::setVolume(float volume) {
    feeder_->volume_ = std::clamp(volume, 0.0f, 1.0f);
}
std::optional<double> DeviceSound::position() const {
    return feeder_->position();
}

} // namespace daylark
