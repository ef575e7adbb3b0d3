#include "viewer/MoviePlayerController.h"

#include "base/jobs/Patience.h"
#include "media/facts/TimecodeTrack.h"
#include "platform/Alerts.h"
#include "platform/Desktop.h"
#include "playback/run/Player.h"
#include "preferences/Preferences.h"
#include "viewer/RunPreferences.h"
#include "viewer/LibraryLink.h"

#include <QStringList>

namespace daylark {

MoviePlayerController::MoviePlayerController(const Surroundings& surroundings, QObject* parent)
    : QObject(parent)
    , surroundings_(surroundings)
    , transport_(current_, surroundings.player, list_, surroundings.preferences)
    , time_(current_, surroundings.player, surroundings.edits, surroundings.preferences)
    , range_(current_, surroundings.player, transport_, surroundings.preferences, surroundings.alerts)
    , bookmarks_(current_, surroundings.player, transport_, time_, range_, surroundings.edits,
                 surroundings.alerts, surroundings.preferences)
    , panels_(surroundings.preferences, surroundings.alerts)
    , tools_(surroundings.preferences, panels_)
    , visibility_(surroundings.preferences, transport_, panels_)
    , drawings_({current_, surroundings.alerts, surroundings.edits, transport_, bookmarks_, tools_})
    , grade_(current_, surroundings.edits, list_)
    , geometry_(current_, surroundings.preferences, tools_, panels_)
    , colour_(current_, surroundings.player, surroundings.edits, surroundings.preferences)
    , scene_({current_, surroundings.player, geometry_, grade_, drawings_, visibility_, colour_})
    , pixels_(scene_, surroundings.preferences)
    , scopes_(scene_, transport_, panels_, surroundings.preferences)
    , snapshots_(surroundings.preferences, surroundings.panels, list_, time_, surroundings.failedWrites)
    , audio_({current_, surroundings.edits, surroundings.player, surroundings.panels, surroundings.alerts,
              surroundings.failedWrites})
    , input_({surroundings.preferences, transport_, bookmarks_, panels_, geometry_})
    , run_(current_, surroundings.edits, surroundings.preferences)
    , neighbours_(surroundings.player, list_, surroundings.preferences)
    , onscreenTextColour_(surroundings.preferences.onscreenTextColour()) {
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
    connect(&player, &Player::renewed, this, &MoviePlayerController::runRenewed);
    connect(&surroundings_.edits, &ReviewEdits::movieChanged, this, &MoviePlayerController::followMovieSound);
    connect(&surroundings_.edits.history(), &UndoHistory::moved, this, &MoviePlayerController::showPlace);
    connect(&run_, &ViewerRun::picturesCame, this, &MoviePlayerController::renewRun);
    connect(&run_, &ViewerRun::shownOtherwise, this, [this] { followFiles({currentMovie()}); });
    for (const PreferenceItem* item : std::initializer_list<const PreferenceItem*>{&preferences.missingPictures,
                                                                                   &preferences.runFrameRate})
        connect(item, &PreferenceItem::changed, this, [this] {
            if (run_.isRun()) followFiles({currentMovie()});
        });
    connect(&player, &Player::openFailed, this, &MoviePlayerController::movieOpenFailed);
    connect(&player, &Player::frameShown, this, &MoviePlayerController::firstPictureShown);
}

MoviePlayerController::~MoviePlayerController() {
    probeCancel_ = true;
    if (timecodeCancel_) *timecodeCancel_ = true;
}

void MoviePlayerController::setLibrary(LibraryLink* library) {
    library_ = library;
    audio_.setLibrary(library);
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
    if (currentMovie() && surroundings_.player.isOpen()) {
        previous_ = {surroundings_.player.currentTime(), surroundings_.player.currentFrame()};
        surroundings_.edits.refresh(currentMovie(),
                                    [this](Movie& movie) { movie.mLastFrameVisited = previous_.time; });
    }
}

void MoviePlayerController::leaveCurrentMovie() {
    if (!currentMovie()) return;
    leaveTimecode();
    storeLastFrameVisited();
    bookmarks_.loopsOff();
    surroundings_.player.close();
}

// Opening takes time and happens elsewhere: the steps go on in `movieOpened`. A newer selection takes over at
// any point.
void MoviePlayerController::displayCurrentMovie() {
    leaveCurrentMovie();
    updateMovieIcons();
    ++opening_;
    probeDue_ = false;
    current_.set(list_.selectedMovie());
    if (!currentMovie()) {
        transport_.reset();
        Q_EMIT movieLoading(false);
        Q_EMIT movieShown();
        return;
    }
    Q_EMIT movieLoading(true);
    openCurrentMovie();
}

QString MoviePlayerController::mediaOf(const Movie& movie) const {
    return movie.mediaAddress(runViewOf(surroundings_.preferences));
}

/// Off the network a movie is where its file bookmark leads, wherever it was moved; the record follows.
void MoviePlayerController::openCurrentMovie() {
    Player& player = surroundings_.player;
    if (surroundings_.preferences.networkMode())
        return player.open(mediaOf(*currentMovie()), soundOf(*currentMovie()));
    fileWork_.run([this, opening = ++opening_, file = currentMovie()->fileReference(false)] {
        const auto answer = askWithPatience<FileCheck>([file] { return checkFile(file); }, fileSystemPatience);
        WorkQueue::deliver(this, [this, opening, check = answer.value_or(FileCheck{false, file.path})] {
            if (opening != opening_ || !currentMovie()) return; // another movie by now
            if (check.found && check.path != currentMovie()->filepathString) {
                surroundings_.edits.refresh(currentMovie(),
                                            [&check](Movie& movie) { movie.applyFileCheck(check); });
                Q_EMIT movieProbed(currentMovie());
            }
            const Movie& movie = *currentMovie();
            surroundings_.player.open(mediaAddress(check.path, movie.frameRun, runViewOf(surroundings_.preferences)),
                                      soundOf(movie));
        });
    });
}

void MoviePlayerController::movieOpened() {
    if (!currentMovie()) return;
    current_.setState(CurrentMovie::State::shown);
    probeDue_ = true;
    time_.setOverlayInfoStatic();
    transport_.applyStartPosition(previous_);
    transport_.setQTAttributes();
    transport_.resumeAfterMovieChange();
    if (const qint64 frame = std::exchange(frameOfStep_, -1); frame > 0) transport_.goToFrame(frame, 0.3);
    geometry_.setConstrainViewerProportions();
    range_.applyToMovieShown();
    Q_EMIT movieLoading(false);
    Q_EMIT movieShown();
    if (library_) library_->viewerShowsMovie(list_.selectionIndex());
    bookmarks_.sortBookmarks();
    bookmarks_.loadActiveBookmarks();
}

void MoviePlayerController::followFiles(const std::vector<std::shared_ptr<Movie>>& movies) {
    if (!open_) return;
    if (std::find(movies.begin(), movies.end(), currentMovie()) == movies.end()) return neighbours_.refresh();
    frameOfStep_ = surroundings_.player.isOpen() ? surroundings_.player.currentFrame() : -1;
    displayCurrentMovie();
}

/// What is shown stays, and a run goes on: only what has changed is read anew.
void MoviePlayerController::renewRun(const std::vector<qint64>& frames) {
    if (!open_ || !currentMovie() || !surroundings_.player.isOpen()) return;
    surroundings_.player.renew(mediaOf(*currentMovie()), frames, soundOf(*currentMovie()));
}

void MoviePlayerController::runRenewed() {
    if (!currentMovie() || surroundings_.player.shownFrame().isNull()) return;
    probeDue_ = true; // it may be longer now
    firstPictureShown();
    time_.setOverlayInfoStatic();
    time_.setOverlayInfoDynamic();
    if (surroundings_.preferences.trimHandles()) range_.applyToMovieShown();
    Q_EMIT movieShown();
}

/// A step that was taken back or done again is looked at: its movie, at its frame.
void MoviePlayerController::showPlace(const ReviewPlace& place) {
    if (!open_ || !place.movie) return;
    const auto& movies = list_.movies();
    const auto found = std::find(movies.begin(), movies.end(), place.movie);
    if (found == movies.end()) return;
    if (transport_.isRunning()) transport_.pauseMovie();
    if (place.movie == currentMovie()) {
        if (place.frame > 0 && surroundings_.player.isOpen()) bookmarks_.goToFrame(place.frame);
    } else {
        frameOfStep_ = place.frame;
        list_.setSelectionIndex(found - movies.begin());
    }
}

void MoviePlayerController::movieOpenFailed(const QString& reason) {
    current_.setState(CurrentMovie::State::unplayable);
    scene_.clear(); // until then the last picture stayed
    Q_EMIT movieLoading(false);
    transport_.reset();
    Q_EMIT movieShown();
    if (open_) Q_EMIT windowOpened(); // to the front
    const bool isUnreadableRun = run_.isRun() && reason != QLatin1String("no such file");
    const int code = surroundings_.alerts.run({isUnreadableRun ? tr("Pictures Not Readable") : tr("File Not Found"),
                                               isUnreadableRun
                                                   ? tr("The pictures of this run can't be shown: %1.").arg(reason)
                                                   : tr("This file may have been renamed or deleted."),
                                               {},
                                               AlertStyle::warning});
    range_.alertDidEnd(code, QStringLiteral("File Missing Alert"));
}

// The record's properties are read anew for every movie shown, once its picture stands.
void MoviePlayerController::firstPictureShown() {
    if (!probeDue_ || !currentMovie()) return;
    probeDue_ = false;
    geometry_.setPictureSize(surroundings_.player.shownFrame().displaySize());
    loadTimeCodeData();
    probeWork_.forgetWaiting();
    probeWork_.run(
        [this, path = mediaOf(*currentMovie()), movie = std::weak_ptr<Movie>(currentMovie()),
         tables = surroundings_.player.sampleTables()] {
            auto result = std::make_shared<Result<ProbeResult>>(probeMovie(path, &probeCancel_, tables.get()));
            WorkQueue::deliver(this, [this, movie, result] { probed(movie, *result); });
        });
}

/// The offset of every timecode follows the first picture within a frame or two.
void MoviePlayerController::loadTimeCodeData() {
    if (timecodeCancel_) *timecodeCancel_ = true;
    timecodeCancel_ = std::make_shared<CancelFlag>(false);
    timecodeWork_.run([this, path = mediaOf(*currentMovie()), cancel = timecodeCancel_,
                       movie = std::weak_ptr<Movie>(currentMovie())] {
        if (*cancel) return;
        const std::optional<SmpteTime> start = firstTimecodeOf(path, cancel.get());
        WorkQueue::deliver(this, [this, start, cancel, movie] {
            const std::shared_ptr<Movie> read = *cancel ? nullptr : movie.lock();
            if (!read) return;
            bookmarks_.timecodeRead(read, start);
            if (read == currentMovie()) time_.setTimeCodeData(start);
        });
    });
}

/// The movie is left: its track is read to the end only if something marked in it waits for that.
void MoviePlayerController::leaveTimecode() {
    if (bookmarks_.waitsForTimecode()) {
        if (probeDue_) loadTimeCodeData(); // not begun yet
    } else if (timecodeCancel_) {
        *timecodeCancel_ = true;
    }
    timecodeCancel_.reset();
}

void MoviePlayerController::probed(const std::weak_ptr<Movie>& weakMovie, const Result<ProbeResult>& result) {
    const std::shared_ptr<Movie> movie = weakMovie.lock();
    if (!movie || !result) return;
    surroundings_.edits.refresh(movie, [&result](Movie& read) {
        applyLegacyProperties(read, result->legacy);
        applyAssetProperties(read, result->asset); // has the last word
        applyRun(read, result->run);
    });
    if (movie == currentMovie()) {
        scene_.refreshPlace(); // its size may be known better
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
    surroundings_.preferences.brushColour.set(tools_.brushColour());
    surroundings_.preferences.onscreenTextColour.set(onscreenTextColour_);
    if (library_) library_->saveTempSession();
    transport_.reset();
    neighbours_.none();
    surroundings_.player.close();
    previous_.frame = 0;
    leaveTimecode();
    probeDue_ = false;
    current_.set(nullptr);
    scene_.clear();
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
    QStringList names;
    for (const auto& movie : list_.selectedMovies())
        names << movie->shownName();
    if (list_.count() > 0) surroundings_.pasteboard.setText(names.join(QLatin1Char('\n')));
}

// What it would copy was never decided: the command stands in the menu and only looks. Wanted.
void MoviePlayerController::copyTimecode() {
    [[maybe_unused]] const size_t bookmarks = bookmarks_.bookmarks().size();
}

void MoviePlayerController::updateMovieIcons() {
    if (currentMovie()) surroundings_.edits.refreshIcons(currentMovie());
}

void MoviePlayerController::followMovieSound() {
    if (currentMovie()) surroundings_.player.setSound(soundOf(*currentMovie()));
}

void MoviePlayerController::updateGUI() {
    if (!currentMovie()) return;
    followMovieSound();
    if (currentMovie()->mMovieHasBeenVisited) {
        time_.setOverlayInfoDynamic();
        range_.holdRange();
    }
    if (transport_.isRunning() && !currentMovie()->bookmarkStore.empty()) bookmarks_.loadActiveBookmarks();
}

} // namespace daylark
