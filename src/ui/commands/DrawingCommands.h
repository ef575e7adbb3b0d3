#pragma once

class QMenu;

namespace daylark {

class Commands;
class MoviePlayerController;

/// Drawing, as commands named "viewer.…": the tools' panel, taking strokes back and away.
void addDrawingCommands(Commands& commands, MoviePlayerController& controller);
void fillDrawingMenu(QMenu* menu, const Commands& commands);

} // namespace daylark
