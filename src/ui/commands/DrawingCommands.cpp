#include "ui/commands/DrawingCommands.h"

#include "ui/commands/Commands.h"
#include "viewer/MoviePlayerController.h"

#include <QAction>
#include <QCoreApplication>
#include <QMenu>

namespace daylark {

namespace {

QString drawingText(const char* text) {
    return QCoreApplication::translate("DrawingCommands", text);
}

} // namespace

void addDrawingCommands(Commands& commands, MoviePlayerController& controller) {
    FrameDrawings& drawing = controller.drawings();
    const auto hasMovie = [&controller] { return controller.currentMovie() != nullptr; };
    const auto isDrawn = [&controller] {
        return controller.drawings().canvas().currentStrokesDictionary().hasStrokes();
    };
    commands.add({QStringLiteral("viewer.drawingTools"),
                  drawingText(QT_TRANSLATE_NOOP("DrawingCommands", "&Drawing Tools")),
                  QStringLiteral("draw"),
                  Qt::Key_D,
                  [&controller] { controller.panels().toggle(ViewerPanel::drawing); },
                  {},
                  [&controller] { return controller.panels().isVisible(ViewerPanel::drawing); },
                  {}});
    commands.add({QStringLiteral("viewer.undoStroke"),
                  drawingText(QT_TRANSLATE_NOOP("DrawingCommands", "&Undo Drawing")), QStringLiteral("undo"),
                  QKeySequence::Undo, [&drawing] { drawing.undo(); },
                  [&drawing] { return drawing.canUndo(); }});
    commands.add({QStringLiteral("viewer.redoStroke"),
                  drawingText(QT_TRANSLATE_NOOP("DrawingCommands", "&Redo Drawing")), QStringLiteral("redo"),
                  Qt::CTRL | Qt::SHIFT | Qt::Key_Z, [&drawing] { drawing.redo(); },
                  [&drawing] { return drawing.canRedo(); }});
    commands.add({QStringLiteral("viewer.removeLatestStroke"),
                  drawingText(QT_TRANSLATE_NOOP("DrawingCommands", "Remove &Latest Stroke")),
                  QStringLiteral("removeStroke"), Qt::CTRL | Qt::Key_Backspace,
                  [&drawing] { drawing.removeLatestStroke(); }, isDrawn});
    commands.add({QStringLiteral("viewer.deleteDrawings"),
                  drawingText(QT_TRANSLATE_NOOP("DrawingCommands", "Delete &Current Drawings")),
                  QStringLiteral("remove"),
                  {},
                  [&drawing] { drawing.deleteCurrentDrawings(); },
                  isDrawn});
    commands.add({QStringLiteral("viewer.deleteAllDrawings"),
                  drawingText(QT_TRANSLATE_NOOP("DrawingCommands", "Delete &All Drawings From Movie…")),
                  QStringLiteral("trash"),
                  {},
                  [&drawing] { drawing.deleteAllDrawingsFromMovie(); },
                  hasMovie});
    QObject::connect(&drawing, &FrameDrawings::historyChanged, &commands, &Commands::refresh);
    QObject::connect(&drawing, &FrameDrawings::strokesChanged, &commands, &Commands::refresh);
}

void fillDrawingMenu(QMenu* menu, const Commands& commands) {
    for (const char* id :
         {"viewer.undoStroke", "viewer.redoStroke", "", "viewer.drawingTools", "viewer.toggleDrawing", "viewer.narrowerTool",
          "viewer.widerTool", "",
          "viewer.removeLatestStroke", "viewer.deleteDrawings", "viewer.deleteAllDrawings"}) {
        if (*id)
            menu->addAction(commands.action(QLatin1String(id)));
        else
            menu->addSeparator();
    }
}

} // namespace daylark
