#pragma once

#include <QObject>
#include <QString>

#include <memory>
#include <vector>

class QDate;

namespace daylark {

class Alerts;
class FileStates;
class Library;
class Playlist;
class ReviewEdits;
class SessionFiles;

/// Making and removing playlists, dividers and items, and their order. Interface thread.
class PlaylistEditing : public QObject {
    Q_OBJECT
public:
    struct Surroundings {
        Library& library;
        SessionFiles& sessionFiles;
        FileStates& fileStates;
        ReviewEdits& edits;
        Alerts& alerts;
    };
    explicit PlaylistEditing(const Surroundings& surroundings, QObject* parent = nullptr);

    void addEmptyPlaylist();
    void addDivider();
    void addDatedDivider();
    [[nodiscard]] static QString datedDividerName(const QDate& date);
    void removeSelectedPlaylists();
    void removeSelectedPlaylistsWithoutWarning();
    void removeAllPlaylists(bool ask); ///< "Clear Session" asks
    void removeSelectedMovies();
    void moveMovies(const std::vector<qsizetype>& rows, qsizetype dropRow); ///< reorder and renumber
    void renamePlaylist(qsizetype row, const QString& name);

Q_SIGNALS:
    void playlistAdded(qsizetype row); ///< scroll it into view, focus the playlist table

private:
    void append(const std::shared_ptr<Playlist>& playlist, bool select);
    void appendDivider(const QString& name);

    Surroundings surroundings_;
};

} // namespace daylark
