#include "model/ReviewEdits.h"

#include <algorithm>
#include <tuple>

namespace daylark {

namespace {

void refreshBookmarkIcons(Movie& movie) {
    movie.displayBookmarkIcon();
    movie.displayDrawingIcon();
}

} // namespace

void ReviewEdits::setFlag(const Movies& movies, int tag) {
    for (const auto& movie : movies) {
        const QString before = movie->flagString;
        const Image imageBefore = movie->flag;
        movie->setFlag(tag);
        if (movie->flagString != before || !(movie->flag == imageBefore))
            Q_EMIT movieChanged(movie, QStringLiteral("flagString"), before);
    }
}

void ReviewEdits::setNotes(const std::shared_ptr<Movie>& movie, NotesField field,
                           const AttributedString& text) {
    auto& notes = field == NotesField::notes ? movie->notes : movie->notes2;
    if (notes == text) return;
    notes = text;
    movie->displayNotesIcon();
    const bool first = field == NotesField::notes;
    Q_EMIT movieChanged(movie, first ? QStringLiteral("notes") : QStringLiteral("notes2"), {});
}

void ReviewEdits::setGrade(const std::shared_ptr<Movie>& movie, const Grade& grade) {
    const bool differs = !(movie->grade() == grade);
    const bool appliedBefore = movie->applyGrade;
    movie->setGrade(grade);
    movie->displayGradeIcon();
    if (differs) Q_EMIT movieChanged(movie, QStringLiteral("grade"), {});
    if (movie->applyGrade != appliedBefore) // a neutral grade switches it on
        Q_EMIT movieChanged(movie, QStringLiteral("applyGrade"), appliedBefore);
}

void ReviewEdits::setApplyGrade(const std::shared_ptr<Movie>& movie, bool apply) {
    if (movie->applyGrade == apply) return;
    movie->applyGrade = apply;
    Q_EMIT movieChanged(movie, QStringLiteral("applyGrade"), !apply);
}

void ReviewEdits::addBookmarks(const std::shared_ptr<Movie>& movie,
                               const std::vector<std::shared_ptr<Bookmark>>& bookmarks) {
    if (bookmarks.empty()) return;
    movie->bookmarkStore.insert(movie->bookmarkStore.end(), bookmarks.begin(), bookmarks.end());
    movie->bookmarkStore.isNil = false;
    refreshBookmarkIcons(*movie);
    Q_EMIT movieChanged(movie, QStringLiteral("bookmarkStore"), {});
}

void ReviewEdits::removeBookmarks(const std::shared_ptr<Movie>& movie,
                                  const std::vector<std::shared_ptr<Bookmark>>& bookmarks) {
    const std::vector<std::shared_ptr<Bookmark>> gone =
        bookmarks; // the caller may have passed the store itself
    const auto removed = std::erase_if(movie->bookmarkStore, [&gone](const auto& bookmark) {
        return std::find(gone.begin(), gone.end(), bookmark) != gone.end();
    });
    if (removed == 0) return;
    refreshBookmarkIcons(*movie);
    Q_EMIT movieChanged(movie, QStringLiteral("bookmarkStore"), {});
}

void ReviewEdits::editBookmark(const std::shared_ptr<Movie>& movie, const std::shared_ptr<Bookmark>& bookmark,
                               const std::function<void(Bookmark&)>& edit) {
    edit(*bookmark);
    refreshBookmarkIcons(*movie);
    Q_EMIT bookmarkChanged(movie, bookmark);
}

void ReviewEdits::sortBookmarks(const std::shared_ptr<Movie>& movie) {
    const auto earlier = [](const auto& a, const auto& b) {
        return std::tie(a->firstFrame, a->lastFrame) < std::tie(b->firstFrame, b->lastFrame);
    };
    auto& store = movie->bookmarkStore;
    if (std::is_sorted(store.begin(), store.end(), earlier)) return;
    std::stable_sort(store.begin(), store.end(), earlier);
    Q_EMIT movieChanged(movie, QStringLiteral("bookmarkStore"), {});
}

void ReviewEdits::setPlaylistName(const std::shared_ptr<Playlist>& playlist, const QString& name) {
    if (playlist->name == name) return;
    const QString before = std::exchange(playlist->name, name);
    Q_EMIT playlistChanged(playlist, QStringLiteral("name"), before);
}

void ReviewEdits::setMovieList(const std::shared_ptr<Playlist>& playlist, const ObjectList<Movie>& list) {
    const bool same = playlist->movieList == list && playlist->movieList.isNil == list.isNil;
    if (same) return;
    playlist->movieList = list;
    playlist->updateCount();
    Q_EMIT playlistChanged(playlist, QStringLiteral("movieList"), {});
}

} // namespace daylark
