#include "viewer/MoviePlayerController.h"

#include "media/facts/TimecodeTrack.h"
#include "platform/Alerts.h"
#include "platform/Desktop.h"
#include "playback/run/Player.h"
#include "preferences/Preferences.h"
#include "viewer/LibraryLink.h"

#include <QStringList>

namespace daylark {

namespace {

/// An added file takes the place of the movie's own sound.
MovieSound soundOf(const Movie& movie) {
    using Kind = MovieSound::Kind;
    if (movie.movieHasUserAudio())
        return {Kind::added, movie.mUserAudioTrack, movie.mUserAudioTrackBookmarkData};
    return {movie.shouldRemoveAudioTracks ? Kind::none : Kind::own, {}, {}};
}

} // namespace

MoviePlayerController::MoviePlayerController(const Surroundings& surroundings, QObject* parent)
    : QObject(parent)
    , surroundings_(surroundings)
    , transport_(surroundings.player, list_, surroundings.preferences)
    , time_(surroundings.player, surroundings.preferences)
    , range_(surroundings.player, transport_, surroundings.preferences, surroundings.alerts)
    , bookmarks_(surroundings.player, transport_, time_, range_, surroundings.edits, surroundings.alerts,
                 surroundings.preferences)
    , panels_(surroundings.preferences, surroundings.alerts)
    , drawing_({surroundings.preferences, surroundings.alerts, surroundings.edits, transport_, bookmarks_,
                panels_})
    , grade_(surroundings.edits, list_)
    , geometry_(surroundings.preferences, drawing_, panels_)
    , snapshots_(surroundings.preferences, surroundings.panels, list_, time_)
    , input_({surroundings.preferences, transport_, bookmarks_, panels_})
    , neighbours_(surroundings.player, list_, surroundings.preferences)
    , onscreenTextColour_(surroundings.preferences.onscreenTextColour()) {
    probePool_.setMaxThreadCount(1);
    timecodePool_.setMaxThreadCount(1);
    timer_.setInterval(1000);
    connect(&timer_, &QTimer::timeout, this, &MoviePlayerController::updateGUI);
    connect(&list_, &ViewerList::selectionChanged, this, [this] {
        if (open_) displayCurrentMovie();
    });
    connect(&list_, &ViewerList::reordered, this, [this] {
        if (library_) library_->viewerReordered();
        if (open_) Q_EMIT windowOpened(); // to the front
    });
    // What is stored at closing must not undo what the person chose in the preferences meanwhile.
    Preferences& preferences = surroundings_.preferences;
    connect(&preferences.onscreenTextColour, &PreferenceItem::changed, this,
            [this] { setOnscreenTextColour(surroundings_.preferences.onscreenTextColour()); });
    connect(&preferences.brushColour, &PreferenceItem::changed, this,
            [this] { setBrushColour(surroundings_.preferences.brushColour()); });
    connect(&preferences.repeatType, &PreferenceItem::changed, &transport_, &Transport::setQTAttributes);
    connect(&preferences.volume, &PreferenceItem::changed, &transport_, &Transport::setQTAttributes);
    connect(&transport_, &Transport::actionDone, &time_, &TimeDisplay::setOverlayInfoDynamic);
    connect(&transport_, &Transport::stateChanged, &time_, &TimeDisplay::setOverlayInfoStatic);
    connect(&transport_, &Transport::runCommanded, &panels_, &ViewerPanels::hideCursorUntilMouseMoves);
    connect(&panels_, &ViewerPanels::toggled, this, &MoviePlayerController::updateMovieIcons);
    connect(&range_, &PlaybackRange::bookmarkLoopsOffNeeded, &bookmarks_, &ViewerBookmarks::loopsOff);
    Player& player = surroundings_.player;
    connect(&player, &Player::opened, this, &MoviePlayerController::movieOpened);
    connect(&surroundings_.edits, &ReviewEdits::movieChanged, this, &MoviePlayerController::followMovieSound);
    connect(&player, &Player::openFailed, this, &MoviePlayerController::movieOpenFailed);
    connect(&player, &Player::frameShown, this, &MoviePlayerController::firstPictureShown);
}

MoviePlayerController::~MoviePlayerController() {
    probeCancel_ = true;
    if (timecodeCancel_) *timecodeCancel_ = true;
    timecodePool_.waitForDone();
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
    ++opening_;
    if (timecodeCancel_) *timecodeCancel_ = true;
    probeDue_ = false;
    transport_.setMovie(mCurrentMovie_);
    time_.setMovie(mCurrentMovie_);
    range_.setMovie(mCurrentMovie_);
    bookmarks_.setMovie(mCurrentMovie_);
    drawing_.setMovie(mCurrentMovie_);
    grade_.setMovie(mCurrentMovie_);
    geometry_.setMovie(mCurrentMovie_);
    if (!mCurrentMovie_) {
        transport_.reset();
        Q_EMIT movieLoading(false);
        Q_EMIT movieShown();
        return;
    }
    Q_EMIT movieLoading(true);
    openCurrentMovie();
}

/// Off the network a movie is where its file bookmark leads, wherever it was moved; the record follows.
void MoviePlayerController::openCurrentMovie() {
    Player& player = surroundings_.player;
    if (surroundings_.preferences.networkMode())
        return player.open(mCurrentMovie_->filepathString, soundOf(*mCurrentMovie_));
    fileWork_.run([this, opening = ++opening_, file = mCurrentMovie_->fileReference(false)] {
        WorkQueue::deliver(this, [this, opening, check = checkFile(file)] {
            if (opening != opening_ || !mCurrentMovie_) return; // another movie by now
            if (check.found && check.path != mCurrentMovie_->filepathString) {
                mCurrentMovie_->applyFileCheck(check);
                Q_EMIT movieProbed(mCurrentMovie_);
            }
            surroundings_.player.open(check.path, soundOf(*mCurrentMovie_));
        });
    });
}

void MoviePlayerController::movieOpened() {
    if (!mCurrentMovie_) return;
    probeDue_ = true;
    time_.setOverlayInfoStatic();
    transport_.applyStartPosition(previousTime_);
    transport_.setQTAttributes();
    transport_.resumeAfterMovieChange();
    geometry_.setConstrainViewerProportions();
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
    geometry_.setPictureSize(surroundings_.player.shownFrame().displaySize());
    loadTimeCodeData();
    probePool_.clear();
    probePool_.start(
        [this, path = mCurrentMovie_->filepathString, movie = std::weak_ptr<Movie>(mCurrentMovie_)] {
            auto result = std::make_shared<Result<ProbeResult>>(probeMovie(path, &probeCancel_));
            QMetaObject::invokeMethod(
                this, [this, movie, result] { probed(movie, *result); }, Qt::QueuedConnection);
        });
}

/// The offset of every timecode follows the first picture within a frame or two; what comes for a movie that
/// has been left is dropped.
void MoviePlayerController::loadTimeCodeData() {
    if (timecodeCancel_) *timecodeCancel_ = true;
    timecodeCancel_ = std::make_shared<CancelFlag>(false);
    timecodePool_.start([this, path = mCurrentMovie_->filepathString, cancel = timecodeCancel_] {
        if (*cancel) return;
        const std::vector<SmpteTime> samples = AVTimecodeReader(path, cancel.get()).readTimecodeSamples();
        if (samples.empty()) return;
        QMetaObject::invokeMethod(
            this,
            [this, start = samples.front(), cancel] {
                if (!*cancel) time_.setTimeCodeData(start);
            },
            Qt::QueuedConnection);
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
    surroundings_.preferences.brushColour.set(drawing_.brushColour());
    surroundings_.preferences.onscreenTextColour.set(onscreenTextColour_);
    if (library_) library_->saveTempSession();
    transport_.reset();
    neighbours_.none();
    surroundings_.player.close();
    mCurrentMovie_.reset();
    if (timecodeCancel_) *timecodeCancel_ = true;
    probeDue_ = false;
    transport_.setMovie(nullptr);
    time_.setMovie(nullptr);
    range_.setMovie(nullptr);
    bookmarks_.setMovie(nullptr);
    drawing_.setMovie(nullptr);
    grade_.setMovie(nullptr);
    geometry_.setMovie(nullptr);
    surroundings_.preferences.rateMultiplierAtClose.set(1.0);
    open_ = false;
    timer_.stop();
    Q_EMIT windowClosed();
    if (library_) library_->bringLibraryToFront();
}

void MoviePlayerController::setOnscreenTextColour(const QColor& colour) {
    if (onscreenTextColour_ == colour) return;
    onscreenTextColour_ = colour;
    Q_EMIT onscreenTextColourChanged();
}

void MoviePlayerController::setFlagImage(const Sender& sender) {
    surroundings_.edits.setFlag(list_.selectedMovies(), sender.tag);
}

void MoviePlayerController::revealInFinder() {
    QStringList paths;
    for (const auto& movie : list_.selectedMovies())
        paths << movie->filepathString;
    if (!paths.isEmpty()) surroundings_.fileBrowser.reveal(paths);
}

QString MoviePlayerController::selectedTexts(QString Movie::*field) const {
    QStringList texts;
    for (const auto& movie : list_.selectedMovies())
        texts << (*movie).*field;
    return texts.join(QLatin1Char('\n'));
}

void MoviePlayerController::copyPath() {
    if (list_.count() > 0) surroundings_.pasteboard.setText(selectedTexts(&Movie::filepathString));
}

void MoviePlayerController::copyFilename() {
    if (list_.count() > 0) surroundings_.pasteboard.setText(selectedTexts(&Movie::filenameString));
}

// What it would copy was never decided: the command stands in the menu and only looks. Wanted.
void MoviePlayerController::copyTimecode() {
    [[maybe_unused]] const size_t bookmarks = bookmarks_.bookmarks().size();
}

void MoviePlayerController::updateMovieIcons() {
    if (!mCurrentMovie_) return;
    mCurrentMovie_->displayNotesIcon();
    mCurrentMovie_->displayGradeIcon();
    mCurrentMovie_->displayDrawingIcon();
    mCurrentMovie_->displayBookmarkIcon();
}

void MoviePlayerController::followMovieSound() {
    if (mCurrentMovie_) surroundings_.player.setSound(soundOf(*mCurrentMovie_));
}

void MoviePlayerController::updateGUI() {
    if (!mCurrentMovie_) return;
    followMovieSound();
    if (mCurrentMovie_->mMovieHasBeenVisited) {
        time_.setOverlayInfoDynamic();
        range_.holdRange();
    }
    if (transport_.isRunning() && !mCurrentMovie_->bookmarkStore.empty()) bookmarks_.loadActiveBookmarks();
}

} // namespace daylark
