#pragma once

#include "commands/CommandSet.h"
#include "viewer/MoviePlayerController.h"

namespace daylark {

/// What several families of the viewer's commands depend on.
struct ViewerConditions {
    const Condition& hasMovie;
    const Condition& isPlayable; ///< it is open, or being opened
    const Condition& hasBookmarks;
    const Condition& bookmarksReached; ///< it has some, and can be played
    const Condition& drawingPanelShown;
    const Condition& fullScreen;
};

// The families, each in a file of its own; only `bindViewerCommands` calls them.
void bindAudioCommands(CommandSet& commands, MoviePlayerController& controller, const ViewerConditions& when);
void bindBookmarkCommands(CommandSet& commands, MoviePlayerController& controller,
                          const ViewerConditions& when);
void bindDrawingCommands(CommandSet& commands, MoviePlayerController& controller,
                         const ViewerConditions& when);
void bindGradeCommands(CommandSet& commands, MoviePlayerController& controller, const ViewerConditions& when);
void bindColourCommands(CommandSet& commands, MoviePlayerController& controller, const ViewerConditions& when);
void bindGeometryCommands(CommandSet& commands, MoviePlayerController& controller,
                          const ViewerConditions& when);
void bindPanelCommands(CommandSet& commands, MoviePlayerController& controller, const ViewerConditions& when);

[[nodiscard]] Condition& whenPanelIsShown(CommandSet& commands, ViewerPanels& panels, ViewerPanel panel);
/// A preference that is on or off, as a command.
void bindSwitch(CommandSet& commands, const char* id, Preference<bool>& preference);

} // namespace daylark
