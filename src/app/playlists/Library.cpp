#include "app/playlists/Library.h"

#include "model/MoveRule.h"
#include "review/RecordFields.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>
#include <utility>

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

Library::Library(ReviewStore& store, QObject* parent)
    : QObject(parent)
    , store_(store) {
    connect(&store_, &ReviewStore::applied, this, &Library::follow);
    connect(&smartLists_, &SmartLists::answered, this, [this](const std::shared_ptr<Playlist>& playlist) {
        if (playlist == selectedPlaylist()) rearrange();
        Q_EMIT playlistUpdated(playlist);
    });
}

// The playlists.

void Library::setPlaylists(Playlists playlists, const QString& colourConfiguration) {
    for (const auto& playlist : playlists)
        playlist->updateCount();
    store_.replaceSession(std::move(playlists), colourConfiguration);
    seen_ = store_.playlists();
    selectedPlaylists_.clear();
    Q_EMIT playlistsChanged();
    showSelectedPlaylist();
}

void Library::appendPlaylist(const std::shared_ptr<Playlist>& playlist, bool select) {
    playlist->updateCount();
    store_.insertPlaylists(qsizetype(playlists().size()), {playlist}, {tr("Add Playlist")});
    followPlaylists();
    if (select) selectPlaylist(qsizetype(playlists().size()) - 1);
}

void Library::removePlaylists(const Rows& rows, EditKind kind) {
    const Rows removed = existingRows(rows, playlists().size());
    if (removed.empty()) return;
    Playlists rest = playlists();
    for (auto row = removed.rbegin(); row != removed.rend(); ++row)
        rest.erase(rest.begin() + *row);
    store_.setPlaylists(rest, {removed.size() == 1 ? tr("Remove Playlist") : tr("Remove Playlists"), kind});
    followPlaylists();
}

void Library::movePlaylists(const Rows& rows, qsizetype dropRow) {
    Playlists moved = playlists();
    moveRows(moved, existingRows(rows, moved.size()), dropRow);
    store_.setPlaylists(moved, {tr("Order of Playlists")});
    followPlaylists();
}

/// The selection stays on its playlists; when all of them went, the one that took the first one's place is
/// selected.
void Library::followPlaylists() {
    const Playlists before = std::exchange(seen_, store_.playlists());
    if (before == seen_) return;
    const auto selected = recordsAtRows(before, selectedPlaylists_);
    const auto shown = selectedPlaylists_.empty() ? nullptr : before[size_t(selectedPlaylists_.front())];
    const std::unordered_set<std::shared_ptr<Playlist>> now(seen_.begin(), seen_.end());
    const auto gone = std::find_if(before.begin(), before.end(),
                                   [&now](const auto& playlist) { return !now.contains(playlist); });
    Rows rows = rowsOfRecords(seen_, selected);
    if (!selected.empty() && gone != before.end())
        rows = rowsAfterRemoval(std::move(rows), gone - before.begin(), seen_.size());
    selectedPlaylists_ = std::move(rows);
    Q_EMIT playlistsChanged();
    if (shown && selectedPlaylist() == shown && selectedPlaylists_.size() == selected.size())
        Q_EMIT playlistSelectionChanged();
    else
        showSelectedPlaylist(); // of several selected another one stands first now, or none
}

void Library::selectPlaylists(Rows rows) {
    rows = existingRows(std::move(rows), playlists().size());
    if (rows == selectedPlaylists_) return;
    selectedPlaylists_ = std::move(rows);
    for (const qsizetype row : selectedPlaylists_)
        playlists()[size_t(row)]->hasBeenVisited = true;
    showSelectedPlaylist();
}

// What others did.

void Library::follow(const Edit& edit) {
    const ReviewRecords& records = store_.records();
    std::vector<std::shared_ptr<Movie>> movies;
    std::vector<std::shared_ptr<Playlist>> lists;
    bool playlistsMoved = false, itemsMoved = false, filterConcerned = false;
    const auto note = [](auto& noted, const auto& record) {
        if (record && (noted.empty() || noted.back() != record)) noted.push_back(record);
    };
    for (const Change& change : edit.changes) {
        if (change.isWholeRecord()) continue;
        playlistsMoved |= change.record == sessionRecord && change.field == fields::playlists;
        const auto record = records.record(change.record);
        if (const auto playlist = std::dynamic_pointer_cast<Playlist>(record)) {
            if (change.field == fields::movieList) playlist->updateCount();
            itemsMoved |= playlist == selectedPlaylist() &&
                          (change.field == fields::movieList || change.field == QLatin1String("smartRules"));
            note(lists, playlist);
        } else if (std::dynamic_pointer_cast<Bookmark>(record)) {
            note(movies, records.ownerOf(change.record));
        } else {
            note(movies, std::dynamic_pointer_cast<Movie>(record));
            itemsMoved |= change.field == QLatin1String("sortOrder");
            filterConcerned |= filter_.isOn() && MovieFilter::looksAt(change.field);
        }
    }
    if (playlistsMoved) followPlaylists();
    if (itemsMoved)
        rearrange();
    else if (filterConcerned)
        filterAgain();
    for (const auto& playlist : lists)
        Q_EMIT playlistUpdated(playlist);
    for (const auto& movie : movies)
        Q_EMIT movieUpdated(movie);
}

