#pragma once

#include <QByteArray>
#include <QString>

namespace daylark {

/// Rules that the text exports share. Pure functions; any thread.

/// A file's name up to its last full stop; a leading full stop is no extension.
[[nodiscard]] QString nameWithoutExtension(const QString& name);

/// What a save panel proposes for an export of a list: its name with this behind it ("Day 1", "_notes.csv"). A name, not a
/// path: slashes in it become colons.
[[nodiscard]] QString exportFileName(const QString& listName, const QString& ending);

/// UTF-8, but only as many bytes as the text has UTF-16 units: text beyond ASCII loses its last bytes. Wanted: such files are
/// compared with those of other makers byte for byte.
[[nodiscard]] QByteArray utf8CutToUnits(const QString& text);

} // namespace daylark
