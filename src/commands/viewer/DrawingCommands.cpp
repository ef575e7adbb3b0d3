#include "commands/viewer/ViewerParts.h"

#include <algorithm>

namespace daylark {

namespace {

/// One movie pixel wider or narrower, between 1 and 100; widths beyond are left as they are.
void widenTool(DrawingTools& tools, bool wider) {
    const double width = tools.currentWidth();
    if (wider ? width >= 1 && width <= 99 : width >= 2 && width <= 100)
        tools.setToolWidth(width + (wider ? 1 : -1));
}

} // namespace

void bindDrawingCommands(CommandSet& commands, MoviePlayerController& controller,
                         const ViewerConditions& when) {
    DrawingTools& tools = controller.drawingTools();
    FrameDrawings& drawing = controller.drawings();
    const Condition& isDrawn =
        commands.when([&drawing] { return drawing.canvas().shown().hasStrokes(); })
            .follows(drawing, &FrameDrawings::strokesChanged);
    const auto bind = [&](const char* id, std::function<void()> run, const Condition& enabled) {
        commands.bind(QLatin1String(id), std::move(run), &enabled);
    };
    bind(
        "viewer.removeLatestStroke", [&drawing] { drawing.removeLatestStroke(); }, isDrawn);
    bind(
        "viewer.deleteDrawings", [&drawing] { drawing.deleteCurrentDrawings(); }, isDrawn);
    bind(
        "viewer.deleteAllDrawings", [&drawing] { drawing.deleteAllDrawingsFromMovie(); },
        commands
            .when([&controller] {
                const auto movie = controller.currentMovie();
                return movie && std::any_of(movie->bookmarkStore.begin(), movie->bookmarkStore.end(),
                                            [](const auto& bookmark) { return bookmark->hasDrawings(); });
            })
            .follows(controller.edits(), &ReviewEdits::bookmarkChanged)
            .follows(when.hasBookmarks, &Condition::changed)
            .follows(controller, &MoviePlayerController::movieShown));
    bind(
        "viewer.toggleDrawing", [&tools] { tools.toggleDrawingMode(); }, when.drawingPanelShown);
    bind(
        "viewer.narrowerTool", [&tools] { widenTool(tools, false); }, when.drawingPanelShown);
    bind(
        "viewer.widerTool", [&tools] { widenTool(tools, true); }, when.drawingPanelShown);
}

} // namespace daylark
