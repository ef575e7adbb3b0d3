#include "viewer/ViewerFixture.h"

#include <QColor>

namespace daylark {
namespace {

class MoviePlayerControllerTest : public ViewerFixture {
protected:
    std::shared_ptr<Movie> first = record(bench::movie({.frames = 60, .group = 12}));
    std::shared_ptr<Movie> second = record(bench::movie({.frames = 48, .group = 12}));
};

TEST_F(MoviePlayerControllerTest, LeavingAMovieStoresItsPlaceAndEndsItsLoops) {
    prefer("loadFrame", QStringLiteral("Last Visited Frame"));
    show({first, second});
    const auto looping = std::make_shared<Bookmark>(3, 4, 24.0f);
    looping->loopStatus = true;
    first->bookmarkStore = {looping};
    goTo(37);
    transport.displayNextMovie();
    EXPECT_EQ(player.currentFrame(), 0) << "the old movie is left at once";
    EXPECT_FALSE(looping->loopStatus);
    ASSERT_TRUE(settled());
    EXPECT_EQ(controller.currentMovie(), second);
    transport.displayPreviousMovie();
    ASSERT_TRUE(settled());
    EXPECT_EQ(bench::pictureNumber(player), 37);
    EXPECT_EQ(library.shownIndexes, (std::vector<qsizetype>{0, 1, 0}));
}

TEST_F(MoviePlayerControllerTest, ARunCarriesOverToTheNextMovieInItsDirection) {
    show({first, second});
    transport.playMovieBackwards();
    transport.displayNextMovie();
    ASSERT_TRUE(settled());
    EXPECT_TRUE(transport.movieIsPlayingBackwards());
    EXPECT_EQ(player.rate(), -1);
}

TEST_F(MoviePlayerControllerTest, OfManySelectionsInARowOnlyTheLastIsShown) {
    QSignalSpy shown(&controller, &MoviePlayerController::movieShown);
    controller.open({first, second}, 0);
    for (int turn = 0; turn < 20; ++turn)
        controller.list().setSelectionIndex((turn + 1) % 2);
    controller.list().setSelectionIndex(1);
    ASSERT_TRUE(settled());
    EXPECT_EQ(shown.count(), 1);
    EXPECT_EQ(player.index().count(), 48);
    EXPECT_EQ(first->mLastFrameVisited, MediaTime{}) << "what was never shown has no place";
}

TEST_F(MoviePlayerControllerTest, AMissingFileIsToldAndTheRunEnds) {
    show({first, record(QStringLiteral("/nowhere/gone.mov"))});
    transport.playMovieForwards();
    transport.displayNextMovie();
    ASSERT_TRUE(bench::waitUntil([this] { return !alerts.shown.empty(); }));
    EXPECT_EQ(alerts.shown.front().message, QStringLiteral("File Not Found"));
    EXPECT_EQ(alerts.shown.front().informativeText,
              QStringLiteral("This file may have been renamed or deleted."));
    EXPECT_EQ(alerts.shown.front().style, AlertStyle::warning);
    EXPECT_FALSE(transport.isRunning());
    transport.displayPreviousMovie();
    ASSERT_TRUE(settled());
    EXPECT_EQ(controller.currentMovie(), first);
}

TEST_F(MoviePlayerControllerTest, ShowingAMovieReadsItsProperties) {
    QSignalSpy probed(&controller, &MoviePlayerController::movieProbed);
    show({first});
    ASSERT_TRUE(bench::waitUntil([&] { return probed.count() == 1; }));
    EXPECT_TRUE(first->mMovieHasBeenVisited);
    EXPECT_EQ(first->mMovieDurationFrames, 60);
    EXPECT_EQ(first->mMovieFPS, 24.0f);
    EXPECT_EQ(first->mMovieTimeValuePerStep, player.index().step);
    EXPECT_EQ(first->durationText, QStringLiteral("00:02"));
}

TEST_F(MoviePlayerControllerTest, ClosingPutsThePlaceTheColoursAndTheSessionBack) {
    prefer("rateMultiplier", 2.0);
    show({first});
    goTo(21);
    transport.playMovieForwards();
    controller.setBrushColour(Qt::red);
    controller.setOnscreenTextColour(Qt::cyan);
    QSignalSpy closed(&controller, &MoviePlayerController::windowClosed);
    EXPECT_TRUE(controller.windowShouldClose());
    controller.close();
    EXPECT_EQ(first->mLastFrameVisited.seconds(), 20.0 / 24);
    EXPECT_EQ(defaults.colourForKey(QStringLiteral("brushColour")), QColor(Qt::red));
    EXPECT_EQ(defaults.colourForKey(QStringLiteral("onscreenTextColour")), QColor(Qt::cyan));
    EXPECT_EQ(defaults.doubleForKey(QStringLiteral("rateMultplier")), 1.0);
    EXPECT_EQ(defaults.doubleForKey(QStringLiteral("rateMultiplier")), 2.0) << "outlives the window";
    EXPECT_EQ(library.calls,
              (QStringList{QStringLiteral("saveTempSession"), QStringLiteral("bringLibraryToFront")}));
    EXPECT_EQ(closed.count(), 1);
    EXPECT_FALSE(controller.isOpen() || player.isOpen() || transport.isRunning());
    EXPECT_EQ(controller.currentMovie(), nullptr);
    show({first}); // and opens again
    EXPECT_EQ(player.currentFrame(), 1);
}

TEST_F(MoviePlayerControllerTest, FlagAndPathOfTheMovieOnScreen) {
    show({first});
    QSignalSpy edited(&edits, &ReviewEdits::movieChanged);
    controller.setFlagImage({{}, 904});
    EXPECT_EQ(first->flagString, QStringLiteral("904"));
    EXPECT_EQ(first->flag.name(), QStringLiteral("flag_Red.png"));
    controller.setFlagImage({{}, 900});
    EXPECT_EQ(first->flagString, QStringLiteral("900"));
    EXPECT_TRUE(first->flag.isNil());
    EXPECT_EQ(edited.count(), 2);
    controller.copyPath();
    EXPECT_EQ(pasteboard.content, first->filepathString);
    controller.copyFilename();
    EXPECT_EQ(pasteboard.content, QFileInfo(first->filepathString).fileName());
    controller.revealInFinder();
    EXPECT_EQ(browser.revealed, QStringList{first->filepathString});
}

TEST_F(MoviePlayerControllerTest, AListThatChangesKeepsTheMovieOnScreen) {
    show({first, second});
    goTo(9);
    controller.list().setMovies({second, first}, 1);
    EXPECT_EQ(player.currentFrame(), 9);
    controller.list().setMovies({second}, 0);
    ASSERT_TRUE(settled());
    EXPECT_EQ(controller.currentMovie(), second);
    controller.list().setMovies({}, -1);
    EXPECT_EQ(controller.currentMovie(), nullptr);
    EXPECT_FALSE(player.isOpen());
}

} // namespace
} // namespace daylark
