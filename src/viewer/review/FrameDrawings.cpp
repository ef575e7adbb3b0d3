#include "viewer/review/FrameDrawings.h"

#include "platform/Alerts.h"
#include "review/ReviewEdits.h"
#include "viewer/CurrentMovie.h"
#include "viewer/review/DrawingTools.h"
#include "viewer/review/ViewerBookmarks.h"
#include "viewer/transport/Transport.h"

#include <algorithm>

namespace daylark {

FrameDrawings::FrameDrawings(const Surroundings& surroundings, QObject* parent)
    : QObject(parent)
    , around_(surroundings) {
    setMovie(nullptr);
    around_.current.handTo(this, &FrameDrawings::setMovie);
    connect(&around_.bookmarks, &ViewerBookmarks::activeDrawingsChanged, this, &FrameDrawings::reloadStrokes);
}

void FrameDrawings::setMovie(const std::shared_ptr<Movie>& movie) {
    movie_ = movie;
    canvas_.clearViewOfStrokes();
    Q_EMIT strokesChanged();
}

void FrameDrawings::strokeBegan(const QPointF& point) {
    if (!movie_ || !around_.tools.isDrawMode()) return;
    if (around_.transport.isRunning()) around_.transport.pauseMovie();
    if (!canvas_.shown().hasStrokes())
        canvas_.setStrokes({}); // nothing of the movie before colours this stroke
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

// Every active bookmark gets the whole drawing that is shown: each is exported and looked at by itself.
void FrameDrawings::storeCurrentDrawing() {
    const Drawing drawing = canvas_.shown();
    const auto active = around_.bookmarks.activeBookmarks();
    {
        const bool erased = around_.tools.eraserToolButton();
        const ReviewStore::Group step(around_.edits.store(),
                                      stepOf(erased ? tr("Eraser Stroke") : tr("Stroke")));
        if (active.empty())
            around_.bookmarks.addBookmarkWithDrawing(drawing);
        else
            change(active, [&](Bookmark& bookmark) { bookmark.addDrawingToBookmark(drawing); });
    }
    // The canvas goes on showing what was drawn; it is loaded anew when the playhead moves.
    if (!active.empty()) canvas_.setStrokes(drawing);
}

EditInfo FrameDrawings::stepOf(const QString& title) const {
    return {title, EditKind::step, {}, around_.bookmarks.currentFrame()};
}

void FrameDrawings::change(const Bookmarks& bookmarks, const std::function<void(Bookmark&)>& edit) {
    for (const auto& bookmark : bookmarks)
        if (bookmark) around_.edits.editBookmark(movie_, bookmark, {}, edit);
}

void FrameDrawings::removeLatestStroke() {
    if (!movie_) return;
    // One stroke, from the last active bookmark that has one.
    const auto active = around_.bookmarks.activeBookmarks();
    const auto last = std::find_if(active.rbegin(), active.rend(),
                                   [](const auto& bookmark) { return bookmark && bookmark->hasDrawings(); });
    if (last != active.rend())
        around_.edits.editBookmark(movie_, *last, stepOf(tr("Remove Stroke")),
                                   [](Bookmark& bookmark) { bookmark.drawings.removeLastStroke(); });
    afterChange();
    Q_EMIT viewerWanted();
}

void FrameDrawings::deleteCurrentDrawings() {
    if (!movie_) return;
    {
        const ReviewStore::Group step(around_.edits.store(), stepOf(tr("Remove Drawings")));
        change(Bookmarks(around_.bookmarks.activeBookmarks()),
               [](Bookmark& bookmark) { bookmark.removeDrawingFromBookmark(); });
    }
    afterChange();
}

void FrameDrawings::deleteAllDrawingsFromMovie() {
    if (!movie_) return;
    const Alert question{tr("Remove All Drawings From Movie?"),
                         {},
                         {tr("Remove"), tr("Cancel")},
                         AlertStyle::warning};
    if (around_.alerts.run(question) != Alerts::firstButton) return;
    {
        const ReviewStore::Group step(around_.edits.store(), stepOf(tr("Remove All Drawings")));
        change(Bookmarks(movie_->bookmarkStore.begin(), movie_->bookmarkStore.end()),
               [](Bookmark& bookmark) { bookmark.removeDrawingFromBookmark(); });
    }
    afterChange();
}

void FrameDrawings::afterChange() {
    if (!movie_) return;
    around_.bookmarks.loadActiveBookmarks();
    reloadStrokes();
    around_.edits.refreshIcons(movie_);
}

void FrameDrawings::reloadStrokes() {
    if (canvas_.isDrawing()) return;
    const Drawing together = around_.bookmarks.activeDrawings();
    canvas_.setStrokes(around_.bookmarks.activeBookmarks().size() > 1 ? eachStrokeOnce(together) : together);
    Q_EMIT strokesChanged();
}

} // namespace daylark
