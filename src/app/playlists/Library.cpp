#include "app/playlists/Library.h"

#include "app/playlists/MovieSort.h"
#include "model/MoveRule.h"

#include <algorithm>
#include <unordered_set>

namespace daylark {

namespace {

/// Ascending, each once, only those that exist.
Library::Rows existingRows(Library::Rows rows, size_t size) {
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    const auto missing = [size](qsizetype row) { return row < 0 || size_t(row) >= size; };
    rows.erase(std::remove_if(rows.begin(), rows.end(), missing), rows.end());
    return rows;
}

template<class Record>
std::unordered_set<const Record*> recordsAtRows(const std::vector<std::shared_ptr<Record>>& list,
                                                const Library::Rows& rows) {
    std::unordered_set<const Record*> records;
    for (const qsizetype row : rows)
        if (size_t(row) < list.size()) records.insert(list[size_t(row)].get());
    return records;
}

template<class Record>
Library::Rows rowsOfRecords(const std::vector<std::shared_ptr<Record>>& list,
                            const std::unordered_set<const Record*>& records) {
    Library::Rows rows;
    for (size_t row = 0; row < list.size() && rows.size() < records.size(); ++row)
        if (records.count(list[row].get())) rows.push_back(qsizetype(row));
    return rows;
}

/// What is selected after removing: what stayed of the selection, else the row that took the place of the
/// first removed.
Library::Rows rowsAfterRemoval(Library::Rows stayed, qsizetype firstRemoved, size_t sizeAfter) {
    if (!stayed.empty() || sizeAfter == 0 || firstRemoved < 0) return stayed;
    return {std::min(firstRemoved, qsizetype(sizeAfter) - 1)};
}

} // namespace

void Library::setPlaylists(Playlists playlists) {
    playlists_ = std::move(playlists);
    for (const auto& playlist : playlists_)
        playlist->updateCount();
    selectedPlaylists_.clear();
    Q_EMIT playlistsChanged();
    showSelectedPlaylist();
}

void Library::appendPlaylist(const std::shared_ptr<Playlist>& playlist, bool select) {
    playlist->updateCount();
    playlists_.push_back(playlist);
    Q_EMIT playlistsChanged();
    Q_EMIT contentEdited();
    if (select) selectPlaylist(qsizetype(playlists_.size()) - 1);
}

void Library::removePlaylists(const Rows& rows) {
    const Rows removed = existingRows(rows, playlists_.size());
    if (removed.empty()) return;
    auto kept = recordsAtRows(playlists_, selectedPlaylists_);
    for (auto row = removed.rbegin(); row != removed.rend(); ++row) {
        kept.erase(playlists_[size_t(*row)].get());
        playlists_.erase(playlists_.begin() + *row);
    }
    selectedPlaylists_ =
        rowsAfterRemoval(rowsOfRecords(playlists_, kept), removed.front(), playlists_.size());
    Q_EMIT playlistsChanged();
    Q_EMIT contentEdited();
    showSelectedPlaylist();
}

void Library::movePlaylists(const Rows& rows, qsizetype dropRow) {
    const auto selected = recordsAtRows(playlists_, selectedPlaylists_);
    const Playlists before = playlists_;
    moveRows(playlists_, existingRows(rows, playlists_.size()), dropRow);
    if (playlists_ == before) return;
    const auto shown = selectedPlaylist();
    selectedPlaylists_ = rowsOfRecords(playlists_, selected);
    Q_EMIT playlistsChanged();
    Q_EMIT contentEdited();
    if (selectedPlaylist() == shown)
        Q_EMIT playlistSelectionChanged();
    else
        showSelectedPlaylist(); // of several selected another one stands first now
}

void Library::selectPlaylists(Rows rows) {
    rows = existingRows(std::move(rows), playlists_.size());
    if (rows == selectedPlaylists_) return;
    selectedPlaylists_ = std::move(rows);
    for (const qsizetype row : selectedPlaylists_)
        playlists_[size_t(row)]->hasBeenVisited = true;
    showSelectedPlaylist();
}

void Library::showSelectedPlaylist() {
    Q_EMIT playlistSelectionChanged();
    rearrange();
}

std::shared_ptr<Playlist> Library::selectedPlaylist() const {
    return selectedPlaylists_.empty() ? nullptr : playlists_[size_t(selectedPlaylists_.front())];
}

void Library::selectMovies(Rows rows) {
    rows = existingRows(std::move(rows), arranged_.size());
    if (rows == selectedMovies_) return;
    selectedMovies_ = std::move(rows);
    Q_EMIT movieSelectionChanged();
}

void Library::selectMovie(const std::shared_ptr<Movie>& movie) {
    const auto found = std::find(arranged_.begin(), arranged_.end(), movie);
    if (found != arranged_.end()) selectMovies({qsizetype(found - arranged_.begin())});
}

Library::Movies Library::selectedMovies() const {
    Movies movies;
    movies.reserve(selectedMovies_.size());
    for (const qsizetype row : selectedMovies_)
        movies.push_back(arranged_[size_t(row)]);
    return movies;
}

qsizetype Library::shownCount(const std::shared_ptr<Playlist>& playlist) const {
    return playlist == selectedPlaylist() ? qsizetype(arranged_.size()) : qsizetype(playlist->count());
}

void Library::setSort(const QString& field, bool ascending) {
    sortField_ = field;
    sortAscending_ = ascending;
    rearrange();
    Q_EMIT sortChanged();
}

void Library::rearrange() {
    const auto selected = recordsAtRows(arranged_, selectedMovies_);
    Movies arranged;
    if (const auto playlist = selectedPlaylist())
        arranged.assign(playlist->movieList.begin(), playlist->movieList.end());
    sortMoviesByField(arranged, sortField_, sortAscending_);
    Rows rows = rowsOfRecords(arranged, selected);
    const bool listChanged = arranged != arranged_;
    const bool selectionChanged = rows != selectedMovies_ || selected.size() != rows.size();
    arranged_ = std::move(arranged);
    selectedMovies_ = std::move(rows);
    if (listChanged) Q_EMIT arrangedMoviesChanged();
    if (listChanged || selectionChanged) Q_EMIT movieSelectionChanged();
}

void Library::addMovies(const std::shared_ptr<Playlist>& playlist, const Movies& movies) {
    if (movies.empty()) return;
    playlist->movieList.isNil = false;
    playlist->movieList.insert(playlist->movieList.end(), movies.begin(), movies.end());
    playlist->updateCount();
    if (playlist == selectedPlaylist()) rearrange();
    announcePlaylist(playlist);
    Q_EMIT contentEdited();
}

void Library::removeMovies(const std::shared_ptr<Playlist>& playlist, const Movies& movies) {
    std::unordered_set<const Movie*> gone;
    for (const auto& movie : movies)
        gone.insert(movie.get());
    auto& list = playlist->movieList;
    const auto isGone = [&gone](const std::shared_ptr<Movie>& movie) { return gone.count(movie.get()) > 0; };
    const auto end = std::remove_if(list.begin(), list.end(), isGone);
    if (end == list.end()) return;
    list.erase(end, list.end());
    playlist->updateCount();
    if (playlist == selectedPlaylist()) {
        const Rows removed = rowsOfRecords(arranged_, gone);
        rearrange();
        if (!removed.empty())
            selectMovies(rowsAfterRemoval(selectedMovies_, removed.front(), arranged_.size()));
    }
    announcePlaylist(playlist);
    Q_EMIT contentEdited();
}

} // namespace daylark
