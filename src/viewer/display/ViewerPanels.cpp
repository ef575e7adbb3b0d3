#include "viewer/display/ViewerPanels.h"

#include "platform/Alerts.h"
#include "platform/UserDefaults.h"

#include <array>

namespace daylark {

namespace {

struct PanelNames {
    ViewerPanel panel;
    const char* layout;
    const char* restore;
};

constexpr std::array<PanelNames, 6> panelNames{
    {{ViewerPanel::grading, "gradingWindow", "restoreGradingWindow"},
     {ViewerPanel::drawing, "drawingWindow", "restoreDrawingWindow"},
     {ViewerPanel::bookmarks, "bookmarkWindow", "restoreBookmarkWindow"},
     {ViewerPanel::options, "optionsWindow", "restoreOptionsWindow"},
     {ViewerPanel::notes, "notesWindow", "restoreNotesWindow"},
     {ViewerPanel::playlistDrawer, "playlistDrawer", "restorePlaylistDrawer"}}};

const PanelNames* namesOf(ViewerPanel panel) {
    for (const PanelNames& names : panelNames)
        if (names.panel == panel) return &names;
    return nullptr;
}

QString frameKey(const QString& window, const char* field, const QString& suffix) {
    return window + QLatin1Char('_') + QLatin1String(field) + suffix;
}

QString plainKey(const char* key, const QString& suffix) {
    return QLatin1String(key) + suffix;
}

} // namespace

ViewerPanels::ViewerPanels(UserDefaults& defaults, Alerts& alerts, QObject* parent)
    : QObject(parent)
    , defaults_(defaults)
    , alerts_(alerts) {}

QString ViewerPanels::layoutName(ViewerPanel panel) {
    const PanelNames* names = namesOf(panel);
    return names ? QString::fromLatin1(names->layout) : QString();
}

QString ViewerPanels::restoreKey(ViewerPanel panel) {
    const PanelNames* names = namesOf(panel);
    return names ? QString::fromLatin1(names->restore) : QString();
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
    host_->setPanelVisible(panel, visible);
    if (const QString key = restoreKey(panel); !key.isEmpty()) defaults_.set(key, int(visible));
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
    for (const ViewerPanel panel : {ViewerPanel::playlistDrawer, ViewerPanel::drawing, ViewerPanel::notes,
                                    ViewerPanel::grading, ViewerPanel::options, ViewerPanel::bookmarks})
        place(panel, true, Among::all);
    if (host_->isFullScreen()) place(ViewerPanel::controls, true, Among::all);
    Q_EMIT toggled();
}

void ViewerPanels::hideAllPanels() {
    if (!host_) return;
    for (const ViewerPanel panel :
         {ViewerPanel::playlistDrawer, ViewerPanel::notes, ViewerPanel::grading, ViewerPanel::options,
          ViewerPanel::drawing, ViewerPanel::bookmarks, ViewerPanel::controls})
        place(panel, false, Among::all);
    hideCursorUntilMouseMoves();
    Q_EMIT toggled();
}

void ViewerPanels::closeForFullScreen() {
    for (const PanelNames& names : panelNames)
        if (isVisible(names.panel)) place(names.panel, false);
    Q_EMIT toggled();
}

void ViewerPanels::restoreOpenPanels() {
    if (!host_ || !defaults_.boolForKey(QStringLiteral("restorePreviousWindows"))) return;
    for (const PanelNames& names : panelNames)
        if (defaults_.integerForKey(QString::fromLatin1(names.restore)) == 1) place(names.panel, true);
    Q_EMIT toggled();
}

void ViewerPanels::saveFrame(ViewerPanel panel, const QString& suffix, bool withSize) {
    const QRect frame = host_->panelFrame(panel);
    const QString window = layoutName(panel);
    defaults_.set(frameKey(window, "PositionX", suffix), frame.x());
    defaults_.set(frameKey(window, "PositionY", suffix), frame.y());
    if (!withSize) return;
    defaults_.set(frameKey(window, "favouriteWidth", suffix), frame.width());
    defaults_.set(frameKey(window, "favouriteHeight", suffix), frame.height());
}

void ViewerPanels::restoreFrame(ViewerPanel panel, const QString& suffix, bool withSize) {
    const QString window = layoutName(panel);
    QRect frame = host_->panelFrame(panel);
    frame.moveTo(defaults_.integerForKey(frameKey(window, "PositionX", suffix)),
                 defaults_.integerForKey(frameKey(window, "PositionY", suffix)));
    if (withSize)
        frame.setSize({defaults_.integerForKey(frameKey(window, "favouriteWidth", suffix)),
                       defaults_.integerForKey(frameKey(window, "favouriteHeight", suffix))});
    host_->setPanelFrame(panel, frame);
}

QRect ViewerPanels::favouriteFrame(const QString& suffix) const {
    const auto number = [&](const char* key) { return defaults_.integerForKey(plainKey(key, suffix)); };
    return {number("favouritePositionX"), number("favouritePositionY"), number("favouriteWidth"),
            number("favouriteHeight")};
}

void ViewerPanels::restoreFavouriteFrame(int narrowest) {
    const QRect frame = favouriteFrame({});
    if (host_ && !host_->isFullScreen() && frame.width() >= narrowest) host_->setViewerFrame(frame);
}

void ViewerPanels::bookmarkCurrentViewerSize() {
    if (!host_) return;
    const int answer = alerts_.run(
        {QStringLiteral("Save Current Panel Layout?"),
         {},
         {QStringLiteral("Save As Layout 1"), QStringLiteral("Save As Layout 2"), QStringLiteral("Cancel")},
         AlertStyle::informational});
    if (answer == Alerts::firstButton) saveLayout({});
    if (answer == Alerts::secondButton) saveLayout(QStringLiteral("2"));
}

void ViewerPanels::saveLayout(const QString& suffix) {
    QStringList open;
    for (const PanelNames& names : panelNames)
        if (isVisible(names.panel)) open << QString::fromLatin1(names.layout);
    // An empty list must be told from none saved: it is stored as such.
    defaults_.set(plainKey("panelsToRestore", suffix), open);
    if (!host_->isFullScreen()) {
        const QRect frame = host_->viewerFrame();
        defaults_.set(plainKey("favouriteWidth", suffix), frame.width());
        defaults_.set(plainKey("favouriteHeight", suffix), frame.height());
        defaults_.set(plainKey("favouritePositionX", suffix), frame.x());
        defaults_.set(plainKey("favouritePositionY", suffix), frame.y());
    }
    saveFrame(ViewerPanel::grading, suffix, false);
    saveFrame(ViewerPanel::drawing, suffix, false);
    saveFrame(ViewerPanel::options, suffix, false);
    saveFrame(ViewerPanel::notes, suffix, true);
    saveFrame(ViewerPanel::bookmarks, suffix, true);
}

void ViewerPanels::restoreSavedPanelLayout(const Sender& sender) {
    const bool first = sender.title == QLatin1String("Restore Panel Layout 1");
    if (!host_ || (!first && sender.title != QLatin1String("Restore Panel Layout 2"))) return;
    const QString suffix = first ? QString() : QStringLiteral("2");
    if (!defaults_.hasStoredValue(plainKey("panelsToRestore", suffix))) {
        // The two texts differ by one letter; wanted.
        alerts_.show({QStringLiteral("No saved layout"),
                      first
                          ? QStringLiteral("Use \"Panels > Save Panel Layout\" to save the current layout.")
                          : QStringLiteral("Use \"Panels > Save Panels Layout\" to save the current layout."),
                      {QStringLiteral("Okay")},
                      AlertStyle::warning});
        return;
    }
    if (!host_->isFullScreen()) host_->setViewerFrame(favouriteFrame(suffix));
    restoreFrame(ViewerPanel::grading, suffix, false);
    restoreFrame(ViewerPanel::drawing, suffix, false);
    restoreFrame(ViewerPanel::options, suffix, false);
    restoreFrame(ViewerPanel::notes, suffix, true);
    restoreFrame(ViewerPanel::bookmarks, suffix, true);
    // Opens what the list names and closes nothing.
    for (const QString& name : defaults_.value(plainKey("panelsToRestore", suffix)).toStringList())
        for (const PanelNames& names : panelNames) {
            if (name == QLatin1String(names.layout)) place(names.panel, true);
        }
    Q_EMIT toggled();
}

} // namespace daylark
