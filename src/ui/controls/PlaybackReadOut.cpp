#include "ui/controls/PlaybackReadOut.h"

#include "playback/run/Player.h"
#include "preferences/Preferences.h"
#include "ui/picture/PictureView.h"

#include <QEvent>

namespace daylark {

namespace {

constexpr int readOutIntervalMs = 500;

QString megabytes(qint64 bytes) {
    return QString::number(bytes >> 20);
}

} // namespace

PlaybackReadOut::PlaybackReadOut(const Player& player, PictureView& picture, const Preferences& preferences,
                                 QObject* parent)
    : QObject(parent)
    , player_(player)
    , picture_(picture)
    , preferences_(preferences) {
    timer_.setInterval(readOutIntervalMs);
    connect(&timer_, &QTimer::timeout, this, &PlaybackReadOut::show);
    connect(&preferences.displayPlaybackStatistics, &PreferenceItem::changed, this, &PlaybackReadOut::follow);
    connect(&picture, &PictureView::rendererChanged, this, [this] {
        if (timer_.isActive()) show();
    });
    picture.installEventFilter(this);
    follow();
}

bool PlaybackReadOut::eventFilter(QObject* object, QEvent* event) {
    if (object == &picture_ && (event->type() == QEvent::Show || event->type() == QEvent::Hide))
        QMetaObject::invokeMethod(this, &PlaybackReadOut::follow, Qt::QueuedConnection);
    return QObject::eventFilter(object, event);
}

void PlaybackReadOut::follow() {
    const bool wanted = preferences_.displayPlaybackStatistics();
    if (!wanted) picture_.setStatistics({});
    if (!wanted || !picture_.isVisible()) return timer_.stop();
    show();
    timer_.start();
}

void PlaybackReadOut::show() {
    picture_.setStatistics(text());
}

QString PlaybackReadOut::text() const {
    const PlayerStatistics statistics = player_.statistics();
    const QString rate =
        statistics.rateReached > 0 ? tr("%1 fps").arg(statistics.rateReached, 0, 'f', 2) : tr("standing");
    const QStringList lines{
        tr("Rate      %1").arg(rate),
        tr("Dropped   %1 of %2")
            .arg(statistics.dropped + picture_.skippedPictures())
            .arg(statistics.shown + statistics.dropped),
        tr("Cache     %1 of %2 MiB").arg(megabytes(statistics.cacheBytes), megabytes(statistics.cacheBudget)),
        tr("Decoder   %1").arg(statistics.decoder.isEmpty() ? tr("none") : statistics.decoder),
        tr("Renderer  %1").arg(picture_.rendererName()),
    };
    return lines.join(u'\n');
}

} // namespace daylark
