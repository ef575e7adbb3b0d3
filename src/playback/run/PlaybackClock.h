#pragma once

#include <QtGlobal>

namespace daylark {

/// The time that playback runs by. Tests turn it by hand. Interface thread.
class PlaybackClock {
public:
    virtual ~PlaybackClock() = default;
    [[nodiscard]] virtual qint64 nanoseconds() const = 0; ///< monotonic
};

class MonotonicClock : public PlaybackClock {
public:
    [[nodiscard]] qint64 nanoseconds() const override;
};

} // namespace daylark
