#pragma once

#include "commands/CommandSet.h"
#include "commands/Menu.h"

#include <QString>

#include <functional>
#include <vector>

namespace daylark {

class MoviePlayerController;

/// What the viewer's commands ask of its window: only showing and hiding is the window's.
struct ViewerWindowActions {
    std::function<void()> toggleFullScreen;
    std::function<bool()> isFullScreen;
    std::function<void()> leave; ///< a text field first, then full screen
    std::function<void()> bringForward;
    std::function<void()> close;
    std::function<void()> goToSelectedBookmark, deleteSelectedBookmark, editBookmarkText, loopBookmark,
        writeNotes;
    std::function<void()> showKeys;
    std::function<void()> goToFrame; ///< asks which
    std::function<void(const QString& choice)> makeThumbnail;
};

/// How the window stands; it says when that has changed.
struct ViewerWindowState {
    Condition& fullScreen;
};

/// Makes every command of the viewer's table work: the transport, the movies of the list, flags, range,
/// bookmarks, drawing, grade, picture, panels. What they do is the controller's. Titles that its actions are
/// told apart by are passed on untranslated.
ViewerWindowState bindViewerCommands(CommandSet& commands, MoviePlayerController& controller,
                                     const ViewerWindowActions& window);

[[nodiscard]] std::vector<Menu> viewerMenus();

namespace viewerCommand {
inline constexpr const char* thumbnailChoices[] = {"Set Thumbnail Image", "First Frame", "Second Frame",
                                                   "Middle Frame", "Last Frame"};
inline constexpr const char* muting[] = {"viewer.invertMutedBookmarks", "viewer.muteAllBookmarks",
                                         "viewer.unmuteAllBookmarks"};
inline constexpr const char* copying[] = {"viewer.copyUnmutedBookmarks", "viewer.copyAllBookmarks"};
inline constexpr const char* zooms[] = {"viewer.fit", "viewer.actualPixels", "viewer.zoomIn",
                                        "viewer.zoomOut"};
inline constexpr const char* mirrors[] = {"viewer.flop", "viewer.flip"};
struct PixelAspect {
    const char* title;
    float value;
};
inline constexpr PixelAspect pixelAspects[] = {
    {"1:1", 1.0f}, {"PAL 4:3 (1.067)", 1.067f}, {"PAL 16:9 (1.422)", 1.422f}, {"2:1", 2.0f}};

[[nodiscard]] QString flag(int tag);                 ///< "viewer.flag.904"
[[nodiscard]] QString thumbnail(const char* choice); ///< "viewer.thumbnail.FirstFrame"
[[nodiscard]] QString maskRatio(const char* ratio);  ///< "viewer.mask.1.85"
[[nodiscard]] QString pixelAspect(const char* title);
} // namespace viewerCommand

} // namespace daylark
