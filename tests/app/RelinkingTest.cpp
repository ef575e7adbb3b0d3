#include "app/AppFixture.h"
#include "support/PictureMaker.h"

#include <QSignalSpy>

namespace daylark::test {
namespace {

class RelinkingTest : public AppFixture {
protected:
    void SetUp() override {
        start();
        settle();
        clip = bench::movie({.frames = 24, .group = 12});
        longer = bench::movie({.frames = 48, .group = 12});
    }
    Relinking& relinking() { return controller->relinking(); }
    UndoHistory& history() { return controller->edits().history(); }
    void settle() {
        ASSERT_TRUE(waitUntil([this] {
            return !relinking().isBusy() && !relinking().isSearchingByItself() && !controller->fileStates().isUpdating() &&
                   controller->thumbnails().isIdle() && !controller->fileExistence().isChecking();
        }));
    }
    /// A movie under the found folder.
    QString put(const QString& name, const QString& movie) const {
        QDir().mkpath(QFileInfo(path(name)).path());
        EXPECT_TRUE(QFile::copy(movie, path(name)));
        return path(name);
    }
    std::shared_ptr<Movie> item(int at) { return library().arrangedMovies()[size_t(at)]; }
    QString lastMessage() const { return alerts.shown.empty() ? QString() : alerts.shown.back().message; }
    void answerFolder(const QString& name) { panels.openAnswers.push_back({path(name)}); }

