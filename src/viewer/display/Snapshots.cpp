#include "viewer/display/Snapshots.h"

#include "model/Movie.h"
#include "platform/Panels.h"
#include "preferences/Preferences.h"
#include "viewer/review/ViewerList.h"
#include "viewer/transport/TimeDisplay.h"

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

} // namespace

Snapshots::Snapshots(Preferences& preferences, Panels& panels, ViewerList& list, TimeDisplay& time,
                     QObject* parent)
    : QObject(parent)
    , preferences_(preferences)
    , panels_(panels)
    , list_(list)
    , time_(time) {}

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
            base = QFileInfo(movie->filenameString).completeBaseName();
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
        return name.arg(base, fourDigits(time_.currentFrameNumber()), extension);
    if (format == SnapshotNameFormat::snapshotNumberLast)
        return name.arg(base, fourDigits(snapshotNumber_), extension);
    return name.arg(fourDigits(snapshotNumber_), base, extension);
}

// Nothing can cover a rendered picture, so there is nothing to wait for.
void Snapshots::takeTimedSnapshot() {
    takeSnapshot();
}

void Snapshots::takeSnapshot() {
    if (!area_.render || !list_.selectedMovie()) return;
    const QImage picture = area_.render(targetSize(area_.pixels(), preferences_));
    if (picture.isNull()) return;
    Q_EMIT flash();
    const SnapshotFormat format = preferences_.snapshotFileFormat();
    SavePanel panel;
    panel.title = tr("Save Snapshot As...");
    panel.prompt = tr("Save Snapshot");
    panel.proposedName = proposedName();
    if (const QString extension = extensionOf(format); !extension.isEmpty()) panel.allowedTypes = {extension};
    const QString path = panels_.runSave(panel);
    if (path.isEmpty()) return;
    ++snapshotNumber_;
    const float quality = preferences_.compressionQuality();
    // A failure stays silent: nothing interrupts a review for a still.
    writing_.run([picture, path, format, quality] { (void)writeSnapshot(picture, path, format, quality); });
}

bool writeSnapshot(const QImage& image, const QString& path, SnapshotFormat format, float quality) {
    const QString extension = extensionOf(format);
    if (extension.isEmpty()) return false;
    QImageWriter writer(path,
                        extension == QLatin1String("tif") ? QByteArrayLiteral("tiff") : extension.toLatin1());
    if (extension == QLatin1String("jpg")) writer.setQuality(std::clamp(qRound(quality * 100), 0, 100));
    return writer.write(image);
}

} // namespace daylark
