#include "viewer/review/DrawingVisibility.h"

#include "preferences/Preferences.h"
#include "viewer/display/ViewerPanels.h"
#include "viewer/transport/Transport.h"

namespace daylark {

DrawingVisibility::DrawingVisibility(Preferences& preferences, Transport& transport, ViewerPanels& panels,
                                     QObject* parent)
    : QObject(parent)
    , preferences_(preferences)
    , transport_(transport)
    , panels_(panels) {
    connect(&panels_, &ViewerPanels::panelToggled, this, [this](ViewerPanel panel) {
        if (panel == ViewerPanel::drawing) toggleDisplayDrawings();
    });
    connect(&transport_, &Transport::actionDone, this, &DrawingVisibility::toggleDisplayDrawings);
    // A run that comes to its end by itself is no action.
    connect(&transport_, &Transport::stateChanged, this, &DrawingVisibility::toggleDisplayDrawings);
    connect(&preferences_.displayDrawingsOptions, &PreferenceItem::changed, this,
            &DrawingVisibility::toggleDisplayDrawings);
    connect(&preferences_.displayDrawings, &PreferenceItem::changed, this, &DrawingVisibility::changed);
}

void DrawingVisibility::toggleDisplayDrawings() {
    const DrawingsShown option = preferences_.displayDrawingsOptions();
    Preference<bool>& shown = preferences_.displayDrawings;
    if (option == DrawingsShown::withDrawingTools)
        shown.set(panels_.isVisible(ViewerPanel::drawing));
    else if (option == DrawingsShown::always)
        shown.set(true);
    else if (option == DrawingsShown::onlyWhenPaused)
        shown.set(!transport_.isRunning());
}

bool DrawingVisibility::drawingsAreShown() const {
    return preferences_.displayDrawings();
}

void DrawingVisibility::setDrawingBackground(const QString& title) {
    preferences_.drawingBackgroundColour.set(valueOfWord<DrawingBackground>(title));
    backgroundChosen_ = true;
    Q_EMIT changed();
    Q_EMIT viewerWanted();
}

QString DrawingVisibility::drawingBackground() const {
    return wordOf(preferences_.drawingBackgroundColour());
}

// One left from an earlier run would hide the picture for no reason that can be seen.
DrawingBackground DrawingVisibility::shownBackground(bool hasStrokes) const {
    return backgroundChosen_ || (hasStrokes && drawingsAreShown()) ? preferences_.drawingBackgroundColour()
                                                                   : DrawingBackground::picture;
}

} // namespace daylark
