#include "viewer/transport/Transport.h"

#include "model/Bookmark.h"
#include "platform/UserDefaults.h"
#include "playback/run/Player.h"
#include "viewer/review/ViewerList.h"

#include <algorithm>
#include <cmath>

namespace daylark {

Transport::Transport(Player& player, ViewerList& list, UserDefaults& defaults, QObject* parent)
    : QObject(parent)
    , player_(player)
    , list_(list)
    , defaults_(defaults) {
    connect(&player_, &Player::didEnd, this, &Transport::movieDidEnd);
    connect(&player_, &Player::rateChanged, this, &Transport::stateChanged);
    connect(&player_, &Player::openFailed, this, [this] { cannotBeShown_ = true; });
    connect(&defaults_, &UserDefaults::changed, this, [this](const QString& key) {
        if (key == QLatin1String("volume")) Q_EMIT volumeChanged(volume());
    });
}

void Transport::setMovie(const std::shared_ptr<Movie>& movie) {
    movie_ = movie;
    cannotBeShown_ = false;
    startAtFirstFrame_ = false;
}

qint64 Transport::movieFrameCount() const {
    return player_.isOpen() ? player_.index().count() : movie_ ? movie_->mMovieDurationFrames : 0;
}

bool Transport::isOneFrame() const {
    return (movie_ && movie_->isOneFrame) || (player_.isOpen() && player_.index().count() == 1);
}

void Transport::playPauseMovie() {
    if (isRunning()) return pauseMovie();
    playMovieForwards();
    if (!isRunning()) Q_EMIT actionDone(); // a single frame doesn't play, but the key was pressed
}

void Transport::reset() {
    forwards_ = backwards_ = false;
    player_.setRate(0);
    Q_EMIT stateChanged();
}

void Transport::pauseMovie() {
    reset();
    Q_EMIT actionDone();
}

void Transport::playMovieForwards() {
    run(1);
}

void Transport::playMovieBackwards() {
    run(-1);
}

// Pressed again in the direction of a run it speeds up: multiplier times the rate so far and two more.
// Wanted.
void Transport::run(int direction) {
    if (!movie_ || cannotBeShown_) return; // nor would the next movie start by itself
    if (isOneFrame()) {
        if (isRunning()) pauseMovie();
        return;
    }
    const double multiplier = defaults_.doubleForKey(QStringLiteral("rateMultiplier"));
    const bool again = direction > 0 ? forwards_ : backwards_;
    forwards_ = direction > 0;
    backwards_ = !forwards_;
    player_.setRate(
        float(multiplier * (again ? double(player_.rate()) + 2.0 * direction : double(direction))));
    Q_EMIT stateChanged();
    Q_EMIT runCommanded();
    Q_EMIT actionDone();
}

// While playing, either step only stops.
void Transport::jumpToNextFrame() {
    if (!isRunning() && player_.isOpen()) {
        if (player_.currentFrame() == movieFrameCount())
            goToFirstFrame();
        else
            player_.stepForward();
    }
    pauseMovie();
}

void Transport::jumpToPreviousFrame() {
    if (!isRunning() && player_.isOpen()) {
        if (player_.currentFrame() == 1)
            goToLastFrame();
        else
            player_.stepBackward();
    }
    pauseMovie();
}

void Transport::jumpToFirstFrame() {
    if (isRunning()) reset();
    goToFirstFrame();
}

void Transport::jumpToLastFrame() {
    if (isRunning()) reset();
    goToLastFrame();
}

void Transport::goToFirstFrame() {
    if (defaults_.boolForKey(QStringLiteral("trimHandles")))
        player_.setCurrentTime(player_.index().timeOf(defaults_.integerForKey(QStringLiteral("handleHead"))));
    else
        player_.gotoBeginning();
    Q_EMIT actionDone();
}

void Transport::goToLastFrame() {
    const bool trimmed = defaults_.boolForKey(QStringLiteral("trimHandles"));
    const qint64 tail = trimmed ? defaults_.integerForKey(QStringLiteral("handleTail")) : 0;
    player_.setCurrentTime(player_.index().timeOf(movieFrameCount() - 1 - tail));
    Q_EMIT actionDone();
}

void Transport::displayNextMovie() {
    if (const qsizetype next = list_.findNextMovie(); next >= 0) {
        player_.setRate(0);
        list_.setSelectionIndex(next);
    }
}

void Transport::displayPreviousMovie() {
    if (const qsizetype previous = list_.findPreviousMovie(); previous >= 0) {
        player_.setRate(0);
        list_.setSelectionIndex(previous);
    }
}

void Transport::setRateMultiplier(const Sender& sender) {
    const QString key = QStringLiteral("rateMultiplier");
    if (sender.title == QLatin1String("Reset")) {
        defaults_.set(key, 1.0);
        const float multiplier = defaults_.floatForKey(key);
        if (player_.rate() > 0)
            player_.setRate(multiplier);
        else if (player_.rate() < 0)
            player_.setRate(-multiplier);
    } else {
        // A run backwards keeps its rate until the next play command; wanted.
        if (player_.rate() > 0) player_.setRate(0);
        if (forwards_) player_.setRate(defaults_.floatForKey(key));
    }
    Q_EMIT stateChanged();
}

// "One Shot" and "Ping-Pong" are not stored here: the control that offers them writes the preference itself.
void Transport::setRepeatMode(const Sender& sender) {
    for (const char* title : {"Loop Movie", "Play Movie Once", "Play Playlist Once", "Loop Playlist"})
        if (sender.title == QLatin1String(title)) defaults_.set(QStringLiteral("repeatType"), sender.title);
    setQTAttributes();
}

void Transport::setQTAttributes() {
    player_.setLoops(defaults_.stringForKey(QStringLiteral("repeatType")) == QLatin1String("Loop Movie"));
    player_.setVolume(volume());
}

float Transport::volume() const {
    return defaults_.floatForKey(QStringLiteral("volume"));
}

void Transport::setVolume(float volume) {
    player_.setVolume(volume);
    defaults_.set(QStringLiteral("volume"), volume);
}

void Transport::setSliderTime(double sliderValue) {
    if (isRunning()) reset();
    const SampleIndex& index = player_.index();
    player_.setCurrentTime({qint64(double(index.step / 2) + sliderValue), index.timeScale});
    Q_EMIT soughtBySlider();
    Q_EMIT actionDone();
}

void Transport::goToFrame(qint64 frame, double fraction) {
    if (!player_.isOpen()) return;
    const SampleIndex& index = player_.index();
    const qint64 n = std::clamp<qint64>(frame, 1, index.count()) - 1;
    const qint64 start = index.timeOf(n).value;
    const qint64 end = n + 1 < index.count() ? index.timeOf(n + 1).value : index.endTicks;
    player_.setCurrentTime({start + qint64(double(end - start) * fraction), index.timeScale});
}

void Transport::applyStartPosition(const MediaTime& previousMovieTime) {
    if (!movie_ || !player_.isOpen()) return;
    const QString start = startAtFirstFrame_ ? QStringLiteral("First Frame")
                                             : defaults_.stringForKey(QStringLiteral("loadFrame"));
    startAtFirstFrame_ = false;
    if (start == QLatin1String("First Frame")) {
        goToFirstFrame();
    } else if (start == QLatin1String("Second Frame")) {
        goToFirstFrame();
        player_.stepForward();
    } else if (start == QLatin1String("Middle Frame")) {
        const MediaTime duration = player_.duration();
        player_.setCurrentTime({duration.value / 2, duration.scale});
    } else if (start == QLatin1String("Current Frame")) {
        player_.setCurrentTime(previousMovieTime);
    } else if (start == QLatin1String("Last Visited Frame")) {
        player_.setCurrentTime(movie_->mLastFrameVisited);
    } else if (start == QLatin1String("First Bookmark")) {
        const auto& bookmarks = movie_->bookmarkStore;
        const auto first = std::find_if(bookmarks.begin(), bookmarks.end(),
                                        [](const auto& bookmark) { return bookmark && !bookmark->mute; });
        if (first == bookmarks.end()) return;
        if ((*first)->firstFrame > movieFrameCount())
            goToLastFrame();
        else
            goToFrame((*first)->firstFrame, 0.4); // well inside the frame, however times round
    }
}

void Transport::resumeAfterMovieChange() {
    if (!isRunning()) return;
    if (isOneFrame()) {
        pauseMovie();
        jumpToFirstFrame();
        return;
    }
    // Left at its end, as a round through the list leaves every movie, it has nothing more to run to.
    if (forwards_ && player_.currentFrame() == movieFrameCount()) goToFirstFrame();
    runAtMultiplier(forwards_ ? 1 : -1);
}

void Transport::movieDidEnd() {
    const QString repeatType = defaults_.stringForKey(QStringLiteral("repeatType"));
    // From time zero although handles are trimmed: the hold on the range brings it in at its next look.
    // Wanted.
    if (defaults_.boolForKey(QStringLiteral("trimHandles")) && repeatType == QLatin1String("Loop Movie") &&
        forwards_) {
        player_.setCurrentTime({0, 1});
        player_.setRate(defaults_.floatForKey(QStringLiteral("rateMultiplier")));
    }
    if (repeatType == QLatin1String("Play Movie Once")) {
        forwards_ = false; // only this flag; wanted
        Q_EMIT stateChanged();
    } else if (repeatType == QLatin1String("Play Playlist Once")) {
        if (list_.findNextMovie() < 0)
            playPauseMovie();
        else
            displayNextMovie();
    } else if (repeatType == QLatin1String("Loop Playlist")) {
        if (list_.findNextMovie() >= 0)
            displayNextMovie();
        else
            wrapToFirstMovie();
    } else if (repeatType == QLatin1String("One Shot") || repeatType == QLatin1String("Ping-Pong")) {
        playerItemDidReachEnd();
    }
}

void Transport::wrapToFirstMovie() {
    if (list_.count() == 0) return;
    // The label's text, not the code "907"; wanted.
    const bool skipped = list_.movies().front()->flagString == QLatin1String("Skip");
    list_.setSelectionIndex(0);
    if (skipped) return;
    if (!player_.isOpen()) { // on its way: it starts there and the run carries over
        startAtFirstFrame_ = true;
        return;
    }
    goToFirstFrame();
    if (forwards_) {
        forwards_ = false;
        playMovieForwards();
    } else if (backwards_) {
        backwards_ = false;
        playMovieBackwards();
    }
}

void Transport::runAtMultiplier(int direction) {
    forwards_ = direction > 0;
    backwards_ = !forwards_;
    player_.setRate(float(direction) * defaults_.floatForKey(QStringLiteral("rateMultiplier")));
    Q_EMIT stateChanged();
}

void Transport::playerItemDidReachEnd() {
    if (!isRunning()) return;
    const QString repeatType = defaults_.stringForKey(QStringLiteral("repeatType"));
    const bool wasForwards = forwards_;
    const MediaTime& otherEnd = wasForwards ? startTime_ : endTime_;
    if (repeatType == QLatin1String("One Shot")) {
        movieReachedEnd_ = true;
        reset();
    } else if (repeatType == QLatin1String("Ping-Pong")) {
        runAtMultiplier(wasForwards ? -1 : 1);
    } else if (repeatType == QLatin1String("Loop Movie")) {
        player_.setCurrentTime(otherEnd);
        runAtMultiplier(wasForwards ? 1 : -1);
    } else if (repeatType == QLatin1String("Loop Playlist")) {
        movieReachedEnd_ = true;
        reset();
        if (wasForwards && list_.selectionIndex() + 1 >= list_.count()) return;
        player_.setCurrentTime(otherEnd);
        if (!wasForwards) player_.stepBackward();
        wasForwards ? playMovieForwards() : playMovieBackwards();
    }
}

} // namespace daylark
