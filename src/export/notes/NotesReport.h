#pragma once

#include "model/Movie.h"
#include "model/runs/FrameNumbers.h"

#include <QString>

#include <memory>
#include <vector>

namespace daylark {

class Preferences;

/// What a notes export says about which item, as plain values: every format writes the same report. Made on
/// the interface thread from records and preferences, which it doesn't change; written on any.
struct NotesReport {
    struct Bookmark {
        QString firstTC, lastTC;
        qint64 firstFrame = 0, lastFrame = 0; ///< counted from 1
        QString description, note;            ///< null when absent
    };
    struct Item {
        QString name;                    ///< of the file, as the preference shows it
        QString shownName;               ///< the same of what people call it: of a run, all of it
        AttributedString notes, notes2;  ///< empty when absent
        QString flag;                    ///< the label; null for no flag
        std::vector<Bookmark> bookmarks; ///< none where they are not wanted
        FrameNumbers numbers;            ///< what the production calls its frames
        QString numberedBy;              ///< the file whose timecode tells the numbers; empty: they are known
        float fps = 0;
    };
    QString notes1Title, notes2Title;
    bool printsBookmarks = true;
    std::vector<Item> items;
};

/// Reads the timecodes of those items whose numbers they tell. Worker threads; what gives no answer is counted from 1.
void readNumbersByTimecode(NotesReport& report);

/// In which order a movie's bookmarks are said.
enum class BookmarkOrder {
    stored,
    byFirstTimecode ///< ascending by the text of `firstTC`, equal ones as stored
};

using NotesMovies = std::vector<std::shared_ptr<Movie>>;
[[nodiscard]] NotesReport notesReport(const NotesMovies& movies, const Preferences& preferences,
                                      BookmarkOrder order);
[[nodiscard]] ObjectList<Bookmark> bookmarksInOrder(const Movie& movie, BookmarkOrder order);

} // namespace daylark
