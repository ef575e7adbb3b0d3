#pragma once

#include "preferences/Preference.h"

namespace daylark {

/// Where a panel stood when a layout was saved, in points of the screen. Keys by the panel's name and the
/// layout's suffix.
struct PanelPlacePreferences {
    PanelPlacePreferences(Preferences& owner, const char* panel, const QString& suffix);
    Preference<int> x, y;
    Preference<int> width, height; ///< of the panels whose size is kept
};

/// One of the two saved layouts about the viewer. Nothing has a default: a layout is there once it was saved,
/// and an empty list of open panels is stored as such. Member of the `Preferences`; interface thread.
struct PanelLayoutPreferences {
    PanelLayoutPreferences(Preferences& owner, const QString& suffix);
    Preference<QStringList> panelsToRestore; ///< their layout names
    Preference<int> viewerWidth, viewerHeight, viewerX, viewerY;
    Preference<QString> arrangement; ///< which stood docked and where: the toolkit's own bytes as base64 text
    Preference<bool> viewerMaximised;
    PanelPlacePreferences grading, drawing, options, notes, bookmarks, colour, scopes;
};

} // namespace daylark
