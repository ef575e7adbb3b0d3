#pragma once

class QMenu;

namespace daylark {

class Commands;
class MoviePlayerController;

/// The viewer's panels, as commands named "viewer.…": each on and off, all at once, the two saved layouts.
/// The drawing tools' and the grading's own toggles are made with the commands that belong to them.
void addPanelCommands(Commands& commands, MoviePlayerController& controller);
void fillPanelMenu(QMenu* menu, const Commands& commands);

} // namespace daylark
