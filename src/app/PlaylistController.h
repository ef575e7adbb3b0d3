#pragma once

#include "app/arrangement/Find.h"
#include "app/files/DuplicateRemoval.h"
#include "app/files/FileStates.h"
#include "app/files/FolderLists.h"
#include "app/files/ItemFacts.h"
#include "app/files/LargeThumbnails.h"
#include "app/links/LinkCopying.h"
#include "app/links/LinkOpening.h"
#include "app/playlists/InstanceCounts.h"
#include "app/playlists/ItemTransfer.h"
#include "app/playlists/Library.h"
#include "app/adding/MediaAdding.h"
#include "app/media/BundleExport.h"
#include "app/media/MediaGathering.h"
#include "app/media/MediaReveal.h"
#include "app/program/ExportWriter.h"
#include "app/program/ManifestExport.h"
#include "app/program/NotesExport.h"
#include "app/playlists/PlaylistEditing.h"
#include "app/program/ProgressBoard.h"
#include "app/relinking/FileExistence.h"
#include "app/relinking/Relinking.h"
#include "app/sessions/SessionFiles.h"
#include "app/sessions/SessionMigration.h"
#include "app/files/Thumbnails.h"
#include "review/ReviewEdits.h"
#include "platform/Desktop.h"
#include "platform/FailedWrites.h"
#include "viewer/LibraryLink.h"
#include "viewer/MoviePlayerController.h"

#include <QObject>
#include <QStringList>

#include <memory>

namespace daylark {

/// The library and the application's delegate: a thin owner of the parts that do the work, start-up and
/// termination in their order. Made by main (or a test) with everything that it needs. Interface thread.
class PlaylistController : public QObject, public LibraryLink {
    Q_OBJECT
public:
    struct Surroundings {
        Preferences& preferences;
        Alerts& alerts;
        Panels& panels;
        Pasteboard& pasteboard;
        FileBrowser& fileBrowser;
        SystemPlaces places;
        Player& player;
        FailedWrites& failedWrites;
    };
    explicit PlaylistController(const Surroundings& surroundings, QObject* parent = nullptr);
    ~PlaylistController() override;

    /// Start-up after the preferences, which the constructor prepares: previous session, viewer, found state.
    /// Windows connect before this. `started` when the previous session is there.
    void awake();
    /// Files by `processFile`; folders become playlists, bundles are added, links are opened. Before `started` they wait.
    void openFiles(const QStringList& paths);
    /// Writes what is to be written, and waits. What a person must be told when the session could not be: where it lies now, or
    /// that it is lost. Empty when all is well.
    QString applicationWillTerminate();
    void checkToClose(); ///< a last playlist named "File From Link" goes, and the program with it

    /// Opens the viewer on the arranged items at the (first) selected one; nothing when there are none.
    void loadMovieWindow();

