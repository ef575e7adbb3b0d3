#include "commands/viewer/ViewerParts.h"

namespace daylark {

Condition& whenPanelIsShown(CommandSet& commands, ViewerPanels& panels, ViewerPanel panel) {
    return commands.when([&panels, panel] { return panels.isVisible(panel); })
        .follows(panels, &ViewerPanels::toggled, &ViewerPanels::visibilityChanged);
}

void bindPanelCommands(CommandSet& commands, MoviePlayerController& controller,
                       const ViewerConditions& when) {
    ViewerPanels& panels = controller.panels();
    const auto toggles = [&](const char* id, ViewerPanel panel) {
        commands.bind(
            QLatin1String(id), [&panels, panel] { panels.toggle(panel); }, nullptr,
            &whenPanelIsShown(commands, panels, panel));
    };
    toggles("viewer.notes", ViewerPanel::notes);
    toggles("viewer.bookmarks", ViewerPanel::bookmarks);
    toggles("viewer.options", ViewerPanel::options);
    toggles("viewer.playlistDrawer", ViewerPanel::playlistDrawer);
    toggles("viewer.drawingTools", ViewerPanel::drawing);
    toggles("viewer.gradeTools", ViewerPanel::grading);
    toggles("viewer.colour", ViewerPanel::colour);
    toggles("viewer.scopes", ViewerPanel::scopes);
    toggles("viewer.controls", ViewerPanel::controls);
    commands.bindKey(QStringLiteral("viewer.controls"), when.fullScreen);
    const auto bind = [&](const char* id, std::function<void()> run) {
        commands.bind(QLatin1String(id), std::move(run));
    };
    bind("viewer.showAllPanels", [&panels] { panels.showAllPanels(); });
    bind("viewer.hideAllPanels", [&panels] { panels.hideAllPanels(); });
    bind("viewer.savePanelLayout", [&panels] { panels.bookmarkCurrentViewerSize(); });
    const auto whenSome = [&](bool docked) -> const Condition* {
        return &commands.when([&panels, docked] { return panels.canDock(docked); })
                    .follows(panels, &ViewerPanels::toggled, &ViewerPanels::visibilityChanged);
    };
    commands.bind(
        QStringLiteral("viewer.dockPanels"), [&panels] { panels.dockPanels(); }, whenSome(true));
    commands.bind(
        QStringLiteral("viewer.floatPanels"), [&panels] { panels.floatPanels(); }, whenSome(false));
    bind("viewer.restorePanelLayout1",
         [&panels] { panels.restoreSavedPanelLayout({QStringLiteral("Restore Panel Layout 1")}); });
    bind("viewer.restorePanelLayout2",
         [&panels] { panels.restoreSavedPanelLayout({QStringLiteral("Restore Panel Layout 2")}); });
}

} // namespace daylark
