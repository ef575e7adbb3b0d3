#include "playback/run/PlaybackClock.h"

#include <chrono>

namespace daylark {

qint64 MonotonicClock::nanoseconds() const {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::nanoseconds>(now).count();
}

} // namespace daylark
