#include "playback/ReadPlan.h"

#include "playback/FrameCache.h"

#include <algorithm>

namespace daylark {

namespace {

constexpr qint64 playAhead = 64; // frames kept ready ahead of a running playhead
constexpr qint64 pauseAhead = 8; // and of a standing one, so that the next steps are ready
constexpr qint64 readOnGap = 16; // reading on over a few frames is cheaper than a seek, and keeps them

qint64 readTowards(qint64 frame, const ReadDemand& demand, const ReadState& state, const FrameCache& cache) {
    const qint64 key = std::clamp<qint64>(state.keyFrameBefore(frame), 0, frame);
    const bool onTheWay = state.lastRead >= key && state.lastRead < frame;
    if (demand.direction < 0) {
        if (onTheWay) return state.lastRead + 1;
        qint64 first = key;
        while (first < frame && cache.contains(first))
            ++first;
        return first;
    }
    return onTheWay && (demand.playing || frame - state.lastRead <= readOnGap) ? state.lastRead + 1 : frame;
}

} // namespace

std::optional<qint64> nextFrameToRead(const ReadDemand& demand, const ReadState& state,
                                      const FrameCache& cache) {
    if (demand.target < 0 || demand.target >= state.frames) return std::nullopt;
    if (!cache.contains(demand.target)) return readTowards(demand.target, demand, state, cache);

    // Half the cache at most: a group that does not fit whole is then read anew only once per half cache of
    // pictures.
    const qint64 reach =
        std::min(demand.playing ? playAhead : pauseAhead, std::max<qint64>(1, cache.capacity() / 2));
    for (qint64 ahead = 1; ahead <= std::min(reach, state.frames - 1); ++ahead) {
        qint64 frame = demand.target + ahead * demand.direction;
        if (frame < 0 || frame >= state.frames) {
            if (!demand.loops || !demand.playing) break;
            frame = (frame + state.frames) % state.frames;
        }
        if (!cache.contains(frame))
            return cache.wouldKeep(frame) ? std::optional(readTowards(frame, demand, state, cache))
                                          : std::nullopt;
    }
    return std::nullopt;
}

} // namespace daylark
