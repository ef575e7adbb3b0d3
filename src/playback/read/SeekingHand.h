#pragma once

#include <QtGlobal>

#include <deque>
#include <optional>
#include <utility>
#include <vector>

namespace daylark {

class FrameCache;

/// A hand that looks for its place in a movie, by one jump after the other or dragging. It knows what was
/// asked for lately and how the hand moves, and says which of the ready pictures it is shown: jumping, the
/// newest of those asked for; dragging, the nearest, each nearer than the one before. Frames from 0, moments
/// in nanoseconds of the player's clock. Owned by the player; interface thread; nothing fails.
class SeekingHand {
public:
    void forget() { *this = {}; }
    void setDragging(bool dragging);
    [[nodiscard]] bool isDragging() const { return dragging_; }
    /// The hand has come to this frame.
    void moveTo(qint64 frame, qint64 now);
    void rest() { moving_ = false; } ///< it has not moved for a moment
    [[nodiscard]] bool isSeeking() const { return dragging_ && moving_; }
    [[nodiscard]] int heading() const { return heading_; } ///< of its last movements: 1 or -1
    /// The frames that it will pass in the next half second if it moves on as it does.
    [[nodiscard]] qint64 reach() const;

    void ask(qint64 frame); ///< the frame is wanted under the playhead
    void forgetAsked() { asked_.clear(); }
    /// The frame whose picture is to be shown now that `frame` is wanted and `shown` stands on the screen
    /// (-1: none); nothing when a better one is still to come.
    [[nodiscard]] std::optional<qint64> toShow(const FrameCache& cache, qint64 frame, qint64 shown);

private:
    [[nodiscard]] static std::optional<qint64> nearer(const FrameCache& cache, qint64 frame, qint64 shown);

    bool dragging_ = false, moving_ = false;
    int heading_ = 1;
    std::deque<std::pair<qint64, qint64>> trail_; ///< moments and frames of the latest movements
    std::vector<qint64> asked_;                   ///< since the exact picture was shown, the newest last
};

} // namespace daylark
