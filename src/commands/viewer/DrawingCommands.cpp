#include "commands/viewer/ViewerParts.h"

namespace daylark {

namespace {

/// One movie pixel wider or narrower, between 1 and 100; widths beyond are left as they are.
void widenTool(DrawingMode& drawing, bool wider) {
    const double width = drawing.currentWidth();
    if (wider ? width >= 1 && width <= 99 : width >= 2 && width <= 100)
        drawing.setToolWidth(width + (wider ? 1 : -1));
}

} // namespace

void bindDrawingCommands(CommandSet& commands, MoviePlayerController& controller,
                         const ViewerConditions& when) {
    DrawingMode& drawing = controller.drawing();
    const Condition& isDrawn =
        commands.when([&drawing] { return drawing.canvas().currentStrokesDictionary().hasStrokes(); })
            .follows(drawing, &DrawingMode::historyChanged, &DrawingMode::strokesChanged);
    const auto bind = [&](const char* id, std::function<void()> run, const Condition& enabled) {
        commands.bind(QLatin1String(id), std::move(run), &enabled);
    };
    bind(
        "viewer.undoStroke", [&drawing] { drawing.undo(); },
        commands.when([&drawing] { return drawing.canUndo(); })
            .follows(drawing, &DrawingMode::historyChanged));
    bind(
        "viewer.redoStroke", [&drawing] { drawing.redo(); },
        commands.when([&drawing] { return drawing.canRedo(); })
            .follows(drawing, &DrawingMode::historyChanged));
    bind(
        "viewer.removeLatestStroke", [&drawing] { drawing.removeLatestStroke(); }, isDrawn);
    bind(
        "viewer.deleteDrawings", [&drawing] { drawing.deleteCurrentDrawings(); }, isDrawn);
    bind(
        "viewer.deleteAllDrawings", [&drawing] { drawing.deleteAllDrawingsFromMovie(); }, when.hasMovie);
    bind(
        "viewer.toggleDrawing", [&drawing] { drawing.toggleDrawingMode(); }, when.drawingPanelShown);
    bind(
        "viewer.narrowerTool", [&drawing] { widenTool(drawing, false); }, when.drawingPanelShown);
    bind(
        "viewer.widerTool", [&drawing] { widenTool(drawing, true); }, when.drawingPanelShown);
}

} // namespace daylark
