#pragma once

#include "review/Edit.h"

#include <QObject>
#include <QString>

#include <memory>
#include <vector>

class QDate;

namespace daylark {

class Alerts;
class FileStates;
class Find;
class Library;
class Movie;
class Panels;
class Playlist;
class ReviewEdits;
class SessionFiles;
struct SmartRules;

/// Making and removing playlists, dividers and items, and their order. Interface thread.
class PlaylistEditing : public QObject {
    Q_OBJECT
public:
    struct Surroundings {
        Library& library;
        SessionFiles& sessionFiles;
        FileStates& fileStates;
        ReviewEdits& edits;
        Find& find;
        Alerts& alerts;
        Panels& panels;
    };
    using Movies = std::vector<std::shared_ptr<Movie>>;
    explicit PlaylistEditing(const Surroundings& surroundings, QObject* parent = nullptr);

    void addEmptyPlaylist();
    void addEmptySmartlist();
    void addEmptyFolderlist(); ///< asks for the folder; its media come by themselves
    void addDivider();
    void addDatedDivider();
    [[nodiscard]] static QString datedDividerName(const QDate& date);
    void removeSelectedPlaylists();
    void removeSelectedPlaylistsWithoutWarning();
    void removeAllPlaylists(bool ask); ///< "Clear Session" asks
    void removeEmptyPlaylists();       ///< dividers stay
    void removeSelectedMovies();
    /// Of a folder list only items without a file, of a smartlist none: the others would come back at once.
    [[nodiscard]] bool mayRemoveSelectedMovies() const;
    /// Puts these shown items, in shown order, before that one (null: at the end) and numbers the playlist's
    /// items. Items that are not shown keep their places.
    void moveMovies(const Movies& movies, const std::shared_ptr<Movie>& before);
    /// The items of a playlist stand in this order from now on; those that it doesn't name keep their places.
    void setOrder(const std::shared_ptr<Playlist>& playlist, const Movies& order);
    void removeSorting();        ///< as the list holds them
    void bakeCurrentSortOrder(); ///< the order shown becomes the playlist's own
    /// Numbers a playlist's items 1, 2, 3 … in their own order.
    void closeRanks(const Playlist& playlist);
    void setRules(const std::shared_ptr<Playlist>& smartlist, const SmartRules& rules);
    void renamePlaylist(qsizetype row, const QString& name);

    void append(const std::shared_ptr<Playlist>& playlist, bool select);

Q_SIGNALS:
    void playlistAdded(qsizetype row); ///< scroll it into view, focus the playlist table
    void smartlistAdded();             ///< it is selected, and has no rules yet

private:
    void removeSelected(EditKind kind);
    void number(const Movies& movies); ///< 1, 2, 3 …
    void appendDivider(const QString& name);

    Surroundings surroundings_;
};

} // namespace daylark
