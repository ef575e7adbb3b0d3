#include "model/runs/MovieRun.h"
#include "support/PictureMaker.h"
#include "support/PlayerBench.h"

#include <gtest/gtest.h>

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
    void open(int last) {
        RunAddress address;
        address.folder = folder.path();
        address.movie.run = {u"sh010."_s, u".exr"_s, 4, false, firstNumber, last, 1};
        bool isOpened = false;
        const auto connection = QObject::connect(&player, &Player::opened, [&isOpened] { isOpened = true; });
        player.open(address.text());
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

} // namespace
} // namespace daylark
