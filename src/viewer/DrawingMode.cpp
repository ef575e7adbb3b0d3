#include "viewer/DrawingMode.h"

#include "model/ReviewEdits.h"
#include "platform/Alerts.h"
#include "platform/UserDefaults.h"
#include "viewer/Transport.h"
#include "viewer/ViewerBookmarks.h"
#include "viewer/ViewerPanels.h"

#include <algorithm>

namespace daylark {

namespace {

constexpr size_t mostSteps = 500;
const QString drawState = QStringLiteral("draw"), scrollState = QStringLiteral("scroll"),
              offState = QStringLiteral("off");

} // namespace

DrawingMode::DrawingMode(const Surroundings& surroundings, QObject* parent)
    : QObject(parent)
    , around_(surroundings)
    , brushColour_(surroundings.defaults.colourForKey(QStringLiteral("brushColour"))) {
    resetBrush();
    connect(&around_.panels, &ViewerPanels::panelToggled, this, [this](ViewerPanel panel, bool visible) {
        if (panel == ViewerPanel::drawing) drawingPanelToggled(visible);
    });
    connect(&around_.transport, &Transport::actionDone, this, &DrawingMode::toggleDisplayDrawings);
    connect(&around_.bookmarks, &ViewerBookmarks::activeDrawingsChanged, this, &DrawingMode::reloadStrokes);
    connect(&around_.defaults, &UserDefaults::changed, this, [this](const QString& key) {
        if (key == QLatin1String("displayDrawingsOptions")) toggleDisplayDrawings();
        if (key == QLatin1String("displayDrawings")) Q_EMIT strokesChanged();
    });
}

void DrawingMode::setMovie(const std::shared_ptr<Movie>& movie) {
    movie_ = movie;
    undo_.clear();
    redo_.clear();
    canvas_.clearViewOfStrokes();
    Q_EMIT historyChanged();
    Q_EMIT strokesChanged();
}

// The flags remember the mode left; nothing reads them. Wanted.
void DrawingMode::setInteractiveModeState(const QString& mode) {
    if (mode == drawState) {
        if (interactiveMode_ == scrollState) {
            wasScrollable_ = true;
            wasDrawable_ = false;
            scrollOn_ = false;
        }
    } else if (mode == scrollState) {
        if (interactiveMode_ == drawState) {
            wasScrollable_ = false;
            wasDrawable_ = true;
            brushOn_ = eraserOn_ = false;
        }
        scrollOn_ = true;
    } else if (mode == offState) {
        wasScrollable_ = wasDrawable_ = false;
        brushOn_ = eraserOn_ = scrollOn_ = false;
    } else {
        return;
    }
    interactiveMode_ = mode;
    Q_EMIT modeChanged();
}

void DrawingMode::takeTool(bool eraser) {
    brushOn_ = !eraser;
    eraserOn_ = eraser;
    const UserDefaults& defaults = around_.defaults;
    currentWidth_ =
        defaults.doubleForKey(eraser ? QStringLiteral("eraserWidth") : QStringLiteral("brushWidth"));
    currentOpacity_ =
        defaults.doubleForKey(eraser ? QStringLiteral("eraserOpacity") : QStringLiteral("brushOpacity"));
}

void DrawingMode::resetBrush() {
    currentWidth_ = around_.defaults.doubleForKey(QStringLiteral("brushWidth"));
    currentOpacity_ = around_.defaults.doubleForKey(QStringLiteral("brushOpacity"));
    Q_EMIT modeChanged();
}

void DrawingMode::chooseInteractiveTool(const Sender& sender) {
    if (sender.title == QLatin1String("Draw") || sender.title == QLatin1String("Erase")) {
        const bool eraser = sender.title == QLatin1String("Erase");
        if (eraser ? eraserOn_ : brushOn_) {
            setInteractiveModeState(offState);
        } else {
            scrollOn_ = false;
            takeTool(eraser);
            setInteractiveModeState(drawState);
        }
    } else if (sender.title == QLatin1String("Scroll")) {
        if (scrollOn_) {
            setInteractiveModeState(offState);
        } else {
            brushOn_ = eraserOn_ = false;
            setInteractiveModeState(scrollState);
        }
    } else {
        return;
    }
    Q_EMIT viewerWanted();
}

void DrawingMode::toggleDrawingMode() {
    if (!around_.panels.isVisible(ViewerPanel::drawing)) return;
    takeTool(brushOn_);
    setInteractiveModeState(drawState);
}

// Without a tool in hand the brush is taken up and the control's value is not kept; wanted.
void DrawingMode::setToolWidth(double width) {
    if (!brushOn_ && !eraserOn_) {
        takeTool(false);
        setInteractiveModeState(drawState);
    } else {
        currentWidth_ = width;
        around_.defaults.set(eraserOn_ ? QStringLiteral("eraserWidth") : QStringLiteral("brushWidth"), width);
        Q_EMIT modeChanged();
    }
    Q_EMIT viewerWanted();
}

void DrawingMode::setToolOpacity(double opacity) {
    if (!brushOn_ && !eraserOn_) {
        takeTool(false);
        setInteractiveModeState(drawState);
    } else {
        currentOpacity_ = opacity;
        around_.defaults.set(eraserOn_ ? QStringLiteral("eraserOpacity") : QStringLiteral("brushOpacity"),
                             opacity);
        Q_EMIT modeChanged();
    }
    Q_EMIT viewerWanted();
}

QColor DrawingMode::brushColour() const {
    return brushColour_.isValid() ? brushColour_
                                  : around_.defaults.colourForKey(QStringLiteral("brushColour"));
}

void DrawingMode::setBrushColour(const QColor& colour) {
    brushColour_ = colour;
    Q_EMIT modeChanged();
}

void DrawingMode::drawingPanelToggled(bool visible) {
    if (!visible) {
        setInteractiveModeState(offState);
    } else {
        if (brushOn_ || eraserOn_) setInteractiveModeState(drawState);
        if (around_.defaults.boolForKey(QStringLiteral("autoSwitchToDrawingMode"))) {
            takeTool(false);
            setInteractiveModeState(drawState);
        }
    }
    toggleDisplayDrawings();
}

void DrawingMode::toggleDisplayDrawings() {
    const QString option = around_.defaults.stringForKey(QStringLiteral("displayDrawingsOptions"));
    const QString key = QStringLiteral("displayDrawings");
    if (option == QLatin1String("With Drawing Tools"))
        around_.defaults.set(key, around_.panels.isVisible(ViewerPanel::drawing));
    else if (option == QLatin1String("Always"))
        around_.defaults.set(key, true);
    else if (option == QLatin1String("Only When Paused"))
        around_.defaults.set(key, !around_.transport.isRunning());
}

bool DrawingMode::drawingsAreShown() const {
    return around_.defaults.boolForKey(QStringLiteral("displayDrawings"));
}

void DrawingMode::setDrawingBackground(const QString& title) {
    around_.defaults.set(QStringLiteral("drawingBackgroundColour"), title);
    Q_EMIT strokesChanged();
    Q_EMIT viewerWanted();
}

QString DrawingMode::drawingBackground() const {
    return around_.defaults.stringForKey(QStringLiteral("drawingBackgroundColour"));
}

void DrawingMode::strokeBegan(const QPointF& point) {
    if (!movie_ || !isDrawMode()) return;
    if (around_.transport.isRunning()) around_.transport.pauseMovie();
    canvas_.beginStroke(point, eraserOn_ ? DrawingCanvas::eraser : DrawingCanvas::brush, brushColour(),
                        currentWidth_, currentOpacity_);
    Q_EMIT strokeGrew();
}

void DrawingMode::strokeMoved(const QPointF& point) {
    if (!canvas_.isDrawing()) return;
    canvas_.continueStroke(point);
    Q_EMIT strokeGrew();
}

void DrawingMode::strokeEnded(const QPointF& point) {
    if (!canvas_.isDrawing()) return;
    canvas_.endStroke(point);
    storeCurrentDrawing();
    Q_EMIT strokeGrew();
}

// Every active bookmark gets the whole drawing that is shown; wanted.
void DrawingMode::storeCurrentDrawing() {
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
            if (std::find(before.begin(), before.end(), bookmark) == before.end()) remember({{}, bookmark});
    }
    movie_->displayDrawingIcon();
}

