#include "platform/FileBookmark.h"
#include "support/TimecodeMovie.h"
#include "viewer/ViewerFixture.h"

#include <QColor>
#include <QFile>
#include <QTemporaryDir>

namespace daylark {
namespace {

class MoviePlayerControllerTest : public ViewerFixture {
protected:
    std::shared_ptr<Movie> first = record(bench::movie({.frames = 60, .group = 12}));
    std::shared_ptr<Movie> second = record(bench::movie({.frames = 48, .group = 12}));
};

TEST_F(MoviePlayerControllerTest, LeavingAMovieStoresItsPlaceAndEndsItsLoops) {
    preferences.loadFrame.set(StartFrame::lastVisited);
    show({first, second});
    const auto looping = std::make_shared<Bookmark>(3, 4, 24.0f);
    looping->loopStatus = true;
    edits.addBookmarks(first, {looping});
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

TEST_F(MoviePlayerControllerTest, OffTheNetworkAnAnswerAboutOneFileIsNeverAnothersRecord) {
    preferences.networkMode.set(false);
    const QTemporaryDir folder;
    const auto copied = [&](const char* name, int frames) {
        const QString path = folder.filePath(QLatin1String(name));
        EXPECT_TRUE(QFile::copy(bench::movie({.frames = frames, .group = 12}), path));
        return std::make_shared<Movie>(path, createFileBookmark(path));
    };
    const auto one = copied("first.mov", 30), other = copied("second.mov", 48);
    show({one, other});
    for (const auto& movie : {one, other})
        ASSERT_TRUE(QFile::rename(movie->filepathString, movie->filepathString + u".moved.mov"_qs));
    QStringList namesOfOther; // whatever it was called on the way
    QObject::connect(&controller, &MoviePlayerController::movieProbed,
                     [&](const std::shared_ptr<Movie>&) { namesOfOther << other->filenameString; });
    controller.open({one, other}, 0);
    controller.open({one, other}, 1);
    ASSERT_TRUE(bench::waitUntil([&] { return player.isOpen() && player.index().count() == 48; }));
    EXPECT_TRUE(namesOfOther.filter(u"first"_qs).isEmpty()) << qPrintable(namesOfOther.join(u' '));
    for (int round = 0; round < 5; ++round) {
        controller.list().setSelectionIndex(1);
        controller.list().setSelectionIndex(0);
        controller.list().setSelectionIndex(1);
        ASSERT_TRUE(bench::waitUntil([&] { return player.isOpen() && player.index().count() == 48; }));
        controller.list().setSelectionIndex(0);
        ASSERT_TRUE(bench::waitUntil([&] { return player.isOpen() && player.index().count() == 30; }));
    }
    EXPECT_TRUE(other->filenameString.startsWith(u"second")) << qPrintable(other->filenameString);
    EXPECT_TRUE(one->filenameString.startsWith(u"first")) << qPrintable(one->filenameString);
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

TEST_F(MoviePlayerControllerTest, TheCurrentBackEndHasTheLastWordOnTheRate) {
    const auto movie = record(bench::movie({.frames = 60, .group = 12, .rateNum = 30000, .rateDen = 1001}));
    QSignalSpy probed(&controller, &MoviePlayerController::movieProbed);
    show({movie});
    ASSERT_TRUE(bench::waitUntil([&] { return probed.count() == 1; }));
    EXPECT_FLOAT_EQ(movie->mMovieFPS, 29.97003f);
    EXPECT_EQ(movie->mMovieDurationFrames, 60);
    EXPECT_EQ(time.approxFrameRate(), QStringLiteral("(29.97fps)"));
    goTo(31);
    EXPECT_EQ(time.stripFrameNumber(), QStringLiteral("0031"));
    EXPECT_EQ(time.stripTimecode(), QStringLiteral("00:00:01:00")) << "timecode counts whole frames";
}

TEST_F(MoviePlayerControllerTest, TheTimecodeTrackArrivesBehindThePictureAndNeverAtAnotherMovie) {
    QTemporaryDir folder;
    MovieSpec spec;
    spec.path = folder.filePath(QStringLiteral("coded.mov"));
    spec.encoder = QStringLiteral("mjpeg");
    spec.pixelFormat = QStringLiteral("yuvj420p");
    spec.bFrames = 0;
    spec.timecode = QStringLiteral("01:00:00:00");
    ASSERT_TRUE(makeMovie(spec));
    const auto coded = record(spec.path);
    show({coded, first});
    ASSERT_TRUE(bench::waitUntil([this] { return time.stripTimecode().startsWith(QLatin1String("TC ")); }));
    goTo(25);
    EXPECT_EQ(time.stripTimecode(), QStringLiteral("TC 01:00:01:00"));
    bookmarks.addBookmark();
    EXPECT_EQ(coded->bookmarkStore.front()->firstTC, QStringLiteral("01:00:01:00"));
    QSignalSpy probed(&controller, &MoviePlayerController::movieProbed);
    for (int turn = 0; turn < 20; ++turn) { // left while its track is being read
        transport.displayNextMovie();
        ASSERT_TRUE(settled());
        transport.displayPreviousMovie();
        ASSERT_TRUE(settled());
    }
    const auto before = probed.count();
    transport.displayNextMovie();
    ASSERT_TRUE(settled());
    ASSERT_TRUE(bench::waitUntil([&] { return probed.count() > before; })); // every track is through by then
    EXPECT_EQ(time.stripTimecode(), QStringLiteral("00:00:00:00"));
}

TEST_F(MoviePlayerControllerTest, WhatIsMarkedBeforeTheTimecodeTrackIsReadGetsItsTimecodeWhenItIs) {
    QTemporaryDir folder;
    MovieSpec spec;
    spec.path = folder.filePath(QStringLiteral("coded.mov"));
    spec.frames = 48;
    spec.timecode = QStringLiteral("01:00:00:00");
    ASSERT_TRUE(makeMovie(spec));
    for (const bool left : {false, true}) { // the reviewer goes on to the next movie at once
        SCOPED_TRACE(left);
        const auto coded = record(spec.path);
        auto list = std::make_shared<Playlist>();
        list->movieList.assign({coded, first});
        edits.store().replaceSession({list});
        bool marked = false;
        // The first there is to mark: opened, no picture yet.
        const auto mark = QObject::connect(&controller, &MoviePlayerController::movieShown, &controller, [&] {
            if (marked || controller.currentMovie() != coded || !player.isOpen()) return;
            marked = true;
            EXPECT_FALSE(time.timecodeIsKnown());
            goTo(25);
            bookmarks.addBookmark();
            goTo(30);
            bookmarks.bookmarkButtonPress({{}, bookmarkTag::setOut}, 0);
        });
        controller.open({coded, first}, 0);
        ASSERT_TRUE(bench::waitUntil([&] { return marked; }));
        QObject::disconnect(mark);
        if (left) transport.displayNextMovie();
        const auto bookmark = coded->bookmarkStore.at(0);
        EXPECT_TRUE(bench::waitUntil([&] { return bookmark->firstTC == QLatin1String("01:00:01:00"); }))
            << qPrintable(bookmark->firstTC);
        EXPECT_EQ(bookmark->lastTC, QStringLiteral("01:00:01:05"));
        ASSERT_TRUE(settled());
        controller.close();
    }
}

TEST_F(MoviePlayerControllerTest, AMovieOfNothingButTimecodeIsToldAndHarmsNothing) {
    QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("only.mov")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(test::TimecodeMovie::file({{"tmcd", 0, 24, {test::TimecodeMovie::bytes(qint32(86400))}}}));
    file.close();
    preferences.trimHandles.set(true);
    controller.open({record(file.fileName()), first}, 0);
    ASSERT_TRUE(bench::waitUntil([this] { return alerts.shown.size() == 1; }));
    time.setFrameCounterToOne();
    controller.range().markInPoint();
    controller.updateGUI();
    EXPECT_TRUE(time.stripTimecode().isEmpty());
    transport.displayNextMovie();
    ASSERT_TRUE(settled());
    EXPECT_EQ(bench::pictureNumber(player), 10) << "behind the head handle";
}

TEST_F(MoviePlayerControllerTest, ClosingPutsThePlaceTheColoursAndTheSessionBack) {
    preferences.rateMultiplier.set(2.0);
    show({first});
    goTo(21);
    transport.playMovieForwards();
    controller.setBrushColour(Qt::red);
    controller.setOnscreenTextColour(Qt::cyan);
    QSignalSpy closed(&controller, &MoviePlayerController::windowClosed);
    EXPECT_TRUE(controller.windowShouldClose());
    controller.close();
    EXPECT_EQ(first->mLastFrameVisited.seconds(), 20.0 / 24);
    EXPECT_EQ(preferences.brushColour(), QColor(Qt::red));
    EXPECT_EQ(preferences.onscreenTextColour(), QColor(Qt::cyan));
    EXPECT_EQ(preferences.rateMultiplierAtClose(), 1.0);
    EXPECT_EQ(preferences.rateMultiplier(), 2.0) << "outlives the window";
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

TEST_F(MoviePlayerControllerTest, ATextColourChosenWhileTheViewerIsOpenOutlivesItsClosing) {
    show({first});
    QSignalSpy changed(&controller, &MoviePlayerController::onscreenTextColourChanged);
    preferences.onscreenTextColour.set(QColor(10, 200, 30));
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(controller.onscreenTextColour(), QColor(10, 200, 30));
    controller.close();
    EXPECT_EQ(preferences.onscreenTextColour(), QColor(10, 200, 30));
}

} // namespace
} // namespace daylark
