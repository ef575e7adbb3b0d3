#include "ui/commands/BookmarkCommands.h"

#include "ui/commands/Commands.h"
#include "viewer/MoviePlayerController.h"

#include <QAction>
#include <QCoreApplication>
#include <QMenu>

#include <algorithm>

namespace daylark {

namespace {

QString bookmarkText(const char* text) {
    return QCoreApplication::translate("BookmarkCommands", text);
}

} // namespace

void addBookmarkCommands(Commands& commands, MoviePlayerController& controller) {
    ViewerBookmarks& bookmarks = controller.bookmarks();
    const auto hasMovie = [&controller] { return controller.currentMovie() != nullptr; };
    const auto hasBookmarks = [&controller] {
        const auto movie = controller.currentMovie();
        return movie && !movie->bookmarkStore.empty();
    };
    const auto add = [&commands](const char* id, const QString& text, const char* icon, QKeySequence key,
                                 std::function<void()> run, std::function<bool()> enabled) {
        commands.add({QLatin1String(id), text, QLatin1String(icon), key, std::move(run), std::move(enabled)});
    };
    add(
        "viewer.nextBookmark", bookmarkText(QT_TRANSLATE_NOOP("BookmarkCommands", "&Next Bookmark")),
        "chevronRight", Qt::CTRL | Qt::Key_Right, [&] { bookmarks.goToNextBookmark(); }, hasBookmarks);
    add(
        "viewer.previousBookmark", bookmarkText(QT_TRANSLATE_NOOP("BookmarkCommands", "&Previous Bookmark")),
        "chevronLeft", Qt::CTRL | Qt::Key_Left, [&] { bookmarks.goToPreviousBookmark(); }, hasBookmarks);
    // Titles are what the actions are told apart by, so they are not translated.
    const QString muteTitles[] = {QStringLiteral("Invert Muted Bookmarks"),
                                  QStringLiteral("Mute All Bookmarks"),
                                  QStringLiteral("Unmute All Bookmarks")};
    for (size_t at = 0; at < std::size(muteTitles); ++at)
        add(
            bookmarkCommand::muting[at], muteTitles[at], at == 2 ? "unmute" : "mute", {},
            [&bookmarks, title = muteTitles[at]] {
                bookmarks.setMuteValues({title, 0});
            },
            hasBookmarks);
    const QString copyTitles[] = {QStringLiteral("Copy Unmuted Bookmarks"),
                                  QStringLiteral("Copy All Bookmarks")};
    for (size_t at = 0; at < std::size(copyTitles); ++at)
        add(
            bookmarkCommand::copying[at], copyTitles[at], "copy", {},
            [&bookmarks, title = copyTitles[at]] {
                bookmarks.copySelectedBookmarks({title, 0});
            },
            hasBookmarks);
    add(
        "viewer.pasteBookmarks", bookmarkText(QT_TRANSLATE_NOOP("BookmarkCommands", "Paste &Bookmarks")),
        "paste", {}, [&] { bookmarks.pasteCopiedBookmarks(); },
        [&bookmarks, hasMovie] { return hasMovie() && !bookmarks.copiedBookmarks().empty(); });
    add(
        "viewer.deleteActiveBookmarks",
        bookmarkText(QT_TRANSLATE_NOOP("BookmarkCommands", "Delete A&ctive Bookmarks")), "remove", {},
        [&] { bookmarks.deleteActiveBookmarks(); },
        [&bookmarks] { return !bookmarks.activeBookmarks().empty(); });
    add(
        "viewer.deleteAllBookmarks",
        bookmarkText(QT_TRANSLATE_NOOP("BookmarkCommands", "Delete A&ll Bookmarks…")), "trash", {},
        [&] { bookmarks.deleteAllBookmarks(); }, hasBookmarks);
}

void fillBookmarkMenu(QMenu* menu, const Commands& commands) {
    const auto addActions = [&commands](QMenu* target, std::initializer_list<const char*> ids) {
        for (const char* id : ids)
            target->addAction(commands.action(QLatin1String(id)));
    };
    addActions(menu, {"viewer.previousBookmark", "viewer.nextBookmark"});
    menu->addSeparator();
    for (const char* id : bookmarkCommand::muting)
        addActions(menu, {id});
    menu->addSeparator();
    for (const char* id : bookmarkCommand::copying)
        addActions(menu, {id});
    addActions(menu, {"viewer.pasteBookmarks"});
    menu->addSeparator();
    addActions(menu, {"viewer.deleteActiveBookmarks", "viewer.deleteAllBookmarks"});
}

} // namespace daylark
