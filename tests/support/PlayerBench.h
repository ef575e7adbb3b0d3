#pragma once

#include "support/MovieMaker.h"
#include "picture/PictureRenderer.h"
#include "playback/run/Player.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFileInfo>
#include <QImage>
#include <QTemporaryDir>
#include <QTimer>

#include <functional>
#include <optional>

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
/// measure).
inline bool waitUntil(const std::function<bool()>& condition, int limitMs = 60000) {
    QElapsedTimer time;
    time.start();
    while (!condition()) {
        if (time.elapsed() > limitMs) return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 20);
    }
    return true;
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
