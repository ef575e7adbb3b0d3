#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace daylark {

/// The manifest of a list, for editorial's tracking: a line an item with its place, its version's name (the file's without
/// extension), the list's name and the session's. No field is quoted or cleaned, so a comma in a name parts its cell; lines
/// end in a carriage return; the bytes are cut as `utf8CutToUnits` says. All wanted. Any thread.
[[nodiscard]] QByteArray playlistManifest(const QStringList& filenames, const QString& playlistName,
                                          const QString& sessionName);

} // namespace daylark
