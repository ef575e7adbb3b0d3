#include "viewer/review/DrawingMode.h"

#include "model/ReviewEdits.h"
#include "platform/Alerts.h"
#include "preferences/Preferences.h"
#include "viewer/display/ViewerPanels.h"
#include "viewer/review/ViewerBookmarks.h"
#include "viewer/transport/Transport.h"

#include <algorithm>

namespace daylark {

namespace {

constexpr size_t mostSteps = 500;
const QString drawState = QStringLiteral("draw"), scrollState = QStringLiteral("scroll"),
              offState = QStringLiteral("off");

/// Calls `list` with each of the five lists of a drawing.
template<class Each>
void forEachList(Drawing& drawing, Each list) {
    list(drawing.strokesArray);
    list(drawing.brushTypeArray);
    list(drawing.colourArray);
    list(drawing.widthArray);
    list(drawing.opacityArray);
}

Drawing strokesFrom(const Drawing& drawing, size_t first) {
    Drawing rest = drawing;
    forEachList(rest, [first](auto& list) {
        list.erase(list.begin(), list.begin() + std::ptrdiff_t(std::min(first, list.size())));
    });
    return rest;
}

Drawing strokesUpTo(const Drawing& drawing, size_t end) {
    Drawing start = drawing;
    forEachList(start, [end](auto& list) { list.resize(std::min(end, list.size())); });
    return start;
}

/// How many strokes at the start are the same in both. None where lists are of unequal length, so that
/// nothing of an odd drawing is lost.
size_t commonStrokes(const Drawing& a, const Drawing& b) {
    const auto isEven = [](Drawing drawing) {
        const size_t count = drawing.strokesArray.size();
        bool even = drawing.hasKeys;
        forEachList(drawing, [&](auto& list) { even = even && list.size() == count; });
        return even;
    };
    if (!isEven(a) || !isEven(b)) return 0;
    const size_t most = std::min(a.strokesArray.size(), b.strokesArray.size());
    size_t same = 0;
    while (same < most && a.strokesArray[same] == b.strokesArray[same] &&
           a.brushTypeArray[same] == b.brushTypeArray[same] && a.colourArray[same] == b.colourArray[same] &&
           a.widthArray[same] == b.widthArray[same] && a.opacityArray[same] == b.opacityArray[same])
        ++same;
    return same;
}

/// A stroke is stored on every bookmark that covers its frame. Where they are shown together it is shown
/// once, or each stroke drawn there would double all.
Drawing eachStrokeOnce(Drawing drawing) {
    const size_t count = drawing.strokesArray.size();
    forEachList(drawing, [count](auto& list) {
        if (list.size() < count) list.resize(count); // the lists stay parallel
    });
    Drawing once;
    for (size_t stroke = 0; stroke < count; ++stroke) {
        bool shown = false;
        for (size_t i = 0; i < once.strokesArray.size() && !shown; ++i)
            shown = once.strokesArray[i] == drawing.strokesArray[stroke] &&
                    once.brushTypeArray[i] == drawing.brushTypeArray[stroke] &&
                    once.colourArray[i] == drawing.colourArray[stroke] &&
                    once.widthArray[i] == drawing.widthArray[stroke] &&
                    once.opacityArray[i] == drawing.opacityArray[stroke];
        if (shown) continue;
        once.strokesArray.push_back(std::move(drawing.strokesArray[stroke]));
        once.brushTypeArray.push_back(drawing.brushTypeArray[stroke]);
        once.colourArray.push_back(drawing.colourArray[stroke]);
        once.widthArray.push_back(drawing.widthArray[stroke]);
        once.opacityArray.push_back(drawing.opacityArray[stroke]);
    }
    return once;
}

bool hasTexts(const Bookmark& bookmark) {
    return !bookmark.overlayString.isEmpty() || !bookmark.overlayString2.isEmpty();
}

} // namespace

DrawingMode::DrawingMode(const Surroundings& surroundings, QObject* parent)
    : QObject(parent)
    , around_(surroundings)
    , brushColour_(surroundings.preferences.brushColour()) {
    setMovie(nullptr);
    resetBrush();
    connect(&around_.panels, &ViewerPanels::panelToggled, this, [this](ViewerPanel panel, bool visible, bool withAll) {
        if (panel == ViewerPanel::drawing) drawingPanelToggled(visible, withAll);
    });
    connect(&around_.transport, &Transport::actionDone, this, &DrawingMode::toggleDisplayDrawings);
    // A run that comes to its end by itself is no action.
    connect(&around_.transport, &Transport::stateChanged, this, &DrawingMode::toggleDisplayDrawings);
    connect(&around_.bookmarks, &ViewerBookmarks::activeDrawingsChanged, this, &DrawingMode::reloadStrokes);
    connect(&around_.preferences.displayDrawingsOptions, &PreferenceItem::changed, this,
            &DrawingMode::toggleDisplayDrawings);
    connect(&around_.preferences.displayDrawings, &PreferenceItem::changed, this,
            &DrawingMode::strokesChanged);
}

void DrawingMode::setMovie(const std::shared_ptr<Movie>& movie) {
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
    const Preferences& preferences = around_.preferences;
    currentWidth_ = eraser ? preferences.eraserWidth() : preferences.brushWidth();
    currentOpacity_ = eraser ? preferences.eraserOpacity() : preferences.brushOpacity();
}

void DrawingMode::resetBrush() {
    currentWidth_ = around_.preferences.brushWidth();
    currentOpacity_ = around_.preferences.brushOpacity();
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
        (eraserOn_ ? around_.preferences.eraserWidth : around_.preferences.brushWidth).set(float(width));
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
        (eraserOn_ ? around_.preferences.eraserOpacity : around_.preferences.brushOpacity)
            .set(float(opacity));
        Q_EMIT modeChanged();
    }
    Q_EMIT viewerWanted();
}

