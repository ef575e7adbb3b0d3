#pragma once

#include "app/arrangement/Arrangement.h"
#include "app/arrangement/MovieFilter.h"
#include "app/playlists/SmartLists.h"
#include "review/ReviewStore.h"

#include <QObject>
#include <QString>

#include <memory>
#include <vector>

namespace daylark {

/// What of the session is shown: the store's playlists in display order, which are selected, the items of the
/// selected one in shown order ("arranged"), which of those are selected. What is shown is never what a playlist
/// holds: contents change through the store, and this follows, whoever changed them. Interface thread.
class Library : public QObject {
    Q_OBJECT
public:
    using Playlists = std::vector<std::shared_ptr<Playlist>>;
    using Movies = Arrangement::Movies;
    using Rows = Arrangement::Rows; ///< ascending

    explicit Library(ReviewStore& store, QObject* parent = nullptr);

    [[nodiscard]] ReviewStore& store() { return store_; }

    // The playlists.
    [[nodiscard]] const Playlists& playlists() const { return store_.playlists(); }
    /// Replaces the session; nothing selected.
    void setPlaylists(Playlists playlists, const QString& colourConfiguration = {});
    void appendPlaylist(const std::shared_ptr<Playlist>& playlist, bool select);
    void removePlaylists(const Rows& rows, EditKind kind = EditKind::step);
    void movePlaylists(const Rows& rows, qsizetype dropRow); ///< the move rule of drag and drop
    [[nodiscard]] const Rows& selectedPlaylistRows() const { return selectedPlaylists_; }
    void selectPlaylists(Rows rows); ///< rows that don't exist are left out
    void selectPlaylist(qsizetype row) { selectPlaylists({row}); }
    [[nodiscard]] std::shared_ptr<Playlist> selectedPlaylist() const; ///< the first selected; null when none

    // The items of the selected playlist, as shown.
    [[nodiscard]] const Movies& arrangedMovies() const { return arrangement_.movies(); }
    [[nodiscard]] const Rows& selectedMovieRows() const { return arrangement_.selectedRows(); }
    void selectMovies(Rows rows);
    [[nodiscard]] Movies selectedMovies() const { return arrangement_.selectedMovies(); } ///< in shown order
    /// The records that stand in these rows now: what an operation is told, before the rows change under it.
    [[nodiscard]] Movies moviesAt(const Rows& rows) const;
    [[nodiscard]] std::shared_ptr<Movie> movieAt(qsizetype row) const; ///< null beyond the end
    void selectMovie(const std::shared_ptr<Movie>& movie); ///< nothing changes when it is not shown
    /// What a playlist holds or, of a smartlist, what it answers; in its own order, whatever is filtered.
    [[nodiscard]] Movies itemsOf(const Playlist& playlist) { return smartLists_.itemsInOrder(playlist); }
    [[nodiscard]] SmartLists& smartLists() { return smartLists_; }
    /// How many items the playlist shows: the arranged ones for the selected playlist, else all of its own.
    [[nodiscard]] qsizetype shownCount(const std::shared_ptr<Playlist>& playlist) const;

    /// What of the selected playlist's items is shown; stays while others are selected. A view: nothing hidden is lost.
    void setFilter(const MovieFilter& filter);
    [[nodiscard]] const MovieFilter& filter() const { return filter_; }
    /// The selected playlist's items in shown order with those that the filter hides.
    [[nodiscard]] const Movies& unfilteredMovies() const { return arrangement_.unfiltered(); }

    /// The field that the items are shown by ("sortOrder" is the playlist's own order) and its direction;
    /// stays until set again.
    void setSort(const QString& field, bool ascending);
    [[nodiscard]] QString sortField() const { return arrangement_.sortField(); }
    [[nodiscard]] bool sortAscending() const { return arrangement_.sortAscending(); }
    void rearrange(); ///< builds the arranged list again; the selection stays on the same records

    /// Adds items to a playlist's end in one step.
    void addMovies(const std::shared_ptr<Playlist>& playlist, const Movies& movies);
    /// Items go, not records: one that stands there twice and is named once stays once.
    void removeMovies(const std::shared_ptr<Playlist>& playlist, const Movies& movies,
                      EditKind kind = EditKind::step);

Q_SIGNALS:
    void playlistsChanged();
    void playlistSelectionChanged();
    void arrangedMoviesChanged();
    /// They changed by more than what the filter shows of them: contents or order.
    void contentsChanged();
    void filterChanged();
    void movieSelectionChanged();
    void sortChanged(); ///< by which field, or which way
    /// A record's shown fields changed (thumbnail, icons, flags, texts, found state).
    void movieUpdated(const std::shared_ptr<daylark::Movie>& movie);
    void playlistUpdated(const std::shared_ptr<daylark::Playlist>& playlist);

private:
    void follow(const Edit& edit);
    void followPlaylists();
    void showSelectedPlaylist();
    void filterAgain();
    void tell(Arrangement::Changed changed);

    ReviewStore& store_;
    SmartLists smartLists_{store_}; ///< hears of changes first
    Playlists seen_; ///< the playlists that the selection is of
    Rows selectedPlaylists_;
    Arrangement arrangement_;
    MovieFilter filter_;
};

} // namespace daylark
