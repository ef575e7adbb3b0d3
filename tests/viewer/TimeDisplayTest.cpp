#include "support/PictureMaker.h"
#include "viewer/ViewerFixture.h"

#include <QTemporaryDir>

#include <limits>

namespace daylark {
namespace {

class TimeDisplayTest : public ViewerFixture {};

TEST_F(TimeDisplayTest, TimecodeCountsWholeFramesAndNamesItsSource) {
    show({record(bench::movie({.frames = 60, .group = 12, .rateNum = 30000, .rateDen = 1001}))});
    EXPECT_EQ(time.computeTimecodeFromFrameNumber(30), QStringLiteral("00:00:00:29"));
    EXPECT_EQ(time.computeTimecodeFromFrameNumber(31), QStringLiteral("00:00:01:00"));
    show({record(bench::movie({.frames = 60, .group = 12}))});
    SmpteTime start;
    start.hours = 1;
    time.setTimeCodeData(start);
    goTo(25);
    EXPECT_EQ(time.stripTimecode(), QStringLiteral("TC 01:00:01:00"));
    EXPECT_EQ(time.computeTimecodeFromFrameNumber(1), QStringLiteral("01:00:00:00"));
    start.hours = 23;
    start.minutes = start.seconds = 59;
    time.setTimeCodeData(start);
    EXPECT_EQ(time.stripTimecode(), QStringLiteral("TC 00:00:00:00"));
}

/// Wherever the timecode is shown, stored or typed in.
TEST_F(TimeDisplayTest, ARunOfEverySecondPictureGoesByTheNumbersOfItsPictures) {
    const QTemporaryDir folder;
    const auto pathOf = [&](int number) { return folder.filePath(QStringLiteral("st.%1.exr").arg(number)); };
    for (const int number : {1001, 1003, 1005}) {
        test::WrittenPicture picture = test::barCodePicture(pathOf(number), number);
        const int frames = number - 1001 + 21;
        picture.rate = 24;
        picture.timecode = test::packedTimecode(10, 0, frames / 24, frames % 24);
        writePicture(picture);
    }
    const auto shot = record(pathOf(1001));
    shot->frameRun = MovieRun();
    shot->frameRun->run = {QStringLiteral("st."), QStringLiteral(".exr"), 4, false, 1001, 1005, 2};
    show({shot});
    goTo(3);
    bookmarks.addBookmark(); // its header may not have been read yet
    ASSERT_TRUE(bench::waitUntil([this] { return time.timecodeIsKnown(); }));
    const QString header = QStringLiteral("10:00:01:01");
    EXPECT_EQ(time.stripTimecode(), QStringLiteral("TC ") + header);
    EXPECT_EQ(time.frameOfEntry(header), 3);
    bookmarks.addBookmark();
    ASSERT_EQ(shot->bookmarkStore.size(), 2U);
    for (const auto& bookmark : shot->bookmarkStore)
        EXPECT_EQ(bookmark->firstTC, header);
}

TEST_F(TimeDisplayTest, CounterAndTimecodeKeepTheirTextsWhileBothAreSwitchedOff) {
    showFrames(60);
    goTo(10);
    EXPECT_TRUE(time.currentFrameNumberForDisplay().isEmpty());
    EXPECT_EQ(time.stripFrameNumber(), QStringLiteral("0010"));
    preferences.displayFrameCounter.set(true);
    preferences.counterStartFrame.set(1001);
    goTo(11);
    EXPECT_EQ(time.currentFrameNumberForDisplay(), QStringLiteral("1011"));
    EXPECT_EQ(time.currentTimeCodeForDisplay(), QStringLiteral("00:00:00:10"));
    preferences.displayFrameCounter.set(false);
    goTo(12);
    EXPECT_EQ(time.currentFrameNumberForDisplay(), QStringLiteral("1011"));
    EXPECT_EQ(time.stripFrameNumber(), QStringLiteral("1012"));
    EXPECT_EQ(time.stripFrameOfFrames(), QStringLiteral("1012 / %1").arg(1000 + player.index().count()));
    preferences.counterStartFrame.set(-12);
    EXPECT_EQ(time.stripFrameNumber(), QStringLiteral("-001"));
}

TEST_F(TimeDisplayTest, ElapsedTimeFollowsThePositionAndRatesShowAtMostThreeDigits) {
    show({record(bench::movie({.frames = 60, .group = 12, .rateNum = 24000, .rateDen = 1001}))});
    EXPECT_EQ(time.currentTimeForDisplay(), QStringLiteral("00:00"));
    goTo(25);
    EXPECT_EQ(time.currentTimeForDisplay(), QStringLiteral("00:01"));
    edits.refresh(controller.currentMovie(), [](Movie& movie) {
        movie.mMovieFPS = 23.976f;
        movie.mMovieDurationSeconds = 3600;
    });
    time.setOverlayInfoStatic();
    EXPECT_EQ(time.approxFrameRate(), QStringLiteral("(23.976fps)"));
    EXPECT_EQ(controller.currentMovie()->durationText, QStringLiteral("1:00:00"));
}

TEST_F(TimeDisplayTest, TheFrameOnScreenMayCountAsOne) {
    time.setFrameCounterToOne(); // nothing on screen: nothing happens
    EXPECT_FALSE(preferences.displayFrameCounter());
    showFrames(60);
    goTo(20);
    time.setFrameCounterToOne();
    EXPECT_EQ(preferences.counterStartFrame(), -18);
    EXPECT_TRUE(preferences.displayFrameCounter());
    EXPECT_EQ(time.currentFrameNumberForDisplay(), QStringLiteral("0001"));
    goTo(19);
    EXPECT_EQ(time.currentFrameNumberForDisplay(), QStringLiteral("0000"));
}

TEST_F(TimeDisplayTest, RecordsWithoutARateOrWithAnAbsurdOneHarmNothing) {
    showFrames(60);
    goTo(49);
    for (const float rate : {0.0f, 0.2f, -24.0f, 1e30f, std::numeric_limits<float>::quiet_NaN(),
                             std::numeric_limits<float>::infinity()}) {
        edits.refresh(controller.currentMovie(), [rate](Movie& movie) { movie.mMovieFPS = rate; });
        time.setOverlayInfoStatic();
        time.setOverlayInfoDynamic();
        EXPECT_EQ(time.currentFrameNumber(), 49);
        EXPECT_EQ(time.stripTimecode().size(), 11);
        if (!(rate > 0)) {
            EXPECT_EQ(time.currentTimeForDisplay(), QStringLiteral("00:02"))
                << "the samples' own rate counts";
        }
    }
    preferences.counterStartFrame.store(1e300);
    EXPECT_EQ(time.stripFrameNumber(), QStringLiteral("0048"));
}

TEST_F(TimeDisplayTest, TheSliderHasATickAFrameUpTo239Frames) {
    showFrames(239);
    EXPECT_EQ(time.tickCount(), 239);
    showFrames(240);
    EXPECT_EQ(time.tickCount(), 0);
}

} // namespace
} // namespace daylark
