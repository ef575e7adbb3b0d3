#pragma once

#include "base/FolderEntries.h"
#include "model/Session.h"

#include <QObject>
#include <QStringList>

#include <memory>
#include <vector>

namespace daylark {

class FailedWrites;
class FileStates;
class Library;
class Panels;
class ProgressBoard;
class SessionFiles;
class Thumbnails;
class Preferences;

/// How files get into the library: open panels, drops, folders, "open with". Folder walks and file bookmarks
/// are a worker's (sorted by path within each folder, hidden files skipped, cancellable); the items appear in one step
/// when the walk is done, then thumbnails and properties follow. Interface thread.
class MediaAdding : public QObject {
    Q_OBJECT
public:
    struct Surroundings {
        Library& library;
        Preferences& preferences;
        Panels& panels;
        SessionFiles& sessionFiles;
        ProgressBoard& progress;
        Thumbnails& thumbnails;
        FileStates& fileStates;
        FailedWrites& failedWrites;
    };
    explicit MediaAdding(const Surroundings& surroundings, QObject* parent = nullptr);
    ~MediaAdding() override;

    void addMediaFilesToSelectedPlaylist(const QStringList& paths);
    void addMediaFoldersToSelectedPlaylist(const QStringList& folders);
    void createPlaylistsWithFolders(const QStringList& folders);
    /// Bundles ("*.dlm"): a movie with its review becomes an item of the selected playlist. Of a session inside, the playlists
    /// are added behind the others, or the one playlist that is archived there. A bundle without a readable archive is skipped.
    void addDLMFilesToSelectedPlaylist(const QStringList& bundles);
    void addBundlesFromOpenDialog();
    void addMediaFromOpenDialog();
    void addFoldersFromOpenDialog();
    void processFile(const QString& path); ///< opened from the desktop or the command line
    /// Files by `processFile`; every folder becomes a playlist, a bundle is added.
    void openPaths(const QStringList& paths);
    /// A drop: on the playlist table every folder becomes a playlist and loose files go to a new one; on
    /// table or tiles they go into the selected playlist (a new one when there is none or a divider). A first
    /// file "*.dls" is imported; a bundle dropped itself is added, of one inside a folder its media.
    void dropOnPlaylists(const QStringList& paths);
    void dropOnMovies(const QStringList& paths);

    using Movies = std::vector<std::shared_ptr<Movie>>;
    [[nodiscard]] bool isBusy() const; ///< a walk is under way
    /// What a person is told of names that are no texts.
    [[nodiscard]] static QString textOf(const LeftOutNames& names);

Q_SIGNALS:
    void finished();                           ///< one request has been carried out (or cancelled)
    void namesLeftOut(const LeftOutNames& names); ///< of one request, before it is finished
    void openedFromDesktop(bool launchViewer); ///< hides the library behind the viewer when it is launched

private:
    struct Request;
    struct Group;
    void enqueue(Request request);
    void startNext();
    void requestDone(const LeftOutNames& leftOut);
    void apply(const Group& group);
    [[nodiscard]] static QString titleOf(const Group& group); ///< of the step that adds it
    void addBundle(const SessionContents& contents);
    std::shared_ptr<Playlist> targetOf(const Group& group);
    Movies addItems(const std::shared_ptr<Playlist>& playlist, const Group& group);

    class Worker;
    Surroundings surroundings_;
    std::unique_ptr<Worker> worker_;
};

} // namespace daylark