// The list by value: editing loads the active bookmarks anew.
void DrawingMode::change(std::vector<std::shared_ptr<Bookmark>> bookmarks,
                         const std::function<void(Bookmark&)>& edit) {
    Step step;
    for (const auto& bookmark : bookmarks) {
        if (!bookmark) continue;
        BookmarkDrawing drawing{bookmark, bookmark->drawings, {}};
        around_.edits.editBookmark(movie_, bookmark, edit);
        drawing.after = bookmark->drawings;
        if (drawing.after != drawing.before) step.drawings.push_back(std::move(drawing));
    }
    if (!step.drawings.empty()) remember(std::move(step));
}

void DrawingMode::remember(Step step) {
    undo_.push_back(std::move(step));
    if (undo_.size() > mostSteps) undo_.erase(undo_.begin());
    redo_.clear();
    Q_EMIT historyChanged();
}

void DrawingMode::removeLatestStroke() {
    if (!movie_) return;
    // One stroke, from the last active bookmark that has one.
    const auto active = around_.bookmarks.activeBookmarks();
    const auto last = std::find_if(active.rbegin(), active.rend(),
                                   [](const auto& bookmark) { return bookmark && bookmark->hasDrawings(); });
    if (last != active.rend())
        change({*last}, [](Bookmark& bookmark) { bookmark.removeLastStrokeFromDrawing(); });
    afterChange();
    Q_EMIT viewerWanted();
}

