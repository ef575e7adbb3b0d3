#include "viewer/ViewerInput.h"

#include "preferences/Preferences.h"
#include "viewer/display/ViewerPanels.h"
#include "viewer/review/DrawingTools.h"
#include "viewer/review/ViewerBookmarks.h"
#include "viewer/review/ViewerGrade.h"
#include "viewer/transport/Transport.h"

namespace daylark {

ViewerInput::ViewerInput(const Surroundings& surroundings, QObject* parent)
    : QObject(parent)
    , around_(surroundings) {}

void ViewerInput::keyDown(int keyCode) {
    Q_EMIT hideVolume();
    const bool fullScreen = around_.panels.isFullScreen();
    if (fullScreen && keyCode != keyEscape && around_.preferences.disableHotkeysInFullScreenMode()) return;
    switch (keyCode) {
    case keySpace:
        return around_.transport.playPauseMovie();
    case keyJ:
        return around_.transport.playMovieBackwards();
    case keyK:
        return around_.transport.pauseMovie();
    case keyL:
        return around_.transport.playMovieForwards();
    case keyComma:
        return around_.transport.jumpToFirstFrame();
    case keyPeriod:
        return around_.transport.jumpToLastFrame();
    case keyLeftBracket:
    case keyRightBracket:
    case keyT:
        return drawingPanelKey(keyCode);
    case keyA:
        return around_.grade.toggleGrade();
    case keyC:
        return around_.panels.toggle(ViewerPanel::grading);
    case keyO:
        return around_.panels.toggle(ViewerPanel::options);
    case keyP:
        return around_.panels.toggle(ViewerPanel::playlistDrawer);
    case keyN:
        return around_.panels.toggle(ViewerPanel::notes);
    case keyD:
        return around_.panels.toggle(ViewerPanel::drawing);
    case keyB:
        return around_.panels.toggle(ViewerPanel::bookmarks);
    case keyF:
        if (fullScreen) around_.panels.toggle(ViewerPanel::controls);
        return;
    case keyS:
        return around_.panels.showAllPanels();
    case keyH:
        return around_.panels.hideAllPanels();
    case keyEscape:
        if (fullScreen) Q_EMIT toggleFullScreen();
        return;
    case keySemicolon:
        return around_.bookmarks.addBookmark();
    default:
        return;
    }
}

void ViewerInput::drawingPanelKey(int keyCode) {
    if (!around_.panels.isVisible(ViewerPanel::drawing)) return;
    if (keyCode == keyT) return around_.tools.toggleDrawingMode();
    const double width = around_.tools.currentWidth();
    if (keyCode == keyLeftBracket && width >= 2 && width <= 100) around_.tools.setToolWidth(width - 1);
    if (keyCode == keyRightBracket && width >= 1 && width <= 99) around_.tools.setToolWidth(width + 1);
}

void ViewerInput::scrollWheel(double deltaY, bool command) {
    if (deltaY < 0)
        command ? around_.bookmarks.goToNextBookmark() : around_.transport.jumpToNextFrame();
    else if (deltaY > 0)
        command ? around_.bookmarks.goToPreviousBookmark() : around_.transport.jumpToPreviousFrame();
}

void ViewerInput::movieList(bool show) {
    around_.preferences.restorePlaylistDrawer.set(int(show));
    Q_EMIT showMovieList(show);
}

void ViewerInput::mouseDown() {
    if (around_.panels.isFullScreen()) {
        movieList(false);
        if (around_.panels.isVisible(ViewerPanel::controls)) around_.panels.toggle(ViewerPanel::controls);
        around_.panels.hideCursorUntilMouseMoves();
    }
    Q_EMIT hidePopUps();
}

void ViewerInput::mouseEntered(const QString& namedArea) {
    if (!around_.panels.isFullScreen()) return;
    if (namedArea == QLatin1String("movieListArea") && !around_.preferences.disableRightMouseZone())
        movieList(true);
    if (namedArea == QLatin1String("playbackArea") && !around_.preferences.disableLowerMouseZone())
        around_.panels.show(ViewerPanel::controls, true);
}

} // namespace daylark
