#pragma once

#include "playback/read/ReadPlan.h"

namespace daylark {

/// A frame is as good as ready for a moving hand when a picture at most so many frames away is: a jump leaves
/// out pictures that no other refers to, which stand singly or in pairs.
constexpr qint64 goodEnough = 2;

/// Whether a moving hand sees enough at this frame.
[[nodiscard]] bool isCovered(qint64 frame, const FrameCache& cache);

/// The key frame nearest to this one, its own group's or the next one's, if it is nearer than every ready
/// picture.
[[nodiscard]] std::optional<qint64> nearerKeyFrame(qint64 frame, const ReadState& state,
                                                   const FrameCache& cache);

/// What is read next while a hand drags and moves: a key frame where that is nearer than all that is ready,
/// then the group towards the hand in short strides (each a jump, so that what need not be decoded is left
/// out, and each asked for anew, so that the hand is never far away from what is being read), then where the
/// hand is heading, the group before included, and only then what was left out around a slow hand. Nothing
/// when all that is good enough. Any thread.
[[nodiscard]] std::optional<qint64> nextFrameForHand(const ReadDemand& demand, const ReadState& state,
                                                     const FrameCache& cache);

} // namespace daylark
