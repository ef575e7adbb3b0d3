#pragma once

#include "annotate/DrawingCanvas.h"
#include "model/Bookmark.h"
#include "model/Movie.h"

#include <QObject>

#include <functional>
#include <map>
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
/// one at that frame. Undo takes back strokes and removals, newest first; each movie has a history of its
/// own, for as long as the program runs. Owned by the viewer's controller; interface thread.
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
    void undo();
    void redo();
    [[nodiscard]] bool canUndo() const { return !history().undo.empty(); }
    [[nodiscard]] bool canRedo() const { return !history().redo.empty(); }

Q_SIGNALS:
    void strokeGrew();     ///< the stroke in progress has a new point
    void strokesChanged(); ///< what the canvas shows was replaced
    void historyChanged();
    void viewerWanted(); ///< the viewer's window is to have the keyboard

private:
    /// What became of a bookmark's drawing: the strokes from `kept` on were `before` and are `after`.
    struct BookmarkDrawing {
        std::shared_ptr<Bookmark> bookmark;
        size_t kept = 0;
        Drawing before, after;
    };
    /// One step that can be taken back: drawings of some bookmarks, or a bookmark made for a drawing.
    struct Step {
        std::vector<BookmarkDrawing> drawings;
        std::shared_ptr<Bookmark> made;
    };
    struct History {
        std::vector<Step> undo, redo;
    };
    [[nodiscard]] History& history() const { return *history_; }
    [[nodiscard]] static BookmarkDrawing difference(const std::shared_ptr<Bookmark>& bookmark,
                                                    const Drawing& before);
    void setMovie(const std::shared_ptr<Movie>& movie); ///< takes up that movie's undo history
    void storeCurrentDrawing();
    void change(std::vector<std::shared_ptr<Bookmark>> bookmarks, const std::function<void(Bookmark&)>& edit);
    void remember(Step step);
    void apply(const Step& step, bool forwards);
    void applyTo(const BookmarkDrawing& drawing, bool forwards);
    void afterChange();
    void reloadStrokes();

    Surroundings around_;
    std::shared_ptr<Movie> movie_;
    DrawingCanvas canvas_;
    using Histories = std::map<std::weak_ptr<Movie>, std::unique_ptr<History>, std::owner_less<>>;
    Histories histories_;
    History* history_; ///< of the movie, never null
};

} // namespace daylark
