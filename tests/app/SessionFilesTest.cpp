#include "app/AppFixture.h"
#include "archive/KeyedArchive.h"

namespace daylark::test {
namespace {

class SessionFilesTest : public AppFixture {
protected:
    void SetUp() override { start(); }

    /// The keys of an archive's root.
    QStringList rootKeys(const QString& file) {
        QFile in(file);
        if (!in.open(QIODevice::ReadOnly)) return {};
        Result<Value> root = unarchiveRoot(in.readAll(), recordClasses());
        if (!root || !root->dictionary()) return {};
        QStringList keys;
        for (const auto& [key, value] : *root->dictionary())
            keys << key.string();
        return keys;
    }
    QString sessionOnDisk(const QString& name, const QStringList& playlists) {
        SessionContents contents;
        contents.hasPlaylists = true;
        for (const QString& title : playlists) {
            auto playlist = std::make_shared<Playlist>();
            playlist->name = title;
            playlist->movieList.push_back(std::make_shared<Movie>(path(title + u".mov"_s)));
            playlist->movieList.back()->mMovieBookmarkArray.isNil = true;
            contents.playlists.push_back(playlist);
        }
        EXPECT_TRUE(bool(writeSessionFile(path(name), encodeSession(contents))));
        return path(name);
    }
    void import(const QString& file) {
        sessionFiles().dragSessionImport(file);
        settleFiles();
    }
    QByteArray bytesOf(const QString& file) {
        QFile in(file);
        return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
    }
};

TEST_F(SessionFilesTest, TheFirstSaveAsksAndTheSecondWritesSilentlyToTheSameFile) {
    addPlaylist(u"Day 1"_s, {u"a.mov"_s});
    EXPECT_TRUE(sessionFiles().sessionIsModified());
    panels.saveAnswers = {path(u"review.dls"_s)};
    sessionFiles().saveSession();
    settleFiles();
    ASSERT_EQ(panels.savesShown.size(), 1u);
    EXPECT_EQ(panels.savesShown[0].title, u"Save Session As..."_s);
    EXPECT_EQ(panels.savesShown[0].prompt, u"Save"_s);
    EXPECT_EQ(panels.savesShown[0].proposedName, QString());
    EXPECT_EQ(panels.savesShown[0].allowedTypes, QStringList{u"dls"_s});
    EXPECT_EQ(sessionFiles().currentSessionPath(), path(u"review.dls"_s));
    EXPECT_EQ(preferences->sessionPath(), path(u"review.dls"_s));
    EXPECT_FALSE(sessionFiles().sessionIsModified());
    EXPECT_EQ(rootKeys(path(u"review.dls"_s)), QStringList{u"playlists"_s});

    addPlaylist(u"Day 2"_s, {});
    EXPECT_TRUE(sessionFiles().sessionIsModified());
    sessionFiles().saveSession();
    addPlaylist(u"Day 3"_s, {}); // made while the file is written: not in it, and still unsaved
    settleFiles();
    EXPECT_EQ(panels.savesShown.size(), 1u);
    EXPECT_TRUE(sessionFiles().sessionIsModified());
    auto saved = readSessionFile(path(u"review.dls"_s));
    ASSERT_TRUE(bool(saved));
    EXPECT_EQ(saved->playlists.size(), 2u);
}

TEST_F(SessionFilesTest, TheColourConfigurationIsTheSessionsOwnAndStandsBehindTheKnownKeys) {
    const auto configuration = [this] { return controller->edits().colourConfiguration(); };
    addPlaylist(u"Day 1"_s, {u"a.mov"_s});
    controller->edits().setColourConfiguration(u"/elsewhere/show.ocio"_s); // which is not on this machine
    controller->edits().history().undo();
    EXPECT_EQ(configuration(), QString());
    controller->edits().history().redo();
    panels.saveAnswers = {path(u"show.dls"_s)};
    sessionFiles().saveSession();
    settleFiles();
    EXPECT_EQ(rootKeys(path(u"show.dls"_s)), (QStringList{u"playlists"_s, u"colourConfiguration"_s}));
    EXPECT_EQ(sessionFiles().temporarySession().contents().colourConfiguration, u"/elsewhere/show.ocio"_s);

    const QString plain = sessionOnDisk(u"plain.dls"_s, {u"Plain"_s});
    alerts.answers = {Alerts::secondButton};
    import(plain); // added: this session's stays
    EXPECT_EQ(configuration(), u"/elsewhere/show.ocio"_s);
    alerts.answers = {Alerts::firstButton};
    import(plain); // in its place
    EXPECT_EQ(configuration(), QString());
    EXPECT_FALSE(controller->edits().history().canUndo()) << "what was another session's cannot come back";
    alerts.answers = {Alerts::firstButton};
    import(path(u"show.dls"_s));
    EXPECT_EQ(configuration(), u"/elsewhere/show.ocio"_s);
    quit();
    start();
    EXPECT_EQ(configuration(), u"/elsewhere/show.ocio"_s);
}

TEST_F(SessionFilesTest, SaveAsProposesTheCurrentNameAndACancelledPanelChangesNothing) {
    sessionFiles().saveSessionAs();
    EXPECT_EQ(panels.savesShown.back().proposedName, u"Untitled Session"_s);
    EXPECT_TRUE(sessionFiles().currentSessionPath().isEmpty());
    sessionFiles().setCurrentSessionPath(path(u"Show 1.day.dls"_s));
    panels.saveAnswers = {path(u"other.dls"_s)};
    sessionFiles().saveSessionAs();
    settleFiles();
    EXPECT_EQ(panels.savesShown.back().proposedName, u"Show 1.day"_s);
    EXPECT_EQ(sessionFiles().currentSessionPath(), path(u"other.dls"_s));
    EXPECT_TRUE(QFileInfo::exists(path(u"other.dls"_s)));
    EXPECT_FALSE(QFileInfo::exists(path(u"Show 1.day.dls"_s)));
}

TEST_F(SessionFilesTest, SaveIntoAFolderThatIsGoneAsksAndAFailedWriteLeavesFileAndMark) {
    addPlaylist(u"Day 1"_s, {u"a.mov"_s});
    sessionFiles().setCurrentSessionPath(path(u"gone/review.dls"_s));
    sessionFiles().saveSession();
    settleFiles();
    EXPECT_EQ(panels.savesShown.size(), 1u); // and it was cancelled
    EXPECT_EQ(sessionFiles().currentSessionPath(), path(u"gone/review.dls"_s));

    QDir(folder.path()).mkdir(u"taken.dls"_s); // nothing can be renamed over a folder
    makeFile(u"taken.dls/inside"_s);
    sessionFiles().setCurrentSessionPath(path(u"taken.dls"_s));
    sessionFiles().saveSession();
    settleFiles();
    EXPECT_TRUE(sessionFiles().sessionIsModified());
    EXPECT_TRUE(alerts.shown.empty());
    EXPECT_TRUE(QFileInfo::exists(path(u"taken.dls/inside"_s)));
    EXPECT_EQ(playlistNames(), QStringList{u"Day 1"_s});
}

TEST_F(SessionFilesTest, ImportIntoAnEmptyLibraryMakesTheFileTheCurrentSession) {
    const QString file = sessionOnDisk(u"Show 7.dls"_s, {u"A"_s, u"B"_s});
    panels.openAnswers = {{file}};
    sessionFiles().importSession();
    settleFiles();
    EXPECT_EQ(panels.opensShown.back().title, u"Import Session"_s);
    EXPECT_EQ(playlistNames(), (QStringList{u"A"_s, u"B"_s}));
    EXPECT_EQ(library().selectedPlaylistRows(), Library::Rows{0});
    EXPECT_EQ(library().selectedMovieRows(), Library::Rows{0});
    EXPECT_EQ(sessionFiles().windowTitle(), u"Show 7"_s);
    EXPECT_EQ(preferences->sessionTitle(), u"Show 7"_s);
    EXPECT_EQ(sessionFiles().currentSessionPath(), file);
    EXPECT_FALSE(sessionFiles().sessionIsModified());
    EXPECT_FALSE(
        library().arrangedMovies()[0]->mMovieBookmarkArray.isNil); // an absent list becomes an empty one
    EXPECT_TRUE(alerts.shown.empty());
}

TEST_F(SessionFilesTest, ImportIntoAFullLibraryAsksAndEachAnswerDoesItsOwn) {
    const QString first = sessionOnDisk(u"first.dls"_s, {u"A"_s}),
                  second = sessionOnDisk(u"second.dls"_s, {u"B"_s});
    import(first);
    const QString title = sessionFiles().windowTitle();

    alerts.answers = {Alerts::thirdButton};
    import(second);
    ASSERT_EQ(alerts.shown.size(), 1u);
    EXPECT_EQ(alerts.shown[0].message, u"Replace Current Session?"_s);
    EXPECT_EQ(alerts.shown[0].buttons, (QStringList{u"Replace Session"_s, u"Add To Session"_s, u"Cancel"_s}));
    EXPECT_EQ(playlistNames(), QStringList{u"A"_s});

    alerts.answers = {Alerts::secondButton};
    import(second);
    EXPECT_EQ(playlistNames(), (QStringList{u"A"_s, u"B"_s}));
    EXPECT_EQ(library().selectedPlaylistRows(), Library::Rows{0});
    EXPECT_EQ(sessionFiles().currentSessionPath(), first);
    EXPECT_TRUE(sessionFiles().sessionIsModified());

    alerts.answers = {Alerts::firstButton};
    import(second);
    EXPECT_EQ(playlistNames(), QStringList{u"B"_s});
    EXPECT_EQ(sessionFiles().currentSessionPath(), second);
    EXPECT_EQ(sessionFiles().windowTitle(), title); // kept; wanted
}

TEST_F(SessionFilesTest, AFileThatCannotBeReadLeavesTheSessionAndIsNeverWrittenOver) {
    addPlaylist(u"Day 1"_s, {u"a.mov"_s});
    const QString broken = makeFile(u"broken.dls"_s, "bplist00 torn in two");
    import(broken);
    import(path(u"none.dls"_s));
    ASSERT_EQ(alerts.shown.size(), 2u);
    EXPECT_EQ(alerts.shown[0].message,
              u"This file can not be read.\nPlease check you have correct file permissions."_s);
    EXPECT_EQ(alerts.shown[0].buttons, QStringList{u"Okay"_s});
    EXPECT_EQ(playlistNames(), QStringList{u"Day 1"_s});

    panels.saveAnswers = {broken};
    sessionFiles().saveSessionAs();
    settleFiles();
    EXPECT_TRUE(bool(readSessionFile(broken)));
    const QStringList kept = QDir(folder.path()).entryList({u"broken (unreadable *.dls"_s});
    ASSERT_EQ(kept.size(), 1);
    EXPECT_EQ(bytesOf(path(kept[0])), "bplist00 torn in two");
}

TEST_F(SessionFilesTest, TheTemporarySessionHasFiveKeysAndASixthWithASelection) {
    const QStringList five{u"playlists"_s, u"majorVersion"_s, u"minorVersion"_s, u"patchVersion"_s,
                           u"build"_s};
    addPlaylist(u"Day 1"_s, {u"a.mov"_s});
    library().selectPlaylists({});
    sessionFiles().saveTempSession();
    settleFiles();
    const QStringList without = rootKeys(temporarySession());
    EXPECT_EQ(QSet<QString>(without.begin(), without.end()), QSet<QString>(five.begin(), five.end()));
    library().selectPlaylist(0);
    // Several in a row while one is being written join in one more, which holds the last state.
    for (int i = 0; i < 20; ++i) {
        controller->edits().setPlaylistName(library().playlists()[0], u"Name %1"_s.arg(i));
        sessionFiles().saveTempSession();
    }
    settleFiles();
    EXPECT_EQ(rootKeys(temporarySession()).size(), 6);
    EXPECT_TRUE(rootKeys(temporarySession()).contains(u"lastSelectedPlaylistIndex"_s));
    auto saved = readSessionFile(temporarySession());
    ASSERT_TRUE(bool(saved));
    EXPECT_EQ(saved->playlists[0]->name, u"Name 19"_s);
}

} // namespace
} // namespace daylark::test
