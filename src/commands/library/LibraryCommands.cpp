#include "commands/library/LibraryCommands.h"

#include "app/PlaylistController.h"
#include "app/sessions/RecentSessions.h"
#include "commands/CommandId.h"
#include "commands/HistoryCommands.h"
#include "model/StatusCodes.h"
#include "preferences/Preferences.h"

#include <algorithm>

namespace daylark {

namespace {

QString thumbnailCommand(const char* scope, const char* frame) {
    return QStringLiteral("thumbnails.%1.%2").arg(id(scope), id(frame).remove(QLatin1Char(' ')));
}

/// What the library's commands depend on.
struct Conditions {
    const Condition& itemsSelected;
    const Condition& filesSelected; ///< an item that is not marked as missing
    const Condition& itemsShown;
    const Condition& itemsThere; ///< in whatever list
    const Condition& playlistSelected;
    const Condition& listSelected; ///< one that is more than a line between others
    const Condition& listHoldsItems;
    const Condition& onePlaylistAtMost;
    const Condition& playlistOrder;
    const Condition& playlistsThere;
    const Condition& mayBeEmptyLists;
    const Condition& playlistsMayRise;
    const Condition& playlistsMayFall;
    const Condition& itemsMayRise;
    const Condition& itemsMayFall;
    const Condition& itemsMayGo;
    const Condition& ownItemsThere; ///< in the selected list, which is nobody's but its own
    const Condition& smartlistSelected;
    const Condition& found;
};

bool mayRise(const Library::Rows& rows) {
    return !rows.empty() && rows.front() > 0;
}

bool mayFall(const Library::Rows& rows, size_t count) {
    return !rows.empty() && size_t(rows.back()) + 1 < count;
}

/// Makes conditions by what they ask of the library; what they follow is told by what they are about.
class ConditionMaker {
public:
    using Ask = std::function<bool()>;
    ConditionMaker(CommandSet& commands, PlaylistController& controller)
        : commands_(commands)
        , controller_(controller)
        , library_(controller.library()) {}

    [[nodiscard]] Conditions make() const;

private:
    [[nodiscard]] const Condition& ofItems(Ask ask) const {
        return commands_.when(std::move(ask))
            .follows(library_, &Library::movieSelectionChanged, &Library::arrangedMoviesChanged,
                     &Library::playlistSelectionChanged, &Library::sortChanged);
    }
    [[nodiscard]] const Condition& ofFiles(Ask ask) const {
        return commands_.when(std::move(ask))
            .follows(library_, &Library::movieSelectionChanged, &Library::arrangedMoviesChanged,
                     &Library::playlistSelectionChanged, &Library::playlistUpdated, &Library::movieUpdated);
    }
    [[nodiscard]] const Condition& ofLists(Ask ask) const {
        return commands_.when(std::move(ask))
            .follows(library_, &Library::playlistSelectionChanged, &Library::playlistsChanged, &Library::playlistUpdated,
                     &Library::arrangedMoviesChanged);
    }
    /// Whether one of the selected lists is such.
    [[nodiscard]] const Condition& ofSelected(std::function<bool(const Playlist&)> test) const {
        return ofLists([&library = library_, test = std::move(test)] {
            const Library::Rows& rows = library.selectedPlaylistRows();
            return std::any_of(rows.begin(), rows.end(), [&](qsizetype row) {
                return size_t(row) < library.playlists().size() && test(*library.playlists()[size_t(row)]);
            });
        });
    }

