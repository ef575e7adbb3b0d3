#include "export/notes/NotesReport.h"

#include "base/jobs/Patience.h"
#include "export/notes/ExportTexts.h"
#include "media/facts/TimecodeTrack.h"
#include "model/StatusCodes.h"
#include "preferences/Preferences.h"

#include <algorithm>

namespace daylark {

namespace {

NotesReport::Item itemOf(const Movie& movie, const Preferences& preferences, BookmarkOrder order) {
    NotesReport::Item item;
    const auto named = [&preferences](const QString& name) {
        return preferences.hideFileExtensionInNotes() ? nameWithoutExtension(name) : name;
    };
    item.name = named(movie.filenameString);
    item.shownName = named(movie.shownName());
    item.numbers = frameNumbersOf(movie, preferences.usualFirstFrameNumber());
    item.fps = movie.mMovieFPS;
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
    if (!item.bookmarks.empty() && isNumberedByTimecode(movie, preferences.usualFirstFrameNumber()))
        item.numberedBy = movie.filepathString;
    return item;
}

} // namespace

void readNumbersByTimecode(NotesReport& report) {
    using Start = std::optional<SmpteTime>;
    PatientQuestions questions;
    for (NotesReport::Item& item : report.items) {
        if (item.numberedBy.isEmpty()) continue;
        const auto answer =
            questions.ask<Start>(item.numberedBy, [path = item.numberedBy] { return firstTimecodeOf(path); });
        item.numbers = numbersByTimecode(answer.value_or(Start()), item.fps);
        item.numberedBy.clear();
    }
}

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
