#include "export/notes/NotesReport.h"

#include "export/notes/ExportTexts.h"
#include "model/StatusCodes.h"
#include "preferences/Preferences.h"

#include <algorithm>

namespace daylark {

namespace {

NotesReport::Item itemOf(const Movie& movie, const Preferences& preferences, BookmarkOrder order) {
    NotesReport::Item item;
    item.name = preferences.hideFileExtensionInNotes() ? nameWithoutExtension(movie.filenameString)
                                                       : movie.filenameString;
    item.notes = movie.notes.value_or(AttributedString());
    item.notes2 = movie.notes2.value_or(AttributedString());
    if (!movie.flagString.isEmpty() && movie.flagString != QString::number(status::none)) {
        item.flag = preferences.statusName(movie.flagString);
        if (item.flag.isNull()) item.flag = QStringLiteral(""); // a flag all the same
    }
    if (!preferences.printBookmarksInNotes()) return item;
    for (const auto& bookmark : bookmarksInOrder(movie, order))
        item.bookmarks.push_back({bookmark->firstTC, bookmark->lastTC, bookmark->firstFrame,
                                  bookmark->lastFrame, bookmark->overlayString, bookmark->overlayString2});
    return item;
}

} // namespace

ObjectList<Bookmark> bookmarksInOrder(const Movie& movie, BookmarkOrder order) {
    ObjectList<Bookmark> bookmarks = movie.bookmarkStore;
    if (order == BookmarkOrder::byFirstTimecode)
        std::stable_sort(bookmarks.begin(), bookmarks.end(),
                         [](const auto& a, const auto& b) { return a->firstTC < b->firstTC; });
    return bookmarks;
}

NotesReport notesReport(const NotesMovies& movies, const Preferences& preferences, BookmarkOrder order) {
    NotesReport report;
    report.notes1Title = preferences.notes1Title();
    report.notes2Title = preferences.notes2Title();
    report.printsBookmarks = preferences.printBookmarksInNotes();
    report.items.reserve(movies.size());
    for (const auto& movie : movies)
        report.items.push_back(itemOf(*movie, preferences, order));
    return report;
}

} // namespace daylark
