#include "viewer/review/DrawingTools.h"

#include "preferences/Preferences.h"
#include "viewer/display/ViewerPanels.h"

#include <utility>

namespace daylark {

namespace {

const QString drawState = QStringLiteral("draw"), scrollState = QStringLiteral("scroll"),
              offState = QStringLiteral("off");

} // namespace

DrawingTools::DrawingTools(Preferences& preferences, ViewerPanels& panels, QObject* parent)
    : QObject(parent)
    , preferences_(preferences)
    , panels_(panels)
    , brushColour_(preferences.brushColour()) {
    resetBrush();
    connect(&panels_, &ViewerPanels::panelToggled, this,
            [this](ViewerPanel panel, bool visible, bool withAll) {
                if (panel == ViewerPanel::drawing) drawingPanelToggled(visible, withAll);
            });
    // Once all panels stand that come or go with it: none of them may keep the keyboard.
    connect(&panels_, &ViewerPanels::toggled, this, [this] {
        if (std::exchange(panelToggled_, false)) Q_EMIT viewerWanted();
    });
}

// The flags remember the mode left; nothing reads them. Wanted.
void DrawingTools::setInteractiveModeState(const QString& mode) {
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

void DrawingTools::takeTool(bool eraser) {
    brushOn_ = !eraser;
    eraserOn_ = eraser;
    currentWidth_ = eraser ? preferences_.eraserWidth() : preferences_.brushWidth();
    currentOpacity_ = eraser ? preferences_.eraserOpacity() : preferences_.brushOpacity();
}

void DrawingTools::resetBrush() {
    currentWidth_ = preferences_.brushWidth();
    currentOpacity_ = preferences_.brushOpacity();
    Q_EMIT modeChanged();
}

void DrawingTools::chooseInteractiveTool(const Sender& sender) {
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

void DrawingTools::toggleDrawingMode() {
    if (!panels_.isVisible(ViewerPanel::drawing)) return;
    takeTool(brushOn_);
    setInteractiveModeState(drawState);
}

// Without a tool in hand the brush is taken up and the control's value is not kept: each tool has its own,
// which comes back with it.
void DrawingTools::setToolValue(double& value, double wanted, Preference<float>& ofTool) {
    if (!brushOn_ && !eraserOn_) {
        takeTool(false);
        setInteractiveModeState(drawState);
    } else {
        value = wanted;
        ofTool.set(float(wanted));
        Q_EMIT modeChanged();
    }
    Q_EMIT viewerWanted();
}

void DrawingTools::setToolWidth(double width) {
    setToolValue(currentWidth_, width, eraserOn_ ? preferences_.eraserWidth : preferences_.brushWidth);
}

void DrawingTools::setToolOpacity(double opacity) {
    setToolValue(currentOpacity_, opacity,
                 eraserOn_ ? preferences_.eraserOpacity : preferences_.brushOpacity);
}

QColor DrawingTools::brushColour() const {
    return brushColour_.isValid() ? brushColour_ : preferences_.brushColour();
}

void DrawingTools::setBrushColour(const QColor& colour) {
    brushColour_ = colour;
    Q_EMIT modeChanged();
}

// Opened as one of all, the panel takes up no tool by itself.
void DrawingTools::drawingPanelToggled(bool visible, bool withAll) {
    if (!visible) {
        setInteractiveModeState(offState);
    } else {
        if (brushOn_ || eraserOn_) setInteractiveModeState(drawState);
        if (!withAll && preferences_.autoSwitchToDrawingMode()) {
            takeTool(false);
            setInteractiveModeState(drawState);
        }
    }
    panelToggled_ = true;
}

} // namespace daylark
