#pragma once

class QMenu;

namespace daylark {

class Commands;
class MoviePlayerController;

/// The grade of the movie on screen and stills of it, as commands named "viewer.…". Copy and paste speak of
/// the movies selected in the viewer's list; their titles tell the controller's actions apart.
void addGradeCommands(Commands& commands, MoviePlayerController& controller);
void fillGradeMenu(QMenu* menu, const Commands& commands);

} // namespace daylark
