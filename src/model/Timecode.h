#pragma once

#include <QString>

#include <optional>

namespace daylark {

/// A time as a timecode track holds it: 24 bytes in its archived form.
struct SmpteTime {
    qint16 subframes = 0, subframeDivisor = 0;
    quint32 counter = 0, type = 0, flags = 0;
    qint16 hours = 0, minutes = 0, seconds = 0, frames = 0;
    bool operator==(const SmpteTime&) const = default;
};

/// Timecode text of a frame (counted from 1), "%02lu:%02lu:%02lu:%02lu", counted at the rate rounded to a whole number,
/// without drop frame; `start` is the track's, when there is one: frames then follow each other by `step`, as those of a run of
/// every second picture do, which counts those left out. Single precision where it is stated, so that texts agree with those in
/// older sessions. A rate that rounds to 0 gives "00:00:00:00". Any thread.
[[nodiscard]] QString timecodeText(qint64 frame, float fps, const std::optional<SmpteTime>& start = std::nullopt,
                                   qint64 step = 1);

/// "%02i:%02i", or "%i:%02i:%02i" beyond 3599 s either way, of the seconds truncated.
[[nodiscard]] QString durationTextOf(float seconds);

} // namespace daylark