QColor DrawingMode::brushColour() const {
    return brushColour_.isValid() ? brushColour_ : around_.preferences.brushColour();
}

void DrawingMode::setBrushColour(const QColor& colour) {
    brushColour_ = colour;
    Q_EMIT modeChanged();
}

// Opened as one of all, the panel takes up no tool by itself.
void DrawingMode::drawingPanelToggled(bool visible, bool withAll) {
    if (!visible) {
        setInteractiveModeState(offState);
    } else {
        if (brushOn_ || eraserOn_) setInteractiveModeState(drawState);
        if (!withAll && around_.preferences.autoSwitchToDrawingMode()) {
            takeTool(false);
            setInteractiveModeState(drawState);
        }
    }
    toggleDisplayDrawings();
    Q_EMIT viewerWanted();
}

void DrawingMode::toggleDisplayDrawings() {
    const DrawingsShown option = around_.preferences.displayDrawingsOptions();
    Preference<bool>& shown = around_.preferences.displayDrawings;
    if (option == DrawingsShown::withDrawingTools)
        shown.set(around_.panels.isVisible(ViewerPanel::drawing));
    else if (option == DrawingsShown::always)
        shown.set(true);
    else if (option == DrawingsShown::onlyWhenPaused)
        shown.set(!around_.transport.isRunning());
}

bool DrawingMode::drawingsAreShown() const {
    return around_.preferences.displayDrawings();
}

void DrawingMode::setDrawingBackground(const QString& title) {
    around_.preferences.drawingBackgroundColour.set(valueOfWord<DrawingBackground>(title));
    backgroundChosen_ = true;
    Q_EMIT strokesChanged();
    Q_EMIT viewerWanted();
}

QString DrawingMode::drawingBackground() const {
    return wordOf(around_.preferences.drawingBackgroundColour());
}

// One left from an earlier run would hide the picture for no reason that can be seen.
QString DrawingMode::shownBackground() const {
    const bool drawn = drawingsAreShown() && canvas_.currentStrokesDictionary().hasStrokes();
    return backgroundChosen_ || drawn ? drawingBackground() : QString();
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
            if (std::find(before.begin(), before.end(), bookmark) == before.end())
                remember({{{bookmark, 0, {}, drawing}}, bookmark});
    }
    movie_->displayDrawingIcon();
}

// The list by value: editing loads the active bookmarks anew.
void DrawingMode::change(std::vector<std::shared_ptr<Bookmark>> bookmarks,
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
DrawingMode::BookmarkDrawing DrawingMode::difference(const std::shared_ptr<Bookmark>& bookmark,
                                                     const Drawing& before) {
    const Drawing& after = bookmark->drawings;
    const size_t kept = commonStrokes(before, after);
    return {bookmark, kept, strokesFrom(before, kept), strokesFrom(after, kept)};
}

void DrawingMode::remember(Step step) {
    std::vector<Step>& undo = history().undo;
    undo.push_back(std::move(step));
    if (undo.size() > mostSteps) undo.erase(undo.begin());
    history().redo.clear();
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
    if (!movie_ || !canUndo() || canvas_.isDrawing()) return;
    history().redo.push_back(std::move(history().undo.back()));
    history().undo.pop_back();
    apply(history().redo.back(), false);
}

void DrawingMode::redo() {
    if (!movie_ || !canRedo() || canvas_.isDrawing()) return;
    history().undo.push_back(std::move(history().redo.back()));
    history().redo.pop_back();
    apply(history().undo.back(), true);
}

// What has gone or has become something else in between stays as it is.
void DrawingMode::apply(const Step& step, bool forwards) {
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

void DrawingMode::applyTo(const BookmarkDrawing& step, bool forwards) {
    const auto& store = movie_->bookmarkStore;
    if (std::find(store.begin(), store.end(), step.bookmark) == store.end()) return;
    const Drawing& now = step.bookmark->drawings;
    const Drawing& expected = forwards ? step.before : step.after;
    if (now.strokesArray.size() < step.kept || strokesFrom(now, step.kept) != expected) return;
    Drawing wanted = forwards ? step.after : step.before;
    if (step.kept > 0) {
        wanted = strokesUpTo(now, step.kept);
        wanted.append(forwards ? step.after : step.before);
    }
    around_.edits.editBookmark(movie_, step.bookmark,
                               [&](Bookmark& bookmark) { bookmark.drawings = wanted; });
}

void DrawingMode::reloadStrokes() {
    if (canvas_.isDrawing()) return;
    const auto active = around_.bookmarks.activeBookmarks();
    const Drawing together = around_.bookmarks.activeDrawings();
    canvas_.setStrokes(active.size() > 1 ? eachStrokeOnce(together) : together);
    Q_EMIT strokesChanged();
}

} // namespace daylark
