#pragma once

#include "model/Movie.h"
#include "model/Playlist.h"
#include "review/Change.h"

#include <vector>

namespace daylark {

/// The fields of the records as values, by name: everything that a session stores of a record except the lists
/// of other records, which `ReviewRecords` keeps by number. One table a class; a field that is missing here
/// would change unnoticed. Interface thread, or copies.
namespace fields {

/// Every field that differs, with what it is in both; list fields are left out.
[[nodiscard]] Changes differences(RecordId id, const Movie& before, const Movie& after);
[[nodiscard]] Changes differences(RecordId id, const Bookmark& before, const Bookmark& after);
[[nodiscard]] Changes differences(RecordId id, const Playlist& before, const Playlist& after);

/// The value of a field; nil for a name that the record does not have. `at` as in `Change`.
[[nodiscard]] Value read(const Movie& movie, const QString& field, qint64 at);
[[nodiscard]] Value read(const Bookmark& bookmark, const QString& field, qint64 at);
[[nodiscard]] Value read(const Playlist& playlist, const QString& field, qint64 at);

/// Puts a value there; a name that the record does not have is passed over.
void write(Movie& movie, const QString& field, qint64 at, const Value& value);
void write(Bookmark& bookmark, const QString& field, qint64 at, const Value& value);
void write(Playlist& playlist, const QString& field, qint64 at, const Value& value);

/// A playlist's own fields without its items: a list of thousands is not copied for a name.
[[nodiscard]] Playlist withoutItems(const Playlist& playlist);

/// The records' field names, in the order of the archive.
[[nodiscard]] QStringList movieFields();
[[nodiscard]] QStringList bookmarkFields();
[[nodiscard]] QStringList playlistFields();

// The fields that are lists of other records.
inline const QString playlists = QStringLiteral("playlists"), movieList = QStringLiteral("movieList"),
                     bookmarkStore = QStringLiteral("bookmarkStore");
// The session's own field that is no list.
inline const QString colourConfiguration = QStringLiteral("colourConfiguration");
// The fields whose values have several numbers.
inline const QString grade = QStringLiteral("grade"), drawings = QStringLiteral("drawings");

} // namespace fields

} // namespace daylark
