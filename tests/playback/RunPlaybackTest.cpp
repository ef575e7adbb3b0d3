#include "model/runs/MovieRun.h"
#include "support/PictureMaker.h"
#include "support/PlayerBench.h"
#include "support/TruthReport.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

namespace daylark {
namespace {

using namespace Qt::StringLiterals;
using bench::settledPicture;
using bench::waitUntil;
using test::barCodePicture;
using test::writePicture;

constexpr int firstNumber = 1001;

/// A run on the player, every picture that it shows held against the number drawn into it.
class RunPlaybackTest : public ::testing::Test {
protected:
    void SetUp() override {
        QObject::connect(&player, &Player::frameShown, [this](const VideoFrame& frame, qint64 number) {
            ++shown;
            if (readBarCode(renderFrame(frame)) != expected(number)) ++wrong;
        });
    }
    void make(std::initializer_list<std::pair<int, int>> ranges) {
        for (const auto& [from, to] : ranges)
            for (int number = from; number <= to; ++number) {
                writePicture(barCodePicture(pathOf(number), number, {96, 54}));
                there.insert(number);
            }
    }
    [[nodiscard]] QString pathOf(int number) const { return folder.filePath(u"sh010.%1.exr"_s.arg(number)); }
    /// What frame `frame` (from 1) must show: its own, or the nearest earlier one that is there.
    [[nodiscard]] int expected(qint64 frame) const {
        return *std::prev(there.upper_bound(firstNumber + int(frame) - 1));
    }
    [[nodiscard]] QString address(int last) const {
        RunAddress address;
        address.folder = folder.path();
        address.movie.run = {u"sh010."_s, u".exr"_s, 4, false, firstNumber, last, 1};
        return address.text();
    }
    void open(int last) {
        bool isOpened = false;
        const auto connection = QObject::connect(&player, &Player::opened, [&isOpened] { isOpened = true; });
        player.open(address(last));
        ASSERT_TRUE(waitUntil([&] { return isOpened; }));
        QObject::disconnect(connection);
        ASSERT_EQ(settledPicture(player), firstNumber);
    }
    /// Runs until the end, the clock turned by hand a quarter of a frame at a time.
    void runToTheEnd(float rate) {
        bool isEnded = false;
        const auto connection = QObject::connect(&player, &Player::didEnd, [&isEnded] { isEnded = true; });
        player.setRate(rate);
        ASSERT_TRUE(waitUntil([&] {
            clock.now += 1'000'000'000 / 96;
            player.tick();
            QCoreApplication::processEvents();
            return isEnded;
        }));
        QObject::disconnect(connection);
    }

