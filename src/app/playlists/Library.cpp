#include "app/playlists/Library.h"

#include "model/MoveRule.h"

#include <algorithm>
#include <unordered_set>

namespace daylark {

namespace {

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
    if (arrangement_.select(std::move(rows))) Q_EMIT movieSelectionChanged();
}

void Library::selectMovie(const std::shared_ptr<Movie>& movie) {
    const Rows rows = arrangement_.rowsOf(*movie);
    if (!rows.empty()) selectMovies({rows.front()});
}

qsizetype Library::shownCount(const std::shared_ptr<Playlist>& playlist) const {
    return playlist == selectedPlaylist() ? qsizetype(arrangedMovies().size()) : qsizetype(playlist->count());
}

void Library::setSort(const QString& field, bool ascending) {
    arrangement_.setSort(field, ascending);
    rearrange();
    Q_EMIT sortChanged();
}

void Library::rearrange() {
    const auto playlist = selectedPlaylist();
    const Arrangement::Changed changed = arrangement_.show(
        playlist ? Movies(playlist->movieList.begin(), playlist->movieList.end()) : Movies());
    if (changed.list) Q_EMIT arrangedMoviesChanged();
    if (changed.list || changed.selection) Q_EMIT movieSelectionChanged();
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
        const Rows removed = rowsOfRecords(arrangedMovies(), gone);
        rearrange();
        if (!removed.empty())
            selectMovies(rowsAfterRemoval(selectedMovieRows(), removed.front(), arrangedMovies().size()));
    }
    announcePlaylist(playlist);
    Q_EMIT contentEdited();
}

} // namespace daylark
