#include "playback/read/DragPlan.h"

#include "media/decode/FrameReader.h"
#include "playback/read/FrameCache.h"
#include "support/PlayerBench.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace daylark {
namespace {

/// A reader of groups of a hundred frames, every second of which no other refers to: a stride of more than
/// eight leaves those out. Counts what it decodes.
class DragPlanTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        auto reader = FrameReader::open(bench::movie({.frames = 12, .group = 5}));
        ASSERT_TRUE(reader);
        picture() = *(*reader)->read(0);
        ASSERT_FALSE(picture().isNull());
    }
    static void TearDownTestSuite() { picture() = {}; }
    static VideoFrame& picture() {
        static VideoFrame one;
        return one;
    }
    void SetUp() override { cache.reset(1); }

    [[nodiscard]] ReadState state() const {
        return {frames, lastRead, [this](qint64 n) { return n / group * group; },
                [this](qint64 n) { return std::min(frames, (n / group + 1) * group); }};
    }
    /// One read by the plan; false when it has nothing more to ask for.
    bool readNext(const ReadDemand& demand) {
        const int direction = demand.dragging ? demand.heading : demand.direction;
        cache.setTravel({demand.target, direction, {}});
        const auto next = nextFrameToRead(demand, state(), cache);
        if (!next) return false;
        EXPECT_TRUE(*next >= 0 && *next < frames);
        const qint64 key = *next / group * group;
        const bool goesOn = lastRead >= key && lastRead < *next;
        const qint64 from = goesOn ? lastRead + 1 : key;
        for (qint64 n = from; n <= *next; ++n) {
            const bool leftOut = *next - from > 8 && n != *next && n % 2 != 0;
            decoded += !leftOut;
            if (!leftOut) cache.put(1, n, picture());
        }
        lastRead = *next;
        read.push_back(*next);
        return true;
    }
    void follow(const ReadDemand& demand) {
        while (readNext(demand))
            ASSERT_LT(read.size(), 2000u) << "the plan has no end";
    }
    static ReadDemand hand(qint64 target, int heading, qint64 reach) {
        return {.target = target, .dragging = true, .heading = heading, .reach = reach};
    }

    qint64 frames = 1000, group = 100, lastRead = -1, decoded = 0;
    FrameCache cache{qint64(1) << 40};
    std::vector<qint64> read;
};

constexpr qint64 fast = 160, slow = 8;

TEST_F(DragPlanTest, AHandThatHurriesOverUnreadGroupsGetsTheNearestKeyFrameOfEachFirst) {
    for (const qint64 target : {130, 380, 620, 990})
        ASSERT_TRUE(readNext(hand(target, 1, fast)));
    EXPECT_EQ(read, (std::vector<qint64>{100, 400, 600, 900})) << "the next group's where that is nearer";
    ASSERT_TRUE(readNext(hand(610, 1, fast)));
    EXPECT_GT(read.back(), 600) << "a key frame that is ready is not read again";
    EXPECT_LE(read.back(), 610);
}

TEST_F(DragPlanTest, TowardsAHandAGroupIsReadOnceInStridesThatLeaveOutWhatNeedNotBeDecoded) {
    qint64 nearest = 1000;
    while (!cache.contains(190)) {
        ASSERT_TRUE(readNext(hand(190, -1, fast)));
        const qint64 distance = std::abs(cache.nearest(190).value_or(1000) - 190);
        EXPECT_LE(distance, nearest);
        nearest = distance;
        if (read.size() > 2) {
            EXPECT_LE(read.back() - *(read.end() - 2), 16 + goodEnough) << "never far from being asked anew";
        }
    }
    EXPECT_LE(decoded, 60) << "half of the way, and hardly anything twice";
}

TEST_F(DragPlanTest, WhereTheHandSeesEnoughTheGroupItIsHeadingForIsRead) {
    for (const int heading : {-1, 1}) {
        read.clear();
        lastRead = -1;
        cache.reset(1);
        for (qint64 n = 300; n < 400; ++n)
            cache.put(1, n, picture());
        follow(hand(350, heading, fast));
        for (qint64 ahead = 0; ahead <= fast; ++ahead)
            EXPECT_TRUE(isCovered(350 + heading * ahead, cache)) << heading << " " << ahead;
        EXPECT_FALSE(isCovered(350 - heading * 60, cache)) << "nothing where it comes from";
    }
}

TEST_F(DragPlanTest, ASlowHandSeesEveryFrameOfItsWay) {
    follow(hand(190, -1, fast));
    ASSERT_FALSE(cache.contains(171)) << "left out for a fast one";
    decoded = 0;
    for (qint64 target = 180; target > 160; --target) {
        follow(hand(target, -1, slow));
        ASSERT_TRUE(cache.contains(target));
    }
    EXPECT_LT(decoded, 300) << "read together, not one by one from the key frame";
    for (qint64 target = 520; target < 560; ++target) {
        follow(hand(target, 1, slow));
        ASSERT_TRUE(cache.contains(target));
    }
}

TEST_F(DragPlanTest, PicturesThatStandAloneAreReadWhereTheHandIs) {
    group = 1;
    for (const qint64 target : {10, 500, 33}) {
        ASSERT_TRUE(readNext(hand(target, 1, fast)));
        EXPECT_EQ(read.back(), target);
    }
}

TEST_F(DragPlanTest, AHandThatRestsGetsTheExactFrameNext) {
    ASSERT_TRUE(readNext(hand(150, 1, fast)));
    ASSERT_TRUE(readNext(hand(150, 1, fast)));
    ASSERT_TRUE(readNext({.target = 163, .heading = -1}));
    EXPECT_EQ(read.back(), 163);
}

TEST_F(DragPlanTest, ASmallCacheEndsThePlanToo) {
    cache.setBudget(10 * picture().byteCount());
    for (const qint64 target : {350, 355, 299, 20, 999}) {
        follow(hand(target, -1, fast));
        follow(hand(target, 1, slow));
        EXPECT_TRUE(isCovered(target, cache));
    }
}

} // namespace
} // namespace daylark
