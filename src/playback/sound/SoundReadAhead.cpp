#include "playback/sound/SoundReadAhead.h"

#include "platform/FileBookmark.h"

#include <algorithm>
#include <cmath>

namespace daylark {

namespace {

constexpr qint64 chunk = 2048;          // pairs decoded at a time
constexpr qint64 heldAhead = 48000;     // pairs
constexpr qint64 enoughToBegin = 16800; // pairs; what a device's buffer swallows at twice the natural rate
constexpr double shortestLap = 480;     // pairs

} // namespace

SoundReadAhead::SoundReadAhead(int rate, std::function<void()> changed)
    : rate_(rate)
    , changed_(std::move(changed))
    , thread_([this] { run(); }) {}

SoundReadAhead::~SoundReadAhead() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
        cancel_ = true;
    }
    wake_.notify_one();
    thread_.join();
}

void SoundReadAhead::setMovie(const QString& path, std::shared_ptr<const SampleIndex> pictures,
                              const MovieSound& sound) {
    {
        const std::lock_guard lock(mutex_);
        ++reading_;
        known_ = pictures && sound.kind != MovieSound::Kind::none ? State::opening : State::none;
        movie_ = Movie{path, std::move(pictures), sound};
        running_ = false;
        cancel_ = true;
    }
    wake_.notify_one();
}

void SoundReadAhead::start(quint64 run, qint64 position) {
    {
        const std::lock_guard lock(mutex_);
        ++reading_;
        running_ = true;
        taker_ = run;
        next_ = position;
        pairs_.clear();
        taken_ = 0;
        if (known_ == State::filling) cancel_ = true; // an opening goes on
    }
    wake_.notify_one();
}

void SoundReadAhead::stop() {
    const std::lock_guard lock(mutex_);
    ++reading_;
    running_ = false;
    if (known_ == State::filling) cancel_ = true;
}

void SoundReadAhead::setLap(const SoundLap& lap) {
    const std::lock_guard lock(mutex_);
    lap_ = lap;
}

void SoundReadAhead::skipTo(quint64 run, qint64 position) {
    {
        const std::lock_guard lock(mutex_);
        if (!running_ || run != taker_) return;
        const qint64 ahead = position - next_;
        if (ahead >= 0 && ahead <= held()) {
            taken_ += ahead;
        } else {
            ++reading_;
            pairs_.clear();
            taken_ = 0;
        }
        next_ = position;
    }
    wake_.notify_one();
}

SoundReadAhead::State SoundReadAhead::state() const {
    const std::lock_guard lock(mutex_);
    return known_ == State::filling && running_ && held() >= enoughToBegin ? State::ready : known_;
}

void SoundReadAhead::take(quint64 run, float* pairs, qint64 count) {
    {
        const std::lock_guard lock(mutex_);
        if (!running_ || run != taker_) {
            std::fill_n(pairs, count * 2, 0.0f);
            return;
        }
        const qint64 there = std::min(held(), count);
        std::copy_n(pairs_.begin() + taken_ * 2, there * 2, pairs);
        std::fill_n(pairs + there * 2, (count - there) * 2, 0.0f);
        taken_ += there;
        next_ += count;
        if (taken_ >= heldAhead / 4) {
            pairs_.erase(pairs_.begin(), pairs_.begin() + taken_ * 2);
            taken_ = 0;
        }
    }
    wake_.notify_one();
}

void SoundReadAhead::run() {
    std::unique_lock lock(mutex_);
    for (;;) {
        wake_.wait(lock, [this] {
            return stopping_ || movie_ ||
                   (running_ && known_ == State::filling && held() + chunk <= heldAhead);
        });
        if (stopping_) return;
        cancel_ = false;
        if (movie_) {
            const Movie movie = std::move(*movie_);
            movie_.reset();
            open(movie, lock);
        } else {
            readSome(lock);
        }
    }
}

void SoundReadAhead::open(const Movie& movie, std::unique_lock<std::mutex>& lock) {
    lock.unlock();
    reader_.reset();
    if (movie.pictures) reader_ = readerOf(movie);
    lock.lock();
    if (movie_) return; // a newer one
    known_ = reader_ ? State::filling : State::none;
    lock.unlock();
    changed_();
    lock.lock();
}

std::unique_ptr<AudioReader> SoundReadAhead::readerOf(const Movie& movie) const {
    const auto opened = [&]() -> Result<std::unique_ptr<AudioReader>> {
        if (movie.sound.kind == MovieSound::Kind::own)
            return AudioReader::open(movie.path, *movie.pictures, rate_, &cancel_);
        if (movie.sound.kind == MovieSound::Kind::none) return Error{QStringLiteral("silenced")};
        const auto file = resolveFileBookmark(movie.sound.addedBookmark, movie.sound.addedPath);
        if (!file) return file.error();
        return AudioReader::openAdded(*file, rate_, &cancel_);
    };
    auto reader = opened();
    return reader ? std::move(*reader) : nullptr;
}

void SoundReadAhead::readSome(std::unique_lock<std::mutex>& lock) {
    const quint64 reading = reading_;
    const qint64 position = next_ + held();
    const SoundLap lap = lap_;
    lock.unlock();
    std::vector<float> pairs(size_t(chunk) * 2);
    const bool done = read(position, pairs, lap);
    lock.lock();
    if (reading != reading_) return;
    if (!done) { // nothing to be had from this file any more
        if (!cancel_) known_ = State::none;
        return;
    }
    const bool wasEnough = held() >= enoughToBegin;
    // What was taken meanwhile beyond what was held is past.
    const qint64 late = std::clamp<qint64>(next_ + held() - position, 0, chunk);
    pairs_.insert(pairs_.end(), pairs.begin() + late * 2, pairs.end());
    if (wasEnough || held() < enoughToBegin) return;
    lock.unlock();
    changed_();
    lock.lock();
}

/// Each time round begins on the sample nearest to its moment, however often it has come round.
bool SoundReadAhead::read(qint64 position, std::vector<float>& pairs, const SoundLap& lap) {
    const double length = (lap.until - lap.from) * rate_, until = lap.until * rate_;
    for (qint64 done = 0; done < chunk;) {
        qint64 from = position + done, count = chunk - done;
        if (length >= shortestLap) {
            const double laps = std::max(0.0, std::floor((double(from) + 0.5 - until) / length) + 1);
            const qint64 end = std::llround(until + laps * length);
            if (end > from) count = std::min(count, end - from);
            if (laps > 0) from += std::llround(lap.from * rate_) - std::llround(until + (laps - 1) * length);
        }
        if (!reader_->read(from, pairs.data() + done * 2, count, &cancel_)) return false;
        done += count;
    }
    return true;
}

} // namespace daylark
