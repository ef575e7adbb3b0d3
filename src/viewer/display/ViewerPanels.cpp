#include "viewer/display/ViewerPanels.h"

#include "platform/Alerts.h"
#include "preferences/Preferences.h"

#include <algorithm>
#include <array>
#include <utility>

namespace daylark {

namespace {

struct PanelNames {
    ViewerPanel panel;
    const char* layout;
    Preference<int> Preferences::*restore;
};

constexpr std::array<PanelNames, 8> panelNames{
    {{ViewerPanel::grading, "gradingWindow", &Preferences::restoreGradingWindow},
     {ViewerPanel::drawing, "drawingWindow", &Preferences::restoreDrawingWindow},
     {ViewerPanel::bookmarks, "bookmarkWindow", &Preferences::restoreBookmarkWindow},
     {ViewerPanel::options, "optionsWindow", &Preferences::restoreOptionsWindow},
     {ViewerPanel::notes, "notesWindow", &Preferences::restoreNotesWindow},
     {ViewerPanel::playlistDrawer, "playlistDrawer", &Preferences::restorePlaylistDrawer},
     {ViewerPanel::colour, "colourWindow", &Preferences::restoreColourWindow},
     {ViewerPanel::scopes, "scopesWindow", &Preferences::restoreScopesWindow}}};

const PanelNames* namesOf(ViewerPanel panel) {
    for (const PanelNames& names : panelNames)
        if (names.panel == panel) return &names;
    return nullptr;
}

} // namespace

ViewerPanels::ViewerPanels(Preferences& preferences, Alerts& alerts, QObject* parent)
    : QObject(parent)
    , preferences_(preferences)
    , alerts_(alerts) {}

QString ViewerPanels::layoutName(ViewerPanel panel) {
    const PanelNames* names = namesOf(panel);
    return names ? QString::fromLatin1(names->layout) : QString();
}

Preference<int>* ViewerPanels::restorePreference(ViewerPanel panel) {
    const PanelNames* names = namesOf(panel);
    return names ? &(preferences_.*names->restore) : nullptr;
}

bool ViewerPanels::isVisible(ViewerPanel panel) const {
    return host_ && host_->isPanelVisible(panel);
}

void ViewerPanels::hideCursorUntilMouseMoves() {
    if (host_ && host_->isFullScreen()) host_->hideCursorUntilMouseMoves();
}

void ViewerPanels::place(ViewerPanel panel, bool visible, Among among) {
    if (!host_) return;
    if (panel == ViewerPanel::drawing && !visible) host_->closeColourPanel();
    // The playlist there is another view of it.
    if (!visible && host_->isFullScreen() && panel != ViewerPanel::playlistDrawer) std::erase(putAway_, panel);
    host_->setPanelVisible(panel, visible);
    if (Preference<int>* restore = restorePreference(panel)) restore->set(int(visible));
    Q_EMIT panelToggled(panel, visible, among == Among::all);
}

void ViewerPanels::show(ViewerPanel panel, bool visible) {
    if (!host_) return;
    if (panel == ViewerPanel::controls && !visible) hideCursorUntilMouseMoves();
    place(panel, visible);
    Q_EMIT toggled();
}

void ViewerPanels::toggle(ViewerPanel panel) {
    show(panel, !isVisible(panel));
}

void ViewerPanels::showAllPanels() {
    if (!host_) return;
    const std::vector<ViewerPanel> all{ViewerPanel::playlistDrawer, ViewerPanel::drawing, ViewerPanel::notes,
                                       ViewerPanel::grading, ViewerPanel::options, ViewerPanel::bookmarks};
    if (!host_->isFullScreen() && preferences_.dockWherePanelsCover()) host_->makeRoomFor(all);
    for (const ViewerPanel panel : all)
        place(panel, true, Among::all);
    if (host_->isFullScreen()) place(ViewerPanel::controls, true, Among::all);
    Q_EMIT toggled();
}

void ViewerPanels::hideAllPanels() {
    if (!host_) return;
    putAway_.clear();
    for (const ViewerPanel panel :
         {ViewerPanel::playlistDrawer, ViewerPanel::notes, ViewerPanel::grading, ViewerPanel::options,
          ViewerPanel::drawing, ViewerPanel::bookmarks, ViewerPanel::colour, ViewerPanel::scopes,
          ViewerPanel::controls})
        place(panel, false, Among::all);
    hideCursorUntilMouseMoves();
    Q_EMIT toggled();
}

void ViewerPanels::closeForFullScreen() {
    std::vector<ViewerPanel> open;
    for (const PanelNames& names : panelNames) {
        if (!isVisible(names.panel)) continue;
        open.push_back(names.panel);
        place(names.panel, false);
    }
    putAway_ = std::move(open);
    Q_EMIT toggled();
}

// As one of all: none takes up its tool by itself.
void ViewerPanels::reopenAfterFullScreen() {
    const std::vector<ViewerPanel> putAway = std::exchange(putAway_, {});
    if (!host_ || putAway.empty() || !preferences_.panelsReturnFromFullScreen()) return;
    for (const ViewerPanel panel : putAway)
        place(panel, true, Among::all);
    Q_EMIT toggled();
}

bool ViewerPanels::canDock(bool docked) const {
    return std::any_of(panelNames.begin(), panelNames.end(), [this, docked](const PanelNames& names) {
        return isVisible(names.panel) && !isFullScreen() && host_->isPanelDocked(names.panel) != docked;
    });
}

void ViewerPanels::dockPanels() {
    setDocked(true);
}

void ViewerPanels::floatPanels() {
    setDocked(false);
}

void ViewerPanels::setDocked(bool docked) {
    if (!canDock(docked)) return;
    for (const PanelNames& names : panelNames)
        if (isVisible(names.panel) && host_->isPanelDocked(names.panel) != docked)
            host_->setPanelDocked(names.panel, docked);
    Q_EMIT toggled();
}

void ViewerPanels::restoreOpenPanels() {
    if (!host_ || !preferences_.restorePreviousWindows()) return;
    for (const PanelNames& names : panelNames)
        if ((preferences_.*names.restore)() == 1) place(names.panel, true);
    Q_EMIT toggled();
}

void ViewerPanels::saveFrame(ViewerPanel panel, PanelPlacePreferences& place, bool withSize) {
    const QRect frame = host_->panelFrame(panel);
    place.x.set(frame.x());
    place.y.set(frame.y());
    if (!withSize) return;
    place.width.set(frame.width());
    place.height.set(frame.height());
}

void ViewerPanels::restoreFrame(ViewerPanel panel, const PanelPlacePreferences& place, bool withSize) {
    if (preferences_.layoutsKeepDocking() && host_->isPanelDocked(panel)) return;
    QRect frame = host_->panelFrame(panel);
    frame.moveTo(place.x(), place.y());
    if (withSize) frame.setSize({place.width(), place.height()});
    host_->setPanelFrame(panel, frame);
}

QRect ViewerPanels::favouriteFrame(const PanelLayoutPreferences& layout) {
    return {layout.viewerX(), layout.viewerY(), layout.viewerWidth(), layout.viewerHeight()};
}

void ViewerPanels::restoreFavouriteFrame(int narrowest) {
    const QRect frame = favouriteFrame(preferences_.panelLayout1);
    if (host_ && !host_->isFullScreen() && frame.width() >= narrowest) host_->setViewerFrame(frame);
}

void ViewerPanels::bookmarkCurrentViewerSize() {
    if (!host_) return;
    const int answer = alerts_.run(
        {tr("Save Current Panel Layout?"),
         {},
         {tr("Save As Layout 1"), tr("Save As Layout 2"), tr("Cancel")},
         AlertStyle::informational});
    if (answer == Alerts::firstButton) saveLayout(preferences_.panelLayout1);
    if (answer == Alerts::secondButton) saveLayout(preferences_.panelLayout2);
}

void ViewerPanels::saveLayout(PanelLayoutPreferences& layout) {
    QStringList open;
    for (const PanelNames& names : panelNames)
        if (isVisible(names.panel)) open << QString::fromLatin1(names.layout);
    // An empty list must be told from none saved: it is stored as such.
    layout.panelsToRestore.set(open);
    if (!host_->isFullScreen()) {
        const QRect frame = host_->viewerFrame();
        layout.viewerWidth.set(frame.width());
        layout.viewerHeight.set(frame.height());
        layout.viewerX.set(frame.x());
        layout.viewerY.set(frame.y());
        layout.arrangement.set(QString::fromLatin1(host_->arrangement().toBase64()));
        layout.viewerMaximised.set(host_->isViewerMaximised());
    }
    saveFrame(ViewerPanel::grading, layout.grading, false);
    saveFrame(ViewerPanel::drawing, layout.drawing, false);
    saveFrame(ViewerPanel::options, layout.options, false);
    saveFrame(ViewerPanel::colour, layout.colour, false);
    saveFrame(ViewerPanel::scopes, layout.scopes, true);
    saveFrame(ViewerPanel::notes, layout.notes, true);
    saveFrame(ViewerPanel::bookmarks, layout.bookmarks, true);
}

/// A layout from elsewhere does not say what stood docked, nor whether the window was maximised: that stays.
void ViewerPanels::restoreViewer(const PanelLayoutPreferences& layout) {
    if (!preferences_.layoutsKeepDocking()) return host_->setViewerFrame(favouriteFrame(layout));
    const bool maximised =
        layout.viewerMaximised.isStored() ? layout.viewerMaximised() : host_->isViewerMaximised();
    if (maximised)
        host_->maximiseViewer();
    else
        host_->setViewerFrame(favouriteFrame(layout));
    if (layout.arrangement.isStored())
        host_->restoreDocking(QByteArray::fromBase64(layout.arrangement().toLatin1()));
}

void ViewerPanels::restoreSavedPanelLayout(const Sender& sender) {
    const bool first = sender.title == QLatin1String("Restore Panel Layout 1");
    if (!host_ || (!first && sender.title != QLatin1String("Restore Panel Layout 2"))) return;
    const PanelLayoutPreferences& layout = first ? preferences_.panelLayout1 : preferences_.panelLayout2;
    if (!layout.panelsToRestore.isStored()) {
        // The two texts differ by one letter, as whoever learnt them knows them.
        alerts_.show({tr("No saved layout"),
                      first
                          ? tr("Use \"Panels > Save Panel Layout\" to save the current layout.")
                          : tr("Use \"Panels > Save Panels Layout\" to save the current layout."),
                      {tr("Okay")},
                      AlertStyle::warning});
        return;
    }
    if (!host_->isFullScreen()) restoreViewer(layout);
    restoreFrame(ViewerPanel::grading, layout.grading, false);
    restoreFrame(ViewerPanel::drawing, layout.drawing, false);
    restoreFrame(ViewerPanel::options, layout.options, false);
    // Layouts of before know neither of these.
    if (layout.colour.x.isStored()) restoreFrame(ViewerPanel::colour, layout.colour, false);
    if (layout.scopes.x.isStored()) restoreFrame(ViewerPanel::scopes, layout.scopes, true);
    restoreFrame(ViewerPanel::notes, layout.notes, true);
    restoreFrame(ViewerPanel::bookmarks, layout.bookmarks, true);
    // Opens what the list names and closes nothing.
    for (const QString& name : layout.panelsToRestore())
        for (const PanelNames& names : panelNames) {
            if (name == QLatin1String(names.layout)) place(names.panel, true);
        }
    Q_EMIT toggled();
}

} // namespace daylark
