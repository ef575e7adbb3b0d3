#pragma once

#include <QByteArray>

namespace daylark::truth {

/// What an MXF file in memory says of itself, changed to what isn't so; the pictures stay as they are. For
/// files as the muxer writes them, shorter than one of its partitions. False: not such a file.

/// Every duration of so many edit units becomes another one.
[[nodiscard]] bool changeMxfDurations(QByteArray& file, qint64 from, qint64 to);
/// The index table knows nothing of an edit unit; those behind it move up.
[[nodiscard]] bool leaveOutOfMxfIndex(QByteArray& file, int unit);
/// The index table takes an edit unit for the one behind it, and that one for it.
[[nodiscard]] bool exchangeInMxfIndex(QByteArray& file, int unit);

} // namespace daylark::truth
