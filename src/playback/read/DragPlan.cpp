#include "playback/read/DragPlan.h"

#include "playback/read/FrameCache.h"

#include <algorithm>
#include <cstdlib>

namespace daylark {

namespace {

constexpr qint64 strideLength = 16; // longer than what a reader decodes whole,
constexpr qint64 wholeLength = 8;   // and one that it does
constexpr qint64 leadBehind = 24;   // a hand going back wants what lies before the frame as well
constexpr qint64 slowReach = 24;    // frames in half a second, of which a hand sees each
constexpr qint64 slowAhead = 8;
constexpr qint64 leastAhead = 16, mostAhead = 240;

qint64 keyBefore(qint64 frame, const ReadState& state) {
    return std::clamp<qint64>(state.keyFrameBefore(frame), 0, frame);
}

/// The end of the next stride of the group's decoding towards the frame, at the `limit` at most.
qint64 strideTowards(qint64 frame, qint64 limit, qint64 length, const ReadState& state,
                     const FrameCache& cache) {
    const qint64 key = keyBefore(frame, state);
    const bool onTheWay = state.lastRead >= key && state.lastRead < frame;
    qint64 from = onTheWay ? state.lastRead + 1 : key;
    while (from < frame && isCovered(from, cache))
        ++from;
    return std::min(limit, from + length - 1);
}

/// In the hand's direction, the first frame where it would see too little.
std::optional<qint64> aheadOfHand(const ReadDemand& demand, const ReadState& state, const FrameCache& cache) {
    const qint64 half = std::max<qint64>(1, cache.capacity() / 2);
    const qint64 reach = std::min(std::clamp(demand.reach, leastAhead, mostAhead), half);
    for (qint64 ahead = 1; ahead <= reach; ++ahead) {
        const qint64 frame = demand.target + ahead * demand.heading;
        if (frame < 0 || frame >= state.frames || !cache.wouldKeep(frame)) break;
        if (isCovered(frame, cache)) continue;
        const qint64 groupEnd = std::max(frame, state.keyFrameAfter(frame) - 1);
        // What the decoder has gone past was left out, or given up by the cache for want of room.
        if (frame <= state.lastRead && state.lastRead <= groupEnd) break;
        const qint64 length = demand.reach <= slowReach ? wholeLength : strideLength;
        return strideTowards(frame, groupEnd, length, state, cache);
    }
    return std::nullopt;
}

/// A slow hand sees every frame: what was left out is read in order, from a little before.
std::optional<qint64> aroundSlowHand(const ReadDemand& demand, const ReadState& state,
                                     const FrameCache& cache) {
    if (demand.reach > slowReach) return std::nullopt;
    for (qint64 ahead = 0; ahead <= slowAhead; ++ahead) {
        const qint64 frame = demand.target + ahead * demand.heading;
        if (frame < 0 || frame >= state.frames || !cache.wouldKeep(frame)) break;
        if (cache.contains(frame)) continue;
        const qint64 lead = demand.heading < 0 ? leadBehind : 0;
        const qint64 from = std::max(keyBefore(frame, state), frame - lead);
        if (state.lastRead < from || state.lastRead >= frame) return from;
        qint64 next = state.lastRead + 1;
        while (next < frame && cache.contains(next))
            ++next;
        return next;
    }
    return std::nullopt;
}

} // namespace

bool isCovered(qint64 frame, const FrameCache& cache) {
    const std::optional<qint64> near = cache.nearest(frame);
    return near && std::abs(*near - frame) <= goodEnough;
}

std::optional<qint64> nearerKeyFrame(qint64 frame, const ReadState& state, const FrameCache& cache) {
    const qint64 own = keyBefore(frame, state), after = state.keyFrameAfter(frame);
    const bool afterIsNearer = after > frame && after < state.frames && after - frame < frame - own;
    const qint64 key = afterIsNearer ? after : own;
    const std::optional<qint64> ready = cache.nearest(frame);
    if (ready && std::abs(*ready - frame) <= std::abs(key - frame)) return std::nullopt;
    return cache.contains(key) ? std::nullopt : std::optional(key);
}

std::optional<qint64> nextFrameForHand(const ReadDemand& demand, const ReadState& state,
                                       const FrameCache& cache) {
    if (const auto key = nearerKeyFrame(demand.target, state, cache)) return key;
    if (!isCovered(demand.target, cache))
        return strideTowards(demand.target, demand.target, strideLength, state, cache);
    if (const auto ahead = aheadOfHand(demand, state, cache)) return ahead;
    return aroundSlowHand(demand, state, cache);
}

} // namespace daylark
