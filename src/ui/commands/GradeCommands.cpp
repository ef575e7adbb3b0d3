#include "ui/commands/GradeCommands.h"

#include "ui/commands/Commands.h"
#include "viewer/MoviePlayerController.h"

#include <QAction>
#include <QCoreApplication>
#include <QMenu>

namespace daylark {

namespace {

QString gradeText(const char* text) {
    return QCoreApplication::translate("GradeCommands", text);
}

} // namespace

void addGradeCommands(Commands& commands, MoviePlayerController& controller) {
    ViewerGrade& grade = controller.grade();
    const auto hasMovie = [&controller] { return controller.currentMovie() != nullptr; };
    commands.add({QStringLiteral("viewer.gradeTools"),
                  gradeText(QT_TRANSLATE_NOOP("GradeCommands", "&Colour Correction")),
                  QStringLiteral("grade"),
                  Qt::Key_C,
                  [&] { controller.panels().toggle(ViewerPanel::grading); },
                  {},
                  [&controller] { return controller.panels().isVisible(ViewerPanel::grading); },
                  {}});
    commands.add({QStringLiteral("viewer.toggleGrade"),
                  gradeText(QT_TRANSLATE_NOOP("GradeCommands", "&Show Grade")),
                  QStringLiteral("gradeOn"),
                  Qt::Key_A,
                  [&] { grade.toggleGrade(); },
                  hasMovie,
                  [&grade] { return grade.isApplied(); },
                  {}});
    commands.add({QStringLiteral("viewer.copyGrade"),
                  gradeText(QT_TRANSLATE_NOOP("GradeCommands", "C&opy Grade")),
                  QStringLiteral("copy"),
                  {},
                  [&controller, &grade] {
                      grade.copyAndPasteGradeValues({QStringLiteral("Copy")},
                                                    controller.list().selectedMovies());
                  },
                  hasMovie});
    commands.add({QStringLiteral("viewer.pasteGrade"),
                  gradeText(QT_TRANSLATE_NOOP("GradeCommands", "&Paste Grade")),
                  QStringLiteral("paste"),
                  {},
                  [&controller, &grade] {
                      grade.copyAndPasteGradeValues({QStringLiteral("Paste")},
                                                    controller.list().selectedMovies());
                  },
                  hasMovie});
    commands.add({QStringLiteral("viewer.gradeAll"),
                  gradeText(QT_TRANSLATE_NOOP("GradeCommands", "Paste Grade onto &All Movies")),
                  QStringLiteral("gradeAll"),
                  {},
                  [&grade] { grade.applyGradeToAllMovies(); },
                  hasMovie});
    commands.add({QStringLiteral("viewer.resetGrade"),
                  gradeText(QT_TRANSLATE_NOOP("GradeCommands", "&Reset Grade")),
                  QStringLiteral("reset"),
                  {},
                  [&grade] {
                      grade.setGrade({{}, ViewerGrade::resetAll});
                  },
                  hasMovie});
    commands.add({QStringLiteral("viewer.takeSnapshot"),
                  gradeText(QT_TRANSLATE_NOOP("GradeCommands", "Take S&napshot…")),
                  QStringLiteral("snapshot"), Qt::CTRL | Qt::Key_T,
                  [&controller] { controller.snapshots().takeTimedSnapshot(); }, hasMovie});
    QObject::connect(&grade, &ViewerGrade::gradeChanged, &commands, &Commands::refresh);
}

void fillGradeMenu(QMenu* menu, const Commands& commands) {
    for (const char* id :
         {"viewer.gradeTools", "viewer.toggleGrade", "", "viewer.copyGrade", "viewer.pasteGrade",
          "viewer.gradeAll", "", "viewer.resetGrade", "", "viewer.takeSnapshot"}) {
        if (*id)
            menu->addAction(commands.action(QLatin1String(id)));
        else
            menu->addSeparator();
    }
}

} // namespace daylark
