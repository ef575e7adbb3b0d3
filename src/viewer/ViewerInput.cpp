#include "viewer/ViewerInput.h"

#include "preferences/Preferences.h"
#include "viewer/display/ViewerGeometry.h"
#include "viewer/display/ViewerPanels.h"
#include "viewer/review/ViewerBookmarks.h"
#include "viewer/transport/Transport.h"

#include <algorithm>
#include <cmath>

namespace daylark {

ViewerInput::ViewerInput(const Surroundings& surroundings, QObject* parent)
    : QObject(parent)
    , around_(surroundings) {}

void ViewerInput::keyPressed() {
    Q_EMIT hideVolume();
}

void ViewerInput::scrollWheel(double deltaY, bool command) {
    if (deltaY < 0)
        command ? around_.bookmarks.goToNextBookmark() : around_.transport.jumpToNextFrame();
    else if (deltaY > 0)
        command ? around_.bookmarks.goToPreviousBookmark() : around_.transport.jumpToPreviousFrame();
}

void ViewerInput::zoomWheel(double deltaY, const QPointF& at) {
    if (!around_.preferences.wheelZoomsWithShift()) return scrollWheel(deltaY, false);
    constexpr double notch = 120, mostNotches = 4; // a touchpad may tell any number at once
    around_.geometry.zoomAbout(at, std::pow(1.2, std::clamp(deltaY / notch, -mostNotches, mostNotches)));
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