    CommandSet& commands_;
    PlaylistController& controller_;
    Library& library_;
};

Conditions ConditionMaker::make() const {
    Library& library = library_;
    const auto someList = [&library](auto test) {
        return [&library, test] { return std::any_of(library.playlists().begin(), library.playlists().end(), test); };
    };
    const auto holdsItems = [](const auto& playlist) { return !playlist->movieList.empty(); };
    const auto ownItems = [&library] { // not in those of rules or of a folder
        const auto playlist = library.selectedPlaylist();
        return playlist && playlist->takesItems() && !playlist->movieList.empty();
    };
    const auto isFound = [&library](qsizetype row) {
        const auto movie = library.movieAt(row);
        return movie && movie->creatingThumbnailText != fileNotFoundText;
    };
    return {
        .itemsSelected = ofItems([&library] { return !library.selectedMovieRows().empty(); }),
        .filesSelected = ofFiles([&library, isFound] {
            const Library::Rows& rows = library.selectedMovieRows();
            return std::any_of(rows.begin(), rows.end(), isFound);
        }),
        .itemsShown = ofItems([&library] { return !library.arrangedMovies().empty(); }),
        .itemsThere = ofLists(someList(holdsItems)),
        .playlistSelected = ofLists([&library] { return !library.selectedPlaylistRows().empty(); }),
        .listSelected = ofSelected([](const Playlist& playlist) { return !playlist.isType(playlistType::divider); }),
        .listHoldsItems =
            ofSelected([](const Playlist& playlist) { return playlist.asksRules() || !playlist.movieList.empty(); }),
        .onePlaylistAtMost = ofLists([&library] { return library.selectedPlaylistRows().size() <= 1; }),
        .playlistOrder = ofItems([&library] { return library.sortField() == QLatin1String("sortOrder"); }),
        .playlistsThere = ofLists([&library] { return !library.playlists().empty(); }),
        // What rules answer is not asked for here: it may take long.
        .mayBeEmptyLists = ofLists(someList([](const auto& playlist) {
            return !playlist->isType(playlistType::divider) && playlist->movieList.empty();
        })),
        .playlistsMayRise = ofLists([&library] { return mayRise(library.selectedPlaylistRows()); }),
        .playlistsMayFall =
            ofLists([&library] { return mayFall(library.selectedPlaylistRows(), library.playlists().size()); }),
        .itemsMayRise = ofItems([&library, ownItems] { return ownItems() && mayRise(library.selectedMovieRows()); }),
        .itemsMayFall = ofItems([&library, ownItems] {
            return ownItems() && mayFall(library.selectedMovieRows(), library.arrangedMovies().size());
        }),
        // Of no item it says what is missing.
        .itemsMayGo = ofFiles([&controller = controller_] {
            const auto playlist = controller.library().selectedPlaylist();
            return playlist && !playlist->isType(playlistType::divider) && controller.playlistEditing().mayRemoveSelectedMovies();
        }),
        .ownItemsThere = ofLists(ownItems),
        .smartlistSelected = ofLists([&library] {
            const auto playlist = library.selectedPlaylist();
            return playlist && playlist->isType(playlistType::smart);
        }),
        .found = commands_.when([&controller = controller_] { return !controller.find().foundMovies().empty(); })
                     .follows(controller_.find(), &Find::changed)};
}

/// Moves the selected items one place up or down in the playlist's own order.
void moveSelectedItems(PlaylistController& controller, bool down) {
    const Library& library = controller.library();
    const Library::Rows rows = library.selectedMovieRows();
    if (!(down ? mayFall(rows, library.arrangedMovies().size()) : mayRise(rows))) return;
    controller.playlistEditing().moveMovies(library.moviesAt(rows),
                                            library.movieAt(down ? rows.back() + 2 : rows.front() - 1));
}

void moveSelectedPlaylists(PlaylistController& controller, bool down) {
    Library& library = controller.library();
    const Library::Rows rows = library.selectedPlaylistRows();
    if (!(down ? mayFall(rows, library.playlists().size()) : mayRise(rows))) return;
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
        id("manifest.export"), [&c] { c.manifestExport().exportPlaylistManifest(); }, &when.listHoldsItems);
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
    const auto whileIdle = [&](const Condition& also) -> const Condition& {
        return commands.when([&relinking, &also] { return !relinking.isBusy() && also.holds(); })
            .follows(relinking, &Relinking::busyChanged)
            .follows(also, &Condition::changed);
    };
    const Condition& itemSelected = whileIdle(when.itemsSelected);
    const Condition& listSelected = whileIdle(when.listHoldsItems);
    const Condition& itemsThere = whileIdle(when.itemsThere);
    commands.bind(id("relink.movie"), [&relinking] { relinking.linkMovieToFile(); }, &itemSelected);
    commands.bind(id("relink.selected"), [&relinking] { relinking.autolinkSelectedPlaylists(); }, &listSelected);
    commands.bind(id("relink.session"), [&relinking] { relinking.autolinkCurrentSession(); }, &itemsThere);
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
        id("files.update"), [&c] { c.fileStates().updateAllFilePaths(); }, &when.itemsThere);
    commands.bind(
        id("files.checkSelected"), [&c] { c.fileExistence().checkFilesExistForSelectedPlaylists(); },
        &when.listHoldsItems);
    commands.bind(
        id("files.checkAll"), [&c] { c.fileExistence().checkFilesExistForAllPlaylists(); }, &when.itemsThere);
}

