#include "playback/run/Player.h"

#include "support/PlayerBench.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <malloc.h>

#include <algorithm>
#include <iostream>

namespace daylark {
namespace {

/// What of the process lies in memory and is no file's, bytes; -1: nobody says.
qint64 residentBytes() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly)) return -1;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("RssAnon:")) return line.mid(8).trimmed().split(' ').front().toLongLong() * 1024;
    return -1;
}

struct LargeKind {
    const char* name;
    const char* extension;
    const char* encoder;
    std::map<QString, QString> options;
    int bFrames;
};

void PrintTo(const LargeKind& kind, std::ostream* out) {
    *out << kind.name;
}

class LargePicturesTest : public ::testing::TestWithParam<LargeKind> {};

TEST_P(LargePicturesTest, EveryPictureIsShownWithinTheBudget) {
    const QTemporaryDir folder;
    MovieSpec spec;
    spec.path = folder.filePath(QStringLiteral("8k.") + QLatin1String(GetParam().extension));
    spec.encoder = QLatin1String(GetParam().encoder);
    spec.encoderOptions = GetParam().options;
    spec.size = QSize(7680, 4320);
    spec.frames = 5;
    spec.groupSize = 5;
    spec.bFrames = GetParam().bFrames;
    spec.paint = [](QPainter& painter, int) { painter.fillRect(painter.viewport(), Qt::darkCyan); };
    const Result<void> made = makeMovie(spec);
    ASSERT_TRUE(made) << made.error().text.toStdString();
    ::malloc_trim(0); // the encoder's
    constexpr qint64 budget = qint64(1) << 30; // what a machine of four gigabytes has
    constexpr qint64 beside = qint64(128) << 20; // files, tables, heaps
    const qint64 before = residentBytes();
    qint64 most = 0;
    bench::HandClock clock;
    Player player(clock, nullptr, budget);
    QSignalSpy opened(&player, &Player::opened);
    player.open(spec.path);
    ASSERT_TRUE(bench::waitUntil([&] { return opened.count() == 1; }));
    ASSERT_EQ(player.index().count(), 5);
    for (const qint64 n : {0, 1, 2, 4, 3, 2, 0, 3}) {
        player.setCurrentTime(player.index().timeOf(n));
        ASSERT_TRUE(bench::waitUntil([&] { return player.pictureIsCurrent(); }));
        EXPECT_LE(player.statistics().cacheBytes, budget) << n;
        most = std::max(most, residentBytes() - before);
        const VideoFrame frame = player.shownFrame();
        EXPECT_EQ(readBarCode(renderFrame(frame, QSize(480, 270))), int(n) + 1);
    }
    std::cout << GetParam().name << ": " << most / (1 << 20) << " MiB more at the most, budget " << budget / (1 << 20) << "\n";
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    if (before >= 0) {
        EXPECT_LE(most, budget + beside);
    }
#endif
}

const std::map<QString, QString> ultrafast{{QStringLiteral("preset"), QStringLiteral("ultrafast")}};
const LargeKind largeKinds[] = {
    {"H264", "mov", "libx264", ultrafast, 2},
    {"Hevc", "mp4", "libx265",
     {{QStringLiteral("preset"), QStringLiteral("ultrafast")},
      {QStringLiteral("x265-params"), QStringLiteral("log-level=none:bframes=3")}},
     3},
    {"Av1", "mp4", "libaom-av1",
     {{QStringLiteral("usage"), QStringLiteral("realtime")}, {QStringLiteral("cpu-used"), QStringLiteral("8")}},
     0},
};

INSTANTIATE_TEST_SUITE_P(Kinds, LargePicturesTest, ::testing::ValuesIn(largeKinds),
                         [](const auto& tested) { return tested.param.name; });

} // namespace
} // namespace daylark
