#pragma once

#include "annotate/DrawingCanvas.h"
#include "model/Bookmark.h"
#include "model/Movie.h"
#include "review/Edit.h"

#include <QObject>

#include <functional>
#include <memory>
#include <vector>

namespace daylark {

class Alerts;
class CurrentMovie;
class DrawingTools;
class ReviewEdits;
class Transport;
class ViewerBookmarks;

/// The strokes on the frame on screen, and where finished ones go: onto every active bookmark, or onto a new
/// one at that frame. Each stroke and each removal is one step of the session's history. Owned by the viewer's
/// controller; interface thread.
class FrameDrawings : public QObject {
    Q_OBJECT
public:
    struct Surroundings {
        CurrentMovie& current;
        Alerts& alerts;
        ReviewEdits& edits;
        Transport& transport;
        ViewerBookmarks& bookmarks;
        DrawingTools& tools;
    };
    explicit FrameDrawings(const Surroundings& surroundings, QObject* parent = nullptr);

    [[nodiscard]] const DrawingCanvas& canvas() const { return canvas_; }

    // Strokes, points in the movie's pixels. A stroke stops a running movie.
    void strokeBegan(const QPointF& point);
    void strokeMoved(const QPointF& point);
    void strokeEnded(const QPointF& point); ///< stores the drawing

    // Removing
    void removeLatestStroke();
    void deleteCurrentDrawings();
    void deleteAllDrawingsFromMovie(); ///< asks

Q_SIGNALS:
    void strokeGrew();     ///< the stroke in progress has a new point
    void strokesChanged(); ///< what the canvas shows was replaced
    void viewerWanted();   ///< the viewer's window is to have the keyboard

private:
    using Bookmarks = std::vector<std::shared_ptr<Bookmark>>;
    void setMovie(const std::shared_ptr<Movie>& movie);
    void storeCurrentDrawing();
    void change(const Bookmarks& bookmarks, const std::function<void(Bookmark&)>& edit);
    [[nodiscard]] EditInfo stepOf(const QString& title) const; ///< a step at the frame on screen
    void afterChange();
    void reloadStrokes();

    Surroundings around_;
    std::shared_ptr<Movie> movie_;
    DrawingCanvas canvas_;
};

} // namespace daylark
