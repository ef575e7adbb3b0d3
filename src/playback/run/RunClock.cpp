#include "playback/run/RunClock.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace daylark {

void RunClock::expectMovie(const QString& path, const MovieSound& sound) {
    path_ = path;
    movieSound_ = sound;
}

void RunClock::setMovie(std::shared_ptr<const SampleIndex> index) {
    index_ = std::move(index);
    if (sound_) sound_->setMovie(path_, index_, movieSound_);
}

void RunClock::leaveMovie() {
    if (sound_ && index_) sound_->setMovie({}, nullptr, {});
    index_.reset();
    sounding_ = false;
    rate_ = 0;
}

void RunClock::setSound(const MovieSound& sound) {
    if (sound == movieSound_) return;
    movieSound_ = sound;
    if (!sound_ || !index_) return;
    if (rate_ != 0) setBase(position());
    const bool wasSounding = std::exchange(sounding_, false);
    sound_->setMovie(path_, index_, movieSound_);
    if (wasSounding) this->sound(SoundOutput::Start::joins);
}

void RunClock::setLap(const SoundLap& lap) {
    if (lap == lap_) return;
    const bool nothingAhead = passed_ == 0 && lap.from == 0 && lap_.from == 0; // the movie's own end, a long way off
    lap_ = lap;
    if (!sound_) return;
    if (!sounding_ || nothingAhead) return sound_->setLap(lap);
    setBase(position());
    sounding_ = false;
    sound_->stop();
    sound_->setLap(lap);
    sound(SoundOutput::Start::joins);
}

void RunClock::setVolume(float volume) {
    if (sound_) sound_->setVolume(volume);
}

void RunClock::start(float rate) {
    rate_ = rate;
    setBase(base_);
    sound(SoundOutput::Start::waits);
}

void RunClock::setRate(float rate) {
    setBase(position());
    rate_ = rate;
    sound(SoundOutput::Start::joins);
}

void RunClock::comeRound(double ticks, double passed) {
    passed_ += passed;
    setBase(ticks);
}

void RunClock::stop() {
    rate_ = 0;
    if (std::exchange(sounding_, false)) sound_->stop();
}

void RunClock::setBase(double ticks) {
    placeAt(ticks);
    baseTime_ = clock_.nanoseconds();
}

double RunClock::position() {
    if (!index_) return base_;
    const auto scale = double(index_->timeScale);
    const double byClock = base_ + double(clock_.nanoseconds() - baseTime_) / 1e9 * double(rate_) * scale;
    if (!sounding_) return byClock;
    if (const std::optional<double> heard = sound_->position()) {
        setBase(std::max(furthest_, *heard * scale - passed_));
        return base_;
    }
    return furthest_ = byClock;
}

/// A run that has sound keeps it when its rate changes.
void RunClock::sound(SoundOutput::Start start) {
    if (!sound_ || !index_) return;
    if (rate_ <= 0 || rate_ > SoundOutput::fastest) {
        if (std::exchange(sounding_, false)) sound_->fade();
    } else if (std::exchange(sounding_, true)) {
        sound_->setRate(rate_);
    } else {
        passed_ = 0;
        sound_->play(base_ / double(index_->timeScale), rate_, start);
    }
}

} // namespace daylark
