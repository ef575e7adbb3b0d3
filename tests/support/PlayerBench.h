#pragma once

#include "support/MovieMaker.h"
#include "picture/PictureRenderer.h"
#include "playback/run/Player.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QTemporaryDir>
#include <QTimer>

#include <functional>
#include <optional>
#include <string>

namespace daylark::bench {

/// What of a movie matters to these tests.
struct MovieWish {
    int frames = 48;
    int group = 12; ///< frames from key frame to key frame
    int bFrames = 0;
    int rateNum = 24, rateDen = 1;
};

/// A movie like that with bar codes; made once for the program, its path, or null when it cannot be made.
inline QString movie(const MovieWish& wish) {
    static const QTemporaryDir folder;
    MovieSpec spec;
    spec.path = folder.filePath(QStringLiteral("%1_%2_%3_%4_%5.mov")
                                    .arg(wish.frames)
                                    .arg(wish.group)
                                    .arg(wish.bFrames)
                                    .arg(wish.rateNum)
                                    .arg(wish.rateDen));
    if (QFileInfo::exists(spec.path)) return spec.path;
    spec.size = QSize(256, 144);
    spec.frames = wish.frames;
    spec.groupSize = wish.group;
    spec.bFrames = wish.bFrames;
    spec.rateNum = wish.rateNum;
    spec.rateDen = wish.rateDen;
    spec.encoderOptions = {{QStringLiteral("preset"), QStringLiteral("veryfast")}};
    return makeMovie(spec) ? spec.path : QString();
}

/// A clock that stands until a test turns it.
class HandClock : public PlaybackClock {
public:
    [[nodiscard]] qint64 nanoseconds() const override { return now; }
    qint64 now = 1;
};

/// Runs events until the condition holds; false when it has not come true for very long (a hang, not a
/// measure). Sleeps between events: the threads that are waited for want the processor.
inline bool waitUntil(const std::function<bool()>& condition, int limitMs = 60000) {
    QElapsedTimer time;
    time.start();
    QTimer pulse; // what becomes true on other threads may bring no event
    constexpr int pulseMs = 2;
    pulse.start(pulseMs);
    while (!condition()) {
        if (time.elapsed() > limitMs) return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
    return true;
}

/// What each thread of this program is at, for a test that found it standing still: its state and the call that it waits in
/// (by number, with what it was given).
inline std::string whereThreadsStand() {
    QByteArray text;
    const QDir tasks(QStringLiteral("/proc/self/task"));
    for (const QString& task : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const auto line = [&](const char* name) {
            QFile file(tasks.filePath(task + QLatin1Char('/') + QLatin1String(name)));
            return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed() : QByteArray("?");
        };
        const QByteArray stat = line("stat");
        text += "thread " + task.toLatin1() + ' ' + line("comm") + ' ' + stat.mid(stat.lastIndexOf(')') + 2, 1) + " in " +
                line("wchan") + ", call " + line("syscall") + '\n';
    }
    return text.toStdString();
}

/// The frame number (from 1) that is drawn into the picture on screen; -1 when none can be read.
inline qint64 pictureNumber(const Player& player) {
    const VideoFrame frame = player.shownFrame();
    if (frame.isNull()) return -1;
    const std::optional<int> number = readBarCode(renderFrame(frame));
    return number ? *number : -1;
}

/// Waits for the exact picture and gives what is drawn into it.
inline qint64 settledPicture(const Player& player) {
    return waitUntil([&] { return player.pictureIsCurrent(); }) ? pictureNumber(player) : -2;
}

} // namespace daylark::bench
