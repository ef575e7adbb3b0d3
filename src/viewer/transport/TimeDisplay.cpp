#include "viewer/transport/TimeDisplay.h"

#include "playback/run/Player.h"
#include "preferences/Preferences.h"
#include "review/ReviewEdits.h"
#include "viewer/CurrentMovie.h"

#include <QLocale>

#include <cmath>

namespace daylark {

TimeDisplay::TimeDisplay(CurrentMovie& current, Player& player, ReviewEdits& edits, Preferences& preferences,
                         QObject* parent)
    : QObject(parent)
    , player_(player)
    , edits_(edits)
    , preferences_(preferences) {
    current.handTo(this, &TimeDisplay::setMovie);
    connect(&preferences_.firstFrameNumber, &PreferenceItem::changed, this, &TimeDisplay::setOverlayInfoDynamic);
    connect(&preferences_.otherFirstFrameNumber, &PreferenceItem::changed, this, &TimeDisplay::setOverlayInfoDynamic);
    connect(&edits_, &ReviewEdits::movieChanged, this,
            [this](const std::shared_ptr<Movie>& movie, const QString& field) {
                if (movie == movie_ && field == QLatin1String("firstFrameNumber")) setOverlayInfoDynamic();
            });
    connect(&player_, &Player::positionChanged, this, &TimeDisplay::setOverlayInfoDynamic);
    connect(&player_, &Player::frameShown, this, &TimeDisplay::setOverlayInfoDynamic);
}

void TimeDisplay::setMovie(const std::shared_ptr<Movie>& movie) {
    movie_ = movie;
    start_.reset();
    timecodeIsKnown_ = false;
    setOverlayInfoDynamic();
}

void TimeDisplay::setTimeCodeData(const std::optional<SmpteTime>& start) {
    start_ = start;
    timecodeIsKnown_ = true;
    setOverlayInfoDynamic();
}

qint64 TimeDisplay::currentFrameNumber() const {
    return player_.currentFrame();
}

float TimeDisplay::framesPerSecond() const {
    if (movie_ && movie_->mMovieFPS > 0) return movie_->mMovieFPS;
    const double seconds = player_.duration().seconds();
    return seconds > 0 ? float(double(player_.index().count()) / seconds) : 0.0f;
}

double TimeDisplay::sliderTime() const {
    return double(player_.currentTime().value);
}

double TimeDisplay::sliderMaximum() const {
    return player_.isOpen() ? double(player_.index().timeOf(player_.index().count() - 1).value) : 0.0;
}

qint64 TimeDisplay::tickCount() const {
    const qint64 frames = player_.index().count();
    return frames <= 239 ? frames : 0;
}

QString TimeDisplay::computeTimecodeFromFrameNumber(qint64 frame) const {
    return timecodeText(frame, framesPerSecond(), start_, movie_ ? movie_->frameStep() : 1);
}

QString TimeDisplay::timecodeWithPrefix() const {
    const QString text = computeTimecodeFromFrameNumber(currentFrameNumber());
    return start_ ? QStringLiteral("TC ") + text : text;
}

QString TimeDisplay::stripFrameNumber() const {
    if (!movie_ || !player_.isOpen()) return {};
    return counterText(currentFrameNumber());
}

QString TimeDisplay::stripFrameOfFrames() const {
    const QString number = stripFrameNumber();
    if (number.isEmpty()) return number;
    const QString own = productionText();
    return number + QStringLiteral(" / ") + counterText(player_.index().count()) +
           (own.isEmpty() ? own : QStringLiteral("   ") + own);
}

FrameNumbers TimeDisplay::frameNumbers() const {
    return movie_ ? frameNumbersOf(*movie_, preferences_.usualFirstFrameNumber(), start_, framesPerSecond()) : FrameNumbers();
}

QString TimeDisplay::productionText() const {
    return player_.isOpen() ? productionTextOf(currentFrameNumber()) : QString();
}

QString TimeDisplay::productionTextOf(qint64 frame) const {
    const FrameNumbers numbers = frameNumbers();
    return numbers.areOwn() ? tr("Prod %1").arg(numbers.numberOf(frame)) : QString();
}

QString TimeDisplay::frameAndProductionText() const {
    if (!movie_ || !player_.isOpen()) return {};
    const QString own = productionText();
    return tr("Frame %1").arg(currentFrameNumber()) + (own.isEmpty() ? own : QStringLiteral("   ") + own);
}

std::optional<qint64> TimeDisplay::frameOfEntry(const QString& text) const {
    if (!movie_ || !player_.isOpen()) return {};
    const FrameEntry entry{currentFrameNumber(), player_.index().count(), frameNumbers(),
                           framesPerSecond(),    start_,                  movie_->frameStep()};
    return entry.frameOf(text);
}

QString TimeDisplay::counterText(qint64 frame) const {
    const qint64 value = qint64(preferences_.counterStartFrame()) - 1 + frame;
    return QString::asprintf("%04lli", static_cast<long long>(value));
}

QString TimeDisplay::stripTimecode() const {
    return movie_ && player_.isOpen() ? timecodeWithPrefix() : QString();
}

QString TimeDisplay::durationText() const {
    if (!movie_) return {};
    const float probed = movie_->mMovieDurationSeconds;
    return durationTextOf(probed > 0 ? probed : float(player_.duration().seconds()));
}

void TimeDisplay::setFrameCounterToOne() {
    if (!movie_ || !player_.isOpen()) return;
    preferences_.counterStartFrame.set(qint32(2 - currentFrameNumber()));
    preferences_.displayFrameCounter.set(true);
    setOverlayInfoDynamic();
}

void TimeDisplay::setOverlayInfoStatic() {
    if (movie_) edits_.refresh(movie_, [this](Movie& movie) { movie.durationText = durationText(); });
    QLocale locale;
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    const float rate = framesPerSecond() * float(preferences_.rateMultiplier());
    QString number = locale.toString(double(rate), 'f', 3);
    while (number.endsWith(QLatin1Char('0')))
        number.chop(1);
    if (number.endsWith(locale.decimalPoint())) number.chop(locale.decimalPoint().size());
    frameRate_ = QStringLiteral("(%1fps)").arg(number);
    Q_EMIT changed();
}

void TimeDisplay::setOverlayInfoDynamic() {
    if (movie_ && player_.isOpen()) {
        // In single precision, so that long movies read as they always did.
        const float rounded = std::round(framesPerSecond());
        const auto whole = rounded > 0 ? quint64(float(currentFrameNumber() - 1) / rounded) : 0;
        const auto hours = static_cast<unsigned long>(whole / 3600 % 24);
        const auto minutes = static_cast<unsigned long>(whole / 60 % 60);
        const auto seconds = static_cast<unsigned long>(whole % 60);
        elapsed_ = hours != 0 ? QString::asprintf("%lu:%02lu:%02lu", hours, minutes, seconds)
                              : QString::asprintf("%02lu:%02lu", minutes, seconds);
        if (preferences_.displayTimecode() || preferences_.displayFrameCounter()) {
            counter_ = stripFrameNumber();
            timecode_ = timecodeWithPrefix();
        }
    }
    Q_EMIT changed();
}

} // namespace daylark
