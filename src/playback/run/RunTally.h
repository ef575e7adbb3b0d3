#pragma once

#include <QtGlobal>

#include <deque>

namespace daylark {

/// Counts what a run shows and what it passes by. Frames from 0, moments in nanoseconds of the player's
/// clock. Owned by the player; interface thread; nothing fails.
class RunTally {
public:
    void begin(qint64 now); ///< another run: counts from nothing
    void end() { moments_.clear(); }
    void show(qint64 now);
    void drop(qint64 frames) { dropped_ += frames > 0 ? frames : 0; }
    [[nodiscard]] qint64 shown() const { return shown_; }
    [[nodiscard]] qint64 dropped() const { return dropped_; }
    [[nodiscard]] double rate(qint64 now) const; ///< pictures a second, over the last second

private:
    std::deque<qint64> moments_; ///< of the pictures shown, the last second's
    qint64 began_ = 0, shown_ = 0, dropped_ = 0;
};

} // namespace daylark
