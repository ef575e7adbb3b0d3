#include "viewer/MoviePlayerController.h"

#include "platform/Alerts.h"
#include "platform/Desktop.h"
#include "platform/UserDefaults.h"
#include "playback/Player.h"
#include "viewer/LibraryLink.h"

#include <QStringList>

namespace daylark {

MoviePlayerController::MoviePlayerController(const Surroundings& surroundings, QObject* parent)
    : QObject(parent)
    , surroundings_(surroundings)
    , transport_(surroundings.player, list_, surroundings.defaults)
    , time_(surroundings.player, surroundings.defaults)
    , range_(surroundings.player, transport_, surroundings.defaults, surroundings.alerts)
    , bookmarks_(surroundings.player, transport_, time_, surroundings.edits, surroundings.defaults)
    , brushColour_(surroundings.defaults.colourForKey(QStringLiteral("brushColour")))
    , onscreenTextColour_(surroundings.defaults.colourForKey(QStringLiteral("onscreenTextColour"))) {
    probePool_.setMaxThreadCount(1);
    timer_.setInterval(1000);
    connect(&timer_, &QTimer::timeout, this, &MoviePlayerController::updateGUI);
    connect(&list_, &ViewerList::selectionChanged, this, [this] {
        if (open_) displayCurrentMovie();
    });
    connect(&transport_, &Transport::actionDone, &time_, &TimeDisplay::setOverlayInfoDynamic);
    connect(&transport_, &Transport::stateChanged, &time_, &TimeDisplay::setOverlayInfoStatic);
    connect(&range_, &PlaybackRange::bookmarkLoopsOffNeeded, &bookmarks_, &ViewerBookmarks::loopsOff);
    Player& player = surroundings_.player;
    connect(&player, &Player::opened, this, &MoviePlayerController::movieOpened);
    connect(&player, &Player::openFailed, this, &MoviePlayerController::movieOpenFailed);
    connect(&player, &Player::frameShown, this, &MoviePlayerController::firstPictureShown);
}

MoviePlayerController::~MoviePlayerController() {
    probeCancel_ = true;
    probePool_.waitForDone();
}

void MoviePlayerController::open(std::vector<std::shared_ptr<Movie>> movies, qsizetype selectionIndex) {
    open_ = false; // the display below is the first; what the list announces before does not load a movie
    list_.setMovies(std::move(movies), selectionIndex);
    open_ = true;
    timer_.start();
    Q_EMIT windowOpened();
    displayCurrentMovie();
}

void MoviePlayerController::storeLastFrameVisited() {
    if (mCurrentMovie_ && surroundings_.player.isOpen()) {
        previousTime_ = surroundings_.player.currentTime();
        mCurrentMovie_->mLastFrameVisited = previousTime_;
    }
}

void MoviePlayerController::leaveCurrentMovie() {
    if (!mCurrentMovie_) return;
    storeLastFrameVisited();
    bookmarks_.loopsOff();
    surroundings_.player.close();
}

// Opening takes time and happens elsewhere: the steps go on in `movieOpened`. A newer selection takes over at
// any point.
void MoviePlayerController::displayCurrentMovie() {
    leaveCurrentMovie();
    updateMovieIcons();
    mCurrentMovie_ = list_.selectedMovie();
    probeDue_ = false;
    transport_.setMovie(mCurrentMovie_);
    time_.setMovie(mCurrentMovie_);
    range_.setMovie(mCurrentMovie_);
    bookmarks_.setMovie(mCurrentMovie_);
    if (!mCurrentMovie_) {
        transport_.reset();
        Q_EMIT movieLoading(false);
        Q_EMIT movieShown();
        return;
    }
    Q_EMIT movieLoading(true);
    surroundings_.player.open(mCurrentMovie_->filepathString);
}

void MoviePlayerController::movieOpened() {
    if (!mCurrentMovie_) return;
    probeDue_ = true;
    time_.setOverlayInfoStatic();
    transport_.applyStartPosition(previousTime_);
    transport_.setQTAttributes();
    transport_.resumeAfterMovieChange();
    range_.setPlaybackRange();
    Q_EMIT movieLoading(false);
    Q_EMIT movieShown();
    if (library_) library_->viewerShowsMovie(list_.selectionIndex());
    bookmarks_.sortBookmarks();
    bookmarks_.loadActiveBookmarks();
}

void MoviePlayerController::movieOpenFailed(const QString&) {
    Q_EMIT movieLoading(false);
    transport_.reset();
    Q_EMIT movieShown();
    if (open_) Q_EMIT windowOpened(); // to the front
    const int code = surroundings_.alerts.run({QStringLiteral("File Not Found"),
                                               QStringLiteral("This file may have been renamed or deleted."),
                                               {},
                                               AlertStyle::warning});
    range_.alertDidEnd(code, QStringLiteral("File Missing Alert"));
}

// The record's properties are read anew for every movie shown, once its picture stands.
void MoviePlayerController::firstPictureShown() {
    if (!probeDue_ || !mCurrentMovie_) return;
    probeDue_ = false;
    probePool_.clear();
    probePool_.start(
        [this, path = mCurrentMovie_->filepathString, movie = std::weak_ptr<Movie>(mCurrentMovie_)] {
            auto result = std::make_shared<Result<ProbeResult>>(probeMovie(path, &probeCancel_));
            QMetaObject::invokeMethod(
                this, [this, movie, result] { probed(movie, *result); }, Qt::QueuedConnection);
        });
}

void MoviePlayerController::probed(const std::weak_ptr<Movie>& weakMovie, const Result<ProbeResult>& result) {
    const std::shared_ptr<Movie> movie = weakMovie.lock();
    if (!movie || !result) return;
    applyLegacyProperties(*movie, result->legacy);
    applyAssetProperties(*movie, result->asset); // has the last word
    if (movie == mCurrentMovie_) {
        time_.setOverlayInfoStatic();
        time_.setOverlayInfoDynamic();
    }
    Q_EMIT movieProbed(movie);
}

bool MoviePlayerController::windowShouldClose() {
    storeLastFrameVisited();
    bookmarks_.loopsOff();
    return true;
}

void MoviePlayerController::close() {
    if (!open_) return;
    updateMovieIcons();
    surroundings_.defaults.set(QStringLiteral("brushColour"), brushColour_);
    surroundings_.defaults.set(QStringLiteral("onscreenTextColour"), onscreenTextColour_);
    if (library_) library_->saveTempSession();
    transport_.reset();
    surroundings_.player.close();
    mCurrentMovie_.reset();
    probeDue_ = false;
    transport_.setMovie(nullptr);
    time_.setMovie(nullptr);
    range_.setMovie(nullptr);
    bookmarks_.setMovie(nullptr);
    // Spelled like this and read nowhere, so the real multiplier outlives the window; wanted.
    surroundings_.defaults.set(QStringLiteral("rateMultplier"), 1.0);
    open_ = false;
    timer_.stop();
    Q_EMIT windowClosed();
    if (library_) library_->bringLibraryToFront();
}

void MoviePlayerController::setFlagImage(const Sender& sender) {
    if (const auto movie = list_.selectedMovie()) surroundings_.edits.setFlag({movie}, sender.tag);
}

void MoviePlayerController::revealInFinder() {
    if (const auto movie = list_.selectedMovie()) surroundings_.fileBrowser.reveal({movie->filepathString});
}

void MoviePlayerController::copyPath() {
    if (const auto movie = list_.selectedMovie()) surroundings_.pasteboard.setText(movie->filepathString);
}

void MoviePlayerController::copyFilename() {
    if (const auto movie = list_.selectedMovie()) surroundings_.pasteboard.setText(movie->filenameString);
}

void MoviePlayerController::updateMovieIcons() {
    if (!mCurrentMovie_) return;
    mCurrentMovie_->displayNotesIcon();
    mCurrentMovie_->displayGradeIcon();
    mCurrentMovie_->displayDrawingIcon();
    mCurrentMovie_->displayBookmarkIcon();
}

void MoviePlayerController::updateGUI() {
    if (!mCurrentMovie_) return;
    if (mCurrentMovie_->mMovieHasBeenVisited) {
        time_.setOverlayInfoDynamic();
        range_.holdRange();
    }
    if (transport_.isRunning() && !mCurrentMovie_->bookmarkStore.empty()) bookmarks_.loadActiveBookmarks();
}

} // namespace daylark
