#pragma once

class QMenu;

namespace daylark {

class Commands;
class MoviePlayerController;

/// How large the picture and the window are, mirroring, mask, pixel aspect, as commands named "viewer.…".
/// Their titles tell the controller's actions apart, so they are not translated.
void addGeometryCommands(Commands& commands, MoviePlayerController& controller);
void fillPictureMenu(QMenu* menu, const Commands& commands); ///< zoom, mirroring, mask, pixel aspect
void fillWindowMenu(QMenu* menu, const Commands& commands);  ///< window sizes, constraint

} // namespace daylark
