#pragma once

#include <QtGlobal>

namespace daylark {

/// A time on a movie's clock: value ticks of 1/scale second. A plain value. Compare across scales through `seconds` only for
/// display; which frame stands at a time is the sample index's to say.
struct MediaTime {
    qint64 value = 0;
    qint64 scale = 600; ///< ticks a second; may carry flags in its high 32 bits when read from an archive
    qint64 flags = 0;

    [[nodiscard]] double seconds() const { return qint32(scale) ? double(value) / double(qint32(scale)) : 0.0; }
    bool operator==(const MediaTime&) const = default;
};

} // namespace daylark
