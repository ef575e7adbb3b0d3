#pragma once

#include <QString>

namespace daylark {

/// Bytes as decimal megabytes with one decimal: 12345678 is "12.3".
[[nodiscard]] QString fileSizeTextOf(qint64 bytes);
/// "%.0f" of a rate.
[[nodiscard]] QString frameRateTextOf(float rate);
/// Length in frames by the current back end's rule, in single precision.
[[nodiscard]] qint64 durationFramesOf(float seconds, float rate);

} // namespace daylark
