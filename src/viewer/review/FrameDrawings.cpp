#include "viewer/review/FrameDrawings.h"

#include "model/ReviewEdits.h"
#include "platform/Alerts.h"
#include "review/Strokes.h"
#include "viewer/CurrentMovie.h"
#include "viewer/review/DrawingTools.h"
#include "viewer/review/ViewerBookmarks.h"
#include "viewer/transport/Transport.h"

#include <algorithm>

namespace daylark {

namespace {

constexpr size_t mostSteps = 500;

bool hasTexts(const Bookmark& bookmark) {
    return !bookmark.overlayString.isEmpty() || !bookmark.overlayString2.isEmpty();
}

} // namespace

FrameDrawings::FrameDrawings(const Surroundings& surroundings, QObject* parent)
    : QObject(parent)
    , around_(surroundings) {
    setMovie(nullptr);
    around_.current.handTo(this, &FrameDrawings::setMovie);
    connect(&around_.bookmarks, &ViewerBookmarks::activeDrawingsChanged, this, &FrameDrawings::reloadStrokes);
}

void FrameDrawings::setMovie(const std::shared_ptr<Movie>& movie) {
    movie_ = movie;
    for (auto at = histories_.begin(); at != histories_.end();)
        at = at->first.expired() ? histories_.erase(at) : std::next(at);
    std::unique_ptr<History>& kept = histories_[movie];
    if (!kept) kept = std::make_unique<History>();
    history_ = kept.get();
    canvas_.clearViewOfStrokes();
    Q_EMIT historyChanged();
    Q_EMIT strokesChanged();
}

void FrameDrawings::strokeBegan(const QPointF& point) {
    if (!movie_ || !around_.tools.isDrawMode()) return;
    if (around_.transport.isRunning()) around_.transport.pauseMovie();
    const DrawingTools& tools = around_.tools;
    canvas_.beginStroke(point, tools.eraserToolButton() ? DrawingCanvas::eraser : DrawingCanvas::brush,
                        tools.brushColour(), tools.currentWidth(), tools.currentOpacity());
    Q_EMIT strokeGrew();
}

void FrameDrawings::strokeMoved(const QPointF& point) {
    if (!canvas_.isDrawing()) return;
    canvas_.continueStroke(point);
    Q_EMIT strokeGrew();
}

void FrameDrawings::strokeEnded(const QPointF& point) {
    if (!canvas_.isDrawing()) return;
    canvas_.endStroke(point);
    storeCurrentDrawing();
    Q_EMIT strokeGrew();
}

// Every active bookmark gets the whole drawing that is shown; wanted.
void FrameDrawings::storeCurrentDrawing() {
    const Drawing drawing = canvas_.currentStrokesDictionary();
    const auto active = around_.bookmarks.activeBookmarks();
    if (!active.empty()) {
        change(active, [&](Bookmark& bookmark) { bookmark.addDrawingToBookmark(drawing); });
        // The canvas goes on showing what was drawn; it is loaded anew when the playhead moves.
        canvas_.setStrokes(drawing);
    } else {
        const auto before = movie_->bookmarkStore;
        around_.bookmarks.addBookmarkWithDrawing(drawing);
        for (const auto& bookmark : movie_->bookmarkStore)
            if (std::find(before.begin(), before.end(), bookmark) == before.end())
                remember({{{bookmark, 0, {}, drawing}}, bookmark});
    }
    movie_->displayDrawingIcon();
}

// The list by value: editing loads the active bookmarks anew.
void FrameDrawings::change(std::vector<std::shared_ptr<Bookmark>> bookmarks,
                           const std::function<void(Bookmark&)>& edit) {
    Step step;
    for (const auto& bookmark : bookmarks) {
        if (!bookmark) continue;
        const Drawing before = bookmark->drawings;
        around_.edits.editBookmark(movie_, bookmark, edit);
        if (bookmark->drawings != before) step.drawings.push_back(difference(bookmark, before));
    }
    if (!step.drawings.empty()) remember(std::move(step));
}

// Only what differs: hundreds of steps of hundreds of strokes are remembered.
FrameDrawings::BookmarkDrawing FrameDrawings::difference(const std::shared_ptr<Bookmark>& bookmark,
                                                         const Drawing& before) {
    const Drawing& after = bookmark->drawings;
    const size_t kept = commonStrokes(before, after);
    return {bookmark, kept, strokesFrom(before, kept), strokesFrom(after, kept)};
}

void FrameDrawings::remember(Step step) {
    std::vector<Step>& undo = history().undo;
    undo.push_back(std::move(step));
    if (undo.size() > mostSteps) undo.erase(undo.begin());
    history().redo.clear();
    Q_EMIT historyChanged();
}

void FrameDrawings::removeLatestStroke() {
    if (!movie_) return;
    // One stroke, from the last active bookmark that has one.
    const auto active = around_.bookmarks.activeBookmarks();
    const auto last = std::find_if(active.rbegin(), active.rend(),
                                   [](const auto& bookmark) { return bookmark && bookmark->hasDrawings(); });
    if (last != active.rend())
        change({*last}, [](Bookmark& bookmark) { bookmark.drawings.removeLastStroke(); });
    afterChange();
    Q_EMIT viewerWanted();
}

void FrameDrawings::deleteCurrentDrawings() {
    if (!movie_) return;
    change(around_.bookmarks.activeBookmarks(),
           [](Bookmark& bookmark) { bookmark.removeDrawingFromBookmark(); });
    afterChange();
}

void FrameDrawings::deleteAllDrawingsFromMovie() {
    if (!movie_) return;
    const Alert question{QStringLiteral("Remove All Drawings From Movie?"),
                         {},
                         {QStringLiteral("Remove"), QStringLiteral("Cancel")},
                         AlertStyle::warning};
    if (around_.alerts.run(question) != Alerts::firstButton) return;
    const std::vector<std::shared_ptr<Bookmark>> all(movie_->bookmarkStore.begin(),
                                                     movie_->bookmarkStore.end());
    change(all, [](Bookmark& bookmark) { bookmark.removeDrawingFromBookmark(); });
    afterChange();
}

void FrameDrawings::afterChange() {
    if (!movie_) return;
    around_.bookmarks.loadActiveBookmarks();
    reloadStrokes();
    movie_->displayBookmarkIcon();
    movie_->displayDrawingIcon();
}

void FrameDrawings::undo() {
    if (!movie_ || !canUndo() || canvas_.isDrawing()) return;
    history().redo.push_back(std::move(history().undo.back()));
    history().undo.pop_back();
    apply(history().redo.back(), false);
}

void FrameDrawings::redo() {
    if (!movie_ || !canRedo() || canvas_.isDrawing()) return;
    history().undo.push_back(std::move(history().redo.back()));
    history().redo.pop_back();
    apply(history().undo.back(), true);
}

// What has gone or has become something else in between stays as it is.
void FrameDrawings::apply(const Step& step, bool forwards) {
    if (const auto& made = step.made) {
        const auto& store = movie_->bookmarkStore;
        const bool isThere = std::find(store.begin(), store.end(), made) != store.end();
        if (forwards && !isThere) {
            around_.edits.addBookmarks(movie_, {made});
        } else if (forwards) {
            around_.edits.editBookmark(movie_, made, [&](Bookmark& bookmark) {
                if (!bookmark.hasDrawings()) bookmark.drawings = step.drawings.front().after;
            });
        } else if (isThere && !hasTexts(*made)) {
            around_.edits.removeBookmarks(movie_, {made});
        } else if (isThere) { // somebody wrote on it: only the drawing goes
            around_.edits.editBookmark(movie_, made,
                                       [](Bookmark& bookmark) { bookmark.removeDrawingFromBookmark(); });
        }
        around_.bookmarks.sortBookmarks();
    } else {
        for (const BookmarkDrawing& drawing : step.drawings)
            applyTo(drawing, forwards);
    }
    afterChange();
    Q_EMIT historyChanged();
}

void FrameDrawings::applyTo(const BookmarkDrawing& step, bool forwards) {
    const auto& store = movie_->bookmarkStore;
    if (std::find(store.begin(), store.end(), step.bookmark) == store.end()) return;
    const Drawing& now = step.bookmark->drawings;
    const Drawing& expected = forwards ? step.before : step.after;
    if (now.strokes.size() < step.kept || strokesFrom(now, step.kept) != expected) return;
    Drawing wanted = forwards ? step.after : step.before;
    if (step.kept > 0) {
        wanted = strokesUpTo(now, step.kept);
        wanted.append(forwards ? step.after : step.before);
    }
    around_.edits.editBookmark(movie_, step.bookmark,
                               [&](Bookmark& bookmark) { bookmark.drawings = wanted; });
}

void FrameDrawings::reloadStrokes() {
    if (canvas_.isDrawing()) return;
    const Drawing together = around_.bookmarks.activeDrawings();
    canvas_.setStrokes(around_.bookmarks.activeBookmarks().size() > 1 ? eachStrokeOnce(together) : together);
    Q_EMIT strokesChanged();
}

} // namespace daylark
