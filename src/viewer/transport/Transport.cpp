#include "viewer/transport/Transport.h"

#include "playback/run/Player.h"
#include "preferences/Preferences.h"
#include "viewer/CurrentMovie.h"
#include "viewer/review/ViewerList.h"

#include <utility>

namespace daylark {

Transport::Transport(CurrentMovie& current, Player& player, ViewerList& list, Preferences& preferences,
                     QObject* parent)
    : QObject(parent)
    , current_(current)
    , player_(player)
    , list_(list)
    , preferences_(preferences) {
    connect(&player_, &Player::didEnd, this, &Transport::movieDidEnd);
    connect(&player_, &Player::rateChanged, this, &Transport::stateChanged);
    current.handTo(this, &Transport::setMovie);
    connect(&preferences_.volume, &PreferenceItem::changed, this, [this] { Q_EMIT volumeChanged(volume()); });
}

void Transport::setMovie(const std::shared_ptr<Movie>& movie) {
    movie_ = movie;
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

// Pressed again in the direction of a run it speeds up: multiplier times the rate so far and two more:
// 1, 3, 5, as reviewers count their presses.
void Transport::run(int direction) {
    if (!movie_ || current_.state() == CurrentMovie::State::unplayable)
        return; // nor would the next movie start by itself
    if (isOneFrame()) {
        if (isRunning()) pauseMovie();
        return;
    }
    const double multiplier = preferences_.rateMultiplier();
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
    if (preferences_.trimHandles())
        player_.setCurrentTime(player_.index().timeOf(preferences_.handleHead()));
    else
        player_.gotoBeginning();
    Q_EMIT actionDone();
}

void Transport::goToLastFrame() {
    const bool trimmed = preferences_.trimHandles();
    const qint64 tail = trimmed ? preferences_.handleTail() : 0;
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
    if (sender.title == QLatin1String("Reset")) {
        preferences_.rateMultiplier.set(1.0);
        const float multiplier = float(preferences_.rateMultiplier());
        if (player_.rate() > 0)
            player_.setRate(multiplier);
        else if (player_.rate() < 0)
            player_.setRate(-multiplier);
    } else {
        // A run backwards keeps its rate until the next play command: only a forward one is set anew at once.
        if (player_.rate() > 0) player_.setRate(0);
        if (forwards_) player_.setRate(float(preferences_.rateMultiplier()));
    }
    Q_EMIT stateChanged();
}

// "One Shot" and "Ping-Pong" are not stored here: the control that offers them writes the preference itself.
void Transport::setRepeatMode(const Sender& sender) {
    const RepeatMode mode = valueOfWord<RepeatMode>(sender.title);
    if (mode != RepeatMode::oneShot && mode != RepeatMode::pingPong && mode != RepeatMode::none)
        preferences_.repeatType.set(mode);
    setQTAttributes();
}

void Transport::setQTAttributes() {
    player_.setLoops(preferences_.repeatType() == RepeatMode::loopMovie);
    player_.setVolume(volume());
}

float Transport::volume() const {
    return preferences_.volume();
}

void Transport::setVolume(float volume) {
    player_.setVolume(volume);
    preferences_.volume.set(volume);
}

void Transport::setSliderTime(double sliderValue) {
    if (isRunning()) reset();
    const SampleIndex& index = player_.index();
    player_.setCurrentTime({qint64(double(index.step / 2) + sliderValue), index.timeScale});
    Q_EMIT soughtBySlider();
    Q_EMIT actionDone();
}

void Transport::goToFrame(qint64 frame, double fraction) {
    if (player_.isOpen()) player_.setCurrentTime(timeWithin(player_.index(), frame, fraction));
}

void Transport::applyStartPosition(const StartPosition::Previous& previous) {
    if (!movie_ || !player_.isOpen()) return;
    const StartPosition start = std::exchange(startAtFirstFrame_, false)
                                    ? StartPosition::atFirstFrame(preferences_)
                                    : StartPosition(*movie_, preferences_, previous);
    if (const auto time = start.timeIn(player_.index())) player_.setCurrentTime(*time);
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
    const RepeatMode repeatType = preferences_.repeatType();
    // From time zero although handles are trimmed: the hold on the range brings it in at its next look,
    // as reviewers see it at every turn of a loop.
    if (preferences_.trimHandles() && repeatType == RepeatMode::loopMovie && forwards_) {
        player_.setCurrentTime({0, 1});
        player_.setRate(float(preferences_.rateMultiplier()));
    }
    if (repeatType == RepeatMode::playMovieOnce) {
        forwards_ = false; // only this flag: the player has stopped by itself
        Q_EMIT stateChanged();
    } else if (repeatType == RepeatMode::playPlaylistOnce) {
        if (list_.findNextMovie() < 0)
            playPauseMovie();
        else
            displayNextMovie();
    } else if (repeatType == RepeatMode::loopPlaylist) {
        if (list_.findNextMovie() >= 0)
            displayNextMovie();
        else
            wrapToFirstMovie();
    } else if (repeatType == RepeatMode::oneShot || repeatType == RepeatMode::pingPong) {
        playerItemDidReachEnd();
    }
}

void Transport::wrapToFirstMovie() {
    if (list_.count() == 0) return;
    // The label's text, not the code "907": a list that goes round has always begun at a skipped movie too.
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
    player_.setRate(float(direction) * float(preferences_.rateMultiplier()));
    Q_EMIT stateChanged();
}

void Transport::playerItemDidReachEnd() {
    if (!isRunning()) return;
    const RepeatMode repeatType = preferences_.repeatType();
    const bool wasForwards = forwards_;
    const MediaTime& otherEnd = wasForwards ? startTime_ : endTime_;
    if (repeatType == RepeatMode::oneShot) {
        movieReachedEnd_ = true;
        reset();
    } else if (repeatType == RepeatMode::pingPong) {
        runAtMultiplier(wasForwards ? -1 : 1);
    } else if (repeatType == RepeatMode::loopMovie) {
        player_.setCurrentTime(otherEnd);
        runAtMultiplier(wasForwards ? 1 : -1);
    } else if (repeatType == RepeatMode::loopPlaylist) {
        movieReachedEnd_ = true;
        reset();
        if (wasForwards && list_.selectionIndex() + 1 >= list_.count()) return;
        player_.setCurrentTime(otherEnd);
        if (!wasForwards) player_.stepBackward();
        wasForwards ? playMovieForwards() : playMovieBackwards();
    }
}

} // namespace daylark
