#include "app/PlaylistController.h"

#include "app/links/ReviewLink.h"
#include "platform/Alerts.h"
#include "playback/run/Player.h"
#include "preferences/Preferences.h"
#include "preferences/StartupCorrections.h"

#include <QDir>
#include <QFileInfo>
#include <QTimer>

#include <algorithm>
#include <unordered_set>

namespace daylark {

namespace {

QString temporarySessionPath(const SystemPlaces& places) {
    return QDir(places.applicationSupport).filePath(places.loginName + QLatin1String("_daylarkSession.dls"));
}

/// The desktop's own, beside the program's folder. Null: none is kept.
QString thumbnailFolder(const SystemPlaces& places) {
    return places.cache.isEmpty() ? QString() : QFileInfo(places.cache).dir().filePath(QStringLiteral("thumbnails"));
}

/// Before any part is made: some read preferences in their constructors.
const PlaylistController::Surroundings&
withPreferences(const PlaylistController::Surroundings& surroundings) {
    correctAtStart(surroundings.preferences);
    return surroundings;
}

} // namespace

PlaylistController::PlaylistController(const Surroundings& surroundings, QObject* parent)
    : QObject(parent)
    , surroundings_(withPreferences(surroundings))
    , thumbnails_(library_, surroundings_.preferences, progress_, surroundings_.player.sampleTables(), stillColours_)
    , largeThumbnails_(edits_, surroundings_.preferences, thumbnailFolder(surroundings_.places),
                       surroundings_.player.sampleTables(), stillColours_)
    , fileStates_(library_, surroundings_.preferences, progress_)
    , sessionFiles_({library_, surroundings_.preferences, surroundings_.alerts, surroundings_.panels,
                     surroundings_.failedWrites, temporarySessionPath(surroundings_.places)})
    , sessionMigration_({library_, surroundings_.preferences, surroundings_.alerts, sessionFiles_,
                         fileStates_, thumbnails_})
    , mediaAdding_({library_, surroundings_.preferences, surroundings_.panels, sessionFiles_, progress_,
                    thumbnails_, fileStates_, surroundings_.failedWrites})
    , linkOpening_({library_, surroundings_.alerts, progress_, thumbnails_})
    , linkCopying_(library_, surroundings_.pasteboard)
    , folderLists_({library_, surroundings_.preferences, thumbnails_, fileStates_})
    , find_(library_, surroundings_.preferences)
    , playlistEditing_({library_, sessionFiles_, fileStates_, edits_, find_, surroundings_.alerts,
                        surroundings_.panels})
    , itemTransfer_({library_, playlistEditing_, fileStates_, edits_, find_, surroundings_.alerts})
    , duplicateRemoval_(library_, edits_, surroundings_.alerts)
    , exportWriter_(surroundings_.failedWrites)
    , notesExport_({library_, surroundings_.preferences, surroundings_.alerts, surroundings_.panels, exportWriter_})
    , manifestExport_({library_, sessionFiles_, surroundings_.panels, exportWriter_})
    , fileExistence_(library_)
    , relinking_({library_, surroundings_.preferences, surroundings_.alerts, surroundings_.panels, progress_,
                  fileStates_, thumbnails_})
    , mediaGathering_({library_, surroundings_.preferences, surroundings_.alerts, surroundings_.panels, progress_,
                       surroundings_.failedWrites})
    , bundleExport_({library_, surroundings_.panels, progress_, surroundings_.failedWrites})
    , mediaReveal_(library_, surroundings_.preferences, surroundings_.fileBrowser)
    , playerWindow_({surroundings_.preferences, surroundings_.alerts, surroundings_.pasteboard,
                     surroundings_.fileBrowser, edits_, surroundings_.player, surroundings_.panels,
                     surroundings_.failedWrites}) {
    playerWindow_.setLibrary(this);
    connectParts();
}

PlaylistController::~PlaylistController() = default;

void PlaylistController::connectParts() {
    connect(&edits_.history(), &UndoHistory::moved, this, &PlaylistController::showPlace);
    // The viewer goes through the same list: it follows as long as its movie is in it.
    connect(&library_, &Library::contentsChanged, this, [this] {
        if (playerWindow_.isOpen() && playerWindow_.list().follow(moviesForViewer()))
            viewerPlaylist_ = library_.selectedPlaylist();
    });
    connect(&thumbnails_, &Thumbnails::pictureChosen, &largeThumbnails_, &LargeThumbnails::keep);
    connect(&relinking_, &Relinking::relinked, &playerWindow_, &MoviePlayerController::followFiles);
    connect(&sessionFiles_, &SessionFiles::sessionImported, this, [this] {
        fileStates_.updateAllFilePaths();
        sessionMigration_.checkMovies();
    });
    connect(&sessionMigration_, &SessionMigration::questionDismissed, this, &PlaylistController::terminate,
            Qt::QueuedConnection);
    connect(&sessionFiles_, &SessionFiles::bundleChosen, this,
            [this](const QString& bundle) { mediaAdding_.addDLMFilesToSelectedPlaylist({bundle}); });
    connect(&sessionFiles_, &SessionFiles::bringToFront, this, &PlaylistController::libraryToFront);
    connect(&itemTransfer_, &ItemTransfer::dropAccepted, this, &PlaylistController::libraryToFront);
    connect(&linkOpening_, &LinkOpening::mediaComes, this, [this] {
        Q_EMIT viewerToClose(); // a window writes down first what is being typed in it
        if (playerWindow_.isOpen() && playerWindow_.windowShouldClose()) playerWindow_.close();
    });
    const auto sayLeftOut = [this](const LeftOutNames& names) { Q_EMIT namesLeftOut(MediaAdding::textOf(names)); };
    connect(&mediaAdding_, &MediaAdding::namesLeftOut, this, sayLeftOut);
    connect(&folderLists_, &FolderLists::namesLeftOut, this, sayLeftOut);
    connect(&mediaAdding_, &MediaAdding::openedFromDesktop, this, [this](bool launchViewer) {
        mHidePlaylistWindow_ = true;
        if (launchViewer) loadMovieWindow();
    });
}

// Start-up and termination.

void PlaylistController::awake() {
    connect(&sessionFiles_, &SessionFiles::temporarySessionLoaded, this, &PlaylistController::sessionIsThere,
            Qt::SingleShotConnection);
    sessionFiles_.loadTempSession(surroundings_.preferences.loadPreviousSessionOnStartup());
}

void PlaylistController::sessionIsThere(bool restored) {
    Preferences& preferences = surroundings_.preferences;
    if (restored) sessionFiles_.setSessionTitle(preferences.sessionTitle());
    // Whether or not the session was restored; wanted.
    if (restored && !library_.playlists().empty())
        sessionFiles_.setCurrentSessionPath(preferences.sessionPath());
    else
        sessionFiles_.setPathOfOtherSession(preferences.sessionPath());
    connect(&fileStates_, &FileStates::updated, this, &PlaylistController::probeWhatWasLeft,
            Qt::SingleShotConnection);
    fileStates_.updateAllFilePaths();
    if (!library_.arrangedMovies().empty()) library_.selectMovies({0});
    if (restored && preferences.startAtLastReviewed()) selectLastReviewed();
    started_ = true;
    Q_EMIT started();
    sessionMigration_.checkMovies();
    if (!waitingFiles_.isEmpty()) openFiles(std::exchange(waitingFiles_, {}));
}

/// Where a person goes on, if it is in the playlist that they left.
void PlaylistController::selectLastReviewed() {
    const QString path = surroundings_.preferences.lastReviewedItem();
    const Library::Movies& movies = library_.arrangedMovies();
    const auto found =
        std::find_if(movies.begin(), movies.end(), [&path](const auto& movie) { return movie->filepathString == path; });
    if (!path.isEmpty() && found != movies.end()) library_.selectMovies({found - movies.begin()});
}

/// Items whose properties were never read, because the program ended first.
void PlaylistController::probeWhatWasLeft() {
    Thumbnails::Movies left;
    for (const auto& playlist : library_.playlists())
        for (const auto& movie : playlist->movieList)
            if (movie->fileSizeText.isEmpty() && movie->creatingThumbnailText.isEmpty() &&
                !movie->bookmarkStore.isNil) // older items are left alone
                left.push_back(movie);
    if (!left.empty()) thumbnails_.probeAndThumbnail(left);
}

void PlaylistController::openFiles(const QStringList& paths) {
    if (!started_) {
        waitingFiles_ += paths;
        return;
    }
    QStringList files;
    for (const QString& path : paths)
        if (isReviewLink(path))
            linkOpening_.handleURLEvent(path);
        else
            files << path;
    if (!files.isEmpty()) mediaAdding_.openPaths(files);
}

void PlaylistController::openLinksOfPasteboard() {
    linkOpening_.handleURLEvent(surroundings_.pasteboard.text());
}

QString PlaylistController::applicationWillTerminate() {
    // With the viewer still open, where its movie was left goes into the session too.
    if (playerWindow_.isOpen()) static_cast<void>(playerWindow_.windowShouldClose());
    thumbnails_.cancelAll();
    if (started_) sessionFiles_.saveTempSession(); // else the previous one still stands for what was there
    sessionFiles_.finishWriting();
    surroundings_.preferences.synchronise();
    return started_ && sessionFiles_.isInMemoryAlone() ? rescueSession() : QString();
}

/// The last resort is a folder that goes with the login.
QString PlaylistController::rescueSession() {
    const QString runtime = surroundings_.places.runtime;
    const Result<QString> rescued = runtime.isEmpty()
                                        ? Error{tr("there is no other place")}
                                        : sessionFiles_.rescueTo(runtime + QStringLiteral("/Daylark"));
    if (!rescued) return tr("The session could not be written anywhere: %1.").arg(rescued.error().text);
    return tr("The session could not be written to its own place. It lies in \"%1\" until you log out or the machine stops: "
              "copy it to a disk with room and import it.")
        .arg(*rescued);
}

void PlaylistController::checkToClose() {
    const auto& playlists = library_.playlists();
    if (playlists.empty() || playlists.back()->name != QLatin1String("File From Link")) return;
    library_.removePlaylists({qsizetype(playlists.size()) - 1});
    QTimer::singleShot(0, this, &PlaylistController::terminate);
}

// The viewer.

void PlaylistController::loadMovieWindow() {
    if (library_.arrangedMovies().empty()) return;
    const auto& rows = library_.selectedMovieRows();
    viewerPlaylist_ = library_.selectedPlaylist();
    playerWindow_.open(library_.arrangedMovies(), rows.empty() ? 0 : rows.front());
    if (surroundings_.preferences.playMovieWhenViewerLaunches())
        playerWindow_.transport().playMovieForwards();
    if (mHidePlaylistWindow_ || surroundings_.preferences.hideMainWindowWhenPlayerLaunches())
        Q_EMIT libraryHidden();
}

/// What is shown, and what the viewer goes through already: an item that the filter hides since it was flagged stays in
/// the viewer's list.
Library::Movies PlaylistController::moviesForViewer() {
    if (!library_.filter().isOn()) return library_.arrangedMovies();
    std::unordered_set<std::shared_ptr<Movie>> wanted(library_.arrangedMovies().begin(), library_.arrangedMovies().end());
    wanted.insert(playerWindow_.list().movies().begin(), playerWindow_.list().movies().end());
    Library::Movies movies;
    for (const auto& movie : library_.unfilteredMovies())
        if (wanted.contains(movie)) movies.push_back(movie);
    return movies;
}

void PlaylistController::viewerShowsMovie(qsizetype index) {
    // The viewer keeps the list that it was opened with; the library may show another by now.
    const auto& shown = playerWindow_.list().movies();
    if (index < 0 || size_t(index) >= shown.size()) return;
    surroundings_.preferences.lastReviewedItem.set(shown[size_t(index)]->filepathString);
    const Library::Rows there = rowsElsewhere(shown, {index}, library_.arrangedMovies());
    if (!there.empty()) library_.selectMovies(there);
}

// Items of the playlist that the viewer doesn't go through keep their places.
void PlaylistController::viewerReordered() {
    if (const auto playlist = viewerPlaylist_.lock())
        playlistEditing_.setOrder(playlist, playerWindow_.list().movies());
    library_.setSort(QStringLiteral("sortOrder"), true);
}

/// What a step that was taken back or done again changed is selected. Of several lists with the item, the one on
/// screen will do.
void PlaylistController::showPlace(const ReviewPlace& place) {
    const auto& playlists = library_.playlists();
    const auto holds = [&place](const std::shared_ptr<Playlist>& playlist) {
        const auto& list = playlist->movieList;
        return std::find(list.begin(), list.end(), place.movie) != list.end();
    };
    auto playlist = std::find(playlists.begin(), playlists.end(), place.playlist);
    const auto shown = library_.selectedPlaylist();
    const Library::Movies items = shown ? library_.itemsOf(*shown) : Library::Movies(); // a smartlist holds none
    const bool isShown = std::find(items.begin(), items.end(), place.movie) != items.end();
    if (playlist == playlists.end() && place.movie && !isShown)
        playlist = std::find_if(playlists.begin(), playlists.end(), holds);
    if (playlist != playlists.end()) library_.selectPlaylist(playlist - playlists.begin());
    if (place.movie) library_.selectMovie(place.movie);
}

void PlaylistController::saveTempSession() {
    sessionFiles_.saveTempSession();
}

void PlaylistController::bringLibraryToFront() {
    mHidePlaylistWindow_ = false;
    Q_EMIT libraryToFront();
}

PlaylistController::Work PlaylistController::workBegins(const QString& title, const QString& text) {
    const int id = progress_.begin({title, text, ProgressBoard::Count::untold}, 0, true);
    return {id, progress_.cancelFlag(id)};
}

void PlaylistController::workAdvances(int id, qint64 done, qint64 total) {
    progress_.advance(id, done, total);
}

void PlaylistController::workEnds(int id) {
    progress_.end(id);
}

// Commands on the selected items.

void PlaylistController::setFlagOfSelectedMovies(const Sender& sender) {
    const Library::Movies movies = library_.selectedMovies();
    if (!movies.empty()) edits_.setFlag(movies, sender.tag);
}

} // namespace daylark
