#pragma once

#include "commands/CommandSet.h"
#include "commands/Menu.h"

#include <QString>

#include <functional>

namespace daylark {

class PlaylistController;

/// What the library's commands ask of its window.
struct LibraryWindowActions {
    std::function<void()> selectAll;
    std::function<void()> renamePlaylist;
    std::function<void(bool tiles)> showTiles;
    std::function<void(int percent)> enlargeTiles; ///< by so much; below zero: smaller
    std::function<void()> toggleInformation;
    std::function<void()> showPlaylistOrder;
    std::function<void()> goToPlaylists, goToItems;
    std::function<void()> searchItems; ///< into the field of the filter
    std::function<void()> editRules;   ///< of the selected smartlist
    std::function<void()> minimise, close;
    std::function<void()> showPreferences, showKeys, showAbout;
    std::function<bool()> tilesShown, informationShown;
};

/// How the window looks; it says when that has changed.
struct LibraryWindowState {
    Condition& tilesShown;
    Condition& informationShown;
};

/// Makes every command of the library's table work. Titles that other parts tell actions apart by are passed
/// on without their mnemonics.
LibraryWindowState bindLibraryCommands(CommandSet& commands, PlaylistController& controller,
                                       const LibraryWindowActions& window);

[[nodiscard]] std::vector<Menu> libraryMenus();
[[nodiscard]] Menu playlistMenu(bool onPlaylist); ///< the context menu of the playlists
[[nodiscard]] Menu itemMenu(bool onItem);         ///< and of the items
[[nodiscard]] Menu filterMenu();                  ///< what the filter button offers

namespace libraryCommand {
/// The frame choices, whose words the thumbnail makers know.
inline constexpr const char* thumbnailFrames[] = {"First Frame", "Second Frame", "Middle Frame",
                                                  "Last Frame"};
[[nodiscard]] QString thumbnailsOfSelected(const char* frame);
[[nodiscard]] QString thumbnailsOfAll(const char* frame);
[[nodiscard]] QString flag(int tag); ///< "item.flag.904"
[[nodiscard]] QString filter(const QString& choice); ///< "filter.withNotes"
} // namespace libraryCommand

} // namespace daylark
