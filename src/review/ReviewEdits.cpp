#include "review/ReviewEdits.h"

#include "review/RecordFields.h"

#include <algorithm>
#include <set>
#include <tuple>
#include <unordered_set>

namespace daylark {

namespace {

bool isIcon(const QString& field) {
    return field == QLatin1String("flag") || field.endsWith(QLatin1String("Icon"));
}

EditInfo step(const QString& title) {
    return {title, EditKind::step};
}

QString runKey(const QString& what, RecordId record) {
    return what + QLatin1Char('/') + QString::number(record);
}

void putGrade(Movie& movie, const Grade& grade) {
    movie.setGrade(grade);
    movie.displayGradeIcon(); // a neutral grade switches it on
}

} // namespace

ReviewEdits::ReviewEdits(QObject* parent)
    : QObject(parent) {
    connect(&store_, &ReviewStore::applied, this, &ReviewEdits::tell);
    connect(&store_, &ReviewStore::sessionReplaced, this, &ReviewEdits::colourConfigurationChanged);
}

void ReviewEdits::setFlag(const Movies& movies, int tag) {
    const ReviewStore::Group group(store_, step(titleForItems(QStringLiteral("Flag"), movies.size())));
    for (const auto& movie : movies)
        store_.modify(movie, {}, [tag](Movie& edited) { edited.setFlag(tag); });
}

void ReviewEdits::setNotes(const std::shared_ptr<Movie>& movie, NotesField field,
                           const AttributedString& text) {
    const bool first = field == NotesField::notes;
    EditInfo info = step(QStringLiteral("Notes"));
    info.mergeKey =
        runKey(first ? QStringLiteral("notes") : QStringLiteral("notes2"), store_.records().idOf(movie));
    store_.modify(movie, info, [&](Movie& edited) {
        auto& notes = first ? edited.notes : edited.notes2;
        if (notes == text) return;
        notes = text;
        edited.displayNotesIcon();
    });
}

void ReviewEdits::setGrade(const std::shared_ptr<Movie>& movie, const Grade& grade, const QString& control) {
    EditInfo info = step(QStringLiteral("Grade"));
    if (!control.isEmpty()) info.mergeKey = runKey(control, store_.records().idOf(movie));
    store_.modify(movie, info, [&](Movie& edited) { putGrade(edited, grade); });
}

void ReviewEdits::pasteGrade(const Movies& movies, const Grade& grade, bool apply) {
    const ReviewStore::Group group(store_, step(titleForItems(QStringLiteral("Grade"), movies.size())));
    for (const auto& movie : movies)
        store_.modify(movie, {}, [&](Movie& edited) {
            putGrade(edited, grade);
            if (apply) edited.applyGrade = true;
        });
}

void ReviewEdits::setApplyGrade(const std::shared_ptr<Movie>& movie, bool apply) {
    store_.modify(movie, step(apply ? QStringLiteral("Grade On") : QStringLiteral("Grade Off")),
                  [apply](Movie& edited) { edited.applyGrade = apply; });
}

void ReviewEdits::setInputSpace(const std::shared_ptr<Movie>& movie, const QString& space) {
    store_.modify(movie, step(QStringLiteral("Input Space")),
                  [&space](Movie& edited) { edited.inputColourSpace = space; });
}

void ReviewEdits::setFirstFrameNumber(const std::shared_ptr<Movie>& movie, std::optional<qint64> number) {
    store_.modify(movie, step(QStringLiteral("First Frame Number")), [number](Movie& edited) {
        edited.firstFrameNumber = number ? std::optional<Number>(*number) : std::nullopt;
    });
}

// Bookmarks.

void ReviewEdits::refreshBookmarkIcons(const std::shared_ptr<Movie>& movie) {
    store_.modify(movie, {}, [](Movie& edited) {
        edited.displayBookmarkIcon();
        edited.displayDrawingIcon();
    });
}

void ReviewEdits::addBookmarks(const std::shared_ptr<Movie>& movie, const Bookmarks& bookmarks) {
    if (bookmarks.empty()) return;
    const ReviewStore::Group group(store_, step(bookmarks.size() == 1 ? QStringLiteral("Add Bookmark")
                                                                      : QStringLiteral("Add Bookmarks")));
    ObjectList<Bookmark> list = movie->bookmarkStore;
    list.isNil = false;
    list.insert(list.end(), bookmarks.begin(), bookmarks.end());
    store_.setBookmarks(movie, list, {});
    refreshBookmarkIcons(movie);
}

void ReviewEdits::removeBookmarks(const std::shared_ptr<Movie>& movie, const Bookmarks& bookmarks) {
    const ReviewStore::Group group(store_, step(bookmarks.size() == 1 ? QStringLiteral("Remove Bookmark")
                                                                      : QStringLiteral("Remove Bookmarks")));
    ObjectList<Bookmark> list = movie->bookmarkStore;
    const std::unordered_set<std::shared_ptr<Bookmark>> unwanted(bookmarks.begin(), bookmarks.end());
    const auto removed = std::erase_if(list, [&unwanted](const auto& bookmark) { return unwanted.contains(bookmark); });
    if (removed == 0) return;
    store_.setBookmarks(movie, list, {});
    refreshBookmarkIcons(movie);
}

void ReviewEdits::editBookmark(const std::shared_ptr<Movie>& movie, const std::shared_ptr<Bookmark>& bookmark,
                               const EditInfo& info, const std::function<void(Bookmark&)>& edit) {
    const ReviewStore::Group group(store_, info);
    store_.modify(movie, bookmark, {}, edit);
    refreshBookmarkIcons(movie);
}

void ReviewEdits::sortBookmarks(const std::shared_ptr<Movie>& movie) {
    const auto earlier = [](const auto& a, const auto& b) {
        return std::tie(a->firstFrame, a->lastFrame) < std::tie(b->firstFrame, b->lastFrame);
    };
    if (std::is_sorted(movie->bookmarkStore.begin(), movie->bookmarkStore.end(), earlier)) return;
    ObjectList<Bookmark> sorted = movie->bookmarkStore;
    std::stable_sort(sorted.begin(), sorted.end(), earlier);
    store_.setBookmarks(movie, sorted, {{}, EditKind::background}); // by itself; part of a step that needs it
}

void ReviewEdits::setColourConfiguration(const QString& configuration) {
    store_.setColourConfiguration(configuration, step(QStringLiteral("Colour Configuration")));
}

void ReviewEdits::setPlaylistName(const std::shared_ptr<Playlist>& playlist, const QString& name) {
    store_.modify(playlist, step(QStringLiteral("Rename Playlist")),
                  [&name](Playlist& edited) { edited.name = name; });
}

void ReviewEdits::refreshIcons(const std::shared_ptr<Movie>& movie) {
    refresh(movie, [](Movie& edited) {
        edited.displayNotesIcon();
        edited.displayGradeIcon();
        edited.displayDrawingIcon();
        edited.displayBookmarkIcon();
    });
}

// Telling.

void ReviewEdits::tell(const Edit& edit) {
    const ReviewRecords& records = store_.records();
    std::set<RecordId> toldMovies, toldBookmarks;
    for (const Change& change : edit.changes)
        if (change.record == sessionRecord && change.field == fields::colourConfiguration) {
            Q_EMIT colourConfigurationChanged();
            break;
        }
    for (const bool icons : {false, true})
        for (const Change& change : edit.changes) {
            if (change.isWholeRecord() || isIcon(change.field) != icons) continue;
            if (icons && toldMovies.contains(change.record)) continue;
            const auto record = records.record(change.record);
            if (const auto movie = std::dynamic_pointer_cast<Movie>(record)) {
                toldMovies.insert(change.record);
                Q_EMIT movieChanged(movie, change.field);
            } else if (const auto bookmark = std::dynamic_pointer_cast<Bookmark>(record)) {
                const auto owner = records.ownerOf(change.record);
                if (owner) toldMovies.insert(records.knownId(owner.get()));
                if (toldBookmarks.insert(change.record).second) Q_EMIT bookmarkChanged(owner, bookmark);
            }
        }
}

} // namespace daylark
