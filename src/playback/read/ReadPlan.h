#pragma once

#include "playback/read/Lap.h"

#include <QtGlobal>

#include <functional>
#include <optional>

namespace daylark {

class FrameCache;

/// What the player wants read; a value (frames from 0).
struct ReadDemand {
    qint64 target = -1; ///< the frame under the playhead; -1 for nothing
    int direction = 1;  ///< of travel: 1 or -1
    bool playing = false;
    Lap lap = {}; ///< of a run
    bool dragging = false; ///< a hand is still looking for its place: something near is wanted soon
    int heading = 1;       ///< while it drags: which way it moves, 1 or -1,
    qint64 reach = 0;      ///< and the frames that it passes in half a second
};

/// Where the reading stands; a value.
struct ReadState {
    qint64 frames = 0;    ///< of the movie
    qint64 lastRead = -1; ///< the frame read last, so that the next one in order is cheap; -1 for none
    std::function<qint64(qint64)> keyFrameBefore = {};
    std::function<qint64(qint64)> keyFrameAfter = {}; ///< the next group's; `frames` when there is none
};

/// The frame to read next so that the demand is met: the target if it is not in the cache, else what lies
/// ahead in the direction of travel, else (standing) the rest of the target's group; nothing when enough is
/// ready. Backwards a group is read forwards from its key frame, so that each of its samples is decoded once;
/// while a hand drags it is read as `nextFrameForHand` says. Reading one frame after the other by this plan
/// ends; it is asked again after each. Any thread.
[[nodiscard]] std::optional<qint64> nextFrameToRead(const ReadDemand& demand, const ReadState& state,
                                                    const FrameCache& cache);

/// How many frames beyond the target are to be ready in the direction of travel before a run may begin, so
/// that it isn't held up soon after: one, or backwards near a group's beginning the whole group before.
[[nodiscard]] qint64 readyToRoll(const ReadDemand& demand, const ReadState& state, const FrameCache& cache);

} // namespace daylark