    [[nodiscard]] Library& library() { return library_; }
    [[nodiscard]] ReviewEdits& edits() { return edits_; }
    [[nodiscard]] ProgressBoard& progress() { return progress_; }
    [[nodiscard]] Thumbnails& thumbnails() { return thumbnails_; }
    [[nodiscard]] ItemFacts& itemFacts() { return itemFacts_; }
    [[nodiscard]] LargeThumbnails& largeThumbnails() { return largeThumbnails_; }
    [[nodiscard]] FileStates& fileStates() { return fileStates_; }
    [[nodiscard]] SessionFiles& sessionFiles() { return sessionFiles_; }
    [[nodiscard]] SessionMigration& sessionMigration() { return sessionMigration_; }
    [[nodiscard]] MediaAdding& mediaAdding() { return mediaAdding_; }
    [[nodiscard]] LinkOpening& linkOpening() { return linkOpening_; }
    [[nodiscard]] LinkCopying& linkCopying() { return linkCopying_; }
    [[nodiscard]] PlaylistEditing& playlistEditing() { return playlistEditing_; }
    [[nodiscard]] ItemTransfer& itemTransfer() { return itemTransfer_; }
    [[nodiscard]] DuplicateRemoval& duplicateRemoval() { return duplicateRemoval_; }
    [[nodiscard]] Find& find() { return find_; }
    [[nodiscard]] NotesExport& notesExport() { return notesExport_; }
    [[nodiscard]] ManifestExport& manifestExport() { return manifestExport_; }
    [[nodiscard]] FileExistence& fileExistence() { return fileExistence_; }
    [[nodiscard]] Relinking& relinking() { return relinking_; }
    [[nodiscard]] MediaGathering& mediaGathering() { return mediaGathering_; }
    [[nodiscard]] BundleExport& bundleExport() { return bundleExport_; }
    [[nodiscard]] MediaReveal& mediaReveal() { return mediaReveal_; }
    [[nodiscard]] MoviePlayerController& playerWindow() { return playerWindow_; }
    [[nodiscard]] Preferences& preferences() { return surroundings_.preferences; }
    [[nodiscard]] Pasteboard& pasteboard() { return surroundings_.pasteboard; }
    [[nodiscard]] FileBrowser& fileBrowser() { return surroundings_.fileBrowser; }
    [[nodiscard]] FailedWrites& failedWrites() { return surroundings_.failedWrites; }
    [[nodiscard]] bool mHidePlaylistWindow() const { return mHidePlaylistWindow_; }

    void setFlagOfSelectedMovies(const Sender& sender); ///< the tag's flag onto the selected items
    void openLinksOfPasteboard();

    // LibraryLink
    void viewerShowsMovie(qsizetype index) override;
    void viewerReordered() override;
    void saveTempSession() override;
    void bringLibraryToFront() override;
    [[nodiscard]] Work workBegins(const QString& title, const QString& text) override;
    void workAdvances(int id, qint64 done, qint64 total) override;
    void workEnds(int id) override;

Q_SIGNALS:
    void started();
    void libraryToFront();
    void libraryHidden(); ///< the viewer plays and the preference hides the library
    void viewerToClose(); ///< its window, as by its own button
    void namesLeftOut(const QString& text); ///< files that cannot be opened under any text, said in one line
    void terminate();     ///< close the program on the next turn of the loop

private:
    void connectParts();
    void sessionIsThere(bool restored);
    void selectLastReviewed();
    void showPlace(const ReviewPlace& place);
    void probeWhatWasLeft();
    [[nodiscard]] QString rescueSession();
    [[nodiscard]] Library::Movies moviesForViewer();

    Surroundings surroundings_;
    ReviewEdits edits_;
    Library library_{edits_.store()};
    InstanceCounts instanceCounts_{edits_.store()};
    ProgressBoard progress_;
    const std::shared_ptr<StillColours> stillColours_ = std::make_shared<StillColours>();
    Thumbnails thumbnails_;
    LargeThumbnails largeThumbnails_;
    ItemFacts itemFacts_;
    FileStates fileStates_;
    SessionFiles sessionFiles_;
    SessionMigration sessionMigration_;
    MediaAdding mediaAdding_;
    LinkOpening linkOpening_;
    LinkCopying linkCopying_;
    FolderLists folderLists_;
    Find find_;
    PlaylistEditing playlistEditing_;
    ItemTransfer itemTransfer_;
    DuplicateRemoval duplicateRemoval_;
    ExportWriter exportWriter_;
    NotesExport notesExport_;
    ManifestExport manifestExport_;
    FileExistence fileExistence_;
    Relinking relinking_;
    MediaGathering mediaGathering_;
    BundleExport bundleExport_;
    MediaReveal mediaReveal_;
    MoviePlayerController playerWindow_;
    std::weak_ptr<Playlist> viewerPlaylist_; ///< whose items the viewer goes through
    QStringList waitingFiles_;
    bool started_ = false;
    bool mHidePlaylistWindow_ = false;
};

} // namespace daylark
