#include "playback/ReadPlan.h"

#include "playback/FrameCache.h"

#include <gtest/gtest.h>

#include <vector>

namespace daylark {
namespace {

/// Follows the plan as the decode thread does, with groups of ten, and notes what it reads. The pictures
/// weigh nothing.
struct Reading {
    explicit Reading(qint64 frameCount)
        : frames(frameCount) {
        cache.reset(1);
    }
    void follow(const ReadDemand& demand) {
        cache.setTravel({demand.target, demand.direction, frames, demand.loops});
        ReadState state{frames, lastRead, [](qint64 n) { return n / 10 * 10; }};
        while (const auto next = nextFrameToRead(demand, state, cache)) {
            ASSERT_GE(*next, 0);
            ASSERT_LT(*next, frames);
            ASSERT_LT(read.size(), 1000u) << "the plan has no end";
            read.push_back(*next);
            state.lastRead = lastRead = *next;
            cache.put(1, *next, VideoFrame());
        }
    }
    qint64 frames;
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
        reading.follow({target, 1, true, false});
    EXPECT_EQ(reading.read, range(0, 99));
}

TEST(ReadPlanTest, BackwardsEachGroupIsReadOnceAndForwards) {
    Reading reading(100);
    std::vector<qint64> expected;
    for (qint64 group = 90; group >= 0; group -= 10)
        for (qint64 n = group; n < group + 10; ++n)
            expected.push_back(n);
    for (qint64 target = 99; target >= 0; --target)
        reading.follow({target, -1, true, false});
    EXPECT_EQ(reading.read, expected);
}

TEST(ReadPlanTest, AJumpReadsItsTargetFirstAndStepsBackFromThereFillItsGroup) {
    Reading reading(100);
    reading.follow({57, 1, false, false});
    ASSERT_FALSE(reading.read.empty());
    EXPECT_EQ(reading.read.front(), 57);
    reading.read.clear();
    reading.follow({56, -1, false, false});
    ASSERT_GE(reading.read.size(), 7u);
    EXPECT_EQ(std::vector<qint64>(reading.read.begin(), reading.read.begin() + 7), range(50, 56));
}

TEST(ReadPlanTest, ARunInALoopReadsOnAtTheOtherEnd) {
    Reading forwards(100);
    forwards.follow({98, 1, true, true});
    EXPECT_TRUE(forwards.cache.contains(0) && forwards.cache.contains(5));
    Reading backwards(100);
    backwards.follow({1, -1, true, true});
    EXPECT_TRUE(backwards.cache.contains(99) && backwards.cache.contains(90));
}

TEST(ReadPlanTest, NothingIsReadOutsideTheMovie) {
    Reading reading(5);
    for (const qint64 target : {-1, 5, 400})
        reading.follow({target, 1, true, true});
    EXPECT_TRUE(reading.read.empty());
}

} // namespace
} // namespace daylark
