#include "ui/commands/LibraryCommands.h"

#include "app/PlaylistController.h"
#include "model/StatusCodes.h"
#include "preferences/Preferences.h"
#include "ui/commands/Commands.h"
#include "ui/library/ItemsPane.h"
#include "ui/library/LibraryWindow.h"
#include "ui/library/PlaylistsPane.h"

#include <QAction>
#include <QListView>
#include <QMenu>
#include <QMenuBar>
#include <QTableView>

#include <vector>

namespace daylark {

namespace {

QString commandText(const char* text) {
    return QString::fromLatin1(text);
}

using Predicate = std::function<bool()>;

Predicate whenItemsSelected(PlaylistController& controller) {
    return [&controller] { return !controller.library().selectedMovieRows().empty(); };
}

Predicate whenItemsShown(PlaylistController& controller) {
    return [&controller] { return !controller.library().arrangedMovies().empty(); };
}

Predicate whenPlaylistSelected(PlaylistController& controller) {
    return [&controller] { return !controller.library().selectedPlaylistRows().empty(); };
}

/// The frame choices, whose words the thumbnail makers know.
const char* const frameChoices[] = {"First Frame", "Second Frame", "Middle Frame", "Last Frame"};

QString thumbnailCommand(const char* scope, const char* frame) {
    return QStringLiteral("thumbnails.%1.%2")
        .arg(commandText(scope), commandText(frame).remove(QLatin1Char(' ')));
}

QString flagCommand(const QString& code) {
    return QStringLiteral("item.flag.%1").arg(code);
}

QStringList flagCodes() {
    return QStringList{QString::number(status::none)} + status::codes();
}

QKeySequence controlKey(Qt::Key key, bool shift = false) {
    return shift ? QKeySequence(Qt::CTRL | Qt::SHIFT | key) : QKeySequence(Qt::CTRL | key);
}

/// Moves the selected items one place up or down in the playlist's own order.
void moveSelectedItems(PlaylistController& controller, bool down) {
    const Library::Rows rows = controller.library().selectedMovieRows();
    const qsizetype count = qsizetype(controller.library().arrangedMovies().size());
    if (rows.empty() || (down ? rows.back() + 1 >= count : rows.front() == 0)) return;
    controller.playlistEditing().moveMovies(rows, down ? rows.back() + 2 : rows.front() - 1);
}

void moveSelectedPlaylists(PlaylistController& controller, bool down) {
    Library& library = controller.library();
    const Library::Rows rows = library.selectedPlaylistRows();
    const qsizetype count = qsizetype(library.playlists().size());
    if (rows.empty() || (down ? rows.back() + 1 >= count : rows.front() == 0)) return;
    library.movePlaylists(rows, down ? rows.back() + 2 : rows.front() - 1);
}

void addSessionCommands(Commands& commands, PlaylistController& c, LibraryWindow& window) {
    const auto t = commandText;
    commands.add({t("session.newPlaylist"), t("New &Playlist"), t("addPlaylist"), controlKey(Qt::Key_N),
                  [&c] { c.playlistEditing().addEmptyPlaylist(); }});
    commands.add({t("session.newDivider"), t("New &Divider"), t("addDivider"), controlKey(Qt::Key_D),
                  [&c] { c.playlistEditing().addDivider(); }});
    commands.add(
        {t("session.newDatedDivider"), t("New Da&ted Divider"), {}, controlKey(Qt::Key_D, true), [&c] {
             c.playlistEditing().addDatedDivider();
         }});
    commands.add({t("session.addMedia"), t("&Add Media..."), t("add"), controlKey(Qt::Key_O),
                  [&c] { c.mediaAdding().addMediaFromOpenDialog(); },
                  [&c] { return c.library().selectedPlaylistRows().size() <= 1; }});
    commands.add({t("session.import"), t("&Import Session"), t("open"), controlKey(Qt::Key_O, true),
                  [&c] { c.sessionFiles().importSession(); }});
    commands.add({t("session.save"), t("&Save"), t("save"), controlKey(Qt::Key_S),
                  [&c] { c.sessionFiles().saveSession(); }});
    commands.add({t("session.saveAs"), t("Save Session &As..."), {}, controlKey(Qt::Key_S, true), [&c] {
                      c.sessionFiles().saveSessionAs();
                  }});
    commands.add(
        {t("notes.exportMovie"), t("Export &Movie Notes..."), t("export"), controlKey(Qt::Key_E), [&c] {
             c.notesExport().exportNotes({QStringLiteral("Export Movie Notes..."), 0});
         }});
    commands.add(
        {t("notes.exportPlaylist"), t("&Export Playlist Notes..."), {}, controlKey(Qt::Key_E, true), [&c] {
             c.notesExport().exportNotes({QStringLiteral("Export Playlist Notes..."), 0});
         }});
    commands.add({t("session.clear"), t("&Clear Session"), {}, {}, [&c] {
                      c.playlistEditing().removeAllPlaylists(true);
                  }});
    commands.add({t("app.quit"), t("&Quit"), {}, controlKey(Qt::Key_Q), [&window] { window.close(); }});
}

void addEditCommands(Commands& commands, PlaylistController& c, LibraryWindow& window) {
    const auto t = commandText;
    commands.add({t("edit.selectAll"), t("Select &All"), {}, controlKey(Qt::Key_A), [&window] {
                      if (window.playlistsPane().table()->hasFocus())
                          window.playlistsPane().table()->selectAll();
                      else
                          window.itemsPane().activeView()->selectAll();
                  }});
    commands.add({t("item.copyPath"), t("Copy &Path"), t("copy"), controlKey(Qt::Key_C),
                  [&c] { c.copyPathsOfSelected(); }, whenItemsSelected(c)});
    commands.add({t("item.copyFilename"),
                  t("Copy &Filename"),
                  {},
                  controlKey(Qt::Key_C, true),
                  [&c] { c.copyFilenamesOfSelected(); },
                  whenItemsSelected(c)});
    commands.add({t("playlists.rename"),
                  t("Re&name Playlist"),
                  {},
                  Qt::Key_F2,
                  [&window] { window.playlistsPane().editSelectedName(); },
                  whenPlaylistSelected(c)});
    commands.add({t("playlists.moveUp"), t("Move Playlist Up"), t("chevronUp"),
                  QKeySequence(Qt::CTRL | Qt::ALT | Qt::Key_Up), [&c] { moveSelectedPlaylists(c, false); },
                  whenPlaylistSelected(c)});
    commands.add({t("playlists.moveDown"), t("Move Playlist Down"), t("chevronDown"),
                  QKeySequence(Qt::CTRL | Qt::ALT | Qt::Key_Down), [&c] { moveSelectedPlaylists(c, true); },
                  whenPlaylistSelected(c)});
    commands.add({t("playlists.remove"), t("Remove Pla&ylist"), t("remove"), Qt::Key_Delete,
                  [&c] { c.playlistEditing().removeSelectedPlaylists(); }, whenPlaylistSelected(c)});
    commands.add({t("items.remove"), t("&Remove Items"), t("trash"), Qt::Key_Delete,
                  [&c] { c.playlistEditing().removeSelectedMovies(); }, whenItemsSelected(c)});
    commands.add({t("app.preferences"), t("Pre&ferences..."), t("settings"), controlKey(Qt::Key_Comma),
                  [&window] { window.showPreferences(); }});
}

void addItemCommands(Commands& commands, PlaylistController& c) {
    const auto t = commandText;
    commands.add({t("item.open"), t("&Open in Viewer"), t("viewer"), Qt::Key_Return,
                  [&c] { c.loadMovieWindow(); }, whenItemsShown(c)});
    commands.add({t("item.reveal"), t("Re&veal in File Browser"), t("reveal"), controlKey(Qt::Key_R),
                  [&c] { c.revealSelectedInFileBrowser(); }, whenItemsSelected(c)});
    commands.add({t("item.moveUp"), t("Move &Up"), t("chevronUp"), QKeySequence(Qt::ALT | Qt::Key_Up),
                  [&c] { moveSelectedItems(c, false); }, whenItemsSelected(c)});
    commands.add({t("item.moveDown"), t("Move &Down"), t("chevronDown"), QKeySequence(Qt::ALT | Qt::Key_Down),
                  [&c] { moveSelectedItems(c, true); }, whenItemsSelected(c)});
    const QStringList codes = flagCodes();
    for (qsizetype at = 0; at < codes.size(); ++at) {
        const QString& code = codes[at];
        const int tag = code.toInt();
        const QString image = tag == status::none ? t("flag_None") : status::flagImageName(code);
        commands.add({flagCommand(code), code, image, controlKey(Qt::Key(Qt::Key_0 + int(at))),
                      [&c, tag] {
                          c.setFlagOfSelectedMovies({QString(), tag});
                      },
                      whenItemsSelected(c)});
    }
    commands.add(
        {t("thumbnails.missing"), t("Recreate &Missing Thumbnails"), t("image"), {}, [&c] {
             c.thumbnails().createMissingThumbnails({QStringLiteral("Recreate Missing Thumbnails"), 0});
         }});
    for (const char* frame : frameChoices) {
        commands.add({thumbnailCommand("selected", frame),
                      t(frame),
                      {},
                      {},
                      [&c, frame] {
                          c.thumbnails().recreateSelectedThumbnails({commandText(frame), 0});
                      },
                      whenItemsSelected(c),
                      {},
                      QStringLiteral("Recreate the thumbnails of the selected items: %1").arg(t(frame))});
        commands.add({thumbnailCommand("all", frame),
                      t(frame),
                      {},
                      {},
                      [&c, frame] {
                          c.thumbnails().recreateAllThumbnails({commandText(frame), 0});
                      },
                      {},
                      {},
                      QStringLiteral("Recreate the thumbnails of all items: %1").arg(t(frame))});
    }
}

void addViewCommands(Commands& commands, PlaylistController& c, LibraryWindow& window) {
    const auto t = commandText;
    commands.add({t("view.tiles"),
                  t("As &Tiles"),
                  t("tiles"),
                  controlKey(Qt::Key_T),
                  [&window] { window.itemsPane().showTiles(true); },
                  {},
                  [&window] { return window.itemsPane().tilesShown(); }});
    commands.add({t("view.list"),
                  t("As &List"),
                  t("list"),
                  controlKey(Qt::Key_L),
                  [&window] { window.itemsPane().showTiles(false); },
                  {},
                  [&window] { return !window.itemsPane().tilesShown(); }});
    commands.add(
        {t("view.information"),
         t("Item &Information"),
         t("info"),
         controlKey(Qt::Key_I),
         [&window] { window.itemsPane().setInformationShown(!window.itemsPane().informationShown()); },
         {},
         [&window] { return window.itemsPane().informationShown(); }});
    const Predicate tilesShown = [&window] { return window.itemsPane().tilesShown(); };
    commands.add({t("view.smallerTiles"), t("&Smaller Tiles"), t("tileSmall"), controlKey(Qt::Key_Minus),
                  [&window] { window.itemsPane().setTileSize(window.itemsPane().tileSize() - 50); },
                  tilesShown});
    commands.add({t("view.largerTiles"), t("&Larger Tiles"), t("tileLarge"), controlKey(Qt::Key_Plus),
                  [&window] { window.itemsPane().setTileSize(window.itemsPane().tileSize() + 50); },
                  tilesShown});
    commands.add({t("view.playlistOrder"),
                  t("In Playlist &Order"),
                  {},
                  {},
                  [&c, &window] {
                      c.library().setSort(QStringLiteral("sortOrder"), true);
                      window.itemsPane().showSortIndicator();
                  },
                  {},
                  [&c] { return c.library().sortField() == QLatin1String("sortOrder"); }});
}

void addWindowCommands(Commands& commands, LibraryWindow& window) {
    const auto t = commandText;
    commands.add({t("window.minimise"), t("&Minimise"), {}, controlKey(Qt::Key_M), [&window] {
                      window.showMinimized();
                  }});
    commands.add({t("window.playlists"), t("Go to &Playlists"), {}, controlKey(Qt::Key_P), [&window] {
                      window.playlistsPane().table()->setFocus();
                  }});
    commands.add({t("window.items"), t("Go to &Items"), {}, controlKey(Qt::Key_J), [&window] {
                      window.itemsPane().activeView()->setFocus();
                  }});
    commands.add(
        {t("help.shortcuts"), t("&Shortcuts"), t("help"), Qt::Key_F1, [&window] { window.showShortcuts(); }});
    commands.add({t("help.about"), t("&About Daylark"), t("daylark"), {}, [&window] { window.showAbout(); }});
}

void addCommandsTo(QMenu& menu, const Commands& commands, std::initializer_list<const char*> ids) {
    for (const char* id : ids) {
        if (*id)
            menu.addAction(commands.action(commandText(id)));
        else
            menu.addSeparator();
    }
}

void addFlagMenu(QMenu& menu, const Commands& commands) {
    QMenu* flags = menu.addMenu(QStringLiteral("&Flag"));
    const QStringList codes = status::codes();
    for (const QString& code : codes)
        flags->addAction(commands.action(flagCommand(code)));
    flags->addSeparator();
    flags->addAction(commands.action(flagCommand(QString::number(status::none))));
}

void addThumbnailMenus(QMenu& menu, const Commands& commands) {
    QMenu* thumbnails = menu.addMenu(QStringLiteral("&Thumbnails"));
    thumbnails->addAction(commands.action(QStringLiteral("thumbnails.missing")));
    QMenu* selected = thumbnails->addMenu(QStringLiteral("Recreate &Selected Thumbnails"));
    QMenu* all = thumbnails->addMenu(QStringLiteral("Recreate &All Thumbnails"));
    for (const char* frame : frameChoices) {
        selected->addAction(commands.action(thumbnailCommand("selected", frame)));
        all->addAction(commands.action(thumbnailCommand("all", frame)));
    }
}

} // namespace

void addLibraryCommands(Commands& commands, PlaylistController& controller, LibraryWindow& window) {
    addSessionCommands(commands, controller, window);
    addEditCommands(commands, controller, window);
    addItemCommands(commands, controller);
    addViewCommands(commands, controller, window);
    addWindowCommands(commands, window);
    refreshFlagTitles(commands, controller);
}

void bindListKeys(const Commands& commands, LibraryWindow& window) {
    const auto bind = [&commands](const char* id, const QList<QKeySequence>& keys,
                                  std::initializer_list<QWidget*> views) {
        QAction* action = commands.action(commandText(id));
        action->setShortcuts(keys);
        action->setShortcutContext(Qt::WidgetShortcut);
        for (QWidget* view : views)
            view->addAction(action);
    };
    QWidget* const table = window.itemsPane().table();
    QWidget* const tiles = window.itemsPane().tiles();
    QWidget* const playlists = window.playlistsPane().table();
    bind("item.open",
         {QKeySequence(Qt::Key_Return), QKeySequence(Qt::Key_Enter), QKeySequence(Qt::Key_Space)},
         {table, tiles, playlists});
    bind("items.remove", {QKeySequence(Qt::Key_Delete), QKeySequence(Qt::Key_Backspace)}, {table, tiles});
    bind("playlists.remove", {QKeySequence(Qt::Key_Delete), QKeySequence(Qt::Key_Backspace)}, {playlists});
    commands.action(QStringLiteral("view.largerTiles"))
        ->setShortcuts({controlKey(Qt::Key_Plus), controlKey(Qt::Key_Equal)});
}

void refreshFlagTitles(const Commands& commands, PlaylistController& controller) {
    const Preferences& preferences = controller.preferences();
    const QStringList codes = flagCodes();
    for (const QString& code : codes) {
        QAction* action = commands.action(flagCommand(code));
        const QString name =
            code == QString::number(status::none) ? QStringLiteral("No Flag") : preferences.statusName(code);
        QString title = name;
        action->setText(title.replace(QLatin1Char('&'), QLatin1String("&&")));
        action->setToolTip(
            QStringLiteral("%1 (%2)").arg(name, action->shortcut().toString(QKeySequence::NativeText)));
    }
}

void fillLibraryMenuBar(QMenuBar& bar, const Commands& commands) {
    QMenu* file = bar.addMenu(QStringLiteral("&File"));
    addCommandsTo(*file, commands,
                  {"session.newPlaylist", "session.newDivider", "session.newDatedDivider", "",
                   "session.addMedia", "", "session.import", "session.save", "session.saveAs", "",
                   "notes.exportMovie", "notes.exportPlaylist", "", "session.clear", "", "app.quit"});
    QMenu* edit = bar.addMenu(QStringLiteral("&Edit"));
    addCommandsTo(*edit, commands,
                  {"edit.selectAll", "", "item.copyPath", "item.copyFilename", "", "playlists.rename",
                   "playlists.moveUp", "playlists.moveDown", "playlists.remove", "", "items.remove", "",
                   "app.preferences"});
    QMenu* item = bar.addMenu(QStringLiteral("&Item"));
    addCommandsTo(*item, commands, {"item.open", ""});
    addFlagMenu(*item, commands);
    addThumbnailMenus(*item, commands);
    addCommandsTo(*item, commands, {"", "item.moveUp", "item.moveDown", "", "item.reveal"});
    QMenu* view = bar.addMenu(QStringLiteral("&View"));
    addCommandsTo(*view, commands,
                  {"view.tiles", "view.list", "", "view.smallerTiles", "view.largerTiles", "",
                   "view.playlistOrder", "", "view.information"});
    QMenu* windows = bar.addMenu(QStringLiteral("&Window"));
    addCommandsTo(*windows, commands, {"window.minimise", "", "window.playlists", "window.items"});
    QMenu* help = bar.addMenu(QStringLiteral("&Help"));
    addCommandsTo(*help, commands, {"help.shortcuts", "", "help.about"});
}

void fillPlaylistMenu(QMenu& menu, const Commands& commands, bool onPlaylist) {
    if (onPlaylist)
        addCommandsTo(menu, commands,
                      {"item.open", "", "playlists.rename", "playlists.moveUp", "playlists.moveDown", "",
                       "session.addMedia", "notes.exportPlaylist", "", "playlists.remove", ""});
    addCommandsTo(menu, commands, {"session.newPlaylist", "session.newDivider", "session.newDatedDivider"});
    if (!onPlaylist) addCommandsTo(menu, commands, {"", "session.import", "session.clear"});
}

void fillItemMenu(QMenu& menu, const Commands& commands, bool onItem) {
    if (!onItem) {
        addCommandsTo(menu, commands,
                      {"session.addMedia", "", "edit.selectAll", "view.tiles", "view.list", "",
                       "notes.exportPlaylist"});
        return;
    }
    addCommandsTo(menu, commands, {"item.open", ""});
    addFlagMenu(menu, commands);
    addThumbnailMenus(menu, commands);
    addCommandsTo(menu, commands,
                  {"", "item.copyPath", "item.copyFilename", "item.reveal", "", "item.moveUp",
                   "item.moveDown", "", "notes.exportMovie", "", "items.remove"});
}

} // namespace daylark
