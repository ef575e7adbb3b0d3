#include "playback/read/SeekingHand.h"

#include "playback/read/FrameCache.h"

#include <algorithm>
#include <cstdlib>

namespace daylark {

namespace {

constexpr qint64 handSecond = 1'000'000'000;
constexpr qint64 trailLength = handSecond / 15;
constexpr size_t mostAsked = 32;

} // namespace

void SeekingHand::setDragging(bool dragging) {
    forget();
    dragging_ = dragging;
}

void SeekingHand::moveTo(qint64 frame, qint64 now) {
    moving_ = true;
    if (!trail_.empty() && frame != trail_.back().second) heading_ = frame < trail_.back().second ? -1 : 1;
    trail_.emplace_back(now, frame);
    while (trail_.size() > 2 && now - trail_[1].first >= trailLength)
        trail_.pop_front();
}

qint64 SeekingHand::reach() const {
    if (trail_.empty()) return 0;
    const auto& [then, from] = trail_.front();
    const auto& [now, to] = trail_.back();
    return now > then ? std::abs(to - from) * (handSecond / 2) / (now - then) : 0;
}

void SeekingHand::ask(qint64 frame) {
    if (asked_.size() >= mostAsked) asked_.erase(asked_.begin());
    if (asked_.empty() || asked_.back() != frame) asked_.push_back(frame);
}

std::optional<qint64> SeekingHand::toShow(const FrameCache& cache, qint64 frame, qint64 shown) {
    if (dragging_) return nearer(cache, frame, shown);
    // A hand that jumps about sees on its way what it asked for; the exact picture stands last.
    for (qsizetype at = qsizetype(asked_.size()); --at >= 0;) {
        const qint64 asked = asked_[size_t(at)];
        if (asked != shown && !cache.find(asked).isNull()) {
            asked_.erase(asked_.begin(), asked_.begin() + at + 1);
            return asked;
        }
        if (asked == shown) {
            asked_.erase(asked_.begin(), asked_.begin() + at + 1);
            return std::nullopt;
        }
    }
    return std::nullopt;
}

std::optional<qint64> SeekingHand::nearer(const FrameCache& cache, qint64 frame, qint64 shown) {
    if (frame == shown) return std::nullopt;
    const std::optional<qint64> ready = cache.contains(frame) ? frame : cache.nearest(frame);
    const bool isNearer = ready && (shown < 0 || std::abs(*ready - frame) < std::abs(shown - frame));
    return isNearer ? ready : std::nullopt;
}

} // namespace daylark
