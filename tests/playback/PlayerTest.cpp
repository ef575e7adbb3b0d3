#include "picture/PictureRenderer.h"
#include "playback/run/Player.h"

#include "support/PlayerBench.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace daylark {
namespace {

using bench::pictureNumber;
using bench::settledPicture;
using bench::waitUntil;

class PlayerTest : public ::testing::Test {
protected:
    static constexpr int frameCount = 90;

    void SetUp() override {
        QObject::connect(&player, &Player::frameShown, &player,
                         [this](const VideoFrame& frame, qint64 number) {
                             const auto drawn = readBarCode(renderFrame(frame));
                             if (!drawn || *drawn != number) ++wrongPictures;
                             shown.push_back(number);
                         });
    }
    void TearDown() override { EXPECT_EQ(wrongPictures, 0); }

    void open(const QString& path) {
        QSignalSpy opened(&player, &Player::opened);
        player.open(path);
        ASSERT_TRUE(waitUntil([&] { return opened.count() == 1; }));
        ASSERT_EQ(settledPicture(player), 1);
    }
    /// Turns the clock one frame on and lets the player look at it.
    void turnOneFrame() {
        const SampleIndex& index = player.index();
        clock.now += qint64(1e9 * index.step / index.timeScale) + 1;
        player.tick();
    }
    /// Starts a run and waits until the clock may move it.
    void start(float rate) {
        player.setRate(rate);
        ASSERT_TRUE(waitUntil([&] { return player.isRolling(); }));
    }

