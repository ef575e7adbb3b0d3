#include "app/playlists/PlaylistEditing.h"

#include "app/files/FileStates.h"
#include "app/playlists/Library.h"
#include "app/sessions/SessionFiles.h"
#include "model/MoveRule.h"
#include "model/ReviewEdits.h"
#include "platform/Alerts.h"

#include <QDate>

#include <algorithm>

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
    const bool loneDivider = rows.size() == 1 && library.selectedPlaylist()->playlistType == dividerType;
    if (!nothingToLose && !loneDivider) {
        const Alert question = rows.size() == 1
                                   ? removalQuestion(QStringLiteral("Remove Selected Playlist?"),
                                                     QStringLiteral("Remove Playlist"))
                                   : removalQuestion(QStringLiteral("Remove Selected Playlists?"),
                                                     QStringLiteral("Remove Playlists"));
        if (surroundings_.alerts.run(question) != Alerts::firstButton) return;
    }
    removeSelectedPlaylistsWithoutWarning();
}

void PlaylistEditing::removeSelectedPlaylistsWithoutWarning() {
    Library& library = surroundings_.library;
    const Library::Rows rows = library.selectedPlaylistRows();
    for (const qsizetype row : rows)
        for (const auto& movie : library.playlists()[size_t(row)]->movieList)
            movie->removeICount();
    library.removePlaylists(rows);
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

    for (const auto& movie : selected)
        movie->removeICount();
    library.removeMovies(playlist, selected);
    if (library.selectedPlaylistRows().size() == 1) {
        qint64 number = 1;
        for (const auto& movie : library.arrangedMovies())
            movie->sortOrder = number++;
    }
    const auto& rows = library.selectedPlaylistRows();
    const auto missesMedia = [&library](qsizetype row) {
        return library.playlists()[size_t(row)]->status > 0;
    };
    if (std::any_of(rows.begin(), rows.end(), missesMedia)) surroundings_.fileStates.updateAllFilePaths();
}

void PlaylistEditing::moveMovies(const std::vector<qsizetype>& rows, qsizetype dropRow) {
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
    if (!playlist || rows.empty()) return;
    Library::Movies moved = library.arrangedMovies();
    moveRows(moved, rows, dropRow);
    qint64 number = 1;
    for (const auto& movie : moved)
        movie->sortOrder = number++;
    ObjectList<Movie> list;
    list.assign(moved.begin(), moved.end());
    surroundings_.edits.setMovieList(playlist, list);
    library.setSort(QStringLiteral("sortOrder"), true);
}

void PlaylistEditing::renamePlaylist(qsizetype row, const QString& name) {
    const auto& playlists = surroundings_.library.playlists();
    if (row < 0 || size_t(row) >= playlists.size() || playlists[size_t(row)]->name == name) return;
    surroundings_.edits.setPlaylistName(playlists[size_t(row)], name);
}

} // namespace daylark
