#include "preferences/PanelLayout.h"

namespace daylark {

namespace {

QString placeKey(const char* panel, const char* field, const QString& suffix) {
    return QLatin1String(panel) + QLatin1Char('_') + QLatin1String(field) + suffix;
}

QString layoutKey(const char* field, const QString& suffix) {
    return QLatin1String(field) + suffix;
}

} // namespace

PanelPlacePreferences::PanelPlacePreferences(Preferences& owner, const char* panel, const QString& suffix)
    : x(owner, placeKey(panel, "PositionX", suffix))
    , y(owner, placeKey(panel, "PositionY", suffix))
    , width(owner, placeKey(panel, "favouriteWidth", suffix))
    , height(owner, placeKey(panel, "favouriteHeight", suffix)) {}

PanelLayoutPreferences::PanelLayoutPreferences(Preferences& owner, const QString& suffix)
    : panelsToRestore(owner, layoutKey("panelsToRestore", suffix))
    , viewerWidth(owner, layoutKey("favouriteWidth", suffix))
    , viewerHeight(owner, layoutKey("favouriteHeight", suffix))
    , viewerX(owner, layoutKey("favouritePositionX", suffix))
    , viewerY(owner, layoutKey("favouritePositionY", suffix))
    , arrangement(owner, layoutKey("panelArrangement", suffix))
    , viewerMaximised(owner, layoutKey("viewerMaximised", suffix))
    , grading(owner, "gradingWindow", suffix)
    , drawing(owner, "drawingWindow", suffix)
    , options(owner, "optionsWindow", suffix)
    , notes(owner, "notesWindow", suffix)
    , bookmarks(owner, "bookmarkWindow", suffix)
    , colour(owner, "colourWindow", suffix)
    , scopes(owner, "scopesWindow", suffix) {}

} // namespace daylark
