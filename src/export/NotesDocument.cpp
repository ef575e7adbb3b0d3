#include "export/NotesDocument.h"

#include "model/StatusCodes.h"

#include <QStringList>

#include <algorithm>

namespace daylark {

namespace {

/// The name up to its last full stop; a leading full stop is no extension.
QString nameWithoutExtension(const QString& name) {
    const qsizetype stop = name.lastIndexOf(QLatin1Char('.'));
    return stop > 0 && stop < name.size() - 1 ? name.left(stop) : name;
}

/// Commas vanish here but become " -" in bookmark texts; the difference is wanted.
QString withoutCommas(QString text) {
    return text.remove(QLatin1Char(','));
}

QString plainNotes(const std::optional<AttributedString>& notes) {
    if (!notes) return QLatin1String("");
    QString text = notes->string();
    return withoutCommas(text.replace(QLatin1Char('\n'), QLatin1String(". ")));
}

QString bookmarkText(QString text) {
    return text.replace(QLatin1Char(','), QLatin1String(" -"));
}

QString bookmarkBlock(Movie& movie) {
    auto& bookmarks = movie.bookmarkStore;
    std::stable_sort(bookmarks.begin(), bookmarks.end(),
                     [](const auto& a, const auto& b) { return a->firstTC < b->firstTC; });
    QStringList rows;
    rows.reserve(qsizetype(bookmarks.size()));
    for (const auto& bookmark : bookmarks) {
        const QStringList cells{bookmark->firstTC,
                                bookmark->lastTC,
                                QString::number(quint64(bookmark->firstFrame)),
                                QString::number(quint64(bookmark->lastFrame)),
                                bookmarkText(bookmark->overlayString),
                                bookmarkText(bookmark->overlayString2)};
        rows.append(cells.join(QLatin1Char(',')));
    }
    // Further bookmarks stand under the bookmark columns.
    return rows.join(QLatin1String("\r,,,,"));
}

} // namespace

QString createCSVDataForMovie(Movie& movie, const NotesOptions& options) {
    const QString name =
        options.hideFileExtensionInNotes ? nameWithoutExtension(movie.filenameString) : movie.filenameString;
    const bool flagged = movie.flagString != QString::number(status::none);
    QStringList cells{withoutCommas(name), plainNotes(movie.notes), plainNotes(movie.notes2),
                      flagged && options.flagLabel ? options.flagLabel(movie.flagString) : QString()};
    if (options.printBookmarksInNotes) cells.append(bookmarkBlock(movie));
    return cells.join(QLatin1Char(',')) + QLatin1Char('\r');
}

QByteArray notesCsv(const std::vector<std::shared_ptr<Movie>>& movies, const NotesOptions& options) {
    QString text = QLatin1String("Filename,") + options.notes1Title + QLatin1Char(',') + options.notes2Title +
                   QLatin1String(",Flag");
    if (options.printBookmarksInNotes)
        text += QLatin1String(
            ",Bookmark Timecode Start,Bookmark Timecode End,Bookmark First Frame,Bookmark Last Frame,"
            "Bookmark Description,Bookmark Note");
    text += QLatin1String("\r\r"); // an empty line under the header; wanted
    for (const auto& movie : movies)
        text += createCSVDataForMovie(*movie, options);
    // Text beyond ASCII loses its last bytes; wanted.
    return text.toUtf8().left(text.size());
}

} // namespace daylark
