#include "app/playlists/PlaylistEditing.h"

#include "app/files/FileStates.h"
#include "app/playlists/Library.h"
#include "app/sessions/SessionFiles.h"
#include "review/ReviewEdits.h"
#include "platform/Alerts.h"

#include <QDate>

#include <algorithm>
#include <unordered_set>

namespace daylark {

namespace {

const QString dividerType = QStringLiteral("divider");

Alert removalQuestion(const QString& message, const QString& remove) {
    Alert alert;
    alert.message = message;
    alert.informativeText = QStringLiteral("This can't be undone");
    alert.buttons = QStringList{remove, QStringLiteral("Cancel")};
    return alert;
}

/// All items of a playlist in the order of their numbers, those that `order` names in its order on the places
/// that they have among the others.
PlaylistEditing::Movies inOrder(const Playlist& playlist, const PlaylistEditing::Movies& order) {
    PlaylistEditing::Movies items(playlist.movieList.begin(), playlist.movieList.end());
    std::stable_sort(items.begin(), items.end(),
                     [](const auto& a, const auto& b) { return a->sortOrder < b->sortOrder; });
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
    divider->playlistType = dividerType;
    divider->isDivider = Number(true);
    append(divider, surroundings_.library.playlists().empty());
}

void PlaylistEditing::append(const std::shared_ptr<Playlist>& playlist, bool select) {
    const bool divider = playlist->playlistType == dividerType;
    const ReviewStore::Group step(surroundings_.edits.store(), {divider ? tr("Add Divider") : tr("Add Playlist")});
    surroundings_.library.appendPlaylist(playlist, select);
    Q_EMIT playlistAdded(qsizetype(surroundings_.library.playlists().size()) - 1);
}

void PlaylistEditing::removeSelectedPlaylists() {
    const Library& library = surroundings_.library;
    const Library::Rows& rows = library.selectedPlaylistRows();
    if (rows.empty()) return;
    const auto isEmpty = [&library](qsizetype row) {
        return library.playlists()[size_t(row)]->movieList.empty();
    };
    const bool nothingToLose = std::all_of(rows.begin(), rows.end(), isEmpty);
    EditKind kind = EditKind::step;
    const bool loneDivider = rows.size() == 1 && library.selectedPlaylist()->playlistType == dividerType;
    if (!nothingToLose && !loneDivider) {
        const Alert question = rows.size() == 1
                                   ? removalQuestion(QStringLiteral("Remove Selected Playlist?"),
                                                     QStringLiteral("Remove Playlist"))
                                   : removalQuestion(QStringLiteral("Remove Selected Playlists?"),
                                                     QStringLiteral("Remove Playlists"));
        if (surroundings_.alerts.run(question) != Alerts::firstButton) return;
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
    if (!library.playlists().empty()) return;
    surroundings_.sessionFiles.setSessionTitle(QStringLiteral("Untitled Session"));
    surroundings_.sessionFiles.forgetCurrentSessionPath();
}

void PlaylistEditing::removeAllPlaylists(bool ask) {
    if (ask && !surroundings_.library.playlists().empty()) {
        const Alert question =
            removalQuestion(QStringLiteral("Remove all media?"), QStringLiteral("Clear Session"));
        if (surroundings_.alerts.run(question) != Alerts::firstButton) return;
    }
    surroundings_.sessionFiles.clearSession();
}

void PlaylistEditing::removeSelectedMovies() {
    Library& library = surroundings_.library;
    const Library::Movies selected = library.selectedMovies();
    if (selected.empty()) {
        Alert alert;
        alert.message = QStringLiteral("Select a movie and try again");
        alert.buttons = QStringList{QStringLiteral("Okay")};
        surroundings_.alerts.show(alert);
        return;
    }
    const Alert question =
        selected.size() == 1
            ? removalQuestion(QStringLiteral("Remove Selected Movie?"), QStringLiteral("Remove Movie"))
            : removalQuestion(QStringLiteral("Remove Selected Movies?"), QStringLiteral("Remove Movies"));
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

void PlaylistEditing::setOrder(const std::shared_ptr<Playlist>& playlist, const Movies& order) {
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
        alert.message = QStringLiteral("Too many playlists selected");
        alert.informativeText = QStringLiteral("Select one and try again");
        alert.buttons = QStringList{QStringLiteral("Okay")};
        surroundings_.alerts.show(alert);
        return;
    }
    const auto playlist = library.selectedPlaylist();
    if (!playlist || movies.empty()) return;
    const std::unordered_set<std::shared_ptr<Movie>> taken(movies.begin(), movies.end());
    Movies order, moved;
    qsizetype gap = -1;
    for (const auto& movie : library.arrangedMovies()) {
        if (gap < 0 && movie == before) gap = qsizetype(order.size());
        (taken.contains(movie) ? moved : order).push_back(movie);
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

} // namespace daylark