void DrawingMode::deleteCurrentDrawings() {
    if (!movie_) return;
    change(around_.bookmarks.activeBookmarks(),
           [](Bookmark& bookmark) { bookmark.removeDrawingFromBookmark(); });
    afterChange();
}

void DrawingMode::deleteAllDrawingsFromMovie() {
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

void DrawingMode::afterChange() {
    if (!movie_) return;
    around_.bookmarks.loadActiveBookmarks();
    reloadStrokes();
    movie_->displayBookmarkIcon();
    movie_->displayDrawingIcon();
}

void DrawingMode::undo() {
    if (undo_.empty() || canvas_.isDrawing()) return;
    redo_.push_back(std::move(undo_.back()));
    undo_.pop_back();
    apply(redo_.back(), false);
}

void DrawingMode::redo() {
    if (redo_.empty() || canvas_.isDrawing()) return;
    undo_.push_back(std::move(redo_.back()));
    redo_.pop_back();
    apply(undo_.back(), true);
}

void DrawingMode::apply(const Step& step, bool forwards) {
    const auto isThere = [this](const std::shared_ptr<Bookmark>& bookmark) {
        return std::find(movie_->bookmarkStore.begin(), movie_->bookmarkStore.end(), bookmark) !=
               movie_->bookmarkStore.end();
    };
    if (step.made) {
        if (forwards && !isThere(step.made))
            around_.edits.addBookmarks(movie_, {step.made});
        else if (!forwards && isThere(step.made))
            around_.edits.removeBookmarks(movie_, {step.made});
        around_.bookmarks.sortBookmarks();
    }
    for (const BookmarkDrawing& drawing : step.drawings)
        if (isThere(drawing.bookmark))
            around_.edits.editBookmark(movie_, drawing.bookmark, [&](Bookmark& bookmark) {
                bookmark.drawings = forwards ? drawing.after : drawing.before;
            });
    afterChange();
    Q_EMIT historyChanged();
}

void DrawingMode::reloadStrokes() {
    if (canvas_.isDrawing()) return;
    canvas_.setStrokes(around_.bookmarks.activeDrawings());
    Q_EMIT strokesChanged();
}

} // namespace daylark
