#include "viewer/ViewerFixture.h"

namespace daylark {
namespace {

class TransportTest : public ViewerFixture {};

TEST_F(TransportTest, PlayPressedAgainSpeedsUpByTwoTimesTheMultiplier) {
    showFrames(60);
    for (const float rate : {1.0f, 3.0f, 5.0f}) {
        transport.playMovieForwards();
        EXPECT_EQ(player.rate(), rate);
    }
    for (const float rate : {-1.0f, -3.0f, -5.0f}) {
        transport.playMovieBackwards();
        EXPECT_EQ(player.rate(), rate);
    }
    EXPECT_TRUE(transport.movieIsPlayingBackwards() && !transport.movieIsPlayingForwards());
    preferences.rateMultiplier.set(2.0);
    for (const float rate : {2.0f, 8.0f}) {
        transport.playMovieForwards();
        EXPECT_EQ(player.rate(), rate);
    }
    transport.playPauseMovie();
    EXPECT_FALSE(transport.isRunning());
    EXPECT_EQ(player.rate(), 0);
}

TEST_F(TransportTest, StepsWrapAtTheEndsAndMindTheHandles) {
    showFrames(60);
    transport.jumpToPreviousFrame();
    EXPECT_EQ(player.currentFrame(), 60);
    transport.jumpToNextFrame();
    EXPECT_EQ(player.currentFrame(), 1);
    transport.jumpToNextFrame();
    EXPECT_EQ(player.currentFrame(), 2);
    preferences.trimHandles.set(true);
    transport.jumpToLastFrame();
    EXPECT_EQ(player.currentFrame(), 52); // eight in the tail
    transport.jumpToFirstFrame();
    EXPECT_EQ(player.currentFrame(), 10); // nine in the head
    goTo(60);
    transport.jumpToNextFrame();
    EXPECT_EQ(player.currentFrame(), 10);
    goTo(1);
    transport.jumpToPreviousFrame();
    EXPECT_EQ(player.currentFrame(), 52);
    EXPECT_EQ(bench::settledPicture(player), 52);
}

TEST_F(TransportTest, AStepWhilePlayingOnlyStops) {
    showFrames(60);
    goTo(20);
    for (auto step : {&Transport::jumpToNextFrame, &Transport::jumpToPreviousFrame}) {
        transport.playMovieForwards();
        (transport.*step)();
        EXPECT_FALSE(transport.isRunning());
        EXPECT_EQ(player.rate(), 0);
        EXPECT_EQ(player.currentFrame(), 20);
    }
}

TEST_F(TransportTest, FirstAndLastFrameEndARun) {
    showFrames(60);
    goTo(20);
    transport.playMovieForwards();
    transport.jumpToFirstFrame();
    EXPECT_FALSE(transport.isRunning());
    EXPECT_EQ(player.currentFrame(), 1);
    transport.playMovieBackwards();
    transport.jumpToLastFrame();
    EXPECT_EQ(player.rate(), 0);
    EXPECT_EQ(player.currentFrame(), 60);
}

TEST_F(TransportTest, AOneFrameMovieNeverPlays) {
    showFrames(1);
    QSignalSpy done(&transport, &Transport::actionDone);
    transport.playPauseMovie();
    EXPECT_EQ(done.count(), 1) << "the volume goes away all the same";
    transport.playMovieForwards();
    EXPECT_FALSE(transport.isRunning());
    transport.playMovieBackwards();
    EXPECT_EQ(player.rate(), 0);
    const auto one = controller.currentMovie();
    // Arriving on it in a run pauses the run.
    show({record(bench::movie({.frames = 60, .group = 12})), one});
    transport.playMovieForwards();
    transport.displayNextMovie();
    ASSERT_TRUE(settled());
    EXPECT_FALSE(transport.isRunning());
    EXPECT_EQ(player.rate(), 0);
}

TEST_F(TransportTest, TheMultiplierReachesARunForwardsAtOnceAndOneBackwardsOnlyByReset) {
    showFrames(60);
    transport.playMovieForwards();
    preferences.rateMultiplier.set(2.0);
    transport.setRateMultiplier({QStringLiteral("Apply")});
    EXPECT_EQ(player.rate(), 2);
    EXPECT_EQ(time.approxFrameRate(), QStringLiteral("(48fps)"));
    transport.setRateMultiplier({QStringLiteral("Reset")});
    EXPECT_EQ(player.rate(), 1);
    EXPECT_EQ(time.approxFrameRate(), QStringLiteral("(24fps)"));
    transport.playMovieBackwards();
    preferences.rateMultiplier.set(0.5);
    transport.setRateMultiplier({QStringLiteral("Apply")});
    EXPECT_EQ(player.rate(), -1);
    transport.playMovieBackwards();
    transport.setRateMultiplier({QStringLiteral("Reset")});
    EXPECT_EQ(player.rate(), -1);
}

TEST_F(TransportTest, FourRepeatModesAreStoredByTitleAndOthersAreNot) {
    showFrames(12);
    for (const char* title : {"Play Movie Once", "Play Playlist Once", "Loop Playlist", "Loop Movie"}) {
        transport.setRepeatMode({QLatin1String(title)});
        EXPECT_EQ(preferences.repeatType.text(), QLatin1String(title));
    }
    transport.setRepeatMode({QStringLiteral("Ping-Pong")});
    EXPECT_EQ(preferences.repeatType(), RepeatMode::loopMovie);
    transport.setVolume(0.25f);
    EXPECT_EQ(player.volume(), 0.25f);
    EXPECT_EQ(preferences.volume(), 0.25f);
}

TEST_F(TransportTest, TheSliderPausesAndShowsTheFrameItLandsIn) {
    showFrames(60);
    transport.playMovieForwards();
    const qint32 step = player.index().step;
    for (const qint64 frame : {1, 17, 60}) {
        transport.setSliderTime(double((frame - 1) * step));
        EXPECT_FALSE(transport.isRunning());
        EXPECT_EQ(bench::settledPicture(player), frame);
    }
    EXPECT_EQ(time.sliderMaximum(), 59.0 * step);
    transport.setSliderTime(time.sliderMaximum());
    EXPECT_EQ(player.currentFrame(), 60);
}

TEST_F(TransportTest, EachStartPositionPlacesAMovieThatWasNeverProbed) {
    const auto movie = record(bench::movie({.frames = 60, .group = 12}));
    const auto before = record(bench::movie({.frames = 48, .group = 12}));
    movie->mLastFrameVisited = {41 * 25, 600};
    const auto muted = std::make_shared<Bookmark>(5, 1, 24.0f);
    muted->mute = true;
    movie->bookmarkStore = {muted, std::make_shared<Bookmark>(33, 1, 24.0f)};
    const std::pair<const char*, qint64> cases[] = {{"First Frame", 1},         {"Second Frame", 2},
                                                    {"Middle Frame", 31},       {"Current Frame", 20},
                                                    {"Last Visited Frame", 42}, {"First Bookmark", 33}};
    for (const auto& [choice, frame] : cases) {
        preferences.loadFrame.set(StartFrame::first);
        show({before, movie});
        goTo(20);
        preferences.loadFrame.store(QString::fromLatin1(choice));
        edits.refresh(movie, [](Movie& m) { m.mLastFrameVisited = {41 * 25, 600}; });
        controller.list().setSelectionIndex(1);
        ASSERT_TRUE(settled());
        EXPECT_EQ(bench::pictureNumber(player), frame) << choice;
    }
}

TEST_F(TransportTest, StartOnABookmarkBeyondTheEndIsTheLastFrameAndWithoutOneTheFirst) {
    preferences.loadFrame.set(StartFrame::firstBookmark);
    const auto movie = record(bench::movie({.frames = 60, .group = 12}));
    movie->bookmarkStore = {std::make_shared<Bookmark>(61, 1, 24.0f)};
    show({movie});
    EXPECT_EQ(player.currentFrame(), 60);
    movie->bookmarkStore.front()->mute = true;
    show({movie});
    EXPECT_EQ(player.currentFrame(), 1);
}

TEST_F(TransportTest, NextAndPreviousPassOverSkippedAndMissingMovies) {
    std::vector<std::shared_ptr<Movie>> movies;
    for (int n = 0; n < 5; ++n)
        movies.push_back(record(QStringLiteral("/m%1.mov").arg(n)));
    movies[1]->flagString = QStringLiteral("907");
    movies[3]->creatingThumbnailText = fileNotFoundText;
    ViewerList list;
    list.setMovies(movies, 0);
    EXPECT_EQ(list.findNextMovie(), 2);
    EXPECT_EQ(list.findPreviousMovie(), -1);
    list.setSelectionIndex(2);
    EXPECT_EQ(list.findNextMovie(), 4);
    EXPECT_EQ(list.findPreviousMovie(), 0);
    movies[4]->flagString = QStringLiteral("907");
    EXPECT_EQ(list.findNextMovie(), -1);
    movies[0]->flagString = QStringLiteral("907");
    EXPECT_EQ(list.findPreviousMovie(), -1);
}

/// Two movies of a list, run onto the end of one of them.
class RepeatModeTest : public ViewerFixture {
protected:
    void run(const char* mode, qsizetype index, bool forwards = true) {
        preferences.repeatType.store(QString::fromLatin1(mode));
        show({first, second}, index);
        forwards ? transport.playMovieForwards() : transport.playMovieBackwards();
        playOntoTheEnd();
    }
    std::shared_ptr<Movie> first = record(bench::movie({.frames = 60, .group = 12}));
    std::shared_ptr<Movie> second = record(bench::movie({.frames = 48, .group = 12}));
};

TEST_F(RepeatModeTest, AMovieOnceStopsOnItsEnd) {
    run("Play Movie Once", 0);
    EXPECT_FALSE(transport.isRunning());
    EXPECT_EQ(player.currentFrame(), 60);
    EXPECT_EQ(player.rate(), 0);
}

TEST_F(RepeatModeTest, AMovieOnceBackwardsKeepsItsDirection) {
    run("Play Movie Once", 0, false);
    EXPECT_EQ(player.rate(), 0);
    EXPECT_EQ(player.currentFrame(), 1);
    EXPECT_TRUE(transport.movieIsPlayingBackwards()) << "only a run forwards is marked as ended";
}

TEST_F(RepeatModeTest, APlaylistOnceBackwardsGoesToTheNextMovieToo) {
    preferences.loadFrame.set(StartFrame::middle);
    run("Play Playlist Once", 0, false);
    ASSERT_TRUE(settled());
    EXPECT_EQ(controller.currentMovie(), second);
    EXPECT_TRUE(transport.movieIsPlayingBackwards());
    EXPECT_EQ(player.rate(), -1);
}

TEST_F(RepeatModeTest, ARunStartsMoviesAnewThatWereLeftAtTheirEnd) {
    preferences.loadFrame.set(StartFrame::lastVisited);
    second->mLastFrameVisited = {48 * 25, 600};
    const auto foreseen = [this](bool running) {
        const StartPosition::Previous before{player.currentTime(), player.currentFrame()};
        return StartPosition(*second, preferences, before).frameIn(player.index(), running);
    };
    show({first, second});
    transport.displayNextMovie(); // standing, it is where it was left
    ASSERT_TRUE(settled());
    EXPECT_EQ(player.currentFrame(), 48);
    EXPECT_EQ(foreseen(false), 48);
    first->mLastFrameVisited = {};
    run("Loop Playlist", 0);
    ASSERT_TRUE(settled());
    EXPECT_EQ(controller.currentMovie(), second);
    EXPECT_EQ(player.currentFrame(), 1);
    EXPECT_EQ(foreseen(true), 1);
    EXPECT_EQ(player.rate(), 1);
}

TEST_F(RepeatModeTest, WithHandlesTrimmedALoopedMoviesEndGoesBackToTimeZero) {
    preferences.rateMultiplier.set(2.0);
    preferences.trimHandles.set(true);
    show({first});
    transport.playMovieForwards();
    goTo(40);
    Q_EMIT player.didEnd();
    EXPECT_EQ(player.currentFrame(), 1) << "not to the end of the handle";
    EXPECT_EQ(player.rate(), 2);
    transport.playMovieBackwards();
    goTo(40);
    Q_EMIT player.didEnd();
    EXPECT_EQ(player.currentFrame(), 40);
}

TEST_F(RepeatModeTest, AModeOrVolumeChosenInThePreferencesHoldsForTheRunUnderWay) {
    preferences.repeatType.set(RepeatMode::oneShot);
    show({first});
    QSignalSpy ended(&player, &Player::didEnd);
    transport.playMovieForwards();
    preferences.repeatType.set(RepeatMode::loopMovie);
    preferences.volume.set(0.75f);
    EXPECT_EQ(player.volume(), 0.75f);
    playOntoTheEnd();
    EXPECT_TRUE(ended.isEmpty());
    EXPECT_TRUE(transport.movieIsPlayingForwards());
}

TEST_F(RepeatModeTest, TheEndOfASingleItemInEachMode) {
    struct Case {
        const char* mode;
        bool forwards;
        qsizetype index;
        float rate;
        qint64 frame;
        bool reachedEnd;
    };
    const Case cases[] = {{"Play Movie Once", true, 0, 2, 20, false}, // nothing
                          {"Ping-Pong", true, 0, -2, 20, false},
                          {"Ping-Pong", false, 0, 2, 20, false},
                          {"Loop Movie", true, 0, 2, 1, false},
                          {"Loop Movie", false, 0, -2, 1, false}, // its end was never set
                          {"One Shot", true, 0, 0, 20, true},
                          {"One Shot", false, 0, 0, 20, true},
                          {"Loop Playlist", true, 0, 2, 1, true},
                          {"Loop Playlist", true, 1, 0, 20, true}, // nothing follows
                          {"Loop Playlist", false, 1, -2, 1, true}};
    preferences.rateMultiplier.set(2.0);
    bool reachedEnd = false;
    for (const Case& at : cases) {
        preferences.repeatType.store(QString::fromLatin1(at.mode));
        show({first, second}, at.index);
        transport.pauseMovie();
        goTo(20);
        at.forwards ? transport.playMovieForwards() : transport.playMovieBackwards();
        transport.playerItemDidReachEnd();
        reachedEnd = reachedEnd || at.reachedEnd; // stays so once it was
        EXPECT_EQ(player.rate(), at.rate) << at.mode << at.forwards;
        EXPECT_EQ(transport.isRunning(), at.rate != 0) << at.mode << at.forwards;
        EXPECT_EQ(player.currentFrame(), at.frame) << at.mode << at.forwards;
        EXPECT_EQ(transport.movieReachedEnd(), reachedEnd) << at.mode << at.forwards;
    }
}

TEST_F(RepeatModeTest, APlaylistOnceGoesOnInItsDirectionAndStopsAtTheEndOfTheList) {
    run("Play Playlist Once", 0);
    ASSERT_TRUE(settled());
    EXPECT_EQ(controller.currentMovie(), second);
    EXPECT_TRUE(transport.movieIsPlayingForwards());
    EXPECT_EQ(player.rate(), 1);
    playOntoTheEnd();
    EXPECT_FALSE(transport.isRunning());
    EXPECT_EQ(controller.currentMovie(), second);
    second->flagString = QStringLiteral("907");
    run("Play Playlist Once", 0);
    EXPECT_FALSE(transport.isRunning());
    EXPECT_EQ(controller.currentMovie(), first);
}

TEST_F(RepeatModeTest, APlaylistLoopsBackToItsFirstMovieFromItsFirstFrame) {
    preferences.loadFrame.set(StartFrame::lastVisited);
    first->mLastFrameVisited = {30 * 25, 600};
    run("Loop Playlist", 1);
    ASSERT_TRUE(settled());
    EXPECT_EQ(controller.currentMovie(), first);
    EXPECT_EQ(player.currentFrame(), 1);
    EXPECT_TRUE(transport.movieIsPlayingForwards());
    EXPECT_EQ(player.rate(), 1);
    controller.list().setSelectionIndex(1);     // leaves the first, which stores its place
    first->flagString = QStringLiteral("Skip"); // the label: the movie starts where it starts
    first->mLastFrameVisited = {30 * 25, 600};
    run("Loop Playlist", 1);
    ASSERT_TRUE(settled());
    EXPECT_EQ(player.currentFrame(), 31);
}

TEST_F(RepeatModeTest, AListOfOneMovieStartsAnewAtOnce) {
    preferences.repeatType.set(RepeatMode::loopPlaylist);
    show({first});
    transport.playMovieForwards();
    transport.playMovieForwards();
    playOntoTheEnd();
    EXPECT_EQ(player.currentFrame(), 1);
    EXPECT_TRUE(transport.movieIsPlayingForwards());
    EXPECT_EQ(player.rate(), 1);
}

TEST_F(RepeatModeTest, OneShotStopsEitherWayAndPingPongTurns) {
    run("One Shot", 0);
    EXPECT_FALSE(transport.isRunning());
    run("One Shot", 0, false);
    EXPECT_FALSE(transport.isRunning());
    run("Ping-Pong", 0);
    EXPECT_TRUE(transport.movieIsPlayingBackwards());
    EXPECT_EQ(player.rate(), -1);
    playOntoTheEnd();
    EXPECT_TRUE(transport.movieIsPlayingForwards());
    EXPECT_EQ(player.rate(), 1);
}

TEST_F(RepeatModeTest, ALoopedMovieRunsOnWithoutAnEnd) {
    QSignalSpy ended(&player, &Player::didEnd);
    run("Loop Movie", 0);
    EXPECT_TRUE(ended.isEmpty());
    EXPECT_TRUE(transport.movieIsPlayingForwards());
    EXPECT_EQ(player.rate(), 1);
}

} // namespace
} // namespace daylark