    QTemporaryDir folder;
    std::set<int> there;
    bench::HandClock clock;
    Player player{clock, nullptr, qint64(64) << 20};
    int shown = 0, wrong = 0;
};

TEST_F(RunPlaybackTest, EveryPictureIsItsOwnInStepsJumpsAndRunsBothWaysAndOverGaps) {
    make({{1001, 1010}, {1014, 1020}, {1022, 1024}});
    open(1024);
    EXPECT_EQ(player.index().missing, (std::vector<qint64>{10, 11, 12, 20}));
    for (int frame = 2; frame <= 24; ++frame) {
        player.stepForward();
        ASSERT_EQ(player.currentFrame(), frame);
        ASSERT_EQ(settledPicture(player), expected(frame));
    }
    for (int frame = 23; frame >= 1; --frame) {
        player.stepBackward();
        ASSERT_EQ(settledPicture(player), expected(frame));
    }
    for (const int frame : {20, 3, 12, 24, 1, 21, 22, 9}) {
        player.setCurrentTime(player.index().timeOf(frame - 1));
        ASSERT_EQ(settledPicture(player), expected(frame));
    }
    player.gotoBeginning();
    runToTheEnd(1);
    runToTheEnd(-1);
    EXPECT_EQ(wrong, 0) << "of " << shown;
    EXPECT_GT(shown, 90);
}

TEST_F(RunPlaybackTest, PicturesThatCameOrWereMadeAnewAreThereWhenTheRunIsOpenedAgain) {
    make({{1001, 1006}});
    open(1006);
    runToTheEnd(1);
    make({{1007, 1012}});
    // Another one in the place of the third, as a render makes it.
    writePicture(barCodePicture(pathOf(1003), 4711, {96, 54}));
    open(1006);
    EXPECT_EQ(player.index().count(), 12);
    player.setCurrentTime(player.index().timeOf(2));
    EXPECT_EQ(settledPicture(player), 4711);
    writePicture(barCodePicture(pathOf(1003), 1003, {96, 54}));
    player.setCurrentTime(player.index().timeOf(11));
    EXPECT_EQ(settledPicture(player), 1012);
}

/// While the run is played, round and round: pictures come behind its end and into its gaps, others are made again. What is
/// shown is right at every moment, and what has not changed is not read a second time.
TEST_F(RunPlaybackTest, ARunThatGrowsWhileItPlaysKeepsItsPlaceAndReadsOnlyWhatChanged) {
    QObject::disconnect(&player, &Player::frameShown, nullptr, nullptr);
    truth::Tally tally("RunGrowsWhileItPlays", "exr", "run that grows");
    make({{1001, 1010}, {1013, 1016}});
    open(1016);
    std::map<int, int> drawn; // what was drawn into a number's picture since
    const auto wanted = [&](qint64 frame) {
        const int number = expected(frame);
        return drawn.contains(number) ? drawn[number] : number;
    };
    std::map<const VideoFrame::Data*, VideoFrame> kept;
    const char* manner = "play forwards";
    QObject::connect(&player, &Player::frameShown, [&](const VideoFrame& frame, qint64 n) {
        kept.emplace(frame.data(), frame);
        tally.look(n - 1, wanted(n), !frame.isNull(), readBarCode(renderFrame(frame)), manner);
    });
    player.setLoops(true);
    const auto play = [&](float rate, int frames) {
        manner = rate > 0 ? "play forwards" : "play backwards";
        player.setRate(rate);
        ASSERT_TRUE(waitUntil([&] { return player.isRolling(); }));
        for (int turn = 0; turn < frames; ++turn) {
            clock.now += 1'000'000'000 / 24 + 1;
            player.tick();
            ASSERT_TRUE(waitUntil([&] { return player.pictureIsCurrent(); }));
        }
    };
    const auto renew = [&](const std::vector<qint64>& numbers) {
        std::vector<qint64> frames;
        for (const qint64 number : numbers)
            frames.push_back(number - firstNumber + 1);
        bool isRenewed = false;
        const auto connection = QObject::connect(&player, &Player::renewed, [&isRenewed] { isRenewed = true; });
        player.renew(address(1016), frames);
        const bool came = waitUntil([&] { return isRenewed; });
        QObject::disconnect(connection);
        ASSERT_TRUE(came);
        ASSERT_TRUE(waitUntil([&] { return player.pictureIsCurrent(); }));
    };
    play(1, 21);
    const qint64 place = player.currentFrame();
    // One in the gap, made whole only now; two at the end.
    make({{1012, 1012}, {1017, 1018}});
    renew({1012, 1017, 1018});
    EXPECT_EQ(player.currentFrame(), place);
    EXPECT_EQ(player.rate(), 1.0F) << "it goes on";
    EXPECT_EQ(player.index().count(), 18);
    EXPECT_EQ(player.index().missing, (std::vector<qint64>{10}));
    play(1, 40);
    // Made again: with another picture, and one that others are held from.
    for (const int number : {1003, 1010}) {
        writePicture(barCodePicture(pathOf(number), number + 3000, {96, 54}));
        drawn[number] = number + 3000;
    }
    renew({1003, 1010});
    play(1, 40);
    play(-1, 40);
    // Gone: the ones before stand in.
    QFile::remove(pathOf(1014));
    there.erase(1014);
    renew({1014});
    play(-1, 20);
    player.setRate(0);
    manner = "steps";
    for (int step = 0; step < 18; ++step) {
        player.stepForward();
        ASSERT_EQ(settledPicture(player), wanted(player.currentFrame()));
    }
    // Everything was read: what comes now touches nothing else.
    std::set<const VideoFrame::Data*> before;
    for (qint64 frame = 0; frame < 18; ++frame) {
        player.setCurrentTime(player.index().timeOf(frame));
        settledPicture(player);
        before.insert(player.shownFrame().data());
    }
    make({{1011, 1011}});
    renew({1011});
    int anew = 0;
    for (qint64 frame = 0; frame < 18; ++frame) {
        player.setCurrentTime(player.index().timeOf(frame));
        settledPicture(player);
        anew += !before.contains(player.shownFrame().data());
    }
    EXPECT_EQ(anew, 1);
    EXPECT_EQ(tally.wrong(), 0) << tally.firstWrong();
    tally.setFrames(18);
    truth::report("player", tally);
}

/// What comes before the first picture changes no frame's number: bookmarks are by frame. It stays outside.
TEST_F(RunPlaybackTest, PicturesBeforeTheFirstLeaveEveryFrameWhereItWas) {
    make({{1005, 1012}});
    RunAddress run = *RunAddress::of(address(1012));
    run.movie.run.first = 1005;
    bool isOpened = false;
    QObject::connect(&player, &Player::opened, [&isOpened] { isOpened = true; });
    QObject::disconnect(&player, &Player::frameShown, nullptr, nullptr);
    player.open(run.text());
    ASSERT_TRUE(waitUntil([&] { return isOpened; }));
    player.setCurrentTime(player.index().timeOf(3));
    ASSERT_EQ(settledPicture(player), 1008);
    make({{1001, 1004}});
    bool isRenewed = false;
    QObject::connect(&player, &Player::renewed, [&isRenewed] { isRenewed = true; });
    player.renew(run.text(), {});
    ASSERT_TRUE(waitUntil([&] { return isRenewed; }));
    EXPECT_EQ(player.index().count(), 8);
    EXPECT_EQ(player.currentFrame(), 4);
    EXPECT_EQ(settledPicture(player), 1008);
}

} // namespace
} // namespace daylark
