#pragma once

#include "base/Result.h"
#include "base/jobs/WorkQueue.h"
#include "preferences/PreferenceWords.h"

#include <QColor>
#include <QImage>
#include <QObject>
#include <QSize>
#include <QString>

#include <functional>
#include <memory>

namespace daylark {

class FailedWrites;
class Panels;
class TimeDisplay;
class Preferences;
class ViewerList;

/// Stills of the player area as it is shown: rendered anew from its layers at the wanted size, so nothing
/// covers it. Names, counter and format by the preferences; made and written on a worker. One that cannot be written is
/// among the failed writes. Owned by the viewer's controller; interface thread.
class Snapshots : public QObject {
    Q_OBJECT
public:
    using Making = std::function<QImage()>; ///< of what was shown when it was asked for; any thread
    /// The player area, its size in pixels, painted as on screen at any size.
    struct Area {
        std::function<QSize()> pixels;
        std::function<Making(QSize)> render;
        std::function<Making()> renderPicture = {}; ///< the picture alone at the movie's own size; null without one
    };
    Snapshots(Preferences& preferences, Panels& panels, ViewerList& list, TimeDisplay& time,
              FailedWrites& failedWrites, QObject* parent = nullptr);
    void setArea(Area area) { area_ = std::move(area); }

    void takeTimedSnapshot(); ///< what the command does
    void takeSnapshot();
    void takeQuietSnapshot() {}      ///< does nothing; kept for those who bound a key to it
    void setSnapshotDestination() {} ///< as above

    [[nodiscard]] int snapshotNumber() const { return snapshotNumber_; } ///< from 1 at every launch
    /// By the preferred scale, in whole pixels.
    [[nodiscard]] static QSize targetSize(const QSize& area, const Preferences& preferences);
    [[nodiscard]] QString proposedName() const;
    void waitForWriting() { writing_.wait(); }

Q_SIGNALS:
    void flash(); ///< acknowledge on the picture

private:
    struct Still {
        std::shared_ptr<const QImage> picture; ///< the worker's, which makes it
        SnapshotFormat format = SnapshotFormat::none;
        float quality = 0;
    };
    [[nodiscard]] QString askForPath(const QString& proposedName, SnapshotFormat format);
    [[nodiscard]] Making making() const;
    void write(const Still& still, const QString& path);

    Preferences& preferences_;
    Panels& panels_;
    ViewerList& list_;
    TimeDisplay& time_;
    FailedWrites& failedWrites_;
    Area area_;
    int snapshotNumber_ = 1;
    WorkQueue writing_; ///< last: waits for what is being written
};

/// Whole or not at all. `quality` 0 to 1 counts for JPEG only. Errors: no format, not writable. Any thread.
[[nodiscard]] Result<void> writeSnapshot(const QImage& image, const QString& path, SnapshotFormat format,
                                 float quality);

} // namespace daylark
