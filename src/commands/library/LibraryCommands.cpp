#include "commands/library/LibraryCommands.h"

#include "app/PlaylistController.h"
#include "app/sessions/RecentSessions.h"
#include "commands/CommandId.h"
#include "commands/HistoryCommands.h"
#include "model/StatusCodes.h"
#include "preferences/Preferences.h"

namespace daylark {

namespace {

QString thumbnailCommand(const char* scope, const char* frame) {
    return QStringLiteral("thumbnails.%1.%2").arg(id(scope), id(frame).remove(QLatin1Char(' ')));
}

/// What the library's commands depend on.
struct Conditions {
    const Condition& itemsSelected;
    const Condition& itemsShown;
    const Condition& playlistSelected;
    const Condition& onePlaylistAtMost;
    const Condition& playlistOrder;
    const Condition& playlistsThere;
    const Condition& playlistMayMove;
    const Condition& itemsMayGo;
    const Condition& listTakesItems;
    const Condition& smartlistSelected;
    const Condition& found;
};

Conditions conditionsOf(CommandSet& commands, PlaylistController& controller) {
    Library& library = controller.library();
    const auto ofSelected = [&library](auto test) {
        return [&library, test] {
            const auto playlist = library.selectedPlaylist();
            return playlist && test(*playlist);
        };
    };
    return {commands.when([&library] { return !library.selectedMovieRows().empty(); })
                .follows(library, &Library::movieSelectionChanged, &Library::arrangedMoviesChanged),
            commands.when([&library] { return !library.arrangedMovies().empty(); })
                .follows(library, &Library::arrangedMoviesChanged),
            commands.when([&library] { return !library.selectedPlaylistRows().empty(); })
                .follows(library, &Library::playlistSelectionChanged, &Library::playlistsChanged),
            commands.when([&library] { return library.selectedPlaylistRows().size() <= 1; })
                .follows(library, &Library::playlistSelectionChanged, &Library::playlistsChanged),
            commands.when([&library] { return library.sortField() == QLatin1String("sortOrder"); })
                .follows(library, &Library::sortChanged),
            commands.when([&library] { return !library.playlists().empty(); })
                .follows(library, &Library::playlistsChanged),
            commands
                .when([&library] {
                    return !library.selectedPlaylistRows().empty() && library.playlists().size() > 1;
                })
                .follows(library, &Library::playlistSelectionChanged, &Library::playlistsChanged),
            // Of no item it says what is missing.
            commands.when([&controller] { return controller.playlistEditing().mayRemoveSelectedMovies(); })
                .follows(library, &Library::movieSelectionChanged, &Library::arrangedMoviesChanged,
                         &Library::playlistSelectionChanged, &Library::playlistUpdated, &Library::movieUpdated),
            commands.when(ofSelected([](const Playlist& playlist) { return playlist.takesItems(); }))
                .follows(library, &Library::playlistSelectionChanged, &Library::playlistsChanged),
            commands
                .when(ofSelected([](const Playlist& playlist) { return playlist.isType(playlistType::smart); }))
                .follows(library, &Library::playlistSelectionChanged, &Library::playlistsChanged),
            commands.when([&controller] { return !controller.find().foundMovies().empty(); })
                .follows(controller.find(), &Find::changed)};
}

/// Moves the selected items one place up or down in the playlist's own order.
void moveSelectedItems(PlaylistController& controller, bool down) {
    const Library& library = controller.library();
    const Library::Rows rows = library.selectedMovieRows();
    const qsizetype count = qsizetype(library.arrangedMovies().size());
    if (rows.empty() || (down ? rows.back() + 1 >= count : rows.front() == 0)) return;
    controller.playlistEditing().moveMovies(library.moviesAt(rows),
                                            library.movieAt(down ? rows.back() + 2 : rows.front() - 1));
}

void moveSelectedPlaylists(PlaylistController& controller, bool down) {
    Library& library = controller.library();
    const Library::Rows rows = library.selectedPlaylistRows();
    const qsizetype count = qsizetype(library.playlists().size());
    if (rows.empty() || (down ? rows.back() + 1 >= count : rows.front() == 0)) return;
    library.movePlaylists(rows, down ? rows.back() + 2 : rows.front() - 1);
}

void bindSession(CommandSet& commands, PlaylistController& c, const Conditions& when) {
    commands.bind(id("session.newPlaylist"), [&c] { c.playlistEditing().addEmptyPlaylist(); });
    commands.bind(id("session.newSmartlist"), [&c] { c.playlistEditing().addEmptySmartlist(); });
    commands.bind(id("session.newFolderlist"), [&c] { c.playlistEditing().addEmptyFolderlist(); });
    commands.bind(
        id("session.addFolder"), [&c] { c.mediaAdding().addFoldersFromOpenDialog(); }, &when.onePlaylistAtMost);
    commands.bind(id("session.newDivider"), [&c] { c.playlistEditing().addDivider(); });
    commands.bind(id("session.newDatedDivider"), [&c] { c.playlistEditing().addDatedDivider(); });
    commands.bind(
        id("session.addMedia"), [&c] { c.mediaAdding().addMediaFromOpenDialog(); }, &when.onePlaylistAtMost);
    commands.bind(id("session.pasteLink"), [&c] { c.openLinksOfPasteboard(); });
    commands.bind(id("session.import"), [&c] { c.sessionFiles().importSession(); });
    commands.bind(id("session.save"), [&c] { c.sessionFiles().saveSession(); });
    commands.bind(id("session.saveAs"), [&c] { c.sessionFiles().saveSessionAs(); });
    commands.bind(id("notes.exportMovie"), [&c] {
        c.notesExport().exportNotes({QStringLiteral("Export Movie Notes..."), 0});
    });
    commands.bind(id("notes.exportPlaylist"), [&c] {
        c.notesExport().exportNotes({QStringLiteral("Export Playlist Notes..."), 0});
    });
    commands.bind(
        id("manifest.export"), [&c] { c.manifestExport().exportPlaylistManifest(); }, &when.playlistSelected);
    Preferences& preferences = c.preferences();
    const Condition& anyRecent = commands.when([&preferences] { return !recentSessions::paths(preferences).isEmpty(); })
                                     .follows(preferences.recentSessions, &PreferenceItem::changed);
    commands.bind(id("session.clearRecent"), [&preferences] { recentSessions::clear(preferences); }, &anyRecent);
    commands.bind(
        id("session.clear"), [&c] { c.playlistEditing().removeAllPlaylists(true); }, &when.playlistsThere);
}

/// One search of a person's at a time; the one that the program makes by itself disturbs none.
void bindRelinking(CommandSet& commands, PlaylistController& c, const Conditions& when) {
    Relinking& relinking = c.relinking();
    Library& library = c.library();
    const auto whileIdle = [&](auto also) -> const Condition& {
        return commands.when([&relinking, also] { return !relinking.isBusy() && also(); })
            .follows(relinking, &Relinking::busyChanged)
            .follows(library, &Library::movieSelectionChanged, &Library::arrangedMoviesChanged,
                     &Library::playlistSelectionChanged, &Library::playlistsChanged);
    };
    const Condition& itemSelected = whileIdle([&library] { return !library.selectedMovieRows().empty(); });
    const Condition& listSelected = whileIdle([&library] { return !library.selectedPlaylistRows().empty(); });
    const Condition& listsThere = whileIdle([&library] { return !library.playlists().empty(); });
    commands.bind(id("relink.movie"), [&relinking] { relinking.linkMovieToFile(); }, &itemSelected);
    commands.bind(id("relink.selected"), [&relinking] { relinking.autolinkSelectedPlaylists(); }, &listSelected);
    commands.bind(id("relink.session"), [&relinking] { relinking.autolinkCurrentSession(); }, &listsThere);
    commands.bind(id("relink.forced"), [&relinking] { relinking.forcelinkSelectedPlaylists(); }, &listSelected);
    Preferences& preferences = c.preferences();
    const Condition& automatic = commands.when([&preferences] { return preferences.autoSearchForMissingMedia(); })
                                     .follows(preferences.autoSearchForMissingMedia, &PreferenceItem::changed);
    commands.bind(
        id("relink.automatic"), [&preferences] { preferences.autoSearchForMissingMedia.flip(); }, nullptr, &automatic);
    const Condition& maySearch = commands
                                     .when([&relinking, &preferences] {
                                         return !relinking.isSearchingByItself() && !preferences.autoSearchPath().isEmpty();
                                     })
                                     .follows(relinking, &Relinking::busyChanged)
                                     .follows(preferences.autoSearchPath, &PreferenceItem::changed);
    commands.bind(id("relink.now"), [&relinking] { relinking.autoLinkMissingMediaOnNewThread(); }, &maySearch);
    commands.bind(id("relink.root"), [&relinking] { relinking.setAutoSearchPath(); });
    commands.bind(
        id("files.update"), [&c] { c.fileStates().updateAllFilePaths(); }, &when.playlistsThere);
    commands.bind(
        id("files.checkSelected"), [&c] { c.fileExistence().checkFilesExistForSelectedPlaylists(); },
        &when.playlistSelected);
    commands.bind(
        id("files.checkAll"), [&c] { c.fileExistence().checkFilesExistForAllPlaylists(); }, &when.playlistsThere);
}

/// What is handed on as files: copies of media, sessions and movies for others.
void bindMediaOut(CommandSet& commands, PlaylistController& c, const Conditions& when) {
    const auto gather = [&](const char* command, const char* title, const Condition& enabled) {
        commands.bind(
            id(command), [&c, title] { c.mediaGathering().gatherMediaFiles({id(title), 0}); }, &enabled);
    };
    gather("gather.selected", "Gather Selected Media...", when.itemsSelected);
    gather("gather.selectedFiles", "Gather Selected Media Files...", when.itemsSelected);
    gather("gather.playlists", "Gather Media In Selected Playlists...", when.playlistSelected);
    gather("gather.playlist", "Gather Media In Playlist...", when.playlistSelected);
    commands.bind(id("export.reviewed"), [&c] { c.sessionFiles().exportSessionAsReviewed(); });
    commands.bind(
        id("export.playlists"), [&c] { c.sessionFiles().exportSelectedPlaylistsAsSession(); }, &when.playlistSelected);
    commands.bind(
        id("export.movie"), [&c] { c.bundleExport().launchExport(); }, &when.itemsSelected);
    commands.bind(
        id("export.movieFile"), [&c] { c.bundleExport().saveDLMToDisk(); }, &when.itemsSelected);
    commands.bind(id("session.addBundle"), [&c] { c.mediaAdding().addBundlesFromOpenDialog(); });
}

void bindPlaylists(CommandSet& commands, PlaylistController& c, const Conditions& when,
                   const LibraryWindowActions& window) {
    commands.bind(id("playlists.rename"), window.renamePlaylist, &when.playlistSelected);
    commands.bind(
        id("playlists.copyLink"), [&c] { c.linkCopying().copyPlaylistLink(); }, &when.playlistSelected);
    commands.bind(
        id("playlists.moveUp"), [&c] { moveSelectedPlaylists(c, false); }, &when.playlistMayMove);
    commands.bind(
        id("playlists.moveDown"), [&c] { moveSelectedPlaylists(c, true); }, &when.playlistMayMove);
    commands.bind(id("playlists.editRules"), window.editRules, &when.smartlistSelected);
    commands.bind(
        id("playlists.combineAll"), [&c] { c.itemTransfer().addAllItemsToNewPlaylist(); }, &when.playlistsThere);
    // Of one alone it says what is missing.
    commands.bind(
        id("playlists.combineSelected"), [&c] { c.itemTransfer().addSelectedItemsToNewPlaylist(); },
        &when.playlistSelected);
    commands.bind(
        id("playlists.removeEmpty"), [&c] { c.playlistEditing().removeEmptyPlaylists(); }, &when.playlistsThere);
    commands.bind(
        id("playlists.removeWithoutQuestion"),
        [&c] { c.playlistEditing().removeSelectedPlaylistsWithoutWarning(); }, &when.playlistSelected);
    commands.bind(
        id("playlists.remove"), [&c] { c.playlistEditing().removeSelectedPlaylists(); },
        &when.playlistSelected);
}

void bindItems(CommandSet& commands, PlaylistController& c, const Conditions& when) {
    const auto onSelected = [&](const char* command, std::function<void()> run) {
        commands.bind(id(command), std::move(run), &when.itemsSelected);
    };
    commands.bind(
        id("item.open"), [&c] { c.loadMovieWindow(); }, &when.itemsShown);
    onSelected("item.copyPath", [&c] { c.linkCopying().copyPath(); });
    onSelected("item.copyFilename", [&c] { c.linkCopying().copyFilename(); });
    onSelected("item.copyLink", [&c] { c.linkCopying().copyMovieLink(); });
    commands.bind(
        id("items.remove"), [&c] { c.playlistEditing().removeSelectedMovies(); }, &when.itemsMayGo);
    commands.bind(
        id("items.removeDuplicates"), [&c] { c.duplicateRemoval().removeDuplicateItems(); }, &when.listTakesItems);
    onSelected("item.reveal", [&c] { c.mediaReveal().revealInFinder(); });
    onSelected("item.moveUp", [&c] { moveSelectedItems(c, false); });
    onSelected("item.moveDown", [&c] { moveSelectedItems(c, true); });
    for (int tag = status::none; tag <= status::skip; ++tag)
        commands.bind(
            libraryCommand::flag(tag),
            [&c, tag] {
                c.setFlagOfSelectedMovies({QString(), tag});
            },
            &when.itemsSelected);
}

void bindThumbnails(CommandSet& commands, PlaylistController& c, const Conditions& when) {
    commands.bind(
        id("thumbnails.missing"),
        [&c] {
            c.thumbnails().createMissingThumbnails({QStringLiteral("Recreate Missing Thumbnails"), 0});
        },
        &when.playlistsThere);
    for (const char* frame : libraryCommand::thumbnailFrames) {
        commands.bind(
            libraryCommand::thumbnailsOfSelected(frame),
            [&c, frame] {
                c.thumbnails().recreateSelectedThumbnails({id(frame), 0});
            },
            &when.itemsSelected);
        commands.bind(
            libraryCommand::thumbnailsOfAll(frame),
            [&c, frame] {
                c.thumbnails().recreateAllThumbnails({id(frame), 0});
            },
            &when.playlistsThere);
    }
}

void bindFind(CommandSet& commands, PlaylistController& c, const Conditions& when) {
    commands.bind(id("find.show"), [&c] { c.find().showFindPanel(); });
    commands.bind(
        id("find.next"), [&c] { c.find().selectNextFoundMovie(); }, &when.found);
    commands.bind(
        id("find.previous"), [&c] { c.find().selectPreviousFoundMovie(); }, &when.found);
    commands.bind(
        id("find.copies"), [&c] { c.itemTransfer().createPlaylistWithFoundsItems(false); }, &when.found);
    commands.bind(
        id("find.instances"), [&c] { c.itemTransfer().createPlaylistWithFoundsItems(true); }, &when.found);
}

void bindFilters(CommandSet& commands, Library& library) {
    const auto bind = [&](const MovieFilter& filter, const QString& choice) {
        const Condition& isOn = commands.when([&library, choice] { return library.filter().id() == choice; })
                                    .follows(library, &Library::filterChanged);
        commands.bind(
            libraryCommand::filter(choice), [&library, filter] { library.setFilter(filter); }, nullptr, &isOn);
    };
    for (const MovieFilter::Choice& choice : MovieFilter::choices())
        bind(MovieFilter::withChoice(choice), QLatin1String(choice.id));
    for (int tag = status::approved; tag <= status::skip; ++tag)
        bind(MovieFilter::withFlag(tag), MovieFilter::withFlag(tag).id());
}

void bindOrder(CommandSet& commands, PlaylistController& c, const Conditions& when) {
    commands.bind(
        id("view.removeSorting"), [&c] { c.playlistEditing().removeSorting(); }, &when.itemsShown);
    commands.bind(
        id("view.bakeOrder"), [&c] { c.playlistEditing().bakeCurrentSortOrder(); }, &when.listTakesItems);
}

LibraryWindowState bindWindow(CommandSet& commands, const Conditions& when,
                              const LibraryWindowActions& window) {
    Condition& tiles = commands.when(window.tilesShown);
    Condition& list = commands.when([shown = window.tilesShown] { return !shown(); });
    list.follows(tiles, &Condition::changed);
    Condition& information = commands.when(window.informationShown);
    const auto show = window.showTiles;
    commands.bind(
        id("view.tiles"), [show] { show(true); }, nullptr, &tiles);
    commands.bind(
        id("view.list"), [show] { show(false); }, nullptr, &list);
    const auto enlarge = window.enlargeTiles;
    commands.bind(
        id("view.smallerTiles"), [enlarge] { enlarge(-50); }, &tiles);
    commands.bind(
        id("view.largerTiles"), [enlarge] { enlarge(50); }, &tiles);
    commands.bind(id("view.information"), window.toggleInformation, nullptr, &information);
    commands.bind(id("view.playlistOrder"), window.showPlaylistOrder, nullptr, &when.playlistOrder);
    commands.bind(id("edit.selectAll"), window.selectAll, &when.itemsShown);
    commands.bind(id("window.minimise"), window.minimise);
    commands.bind(id("window.playlists"), window.goToPlaylists);
    commands.bind(id("window.items"), window.goToItems);
    commands.bind(id("filter.search"), window.searchItems);
    commands.bind(id("app.preferences"), window.showPreferences);
    commands.bind(id("app.quit"), window.close);
    commands.bind(id("help.shortcuts"), window.showKeys);
    commands.bind(id("help.about"), window.showAbout);
    return {tiles, information};
}

} // namespace

LibraryWindowState bindLibraryCommands(CommandSet& commands, PlaylistController& controller,
                                       const LibraryWindowActions& window) {
    const Conditions when = conditionsOf(commands, controller);
    bindHistoryCommands(commands, controller.edits().history());
    bindSession(commands, controller, when);
    bindPlaylists(commands, controller, when, window);
    bindItems(commands, controller, when);
    bindRelinking(commands, controller, when);
    bindMediaOut(commands, controller, when);
    bindThumbnails(commands, controller, when);
    bindFind(commands, controller, when);
    bindFilters(commands, controller.library());
    bindOrder(commands, controller, when);
    return bindWindow(commands, when, window);
}

QString libraryCommand::thumbnailsOfSelected(const char* frame) {
    return thumbnailCommand("selected", frame);
}

QString libraryCommand::thumbnailsOfAll(const char* frame) {
    return thumbnailCommand("all", frame);
}

QString libraryCommand::filter(const QString& choice) {
    return QStringLiteral("filter.") + choice;
}

QString libraryCommand::flag(int tag) {
    return QStringLiteral("item.flag.%1").arg(tag);
}

} // namespace daylark
