#pragma once

class QMenu;
class QMenuBar;

namespace daylark {

class Commands;
class LibraryWindow;
class PlaylistController;

/// Every command of the library window with its title, key and state, and the menus made of them. Titles that
/// other parts tell actions apart by are passed on without their mnemonics. Interface thread.

void addLibraryCommands(Commands& commands, PlaylistController& controller, LibraryWindow& window);
/// Once the lists exist: keys that mean a command only while a list has the focus, so that typing in a field
/// stays typing.
void bindListKeys(const Commands& commands, LibraryWindow& window);
void refreshFlagTitles(const Commands& commands,
                       PlaylistController& controller); ///< as the user calls the statuses

void fillLibraryMenuBar(QMenuBar& bar, const Commands& commands);
void fillPlaylistMenu(QMenu& menu, const Commands& commands, bool onPlaylist);
void fillItemMenu(QMenu& menu, const Commands& commands, bool onItem);

} // namespace daylark
