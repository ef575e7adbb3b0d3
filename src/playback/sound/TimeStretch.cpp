#include "playback/sound/TimeStretch.h"

#include <soundtouch/SoundTouch.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <type_traits>

namespace daylark {

namespace {

// Shorter pieces keep closer time, longer ones sound smoother.
constexpr int pieceMs = 40, seekMs = 15, overlapMs = 8;
constexpr double slowest = 0.02, quickest = 2.0;
constexpr qint64 feedAtOnce = 512; // pairs

static_assert(std::is_same_v<soundtouch::SAMPLETYPE, float>);

} // namespace

TimeStretch::TimeStretch(int samplesASecond, Source source)
    : samplesASecond_(samplesASecond)
    , source_(std::move(source))
    , stretcher_(std::make_unique<soundtouch::SoundTouch>()) {
    stretcher_->setSampleRate(unsigned(samplesASecond));
    stretcher_->setChannels(2);
    stretcher_->setSetting(SETTING_SEQUENCE_MS, pieceMs);
    stretcher_->setSetting(SETTING_SEEKWINDOW_MS, seekMs);
    stretcher_->setSetting(SETTING_OVERLAP_MS, overlapMs);
    stretcher_->setSetting(SETTING_USE_AA_FILTER, 0); // serves transposing only
}

TimeStretch::~TimeStretch() = default;

void TimeStretch::begin(qint64 position, double speed) {
    input_.clear();
    tail_.clear();
    tailGiven_ = 0;
    inputStart_ = plain_ = position;
    speed_ = std::clamp(speed, slowest, quickest);
    if (speed_ != 1) startStretching();
}

void TimeStretch::setSpeed(double speed) {
    speed = std::clamp(speed, slowest, quickest);
    if (speed == speed_) return;
    if (speed_ == 1) {
        speed_ = speed;
        startStretching();
    } else if (speed == 1) {
        returnToPlain();
        speed_ = 1;
    } else {
        qint64 made = stretcher_->numSamples();
        for (const Span& span : older_)
            made -= span.pairs;
        older_.push_back({made, speed_});
        stretcher_->setTempo(speed);
        speed_ = speed;
    }
}

void TimeStretch::startStretching() {
    tail_.clear();
    tailGiven_ = 0;
    older_.clear();
    stretcher_->clear();
    stretcher_->setTempo(speed_);
    fed_ = plain_; // the first piece is the samples as they are
    stretched_ = double(plain_);
}

void TimeStretch::returnToPlain() {
    std::vector<float> tail(size_t(samplesASecond_ / 100) * 2);
    const double middle = position();
    takeStretched(tail.data(), qint64(tail.size() / 2));
    plain_ = bestEntry(qint64(std::llround(middle)), tail);
    tail_ = std::move(tail);
    tailGiven_ = 0;
    stretcher_->clear();
    older_.clear();
}

/// Where the movie's samples resemble the stretched ones most: blending over to others would cancel them.
qint64 TimeStretch::bestEntry(qint64 around, const std::vector<float>& tail) {
    const auto length = qint64(tail.size() / 2);
    const qint64 reach = samplesASecond_ * seekMs / 1000;
    const qint64 first = std::max(inputStart_, around - reach), last = std::max(first, around + reach);
    need(last + length);
    qint64 best = std::clamp(around, first, last);
    double bestLikeness = -std::numeric_limits<double>::max();
    for (qint64 at = first; at <= last; at += 2) {
        const float* input = inputAt(at);
        double product = 0, power = 1e-9;
        for (size_t i = 0; i < tail.size(); i += 2) {
            const double value = double(input[i]) + double(input[i + 1]);
            product += value * (double(tail[i]) + double(tail[i + 1]));
            power += value * value;
        }
        const double nearness = 1e-6 * (1 - double(std::abs(at - around)) / double(reach + 1));
        const double likeness = product / std::sqrt(power) + nearness;
        if (likeness <= bestLikeness) continue;
        bestLikeness = likeness;
        best = at;
    }
    return best;
}

void TimeStretch::give(float* pairs, qint64 count) {
    if (speed_ == 1)
        takePlain(pairs, count);
    else
        takeStretched(pairs, count);
}

void TimeStretch::takePlain(float* pairs, qint64 count) {
    need(plain_ + count);
    std::copy_n(inputAt(plain_), count * 2, pairs);
    const auto length = qint64(tail_.size() / 2);
    for (qint64 i = 0; i < count && tailGiven_ < length; ++i, ++tailGiven_) {
        const float share = float(tailGiven_ + 1) / float(length + 1);
        for (const qint64 side : {0, 1}) {
            float& value = pairs[i * 2 + side];
            value = value * share + tail_[size_t(tailGiven_ * 2 + side)] * (1 - share);
        }
    }
    plain_ += count;
    forgetBefore(plain_);
}

void TimeStretch::takeStretched(float* pairs, qint64 count) {
    while (qint64(stretcher_->numSamples()) < count) {
        need(fed_ + feedAtOnce);
        stretcher_->putSamples(inputAt(fed_), unsigned(feedAtOnce));
        fed_ += feedAtOnce;
    }
    stretcher_->receiveSamples(pairs, unsigned(count));
    for (qint64 left = count; left > 0;) {
        if (older_.empty()) {
            stretched_ += double(left) * speed_;
            break;
        }
        Span& span = older_.front();
        const qint64 taken = std::min(left, span.pairs);
        stretched_ += double(taken) * span.speed;
        span.pairs -= taken;
        left -= taken;
        if (span.pairs == 0) older_.pop_front();
    }
    forgetBefore(std::min(fed_, qint64(stretched_)));
}

/// How far from where the pieces begin the ear hears them, in samples of the movie. Each piece runs on at
/// speed 1 from its place: quick ones are heard by their middles; of slow ones, which repeat what was before,
/// the ear goes by what is new, their ends.
double TimeStretch::centring() const {
    const double ms = double(samplesASecond_) / 1000, piece = (pieceMs - overlapMs) * ms;
    const double speed = older_.empty() ? speed_ : older_.front().speed;
    return (1 - speed) * (speed > 1 ? piece / 2 : piece * (1 - speed / 2) + 7 * ms);
}

double TimeStretch::position() const {
    return speed_ == 1 ? double(plain_) : stretched_ + centring();
}

void TimeStretch::need(qint64 until) {
    const qint64 held = inputStart_ + qint64(input_.size() / 2);
    if (until <= held) return;
    input_.resize(size_t(until - inputStart_) * 2);
    source_(input_.data() + (held - inputStart_) * 2, until - held);
}

void TimeStretch::forgetBefore(qint64 position) {
    const qint64 kept = samplesASecond_ / 10; // what the way back to speed 1 may look at
    const qint64 gone = position - kept - inputStart_;
    if (gone < kept) return;
    input_.erase(input_.begin(), input_.begin() + gone * 2);
    inputStart_ += gone;
}

} // namespace daylark
