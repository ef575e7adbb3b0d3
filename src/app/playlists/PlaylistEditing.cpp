#include "app/playlists/PlaylistEditing.h"

#include "app/arrangement/Find.h"
#include "app/files/FileStates.h"
#include "app/playlists/Library.h"
#include "app/relinking/FileExistence.h"
#include "app/sessions/SessionFiles.h"
#include "review/ReviewEdits.h"
#include "platform/Alerts.h"
#include "platform/Panels.h"

#include <QDate>
#include <QDir>

#include <algorithm>
#include <unordered_set>

namespace daylark {

namespace {

/// What goes for good goes by a button that is meant: Return keeps it. `subject` says from where.
Alert removalQuestion(const QString& message, const QString& remove, const QString& subject) {
    Alert alert;
    alert.message = message;
    alert.subject = subject;
    alert.defaultButton = 1;
    alert.informativeText = PlaylistEditing::tr("This can't be undone");
    alert.buttons = QStringList{remove, PlaylistEditing::tr("Cancel")};
    return alert;
}

/// "Day 12" of one, "3 playlists: Day 12, Day 13, Selects" of several.
QString subjectOf(const Library& library) {
    QStringList names;
    for (const qsizetype row : library.selectedPlaylistRows())
        names << library.playlists()[size_t(row)]->name;
    return names.size() == 1 ? names.front()
                             : PlaylistEditing::tr("%1 playlists: %2").arg(names.size()).arg(names.join(QStringLiteral(", ")));
}

/// All items of a playlist in the order of their numbers, those that `order` names in its order on the places
/// that they have among the others.
PlaylistEditing::Movies inOrder(const Playlist& playlist, const PlaylistEditing::Movies& order) {
    PlaylistEditing::Movies items = inOwnOrder({playlist.movieList.begin(), playlist.movieList.end()});
    const std::unordered_set<std::shared_ptr<Movie>> own(items.begin(), items.end());
    const std::unordered_set<std::shared_ptr<Movie>> named(order.begin(), order.end());
    auto next = order.begin();
    for (auto& item : items) {
        if (!named.contains(item)) continue;
        while (next != order.end() && !own.contains(*next))
            ++next;
        if (next != order.end()) item = *next++;
    }
    return items;
}

} // namespace

PlaylistEditing::PlaylistEditing(const Surroundings& surroundings, QObject* parent)
    : QObject(parent)
    , surroundings_(surroundings) {}

void PlaylistEditing::addEmptyPlaylist() {
    append(std::make_shared<Playlist>(), true);
}

void PlaylistEditing::addEmptySmartlist() {
    auto playlist = std::make_shared<Playlist>();
    playlist->name = QStringLiteral("Untitled Smartlist");
    playlist->playlistType = playlistType::smart;
    append(playlist, true);
    Q_EMIT smartlistAdded();
}

void PlaylistEditing::addEmptyFolderlist() {
    const QString chosen = surroundings_.panels.chooseFolder(tr("Choose Folder To Display"));
    if (chosen.isEmpty()) return;
    const QString folder = QDir::cleanPath(chosen);
    auto playlist = std::make_shared<Playlist>();
    const QString name = folder.section(QLatin1Char('/'), -1, -1, QString::SectionSkipEmpty);
    playlist->name = name.isEmpty() ? folder : name;
    playlist->playlistType = playlistType::folder;
    playlist->directoryPath = QUrl::fromLocalFile(folder);
    append(playlist, true);
}

void PlaylistEditing::addDivider() {
    appendDivider(QString(17, QLatin1Char('=')));
}

void PlaylistEditing::addDatedDivider() {
    appendDivider(datedDividerName(QDate::currentDate()));
}

QString PlaylistEditing::datedDividerName(const QDate& date) {
    int year = 0;
    static_cast<void>(date.weekNumber(&year)); // the week's year, not the calendar's; wanted
    return QStringLiteral("====== %1%2 ======")
        .arg(year % 100, 2, 10, QLatin1Char('0'))
        .arg(date.toString(QStringLiteral("MMdd")));
}

void PlaylistEditing::appendDivider(const QString& name) {
    auto divider = std::make_shared<Playlist>();
    divider->name = name;
    divider->playlistType = playlistType::divider;
    divider->isDivider = Number(true);
    append(divider, surroundings_.library.playlists().empty());
}

void PlaylistEditing::append(const std::shared_ptr<Playlist>& playlist, bool select) {
    const ReviewStore::Group step(surroundings_.edits.store(),
                                  {playlist->isType(playlistType::divider) ? tr("Add Divider")
                                   : playlist->isType(playlistType::smart) ? tr("Add Smartlist")
                                   : playlist->isType(playlistType::folder)
                                       ? tr("Add Folder List")
                                       : tr("Add Playlist")});
    surroundings_.library.appendPlaylist(playlist, select);
    Q_EMIT playlistAdded(qsizetype(surroundings_.library.playlists().size()) - 1);
}

void PlaylistEditing::removeSelectedPlaylists() {
    Library& library = surroundings_.library;
    const Library::Rows rows = library.selectedPlaylistRows();
    if (rows.empty()) return;
    // What a filter hides is there to be lost all the same.
    const auto isEmpty = [&library](qsizetype row) {
        return library.itemsOf(*library.playlists()[size_t(row)]).empty();
    };
    const bool nothingToLose = std::all_of(rows.begin(), rows.end(), isEmpty);
    EditKind kind = EditKind::step;
    const bool loneDivider = rows.size() == 1 && library.selectedPlaylist()->isType(playlistType::divider);
    if (!nothingToLose && !loneDivider) {
        const QString subject = subjectOf(library);
        const Alert question =
            rows.size() == 1 ? removalQuestion(tr("Remove Selected Playlist?"), tr("Remove Playlist"), subject)
                             : removalQuestion(tr("Remove Selected Playlists?"), tr("Remove Playlists"), subject);
        if (surroundings_.alerts.run(question) != Alerts::firstButton) return;
        if (rows != library.selectedPlaylistRows()) return; // the question let something else happen
        kind = EditKind::final;
    }
    removeSelected(kind);
}

void PlaylistEditing::removeSelectedPlaylistsWithoutWarning() {
    removeSelected(EditKind::step);
}

void PlaylistEditing::removeSelected(EditKind kind) {
    Library& library = surroundings_.library;
    ReviewStore& store = surroundings_.edits.store();
    const Library::Rows rows = library.selectedPlaylistRows();
    {
        const ReviewStore::Group step(
            store, {rows.size() == 1 ? tr("Remove Playlist") : tr("Remove Playlists"), kind});
        for (const qsizetype row : rows)
            for (const auto& movie : library.playlists()[size_t(row)]->movieList)
                store.modify(movie, {}, [](Movie& item) { item.removeICount(); });
        library.removePlaylists(rows);
    }
    surroundings_.find.closeFindPanel();
    if (!library.playlists().empty()) return;
    surroundings_.sessionFiles.setSessionTitle(QStringLiteral("Untitled Session"));
    surroundings_.sessionFiles.forgetCurrentSessionPath();
}

void PlaylistEditing::removeAllPlaylists(bool ask) {
    if (ask && !surroundings_.library.playlists().empty()) {
        const Alert question =
            removalQuestion(tr("Remove all media?"), tr("Clear Session"), surroundings_.sessionFiles.windowTitle());
        if (surroundings_.alerts.run(question) != Alerts::firstButton) return;
    }
    surroundings_.find.closeFindPanel();
    surroundings_.sessionFiles.clearSession();
}

void PlaylistEditing::removeEmptyPlaylists() {
    Library& library = surroundings_.library;
    Library::Rows rows;
    for (size_t row = 0; row < library.playlists().size(); ++row) {
        const Playlist& playlist = *library.playlists()[row];
        if (!playlist.isType(playlistType::divider) && library.itemsOf(playlist).empty())
            rows.push_back(qsizetype(row));
    }
    const ReviewStore::Group step(surroundings_.edits.store(), {tr("Remove Empty Playlists")});
    library.removePlaylists(rows);
}

bool PlaylistEditing::mayRemoveSelectedMovies() const {
    const auto playlist = surroundings_.library.selectedPlaylist();
    if (!playlist || playlist->asksRules()) return false;
    if (!playlist->isType(playlistType::folder)) return true;
    const Library::Movies movies = surroundings_.library.selectedMovies();
    return std::all_of(movies.begin(), movies.end(), [](const auto& movie) {
        return FileExistence::isMarkedMissing(*movie);
    });
}

void PlaylistEditing::removeSelectedMovies() {
    Library& library = surroundings_.library;
    const Library::Movies selected = library.selectedMovies();
    if (selected.empty()) {
        Alert alert;
        alert.message = tr("Select a movie and try again");
        alert.buttons = QStringList{tr("Okay")};
        surroundings_.alerts.show(alert);
        return;
    }
    if (!mayRemoveSelectedMovies()) return;
    const Alert question =
        selected.size() == 1
            ? removalQuestion(tr("Remove Selected Movie?"), tr("Remove Movie"), subjectOf(library))
            : removalQuestion(tr("Remove Selected Movies?"), tr("Remove Movies"), subjectOf(library));
    const auto playlist = library.selectedPlaylist();
    if (surroundings_.alerts.run(question) != Alerts::firstButton || playlist != library.selectedPlaylist())
        return;

    {
        ReviewStore& store = surroundings_.edits.store();
        const ReviewStore::Group step(
            store, {selected.size() == 1 ? tr("Remove Item") : tr("Remove Items"), EditKind::final});
        for (const auto& movie : selected)
            store.modify(movie, {}, [](Movie& item) { item.removeICount(); });
        library.removeMovies(playlist, selected);
        if (library.selectedPlaylistRows().size() == 1)
            number(inOrder(*playlist, library.arrangedMovies()));
    }
    surroundings_.find.closeFindPanel();
    const auto& rows = library.selectedPlaylistRows();
    const auto missesMedia = [&library](qsizetype row) {
        return library.playlists()[size_t(row)]->status > 0;
    };
    if (std::any_of(rows.begin(), rows.end(), missesMedia)) surroundings_.fileStates.updateAllFilePaths();
}

void PlaylistEditing::number(const Movies& movies) {
    qint64 place = 1;
    for (const auto& movie : movies)
        surroundings_.edits.store().setSortOrder(movie, {}, place++);
}

void PlaylistEditing::closeRanks(const Playlist& playlist) {
    number(surroundings_.library.itemsOf(playlist));
}

void PlaylistEditing::removeSorting() {
    surroundings_.library.setSort({}, true);
}

void PlaylistEditing::bakeCurrentSortOrder() {
    Library& library = surroundings_.library;
    if (const auto playlist = library.selectedPlaylist()) setOrder(playlist, library.arrangedMovies());
    library.setSort(QStringLiteral("sortOrder"), true);
}

void PlaylistEditing::setOrder(const std::shared_ptr<Playlist>& playlist, const Movies& order) {
    // A smartlist's items have their numbers from other lists; a folder's stand by name.
    if (!playlist->takesItems()) return;
    ReviewStore& store = surroundings_.edits.store();
    const ReviewStore::Group step(store, {tr("Order of Items")});
    const Movies items = inOrder(*playlist, order);
    number(items);
    ObjectList<Movie> list;
    list.assign(items.begin(), items.end());
    store.setMovies(playlist, list, {});
}

void PlaylistEditing::moveMovies(const Movies& movies, const std::shared_ptr<Movie>& before) {
    Library& library = surroundings_.library;
    if (library.selectedPlaylistRows().size() > 1) {
        Alert alert;
        alert.message = tr("Too many playlists selected");
        alert.informativeText = tr("Select one and try again");
        alert.buttons = QStringList{tr("Okay")};
        surroundings_.alerts.show(alert);
        return;
    }
    const auto playlist = library.selectedPlaylist();
    if (!playlist || !playlist->takesItems() || movies.empty()) return;
    // Of a record that stands there several times those places go that are selected, when it is these that are moved.
    const Library::Rows& selected = library.selectedMovieRows();
    const bool bySelection = library.moviesAt(selected) == movies;
    const std::unordered_set<qsizetype> rows(selected.begin(), selected.end());
    const std::unordered_set<std::shared_ptr<Movie>> taken(movies.begin(), movies.end());
    Movies order, moved;
    qsizetype gap = -1, row = 0;
    for (const auto& movie : library.arrangedMovies()) {
        if (gap < 0 && movie == before) gap = qsizetype(order.size());
        const bool goes = bySelection ? rows.contains(row) : taken.contains(movie);
        (goes ? moved : order).push_back(movie);
        ++row;
    }
    order.insert(gap < 0 ? order.end() : order.begin() + gap, moved.begin(), moved.end());
    setOrder(playlist, order);
    library.setSort(QStringLiteral("sortOrder"), true);
}

void PlaylistEditing::renamePlaylist(qsizetype row, const QString& name) {
    const auto& playlists = surroundings_.library.playlists();
    if (row < 0 || size_t(row) >= playlists.size() || playlists[size_t(row)]->name == name) return;
    surroundings_.edits.setPlaylistName(playlists[size_t(row)], name);
}

void PlaylistEditing::setRules(const std::shared_ptr<Playlist>& smartlist, const SmartRules& rules) {
    surroundings_.edits.store().modify(
        smartlist,
        {tr("Rules of Smartlist"), EditKind::step,
         QStringLiteral("rules of %1").arg(surroundings_.edits.store().records().idOf(smartlist))},
        [&rules](Playlist& playlist) { playlist.smartRules = rules; });
}

} // namespace daylark
