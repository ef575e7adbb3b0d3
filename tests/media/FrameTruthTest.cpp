#include "media/decode/FrameReader.h"

#include "support/MovieMaker.h"
#include "picture/PictureRenderer.h"
#include "support/RandomClips.h"
#include "support/TruthReading.h"

#include <QElapsedTimer>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <random>
#include <thread>

namespace daylark {
namespace {

using truth::Expectation;
using truth::Tally;

/// Reads the bar code off a small rendering; turned and stretched pictures are upright and whole by then.
std::optional<int> numberIn(const VideoFrame& frame) {
    return readBarCode(renderFrame(frame, QSize(192, 96)));
}

class FrameTruthTest : public ::testing::TestWithParam<truth::Clip> {
protected:
    void TearDown() override { truth::report("reader", tally_); }

    QTemporaryDir folder_;
    Tally tally_{GetParam().name, GetParam().spec.encoder.toStdString(), GetParam().spec.path.toStdString()};
};

TEST_P(FrameTruthTest, EveryPictureIsItsOwnForwardsBackwardsAndInJumps) {
    QString path;
    const Result<Expectation> expected = GetParam().makeIn(folder_.path(), path);
    ASSERT_TRUE(expected) << expected.error().text.toStdString();
    truth::lookThrough(path, *expected, 200, tally_);
    EXPECT_EQ(tally_.wrong(), 0) << tally_.firstWrong();
}

/// Files drawn at random: a few of them, the same each time, or for as long and from where the environment says
/// (DAYLARK_HUNT_SECONDS, DAYLARK_HUNT_SEED). What the codec library itself gives is a second witness: a file
/// that it shows otherwise than it was made is counted apart, and must show what either says. DAYLARK_HUNT_FILE
/// with the number beside a name draws that file alone, into the current folder, and leaves it there.
TEST(RandomTruthTest, FilesDrawnAtRandomShowTheirPictures) {
    const qint64 seconds = qEnvironmentVariableIntValue("DAYLARK_HUNT_SECONDS");
    const unsigned seed = qEnvironmentVariableIsSet("DAYLARK_HUNT_SEED")
                              ? unsigned(qEnvironmentVariableIntValue("DAYLARK_HUNT_SEED"))
                              : 20;
    const unsigned onlyFile = qEnvironmentVariable("DAYLARK_HUNT_FILE").toUInt();
    const int few = onlyFile ? 1 : 12;
    std::mt19937 random(seed);
    QElapsedTimer time;
    time.start();
    int files = 0, pictures = 0, wrong = 0, unlike = 0, notMade = 0;
    while (seconds > 0 ? time.elapsed() < seconds * 1000 : files < few) {
        const unsigned itsSeed = onlyFile ? onlyFile : random();
        std::mt19937 its(itsSeed);
        const truth::Clip clip = truth::randomClip(its);
        const QTemporaryDir folder;
        QString path;
        const Result<Expectation> made = clip.makeIn(onlyFile ? QDir::currentPath() : folder.path(), path);
        ++files;
        if (!made) { // what a muxer refuses
            ++notMade;
            std::printf("%s: %s\n", clip.name.c_str(), made.error().text.toUtf8().constData());
            continue;
        }
        Tally tally(clip.name);
        truth::lookThrough(path, *made, 60, tally);
        const std::vector<int> library = truth::picturesOfLibrary(path);
        pictures += tally.checked();
        unlike += library != made->pictures;
        if (tally.wrong() == 0) continue;
        ++wrong;
        ADD_FAILURE() << clip.name << " (" << itsSeed << "): " << tally.firstWrong()
                      << (library == made->pictures ? "" : "; the library shows it otherwise, too");
    }
    std::printf("seed %u: %d files, %d pictures, %d files wrong, %d that the library shows otherwise, %d not made\n",
                seed, files, pictures, wrong, unlike, notMade);
    EXPECT_LE(notMade, files / 4);
}

/// Whatever a read was doing when it was given up, the next ones show their own pictures.
TEST(FrameReaderTest, ReadsGivenUpAtAnyMomentLeaveLaterOnesExact) {
    const QTemporaryDir folder;
    const auto shown = [](FrameReader& reader, qint64 n) {
        const Result<VideoFrame> frame = reader.read(n);
        return frame ? numberIn(*frame).value_or(-1) : -2;
    };
    for (const char* extension : {"mov", "mkv", "ts"}) {
        MovieSpec spec;
        spec.path = folder.filePath(QStringLiteral("movie.") + QLatin1String(extension));
        spec.size = QSize(256, 144);
        spec.frames = 120;
        spec.groupSize = 40;
        ASSERT_TRUE(makeMovie(spec));
        const auto reader = FrameReader::open(spec.path);
        ASSERT_TRUE(reader);
        std::mt19937 random(11);
        int givenUp = 0;
        for (int round = 0; round < 60; ++round) {
            CancelFlag cancel = false;
            const auto pause = std::chrono::microseconds(random() % 6000);
            std::thread hand([&] {
                std::this_thread::sleep_for(pause);
                cancel = true;
            });
            const qint64 n = random() % quint64(spec.frames - 1);
            givenUp += !(*reader)->read(n, &cancel);
            hand.join();
            const qint64 next = round % 2 ? qint64(random() % quint64(spec.frames)) : n + 1;
            ASSERT_EQ(shown(**reader, next), next + 1) << extension << " round " << round;
            ASSERT_EQ(shown(**reader, n), n + 1) << extension << " round " << round;
        }
        EXPECT_GT(givenUp, 0);
    }
}

INSTANTIATE_TEST_SUITE_P(Table, FrameTruthTest, ::testing::ValuesIn(truth::clips()),
                         [](const auto& tested) { return tested.param.name; });

} // namespace
} // namespace daylark