/// What is handed on as files: copies of media, sessions and movies for others.
void bindMediaOut(CommandSet& commands, PlaylistController& c, const Conditions& when) {
    const auto gather = [&](const char* command, const char* title, const Condition& enabled) {
        commands.bind(
            id(command), [&c, title] { c.mediaGathering().gatherMediaFiles({id(title), 0}); }, &enabled);
    };
    gather("gather.selected", "Gather Selected Media...", when.itemsSelected);
    gather("gather.selectedFiles", "Gather Selected Media Files...", when.itemsSelected);
    gather("gather.playlists", "Gather Media In Selected Playlists...", when.listHoldsItems);
    gather("gather.playlist", "Gather Media In Playlist...", when.listHoldsItems);
    commands.bind(
        id("export.reviewed"), [&c] { c.sessionFiles().exportSessionAsReviewed(); }, &when.playlistsThere);
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
        id("playlists.copyLink"), [&c] { c.linkCopying().copyPlaylistLink(); }, &when.listSelected);
    commands.bind(
        id("playlists.moveUp"), [&c] { moveSelectedPlaylists(c, false); }, &when.playlistsMayRise);
    commands.bind(
        id("playlists.moveDown"), [&c] { moveSelectedPlaylists(c, true); }, &when.playlistsMayFall);
    commands.bind(id("playlists.editRules"), window.editRules, &when.smartlistSelected);
    commands.bind(
        id("playlists.combineAll"), [&c] { c.itemTransfer().addAllItemsToNewPlaylist(); }, &when.itemsThere);
    // Of one alone it says what is missing.
    commands.bind(
        id("playlists.combineSelected"), [&c] { c.itemTransfer().addSelectedItemsToNewPlaylist(); },
        &when.playlistSelected);
    commands.bind(
        id("playlists.removeEmpty"), [&c] { c.playlistEditing().removeEmptyPlaylists(); }, &when.mayBeEmptyLists);
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
        id("items.removeDuplicates"), [&c] { c.duplicateRemoval().removeDuplicateItems(); }, &when.ownItemsThere);
    commands.bind(
        id("item.reveal"), [&c] { c.mediaReveal().revealInFinder(); }, &when.filesSelected);
    commands.bind(
        id("item.moveUp"), [&c] { moveSelectedItems(c, false); }, &when.itemsMayRise);
    commands.bind(
        id("item.moveDown"), [&c] { moveSelectedItems(c, true); }, &when.itemsMayFall);
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
        &when.itemsThere);
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
            &when.itemsThere);
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
        id("view.bakeOrder"), [&c] { c.playlistEditing().bakeCurrentSortOrder(); }, &when.ownItemsThere);
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
    const Conditions when = ConditionMaker(commands, controller).make();
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
