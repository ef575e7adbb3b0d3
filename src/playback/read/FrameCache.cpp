#include "playback/read/FrameCache.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <utility>

namespace daylark {

qint64 FrameCache::defaultBudget() {
    constexpr qint64 most = qint64(4) << 30;
    const qint64 pages = sysconf(_SC_PHYS_PAGES);
    const qint64 pageSize = sysconf(_SC_PAGESIZE);
    return pages > 0 && pageSize > 0 ? std::min(pages * pageSize / 4, most) : most / 4;
}

void FrameCache::reset(quint64 generation) {
    const std::lock_guard lock(mutex_);
    if (!pictures_.empty()) forgotten_.push_back(std::exchange(pictures_, {}));
    generation_ = generation;
    travel_ = {};
    bytes_ = 0;
    lastSize_ = 0;
    beside_ = 0;
}

void FrameCache::sweep() {
    std::vector<Pictures> forgotten; // freed outside the lock
    const std::lock_guard lock(mutex_);
    forgotten.swap(forgotten_);
}

void FrameCache::carryOver(quint64 generation) {
    const std::lock_guard lock(mutex_);
    generation_ = generation;
    beside_ = 0;
}

void FrameCache::drop(const std::vector<qint64>& frames) {
    const std::lock_guard lock(mutex_);
    Pictures dropped;
    for (const qint64 frame : frames)
        if (auto picture = pictures_.extract(frame)) {
            bytes_ -= picture.mapped().isNull() ? 0 : picture.mapped().byteCount();
            dropped.insert(std::move(picture));
        }
    if (!dropped.empty()) forgotten_.push_back(std::move(dropped));
}

void FrameCache::setTravel(const Travel& travel) {
    const std::lock_guard lock(mutex_);
    travel_ = travel;
}

qint64 FrameCache::cost(qint64 frame) const {
    const qint64 ahead = (frame - travel_.playhead) * travel_.direction;
    const Lap& lap = travel_.lap;
    if (!lap.holds(frame) || !lap.holds(travel_.playhead)) {
        const qint64 outside = lap.isEmpty() || lap.holds(frame) ? 0 : 2 * lap.count(); // the run won't come there
        return outside + (ahead >= 0 ? ahead : -2 * ahead);
    }
    const qint64 around = ahead >= 0 ? ahead : ahead + lap.count();
    return std::min(around, 2 * (lap.count() - around));
}

// The cost grows away from the playhead on both sides, so its maximum stands at an end of the map, or, within a
// lap, which is a ring, beside the point where the way on equals twice the way back.
FrameCache::Pictures::const_iterator FrameCache::dearest() const {
    auto best = pictures_.begin();
    const auto consider = [&](Pictures::const_iterator candidate) {
        if (candidate != pictures_.end() && cost(candidate->first) > cost(best->first)) best = candidate;
    };
    consider(std::prev(pictures_.end()));
    if (const Lap& lap = travel_.lap; lap.holds(travel_.playhead)) {
        const qint64 back = travel_.playhead - lap.first - travel_.direction * (lap.count() / 3);
        const auto after = pictures_.lower_bound(lap.first + (back + lap.count()) % lap.count());
        consider(after);
        if (after != pictures_.begin()) consider(std::prev(after));
    }
    return best;
}

/// Takes out what does not fit; the caller frees it outside the lock.
std::vector<VideoFrame> FrameCache::giveUp() {
    std::vector<VideoFrame> victims;
    while (bytes_ > room() && pictures_.size() > 1) {
        const auto victim = dearest();
        bytes_ -= victim->second.isNull() ? 0 : victim->second.byteCount();
        victims.push_back(victim->second);
        pictures_.erase(victim);
    }
    return victims;
}

void FrameCache::setBudget(qint64 bytes) {
    std::vector<VideoFrame> victims;
    const std::lock_guard lock(mutex_);
    budget_ = bytes;
    victims = giveUp();
}

void FrameCache::addElsewhere(qint64 bytes) {
    std::vector<VideoFrame> victims;
    const std::lock_guard lock(mutex_);
    elsewhere_ += bytes;
    victims = giveUp();
}

void FrameCache::setBeside(quint64 generation, qint64 bytes) {
    std::vector<VideoFrame> victims;
    const std::lock_guard lock(mutex_);
    if (generation != generation_) return;
    beside_ = bytes;
    victims = giveUp();
}

bool FrameCache::put(quint64 generation, qint64 frame, const VideoFrame& picture) {
    std::vector<VideoFrame> evicted; // freed outside the lock
    const std::lock_guard lock(mutex_);
    if (generation != generation_) return false;
    const qint64 size = picture.isNull() ? 0 : picture.byteCount();
    const auto [at, isNew] = pictures_.try_emplace(frame, picture);
    if (!isNew) return true;
    bytes_ += size;
    if (size > 0) lastSize_ = size;
    evicted = giveUp();
    return evicted.empty() || pictures_.count(frame) != 0;
}

bool FrameCache::contains(qint64 frame) const {
    const std::lock_guard lock(mutex_);
    return pictures_.count(frame) != 0;
}

VideoFrame FrameCache::find(qint64 frame) const {
    const std::lock_guard lock(mutex_);
    const auto at = pictures_.find(frame);
    return at == pictures_.end() ? VideoFrame() : at->second;
}

std::optional<qint64> FrameCache::nearestBetween(qint64 first, qint64 last) const {
    const std::lock_guard lock(mutex_);
    if (last >= first) {
        for (auto at = pictures_.upper_bound(last); at != pictures_.begin();) {
            --at;
            if (at->first < first) break;
            if (!at->second.isNull()) return at->first;
        }
        return std::nullopt;
    }
    for (auto at = pictures_.lower_bound(last); at != pictures_.end() && at->first <= first; ++at)
        if (!at->second.isNull()) return at->first;
    return std::nullopt;
}

std::optional<qint64> FrameCache::nearest(qint64 frame) const {
    const std::lock_guard lock(mutex_);
    std::optional<qint64> best;
    auto after = pictures_.lower_bound(frame);
    for (auto at = after; at != pictures_.begin();)
        if (--at; !at->second.isNull()) {
            best = at->first;
            break;
        }
    while (after != pictures_.end() && after->second.isNull())
        ++after;
    if (after != pictures_.end() && (!best || after->first - frame < frame - *best)) best = after->first;
    return best;
}

bool FrameCache::wouldKeep(qint64 frame) const {
    const std::lock_guard lock(mutex_);
    if (pictures_.empty() || bytes_ + lastSize_ <= room()) return true;
    return cost(dearest()->first) > cost(frame);
}

qint64 FrameCache::capacity() const {
    const std::lock_guard lock(mutex_);
    return lastSize_ > 0 ? std::max<qint64>(1, room() / lastSize_) : std::numeric_limits<qint32>::max();
}

qint64 FrameCache::byteCount() const {
    const std::lock_guard lock(mutex_);
    return bytes_;
}

qint64 FrameCache::elsewhere() const {
    const std::lock_guard lock(mutex_);
    return elsewhere_ + beside_;
}

qint64 FrameCache::budget() const {
    const std::lock_guard lock(mutex_);
    return budget_;
}

std::vector<std::pair<qint64, qint64>> FrameCache::readyRanges() const {
    const std::lock_guard lock(mutex_);
    std::vector<std::pair<qint64, qint64>> ranges;
    for (const auto& [frame, picture] : pictures_) {
        if (picture.isNull()) continue;
        if (!ranges.empty() && ranges.back().second + 1 == frame)
            ranges.back().second = frame;
        else
            ranges.emplace_back(frame, frame);
    }
    return ranges;
}

} // namespace daylark
