#include "app/AppFixture.h"
#include "support/MovieMaker.h"
#include "picture/PictureRenderer.h"

#include <unistd.h>

namespace daylark::test {
namespace {

class MediaStatesTest : public AppFixture {
protected:
    void SetUp() override {
        start();
        ASSERT_TRUE(waitUntil([this] { return !controller->fileStates().isUpdating(); }));
    }
    QString makeClip(const QString& name, int frames = 24) {
        MovieSpec spec;
        spec.path = path(name);
        QDir().mkpath(QFileInfo(spec.path).path());
        spec.encoder = u"mjpeg"_s;
        spec.pixelFormat = u"yuvj420p"_s;
        spec.bFrames = 0;
        spec.groupSize = 1;
        spec.frames = frames;
        const Result<void> made = makeMovie(spec);
        EXPECT_TRUE(bool(made)) << (made ? "" : made.error().text.toStdString());
        return spec.path;
    }
    void refreshFileStates() {
        controller->fileStates().updateAllFilePaths();
        ASSERT_TRUE(waitUntil([this] { return !controller->fileStates().isUpdating(); }));
    }
    void add(const QStringList& files) {
        controller->mediaAdding().addMediaFilesToSelectedPlaylist(files);
        settleAdding();
    }
};

TEST_F(MediaStatesTest, AddedMoviesGetPropertiesAndThumbnailsAndBrokenOnesSaySo) {
    addPlaylist(u"Day"_s, {});
    int loaded = 0;
    QObject::connect(&controller->thumbnails(), &Thumbnails::thumbnailDidLoad, [&loaded] { ++loaded; });
    add({makeClip(u"good.mov"_s), makeFile(u"broken.mov"_s, QByteArray(5000, 'x')),
         makeFile(u"empty.mov"_s, "")});
    settleThumbnails();
    const auto& movies = library().arrangedMovies();
    ASSERT_EQ(movies.size(), 3u);
    EXPECT_EQ(movies[0]->mMovieDurationFrames, 24);
    EXPECT_EQ(movies[0]->mMovieResolutionString, u"320 x 180"_s);
    EXPECT_FALSE(movies[0]->mMovieHasBeenVisited); // only the viewer's pass marks that
    EXPECT_EQ(movies[0]->thumbnail.decode().height(), 56);
    EXPECT_EQ(movies[0]->creatingThumbnailText, u""_s);
    EXPECT_FALSE(movies[0]->creatingThumbnailText.isNull()) << "nil in the archive";
    EXPECT_TRUE(movies[1]->thumbnail.isNil());
    EXPECT_EQ(movies[1]->creatingThumbnailText, u"No QT Thumbnail"_s);
    EXPECT_EQ(movies[2]->creatingThumbnailText, u"No QT Thumbnail"_s);
    EXPECT_EQ(loaded, 3);
    EXPECT_TRUE(controller->progress().jobs().empty());
}

TEST_F(MediaStatesTest, WhatWasNotProbedWhenTheProgramEndedIsProbedAtTheNextStart) {
    addPlaylist(u"Day"_s, {u"gone.mov"_s});
    library().addMovies(library().selectedPlaylist(), {std::make_shared<Movie>(makeClip(u"here.mov"_s))});
    quit();
    start();
    ASSERT_TRUE(waitUntil([this] { return !library().arrangedMovies()[1]->thumbnail.isNil(); }));
    settleThumbnails();
    EXPECT_EQ(library().arrangedMovies()[1]->mMovieDurationFrames, 24);
    EXPECT_EQ(library().arrangedMovies()[0]->creatingThumbnailText, fileNotFoundText);
}

TEST_F(MediaStatesTest, ResultsOfItemsThatAreGoneAreDroppedAndTheQueueGoesOn) {
    addPlaylist(u"Day"_s, {});
    QStringList files;
    for (int i = 0; i < 6; ++i)
        files << makeClip(u"%1.mov"_s.arg(i), 6);
    add(files);
    const std::weak_ptr<Movie> gone = library().arrangedMovies()[0];
    const auto kept = library().arrangedMovies()[5];
    library().removeMovies(library().selectedPlaylist(), {gone.lock()}, EditKind::final);
    EXPECT_TRUE(gone.expired()); // the queue holds nothing alive
    controller->thumbnails().prioritise({kept});
    settleThumbnails();
    for (const auto& movie : library().arrangedMovies())
        EXPECT_FALSE(movie->thumbnail.isNil());
}

TEST_F(MediaStatesTest, CancellingTheJobLeavesTheRestWithoutThumbnails) {
    addPlaylist(u"Day"_s, {});
    QStringList files;
    for (int i = 0; i < 30; ++i)
        files << makeClip(u"%1.mov"_s.arg(i), 6);
    add(files);
    int loaded = 0;
    QObject::connect(&controller->thumbnails(), &Thumbnails::thumbnailDidLoad, [this, &loaded] {
        if (++loaded == 2) controller->progress().cancel(controller->progress().jobs().front().id);
    });
    settleThumbnails();
    EXPECT_LT(loaded, 10);
    EXPECT_TRUE(controller->progress().jobs().empty());
    controller->thumbnails().createMissingThumbnails({u"First Frame"_s, 0});
    settleThumbnails();
    for (const auto& movie : library().arrangedMovies())
        EXPECT_FALSE(movie->thumbnail.isNil());
}

TEST_F(MediaStatesTest, WhatCancellingCutsShortSaysNothingAboutTheItem) {
    addPlaylist(u"Day"_s, {});
    QStringList files;
    for (int i = 0; i < 8; ++i)
        files << makeClip(u"%1.mov"_s.arg(i), 60);
    add(files);
    settleThumbnails();
    for (int round = 0; round < 60; ++round) { // at many moments of the reading
        controller->thumbnails().recreateAllThumbnails({u"Last Frame"_s, 0});
        ::usleep(useconds_t(round * 300));
        controller->thumbnails().cancelAll();
        settleThumbnails();
        for (const auto& movie : library().arrangedMovies()) {
            ASSERT_FALSE(movie->thumbnail.isNil()) << round;
            ASSERT_TRUE(movie->creatingThumbnailText.isEmpty()) << round;
        }
    }
}

TEST_F(MediaStatesTest, OnlyForcedRequestsReplaceAThumbnail) {
    addPlaylist(u"Day"_s, {});
    add({makeClip(u"a.mov"_s)});
    settleThumbnails();
    const auto movie = library().arrangedMovies()[0];
    const Image first = movie->thumbnail;
    controller->thumbnails().updateThumbnailForMovie(movie);
    controller->thumbnails().createMissingThumbnails({u"Last Frame"_s, 0});
    settleThumbnails();
    EXPECT_TRUE(movie->thumbnail == first);
    EXPECT_EQ(movie->mThumbnailFrame, -1);
    library().selectMovies({0});
    controller->thumbnails().recreateSelectedThumbnails({u"First Frame"_s, 0});
    settleThumbnails();
    EXPECT_FALSE(movie->thumbnail == first);
    EXPECT_EQ(movie->mThumbnailFrame, 1);
    QImage picture(640, 360, QImage::Format_RGB32);
    picture.fill(Qt::red);
    controller->thumbnails().recreateCurrentThumbnail(movie, picture, {u"Set Thumbnail Image"_s, 0});
    EXPECT_EQ(movie->thumbnail.decode().pixelColor(50, 28), QColor(Qt::red));
}

TEST_F(MediaStatesTest, AThumbnailThatAPersonSetMeanwhileStays) {
    addPlaylist(u"Day"_s, {});
    add({makeClip(u"a.mov"_s)});
    const auto movie = library().arrangedMovies()[0];
    ASSERT_TRUE(movie->thumbnail.isNil()) << "still being made";
    QImage picture(640, 360, QImage::Format_RGB32);
    picture.fill(Qt::red);
    controller->thumbnails().recreateCurrentThumbnail(movie, picture, {u"Set Thumbnail Image"_s, 0});
    settleThumbnails();
    EXPECT_EQ(movie->thumbnail.decode().pixelColor(50, 28), QColor(Qt::red));
}

TEST_F(MediaStatesTest, AMissingItemKeepsItsThumbnailWhoeverAsksForAnother) {
    addPlaylist(u"Day"_s, {});
    add({makeClip(u"a.mov"_s)});
    settleThumbnails();
    const auto movie = library().arrangedMovies()[0];
    const Image first = movie->thumbnail;
    ASSERT_FALSE(first.isNil());
    ASSERT_TRUE(QFile::remove(path(u"a.mov"_s)));
    library().selectMovies({0});
    const Sender choice{u"Middle Frame"_s, 0};
    controller->thumbnails().recreateSelectedThumbnails(choice);
    controller->thumbnails().recreateCurrentThumbnail(movie, {}, choice);
    controller->thumbnails().recreateAllThumbnails(choice);
    settleThumbnails();
    EXPECT_TRUE(movie->thumbnail == first);
    EXPECT_EQ(movie->creatingThumbnailText, fileNotFoundText);
}

TEST_F(MediaStatesTest, TheViewersChoiceOfAThumbnailFollowsTheOlderRules) {
    addPlaylist(u"Day"_s, {});
    add({makeClip(u"a.mov"_s)});
    settleThumbnails();
    const auto movie = library().arrangedMovies()[0];
    controller->thumbnails().recreateCurrentThumbnail(movie, {}, {u"First Frame"_s, 0});
    settleThumbnails();
    EXPECT_EQ(readBarCode(movie->thumbnail.decode()), 2);
    EXPECT_EQ(movie->mThumbnailFrame, -1);
}

TEST_F(MediaStatesTest, MissingFilesMarkItemsAndPlaylistsAndComeBack) {
    const auto some = addPlaylist(u"Some"_s, {u"gone.mov"_s});
    library().addMovies(some, {std::make_shared<Movie>(makeFile(u"here.mov"_s))});
    const auto all = addPlaylist(u"All"_s, {u"gone1.mov"_s, u"gone2.mov"_s});
    const auto none = addPlaylist(u"None"_s, {});
    library().selectPlaylist(0);
    refreshFileStates();
    EXPECT_EQ(some->status, 1);
    EXPECT_EQ(all->status, 2);
    EXPECT_EQ(none->status, 0);
    EXPECT_EQ(controller->fileStates().missingCount(), 1);
    EXPECT_EQ(some->movieList[0]->creatingThumbnailText, fileNotFoundText);
    makeFile(u"gone.mov"_s);
    refreshFileStates();
    EXPECT_EQ(some->status, 0);
    EXPECT_EQ(some->movieList[0]->creatingThumbnailText, QString());
    EXPECT_EQ(controller->fileStates().missingCount(), 0);
}

TEST_F(MediaStatesTest, ALongRefreshSaysHowFarItIsAndEndsWhenAPersonWantsItTo) {
    QStringList names;
    for (int item = 0; item < 600; ++item)
        names << u"gone_%1.mov"_s.arg(item);
    addPlaylist(u"Day"_s, names);
    QStringList said;
    ProgressBoard& board = controller->progress();
    QObject::connect(&board, &ProgressBoard::changed, &board, [&] {
        for (const ProgressBoard::Job& job : board.jobs())
            said << job.line();
    });
    refreshFileStates();
    EXPECT_EQ(said.value(0), u"Looking for Media Files... 0 of 600"_s);
    EXPECT_TRUE(said.contains(u"Looking for Media Files... 600 of 600"_s));
    EXPECT_TRUE(board.jobs().empty());
    EXPECT_EQ(controller->fileStates().missingCount(), 600);
    controller->fileStates().updateAllFilePaths();
    ASSERT_EQ(board.jobs().size(), 1u);
    board.cancel(board.jobs().front().id);
    ASSERT_TRUE(waitUntil([this] { return !controller->fileStates().isUpdating(); }));
    EXPECT_TRUE(board.jobs().empty());
    EXPECT_EQ(controller->fileStates().missingCount(), 600) << "what was not looked at stays as it was";
}

TEST_F(MediaStatesTest, AMovedFileIsFoundAgainByItsBookmarkOffTheNetwork) {
    addPlaylist(u"Day"_s, {});
    add({makeFile(u"old.mov"_s, "the very movie")});
    settleThumbnails();
    ASSERT_TRUE(QFile::rename(path(u"old.mov"_s), path(u"new.mov"_s)));
    const auto movie = library().arrangedMovies()[0];
    refreshFileStates(); // by path alone
    EXPECT_EQ(movie->creatingThumbnailText, fileNotFoundText);
    preferences->networkMode.set(false);
    refreshFileStates();
    EXPECT_EQ(movie->filepathString, path(u"new.mov"_s));
    EXPECT_EQ(movie->filenameString, u"new.mov"_s);
    EXPECT_EQ(library().selectedPlaylist()->status, 0);
}

TEST_F(MediaStatesTest, TheViewerFindsAMovedFileAsTheLibraryDoes) {
    addPlaylist(u"Day"_s, {});
    add({makeClip(u"old.mov"_s), makeClip(u"other.mov"_s)});
    settleThumbnails();
    ASSERT_TRUE(QFile::rename(path(u"old.mov"_s), path(u"new.mov"_s)));
    const auto movie = library().arrangedMovies()[0];
    preferences->networkMode.set(false);
    library().selectMovies({0});
    controller->loadMovieWindow();
    ASSERT_TRUE(waitUntil([this] {
        return (player->isOpen() && player->pictureIsCurrent()) || !alerts.shown.empty();
    }));
    EXPECT_TRUE(alerts.shown.empty());
    EXPECT_EQ(movie->filepathString, path(u"new.mov"_s));
    ASSERT_TRUE(waitUntil([this] { return player->pictureIsCurrent(); }));
    EXPECT_EQ(readBarCode(renderFrame(player->shownFrame())), player->currentFrame());

    ASSERT_TRUE(QFile::remove(path(u"other.mov"_s)));
    controller->playerWindow().list().setSelectionIndex(1);
    ASSERT_TRUE(waitUntil([this] { return !alerts.shown.empty(); }));
    EXPECT_EQ(alerts.shown.back().message, u"File Not Found"_s);
}

TEST_F(MediaStatesTest, AReviewInTheViewerIsFoundAgainAtTheNextStart) {
    addPlaylist(u"Day"_s, {});
    add({makeClip(u"a.mov"_s), makeClip(u"b.mov"_s)});
    settleThumbnails();
    library().selectMovies({1});
    bool hidden = false;
    QObject::connect(controller.get(), &PlaylistController::libraryHidden, [&hidden] { hidden = true; });
    controller->loadMovieWindow();
    EXPECT_TRUE(hidden);
    MoviePlayerController& viewer = controller->playerWindow();
    ASSERT_TRUE(waitUntil([this] { return player->isOpen() && player->pictureIsCurrent(); }));
    EXPECT_EQ(viewer.currentMovie()->filenameString, u"b.mov"_s);
    viewer.transport().jumpToFirstFrame();
    for (int i = 0; i < 5; ++i)
        viewer.transport().jumpToNextFrame();
    viewer.setFlagImage({{}, 901});
    viewer.bookmarks().addBookmark();
    quit(); // with the viewer still open

    start();
    const auto movie = library().arrangedMovies()[1];
    EXPECT_EQ(movie->flagString, u"901"_s);
    ASSERT_EQ(movie->bookmarkStore.size(), 1u);
    EXPECT_EQ(movie->bookmarkStore[0]->firstFrame, 6);
    library().selectMovies({1});
    controller->loadMovieWindow();
    ASSERT_TRUE(waitUntil([this] { return player->isOpen() && player->pictureIsCurrent(); }));
    EXPECT_EQ(player->currentFrame(), 6); // "Last Visited Frame"
    EXPECT_FALSE(controller->playerWindow().transport().isRunning());

    ASSERT_TRUE(controller->playerWindow().windowShouldClose());
    controller->playerWindow().close();
    preferences->playMovieWhenViewerLaunches.set(true);
    controller->loadMovieWindow();
    ASSERT_TRUE(waitUntil([this] { return player->isOpen(); }));
    EXPECT_TRUE(controller->playerWindow().transport().movieIsPlayingForwards());
    EXPECT_EQ(player->rate(), 1);
}

} // namespace
} // namespace daylark::test
