#pragma once

#include <QtGlobal>

namespace daylark {

/// The frames over which a run comes round from the one end to the other; empty for a run that doesn't. A value.
///
///     |-----------[first #################### last]-----------------|
///     0            <- backwards     forwards ->            movie's last
struct Lap {
    qint64 first = 0, last = -1; ///< from 0, inclusive

    [[nodiscard]] bool isEmpty() const { return last < first; }
    [[nodiscard]] qint64 count() const { return last - first + 1; }
    [[nodiscard]] bool holds(qint64 frame) const { return frame >= first && frame <= last; }
    /// What a run at this frame comes to next; the frame beyond where it doesn't come round.
    [[nodiscard]] qint64 after(qint64 frame, int direction) const {
        if (!isEmpty() && frame == (direction > 0 ? last : first)) return direction > 0 ? first : last;
        return frame + direction;
    }
    bool operator==(const Lap&) const = default;
};

} // namespace daylark
