#include "app/AppFixture.h"
#include "app/Watchdog.h"
#include "support/SmallDisk.h"

#include <csignal>
#include <sys/resource.h>

namespace daylark::test {
namespace {

class StartupTest : public AppFixture {};

TEST_F(StartupTest, ARestartFindsPlaylistsSelectionNotesAndSharedItemsAgain) {
    start();
    const auto first = addPlaylist(u"Day 1"_s, {u"a.mov"_s, u"b.mov"_s});
    const auto second = addPlaylist(u"Day 2"_s, {});
    const auto shared = first->movieList[1];
    library().addMovies(second, {shared});
    controller->edits().setNotes(shared, NotesField::notes, AttributedString(u"too dark"_s));
    library().selectMovies({0});
    controller->setFlagOfSelectedMovies({{}, 903});
    library().selectPlaylist(1);
    sessionFiles().setSessionTitle(u"Show"_s);
    sessionFiles().setCurrentSessionPath(path(u"show.dls"_s));
    quit();
    EXPECT_TRUE(alerts.shown.empty());

    start();
    EXPECT_EQ(playlistNames(), (QStringList{u"Day 1"_s, u"Day 2"_s}));
    EXPECT_EQ(library().selectedPlaylistRows(), Library::Rows{1});
    EXPECT_EQ(library().selectedMovieRows(), Library::Rows{0});
    EXPECT_EQ(sessionFiles().windowTitle(), u"Show"_s);
    EXPECT_EQ(sessionFiles().currentSessionPath(), path(u"show.dls"_s));
    EXPECT_TRUE(sessionFiles().sessionIsModified()) << "show.dls was never written";
    const auto& lists = library().playlists();
    EXPECT_EQ(lists[0]->itemCount, u"2"_s);
    EXPECT_EQ(lists[0]->movieList[1], lists[1]->movieList[0]); // still one record
    EXPECT_EQ(lists[1]->movieList[0]->notes->string(), u"too dark"_s);
    EXPECT_EQ(lists[1]->movieList[0]->flagString, u"903"_s);
}

TEST_F(StartupTest, WithoutThePreviousSessionTheLibraryIsEmptyButThePathIsKept) {
    start();
    addPlaylist(u"Day 1"_s, {});
    sessionFiles().setCurrentSessionPath(path(u"show.dls"_s));
    preferences->loadPreviousSessionOnStartup.set(false);
    quit();
    start();
    EXPECT_TRUE(library().playlists().empty());
    EXPECT_EQ(sessionFiles().currentSessionPath(), path(u"show.dls"_s));

    // Nothing is put in the place of what that file holds without a word.
    makeFile(u"show.dls"_s, "somebody's review");
    const auto kept = [this] {
        settleFiles();
        QFile file(path(u"show.dls"_s));
        return file.open(QIODevice::ReadOnly) && file.readAll() == "somebody's review";
    };
    sessionFiles().saveSession();
    EXPECT_TRUE(kept());
    EXPECT_EQ(alerts.shown.back().message, u"Replace \"show.dls\"?"_s);
    alerts.answers = {Alerts::firstButton};
    panels.saveAnswers = {path(u"other.dls"_s)};
    sessionFiles().saveSession();
    EXPECT_TRUE(kept() && QFileInfo::exists(path(u"other.dls"_s)));
    const size_t asked = alerts.shown.size();
    sessionFiles().saveSession(); // that one is ours
    EXPECT_EQ(alerts.shown.size(), asked);
}

TEST_F(StartupTest, AnUnreadableTemporarySessionIsKeptAside) {
    makeFile(u"mia_daylarkSession.dls"_s, "not an archive");
    start();
    EXPECT_TRUE(library().playlists().empty());
    addPlaylist(u"New"_s, {});
    quit();
    const QStringList kept = QDir(folder.path()).entryList({u"mia_daylarkSession (unreadable *"_s});
    ASSERT_EQ(kept.size(), 1);
    QFile aside(path(kept[0]));
    ASSERT_TRUE(aside.open(QIODevice::ReadOnly));
    EXPECT_EQ(aside.readAll(), "not an archive");
    EXPECT_TRUE(bool(readSessionFile(temporarySession())));
}

TEST_F(StartupTest, QuittingWhileThePreviousSessionIsStillBeingReadLosesNothing) {
    start();
    addPlaylist(u"Day 1"_s, {u"a.mov"_s});
    sessionFiles().setCurrentSessionPath(path(u"show.dls"_s));
    quit();

    preferences = std::make_unique<Preferences>(path(u"preferences.ini"_s));
    player = std::make_unique<Player>(clock);
    controller = std::make_unique<PlaylistController>(PlaylistController::Surroundings{
        *preferences, alerts, panels, pasteboard, browser, {u"mia"_s, folder.path(), {}}, *player, failedWrites});
    controller->awake();
    quit(); // no event was handled in between

    start();
    EXPECT_EQ(playlistNames(), QStringList{u"Day 1"_s});
    EXPECT_EQ(sessionFiles().currentSessionPath(), path(u"show.dls"_s));
}

TEST_F(StartupTest, EveryEditOutlivesACrashThatComesRightAfterIt) {
    start();
    const auto crashAndStart = [this] {
        crash();
        EXPECT_FALSE(QFileInfo::exists(temporarySession())) << "nobody closed or ended anything";
        start();
    };
    const auto first = [this] { return library().playlists()[0]->movieList[0]; };
    addPlaylist(u"Day 1"_s, {u"a.mov"_s, u"b.mov"_s});
    crashAndStart();
    ASSERT_EQ(playlistNames(), QStringList{u"Day 1"_s});
    controller->playlistEditing().addEmptyPlaylist();
    crashAndStart();
    ASSERT_EQ(playlistNames(), (QStringList{u"Day 1"_s, u"Untitled Playlist"_s}));
    controller->playlistEditing().renamePlaylist(1, u"Day 2"_s);
    crashAndStart();
    ASSERT_EQ(playlistNames(), (QStringList{u"Day 1"_s, u"Day 2"_s}));
    library().movePlaylists({1}, 0);
    crashAndStart();
    ASSERT_EQ(playlistNames(), (QStringList{u"Day 2"_s, u"Day 1"_s}));
    library().selectPlaylist(0);
    controller->playlistEditing().removeSelectedPlaylists();
    crashAndStart();
    ASSERT_EQ(playlistNames(), QStringList{u"Day 1"_s});
    library().selectPlaylist(0);
    controller->playlistEditing().moveMovies(library().moviesAt({1}), library().movieAt(0));
    crashAndStart();
    EXPECT_EQ(first()->filenameString, u"b.mov"_s);
    controller->edits().setNotes(first(), NotesField::notes2, AttributedString(u"kept"_s));
    controller->edits().setFlag({first()}, 903);
    crashAndStart();
    EXPECT_EQ(first()->notes2->string(), u"kept"_s);
    EXPECT_EQ(first()->flagString, u"903"_s);
    library().selectPlaylist(0);
    library().selectMovies({1});
    alerts.answers = {Alerts::firstButton};
    controller->playlistEditing().removeSelectedMovies();
    crashAndStart();
    EXPECT_EQ(library().playlists()[0]->count(), 1);
    controller->playlistEditing().addEmptyPlaylist(); // selected by that
    controller->playlistEditing().addEmptyPlaylist();
    library().selectPlaylist(1);
    crashAndStart();
    EXPECT_EQ(library().selectedPlaylistRows(), Library::Rows{1});
    quit();
    EXPECT_TRUE(QFileInfo::exists(temporarySession()));
    start();
    EXPECT_EQ(first()->notes2->string(), u"kept"_s);
}

TEST_F(StartupTest, WhatComesBackIsMarkedAsLongAsNoSessionFileHoldsIt) {
    // Each way of ending twice: the second time nothing was edited since.
    enum class Ending { quit, crash };
    const auto isMarkedAfterBoth = [this](Ending ending) {
        const auto again = [this, ending] {
            ending == Ending::quit ? quit() : crash();
            start();
        };
        again();
        const bool once = sessionFiles().sessionIsModified();
        again();
        EXPECT_EQ(sessionFiles().sessionIsModified(), once);
        return once;
    };
    start();
    EXPECT_FALSE(isMarkedAfterBoth(Ending::quit)) << "nothing was ever done";
    addPlaylist(u"Day 1"_s, {u"a.mov"_s, u"b.mov"_s});
    EXPECT_TRUE(isMarkedAfterBoth(Ending::crash));
    EXPECT_TRUE(isMarkedAfterBoth(Ending::quit));
    EXPECT_TRUE(isMarkedAfterBoth(Ending::crash)) << "out of the file, with a journal that has no edit";

    const auto save = [this] {
        panels.saveAnswers = {path(u"show.dls"_s)};
        sessionFiles().saveSession();
        settleFiles();
        ASSERT_FALSE(sessionFiles().sessionIsModified());
    };
    save();
    EXPECT_FALSE(isMarkedAfterBoth(Ending::crash)) << "every edit is in the journal, and in show.dls";
    EXPECT_FALSE(isMarkedAfterBoth(Ending::quit));
    controller->edits().setNotes(library().playlists()[0]->movieList[0], NotesField::notes, AttributedString(u"dark"_s));
    EXPECT_TRUE(isMarkedAfterBoth(Ending::crash));
    save();
    EXPECT_FALSE(isMarkedAfterBoth(Ending::crash));

    // What the program itself finds out asks nobody to save it; an empty library has nothing to lose.
    controller->edits().store().insertPlaylists(1, {std::make_shared<Playlist>()}, {{}, EditKind::background});
    EXPECT_FALSE(isMarkedAfterBoth(Ending::crash));
    sessionFiles().clearSession();
    EXPECT_FALSE(isMarkedAfterBoth(Ending::quit));
    addPlaylist(u"Day 2"_s, {});
    EXPECT_TRUE(isMarkedAfterBoth(Ending::crash));

    // Left out at a start, none of it comes back.
    preferences->loadPreviousSessionOnStartup.set(false);
    EXPECT_FALSE(isMarkedAfterBoth(Ending::quit));
}

/// The journal has room ahead, the session file hasn't: what comes back comes out of the journal alone.
TEST_F(StartupTest, AfterAQuitOnAFullDiskTheMarkComesBackWithTheEdits) {
    const auto wrong = test::runOnSmallDisk(folder.path(), 8 << 20, [this] {
        start();
        addPlaylist(u"Day 1"_s, {u"a.mov"_s});
        settleFiles();
        QFile filling(path(u"filling"_s));
        if (!filling.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) return 1;
        while (filling.write(QByteArray(4096, 'x')) == 4096) {}
        quit();
        if (QFileInfo::exists(temporarySession())) return 2;
        start();
        if (playlistNames() != QStringList{u"Day 1"_s}) return 3;
        return sessionFiles().sessionIsModified() ? 0 : 4;
    });
    if (!wrong) GTEST_SKIP() << "nobody may make a disk here";
    EXPECT_EQ(*wrong, 0);
}

TEST_F(StartupTest, EditsThatCannotBeStoredAreSaidAndStoredWhenTheyCan) {
    start();
    const TemporarySession& temporary = sessionFiles().temporarySession();
    EXPECT_TRUE(temporary.trouble().isEmpty());
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    ::getrlimit(RLIMIT_FSIZE, &before);
    const rlimit full{64, before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &full), 0);
    addPlaylist(u"Day 1"_s, {u"a.mov"_s});
    const bool said = waitUntil([&] { return !temporary.trouble().isEmpty(); });
    ::setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_TRUE(said);
    EXPECT_TRUE(waitUntil([&] { return temporary.trouble().isEmpty(); }));
    crash();
    start();
    EXPECT_EQ(playlistNames(), QStringList{u"Day 1"_s});
}

TEST_F(StartupTest, OlderPlaylistsGetTheirTypesAndCounts) {
    SessionContents contents;
    contents.hasPlaylists = true;
    for (const bool divider : {false, true}) {
        auto playlist = std::make_shared<Playlist>();
        playlist->playlistType = QString();
        playlist->isDivider = Number(divider);
        contents.playlists.push_back(playlist);
    }
    contents.playlists[0]->movieList.push_back(std::make_shared<Movie>(path(u"a.mov"_s)));
    ASSERT_TRUE(bool(writeSessionFile(temporarySession(), encodeSession(contents))));
    start();
    ASSERT_EQ(library().playlists().size(), 2u);
    EXPECT_EQ(library().playlists()[0]->playlistType, u"playlist"_s);
    EXPECT_EQ(library().playlists()[0]->itemCount, u"1"_s);
    EXPECT_EQ(library().playlists()[1]->playlistType, u"divider"_s);
    EXPECT_EQ(library().selectedPlaylistRows(), Library::Rows{0}); // no stored index reads as 0
}

TEST_F(StartupTest, TenThousandItemsAreRestoredNotedAndSavedWithoutHoldingUpTheLoop) {
    followed = false; // ten thousand copies would be what holds up the loop
    start();
    QStringList files;
    for (int i = 0; i < 10000; ++i)
        files << u"shots/%1.mov"_s.arg(i);
    addPlaylist(u"All"_s, files);
    QImage picture(100, 56, QImage::Format_RGB32);
    picture.fill(Qt::darkGray);
    const Image thumbnail = Image::fromQImage(picture);
    for (const auto& movie : library().arrangedMovies())
        movie->thumbnail = thumbnail;
    quit();

    const Watchdog watchdog;
    start();
    ASSERT_EQ(library().arrangedMovies().size(), 10000u);
    const auto last = library().arrangedMovies().back();
    controller->edits().setNotes(last, NotesField::notes, AttributedString(u"last"_s));
    QCoreApplication::processEvents();
    watchdog.print("while 10,000 items were restored");

    const QDateTime before = QFileInfo(temporarySession()).lastModified();
    const Watchdog saving;
    sessionFiles().saveTempSession();
    EXPECT_TRUE(waitUntil([&] { return QFileInfo(temporarySession()).lastModified() != before; }));
    saving.print("while they were saved");
    auto saved = readSessionFile(temporarySession());
    ASSERT_TRUE(bool(saved));
    EXPECT_EQ(saved->playlists[0]->movieList.back()->notes->string(), u"last"_s);
}

TEST_F(StartupTest, CheckToCloseEndsTheProgramOnlyAfterAFileFromALink) {
    start();
    bool ended = false;
    QObject::connect(controller.get(), &PlaylistController::terminate, [&ended] { ended = true; });
    addPlaylist(u"Day 1"_s, {});
    controller->checkToClose();
    QCoreApplication::processEvents();
    EXPECT_FALSE(ended);
    addPlaylist(u"File From Link"_s, {});
    controller->checkToClose();
    EXPECT_FALSE(ended); // on the next turn of the loop
    QCoreApplication::processEvents();
    EXPECT_TRUE(ended);
    EXPECT_EQ(playlistNames(), QStringList{u"Day 1"_s});
}

} // namespace
} // namespace daylark::test
