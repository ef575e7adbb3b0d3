#include "app/arrangement/MovieFilter.h"
#include "commands/Command.h"
#include "commands/CommandId.h"
#include "commands/library/LibraryCommands.h"
#include "model/StatusCodes.h"

#include <QCoreApplication>

namespace daylark {

namespace {

struct LibraryTable {
    Q_DECLARE_TR_FUNCTIONS(LibraryTable)
public:
    static void addSession(CommandTable& table);
    static void addEdit(CommandTable& table);
    static void addItems(CommandTable& table);
    static void addRelinking(CommandTable& table);
    static void addMediaOut(CommandTable& table);
    static void addView(CommandTable& table);
    static void addFilters(CommandTable& table);
    static CommandTable make();
};

constexpr auto repeats = Command::repeats;

void LibraryTable::addSession(CommandTable& table) {
    const CommandTable session{
        {id("session.newPlaylist"), tr("New &Playlist"), id("addPlaylist"), {Qt::CTRL | Qt::Key_N}},
        {id("session.newSmartlist"),
         tr("New &Smartlist"),
         id("smartlist"),
         {Qt::CTRL | Qt::SHIFT | Qt::Key_N}},
        {id("session.newFolderlist"),
         tr("New &Folder List..."),
         id("folderlist"),
         {Qt::CTRL | Qt::ALT | Qt::Key_N}},
        {id("session.newDivider"), tr("New &Divider"), id("addDivider"), {Qt::CTRL | Qt::Key_D}},
        {id("session.newDatedDivider"), tr("New Da&ted Divider"), {}, {Qt::CTRL | Qt::SHIFT | Qt::Key_D}},
        {id("session.addMedia"), tr("&Add Media..."), id("add"), {Qt::CTRL | Qt::Key_O}},
        {id("session.addFolder"), tr("Add F&older..."), {}, {Qt::CTRL | Qt::ALT | Qt::Key_O}},
        {id("session.import"), tr("&Import Session"), id("open"), {Qt::CTRL | Qt::SHIFT | Qt::Key_O}},
        {id("session.save"), tr("&Save"), id("save"), {Qt::CTRL | Qt::Key_S}, tr("Save Session")},
        {id("session.saveAs"), tr("Save Session &As..."), {}, {Qt::CTRL | Qt::SHIFT | Qt::Key_S}},
        {id("notes.exportMovie"), tr("Export &Movie Notes..."), id("export"), {Qt::CTRL | Qt::Key_E}},
        {id("notes.exportPlaylist"), tr("&Export Playlist Notes..."), {}, {Qt::CTRL | Qt::SHIFT | Qt::Key_E}},
        {id("manifest.export"), tr("Export Playlist Mani&fest..."), {}, {Qt::CTRL | Qt::ALT | Qt::Key_E}},
        {id("session.clearRecent"), tr("&Clear Recent Sessions"), {}},
        {id("session.clear"), tr("&Clear Session"), {}},
        {id("app.quit"), tr("&Quit"), {}, {Qt::CTRL | Qt::Key_Q}}};
    table.insert(table.end(), session.begin(), session.end());
}

void LibraryTable::addEdit(CommandTable& table) {
    table.insert(table.end(), historyTable().begin(), historyTable().end());
    const CommandTable edit{
        {id("edit.selectAll"), tr("Select &All"), {}, {Qt::CTRL | Qt::Key_A}},
        {id("item.copyPath"), tr("Copy &Path"), id("copy"), {Qt::CTRL | Qt::Key_C}},
        {id("item.copyFilename"), tr("Copy &Filename"), {}, {Qt::CTRL | Qt::SHIFT | Qt::Key_C}},
        {id("item.copyLink"), tr("Copy Movie &Link"), id("link"), {Qt::CTRL | Qt::ALT | Qt::Key_C}},
        {id("playlists.copyLink"), tr("Copy Playlist Lin&k"), {}, {Qt::CTRL | Qt::ALT | Qt::SHIFT | Qt::Key_C}},
        {id("session.pasteLink"), tr("Paste Link"), id("paste"), {Qt::CTRL | Qt::Key_V}, tr("Paste Link: Add Its Media")},
        {id("playlists.rename"), tr("Re&name Playlist"), {}, {Qt::Key_F2}},
        {id("playlists.moveUp"),
         tr("Move Playlist Up"),
         id("chevronUp"),
         {Qt::CTRL | Qt::ALT | Qt::Key_Up},
         {},
         repeats},
        {id("playlists.moveDown"),
         tr("Move Playlist Down"),
         id("chevronDown"),
         {Qt::CTRL | Qt::ALT | Qt::Key_Down},
         {},
         repeats},
        {id("playlists.editRules"), tr("Smartlist R&ules..."), {}, {Qt::CTRL | Qt::ALT | Qt::Key_R}},
        {id("playlists.combineAll"),
         tr("Combine All Playlists"),
         {},
         {Qt::CTRL | Qt::ALT | Qt::Key_A}},
        {id("playlists.combineSelected"),
         tr("Combine Selected Playlists"),
         {},
         {Qt::CTRL | Qt::ALT | Qt::Key_S}},
        {id("playlists.removeEmpty"),
         tr("Remove Empty Playlists"),
         {},
         {Qt::CTRL | Qt::SHIFT | Qt::Key_Delete}},
        {id("playlists.removeWithoutQuestion"),
         tr("Remove Playlist Without Question"),
         {},
         {Qt::SHIFT | Qt::Key_Delete},
         {},
         Command::none,
         KeyScope::playlists},
        {id("playlists.remove"),
         tr("Remove Pla&ylist"),
         id("remove"),
         {Qt::Key_Delete, Qt::Key_Backspace},
         {},
         Command::none,
         KeyScope::playlists},
        {id("items.remove"),
         tr("&Remove Items"),
         id("trash"),
         {Qt::Key_Delete, Qt::Key_Backspace},
         {},
         Command::none,
         KeyScope::items},
        {id("items.removeDuplicates"),
         tr("Remove Dup&licates..."),
         {},
         {Qt::CTRL | Qt::ALT | Qt::Key_U}},
        {id("find.show"), tr("&Find..."), id("find"), {Qt::CTRL | Qt::Key_F}, tr("Find Items")},
        {id("find.next"), tr("Find &Next"), id("chevronDown"), {Qt::Key_F3}},
        {id("find.previous"), tr("Find Pre&vious"), id("chevronUp"), {Qt::SHIFT | Qt::Key_F3}},
        {id("find.copies"),
         tr("New Playlist With &Copies of Found Items"),
         id("addPlaylist"),
         {Qt::CTRL | Qt::Key_G}},
        {id("find.instances"),
         tr("New Playlist With &Instances of Found Items"),
         {},
         {Qt::CTRL | Qt::SHIFT | Qt::Key_G}},
        {id("app.preferences"), tr("Pre&ferences..."), id("settings"), {Qt::CTRL | Qt::Key_Comma}}};
    table.insert(table.end(), edit.begin(), edit.end());
}

void LibraryTable::addItems(CommandTable& table) {
    table.push_back({id("item.open"),
                     tr("&Open in Viewer"),
                     id("viewer"),
                     {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space},
                     {},
                     Command::none,
                     KeyScope::lists});
    for (int tag = status::none; tag <= status::skip; ++tag) {
        const QString code = QString::number(tag);
        const bool none = tag == status::none;
        table.push_back({libraryCommand::flag(tag),
                         none ? tr("No Flag") : QString(),
                         none ? id("flag_None") : status::flagImageName(code),
                         {Qt::CTRL | Qt::Key(Qt::Key_0 + tag - status::none)},
                         none ? tr("No Flag") : tr("Flag: %1"),
                         Command::none,
                         KeyScope::library,
                         none ? QString() : code});
    }
    table.push_back({id("thumbnails.missing"), tr("Recreate &Missing Thumbnails"), id("image")});
    for (const char* frame : libraryCommand::thumbnailFrames) {
        const QString choice = QCoreApplication::translate("Words", frame);
        table.push_back({libraryCommand::thumbnailsOfSelected(frame),
                         choice,
                         {},
                         {},
                         tr("Recreate the thumbnails of the selected items: %1").arg(choice)});
        table.push_back({libraryCommand::thumbnailsOfAll(frame),
                         choice,
                         {},
                         {},
                         tr("Recreate the thumbnails of all items: %1").arg(choice)});
    }
    const CommandTable places{
        {id("item.moveUp"),
         tr("Move &Up"),
         id("chevronUp"),
         {Qt::ALT | Qt::Key_Up},
         tr("Move Items Up"),
         repeats},
        {id("item.moveDown"),
         tr("Move &Down"),
         id("chevronDown"),
         {Qt::ALT | Qt::Key_Down},
         tr("Move Items Down"),
         repeats},
        {id("item.reveal"), tr("Re&veal in File Browser"), id("reveal"), {Qt::CTRL | Qt::Key_R}}};
    table.insert(table.end(), places.begin(), places.end());
}

void LibraryTable::addRelinking(CommandTable& table) {
    const CommandTable relinking{
        {id("relink.movie"), tr("&Link Video File..."), id("link"), {Qt::CTRL | Qt::ALT | Qt::Key_L}},
        {id("relink.selected"), tr("Find Missing Media of Selected &Playlists..."), {}, {Qt::CTRL | Qt::ALT | Qt::Key_M}},
        {id("relink.session"), tr("Find Missing Media of &Session..."), {}, {Qt::CTRL | Qt::ALT | Qt::SHIFT | Qt::Key_M}},
        {id("relink.forced"), tr("&Force Relink of Selected Playlists..."), {}},
        {id("relink.automatic"), tr("Search Automaticall&y"), {}, {}, tr("Search Automatically for Missing Media")},
        {id("relink.now"), tr("Search &Now"), {}, {}, tr("Search Now for Missing Media")},
        {id("relink.root"), tr("Choose Folder of Automatic Sear&ches..."), id("folderlist")},
        {id("files.update"), tr("&Update File Paths"), {}, {Qt::Key_F5}},
        {id("files.checkSelected"), tr("&Mark Missing Files of Playlist"), {}},
        {id("files.checkAll"), tr("Mark Missing Files of &All Playlists"), {}}};
    table.insert(table.end(), relinking.begin(), relinking.end());
}

void LibraryTable::addMediaOut(CommandTable& table) {
    const CommandTable out{
        {id("gather.selected"), tr("&Gather Selected Media..."), id("media"), {Qt::CTRL | Qt::ALT | Qt::SHIFT | Qt::Key_G}},
        {id("gather.selectedFiles"), tr("&Gather Selected Media Files..."), {}},
        {id("gather.playlists"), tr("Gather Media In Selected Play&lists..."), {}, {Qt::CTRL | Qt::ALT | Qt::Key_G}},
        {id("gather.playlist"), tr("Gat&her Media In Playlist..."), {}},
        {id("export.reviewed"), tr("Export Session As &Reviewed..."), {}},
        {id("export.playlists"), tr("Export Selected Playlists As Sessio&n..."), {}},
        {id("export.movie"), tr("Export Da&ylark Movie..."), {}, {Qt::CTRL | Qt::ALT | Qt::Key_B}},
        {id("export.movieFile"), tr("Export Daylar&k Movie File..."), {}},
        {id("session.addBundle"), tr("Add Daylark Mo&vie..."), {}, {Qt::CTRL | Qt::ALT | Qt::Key_D}}};
    table.insert(table.end(), out.begin(), out.end());
}

void LibraryTable::addView(CommandTable& table) {
    const CommandTable view{
        {id("view.tiles"), tr("As &Tiles"), id("tiles"), {Qt::CTRL | Qt::Key_T}, tr("Items as Tiles")},
        {id("view.list"), tr("As &List"), id("list"), {Qt::CTRL | Qt::Key_L}, tr("Items as a List")},
        {id("view.smallerTiles"),
         tr("&Smaller Tiles"),
         id("tileSmall"),
         {Qt::CTRL | Qt::Key_Minus},
         {},
         repeats},
        {id("view.largerTiles"),
         tr("&Larger Tiles"),
         id("tileLarge"),
         {Qt::CTRL | Qt::Key_Plus, Qt::CTRL | Qt::Key_Equal},
         {},
         repeats},
        {id("view.playlistOrder"), tr("In Playlist &Order"), {}, {}, tr("Items in Playlist Order")},
        {id("view.removeSorting"),
         tr("&Remove Sorting"),
         {},
         {Qt::CTRL | Qt::SHIFT | Qt::Key_R},
         tr("Items in the Order of the List")},
        {id("view.bakeOrder"),
         tr("&Bake Current Sort Order"),
         {},
         {Qt::CTRL | Qt::SHIFT | Qt::Key_B}},
        {id("filter.search"), tr("Search &Items"), {}, {Qt::CTRL | Qt::Key_K}, tr("Search the Items' Paths")},
        {id("view.information"), tr("Item &Information"), id("info"), {Qt::CTRL | Qt::Key_I}},
        {id("window.minimise"), tr("&Minimise"), {}, {Qt::CTRL | Qt::Key_M}, tr("Minimise Window")},
        {id("window.playlists"), tr("Go to &Playlists"), {}, {Qt::CTRL | Qt::Key_P}},
        {id("window.items"), tr("Go to &Items"), {}, {Qt::CTRL | Qt::Key_J}},
        {id("help.shortcuts"), tr("&Keys..."), id("help"), {Qt::Key_F1}},
        {id("help.about"), tr("&About Daylark"), id("daylark")}};
    table.insert(table.end(), view.begin(), view.end());
}

/// The filter's menu: the flags behind "Show All", then the others.
void LibraryTable::addFilters(CommandTable& table) {
    for (const MovieFilter::Choice& choice : MovieFilter::choices()) {
        const bool all = !choice.shows;
        const QString title = QCoreApplication::translate("Words", choice.title);
        Command command{libraryCommand::filter(QLatin1String(choice.id)), title, {}};
        command.name = all ? tr("Filter: Show All") : tr("Filter: %1").arg(title);
        if (all) command.keys = {Qt::CTRL | Qt::SHIFT | Qt::Key_A};
        table.push_back(std::move(command));
        for (int tag = status::approved; all && tag <= status::skip; ++tag) {
            const QString code = QString::number(tag);
            table.push_back({libraryCommand::filter(MovieFilter::withFlag(tag).id()), QString(),
                             status::flagImageName(code), {}, tr("Filter: Flag %1"), Command::none,
                             KeyScope::library, code});
        }
    }
}

CommandTable LibraryTable::make() {
    CommandTable table;
    addSession(table);
    addEdit(table);
    addItems(table);
    addRelinking(table);
    addMediaOut(table);
    addView(table);
    addFilters(table);
    return table;
}

} // namespace

const CommandTable& libraryTable() {
    static const CommandTable table = LibraryTable::make();
    return table;
}

} // namespace daylark
