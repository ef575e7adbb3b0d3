#include "commands/viewer/ViewerCommands.h"
#include "commands/viewer/ViewerParts.h"

namespace daylark {

void bindBookmarkCommands(CommandSet& commands, MoviePlayerController& controller,
                          const ViewerConditions& when) {
    ViewerBookmarks& bookmarks = controller.bookmarks();
    commands.bind(
        QStringLiteral("viewer.addBookmark"), [&bookmarks] { bookmarks.addBookmark(); }, &when.isPlayable);
    const PlaybackRange& range = controller.range();
    commands.bind(
        QStringLiteral("viewer.bookmarkFromRange"), [&bookmarks] { bookmarks.addBookmarkFromRange(); },
        &commands.when([&range] { return range.isLooping(); }).follows(range, &PlaybackRange::changed));
    const auto bind = [&](const char* id, std::function<void()> run) {
        commands.bind(QLatin1String(id), std::move(run), &when.hasBookmarks);
    };
    commands.bind(
        QStringLiteral("viewer.nextBookmark"), [&bookmarks] { bookmarks.goToNextBookmark(); }, &when.bookmarksReached);
    commands.bind(
        QStringLiteral("viewer.previousBookmark"), [&bookmarks] { bookmarks.goToPreviousBookmark(); }, &when.bookmarksReached);
    // The actions are told apart by their titles.
    for (const char* id : viewerCommand::muting)
        bind(id, [&bookmarks, title = commands.command(QLatin1String(id)).text] {
            bookmarks.setMuteValues({title, 0});
        });
    for (const char* id : viewerCommand::copying)
        bind(id, [&bookmarks, title = commands.command(QLatin1String(id)).text] {
            bookmarks.copySelectedBookmarks({title, 0});
        });
    bind("viewer.deleteAllBookmarks", [&bookmarks] { bookmarks.deleteAllBookmarks(); });
    const auto hasCopies = [&controller, &bookmarks] {
        return controller.currentMovie() && !bookmarks.copiedBookmarks().empty();
    };
    commands.bind(
        QStringLiteral("viewer.pasteBookmarks"), [&bookmarks] { bookmarks.pasteCopiedBookmarks(); },
        &commands.when(hasCopies)
             .follows(bookmarks, &ViewerBookmarks::bookmarksCopied)
             .follows(when.hasMovie, &Condition::changed));
    commands.bind(
        QStringLiteral("viewer.deleteActiveBookmarks"), [&bookmarks] { bookmarks.deleteActiveBookmarks(); },
        &commands.when([&bookmarks] { return !bookmarks.activeBookmarks().empty(); })
             .follows(bookmarks, &ViewerBookmarks::activeBookmarksChanged));
}

} // namespace daylark
