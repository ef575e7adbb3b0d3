#include "model/Bookmark.h"
#include "model/Movie.h"
#include "model/Timecode.h"

#include "support/RecordSamples.h"

#include <gtest/gtest.h>

#include <limits>

namespace daylark {
namespace {

using namespace Qt::StringLiterals;

SmpteTime startAt(int hours, int minutes, int seconds, int frames) {
    return {0, 0, 0, 0, 1, qint16(hours), qint16(minutes), qint16(seconds), qint16(frames)};
}

TEST(TimecodeTest, CountsAtTheRoundedRateWithoutDropFrame) {
    struct Case {
        qint64 frame;
        float fps;
        const char* text;
    };
    for (const Case& c : {Case{1, 25, "00:00:00:00"},
                          {26, 25, "00:00:01:00"},
                          {25 * 3600 + 1, 25, "01:00:00:00"},
                          {25, 25, "00:00:00:24"},
                          {25, 23.976F, "00:00:01:00"},
                          {24, 23.976F, "00:00:00:23"},
                          {1801, 29.97F, "00:01:00:00"},
                          {30, 29.97F, "00:00:00:29"},
                          {61, 59.94F, "00:00:01:00"},
                          {3, 2.5F, "00:00:00:02"}, // halves round away from zero
                          {25 * 86400, 25, "23:59:59:24"},
                          {25 * 86400 + 1, 25, "00:00:00:00"},
                          // seconds are single precision, frames are not
                          {16777300, 25, "18:24:52:24"},
                          // printed unsigned
                          {0, 25, "00:00:00:18446744073709551615"},
                          {100, 0, "00:00:00:00"},
                          {100, 0.4F, "00:00:00:00"},
                          {100, std::numeric_limits<float>::infinity(), "00:00:00:00"},
                          {100, std::numeric_limits<float>::quiet_NaN(), "00:00:00:00"}})
        EXPECT_EQ(timecodeText(c.frame, c.fps), QLatin1String(c.text)) << c.frame << " at " << c.fps;
}

TEST(TimecodeTest, StartsAtTheTracksTimeInSinglePrecision) {
    EXPECT_EQ(timecodeText(1, 24, startAt(1, 0, 0, 0)), u"01:00:00:00"_s);
    EXPECT_EQ(timecodeText(25, 23.976F, startAt(23, 59, 59, 0)), u"00:00:00:00"_s);
    EXPECT_EQ(timecodeText(1, 25, startAt(10, 23, 45, 12)), u"10:23:45:12"_s);
    EXPECT_EQ(timecodeText(14, 25, startAt(10, 23, 45, 12)), u"10:23:46:00"_s);
    EXPECT_EQ(timecodeText(1, 25, startAt(10, 59, 58, 2)),
              u"10:59:58:01"_s); // one frame lost to single precision
    EXPECT_EQ(timecodeText(1, 0, startAt(1, 0, 0, 0)), u"00:00:00:00"_s);
}

TEST(TimecodeTest, ExtremeFrameNumbersGiveSomeText) {
    for (const qint64 frame : {std::numeric_limits<qint64>::min(), std::numeric_limits<qint64>::max()})
        for (const float fps : {1.0F, -1.0F, -25.0F, 1e9F, 1e30F}) {
            EXPECT_FALSE(timecodeText(frame, fps, startAt(-32768, 32767, 32767, -32768)).isEmpty());
            for (const qint64 beside : {-1, 0, 1}) // one of them makes the smallest count there is
                EXPECT_FALSE(timecodeText(qint64(quint64(frame) + quint64(beside)), fps).isEmpty());
        }
}

TEST(TimecodeTest, DurationShowsHoursOnlyBeyond3599Seconds) {
    EXPECT_EQ(durationTextOf(0), u"00:00"_s);
    EXPECT_EQ(durationTextOf(61.99F), u"01:01"_s);
    EXPECT_EQ(durationTextOf(3599.5F), u"59:59"_s);
    EXPECT_EQ(durationTextOf(3600), u"1:00:00"_s);
    EXPECT_EQ(durationTextOf(-3600), u"-1:00:00"_s);
    EXPECT_EQ(durationTextOf(-3599), u"-59:-59"_s);
    EXPECT_FALSE(durationTextOf(std::numeric_limits<float>::quiet_NaN()).isEmpty());
    EXPECT_FALSE(durationTextOf(1e30F).isEmpty());
}

TEST(BookmarkTest, RangeIsInclusiveAndNeverEmpty) {
    EXPECT_EQ(Bookmark(10, 24, 25).lastFrame, 33);
    EXPECT_EQ(Bookmark(10, 1, 25).lastFrame, 10);
    EXPECT_EQ(Bookmark(10, 0, 25).lastFrame, 10);
    EXPECT_EQ(Bookmark(10, 0, 25).duration, 0);
    const Bookmark bookmark(10, 24, 25);
    EXPECT_EQ(bookmark.activeImage.name(), u"NSStatusNone"_s);
    EXPECT_TRUE(bookmark.drawings.hasKeys && !bookmark.hasDrawings());
    EXPECT_TRUE(bookmark.firstTC.isNull());
    EXPECT_NE(bookmark.uniqueKey, Bookmark(10, 24, 25).uniqueKey);
}

TEST(BookmarkTest, UpdatesRecomputeOneSideFromTheOthers) {
    Bookmark bookmark(10, 5, 25);
    bookmark.lastFrame = 50;
    bookmark.updateFirstFrame();
    EXPECT_EQ(bookmark.firstFrame, 45) << "one frame longer than the duration";
    bookmark.updateDuration();
    EXPECT_EQ(bookmark.duration, 6);
    bookmark.lastFrame = 20;
    bookmark.updateFirstFrame();
    EXPECT_EQ(bookmark.firstFrame, 20);
    bookmark.updateLastFrame();
    EXPECT_EQ(bookmark.lastFrame, 25);
    bookmark.lastFrame = 3;
    bookmark.updateLastFrame();
    EXPECT_EQ(bookmark.lastFrame, 20);
    bookmark.updateLastFrame(); // both ends on one frame are a range like any other
    EXPECT_EQ(bookmark.lastFrame, 25);
    bookmark.firstFrame = 25;
    bookmark.updateFirstFrame();
    EXPECT_EQ(bookmark.firstFrame, 19);
}

TEST(BookmarkTest, MuteTogglesAndLeavesTheImagesWhenUnmuted) {
    Bookmark bookmark(1, 1, 25);
    bookmark.setActive(true);
    EXPECT_EQ(bookmark.activeStrip.name(), u"greenBar_05.png"_s);
    bookmark.muteBookmark();
    EXPECT_TRUE(bookmark.mute && bookmark.activeStrip.isNil());
    bookmark.muteBookmark();
    EXPECT_FALSE(bookmark.mute);
    EXPECT_EQ(bookmark.activeImage.name(), u"NSStatusUnavailable"_s);
}

TEST(BookmarkTest, TimecodesComeFromBothEndsOrFromOneFrame) {
    Bookmark bookmark(26, 25, 25);
    bookmark.computeTimecodeWithOffset();
    EXPECT_EQ(bookmark.firstTC + bookmark.lastTC, u"00:00:01:0000:00:01:24"_s);
    bookmark.computeTimecodeWithFrameNumber(1, 24, startAt(1, 2, 3, 4));
    EXPECT_EQ(bookmark.firstTC + bookmark.lastTC, u"01:02:03:0401:02:03:04"_s);
}

TEST(BookmarkTest, RemovingTheLastStrokeOfOneLeavesADictionaryWithoutKeys) {
    Bookmark bookmark(1, 1, 25);
    bookmark.addDrawingToBookmark(test::sampleDrawing(2));
    bookmark.removeLastStrokeFromDrawing();
    EXPECT_EQ(bookmark.drawings, test::sampleDrawing(1));
    bookmark.removeLastStrokeFromDrawing();
    EXPECT_FALSE(bookmark.drawings.hasKeys);
    EXPECT_FALSE(bookmark.hasDrawings());
    bookmark.removeLastStrokeFromDrawing();
    EXPECT_FALSE(bookmark.drawings.hasKeys);
}

class MovieBookmarksTest : public ::testing::Test {
protected:
    MovieBookmarksTest() {
        add(10, 10);
        add(5, 3);
        add(30, 5);
        add(12, 4)->muteBookmark();
    }
    std::shared_ptr<Bookmark> add(qint64 first, qint64 duration) {
        movie_.bookmarkStore.push_back(std::make_shared<Bookmark>(first, duration, 25.0F));
        return movie_.bookmarkStore.back();
    }
    Movie movie_{u"/a.mov"_s};
};

TEST_F(MovieBookmarksTest, LookupGivesThoseThatCoverTheFrameAndSkipsMutedOnes) {
    const auto& store = movie_.bookmarkStore;
    const auto far = add(19, 1);
    EXPECT_EQ(movie_.bookmarksForFrame(19), (std::vector{store[0], far}));
    EXPECT_EQ(store[0]->activeImage.name(), u"NSStatusAvailable"_s);
    EXPECT_EQ(movie_.bookmarksForFrame(13), std::vector{store[0]});
    EXPECT_EQ(far->activeImage.name(), u"NSStatusNone"_s);
    EXPECT_EQ(store[3]->activeImage.name(), u"NSStatusUnavailable"_s) << "muted: neither returned nor marked";
    EXPECT_TRUE(movie_.bookmarksForFrame(20).empty());
    movie_.removeAllBookmarks();
    EXPECT_TRUE(movie_.bookmarksForFrame(13).empty());
}

TEST_F(MovieBookmarksTest, NeighboursAreStrictlyBeforeAndAfter) {
    EXPECT_EQ(movie_.previousBookmarkFrameNumber(10), 5);
    EXPECT_EQ(movie_.previousBookmarkFrameNumber(11), 10);
    EXPECT_EQ(movie_.previousBookmarkFrameNumber(5), -1);
    EXPECT_EQ(movie_.nextBookmarkFrameNumber(10), 30) << "12 is muted";
    EXPECT_EQ(movie_.nextBookmarkFrameNumber(0), 5);
    EXPECT_EQ(movie_.nextBookmarkFrameNumber(30), -1);
}

TEST_F(MovieBookmarksTest, FrameIsBookmarkedByOlderBookmarksOnly) {
    movie_.mMovieBookmarkArray.push_back(std::make_shared<MovieBookmark>(u"tc"_s, qint64(7), u"d"_s));
    movie_.mMovieBookmarkArray.push_back(std::make_shared<MovieBookmark>()); // without a number
    EXPECT_TRUE(movie_.frameIsBookmarked(7));
    EXPECT_FALSE(movie_.frameIsBookmarked(10));
    EXPECT_FALSE(movie_.frameIsBookmarked(0));
}

} // namespace
} // namespace daylark
