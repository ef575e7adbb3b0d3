#include "viewer/transport/PlaybackRange.h"

#include "platform/Alerts.h"
#include "playback/run/Player.h"
#include "preferences/Preferences.h"
#include "viewer/CurrentMovie.h"
#include "viewer/transport/Transport.h"

#include <QScopedValueRollback>

namespace daylark {

namespace {

constexpr double wellInside = 0.3; // of a frame

} // namespace

PlaybackRange::PlaybackRange(CurrentMovie& current, Player& player, Transport& transport,
                             Preferences& preferences, Alerts& alerts, QObject* parent)
    : QObject(parent)
    , player_(player)
    , transport_(transport)
    , preferences_(preferences)
    , alerts_(alerts) {
    current.handTo(this, &PlaybackRange::setMovie);
    // Other handles mean nothing to a bookmark's loop, which so goes on.
    const auto handleChanged = [this] {
        if (storing_ == 0 && preferences_.trimHandles()) setPlaybackRange();
    };
    connect(&preferences_.handleHead, &PreferenceItem::changed, this, handleChanged);
    connect(&preferences_.handleTail, &PreferenceItem::changed, this, handleChanged);
    connect(&preferences_.trimHandles, &PreferenceItem::changed, this, [this] {
        if (storing_ == 0) setPlaybackRange();
    });
    connect(this, &PlaybackRange::changed, this, &PlaybackRange::handToPlayer);
    connect(&preferences_.exactLoops, &PreferenceItem::changed, this, &PlaybackRange::handToPlayer);
    connect(&preferences_.repeatType, &PreferenceItem::changed, this, &PlaybackRange::handToPlayer);
    connect(&player_, &Player::rateChanged, this, &PlaybackRange::bringIn);
}

void PlaybackRange::setMovie(const std::shared_ptr<Movie>& movie) {
    movie_ = movie;
    endLoop();
}

/// The sample index's: what is marked on its last frame is its last frame, whatever a file claims.
qint64 PlaybackRange::frameCount() const {
    return movie_ && player_.isOpen() ? player_.index().count() : 0;
}

template<class T>
void PlaybackRange::store(Preference<T>& preference, const T& value) {
    const QScopedValueRollback<int> own(storing_, storing_ + 1);
    preference.set(value);
}

void PlaybackRange::markInPoint() {
    if (frameCount() == 0) return;
    store(preferences_.handleHead, int(player_.currentFrame() - 1));
    store(preferences_.trimHandles, true);
    setPlaybackRange();
}

void PlaybackRange::markOutPoint() {
    if (frameCount() == 0) return;
    store(preferences_.handleTail, int(frameCount() - player_.currentFrame()));
    store(preferences_.trimHandles, true);
    setPlaybackRange();
}

void PlaybackRange::resetHandles() {
    store(preferences_.handleHead, preferences_.defaultHandleHead());
    store(preferences_.handleTail, preferences_.defaultHandleTail());
    setPlaybackRange();
}

void PlaybackRange::toggleTrimHandles() {
    store(preferences_.trimHandles, !preferences_.trimHandles());
    setPlaybackRange();
}

void PlaybackRange::setPlaybackRange() {
    apply(Occasion::asked);
}

void PlaybackRange::applyToMovieShown() {
    apply(Occasion::movieShown);
}

void PlaybackRange::apply(Occasion occasion) {
    if (frameCount() == 0) return; // nothing on screen to apply it to; the next movie shown gets it
    if (!preferences_.trimHandles()) return endLoop();
    Q_EMIT bookmarkLoopsOffNeeded();
    const qint64 head = preferences_.handleHead();
    const qint64 tail = preferences_.handleTail();
    const qint64 frames = frameCount();
    if (head + tail >= frames) {
        store(preferences_.trimHandles, false);
        endLoop();
        return warnOfLongHandles(occasion);
    }
    firstFrameForLoop_ = head + 1;
    lastFrameForLoop_ = frames - tail;
    loopMovie_ = true;
    setBars({firstFrameForLoop_, lastFrameForLoop_, frames, true});
}

/// Later, because it waits for an answer and the range may be applied in the middle of anything.
void PlaybackRange::warnOfLongHandles(Occasion occasion) {
    const QString message = tr("Handles are longer than movie");
    if (occasion == Occasion::movieShown && preferences_.longHandlesInPassing()) {
        Q_EMIT handlesTooLong(message);
        return;
    }
    QMetaObject::invokeMethod(
        this,
        [this, message] {
            const int code = alerts_.run({message,
                                          tr("Choose another value"),
                                          {},
                                          AlertStyle::warning});
            alertDidEnd(
                code,
                {}); // without a context its one button changes nothing further: the range stays as typed
        },
        Qt::QueuedConnection);
}

void PlaybackRange::alertDidEnd(int returnCode, const QString& contextInfo) {
    if (returnCode != Alerts::firstButton) {
        resetHandles();
    } else if (contextInfo == QLatin1String("Handles Alert")) {
        store(preferences_.trimHandles, false);
        setPlaybackRange();
    }
}

// A frame before the end, not at it, so that a look a second does not miss it. Wanted; where the player itself
// turns at the end, a look that falls there must not cut the last frames off.
void PlaybackRange::holdRange() {
    if (isExact()) return bringIn();
    if (!loopMovie_ || !player_.isOpen()) return;
    const qint64 frame = player_.currentFrame();
    if (transport_.movieIsPlayingForwards()) {
        if (frame < firstFrameForLoop_ || frame >= lastFrameForLoop_ - 1)
            transport_.goToFrame(firstFrameForLoop_, wellInside);
    } else if (transport_.movieIsPlayingBackwards()) {
        if (frame > lastFrameForLoop_ || frame <= firstFrameForLoop_ + 1)
            transport_.goToFrame(lastFrameForLoop_, wellInside);
    }
}

bool PlaybackRange::isExact() const {
    return loopMovie_ && preferences_.exactLoops();
}

/// A bookmark's loop turns; handles are the movie's ends for the time being, and what comes there is for the repeat mode
/// to say.
void PlaybackRange::handToPlayer() {
    if (!isExact()) return player_.setRange(1, 0);
    const bool ends = preferences_.trimHandles() && preferences_.repeatType() != RepeatMode::loopMovie;
    player_.setRange(firstFrameForLoop_, lastFrameForLoop_, ends ? Player::RangeEnd::ends : Player::RangeEnd::turns);
    bringIn();
}

void PlaybackRange::bringIn() {
    if (!isExact() || !player_.isOpen() || player_.rate() == 0) return;
    const qint64 frame = player_.currentFrame();
    if (frame >= firstFrameForLoop_ && frame <= lastFrameForLoop_) return;
    transport_.goToFrame(player_.rate() > 0 ? firstFrameForLoop_ : lastFrameForLoop_, wellInside);
}

void PlaybackRange::loopRange(qint64 first, qint64 last, Bars bars) {
    loopMovie_ = true;
    firstFrameForLoop_ = first;
    lastFrameForLoop_ = last;
    store(preferences_.trimHandles, false);
    if (bars == Bars::shown)
        setBars({first, last, frameCount(), true});
    else
        Q_EMIT changed();
}

void PlaybackRange::moveRange(qint64 first, qint64 last) {
    firstFrameForLoop_ = first;
    lastFrameForLoop_ = last;
    store(preferences_.trimHandles, false);
    setBars({first, last, bars_.maxValue, bars_.shown});
}

void PlaybackRange::endLoop() {
    loopMovie_ = false;
    BarState hidden = bars_;
    hidden.shown = false;
    setBars(hidden);
}

void PlaybackRange::setBars(const BarState& bars) {
    bars_ = bars;
    Q_EMIT changed();
}

} // namespace daylark
