#pragma once

#include "annotate/DrawingCanvas.h"
#include "model/Bookmark.h"
#include "model/Movie.h"
#include "platform/Sender.h"

#include <QColor>
#include <QObject>

#include <functional>
#include <map>
#include <memory>
#include <vector>

namespace daylark {

class Alerts;
class ReviewEdits;
class Transport;
class Preferences;
class ViewerBookmarks;
class ViewerPanels;

/// What the mouse does over the picture ("draw", "scroll" or "off"), the drawing tools, and where finished
/// strokes go: onto every active bookmark, or onto a new one at the frame on screen. Undo takes back strokes
/// and removals, newest first; each movie has a history of its own, for as long as the program runs. Owned by
/// the viewer's controller; interface thread.
class DrawingMode : public QObject {
    Q_OBJECT
public:
    struct Surroundings {
        Preferences& preferences;
        Alerts& alerts;
        ReviewEdits& edits;
        Transport& transport;
        ViewerBookmarks& bookmarks;
        ViewerPanels& panels;
    };
    explicit DrawingMode(const Surroundings& surroundings, QObject* parent = nullptr);

    void setMovie(const std::shared_ptr<Movie>& movie); ///< takes up that movie's undo history

    // Mode and tools
    void setInteractiveModeState(const QString& mode); ///< "draw", "scroll" or "off"; others: nothing
    [[nodiscard]] QString interactiveMode() const { return interactiveMode_; }
    [[nodiscard]] bool isDrawMode() const { return interactiveMode_ == QLatin1String("draw"); }
    [[nodiscard]] bool isScrollMode() const { return interactiveMode_ == QLatin1String("scroll"); }
    [[nodiscard]] bool brushToolButton() const { return brushOn_; }
    [[nodiscard]] bool eraserToolButton() const { return eraserOn_; }
    [[nodiscard]] bool scrollToolButton() const { return scrollOn_; }
    void
    chooseInteractiveTool(const Sender& sender); ///< "Draw", "Erase" or "Scroll"; flips that button first
    void toggleDrawingMode(); ///< the hotkey: brush, eraser, brush … while the panel is open
    [[nodiscard]] double currentWidth() const { return currentWidth_; }     ///< movie pixels
    [[nodiscard]] double currentOpacity() const { return currentOpacity_; } ///< 0 to 1
    void setToolWidth(double width);                                        ///< what the control was set to
    void setToolOpacity(double opacity);                                    ///< as above
    void resetBrush();                        ///< width and opacity of the brush, when the picture is fitted
    [[nodiscard]] QColor brushColour() const; ///< chosen in this run, else the preference's
    void setBrushColour(const QColor& colour);

    // What is shown
    void toggleDisplayDrawings();                    ///< by "displayDrawingsOptions"
    [[nodiscard]] bool drawingsAreShown() const;     ///< the preference "displayDrawings"
    void setDrawingBackground(const QString& title); ///< "Black", "White"; any other shows the picture
    [[nodiscard]] QString drawingBackground() const; ///< the preference
    /// What is in force of it: a background lies behind drawings, and by itself only if it was chosen in this run.
    [[nodiscard]] QString shownBackground() const;
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
    void modeChanged();    ///< mode, buttons, width, opacity, colour
    void strokeGrew();     ///< the stroke in progress has a new point
    void strokesChanged(); ///< what the canvas shows was replaced, or is shown or hidden
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
    void storeCurrentDrawing();
    void drawingPanelToggled(bool visible, bool withAll);
    void takeTool(bool eraser);
    void change(std::vector<std::shared_ptr<Bookmark>> bookmarks, const std::function<void(Bookmark&)>& edit);
    void remember(Step step);
    void apply(const Step& step, bool forwards);
    void applyTo(const BookmarkDrawing& drawing, bool forwards);
    void afterChange();
    void reloadStrokes();

    Surroundings around_;
    std::shared_ptr<Movie> movie_;
    DrawingCanvas canvas_;
    QString interactiveMode_ = QStringLiteral("off");
    bool wasScrollable_ = false,
         wasDrawable_ = false; ///< the mode left last when changing between "draw" and "scroll"
    bool brushOn_ = false, eraserOn_ = false, scrollOn_ = false;
    double currentWidth_ = 0, currentOpacity_ = 1;
    QColor brushColour_;
    bool backgroundChosen_ = false;
    using Histories = std::map<std::weak_ptr<Movie>, std::unique_ptr<History>, std::owner_less<>>;
    Histories histories_;
    History* history_; ///< of the movie, never null
};

} // namespace daylark
