#include "playback/read/FrameCache.h"

#include "media/decode/FrameReader.h"
#include "support/PlayerBench.h"

#include <gtest/gtest.h>

namespace daylark {
namespace {

/// Sixty decoded pictures of the same size.
class FrameCacheTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        auto reader = FrameReader::open(bench::movie({.frames = 60, .group = 12}));
        ASSERT_TRUE(reader);
        for (qint64 n = 0; n < 60; ++n) {
            auto picture = (*reader)->read(n);
            ASSERT_TRUE(picture);
            pictures().push_back(*picture);
        }
    }
    static void TearDownTestSuite() { pictures().clear(); }
    static std::vector<VideoFrame>& pictures() {
        static std::vector<VideoFrame> all;
        return all;
    }
    static qint64 room(int count) { return pictures().front().byteCount() * count; }
    static void fill(FrameCache& cache) {
        for (qint64 n = 0; n < 60; ++n) {
            cache.put(1, n, pictures()[size_t(n)]);
            EXPECT_LE(cache.byteCount(), cache.budget());
        }
    }
    static std::vector<qint64> held(const FrameCache& cache) {
        std::vector<qint64> frames;
        for (const auto& [first, last] : cache.readyRanges())
            for (qint64 n = first; n <= last; ++n)
                frames.push_back(n);
        return frames;
    }
};

using Frames = std::vector<qint64>;

TEST_F(FrameCacheTest, KeepsWhatLiesAheadAndHalfAsMuchBehindWithinTheBudget) {
    FrameCache cache(room(5));
    cache.reset(1);
    cache.setTravel({20, 1, {}});
    fill(cache);
    EXPECT_EQ(held(cache), (Frames{19, 20, 21, 22, 23}));
    cache.setTravel({40, -1, {}});
    fill(cache);
    EXPECT_EQ(held(cache), (Frames{37, 38, 39, 40, 41}));
    EXPECT_TRUE(cache.wouldKeep(38));
    EXPECT_FALSE(cache.wouldKeep(37)) << "as dear as the dearest";
    cache.setBudget(room(6));
    EXPECT_TRUE(cache.wouldKeep(0)) << "there is room for just one more";
}

TEST_F(FrameCacheTest, InALoopTheStartLiesAheadOfTheEnd) {
    FrameCache cache(room(5));
    cache.reset(1);
    cache.setTravel({58, 1, {0, 59}});
    fill(cache);
    EXPECT_EQ(held(cache), (Frames{0, 1, 57, 58, 59}));
    cache.setTravel({1, -1, {0, 59}});
    fill(cache);
    EXPECT_EQ(held(cache), (Frames{0, 1, 2, 58, 59}));
    cache.setTravel({34, 1, {30, 35}}); // a range: what lies outside goes first, however near
    fill(cache);
    EXPECT_EQ(held(cache), (Frames{30, 31, 33, 34, 35}));
}

TEST_F(FrameCacheTest, TheLastPictureStaysHoweverSmallTheBudget) {
    FrameCache cache(1);
    cache.reset(1);
    cache.setTravel({30, 1, {}});
    EXPECT_TRUE(cache.put(1, 10, pictures()[10]));
    EXPECT_FALSE(cache.put(1, 5, pictures()[5]));
    EXPECT_TRUE(cache.put(1, 30, pictures()[30]));
    EXPECT_EQ(held(cache), Frames{30});
    EXPECT_EQ(cache.capacity(), 1);
    EXPECT_FALSE(cache.wouldKeep(31));
}

TEST_F(FrameCacheTest, WhatIsHeldElsewhereAndASmallerBudgetTakeRoomAtOnce) {
    FrameCache cache(room(10));
    cache.reset(1);
    cache.setTravel({20, 1, {}});
    fill(cache);
    EXPECT_EQ(cache.byteCount(), room(10));
    cache.addElsewhere(room(4));
    EXPECT_EQ(cache.byteCount(), room(6));
    EXPECT_EQ(cache.capacity(), 6);
    cache.setBudget(room(7));
    EXPECT_EQ(held(cache), (Frames{20, 21, 22}));
    cache.addElsewhere(-room(4));
    fill(cache);
    EXPECT_EQ(cache.byteCount(), room(7));
}

TEST_F(FrameCacheTest, WhatDecodersHoldTakesRoomUntilTheNextMovieButLeavesHalf) {
    FrameCache cache(room(20));
    cache.reset(1);
    cache.setTravel({20, 1, {}});
    fill(cache);
    cache.setBeside(1, room(7));
    EXPECT_EQ(cache.byteCount(), room(13));
    EXPECT_EQ(cache.byteCount() + cache.elsewhere(), room(20));
    cache.setBeside(2, room(9));
    fill(cache);
    EXPECT_EQ(cache.byteCount(), room(13)) << "another movie's";
    cache.setBeside(1, 0);
    fill(cache);
    EXPECT_EQ(cache.byteCount(), room(20));
    cache.setBeside(1, room(400));
    EXPECT_EQ(cache.byteCount(), room(10));
    cache.reset(2);
    EXPECT_EQ(cache.elsewhere(), 0);
    cache.setBeside(1, room(9));
    EXPECT_EQ(cache.elsewhere(), 0) << "told late by the movie that was left";
}

TEST_F(FrameCacheTest, PicturesOfAnotherGenerationAreNotTaken) {
    FrameCache cache(room(10));
    cache.reset(1);
    EXPECT_TRUE(cache.put(1, 3, pictures()[3]));
    cache.reset(2);
    EXPECT_EQ(cache.byteCount(), 0);
    EXPECT_FALSE(cache.put(1, 4, pictures()[4]));
    EXPECT_FALSE(cache.contains(3) || cache.contains(4));
}

TEST_F(FrameCacheTest, NearestPictureIsSoughtFromTheFarEndAndPassesOverUnreadableFrames) {
    FrameCache cache(room(10));
    cache.reset(1);
    cache.put(1, 3, pictures()[3]);
    cache.put(1, 7, pictures()[7]);
    cache.put(1, 9, VideoFrame());
    EXPECT_EQ(cache.nearestBetween(2, 9), 7);
    EXPECT_EQ(cache.nearestBetween(9, 2), 3);
    EXPECT_EQ(cache.nearestBetween(4, 6), std::nullopt);
    EXPECT_EQ(cache.nearestBetween(6, 4), std::nullopt);
    EXPECT_EQ(cache.nearestBetween(3, 6), 3) << "both ends count";
    EXPECT_EQ(cache.nearestBetween(3, 1), 3);
    EXPECT_EQ(cache.nearestBetween(6, 3), 3);
    EXPECT_EQ(cache.nearestBetween(7, 7), 7);
    EXPECT_EQ(cache.nearestBetween(8, 9), std::nullopt);
    EXPECT_TRUE(cache.contains(9));
    EXPECT_EQ(cache.nearest(4), 3);
    EXPECT_EQ(cache.nearest(6), 7);
    EXPECT_EQ(cache.nearest(5), 3) << "of two as near the earlier one";
    EXPECT_EQ(cache.nearest(0), 3);
    EXPECT_EQ(cache.nearest(59), 7) << "an unreadable frame is no picture";
    EXPECT_EQ(FrameCache(1).nearest(0), std::nullopt);
}

} // namespace
} // namespace daylark
