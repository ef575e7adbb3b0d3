#include "viewer/display/Snapshots.h"

#include "model/Movie.h"
#include "platform/AtomicFile.h"
#include "platform/FailedWrites.h"
#include "platform/Panels.h"
#include "preferences/Preferences.h"
#include "viewer/review/ViewerList.h"
#include "viewer/transport/TimeDisplay.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImageWriter>

#include <algorithm>

namespace daylark {

namespace {

QString extensionOf(SnapshotFormat format) {
    switch (format) {
    case SnapshotFormat::jpeg:
        return QStringLiteral("jpg");
    case SnapshotFormat::png:
        return QStringLiteral("png");
    case SnapshotFormat::tiff:
        return QStringLiteral("tif");
    case SnapshotFormat::none:
        break;
    }
    return {};
}

/// Beside the number that is counted from 1, where the production has another.
QString productionPart(const TimeDisplay& time) {
    const FrameNumbers numbers = time.frameNumbers();
    return numbers.areOwn() ? QStringLiteral("_prod%1").arg(numbers.numberOf(time.currentFrameNumber())) : QString();
}

} // namespace

Snapshots::Snapshots(Preferences& preferences, Panels& panels, ViewerList& list, TimeDisplay& time,
                     FailedWrites& failedWrites, QObject* parent)
    : QObject(parent)
    , preferences_(preferences)
    , panels_(panels)
    , list_(list)
    , time_(time)
    , failedWrites_(failedWrites) {}

QSize Snapshots::targetSize(const QSize& area, const Preferences& preferences) {
    const SnapshotScale scale = preferences.snapshotImageScale();
    QSize size = area;
    if (scale == SnapshotScale::half) size = {int(area.width() * 0.5), int(area.height() * 0.5)};
    if (scale == SnapshotScale::quarter) size = {int(area.width() * 0.25), int(area.height() * 0.25)};
    if (scale == SnapshotScale::setWidth && !area.isEmpty()) {
        const int width = preferences.snapshotWidth();
        size = {width, int(width / (double(area.width()) / area.height()))};
    }
    constexpr int most = 32767; // what image files and painters can hold
    return size.expandedTo({1, 1}).boundedTo({most, most});
}

QString Snapshots::proposedName() const {
    const SnapshotNameSource source = preferences_.snapshotNameSource();
    QString base;
    if (source == SnapshotNameSource::sameAsSource) {
        if (const auto movie = list_.selectedMovie())
            base = movie->fileTitle();
    } else if (source == SnapshotNameSource::userDefined) {
        base = preferences_.snapshotName();
    }
    base.replace(u' ', u'_');
    const auto fourDigits = [](qint64 number) {
        return QStringLiteral("%1").arg(number, 4, 10, QLatin1Char('0'));
    };
    const QString extension = extensionOf(preferences_.snapshotFileFormat());
    const SnapshotNameFormat format = preferences_.snapshotFilenameFormat();
    const QString name = QStringLiteral("%1.%2.%3");
    if (format == SnapshotNameFormat::frameNumberLast)
        return name.arg(base, fourDigits(time_.currentFrameNumber()) + productionPart(time_), extension);
    if (format == SnapshotNameFormat::snapshotNumberLast)
        return name.arg(base, fourDigits(snapshotNumber_), extension);
    return name.arg(fourDigits(snapshotNumber_), base, extension);
}

// Nothing can cover a rendered picture, so there is nothing to wait for.
void Snapshots::takeTimedSnapshot() {
    takeSnapshot();
}

Snapshots::Making Snapshots::making() const {
    if (preferences_.snapshotImageScale() == SnapshotScale::pictureSize && area_.renderPicture)
        if (Making picture = area_.renderPicture()) return picture;
    return area_.render(targetSize(area_.pixels(), preferences_));
}

void Snapshots::takeSnapshot() {
    if (!area_.render || !list_.selectedMovie()) return;
    const auto picture = std::make_shared<QImage>();
    writing_.run([picture, make = making()] { *picture = make(); }); // a film's view takes its time; meanwhile a name is typed
    Q_EMIT flash();
    const SnapshotFormat format = preferences_.snapshotFileFormat();
    const QString path = askForPath(proposedName(), format);
    if (path.isEmpty()) return;
    ++snapshotNumber_;
    write({picture, format, preferences_.compressionQuality()}, path);
}

QString Snapshots::askForPath(const QString& proposedName, SnapshotFormat format) {
    SavePanel panel;
    panel.title = tr("Save Snapshot As...");
    panel.prompt = tr("Save Snapshot");
    panel.proposedName = proposedName;
    if (const QString extension = extensionOf(format); !extension.isEmpty()) panel.allowedTypes = {extension};
    return panels_.runSave(panel);
}

/// A failure interrupts no review: it waits at the viewer's foot.
void Snapshots::write(const Still& still, const QString& path) {
    writing_.run([this, still, path] {
        const Result<void> written = writeSnapshot(*still.picture, path, still.format, still.quality);
        WorkQueue::deliver(this, [this, still, path, written] {
            if (written) return failedWrites_.written(path);
            const auto elsewhere = [this, still, path] {
                const QString other = askForPath(QFileInfo(path).fileName(), still.format);
                if (other.isEmpty()) return;
                if (other != path) failedWrites_.written(path); // not wanted there any more
                write(still, other);
            };
            failedWrites_.failed(
                tr("Snapshot"), path, written.error().text, [this, still, path] { write(still, path); }, elsewhere);
        });
    });
}

Result<void> writeSnapshot(const QImage& image, const QString& path, SnapshotFormat format, float quality) {
    const QString extension = extensionOf(format);
    if (extension.isEmpty()) return Error{QStringLiteral("could not write %1: no format of pictures").arg(path)};
    QBuffer bytes;
    bytes.open(QIODevice::WriteOnly);
    QImageWriter writer(&bytes,
                        extension == QLatin1String("tif") ? QByteArrayLiteral("tiff") : extension.toLatin1());
    if (extension == QLatin1String("jpg")) writer.setQuality(std::clamp(qRound(quality * 100), 0, 100));
    if (!writer.write(image)) return Error{QStringLiteral("could not write %1: %2").arg(path, writer.errorString())};
    return writeFileAtomically(path, bytes.data());
}

} // namespace daylark
