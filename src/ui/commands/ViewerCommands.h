#pragma once

#include <QString>

#include <functional>

class QMenuBar;

namespace daylark {

class Commands;
class MoviePlayerController;

/// Everything that the viewer does by key, menu or button, as commands named "viewer.…": the transport, the
/// movies of the list, flags, bookmarks, what is shown. What they do is the controller's; only showing and
/// hiding is the window's.
struct ViewerWindowActions {
    std::function<void()> toggleFullScreen;
    std::function<bool()> isFullScreen;
    std::function<void()> leave; ///< Escape: a text field first, then full screen
    std::function<void()> close;
    std::function<void()> goToSelectedBookmark, deleteSelectedBookmark, editBookmarkText, loopBookmark,
        writeNotes;
    std::function<void()> showKeys;
    std::function<void(const QString& choice)> makeThumbnail;
};
void addViewerCommands(Commands& commands, MoviePlayerController& controller,
                       const ViewerWindowActions& window);
void buildViewerMenus(QMenuBar& menuBar, const Commands& commands);
/// The flags' names as the preferences call them now.
void renameFlagCommands(const Commands& commands, MoviePlayerController& controller);

} // namespace daylark
