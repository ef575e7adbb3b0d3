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

std::vector<Menu> LibraryMenus::bar() {
    return {
        {tr("&File"),
         {"session.newPlaylist", "session.newDivider", "session.newDatedDivider", Menu::line,
          "session.addMedia", Menu::line, "session.import", "session.save", "session.saveAs", Menu::line,
          "notes.exportMovie", "notes.exportPlaylist", Menu::line, "session.clear", Menu::line, "app.quit"}},
        {tr("&Edit"),
         {"edit.undo", "edit.redo", Menu::line, "edit.selectAll", Menu::line, "item.copyPath",
          "item.copyFilename", Menu::line, "playlists.rename", "playlists.moveUp", "playlists.moveDown",
          "playlists.remove", Menu::line, "items.remove", Menu::line, "app.preferences"}},
        {tr("&Item"),
         {"item.open", Menu::line, flags(), thumbnails(), Menu::line, "item.moveUp", "item.moveDown",
          Menu::line, "item.reveal"}},
        {tr("&View"),
         {"view.tiles", "view.list", Menu::line, "view.smallerTiles", "view.largerTiles", Menu::line,
          "view.playlistOrder", Menu::line, "view.information"}},
        {tr("&Window"), {"window.minimise", Menu::line, "window.playlists", "window.items"}},
        {tr("&Help"), {"help.shortcuts", Menu::line, "help.about"}}};
}

Menu LibraryMenus::ofItems(bool onItem) {
    if (!onItem)
        return {{},
                {"session.addMedia", Menu::line, "edit.selectAll", "view.tiles", "view.list", Menu::line,
                 "notes.exportPlaylist"}};
    return {{},
            {"item.open", Menu::line, flags(), thumbnails(), Menu::line, "item.copyPath", "item.copyFilename",
             "item.reveal", Menu::line, "item.moveUp", "item.moveDown", Menu::line, "notes.exportMovie",
             Menu::line, "items.remove"}};
}

} // namespace

std::vector<Menu> libraryMenus() {
    return LibraryMenus::bar();
}

Menu playlistMenu(bool onPlaylist) {
    if (onPlaylist)
        return {{},
                {"item.open", Menu::line, "playlists.rename", "playlists.moveUp", "playlists.moveDown",
                 Menu::line, "session.addMedia", "notes.exportPlaylist", Menu::line, "playlists.remove",
                 Menu::line, "session.newPlaylist", "session.newDivider", "session.newDatedDivider"}};
    return {{},
            {"session.newPlaylist", "session.newDivider", "session.newDatedDivider", Menu::line,
             "session.import", "session.clear"}};
}

Menu itemMenu(bool onItem) {
    return LibraryMenus::ofItems(onItem);
}

} // namespace daylark
