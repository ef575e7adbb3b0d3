#include "app/arrangement/MovieFilter.h"
#include "commands/library/LibraryCommands.h"
#include "model/StatusCodes.h"

#include <QCoreApplication>

namespace daylark {

namespace {

struct LibraryMenus {
    Q_DECLARE_TR_FUNCTIONS(LibraryMenus)
public:
    static Menu flags();
    static Menu thumbnails();
    static Menu filters();
    static Menu found();
    static Menu missing();
    static std::vector<Menu> bar();
    static Menu ofItems(bool onItem);
};

Menu LibraryMenus::flags() {
    Menu menu{tr("&Flag")};
    for (int tag = status::approved; tag <= status::skip; ++tag)
        menu.entries.push_back(libraryCommand::flag(tag));
    menu.entries.push_back(Menu::line);
    menu.entries.push_back(libraryCommand::flag(status::none));
    return menu;
}

Menu LibraryMenus::thumbnails() {
    Menu selected{tr("Recreate &Selected Thumbnails")}, all{tr("Recreate &All Thumbnails")};
    for (const char* frame : libraryCommand::thumbnailFrames) {
        selected.entries.push_back(libraryCommand::thumbnailsOfSelected(frame));
        all.entries.push_back(libraryCommand::thumbnailsOfAll(frame));
    }
    return {tr("&Thumbnails"), {"thumbnails.missing", selected, all}};
}

Menu LibraryMenus::found() {
    return {tr("F&ind"),
            {"find.show", "find.next", "find.previous", Menu::line, "find.copies", "find.instances"}};
}

Menu LibraryMenus::missing() {
    return {tr("&Missing Media"),
            {"relink.movie", "relink.selected", "relink.session", "relink.forced", Menu::line, "relink.automatic",
             "relink.now", "relink.root", Menu::line, "files.update", "files.checkSelected", "files.checkAll"}};
}

Menu LibraryMenus::filters() {
    Menu menu{tr("&Filter")};
    for (const MovieFilter::Choice& choice : MovieFilter::choices()) {
        menu.entries.push_back(libraryCommand::filter(QLatin1String(choice.id)));
        if (choice.shows) continue;
        menu.entries.push_back(Menu::line);
        for (int tag = status::approved; tag <= status::skip; ++tag)
            menu.entries.push_back(libraryCommand::filter(MovieFilter::withFlag(tag).id()));
        menu.entries.push_back(Menu::line);
    }
    return menu;
}

std::vector<Menu> LibraryMenus::bar() {
    return {
        {tr("&File"),
         {"session.newPlaylist", "session.newSmartlist", "session.newFolderlist", "session.newDivider",
          "session.newDatedDivider", Menu::line, "session.addMedia", "session.addFolder", "session.addBundle", Menu::line,
          "session.import", Menu{tr("Recent Sessio&ns"), {"session.clearRecent"}},
          "session.save", "session.saveAs", Menu::line,
          "notes.exportMovie", "notes.exportPlaylist", "manifest.export", Menu::line,
          "export.reviewed", "export.playlists", "export.movie", "export.movieFile", Menu::line,
          "gather.selected", "gather.playlists", Menu::line, "session.clear", Menu::line, "app.quit"}},
        {tr("&Edit"),
         {"edit.undo", "edit.redo", Menu::line, "edit.selectAll", Menu::line, "item.copyPath",
          "item.copyFilename", "item.copyLink", "playlists.copyLink", "session.pasteLink", Menu::line,
          "playlists.rename", "playlists.moveUp", "playlists.moveDown",
          "playlists.editRules", "playlists.combineAll", "playlists.combineSelected", "gather.playlist", Menu::line,
          "playlists.remove", "playlists.removeWithoutQuestion", "playlists.removeEmpty", Menu::line, "items.remove",
          "items.removeDuplicates", Menu::line, found(), Menu::line, "app.preferences"}},
        {tr("&Item"),
         {"item.open", Menu::line, flags(), thumbnails(), Menu::line, "item.moveUp", "item.moveDown",
          Menu::line, missing(), "gather.selectedFiles", "item.reveal"}},
        {tr("&View"),
         {"view.tiles", "view.list", Menu::line, "view.smallerTiles", "view.largerTiles", Menu::line,
          "view.playlistOrder", "view.removeSorting", "view.bakeOrder", Menu::line, "filter.search", filters(),
          Menu::line, "view.information"}},
        {tr("&Window"), {"window.minimise", Menu::line, "window.playlists", "window.items"}},
        {tr("&Help"), {"help.shortcuts", Menu::line, "help.about"}}};
}

Menu LibraryMenus::ofItems(bool onItem) {
    if (!onItem)
        return {{},
                {"session.addMedia", "session.addFolder", Menu::line, "edit.selectAll", "view.tiles", "view.list", Menu::line,
                 "notes.exportPlaylist"}};
    return {{},
            {"item.open", Menu::line, flags(), thumbnails(), Menu::line, "item.copyPath", "item.copyFilename",
             "item.copyLink", "item.reveal", "relink.movie", Menu::line, "item.moveUp", "item.moveDown", Menu::line,
             "notes.exportMovie", "gather.selectedFiles", "export.movie", Menu::line, "items.remove", "items.removeDuplicates"}};
}

} // namespace

std::vector<Menu> libraryMenus() {
    return LibraryMenus::bar();
}

Menu playlistMenu(bool onPlaylist) {
    if (onPlaylist)
        return {{},
                {"item.open", Menu::line, "playlists.rename", "playlists.editRules", "playlists.moveUp", "playlists.moveDown",
                 Menu::line, "playlists.copyLink", "session.addMedia", "notes.exportPlaylist", "manifest.export",
                 "gather.playlist", "export.playlists", "relink.selected", Menu::line,
                 "playlists.combineSelected", "playlists.remove", "playlists.removeWithoutQuestion", Menu::line,
                 "session.newPlaylist", "session.newSmartlist", "session.newFolderlist", "session.newDivider",
                 "session.newDatedDivider"}};
    return {{},
            {"session.newPlaylist", "session.newSmartlist", "session.newFolderlist", "session.newDivider",
             "session.newDatedDivider", Menu::line, "playlists.combineAll", "playlists.removeEmpty", Menu::line,
             "session.import", "session.clear"}};
}

Menu filterMenu() {
    return LibraryMenus::filters();
}

Menu itemMenu(bool onItem) {
    return LibraryMenus::ofItems(onItem);
}

} // namespace daylark
