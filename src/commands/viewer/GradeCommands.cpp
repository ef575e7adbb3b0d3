#include "commands/viewer/ViewerParts.h"

namespace daylark {

// Copy and paste speak of the movies selected in the viewer's list.
void bindGradeCommands(CommandSet& commands, MoviePlayerController& controller,
                       const ViewerConditions& when) {
    ViewerGrade& grade = controller.grade();
    const Condition& isApplied = commands.when([&grade] { return grade.isApplied(); })
                                     .follows(grade, &ViewerGrade::gradeChanged)
                                     .follows(controller, &MoviePlayerController::movieShown);
    commands.bind(
        QStringLiteral("viewer.toggleGrade"), [&grade] { grade.toggleGrade(); }, &when.hasMovie, &isApplied);
    const auto bind = [&](const char* id, std::function<void()> run) {
        commands.bind(QLatin1String(id), std::move(run), &when.hasMovie);
    };
    const auto copyOrPaste = [&controller, &grade](const char* title) {
        return [&controller, &grade, title = QString::fromLatin1(title)] {
            grade.copyAndPasteGradeValues({title}, controller.list().selectedMovies());
        };
    };
    bind("viewer.copyGrade", copyOrPaste("Copy"));
    bind("viewer.pasteGrade", copyOrPaste("Paste"));
    bind("viewer.gradeAll", [&grade] { grade.applyGradeToAllMovies(); });
    bind("viewer.resetGrade", [&grade] { grade.setGrade({{}, ViewerGrade::resetAll}); });
    bind("viewer.takeSnapshot", [&controller] { controller.snapshots().takeTimedSnapshot(); });
}

} // namespace daylark
