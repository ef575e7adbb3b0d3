#pragma once

#include "model/Movie.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <memory>
#include <vector>

namespace daylark {

/// What the notes export reads of the preferences.
struct NotesOptions {
    bool printBookmarksInNotes = true;
    bool hideFileExtensionInNotes = true;
    QString notes1Title, notes2Title;
    std::function<QString(const QString& code)> flagLabel; ///< the display name of a status code
};

/// One movie's lines, each ended by a carriage return. Sorts the movie's bookmarks in place by the text of
/// their first timecode when bookmarks are printed; wanted. Interface thread.
[[nodiscard]] QString createCSVDataForMovie(Movie& movie, const NotesOptions& options);

/// The whole CSV document as the bytes to write: UTF-8 cut to as many bytes as the text has UTF-16 units;
/// wanted.
[[nodiscard]] QByteArray notesCsv(const std::vector<std::shared_ptr<Movie>>& movies,
                                  const NotesOptions& options);

} // namespace daylark
