#include "playback/read/SeekingHand.h"

#include "media/decode/FrameReader.h"
#include "playback/read/FrameCache.h"
#include "support/PlayerBench.h"

#include <gtest/gtest.h>

namespace daylark {
namespace {

constexpr qint64 millisecond = 1'000'000;

class SeekingHandTest : public ::testing::Test {
protected:
    void SetUp() override {
        auto reader = FrameReader::open(bench::movie({.frames = 12, .group = 5}));
        ASSERT_TRUE(reader);
        picture = *(*reader)->read(0);
        cache.reset(1);
    }
    void ready(qint64 frame) { cache.put(1, frame, picture); }

    VideoFrame picture;
    FrameCache cache{qint64(1) << 40};
    SeekingHand hand;
};

TEST_F(SeekingHandTest, HeadingAndReachAreThoseOfTheLatestMovements) {
    hand.setDragging(true);
    EXPECT_EQ(hand.reach(), 0);
    for (int event = 0; event <= 100; ++event) // 250 frames a second
        hand.moveTo(2 * event, event * 8 * millisecond);
    EXPECT_EQ(hand.heading(), 1);
    EXPECT_NEAR(double(hand.reach()), 125, 2);
    for (int event = 1; event <= 20; ++event) // back, at half of that
        hand.moveTo(200 - event, (800 + event * 8) * millisecond);
    EXPECT_EQ(hand.heading(), -1);
    EXPECT_NEAR(double(hand.reach()), 62, 2);
    EXPECT_TRUE(hand.isSeeking());
    hand.rest();
    EXPECT_FALSE(hand.isSeeking());
    EXPECT_TRUE(hand.isDragging());
    hand.setDragging(false);
    hand.moveTo(5, 2000 * millisecond);
    EXPECT_FALSE(hand.isSeeking()) << "a jump is no drag";
}

TEST_F(SeekingHandTest, ADraggingHandIsShownOnlyWhatIsNearerThanBefore) {
    hand.setDragging(true);
    EXPECT_EQ(hand.toShow(cache, 50, 20), std::nullopt);
    ready(40);
    EXPECT_EQ(hand.toShow(cache, 50, -1), 40);
    EXPECT_EQ(hand.toShow(cache, 50, 20), 40);
    EXPECT_EQ(hand.toShow(cache, 50, 60), std::nullopt) << "as far away";
    EXPECT_EQ(hand.toShow(cache, 50, 40), std::nullopt);
    ready(57);
    EXPECT_EQ(hand.toShow(cache, 50, 40), 57);
    ready(50);
    EXPECT_EQ(hand.toShow(cache, 50, 49), 50);
}

TEST_F(SeekingHandTest, AJumpingHandIsShownTheNewestThatItAskedForAndNoneTwice) {
    for (const qint64 frame : {10, 20, 30})
        hand.ask(frame);
    ready(11);
    EXPECT_EQ(hand.toShow(cache, 30, -1), std::nullopt) << "it never asked for this one";
    ready(10);
    EXPECT_EQ(hand.toShow(cache, 30, -1), 10);
    EXPECT_EQ(hand.toShow(cache, 30, 10), std::nullopt);
    ready(20);
    ready(30);
    EXPECT_EQ(hand.toShow(cache, 30, 10), 30);
    EXPECT_EQ(hand.toShow(cache, 30, 30), std::nullopt) << "the older one comes too late";
}

} // namespace
} // namespace daylark
