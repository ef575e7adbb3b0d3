#include "playback/read/ReadPlan.h"

#include "playback/read/DragPlan.h"
#include "playback/read/FrameCache.h"

#include <algorithm>

namespace daylark {

namespace {

constexpr qint64 playAhead = 64;        // frames kept ready ahead of a running playhead
constexpr qint64 pauseAhead = 8;        // and of a standing one, so that the next steps are ready
constexpr qint64 stepsToGroupEdge = 60; // nearer than that, stepping back wants the group before as well
constexpr qint64 readOnGap = 16;        // reading on over a few frames is cheaper than a seek, and keeps them

/// The group in its order from where the decoder stands, else from its key frame; what is ready is passed
/// over.
qint64 readGroupTowards(qint64 frame, const ReadState& state, const FrameCache& cache) {
    const qint64 key = std::clamp<qint64>(state.keyFrameBefore(frame), 0, frame);
    qint64 next = state.lastRead >= key && state.lastRead < frame ? state.lastRead + 1 : key;
    while (next < frame && cache.contains(next))
        ++next;
    return next;
}

qint64 readTowards(qint64 frame, const ReadDemand& demand, const ReadState& state, const FrameCache& cache) {
    if (demand.direction < 0) return readGroupTowards(frame, state, cache);
    const qint64 key = std::clamp<qint64>(state.keyFrameBefore(frame), 0, frame);
    const bool onTheWay = state.lastRead >= key && state.lastRead < frame;
    return onTheWay && (demand.playing || frame - state.lastRead <= readOnGap) ? state.lastRead + 1 : frame;
}

/// Frames from the target back to its group's beginning, and the length of the group before.
struct WayBack {
    qint64 rest = 0, before = 0;
};

WayBack wayBack(qint64 target, const ReadState& state) {
    const qint64 key = std::clamp<qint64>(state.keyFrameBefore(target), 0, target);
    const qint64 before = key > 0 ? key - std::clamp<qint64>(state.keyFrameBefore(key - 1), 0, key - 1) : 0;
    return {target - key, before};
}

// Half the cache at most: a group that does not fit whole is then read anew only once per half cache of
// pictures.
qint64 withinCache(qint64 frames, const FrameCache& cache) {
    return std::min(frames, std::max<qint64>(1, cache.capacity() / 2));
}

qint64 reachAhead(const ReadDemand& demand, const ReadState& state, const FrameCache& cache) {
    qint64 reach = demand.playing ? playAhead : pauseAhead;
    if (demand.direction < 0) {
        const WayBack way = wayBack(demand.target, state);
        reach = std::max(reach, way.rest + (demand.playing || way.rest < stepsToGroupEdge ? way.before : 0));
    }
    return withinCache(reach, cache);
}

/// Each picture stands for itself here.
bool isWithoutGroups(qint64 target, const ReadState& state) {
    return target > 0 && state.keyFrameBefore(target) == target &&
           state.keyFrameBefore(target - 1) == target - 1;
}

/// Standing, what of the group lies behind the target, or some frames: a hand that stops often steps back.
std::optional<qint64> nextBehind(const ReadDemand& demand, const ReadState& state, const FrameCache& cache) {
    const qint64 wanted = isWithoutGroups(demand.target, state) ? std::min(pauseAhead, demand.target)
                                                                : wayBack(demand.target, state).rest;
    const qint64 behind = withinCache(wanted, cache);
    for (qint64 back = 1; back <= behind; ++back)
        if (const qint64 frame = demand.target - back; !cache.contains(frame))
            return cache.wouldKeep(frame) ? std::optional(readGroupTowards(frame, state, cache))
                                          : std::nullopt;
    return std::nullopt;
}

} // namespace

qint64 readyToRoll(const ReadDemand& demand, const ReadState& state, const FrameCache& cache) {
    qint64 ahead = 1;
    if (demand.direction < 0) {
        // A group is decoded several times as fast as it plays: a third of that time is enough to read
        // another.
        const WayBack way = wayBack(demand.target, state);
        if (way.rest * 3 < way.before) ahead = way.rest + way.before;
    }
    return withinCache(ahead, cache);
}

std::optional<qint64> nextFrameToRead(const ReadDemand& demand, const ReadState& state,
                                      const FrameCache& cache) {
    if (demand.target < 0 || demand.target >= state.frames) return std::nullopt;
    if (demand.dragging) return nextFrameForHand(demand, state, cache);
    if (!cache.contains(demand.target)) return readTowards(demand.target, demand, state, cache);

    const qint64 reach = reachAhead(demand, state, cache);
    qint64 frame = demand.target;
    for (qint64 ahead = 1; ahead <= reach; ++ahead) {
        frame = demand.playing ? demand.lap.after(frame, demand.direction) : frame + demand.direction;
        if (frame < 0 || frame >= state.frames || frame == demand.target) break;
        if (!cache.contains(frame))
            return cache.wouldKeep(frame) ? std::optional(readTowards(frame, demand, state, cache))
                                          : std::nullopt;
    }
    return demand.playing ? std::nullopt : nextBehind(demand, state, cache);
}

} // namespace daylark