    bench::HandClock clock;
    Player player{clock};
    int wrongPictures = 0;
    std::vector<qint64> shown;
};

TEST_F(PlayerTest, EveryStepForwardsAndBackwardsShowsItsOwnFrame) {
    open(bench::movie({.frames = frameCount, .group = 25, .bFrames = 2}));
    for (qint64 n = 2; n <= frameCount; ++n) {
        player.stepForward();
        ASSERT_EQ(player.currentFrame(), n);
        ASSERT_EQ(settledPicture(player), n);
    }
    player.stepForward();
    EXPECT_EQ(player.currentFrame(), frameCount) << "stays on the last";
    for (qint64 n = frameCount - 1; n >= 1; --n) {
        player.stepBackward();
        ASSERT_EQ(player.currentFrame(), n);
        ASSERT_EQ(settledPicture(player), n);
    }
    player.stepBackward();
    EXPECT_EQ(player.currentFrame(), 1) << "stays on the first";
}

TEST_F(PlayerTest, RandomJumpsAndBurstsOfThemEndOnTheFrameAskedForLast) {
    open(bench::movie({.frames = frameCount, .group = 30, .bFrames = 2}));
    std::mt19937 random(7);
    for (int jump = 0; jump < 60; ++jump) {
        qint64 target = 0;
        for (unsigned burst = random() % 5; burst < 5; ++burst) {
            target = qint64(random() % frameCount);
            player.setCurrentTime(player.index().timeOf(target));
            EXPECT_EQ(player.currentFrame(), target + 1) << "known at once";
        }
        ASSERT_EQ(settledPicture(player), target + 1);
    }
}

TEST_F(PlayerTest, AnyTimeWithinAFrameShowsThatFrameOnAnyScale) {
    open(bench::movie({.frames = frameCount, .rateNum = 24000, .rateDen = 1001}));
    const SampleIndex& index = player.index();
    for (const qint64 n : {0, 1, 44, frameCount - 1}) {
        const MediaTime start = index.timeOf(n);
        player.setCurrentTime({start.value + index.step - 1, start.scale});
        EXPECT_EQ(player.currentFrame(), n + 1);
        player.setCurrentTime({start.value * 1000, start.scale * 1000});
        EXPECT_EQ(player.currentFrame(), n + 1);
    }
    player.setCurrentTime(player.duration());
    EXPECT_EQ(settledPicture(player), frameCount);
    player.setCurrentTime({-5, 600});
    EXPECT_EQ(settledPicture(player), 1);
    player.setCurrentTime({7, 0});
    EXPECT_EQ(settledPicture(player), 1);
}

TEST_F(PlayerTest, ARunForwardsShowsEveryFrameInOrderAndEndsOnTheLast) {
    open(bench::movie({.frames = frameCount, .group = 25, .bFrames = 2}));
    QSignalSpy ended(&player, &Player::didEnd);
    start(1);
    shown.clear();
    for (qint64 n = 2; n <= frameCount; ++n) {
        turnOneFrame();
        ASSERT_EQ(player.currentFrame(), n);
        ASSERT_EQ(settledPicture(player), n);
    }
    EXPECT_EQ(qint64(shown.size()), frameCount - 1);
    EXPECT_TRUE(ended.isEmpty()) << "the last frame has its time as well";
    turnOneFrame();
    EXPECT_EQ(ended.count(), 1);
    EXPECT_EQ(player.rate(), 0);
    EXPECT_EQ(player.currentFrame(), frameCount);
    EXPECT_EQ(player.currentTime(), player.duration());
    start(1); // again from there: begins anew
    EXPECT_EQ(player.currentFrame(), 1);
}

TEST_F(PlayerTest, ARunBackwardsShowsEveryFrameInOrderAndEndsOnTheFirst) {
    open(bench::movie({.frames = frameCount, .group = 25, .bFrames = 2}));
    player.setCurrentTime(player.duration());
    ASSERT_EQ(settledPicture(player), frameCount);
    QSignalSpy ended(&player, &Player::didEnd);
    start(-1);
    shown.clear();
    for (qint64 n = frameCount - 1; n >= 1; --n) {
        turnOneFrame();
        ASSERT_EQ(player.currentFrame(), n);
        ASSERT_EQ(player.index().frameAt(player.currentTime()) + 1, n) << "time and frame agree";
        ASSERT_EQ(settledPicture(player), n);
    }
    EXPECT_TRUE(std::is_sorted(shown.rbegin(), shown.rend()));
    turnOneFrame();
    EXPECT_EQ(ended.count(), 1);
    EXPECT_EQ(player.currentFrame(), 1);
}

TEST_F(PlayerTest, ALoopGoesOnFromTheOtherEndInBothDirections) {
    open(bench::movie({.frames = 12, .group = 5}));
    QSignalSpy ended(&player, &Player::didEnd);
    player.setLoops(true);
    start(1);
    for (int turn = 1; turn <= 30; ++turn) {
        turnOneFrame();
        ASSERT_EQ(player.currentFrame(), turn % 12 + 1);
        ASSERT_EQ(settledPicture(player), turn % 12 + 1);
    }
    const qint64 from = player.currentFrame();
    start(-1);
    for (int turn = 1; turn <= 30; ++turn) {
        turnOneFrame();
        ASSERT_EQ(player.currentFrame(), (from - 1 - turn + 36) % 12 + 1);
        ASSERT_EQ(settledPicture(player), player.currentFrame());
    }
    EXPECT_TRUE(ended.isEmpty());
}

TEST_F(PlayerTest, ARangeTurnsAtItsVeryLastFrameAndShowsNothingFromBeyond) {
    open(bench::movie({.frames = frameCount, .group = 25, .bFrames = 2}));
    for (const qint64 length : {1, 2, 5, 13})
        for (const float rate : {1.0f, 0.5f, 2.0f, -1.0f, -0.5f, -2.0f}) {
            SCOPED_TRACE(::testing::Message() << length << " frames at " << rate);
            const qint64 first = 41, last = first + length - 1;
            player.setRate(0);
            player.setCurrentTime(player.index().timeOf(first - 1));
            ASSERT_EQ(settledPicture(player), first);
            player.setRange(first, last);
            start(rate);
            shown.clear();
            const SampleIndex& index = player.index();
            for (int turn = 1; turn <= 60; ++turn) {
                clock.now += qint64(1e9 * index.step / index.timeScale / double(std::abs(rate))) + 1;
                player.tick();
                const qint64 step = rate > 0 ? turn : -turn;
                ASSERT_EQ(player.currentFrame(), first + (step % length + length) % length);
                ASSERT_EQ(settledPicture(player), player.currentFrame());
            }
            for (const qint64 frame : shown)
                ASSERT_TRUE(frame >= first && frame <= last) << frame;
            clock.now += qint64(1e9 * 200); // nobody looked for minutes
            player.tick();
            EXPECT_TRUE(player.currentFrame() >= first && player.currentFrame() <= last);
        }
}

TEST_F(PlayerTest, ARangeMayEndARunAsTheMovieDoesAndLetsGoWhatStandsBeyondIt) {
    open(bench::movie({.frames = frameCount, .group = 25, .bFrames = 2}));
    QSignalSpy ended(&player, &Player::didEnd);
    player.setRange(10, 14, Player::RangeEnd::ends);
    player.setCurrentTime(player.index().timeOf(6));
    start(1);
    for (int turn = 0; turn < 12; ++turn)
        turnOneFrame();
    EXPECT_EQ(ended.count(), 1);
    EXPECT_EQ(settledPicture(player), 14) << "came to it from before";
    start(1);
    EXPECT_EQ(player.currentFrame(), 10) << "a run onto its end begins at its beginning";
    player.setRate(0);
    player.setCurrentTime(player.index().timeOf(11));
    start(-1);
    for (int turn = 0; turn < 5; ++turn)
        turnOneFrame();
    EXPECT_EQ(ended.count(), 2);
    EXPECT_EQ(settledPicture(player), 10);
    player.setCurrentTime(player.index().timeOf(14)); // frame 15
    start(1);
    turnOneFrame();
    EXPECT_EQ(settledPicture(player), 16);
    player.setRange(1, 0);
    player.setCurrentTime(player.index().timeOf(11));
    for (int turn = 0; turn < 5; ++turn)
        turnOneFrame();
    EXPECT_GT(player.currentFrame(), 14);
}

TEST_F(PlayerTest, LatePicturesAreLeftOutAndNeverShownOutOfOrder) {
    open(bench::movie({.frames = frameCount, .group = 25, .bFrames = 2}));
    start(1);
    shown.clear();
    const SampleIndex& index = player.index();
    for (int jump = 0; jump < 8; ++jump) { // ten frames at a time, without waiting for pictures
        clock.now += qint64(1e10 * index.step / index.timeScale) + 1;
        player.tick();
        EXPECT_EQ(player.currentFrame(), 1 + 10 * (jump + 1));
    }
    player.setRate(0);
    EXPECT_EQ(player.currentFrame(), 81) << "stopping moves nothing";
    EXPECT_EQ(settledPicture(player), 81);
    EXPECT_TRUE(std::is_sorted(shown.begin(), shown.end()));
    EXPECT_LT(shown.size(), 80u);
}

TEST_F(PlayerTest, FasterAndTurnedRunsKeepTheirPlace) {
    open(bench::movie({.frames = frameCount, .group = 25}));
    start(1);
    turnOneFrame();
    player.setRate(3);
    EXPECT_TRUE(player.isRolling()) << "no new start";
    turnOneFrame();
    EXPECT_EQ(player.currentFrame(), 5);
    start(-1);
    turnOneFrame();
    EXPECT_EQ(player.currentFrame(), 4);
    player.setCurrentTime(player.index().timeOf(49)); // a jump during the run goes on from there
    ASSERT_TRUE(waitUntil([&] { return player.isRolling(); }));
    turnOneFrame();
    EXPECT_EQ(player.currentFrame(), 49);
}

TEST_F(PlayerTest, ASmallCacheShowsTheSameFrames) {
    Player small(clock, nullptr, 1);
    QSignalSpy opened(&small, &Player::opened);
    small.open(bench::movie({.frames = 40, .group = 20, .bFrames = 2}));
    ASSERT_TRUE(waitUntil([&] { return opened.count() == 1; }));
    for (const qint64 n : {0, 39, 38, 37, 20, 19, 18, 0, 1}) {
        small.setCurrentTime(small.index().timeOf(n));
        ASSERT_EQ(settledPicture(small), n + 1);
        EXPECT_LE(small.readyRanges().size(), 1u);
    }
}

TEST_F(PlayerTest, ARunBackwardsLeavesNothingOutThoughTheCacheHoldsLessThanAGroup) {
    player.setCacheBudget(60 * 256 * 144 * 3 / 2);
    open(bench::movie({.frames = frameCount, .group = frameCount, .bFrames = 2}));
    player.setCurrentTime(player.duration());
    ASSERT_EQ(settledPicture(player), frameCount);
    start(-1);
    for (qint64 n = frameCount - 1; n >= 1; --n) {
        turnOneFrame();
        ASSERT_EQ(settledPicture(player), n);
        const PlayerStatistics statistics = player.statistics();
        ASSERT_LE(statistics.cacheBytes, statistics.cacheBudget);
    }
    EXPECT_EQ(player.statistics().dropped, 0);
    EXPECT_EQ(player.statistics().shown, frameCount - 1);
}

TEST_F(PlayerTest, ADraggingHandSeesTheNearestReadyPictureAtOnceAndTheExactOneInTheEnd) {
    open(bench::movie({.frames = frameCount, .group = 30, .bFrames = 2}));
    player.setCurrentTime(player.index().timeOf(44));
    ASSERT_EQ(settledPicture(player), 45);
    ASSERT_TRUE(waitUntil([&] { return player.readyRanges().back().second == 53; })) << "some way ahead";
    player.setDragging(true);
    shown.clear();
    player.setCurrentTime(player.index().timeOf(80));
    EXPECT_EQ(shown, std::vector<qint64>{53}) << "before any event";
    EXPECT_FALSE(player.pictureIsCurrent());
    EXPECT_EQ(settledPicture(player), 81);
    EXPECT_TRUE(std::is_sorted(shown.begin(), shown.end())) << "ever nearer";
    std::mt19937 random(5);
    for (int drag = 0; drag < 20; ++drag) {
        player.setDragging(true);
        qint64 target = 0;
        for (int move = 0; move < 12; ++move) {
            target = qint64(random() % frameCount);
            player.setCurrentTime(player.index().timeOf(target));
            waitUntil([passes = 0u, most = random() % 4]() mutable { return ++passes > most; });
        }
        player.setDragging(false);
        ASSERT_EQ(settledPicture(player), target + 1);
    }
}

TEST_F(PlayerTest, AListOfMoviesLeavesNoPicturesOrFilesBehind) {
    const QString first = bench::movie({.frames = 12, .group = 5});
    QTemporaryDir folder;
    std::vector<QString> list;
    for (int number = 0; number < 30; ++number) {
        list.push_back(folder.filePath(QStringLiteral("listed_%1.mov").arg(number)));
        ASSERT_TRUE(QFile::copy(first, list.back()));
    }
    const auto openFiles = [&] {
        qsizetype count = 0;
        const auto descriptors =
            QDir(QStringLiteral("/proc/self/fd")).entryInfoList(QDir::Files | QDir::System);
        for (const QFileInfo& descriptor : descriptors)
            count += descriptor.symLinkTarget().startsWith(folder.path());
        return count;
    };
    player.setCacheBudget(40 * 256 * 144 * 3 / 2);
    const auto startAt = [](qint64 frame) { return [frame](const SampleIndex&) { return frame; }; };
    for (size_t at = 0; at < list.size(); ++at) {
        shown.clear();
        player.open(list[at]);
        ASSERT_TRUE(waitUntil([&] { return player.isOpen(); }));
        ASSERT_EQ(settledPicture(player), 1);
        player.setNeighbours({{list[(at + 1) % list.size()], startAt(1)}, {first, startAt(7)}});
        if (at % 3 != 0) player.setRate(1);
        if (at % 2 != 0) waitUntil([passes = 0]() mutable { return ++passes > 5; });
        ASSERT_LE(player.statistics().cacheBytes, player.statistics().cacheBudget);
        ASSERT_LE(openFiles(), 8) << "of thirty: those being left may still be closing";
    }
    ASSERT_TRUE(waitUntil([&] { return openFiles() == 2; }))
        << "the current movie and its one neighbour here";
    player.setNeighbours({});
    player.close();
    EXPECT_TRUE(waitUntil([&] { return openFiles() == 0 && player.statistics().cacheBytes == 0; }));
}

TEST_F(PlayerTest, OnlyTheMovieOpenedLastAnswers) {
    const QString one = bench::movie({.frames = frameCount, .group = 25});
    const QString other = bench::movie({.frames = 12, .group = 5});
    QSignalSpy opened(&player, &Player::opened);
    QSignalSpy failed(&player, &Player::openFailed);
    for (int time = 0; time < 40; ++time) {
        player.open(time % 3 ? one : QStringLiteral("/nowhere/at/all.mov"));
        if (time % 4 == 0) waitUntil([&, passes = 0]() mutable { return ++passes > time / 8; });
    }
    player.open(other);
    opened.clear();
    failed.clear();
    shown.clear();
    ASSERT_TRUE(waitUntil([&] { return opened.count() == 1; }));
    EXPECT_EQ(player.index().count(), 12);
    EXPECT_EQ(settledPicture(player), 1);
    player.stepForward();
    EXPECT_EQ(settledPicture(player), 2);
    EXPECT_TRUE(failed.isEmpty());
}

TEST_F(PlayerTest, ClosingDuringDecodingForgetsMovieAndPicture) {
    open(bench::movie({.frames = frameCount, .group = 90, .bFrames = 2}));
    player.setRate(1);
    player.setCurrentTime(player.index().timeOf(80));
    shown.clear();
    QSignalSpy stopped(&player, &Player::rateChanged);
    player.close();
    EXPECT_EQ(stopped.count(), 1);
    EXPECT_FALSE(player.isOpen() || player.isRolling() || player.pictureIsCurrent());
    EXPECT_TRUE(player.shownFrame().isNull());
    EXPECT_EQ(player.currentFrame(), 0);
    player.stepForward(); // nothing to step in
    player.setRate(2);
    EXPECT_EQ(player.rate(), 0);
    open(bench::movie({.frames = 12, .group = 5})); // whatever was under way is over by now
    EXPECT_EQ(shown, std::vector<qint64>{1});
}

TEST_F(PlayerTest, AFileThatIsMissingOrNoMovieFailsAndAnotherOpensAfterwards) {
    QTemporaryDir folder;
    QFile text(folder.filePath(QStringLiteral("text.mov")));
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write("not a movie");
    text.close();
    QSignalSpy failed(&player, &Player::openFailed);
    player.open(folder.filePath(QStringLiteral("missing.mov")));
    ASSERT_TRUE(waitUntil([&] { return failed.count() == 1; }));
    player.open(text.fileName());
    ASSERT_TRUE(waitUntil([&] { return failed.count() == 2; }));
    EXPECT_FALSE(failed.last().front().toString().isEmpty());
    EXPECT_FALSE(player.isOpen());
    open(bench::movie({.frames = 12, .group = 5}));
}

TEST_F(PlayerTest, ListenersOfOpenedChooseTheFirstPicture) {
    QObject::connect(&player, &Player::opened, &player,
                     [this] { player.setCurrentTime(player.index().timeOf(7)); });
    player.open(bench::movie({.frames = 12, .group = 5}));
    ASSERT_TRUE(waitUntil([&] { return !shown.empty(); }));
    EXPECT_EQ(shown, std::vector<qint64>{8});
}

} // namespace
} // namespace daylark