    QString clip, longer;
};

TEST_F(RelinkingTest, MissingItemsOfTheSelectedListsAreLinkedWithFactsThumbnailsAndStates) {
    const auto day = addPlaylist(u"Day"_s, {u"gone/a.mov"_s, u"gone/b.mov"_s, u"gone/c.mov"_s});
    const QString found = put(u"found/sub/a.mov"_s, clip);
    put(u"found/elsewhere/a.mov"_s, clip); // met before
    history().clear();
    answerFolder(u"found"_s);
    alerts.answers = {Alerts::firstButton};
    relinking().autolinkSelectedPlaylists();
    settle();
    const OpenPanel& panel = panels.opensShown.back();
    EXPECT_EQ(panel.title, u"Select A Folder To Search"_s);
    EXPECT_EQ(panel.prompt, u"Choose Folder"_s);
    EXPECT_TRUE(panel.chooseFolders && !panel.chooseFiles && !panel.allowMultiple);
    ASSERT_EQ(alerts.shown.size(), 1u);
    const Alert& report = alerts.shown.back();
    EXPECT_EQ(report.message, u"Some Files Found"_s);
    EXPECT_EQ(report.informativeText, u"1 matching file has been relinked.  2 files were not found."_s);
    EXPECT_EQ(report.buttons, (QStringList{u"Okay"_s, u"Try Again"_s}));
    EXPECT_TRUE(report.details.contains(found) && report.details.contains(path(u"found/elsewhere/a.mov"_s)));
    EXPECT_EQ(item(0)->filepathString, found);
    EXPECT_EQ(item(0)->mMovieDurationFrames, 24);
    EXPECT_FALSE(item(0)->thumbnail.isNil());
    EXPECT_EQ(item(0)->statusColour, QColor(Qt::white));
    EXPECT_EQ(item(1)->creatingThumbnailText, fileNotFoundText);
    EXPECT_EQ(day->status, 1);

    EXPECT_EQ(history().undoText(), u"Undo Relink"_s);
    history().undo();
    settle();
    EXPECT_EQ(item(0)->filepathString, path(u"gone/a.mov"_s));
    EXPECT_EQ(item(0)->creatingThumbnailText, fileNotFoundText);
    EXPECT_EQ(day->status, 2);
    history().redo();
    settle();
    EXPECT_EQ(day->status, 1);
    EXPECT_EQ(item(0)->statusColour, QColor(Qt::white));
}

TEST_F(RelinkingTest, ReportsAsTheSearchWentAndTriesAgain) {
    put(u"found/a.mov"_s, clip);
    put(u"here/b.mov"_s, clip);
    QDir(folder.path()).mkdir(u"empty"_s);
    addPlaylist(u"Other"_s, {});
    addPlaylist(u"Day"_s, {u"gone/a.mov"_s, u"here/b.mov"_s});
    addPlaylist(u"Night"_s, {u"lost/a.mov"_s}); // two of a name share the file
    library().selectPlaylists({1, 2});
    answerFolder(u"empty"_s);
    answerFolder(u"found"_s);
    alerts.answers = {Alerts::secondButton, Alerts::firstButton};
    relinking().autolinkSelectedPlaylists();
    ASSERT_TRUE(waitUntil([this] { return alerts.shown.size() == 2; }));
    settle();
    EXPECT_EQ(alerts.shown[0].message, u"No Files Found"_s);
    EXPECT_EQ(alerts.shown[0].informativeText, u"No matching files were found in this location."_s);
    EXPECT_EQ(alerts.shown[1].message, u"All Files Found"_s);
    EXPECT_EQ(alerts.shown[1].informativeText, u"2 matching files have been relinked."_s);
    EXPECT_EQ(alerts.shown[1].buttons, QStringList{u"Okay"_s});
    EXPECT_TRUE(alerts.shown[1].details.isEmpty());
    EXPECT_EQ(library().selectedPlaylistRows(), Library::Rows{0}) << "of several the first of all";
    for (const auto& playlist : library().playlists())
        EXPECT_EQ(playlist->status, 0);

    library().selectPlaylists({1, 2});
    relinking().autolinkSelectedPlaylists();
    settle();
    EXPECT_EQ(lastMessage(), u"No Files Are Missing"_s);
    relinking().autolinkCurrentSession();
    settle();
    EXPECT_EQ(lastMessage(), u"There Are No Missing Files"_s);
    EXPECT_EQ(panels.opensShown.size(), 2u) << "no folder is asked for";
    library().selectPlaylists({});
    relinking().autolinkSelectedPlaylists();
    relinking().forcelinkSelectedPlaylists();
    EXPECT_EQ(alerts.shown.size(), 4u);
    EXPECT_FALSE(relinking().isBusy());
}

TEST_F(RelinkingTest, TheWholeSessionGoesByStoredStatesAndKeepsTheSelection) {
    put(u"found/a.mov"_s, clip);
    const auto day = addPlaylist(u"Day"_s, {u"gone/a.mov"_s});
    addPlaylist(u"Night"_s, {});
    library().selectPlaylists({0, 1});
    relinking().autolinkCurrentSession();
    settle();
    EXPECT_EQ(lastMessage(), u"There Are No Missing Files"_s) << "nobody looked yet";
    controller->fileStates().updateAllFilePaths();
    settle();
    answerFolder(u"found"_s);
    relinking().autolinkCurrentSession();
    settle();
    EXPECT_EQ(panels.opensShown.back().prompt, u"Search Folder"_s);
    EXPECT_EQ(lastMessage(), u"All Files Found"_s);
    EXPECT_EQ(day->movieList.front()->filepathString, path(u"found/a.mov"_s));
    EXPECT_EQ(library().selectedPlaylistRows(), (Library::Rows{0, 1}));
}

TEST_F(RelinkingTest, AForcedSearchLinksWhatIsThereAsWellAndAnOpenViewerFollows) {
    put(u"here/a.mov"_s, clip);
    put(u"new/a.mov"_s, longer);
    const auto day = addPlaylist(u"Day"_s, {u"here/a.mov"_s, u"here/b.mov"_s});
    controller->fileStates().updateAllFilePaths();
    settle();
    library().selectMovies({0});
    controller->loadMovieWindow();
    ASSERT_TRUE(waitUntil([this] { return player->isOpen() && player->pictureIsCurrent(); }));
    EXPECT_EQ(player->index().count(), 24);
    controller->playerWindow().transport().goToFrame(7, 0.3);
    ASSERT_TRUE(waitUntil([this] { return player->pictureIsCurrent(); }));
    history().clear();
    answerFolder(u"new"_s);
    alerts.answers = {Alerts::firstButton};
    relinking().forcelinkSelectedPlaylists();
    ASSERT_TRUE(waitUntil([this] { return player->isOpen() && player->index().count() == 48 && player->pictureIsCurrent(); }));
    settle();
    EXPECT_EQ(panels.opensShown.back().prompt, u"Search Folder"_s);
    EXPECT_EQ(alerts.shown.back().informativeText, u"1 matching file has been relinked.  1 file was not found."_s);
    EXPECT_EQ(player->currentFrame(), 7) << "at the frame where it stood";
    EXPECT_EQ(item(0)->mMovieDurationFrames, 48);
    history().undo();
    ASSERT_TRUE(waitUntil([this] { return player->isOpen() && player->index().count() == 24 && player->pictureIsCurrent(); }));
    settle();
    EXPECT_EQ(item(0)->filepathString, path(u"here/a.mov"_s));
    EXPECT_EQ(item(0)->mMovieDurationFrames, 24);
}

TEST_F(RelinkingTest, ByHandOneItemAndAnotherNameOnlyWhenAPersonSaysSo) {
    const QString same = put(u"found/a.mov"_s, clip), other = put(u"found/other.mov"_s, longer);
    addPlaylist(u"Day"_s, {u"gone/a.mov"_s, u"gone/b.mov"_s});
    library().selectMovies({0, 1});
    relinking().linkMovieToFile();
    EXPECT_EQ(lastMessage(), u"Select one item and try again"_s);
    EXPECT_TRUE(panels.opensShown.empty());
    library().selectMovies({});
    answerFolder(u"found/a.mov"_s);
    relinking().linkMovieToFile();
    EXPECT_EQ(panels.opensShown.size(), 1u);
    EXPECT_EQ(panels.opensShown[0].title, u"Link Video File"_s);
    EXPECT_EQ(panels.opensShown[0].prompt, u"Select"_s);
    EXPECT_TRUE(panels.opensShown[0].chooseFiles && !panels.opensShown[0].chooseFolders);

    library().selectMovies({0});
    answerFolder(u"found/a.mov"_s);
    relinking().linkMovieToFile();
    settle();
    EXPECT_EQ(item(0)->filepathString, same);
    EXPECT_EQ(item(0)->creatingThumbnailText, u""_s);
    EXPECT_EQ(alerts.shown.size(), 1u);

    answerFolder(u"found/other.mov"_s);
    alerts.answers = {Alerts::secondButton};
    relinking().linkMovieToFile();
    settle();
    EXPECT_EQ(lastMessage(), u"The filenames don't match.  Link anyway?"_s);
    EXPECT_EQ(alerts.shown.back().buttons, (QStringList{u"Link Anyway"_s, u"Cancel"_s}));
    EXPECT_EQ(item(0)->filepathString, same);
    answerFolder(u"found/other.mov"_s);
    alerts.answers = {Alerts::firstButton};
    relinking().linkMovieToFile();
    settle();
    EXPECT_EQ(item(0)->filepathString, other);
    EXPECT_EQ(item(0)->filenameString, u"other.mov"_s);
    EXPECT_EQ(item(0)->mMovieDurationFrames, 48);
    EXPECT_EQ(library().playlists()[0]->status, 1);
}

TEST_F(RelinkingTest, AMovedRunIsFoundByAnyOfItsPicturesAndShownAgain) {
    QDir(folder.path()).mkpath(u"shots"_s);
    for (int number = 1001; number <= 1008; ++number)
        writePicture(barCodePicture(path(u"shots/sh.%1.exr"_s.arg(number)), number, {192, 108}, 0.8F));
    const auto day = addPlaylist(u"Day"_s, {});
    controller->mediaAdding().addMediaFilesToSelectedPlaylist({path(u"shots/sh.1004.exr"_s)});
    settleAdding();
    settle();
    const MovieRun run = item(0)->frameRun.value();
    EXPECT_EQ(run.run.text(), u"sh.1001-1008#.exr"_s);
    const auto moveAway = [this](const QString& from, const QString& to) {
        QDir(folder.path()).mkpath(QFileInfo(to).path());
        ASSERT_TRUE(QDir(folder.path()).rename(from, to));
        controller->fileStates().updateAllFilePaths();
        settle();
        ASSERT_EQ(library().playlists()[0]->status, 2);
    };
    ASSERT_NO_FATAL_FAILURE(moveAway(u"shots"_s, u"attic/a/day 1"_s));
    QFile::remove(path(u"attic/a/day 1/sh.1001.exr"_s));
    put(u"attic/z/sh.1001.exr"_s, path(u"attic/a/day 1/sh.1002.exr"_s)); // a straggler by the first one's name
    history().clear();
    answerFolder(u"attic"_s);
    alerts.answers = {Alerts::firstButton};
    relinking().autolinkSelectedPlaylists();
    settle();
    EXPECT_EQ(lastMessage(), u"All Files Found"_s);
    EXPECT_TRUE(alerts.shown.back().details.contains(u"sh.1001-1008#.exr is there 2 times. Linked to "_s +
                                                     path(u"attic/a/day 1/sh.1001-1008#.exr"_s)));
    EXPECT_EQ(item(0)->filepathString, path(u"attic/a/day 1/sh.1001.exr"_s));
    EXPECT_EQ(item(0)->frameRun, run) << "what is missing keeps its number";
    EXPECT_EQ(item(0)->statusColour, QColor(Qt::white));
    EXPECT_FALSE(item(0)->thumbnail.isNil());
    EXPECT_EQ(day->status, 0);
    library().selectMovies({0});
    controller->loadMovieWindow();
    ASSERT_TRUE(waitUntil([this] { return player->isOpen() && player->pictureIsCurrent(); }));
    EXPECT_EQ(player->index().count(), 8);
    EXPECT_EQ(player->index().missing, std::vector<qint64>{0});
    history().undo();
    settle();
    EXPECT_EQ(day->status, 2);

    const size_t asked = alerts.shown.size();
    // By hand any picture of it stands for all; one that isn't is asked about, and is a run of its own.
    answerFolder(u"attic/a/day 1/sh.1005.exr"_s);
    relinking().linkMovieToFile();
    settle();
    EXPECT_EQ(alerts.shown.size(), asked) << "no question: " << lastMessage().toStdString();
    EXPECT_EQ(item(0)->filepathString, path(u"attic/a/day 1/sh.1001.exr"_s));
    EXPECT_EQ(item(0)->frameRun, run);
    EXPECT_EQ(day->status, 0);
    for (int number = 1; number <= 3; ++number)
        put(u"attic/b/take.%1.exr"_s.arg(number, 3, 10, QLatin1Char('0')), path(u"attic/a/day 1/sh.1002.exr"_s));
    for (int number = 2000; number <= 2001; ++number) // of its name, but no picture of it
        put(u"attic/b/sh.%1.exr"_s.arg(number), path(u"attic/a/day 1/sh.1002.exr"_s));
    struct Other {
        QString chosen, first, run;
        int frames;
    };
    for (const Other& other : {Other{u"sh.2001.exr"_s, u"sh.2000.exr"_s, u"sh.2000-2001#.exr"_s, 2},
                               Other{u"take.002.exr"_s, u"take.001.exr"_s, u"take.001-003@@@.exr"_s, 3}}) {
        answerFolder(u"attic/b/"_s + other.chosen);
        alerts.answers = {Alerts::firstButton};
        relinking().linkMovieToFile();
        settle();
        EXPECT_EQ(lastMessage(), u"The filenames don't match.  Link anyway?"_s);
        EXPECT_EQ(item(0)->filepathString, path(u"attic/b/"_s + other.first));
        EXPECT_EQ(item(0)->frameRun.value().run.text(), other.run);
        ASSERT_TRUE(waitUntil(
            [&] { return player->isOpen() && player->index().count() == other.frames && player->pictureIsCurrent(); }));
    }
    history().undo();
    history().undo();
    settle();
    EXPECT_EQ(item(0)->frameRun, run);
    ASSERT_TRUE(waitUntil([this] { return player->isOpen() && player->index().count() == 8 && player->pictureIsCurrent(); }));
}

TEST_F(RelinkingTest, TheAutomaticSearchFollowsEveryLookAtTheFilesAndSaysNothing) {
    const auto day = addPlaylist(u"Day"_s, {u"gone/a.mov"_s, u"gone/b.mov"_s});
    put(u"root with % and #/deep/a.mov"_s, clip);
    answerFolder(u"root with % and #"_s);
    relinking().setAutoSearchPath();
    EXPECT_EQ(panels.opensShown.back().title, u"Choose The Root Folder For Automatic Searches"_s);
    EXPECT_EQ(preferences->autoSearchPath(), path(u"root with % and #"_s));
    relinking().setAutoSearchPath();
    EXPECT_EQ(preferences->autoSearchPath(), path(u"root with % and #"_s)) << "cancelled";

    history().clear();
    controller->fileStates().updateAllFilePaths();
    settle();
    EXPECT_EQ(day->status, 2) << "switched off";
    preferences->autoSearchForMissingMedia.set(true);
    int searches = 0;
    QObject::connect(&relinking(), &Relinking::busyChanged, [&] { searches += relinking().isSearchingByItself(); });
    controller->fileStates().updateAllFilePaths();
    ASSERT_TRUE(waitUntil([&] { return day->status == 1 && searches == 2; }));
    settle();
    EXPECT_EQ(searches, 2) << "one that finds, one that finds no more and ends the chain";
    EXPECT_EQ(item(0)->filepathString, path(u"root with % and #/deep/a.mov"_s));
    EXPECT_EQ(item(0)->mMovieDurationFrames, 24);
    EXPECT_TRUE(alerts.shown.empty());
    EXPECT_FALSE(history().canUndo()) << "nobody did anything";
    preferences->autoSearchPath.set(path(u"no such folder"_s));
    controller->fileStates().updateAllFilePaths();
    settle();
    EXPECT_EQ(day->status, 1);
}

TEST_F(RelinkingTest, ACancelledSearchChangesAndSaysNothing) {
    for (int at = 0; at < 300; ++at)
        makeFile(u"found/%1/x.mov"_s.arg(at));
    put(u"found/zz/a.mov"_s, clip);
    addPlaylist(u"Day"_s, {u"gone/a.mov"_s});
    answerFolder(u"found"_s);
    QObject context;
    QObject::connect(&controller->progress(), &ProgressBoard::changed, &context, [this] {
        for (const auto& job : controller->progress().jobs())
            if (job.window) *job.cancelled = true; // before the worker has begun
    });
    relinking().forcelinkSelectedPlaylists();
    settle();
    EXPECT_TRUE(alerts.shown.empty());
    EXPECT_EQ(item(0)->filepathString, path(u"gone/a.mov"_s));
    EXPECT_TRUE(controller->progress().jobs().empty());
}

TEST_F(RelinkingTest, MarkingMissingFilesWritesEachMethodsOwnText) {
    const QString there = put(u"here/a.mov"_s, clip);
    addPlaylist(u"Day"_s, {});
    controller->mediaAdding().addMediaFilesToSelectedPlaylist({there, put(u"here/b.mov"_s, clip)});
    settleAdding();
    settle();
    QFile::remove(path(u"here/b.mov"_s));
    controller->fileExistence().checkFilesExistForSelectedPlaylists();
    settle();
    EXPECT_EQ(item(0)->creatingThumbnailText, u""_s);
    EXPECT_EQ(item(1)->creatingThumbnailText, u"File Not     Found"_s);
    EXPECT_EQ(item(1)->statusColour, QColor(Qt::white)) << "nothing else changes";
    EXPECT_TRUE(FileExistence::isMarkedMissing(*item(1)) && !FileExistence::isMarkedMissing(*item(0)));
    controller->fileExistence().checkFilesExistForAllPlaylists();
    settle();
    EXPECT_EQ(item(1)->creatingThumbnailText, fileNotFoundText);
    put(u"here/b.mov"_s, clip);
    controller->fileExistence().checkFilesExistForSelectedPlaylists();
    settle();
    EXPECT_EQ(item(1)->creatingThumbnailText, u""_s);
}

} // namespace
} // namespace daylark::test
