#include "viewer/display/Snapshots.h"

#include "model/Movie.h"
#include "platform/Panels.h"
#include "platform/UserDefaults.h"
#include "viewer/transport/TimeDisplay.h"
#include "viewer/review/ViewerList.h"

#include <QFileInfo>
#include <QImageWriter>

#include <algorithm>

namespace daylark {

namespace {

QString extensionOf(const QString& format) {
    if (format == QLatin1String("JPEG")) return QStringLiteral("jpg");
    if (format == QLatin1String("PNG")) return QStringLiteral("png");
    if (format == QLatin1String("TIFF")) return QStringLiteral("tif");
    return {};
}

} // namespace

Snapshots::Snapshots(UserDefaults& defaults, Panels& panels, ViewerList& list, TimeDisplay& time,
                     QObject* parent)
    : QObject(parent)
    , defaults_(defaults)
    , panels_(panels)
    , list_(list)
    , time_(time) {
    writing_.setMaxThreadCount(1);
}

Snapshots::~Snapshots() {
    writing_.waitForDone();
}

QSize Snapshots::targetSize(const QSize& area, const UserDefaults& defaults) {
    const QString scale = defaults.stringForKey(QStringLiteral("snapshotImageScale"));
    QSize size = area;
    if (scale == QLatin1String("Half Window Size"))
        size = {int(area.width() * 0.5), int(area.height() * 0.5)};
    if (scale == QLatin1String("Quarter Window Size"))
        size = {int(area.width() * 0.25), int(area.height() * 0.25)};
    if (scale == QLatin1String("Set Width (maintains window ratio)") && !area.isEmpty()) {
        const int width = defaults.integerForKey(QStringLiteral("snapshotWidth"));
        size = {width, int(width / (double(area.width()) / area.height()))};
    }
    constexpr int most = 32767; // what image files and painters can hold
    return size.expandedTo({1, 1}).boundedTo({most, most});
}

QString Snapshots::proposedName() const {
    const QString source = defaults_.stringForKey(QStringLiteral("snapshotNameSource"));
    QString base;
    if (source == QLatin1String("Same As Source")) {
        if (const auto movie = list_.selectedMovie())
            base = QFileInfo(movie->filenameString).completeBaseName();
    } else if (source == QLatin1String("User Defined")) {
        base = defaults_.stringForKey(QStringLiteral("snapshotName"));
    }
    base.replace(u' ', u'_');
    const auto fourDigits = [](qint64 number) {
        return QStringLiteral("%1").arg(number, 4, 10, QLatin1Char('0'));
    };
    const QString extension = extensionOf(defaults_.stringForKey(QStringLiteral("snapshotFileFormat")));
    const QString format = defaults_.stringForKey(QStringLiteral("snapshotFilenameFormat"));
    const QString name = QStringLiteral("%1.%2.%3");
    if (format == QLatin1String("filename.frameNumber.ext"))
        return name.arg(base, fourDigits(time_.currentFrameNumber()), extension);
    if (format == QLatin1String("filename.snapshotNumber.ext"))
        return name.arg(base, fourDigits(snapshotNumber_), extension);
    return name.arg(fourDigits(snapshotNumber_), base, extension);
}

// Nothing can cover a rendered picture, so there is nothing to wait for.
void Snapshots::takeTimedSnapshot() {
    takeSnapshot();
}

void Snapshots::takeSnapshot() {
    if (!area_.render || !list_.selectedMovie()) return;
    const QImage picture = area_.render(targetSize(area_.pixels(), defaults_));
    if (picture.isNull()) return;
    Q_EMIT flash();
    const QString format = defaults_.stringForKey(QStringLiteral("snapshotFileFormat"));
    SavePanel panel;
    panel.title = QStringLiteral("Save Snapshot As...");
    panel.prompt = QStringLiteral("Save Snapshot");
    panel.proposedName = proposedName();
    if (const QString extension = extensionOf(format); !extension.isEmpty()) panel.allowedTypes = {extension};
    const QString path = panels_.runSave(panel);
    if (path.isEmpty()) return;
    ++snapshotNumber_;
    const float quality = defaults_.floatForKey(QStringLiteral("compressionQuality"));
    writing_.start([this, picture, path, format, quality] {
        const bool whole = writeSnapshot(picture, path, format, quality);
        QMetaObject::invokeMethod(
            this, [this, whole] { Q_EMIT written(whole); }, Qt::QueuedConnection);
    });
}

bool writeSnapshot(const QImage& image, const QString& path, const QString& format, float quality) {
    const QString extension = extensionOf(format);
    if (extension.isEmpty()) return false;
    QImageWriter writer(path,
                        extension == QLatin1String("tif") ? QByteArrayLiteral("tiff") : extension.toLatin1());
    if (extension == QLatin1String("jpg")) writer.setQuality(std::clamp(qRound(quality * 100), 0, 100));
    return writer.write(image);
}

} // namespace daylark
