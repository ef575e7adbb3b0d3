#include "ui/commands/PanelCommands.h"

#include "ui/commands/Commands.h"
#include "viewer/MoviePlayerController.h"

#include <QAction>
#include <QCoreApplication>
#include <QMenu>

namespace daylark {

namespace {

struct PanelToggle {
    ViewerPanel panel;
    const char* id;
    const char* text;
    const char* icon;
    Qt::Key key;
};
const PanelToggle panelToggles[] = {
    {ViewerPanel::notes, "viewer.notes", QT_TRANSLATE_NOOP("PanelCommands", "&Notes"), "notes", Qt::Key_N},
    {ViewerPanel::bookmarks, "viewer.bookmarks", QT_TRANSLATE_NOOP("PanelCommands", "&Bookmarks"),
     "bookmarks", Qt::Key_B},
    {ViewerPanel::options, "viewer.options", QT_TRANSLATE_NOOP("PanelCommands", "Viewer &Options"), "options",
     Qt::Key_O},
    {ViewerPanel::playlistDrawer, "viewer.playlistDrawer", QT_TRANSLATE_NOOP("PanelCommands", "&Playlist"),
     "playlistDrawer", Qt::Key_P},
    {ViewerPanel::controls, "viewer.controls", QT_TRANSLATE_NOOP("PanelCommands", "&Floating Controls"), "",
     Qt::Key_F}};

QString panelText(const char* text) {
    return QCoreApplication::translate("PanelCommands", text);
}

} // namespace

void addPanelCommands(Commands& commands, MoviePlayerController& controller) {
    ViewerPanels& panels = controller.panels();
    for (const PanelToggle& toggle : panelToggles)
        commands
            .add({QLatin1String(toggle.id),
                  panelText(toggle.text),
                  QLatin1String(toggle.icon),
                  toggle.key,
                  [&panels, panel = toggle.panel] { panels.toggle(panel); },
                  {},
                  [&panels, panel = toggle.panel] { return panels.isVisible(panel); },
                  {}})
            ->setAutoRepeat(false);
    const auto add = [&](const char* id, const char* text, QKeySequence key, std::function<void()> run) {
        commands.add({QLatin1String(id), panelText(text), {}, std::move(key), std::move(run)})
            ->setAutoRepeat(false);
    };
    add("viewer.showAllPanels", QT_TRANSLATE_NOOP("PanelCommands", "&Show All Panels"), Qt::Key_S,
        [&panels] { panels.showAllPanels(); });
    add("viewer.hideAllPanels", QT_TRANSLATE_NOOP("PanelCommands", "&Hide All Panels"), Qt::Key_H,
        [&panels] { panels.hideAllPanels(); });
    add("viewer.savePanelLayout", QT_TRANSLATE_NOOP("PanelCommands", "Sa&ve Panel Layout…"), {},
        [&panels] { panels.bookmarkCurrentViewerSize(); });
    add("viewer.restorePanelLayout1", QT_TRANSLATE_NOOP("PanelCommands", "Restore Panel Layout &1"), {},
        [&panels] { panels.restoreSavedPanelLayout({QStringLiteral("Restore Panel Layout 1")}); });
    add("viewer.restorePanelLayout2", QT_TRANSLATE_NOOP("PanelCommands", "Restore Panel Layout &2"), {},
        [&panels] { panels.restoreSavedPanelLayout({QStringLiteral("Restore Panel Layout 2")}); });
    QObject::connect(&panels, &ViewerPanels::toggled, &commands, &Commands::refresh);
}

void fillPanelMenu(QMenu* menu, const Commands& commands) {
    for (const char* id :
         {"viewer.notes", "viewer.bookmarks", "viewer.drawingTools", "viewer.gradeTools", "viewer.options",
          "viewer.playlistDrawer", "viewer.controls", "", "viewer.showAllPanels", "viewer.hideAllPanels", "",
          "viewer.savePanelLayout", "viewer.restorePanelLayout1", "viewer.restorePanelLayout2"}) {
        if (*id)
            menu->addAction(commands.action(QLatin1String(id)));
        else
            menu->addSeparator();
    }
}

} // namespace daylark
