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
    const auto bind = [&](const char* id, std::function<void()> run, const Condition& enabled) {
        commands.bind(QLatin1String(id), std::move(run), &enabled);
    };
    const auto copyOrPaste = [&controller, &grade](const char* title) {
        return [&controller, &grade, title = QString::fromLatin1(title)] {
            grade.copyAndPasteGradeValues({title}, controller.list().selectedMovies());
        };
    };
    const auto whenGrade = [&](std::function<bool()> ask) -> const Condition& {
        return commands.when([&hasMovie = when.hasMovie, ask = std::move(ask)] { return hasMovie.holds() && ask(); })
            .follows(grade, &ViewerGrade::gradeChanged)
            .follows(when.hasMovie, &Condition::changed)
            .follows(controller, &MoviePlayerController::movieShown);
    };
    const Condition& canPaste = whenGrade([&grade] { return grade.hasCopy(); });
    bind("viewer.copyGrade", copyOrPaste("Copy"), when.hasMovie);
    bind("viewer.pasteGrade", copyOrPaste("Paste"), canPaste);
    bind("viewer.gradeAll", [&grade] { grade.applyGradeToAllMovies(); }, canPaste);
    bind("viewer.resetGrade", [&grade] { grade.setGrade({{}, ViewerGrade::resetAll}); },
         whenGrade([&grade] { return !grade.grade().isNeutral(); }));
    bind("viewer.takeSnapshot", [&controller] { controller.snapshots().takeTimedSnapshot(); }, when.isPlayable);
}

} // namespace daylark
