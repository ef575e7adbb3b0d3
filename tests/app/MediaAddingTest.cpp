#include "app/AppFixture.h"
#include "app/Watchdog.h"
#include "archive/KeyedArchive.h"

#include <filesystem>
#include <fstream>

namespace daylark::test {
namespace {

class MediaAddingTest : public AppFixture {
protected:
    void SetUp() override { start(); }
    MediaAdding& adding() { return controller->mediaAdding(); }
    /// A bundle that holds this archive.
    QString makeBundle(const QString& name, const QByteArray& archive) {
        makeFile(name + u"/inside.mov"_s);
        makeFile(name + u"/data.dls"_s, archive);
        return path(name);
    }
    static std::shared_ptr<Playlist> playlistNamed(const QString& name) {
        auto playlist = std::make_shared<Playlist>();
        playlist->name = name;
        playlist->playlistType = QString(); // as an older version leaves it
        playlist->movieList.push_back(std::make_shared<Movie>(u"/nowhere/"_s + name + u".mov"_s));
        return playlist;
    }
    /// A day folder with a movie, a still, a text, a hidden movie, a subfolder and a bundle.
    QString dayFolder() {
        makeFile(u"day/b.mov"_s);
        makeFile(u"day/still.jpg"_s);
        makeFile(u"day/readme.txt"_s);
        makeFile(u"day/.hidden.mov"_s);
        makeFile(u"day/a/z.MXF"_s);
        makeFile(u"day/a/y.png"_s);
        makeFile(u"day/c.dlm/inside.mov"_s);
        QDir(folder.path()).mkpath(u"day/folder.mov"_s);
        QFile::link(folder.path(), path(u"day/loop"_s));
        return path(u"day"_s);
    }
};

TEST_F(MediaAddingTest, NewItemsAreNumberedBehindTheShownOnesAndTheFirstItemIsSelected) {
    addPlaylist(u"Day"_s, {u"1.mov"_s, u"2.mov"_s});
    adding().addMediaFilesToSelectedPlaylist({makeFile(u"c.mov"_s), makeFile(u"no.txt"_s),
                                              makeFile(u"a.mov"_s), makeFile(u"noext"_s),
                                              makeFile(u"b.mov"_s)});
    settleAdding();
    EXPECT_EQ(shownNames(), (QStringList{u"1.mov"_s, u"2.mov"_s, u"c.mov"_s, u"a.mov"_s, u"b.mov"_s}));
    EXPECT_EQ(shownNumbers(), (std::vector<qint64>{1, 2, 3, 4, 5}));
    EXPECT_EQ(library().selectedMovieRows(), Library::Rows{0});
    EXPECT_EQ(library().selectedPlaylist()->itemCount, u"5"_s);
    EXPECT_FALSE(library().arrangedMovies()[2]->filepathBookmarkData.isEmpty());
    EXPECT_TRUE(sessionFiles().sessionIsModified());
    EXPECT_TRUE(controller->progress().jobs().empty() || !controller->thumbnails().isIdle());
}

TEST_F(MediaAddingTest, AFolderGivesItsMoviesDepthFirstByPathAndStillsOnlyByPreference) {
    addPlaylist(u"Day"_s, {});
    adding().addMediaFoldersToSelectedPlaylist({dayFolder(), path(u"day/c.dlm"_s), path(u"missing"_s)});
    settleAdding();
    EXPECT_EQ(shownNames(), (QStringList{u"z.MXF"_s, u"b.mov"_s, u"inside.mov"_s}))
        << "a bundle given by itself is passed over, one inside a folder is a folder";

    preferences->allowImageFiles.set(true);
    addPlaylist(u"With stills"_s, {});
    adding().addMediaFoldersToSelectedPlaylist({path(u"day"_s)});
    settleAdding();
    EXPECT_EQ(shownNames(), (QStringList{u"y.png"_s, u"z.MXF"_s, u"b.mov"_s, u"inside.mov"_s, u"still.jpg"_s}));
}

TEST_F(MediaAddingTest, NumberedPicturesOfAFolderAreOneMovieEachUnlessAPreferenceSaysOtherwise) {
    for (const int number : {1001, 1002, 1004}) {
        makeFile(u"shots/sh010_v001.%1.exr"_s.arg(number));
        makeFile(u"shots/sh010_v002.%1.exr"_s.arg(number));
    }
    makeFile(u"shots/a.mov"_s);
    makeFile(u"shots/poster.png"_s);
    addPlaylist(u"Shots"_s, {});
    adding().addMediaFoldersToSelectedPlaylist({path(u"shots"_s)});
    settleAdding();
    EXPECT_EQ(shownNames(), (QStringList{u"a.mov"_s, u"sh010_v001.1001.exr"_s, u"sh010_v002.1001.exr"_s}));
    const auto& run = library().arrangedMovies()[1]->frameRun;
    ASSERT_TRUE(run);
    EXPECT_EQ(run->run.text(), u"sh010_v001.1001-1004#.exr"_s);
    EXPECT_FALSE(library().arrangedMovies()[0]->frameRun);

    // One picture stands for its run, several of them too; so does a pattern.
    addPlaylist(u"Picked"_s, {});
    adding().addMediaFilesToSelectedPlaylist({path(u"shots/sh010_v001.1002.exr"_s), path(u"shots/sh010_v001.1004.exr"_s),
                                              path(u"shots/sh010_v002.####.exr"_s), path(u"shots/poster.png"_s)});
    settleAdding();
    EXPECT_EQ(shownNames(), (QStringList{u"sh010_v001.1001.exr"_s, u"sh010_v002.1001.exr"_s}));

    preferences->runsBecomeMovies.set(false);
    addPlaylist(u"Off"_s, {});
    adding().addMediaFoldersToSelectedPlaylist({path(u"shots"_s)});
    settleAdding();
    EXPECT_EQ(shownNames(), QStringList{u"a.mov"_s});
    preferences->allowImageFiles.set(true);
    addPlaylist(u"Images"_s, {});
    adding().addMediaFoldersToSelectedPlaylist({path(u"shots"_s)});
    settleAdding();
    EXPECT_EQ(shownNames().size(), 8);
    for (const auto& movie : library().arrangedMovies())
        EXPECT_FALSE(movie->frameRun);
}

TEST_F(MediaAddingTest, NamesThatAreNoTextAreCountedAndToldAndNothingIsAddedForThem) {
    const std::filesystem::path day = path(u"latin"_s).toStdString();
    std::filesystem::create_directories(day / "\xff\xfe");
    for (const char* name : {"a.mov", "caf\xe9.mov", "note\xe9.txt", "\xff\xfe/in.mov", "sh\xe9.1001.exr", "sh\xe9.1002.exr",
                             "sh.1001.exr", "sh.1002.exr"})
        std::ofstream(day / name) << "no movie at all";
    std::vector<LeftOutNames> told;
    QObject::connect(&adding(), &MediaAdding::namesLeftOut, &adding(), [&](const LeftOutNames& names) { told.push_back(names); });
    QStringList said;
    QObject::connect(controller.get(), &PlaylistController::namesLeftOut, controller.get(),
                     [&](const QString& text) { said << text; });
    addPlaylist(u"Day"_s, {});
    adding().addMediaFoldersToSelectedPlaylist({path(u"latin"_s)});
    settleAdding();
    EXPECT_EQ(shownNames(), (QStringList{u"a.mov"_s, u"sh.1001.exr"_s}));
    ASSERT_EQ(told.size(), 1U);
    EXPECT_EQ(told[0].count, 4) << "two pictures, a movie and a folder; what is no media is nobody's loss";
    ASSERT_EQ(said.size(), 1);
    EXPECT_TRUE(said[0].startsWith(u"4 left out, not named in UTF-8: "_s)) << said[0].toStdString();

    // By themselves, as drops and command lines bring them: what is left of the name, with nothing of that name there.
    const QStringList lost{path(u"latin/caf\uFFFD.mov"_s), path(u"latin/\uFFFD\uFFFD"_s)};
    const size_t lists = library().playlists().size();
    const auto addInEveryWay = [&](const QStringList& paths) {
        adding().addMediaFilesToSelectedPlaylist(paths);
        adding().dropOnMovies(paths);
        adding().dropOnPlaylists(paths);
        adding().openPaths(paths);
        settleAdding();
    };
    addInEveryWay(lost);
    EXPECT_EQ(library().playlists().size(), lists);
    EXPECT_EQ(shownNames(), (QStringList{u"a.mov"_s, u"sh.1001.exr"_s}));
    ASSERT_EQ(told.size(), 5U);
    for (size_t way = 1; way < told.size(); ++way)
        EXPECT_EQ(told[way].shown, (QStringList{u"caf\\xE9.mov"_s, u"\\xFF\\xFE"_s}));
    adding().addMediaFilesToSelectedPlaylist(QStringList{path(u"latin/a.mov"_s)} + lost);
    settleAdding();
    EXPECT_EQ(shownNames(), (QStringList{u"a.mov"_s, u"sh.1001.exr"_s, u"a.mov"_s}));
    EXPECT_EQ(told.size(), 6U);

    // A list that follows the folder says it once.
    panels.openAnswers.push_back({path(u"latin"_s)});
    controller->playlistEditing().addEmptyFolderlist();
    ASSERT_TRUE(waitUntil([&] { return said.size() == 7; }));
    makeFile(u"latin/b.mov"_s);
    ASSERT_TRUE(waitUntil([&] { return library().playlists().back()->movieList.size() == 3; }, 20000));
    EXPECT_EQ(said.size(), 7);
    std::filesystem::remove_all(day); // what the folder's own remover can't spell, too
}

TEST_F(MediaAddingTest, ABundleBringsItsSessionOrItsOnePlaylistBehindWhatIsThere) {
    addPlaylist(u"Mine"_s, {u"m.mov"_s});
    SessionContents session;
    session.hasPlaylists = true;
    session.playlists = {playlistNamed(u"A"_s), playlistNamed(u"B"_s)};
    session.lastSelectedPlaylistIndex = 1;
    const QString whole = makeBundle(u"whole.dlm"_s, encodeSession(session)),
                  lone = makeBundle(u"lone.dlm"_s, archiveRoot(playlistNamed(u"Lone"_s))),
                  keyed = makeBundle(u"keyed.dlm"_s,
                                     archiveRoot(Value::Dictionary{{u"name"_s, u"no playlist"_s},
                                                                   {u"list"_s, playlistNamed(u"Keyed"_s)}})),
                  other = makeBundle(u"other.dlm"_s, archiveRoot(Value::Dictionary{{u"movie"_s, 1}})),
                  torn = makeBundle(u"torn.dlm"_s, "bplist00 torn");
    QDir(folder.path()).mkdir(u"empty.dlm"_s);

    adding().addDLMFilesToSelectedPlaylist({whole});
    ASSERT_EQ(controller->progress().jobs().size(), 1u);
    EXPECT_EQ(controller->progress().jobs()[0].texts.title, u"Adding Media Files..."_s);
    EXPECT_TRUE(controller->progress().jobs()[0].window);
    settleAdding();
    EXPECT_EQ(playlistNames(), (QStringList{u"Mine"_s, u"A"_s, u"B"_s}));
    EXPECT_EQ(library().selectedPlaylistRows(), Library::Rows{2}); // the one that the bundle names
    EXPECT_EQ(library().selectedMovieRows(), Library::Rows{0});
    EXPECT_EQ(library().playlists()[1]->playlistType, u"playlist"_s);
    EXPECT_EQ(library().playlists()[1]->itemCount, u"1"_s);
    EXPECT_TRUE(sessionFiles().sessionIsModified());
    EXPECT_TRUE(waitUntil([this] { return !controller->fileStates().isUpdating(); }));
    EXPECT_EQ(library().playlists()[1]->status, 2);

    adding().addDLMFilesToSelectedPlaylist(
        {torn, lone, path(u"empty.dlm"_s), other, path(u"gone.dlm"_s), keyed, makeFile(u"file.dlm"_s)});
    settleAdding();
    EXPECT_EQ(playlistNames(), (QStringList{u"Mine"_s, u"A"_s, u"B"_s, u"Lone"_s, u"Keyed"_s}));
    EXPECT_EQ(library().selectedPlaylistRows(), Library::Rows{4});
    EXPECT_TRUE(alerts.shown.empty());
}

TEST_F(MediaAddingTest, ABundleIsAddedWhenDroppedOrOpenedItselfAndPassedOverAmongFolders) {
    const QString bundle = makeBundle(u"b.dlm"_s, archiveRoot(playlistNamed(u"Bundle"_s)));
    adding().addMediaFoldersToSelectedPlaylist({bundle, bundle + u'/'});
    adding().createPlaylistsWithFolders({bundle, bundle + u'/'});
    settleAdding();
    EXPECT_TRUE(library().playlists().empty());

    controller->openFiles({bundle + u'/'});
    settleAdding();
    EXPECT_FALSE(controller->mHidePlaylistWindow());
    adding().dropOnPlaylists({bundle, dayFolder()});
    settleAdding();
    adding().dropOnMovies({bundle});
    settleAdding();
    EXPECT_EQ(playlistNames(), (QStringList{u"Bundle"_s, u"Bundle"_s, u"day"_s, u"Bundle"_s}));
    for (const auto& playlist : library().playlists())
        EXPECT_EQ(playlist->count(), playlist->name == u"day"_s ? 3 : 1) << playlist->name.toStdString();
}

TEST_F(MediaAddingTest, ADropOnThePlaylistsMakesOneOfEveryFolderAndOneOfTheLooseFiles) {
    makeFile(u"day 2/x.mov"_s);
    adding().dropOnPlaylists(
        {dayFolder(), makeFile(u"loose.mov"_s), path(u"day 2/"_s), makeFile(u"text.txt"_s)});
    settleAdding();
    EXPECT_EQ(playlistNames(), (QStringList{u"day"_s, u"day 2"_s, u"Untitled Playlist"_s}));
    EXPECT_EQ(shownNames(), QStringList{u"loose.mov"_s});
    EXPECT_EQ(library().playlists()[0]->count(), 3);
    EXPECT_EQ(library().playlists()[1]->movieList[0]->sortOrder, 1);
}

TEST_F(MediaAddingTest, ADropOnTheItemsMakesAPlaylistOnlyWhenNoneCanTakeThem) {
    adding().dropOnMovies({makeFile(u"only.txt"_s)});
    settleAdding();
    EXPECT_TRUE(library().playlists().empty());
    makeFile(u"day 2/x.mov"_s);
    adding().dropOnMovies({makeFile(u"loose.mov"_s), path(u"day 2"_s)});
    settleAdding();
    EXPECT_EQ(playlistNames(), QStringList{u"day 2"_s});
    EXPECT_EQ(shownNames(), (QStringList{u"x.mov"_s, u"loose.mov"_s})); // folders' contents, then files
    adding().dropOnMovies({makeFile(u"more.mov"_s)});
    settleAdding();
    EXPECT_EQ(playlistNames(), QStringList{u"day 2"_s});
    EXPECT_EQ(library().arrangedMovies().size(), 3u);

    controller->playlistEditing().addDivider();
    library().selectPlaylist(1);
    adding().dropOnMovies({path(u"loose.mov"_s)});
    settleAdding();
    EXPECT_EQ(library().playlists().size(), 3u);
    EXPECT_TRUE(library().playlists()[1]->movieList.empty());
}

TEST_F(MediaAddingTest, ItemsGoWhereTheyWereDroppedEvenIfThePersonLooksElsewhereMeanwhile) {
    const auto first = addPlaylist(u"First"_s, {});
    addPlaylist(u"Second"_s, {});
    library().selectPlaylist(0);
    adding().dropOnMovies({makeFile(u"a.mov"_s)});
    library().selectPlaylist(1);
    settleAdding();
    EXPECT_EQ(first->count(), 1);
    EXPECT_TRUE(library().arrangedMovies().empty());
}

TEST_F(MediaAddingTest, OpenWithAddsAMovieSelectsItAndTakesNoStills) {
    preferences->allowImageFiles.set(true);
    int opened = 0;
    bool launch = true;
    QObject::connect(&adding(), &MediaAdding::openedFromDesktop, [&](bool launchViewer) {
        ++opened;
        launch = launchViewer;
    });
    adding().processFile(makeFile(u"still.png"_s));
    settleAdding();
    EXPECT_TRUE(library().playlists().empty());
    adding().processFile(makeFile(u"a.mov"_s));
    adding().processFile(makeFile(u"b.mov"_s));
    settleAdding();
    EXPECT_EQ(playlistNames(), QStringList{u"Untitled Playlist"_s});
    EXPECT_EQ(library().selectedMovieRows(), Library::Rows{1});
    EXPECT_EQ(opened, 2);
    EXPECT_FALSE(launch);
    EXPECT_TRUE(controller->mHidePlaylistWindow());

    SessionContents contents;
    contents.hasPlaylists = true;
    contents.playlists.push_back(std::make_shared<Playlist>());
    ASSERT_TRUE(bool(writeSessionFile(path(u"s.dls"_s), encodeSession(contents))));
    alerts.answers = {Alerts::secondButton};
    adding().processFile(path(u"s.dls"_s));
    settleAdding();
    settleFiles();
    EXPECT_EQ(library().playlists().size(), 2u);
}

TEST_F(MediaAddingTest, FilesOpenedBeforeTheSessionIsThereWaitForIt) {
    addPlaylist(u"Day 1"_s, {});
    quit();
    preferences = std::make_unique<Preferences>(path(u"preferences.ini"_s));
    player = std::make_unique<Player>(clock);
    controller = std::make_unique<PlaylistController>(PlaylistController::Surroundings{
        *preferences, alerts, panels, pasteboard, browser, {u"mia"_s, folder.path(), {}}, *player, failedWrites});
    controller->awake();
    controller->openFiles({makeFile(u"a.mov"_s), dayFolder()});
    ASSERT_TRUE(waitUntil([this] { return library().playlists().size() == 2; }));
    settleAdding();
    EXPECT_EQ(playlistNames(), (QStringList{u"Day 1"_s, u"day"_s}));
}

TEST_F(MediaAddingTest, TheOpenPanelAddsInItsOrderAndStaysShutWithSeveralPlaylists) {
    addPlaylist(u"A"_s, {});
    addPlaylist(u"B"_s, {});
    library().selectPlaylists({0, 1});
    adding().addMediaFromOpenDialog();
    EXPECT_TRUE(panels.opensShown.empty());
    library().selectPlaylist(1);
    panels.openAnswers = {{makeFile(u"z.mov"_s), makeFile(u"a.mov"_s)}};
    adding().addMediaFromOpenDialog();
    settleAdding();
    EXPECT_EQ(panels.opensShown.back().title, u"Choose Media Files To Add"_s);
    EXPECT_EQ(panels.opensShown.back().prompt, u"Add Media"_s);
    EXPECT_TRUE(panels.opensShown.back().allowMultiple);
    EXPECT_FALSE(panels.opensShown.back().chooseFolders);
    EXPECT_TRUE(panels.opensShown.back().runsAreOne);
    EXPECT_EQ(shownNames(), (QStringList{u"z.mov"_s, u"a.mov"_s}));
    preferences->runsBecomeMovies.set(false);
    adding().addMediaFromOpenDialog();
    EXPECT_FALSE(panels.opensShown.back().runsAreOne) << "pictures are chosen one by one";
}

TEST_F(MediaAddingTest, ACancelledWalkAddsNothing) {
    addPlaylist(u"Day"_s, {});
    adding().addMediaFoldersToSelectedPlaylist({dayFolder()});
    const auto jobs = controller->progress().jobs();
    ASSERT_EQ(jobs.size(), 1u);
    EXPECT_EQ(jobs[0].texts.title, u"Adding Media Files..."_s);
    controller->progress().cancel(jobs[0].id);
    adding().addMediaFilesToSelectedPlaylist({makeFile(u"after.mov"_s)});
    settleAdding();
    EXPECT_EQ(shownNames(), QStringList{u"after.mov"_s}) << "what was asked for afterwards is done";
}

TEST_F(MediaAddingTest, FiveHundredMoviesAreShownBeforeAnyOfThemIsProbed) {
    QStringList files;
    for (int i = 0; i < 500; ++i)
        files << makeFile(u"many/%1.mov"_s.arg(i, 3, 10, QLatin1Char('0')));
    size_t shownAtOnce = 0, withThumbnailText = 0;
    QObject::connect(&library(), &Library::arrangedMoviesChanged, [&] {
        shownAtOnce = library().arrangedMovies().size();
        for (const auto& movie : library().arrangedMovies())
            withThumbnailText += !movie->creatingThumbnailText.isEmpty();
    });
    Watchdog watchdog;
    controller->mediaAdding().createPlaylistsWithFolders({path(u"many"_s)});
    settleAdding();
    EXPECT_EQ(shownAtOnce, 500u);
    EXPECT_EQ(withThumbnailText, 0u);
    EXPECT_EQ(shownNames().first(), u"000.mov"_s);
    EXPECT_FALSE(controller->thumbnails().isIdle());
    settleThumbnails();
    sessionFiles().saveTempSession();
    controller->fileStates().updateAllFilePaths();
    bool updated = false;
    QObject::connect(&controller->fileStates(), &FileStates::updated, [&updated] { updated = true; });
    ASSERT_TRUE(waitUntil([&updated] { return updated; }));
    watchdog.print("while 500 files came in");
}

} // namespace
} // namespace daylark::test
