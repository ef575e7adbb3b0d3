#include "playback/read/ReadPlan.h"

#include "playback/read/FrameCache.h"

#include <gtest/gtest.h>

#include <vector>

namespace daylark {
namespace {

/// Follows the plan as the decode thread does, with groups of ten (unless told otherwise), and notes what it
/// reads. The pictures weigh nothing.
struct Reading {
    explicit Reading(qint64 frameCount)
        : frames(frameCount) {
        cache.reset(1);
    }
    void follow(const ReadDemand& demand) {
        cache.setTravel({demand.target, demand.direction, demand.lap});
        ReadState state = this->state();
        while (const auto next = nextFrameToRead(demand, state, cache)) {
            ASSERT_GE(*next, 0);
            ASSERT_LT(*next, frames);
            ASSERT_LT(read.size(), 1000u) << "the plan has no end";
            read.push_back(*next);
            state.lastRead = lastRead = *next;
            cache.put(1, *next, VideoFrame());
        }
    }
    [[nodiscard]] ReadState state() const {
        return {frames, lastRead, [this](qint64 n) { return n / keyEvery * keyEvery; }};
    }
    [[nodiscard]] qint64 readyToRoll(const ReadDemand& demand) const {
        return daylark::readyToRoll(demand, state(), cache);
    }
    [[nodiscard]] bool holds(qint64 first, qint64 last) const {
        for (; first <= last; ++first)
            if (!cache.contains(first)) return false;
        return true;
    }
    qint64 frames;
    qint64 keyEvery = 10;
    qint64 lastRead = -1;
    FrameCache cache{1000};
    std::vector<qint64> read;
};

std::vector<qint64> range(qint64 first, qint64 last) {
    std::vector<qint64> all;
    for (qint64 n = first; n <= last; ++n)
        all.push_back(n);
    return all;
}

TEST(ReadPlanTest, ForwardsEachFrameIsReadOnceAndInOrder) {
    Reading reading(100);
    for (qint64 target = 0; target < 100; ++target)
        reading.follow({target, 1, true, {}});
    EXPECT_EQ(reading.read, range(0, 99));
}

TEST(ReadPlanTest, BackwardsEachGroupIsReadOnceAndForwards) {
    Reading reading(100);
    std::vector<qint64> expected;
    for (qint64 group = 90; group >= 0; group -= 10)
        for (qint64 n = group; n < group + 10; ++n)
            expected.push_back(n);
    for (qint64 target = 99; target >= 0; --target)
        reading.follow({target, -1, true, {}});
    EXPECT_EQ(reading.read, expected);
}

TEST(ReadPlanTest, AJumpReadsItsTargetFirstAndAColdStepBackItsGroupForwards) {
    Reading reading(100);
    reading.follow({57, 1, false, {}});
    ASSERT_FALSE(reading.read.empty());
    EXPECT_EQ(reading.read.front(), 57);
    reading.read.clear();
    reading.follow({56, -1, false, {}});
    EXPECT_EQ(reading.read, range(40, 49))
        << "its own group is ready; near its beginning the one before is wanted";
    Reading cold(100);
    cold.follow({56, -1, false, {}});
    ASSERT_GE(cold.read.size(), 7u);
    EXPECT_EQ(std::vector<qint64>(cold.read.begin(), cold.read.begin() + 7), range(50, 56));
}

TEST(ReadPlanTest, ARunInALoopReadsOnAtTheOtherEnd) {
    Reading forwards(100);
    forwards.follow({98, 1, true, {0, 99}});
    EXPECT_TRUE(forwards.cache.contains(0) && forwards.cache.contains(5));
    Reading backwards(100);
    backwards.follow({1, -1, true, {0, 99}});
    EXPECT_TRUE(backwards.cache.contains(99) && backwards.cache.contains(90));
    Reading range(100);
    range.follow({53, 1, true, {50, 54}});
    EXPECT_EQ(range.read, (std::vector<qint64>{53, 54, 50, 51, 52})) << "and then there is nothing more to read";
    Reading towards(100);
    towards.follow({45, 1, true, {50, 54}});
    EXPECT_TRUE(towards.holds(45, 54) && !towards.cache.contains(55));
}

TEST(ReadPlanTest, BackwardsTheGroupBeforeIsReadAheadWhole) {
    Reading reading(1000);
    reading.keyEvery = 200;
    reading.follow({799, -1, true, {}});
    EXPECT_TRUE(reading.holds(400, 799));
    EXPECT_FALSE(reading.cache.contains(399));
}

TEST(ReadPlanTest, ARunBackwardsWaitsForTheGroupBeforeOnlyNearItsOwnBeginning) {
    Reading reading(1000);
    reading.keyEvery = 200;
    EXPECT_EQ(reading.readyToRoll({799, -1, true, {}}), 1);
    EXPECT_EQ(reading.readyToRoll({610, -1, true, {}}), 210);
    EXPECT_EQ(reading.readyToRoll({10, -1, true, {}}), 1) << "nothing comes before the first group";
    EXPECT_EQ(reading.readyToRoll({610, 1, true, {}}), 1);
}

TEST(ReadPlanTest, StandingTheRestOfTheGroupIsReadInTheEnd) {
    Reading reading(100);
    reading.follow({57, 1, false, {}});
    EXPECT_TRUE(reading.holds(50, 65));
    EXPECT_EQ(reading.read.front(), 57);
    EXPECT_FALSE(reading.holds(49, 49));
}

TEST(ReadPlanTest, StandingAmongPicturesThatStandAloneSomeFramesBehindAreReadInTheEnd) {
    Reading reading(100);
    reading.keyEvery = 1;
    reading.follow({99, 1, false, {}});
    EXPECT_TRUE(reading.holds(91, 99));
    EXPECT_EQ(reading.read.front(), 99);
    reading.follow({50, 1, false, {}});
    EXPECT_TRUE(reading.holds(42, 58));
    reading.follow({2, 1, false, {}});
    EXPECT_TRUE(reading.holds(0, 2));
}

TEST(ReadPlanTest, WhatIsKeptReadyEndsAfterSoManyFrames) {
    Reading running(200);
    running.follow({10, 1, true, {}});
    EXPECT_EQ(running.read.back(), 10 + 64);
    Reading standing(200);
    standing.keyEvery = 100;
    standing.follow({100, 1, false, {}});
    EXPECT_EQ(standing.read, range(100, 108));
    standing.follow({108, 1, false, {}}); // a few frames on are read over, more are jumped to
    EXPECT_EQ(standing.read, range(100, 116));
    standing.read.clear();
    standing.follow({116 + 16, 1, false, {}});
    EXPECT_EQ(standing.read.front(), 117);
    standing.read.clear();
    standing.follow({140 + 17, 1, false, {}});
    EXPECT_EQ(standing.read.front(), 157);
}

TEST(ReadPlanTest, NothingIsReadOutsideTheMovie) {
    Reading reading(5);
    for (const qint64 target : {-1, 5, 400})
        reading.follow({target, 1, true, {0, 4}});
    EXPECT_TRUE(reading.read.empty());
}

} // namespace
} // namespace daylark
