#pragma once

class QMenu;

namespace daylark {

class Commands;
class MoviePlayerController;

/// What the viewer does with all bookmarks of a movie, as commands named "viewer.…": next and previous,
/// muting, copying, pasting, deleting. The titles tell the controller's actions apart.
void addBookmarkCommands(Commands& commands, MoviePlayerController& controller);
/// Adds them to the viewer's menu of bookmarks.
void fillBookmarkMenu(QMenu* menu, const Commands& commands);

namespace bookmarkCommand {
inline constexpr const char* muting[] = {"viewer.invertMutedBookmarks", "viewer.muteAllBookmarks",
                                         "viewer.unmuteAllBookmarks"};
inline constexpr const char* copying[] = {"viewer.copyUnmutedBookmarks", "viewer.copyAllBookmarks"};
} // namespace bookmarkCommand

} // namespace daylark
