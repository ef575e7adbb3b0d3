#include "viewer/ViewerFixture.h"

namespace daylark {
namespace {

class PlaybackRangeTest : public ViewerFixture {
protected:
    PlaybackRangeTest() {
        preferences.handleHead.set(8);
        preferences.handleTail.set(8);
        preferences.defaultHandleHead.set(9);
        preferences.defaultHandleTail.set(7);
    }
    /// A movie whose properties have been read, so that the look once a second minds it.
    void showVisited(int frames) {
        showFrames(frames);
        ASSERT_TRUE(bench::waitUntil([this] { return controller.currentMovie()->mMovieHasBeenVisited; }));
    }
    /// Lets the second pass and gives the frame that is shown then; the clock stands.
    qint64 frameAfterTheLook() {
        controller.updateGUI();
        return player.currentFrame();
    }
    bool trims() const { return preferences.trimHandles(); }
    PlaybackRange& range = controller.range();
};

TEST_F(PlaybackRangeTest, TrimmingKeepsTheFramesBetweenTheHandlesAndShowsTheBars) {
    showFrames(100);
    EXPECT_FALSE(range.isLooping() || range.bars().shown);
    range.toggleTrimHandles();
    EXPECT_TRUE(trims() && range.isLooping());
    EXPECT_EQ(range.bars(), (PlaybackRange::BarState{9, 92, 100, true}));
    transport.jumpToFirstFrame();
    EXPECT_EQ(bench::settledPicture(player), 9);
    transport.jumpToLastFrame();
    EXPECT_EQ(bench::settledPicture(player), 92);
    transport.jumpToNextFrame();
    EXPECT_EQ(bench::settledPicture(player), 93) << "steps are free to leave the range";
    range.toggleTrimHandles();
    EXPECT_FALSE(trims() || range.isLooping() || range.bars().shown);
}

TEST_F(PlaybackRangeTest, MarkedFramesAreTheFirstAndTheLastOfTheRange) {
    showFrames(100);
    goTo(1);
    range.markInPoint();
    EXPECT_EQ(preferences.handleHead(), 0);
    EXPECT_TRUE(trims());
    goTo(100);
    range.markOutPoint();
    EXPECT_EQ(preferences.handleTail(), 0);
    EXPECT_EQ(range.firstFrameForLoop(), 1);
    EXPECT_EQ(range.lastFrameForLoop(), 100);
    goTo(31);
    range.markInPoint();
    goTo(60);
    range.markOutPoint();
    EXPECT_EQ(range.bars(), (PlaybackRange::BarState{31, 60, 100, true}));
    transport.jumpToLastFrame();
    EXPECT_EQ(bench::settledPicture(player), 60);
    transport.jumpToFirstFrame();
    EXPECT_EQ(bench::settledPicture(player), 31);
    range.resetHandles();
    EXPECT_EQ(range.bars(), (PlaybackRange::BarState{10, 93, 100, true}));
}

TEST_F(PlaybackRangeTest, HandlesThatLeaveNoFrameSwitchTrimmingOffAndSaySo) {
    showFrames(100);
    preferences.handleHead.set(60);
    preferences.handleTail.set(40);
    range.toggleTrimHandles();
    EXPECT_FALSE(trims() || range.isLooping() || range.bars().shown);
    EXPECT_TRUE(alerts.shown.empty()) << "what applies the range goes on first";
    ASSERT_TRUE(bench::waitUntil([this] { return !alerts.shown.empty(); }));
    EXPECT_EQ(alerts.shown[0].message, QStringLiteral("Handles are longer than movie"));
    EXPECT_EQ(alerts.shown[0].informativeText, QStringLiteral("Choose another value"));
    EXPECT_EQ(alerts.shown[0].style, AlertStyle::warning);
    EXPECT_EQ(preferences.handleHead(), 60) << "the values are kept";
    EXPECT_EQ(preferences.handleTail(), 40);
    preferences.handleTail.set(39); // one frame is a range
    range.toggleTrimHandles();
    EXPECT_EQ(range.bars(), (PlaybackRange::BarState{61, 61, 100, true}));
}

TEST_F(PlaybackRangeTest, AShortMovieSwitchesTrimmingOffForThoseAfterIt) {
    preferences.longHandlesInPassing.set(false);
    const auto longOne = record(bench::movie({.frames = 100, .group = 12}));
    const auto shortOne = record(bench::movie({.frames = 12, .group = 12}));
    preferences.trimHandles.set(true);
    show({longOne, shortOne});
    EXPECT_EQ(range.bars(), (PlaybackRange::BarState{9, 92, 100, true}));
    transport.displayNextMovie();
    EXPECT_FALSE(range.isLooping() || range.bars().shown) << "left at once";
    ASSERT_TRUE(settled());
    ASSERT_TRUE(bench::waitUntil([this] { return alerts.shown.size() == 1; }));
    transport.displayPreviousMovie();
    ASSERT_TRUE(settled());
    EXPECT_FALSE(trims() || range.isLooping());
}

TEST_F(PlaybackRangeTest, ARunIsHeldInTheRangeByTheLookOnceASecondOnly) {
    preferences.exactLoops.set(false);
    showVisited(100);
    range.toggleTrimHandles();
    goTo(2);
    transport.playMovieForwards();
    EXPECT_EQ(player.currentFrame(), 2) << "nobody has looked yet";
    EXPECT_EQ(frameAfterTheLook(), 9);
    EXPECT_EQ(bench::settledPicture(player), 9);
    EXPECT_TRUE(transport.movieIsPlayingForwards());
    goTo(90);
    EXPECT_EQ(frameAfterTheLook(), 90);
    goTo(91); // a frame before the last one
    EXPECT_EQ(frameAfterTheLook(), 9);
    goTo(99);
    EXPECT_EQ(frameAfterTheLook(), 9);
    transport.playMovieBackwards();
    goTo(11);
    EXPECT_EQ(frameAfterTheLook(), 11);
    goTo(10);
    EXPECT_EQ(frameAfterTheLook(), 92);
    goTo(93);
    EXPECT_EQ(frameAfterTheLook(), 92);
    transport.pauseMovie();
    goTo(3);
    EXPECT_EQ(frameAfterTheLook(), 3) << "paused, every frame may be looked at";
}

TEST_F(PlaybackRangeTest, AnExactLoopIsThePlayersToKeepAndBringsARunInAtOnce) {
    showVisited(100);
    range.toggleTrimHandles();
    goTo(2);
    transport.playMovieForwards();
    EXPECT_EQ(player.currentFrame(), 9) << "not a second later";
    goTo(92);
    EXPECT_EQ(frameAfterTheLook(), 92) << "a look that falls on the last frame doesn't cut it off";
    ASSERT_TRUE(bench::waitUntil([&] { return player.isRolling(); }));
    clock.now += 1'500'000'000 / 24; // a frame and a half
    player.tick();
    EXPECT_EQ(player.currentFrame(), 9);
    preferences.exactLoops.set(false);
    goTo(91);
    EXPECT_EQ(frameAfterTheLook(), 9) << "the look's again";
    preferences.exactLoops.set(true);
    goTo(95);
    EXPECT_EQ(frameAfterTheLook(), 9);
    // Handles stand for the movie's ends: what comes there is for the repeat mode to say.
    preferences.repeatType.set(RepeatMode::playMovieOnce);
    goTo(92);
    ASSERT_TRUE(bench::waitUntil([&] { return player.isRolling(); }));
    clock.now += 1'500'000'000 / 24;
    player.tick();
    EXPECT_FALSE(transport.movieIsPlayingForwards());
    EXPECT_EQ(player.currentFrame(), 92);
}

TEST_F(PlaybackRangeTest, HandlesEditedElsewhereAreAppliedAtOnce) {
    showFrames(100);
    preferences.trimHandles.set(true);
    EXPECT_TRUE(range.isLooping());
    preferences.handleHead.set(20);
    EXPECT_EQ(range.firstFrameForLoop(), 21);
    preferences.handleTail.set(90);
    EXPECT_FALSE(trims() || range.isLooping());
    ASSERT_TRUE(bench::waitUntil([this] { return alerts.shown.size() == 1; }));
}

TEST_F(PlaybackRangeTest, HandleRangeAndBookmarkLoopEndEachOther) {
    showFrames(100);
    const auto looping = std::make_shared<Bookmark>(30, 5, 24.0f);
    edits.addBookmarks(controller.currentMovie(), {looping});
    range.toggleTrimHandles();
    looping->loopStatus = true;
    range.loopRange(30, 34);
    EXPECT_FALSE(trims());
    EXPECT_EQ(range.bars(), (PlaybackRange::BarState{30, 34, 100, true}))
        << "trimming off leaves the loop alone";
    range.moveRange(30, 40);
    EXPECT_EQ(range.lastFrameForLoop(), 40);
    preferences.handleTail.set(9);
    EXPECT_TRUE(range.isLooping()) << "handles that do not apply leave the loop alone";
    preferences.handleTail.set(8);
    range.toggleTrimHandles();
    EXPECT_FALSE(looping->loopStatus);
    EXPECT_EQ(looping->loopImage.name(), QStringLiteral("loop_OFF.png"));
    EXPECT_EQ(range.firstFrameForLoop(), 9);
    range.loopRange(120, 130, PlaybackRange::Bars::hidden);
    range.endLoop();
    EXPECT_FALSE(range.isLooping() || range.bars().shown);
}

TEST_F(PlaybackRangeTest, SheetResultsResetTheHandlesOrEndTheTrimming) {
    showFrames(100);
    range.toggleTrimHandles();
    range.alertDidEnd(Alerts::firstButton, QStringLiteral("File Missing Alert"));
    range.alertDidEnd(Alerts::firstButton, {});
    EXPECT_EQ(range.firstFrameForLoop(), 9);
    range.alertDidEnd(Alerts::secondButton, {});
    EXPECT_EQ(range.firstFrameForLoop(), 10) << "any other button goes back to the default handles";
    range.alertDidEnd(Alerts::firstButton, QStringLiteral("Handles Alert"));
    EXPECT_FALSE(trims() || range.isLooping());
}

TEST_F(PlaybackRangeTest, WithoutAMovieThereIsNothingToMark) {
    preferences.longHandlesInPassing.set(false);
    range.markInPoint();
    range.markOutPoint();
    preferences.trimHandles.set(true);
    EXPECT_FALSE(range.isLooping());
    EXPECT_EQ(preferences.handleHead(), 8);
    showFrames(1); // a single frame: no handles fit
    ASSERT_TRUE(bench::waitUntil([this] { return alerts.shown.size() == 1; }));
    preferences.handleHead.set(0);
    preferences.handleTail.set(0);
    range.markOutPoint();
    EXPECT_EQ(range.bars(), (PlaybackRange::BarState{1, 1, 1, true}));
}

} // namespace
} // namespace daylark
