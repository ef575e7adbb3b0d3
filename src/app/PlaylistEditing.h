#pragma once

#include <QObject>
#include <QString>

#include <vector>

namespace daylark {

class Alerts;
class FileStates;
class Library;
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
    void removeSelectedPlaylists();
    void removeAllPlaylists(bool ask); ///< "Clear Session" asks
    void removeSelectedMovies();
    void moveMovies(const std::vector<qsizetype>& rows, qsizetype dropRow); ///< reorder and renumber
    void renamePlaylist(qsizetype row, const QString& name);

Q_SIGNALS:
    void playlistAdded(qsizetype row); ///< scroll it into view, focus the playlist table

private:
    Surroundings surroundings_;
};

} // namespace daylark
