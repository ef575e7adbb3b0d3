#include "app/AppFixture.h"
#include "support/MovieMaker.h"

namespace daylark::test {
namespace {

class SessionMigrationTest : public AppFixture {
protected:
    static std::shared_ptr<MovieBookmark> olderBookmark(qint64 frame, const QString& text,
                                                        const QString& note = {}) {
        auto bookmark = std::make_shared<MovieBookmark>(u"00:00:00:00"_s, frame, text);
        bookmark->mNotes = note;
        return bookmark;
    }
    std::shared_ptr<Movie> olderMovie(const QString& name, qint64 sortOrder = 1) const {
        auto movie = std::make_shared<Movie>(path(name));
        movie->sortOrder = sortOrder;
        movie->fileSizeText = u"1.0"_s;
        movie->bookmarkStore.isNil = true;
        return movie;
    }
    static std::shared_ptr<Playlist> playlistOf(const QString& name, const Library::Movies& movies) {
        auto playlist = std::make_shared<Playlist>();
        playlist->name = name;
        playlist->movieList.assign(movies.begin(), movies.end());
        return playlist;
    }
    void write(const QString& file, const std::vector<std::shared_ptr<Playlist>>& playlists) const {
        SessionContents contents;
        contents.hasPlaylists = true;
        contents.playlists = playlists;
        ASSERT_TRUE(bool(writeSessionFile(file, encodeSession(contents))));
    }
    void makeClip(const QString& timecode = {}) const { // of 30 frames
        MovieSpec spec;
        spec.path = path(u"clip.mov"_s);
        spec.encoder = u"mjpeg"_s;
        spec.pixelFormat = u"yuvj420p"_s;
        spec.bFrames = 0;
        spec.groupSize = 1;
        spec.frames = 30;
        spec.timecode = timecode;
        ASSERT_TRUE(bool(makeMovie(spec)));
    }
    /// The question at the next start runs before `started` is over, so its answer is prepared here.
    void startAnswering(std::deque<int> answers) {
        alerts.answers = std::move(answers);
        start();
    }
    bool hasOlder() {
        for (const auto& playlist : library().playlists())
            for (const auto& movie : playlist->movieList)
                if (movie->bookmarkStore.isNil) return true;
        return false;
    }
};

TEST_F(SessionMigrationTest, TheReviewIsCarriedOverAndDrawingsAreLeftBehind) {
    const auto older = olderMovie(u"a.mov"_s, 17);
    older->filepathBookmarkData = "mark";
    older->mMovieFPS = 23.976F;
    older->gamma = 1.5;
    older->setFlag(903);
    older->mLastFrameVisited = {40, 24, 0};
    QImage picture(4, 4, QImage::Format_RGB32);
    picture.fill(Qt::red);
    older->thumbnail = Image::fromQImage(picture);
    older->notes = AttributedString(u"too dark"_s);
    older->notes2.reset();
    older->mMovieDrawings[u"3"_s].strokes.push_back({{QPointF(1, 1)}});
    older->mMovieBookmarkArray = {olderBookmark(25, u"cut"_s, u"ask"_s), olderBookmark(1, u"head"_s)};

    const auto movie = updateMovieClass(*older);
    EXPECT_EQ(movie->filepathString, older->filepathString);
    EXPECT_EQ(movie->filepathBookmarkData, "mark");
    EXPECT_EQ(movie->grade().gamma, 1.5);
    EXPECT_EQ(movie->gradeIcon.name(), u"dl-levelsActive-01.png"_s);
    EXPECT_EQ(movie->flagString, u"903"_s);
    EXPECT_EQ(movie->flag.name(), older->flag.name());
    EXPECT_EQ(movie->mLastFrameVisited, older->mLastFrameVisited);
    EXPECT_FALSE(movie->thumbnail.isNil());
    EXPECT_EQ(movie->sortOrder, 17);
    EXPECT_EQ(movie->notes->string(), u"too dark"_s);
    EXPECT_FALSE(movie->notes2.has_value());
    EXPECT_FALSE(movie->notesIcon.isNil());
    EXPECT_TRUE(movie->mMovieDrawings.empty() && movie->drawingIcon.isNil());

    ASSERT_EQ(movie->bookmarkStore.size(), 2u);
    EXPECT_FALSE(movie->bookmarkIcon.isNil());
    const Bookmark& cut = *movie->bookmarkStore[0];
    EXPECT_EQ(cut.firstFrame, 25);
    EXPECT_EQ(cut.lastFrame, 25);
    EXPECT_EQ(cut.duration, 1);
    EXPECT_EQ(cut.overlayString, u"cut"_s);
    EXPECT_EQ(cut.overlayString2, u"ask"_s);
    EXPECT_EQ(cut.firstTC, u"00:00:01:00"_s); // 23.976 counts as 24
    EXPECT_TRUE(movie->bookmarkStore[1]->overlayString2.isNull());

    MovieBookmark damaged; // nothing in it
    older->mMovieBookmarkArray = {std::make_shared<MovieBookmark>(damaged)};
    older->mMovieFPS = 0;
    EXPECT_EQ(updateMovieClass(*older)->bookmarkStore.at(0)->firstFrame, 0);
}

TEST_F(SessionMigrationTest, UpdateAtTheStartReplacesOnlyOlderItemsInTheirPlaces) {
    const auto current = std::make_shared<Movie>(path(u"b.mov"_s));
    current->sortOrder = 2;
    current->setFlag(905);
    const auto shared = olderMovie(u"a.mov"_s);
    write(temporarySession(), {playlistOf(u"Day 1"_s, {shared, current, olderMovie(u"c.mov"_s, 3)}),
                               playlistOf(u"Day 2"_s, {shared})});
    preferences = std::make_unique<Preferences>(path(u"preferences.ini"_s));
    preferences->networkMode.set(false);
    preferences.reset();
    startAnswering({Alerts::firstButton});

    ASSERT_EQ(alerts.shown.size(), 1u);
    EXPECT_EQ(alerts.shown[0].message,
              u"Some items in this session were created with an older version of Daylark.\n\nClick "
              "\"Update\" below to update them. Drawings in these movies will be lost."_s);
    EXPECT_EQ(alerts.shown[0].buttons, (QStringList{u"Update"_s, u"Start New Session"_s}));
    EXPECT_EQ(alerts.shown[0].style, AlertStyle::informational);
    EXPECT_FALSE(preferences->networkMode());
    EXPECT_FALSE(hasOlder());
    EXPECT_EQ(library().selectedPlaylistRows(), Library::Rows{1});
    library().selectPlaylist(0);
    EXPECT_EQ(shownNames(), (QStringList{u"a.mov"_s, u"b.mov"_s, u"c.mov"_s}));
    EXPECT_EQ(library().arrangedMovies()[1]->flagString, u"905"_s);
    EXPECT_TRUE(sessionFiles().sessionIsModified());
    // The new records are looked for: none of the three files is there.
    EXPECT_TRUE(waitUntil([this] { return !controller->fileStates().isUpdating(); }));
    EXPECT_EQ(controller->fileStates().missingCount(), 3);
    EXPECT_EQ(library().playlists()[0]->status, 2);

    quit();
    start();
    EXPECT_EQ(alerts.shown.size(), 1u) << "an updated session is not asked for again";
}

TEST_F(SessionMigrationTest, AnItemOfUnknownRateGetsItsBookmarksTimecodesWithTheProbe) {
    makeClip();
    const auto older = olderMovie(u"clip.mov"_s);
    older->mMovieBookmarkArray = {olderBookmark(27, u"late"_s)};
    write(temporarySession(), {playlistOf(u"Day 1"_s, {older})});
    startAnswering({Alerts::firstButton});
    settleThumbnails();
    const auto movie = library().arrangedMovies().at(0);
    ASSERT_GT(movie->mMovieFPS, 0);
    EXPECT_FALSE(movie->thumbnail.isNil());
    EXPECT_EQ(movie->bookmarkStore.at(0)->fps, movie->mMovieFPS);
    EXPECT_EQ(movie->bookmarkStore.at(0)->lastTC, timecodeText(27, movie->mMovieFPS));
    EXPECT_NE(movie->bookmarkStore.at(0)->lastTC, u"00:00:00:00"_s);
}

TEST_F(SessionMigrationTest, BookmarksTimecodesCountFromTheStartOfTheTimecodeTrack) {
    makeClip(u"10:00:00:00"_s);
    const auto known = olderMovie(u"clip.mov"_s), unknown = olderMovie(u"clip.mov"_s, 2);
    known->mMovieFPS = 24;
    known->mMovieBookmarkArray = {olderBookmark(25, u"a"_s)};
    unknown->mMovieBookmarkArray = {olderBookmark(27, u"b"_s)};
    write(temporarySession(), {playlistOf(u"Day 1"_s, {known, unknown})});
    startAnswering({Alerts::firstButton});
    const auto text = [this](size_t row) {
        return library().arrangedMovies().at(row)->bookmarkStore.at(0)->firstTC;
    };
    EXPECT_TRUE(waitUntil([&] { return text(0) == u"10:00:01:00"_s && text(1) == u"10:00:01:02"_s; }))
        << text(0).toStdString() << " and " << text(1).toStdString();
}

TEST_F(SessionMigrationTest, ABookmarkMadeLongerBeforeTheTrackIsReadKeepsItsTimecode) {
    makeClip(u"10:00:00:00"_s);
    const auto older = olderMovie(u"clip.mov"_s);
    older->mMovieFPS = 24;
    older->mMovieBookmarkArray = {olderBookmark(25, u"a"_s), olderBookmark(5, u"b"_s)};
    start();
    addPlaylist(u"Day 1"_s, {});
    library().addMovies(library().playlists().front(), {older});
    alerts.answers = {Alerts::firstButton};
    controller->sessionMigration().checkMovies();
    const auto movie = library().arrangedMovies().at(0);
    const auto at25 = movie->bookmarkStore.at(0), longer = movie->bookmarkStore.at(1);
    controller->edits().store().modify(movie, longer, {}, [](Bookmark& bookmark) { bookmark.lastFrame = 9; });
    const QString before = longer->firstTC;
    ASSERT_TRUE(waitUntil([&] { return at25->firstTC == u"10:00:01:00"_s; })) << at25->firstTC.toStdString();
    EXPECT_EQ(longer->firstTC, before);
}

TEST_F(SessionMigrationTest, ANewSessionEmptiesTheLibraryAndTheNetworkModeStaysOn) {
    start();
    preferences->networkMode.set(false);
    addPlaylist(u"Mine"_s, {u"m.mov"_s});
    controller->sessionMigration().checkMovies();
    EXPECT_TRUE(alerts.shown.empty()) << "nothing older, nothing asked";
    EXPECT_FALSE(preferences->networkMode());

    write(path(u"old.dls"_s), {playlistOf(u"Old"_s, {olderMovie(u"a.mov"_s)})});
    alerts.answers = {Alerts::secondButton, Alerts::secondButton}; // add to the session; start a new one
    sessionFiles().dragSessionImport(path(u"old.dls"_s));
    settleFiles();
    ASSERT_EQ(alerts.shown.size(), 2u);
    EXPECT_TRUE(alerts.shown[1].message.startsWith(u"Some items in this session"_s));
    EXPECT_TRUE(library().playlists().empty());
    EXPECT_TRUE(sessionFiles().currentSessionPath().isEmpty());
    EXPECT_TRUE(preferences->networkMode());
}

TEST_F(SessionMigrationTest, AQuestionClosedWithoutAnAnswerEndsTheProgramAndLosesNothing) {
    write(temporarySession(), {playlistOf(u"Old"_s, {olderMovie(u"a.mov"_s)})});
    start(); // no answer is left: the question is closed
    bool ended = false;
    QObject::connect(controller.get(), &PlaylistController::terminate, [&ended] { ended = true; });
    controller->sessionMigration().checkMovies();
    EXPECT_FALSE(ended); // on the next turn of the loop
    QCoreApplication::processEvents();
    EXPECT_TRUE(ended);
    quit();
    const auto saved = readSessionFile(temporarySession());
    ASSERT_TRUE(bool(saved));
    ASSERT_EQ(saved->playlists.size(), 1u);
    EXPECT_TRUE(saved->playlists[0]->movieList.at(0)->bookmarkStore.isNil);
}

TEST_F(SessionMigrationTest, ChangedSoundIsFoundInAnyPlaylist) {
    start();
    EXPECT_FALSE(controller->sessionMigration().checkForModifiedAudio());
    addPlaylist(u"A"_s, {u"a.mov"_s});
    const auto second = addPlaylist(u"B"_s, {u"b.mov"_s, u"c.mov"_s});
    EXPECT_FALSE(controller->sessionMigration().checkForModifiedAudio());
    controller->edits().refresh(second->movieList[1], [](Movie& movie) { movie.removeOriginalMovieAudio(); });
    library().selectPlaylist(0);
    EXPECT_TRUE(controller->sessionMigration().checkForModifiedAudio());
}

} // namespace
} // namespace daylark::test