void Library::showSelectedPlaylist() {
    Q_EMIT playlistSelectionChanged();
    rearrange();
}

std::shared_ptr<Playlist> Library::selectedPlaylist() const {
    if (selectedPlaylists_.empty()) return nullptr;
    const auto row = size_t(selectedPlaylists_.front());
    return row < playlists().size() ? playlists()[row] : nullptr;
}

void Library::selectMovies(Rows rows) {
    if (arrangement_.select(std::move(rows))) Q_EMIT movieSelectionChanged();
}

void Library::selectMovie(const std::shared_ptr<Movie>& movie) {
    const Rows rows = arrangement_.rowsOf(*movie);
    if (!rows.empty()) selectMovies({rows.front()});
}

Library::Movies Library::moviesAt(const Rows& rows) const {
    Movies movies;
    movies.reserve(rows.size());
    for (const qsizetype row : rows)
        if (auto movie = movieAt(row)) movies.push_back(std::move(movie));
    return movies;
}

std::shared_ptr<Movie> Library::movieAt(qsizetype row) const {
    return row >= 0 && size_t(row) < arrangedMovies().size() ? arrangedMovies()[size_t(row)] : nullptr;
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
    const bool numbered = !playlist || !(playlist->asksRules() || playlist->isType(playlistType::folder));
    const Movies before = arrangement_.unfiltered();
    const Arrangement::Changed changed =
        arrangement_.show(playlist ? smartLists_.itemsOf(*playlist) : Movies(),
                          numbered ? Arrangement::OwnOrder::by_number : Arrangement::OwnOrder::as_given);
    tell(changed);
    if (before != arrangement_.unfiltered()) Q_EMIT contentsChanged();
}

void Library::setFilter(const MovieFilter& filter) {
    if (filter == filter_) return;
    filter_ = filter;
    arrangement_.setFilter(filter.isOn() ? [filter](const Movie& movie) { return filter.shows(movie); }
                                         : Arrangement::Filter());
    filterAgain();
    Q_EMIT filterChanged();
}

void Library::filterAgain() {
    tell(arrangement_.filterAgain());
}

void Library::tell(Arrangement::Changed changed) {
    if (changed.list) Q_EMIT arrangedMoviesChanged();
    if (changed.list || changed.selection) Q_EMIT movieSelectionChanged();
}

// Contents.

void Library::addMovies(const std::shared_ptr<Playlist>& playlist, const Movies& movies) {
    if (movies.empty()) return;
    store_.insertMovies(playlist, qsizetype(playlist->movieList.size()), movies,
                        {movies.size() == 1 ? tr("Add Item") : tr("Add %1 Items").arg(movies.size())});
    playlist->updateCount();
    if (playlist == selectedPlaylist()) rearrange();
}

void Library::removeMovies(const std::shared_ptr<Playlist>& playlist, const Movies& movies, EditKind kind) {
    std::unordered_set<const Movie*> gone;
    std::unordered_map<const Movie*, size_t> times;
    for (const auto& movie : movies) {
        gone.insert(movie.get());
        ++times[movie.get()];
    }
    // Of a record that stands there several times as many go as are named, the last ones first.
    ObjectList<Movie> rest = playlist->movieList;
    std::reverse(rest.begin(), rest.end());
    const auto isNamed = [&times](const auto& movie) {
        const auto named = times.find(movie.get());
        return named != times.end() && named->second > 0 && named->second-- > 0;
    };
    if (std::erase_if(rest, isNamed) == 0) return;
    std::reverse(rest.begin(), rest.end());
    const bool shown = playlist == selectedPlaylist();
    const Rows removed = shown ? rowsOfRecords(arrangedMovies(), gone) : Rows();
    store_.setMovies(playlist, rest,
                     {movies.size() == 1 ? tr("Remove Item") : tr("Remove %1 Items").arg(movies.size()), kind});
    playlist->updateCount();
    if (!shown) return;
    rearrange();
    if (!removed.empty())
        selectMovies(rowsAfterRemoval(selectedMovieRows(), removed.front(), arrangedMovies().size()));
}

} // namespace daylark
