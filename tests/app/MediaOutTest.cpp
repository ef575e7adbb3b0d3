#include "app/AppFixture.h"
#include "model/bundle/MovieBundle.h"
#include "platform/FileBookmark.h"

namespace daylark::test {
namespace {

/// Gathering, bundles and sessions for others, on real files.
class MediaOutTest : public AppFixture {
protected:
    void SetUp() override {
        // Without a session nobody keeps attributes of folders: the tests leave the user's alone.
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
        qputenv("XDG_RUNTIME_DIR", folder.path().toUtf8());
        QDir().mkpath(path(u"out"_s));
        start();
        QObject::connect(&controller->progress(), &ProgressBoard::changed, controller.get(), [this] {
            for (const auto& job : controller->progress().jobs())
                if (job.line().startsWith(u"Gathering"_s) && said.value(said.size() - 1) != job.line()) said << job.line();
        });
    }
    void addFiles(const QString& playlist, const QStringList& names) {
        for (const QString& name : names)
            makeFile(name, name.toUtf8());
        addPlaylist(playlist, names);
        library().selectMovies({});
    }
    void settleGathering() {
        ASSERT_TRUE(waitUntil([this] { return !controller->mediaGathering().isBusy(); }));
    }
    void settleBundles() {
        ASSERT_TRUE(waitUntil([this] { return !controller->bundleExport().isBusy(); }));
    }
    /// The jobs that are called so; others may be under way beside them.
    std::vector<ProgressBoard::Job> jobs(const QString& name) {
        std::vector<ProgressBoard::Job> called;
        for (const auto& job : controller->progress().jobs())
            if (job.line().startsWith(name)) called.push_back(job);
        return called;
    }
    QStringList out(const QString& name = {}) const {
        return QDir(path(u"out/"_s + name)).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
    SessionContents sessionAt(const QString& file) {
        Result<SessionContents> contents = readSessionFile(file);
        EXPECT_TRUE(contents);
        return contents ? *std::move(contents) : SessionContents();
    }

    QStringList said;
};

TEST_F(MediaOutTest, GatheringSelectedMoviesCountsWithAColonOnceAndSaysNothingAtTheEnd) {
    addFiles(u"Day"_s, {u"a.mov"_s, u"b.mov"_s, u"c.mov"_s, u"d.mov"_s});
    library().selectMovies({0, 1, 2});
    panels.openAnswers = {{path(u"out"_s)}};
    controller->mediaGathering().gatherMediaFiles({u"Gather Selected Media..."_s, 0});
    library().selectMovies({3}); // the list is the one that it was
    settleGathering();
    EXPECT_EQ(said, (QStringList{u"Gathering Media: File 1 of 3"_s, u"Gathering Media File 2 of 3"_s,
                                 u"Gathering Media File 3 of 3"_s}));
    EXPECT_EQ(out(), (QStringList{u"a.mov"_s, u"b.mov"_s, u"c.mov"_s}));
    EXPECT_TRUE(alerts.shown.empty());
    EXPECT_TRUE(jobs(u"Gathering"_s).empty());
    ASSERT_EQ(panels.opensShown.size(), 1U);
    EXPECT_EQ(panels.opensShown[0].title, u"Copy Media To New Destination"_s);
    EXPECT_EQ(panels.opensShown[0].prompt, u"Copy Media"_s);
    EXPECT_TRUE(panels.opensShown[0].chooseFolders && !panels.opensShown[0].chooseFiles);
    EXPECT_EQ(library().arrangedMovies()[0]->filepathString, path(u"a.mov"_s));
}

TEST_F(MediaOutTest, GatheringPlaylistsCountsBeyondTheLastAndSaysSoEvenWhenNothingWasCopied) {
    addFiles(u"Day"_s, {u"a.mov"_s, u"b.mov"_s});
    addPlaylist(u"Night"_s, {});
    library().addMovies(library().selectedPlaylist(), {library().playlists()[0]->movieList[0]}); // an instance
    library().selectPlaylists({0, 1});
    for (const char* title : {"Gather Media In Selected Playlists...", "Gather Media In Playlist..."}) {
        said.clear();
        panels.openAnswers = {{path(u"out"_s)}};
        controller->mediaGathering().gatherMediaFiles({QLatin1String(title), 0});
        settleGathering();
        EXPECT_EQ(said, (QStringList{u"Gathering Media: File 1 of 3"_s, u"Gathering Media File 2 of 3"_s,
                                     u"Gathering Media File 3 of 3"_s, u"Gathering Media File 4 of 3"_s}));
        EXPECT_EQ(out(), (QStringList{u"a.mov"_s, u"b.mov"_s}));
    }
    ASSERT_EQ(alerts.shown.size(), 2U);
    EXPECT_EQ(alerts.shown[0].message, u"Copy Complete"_s);
    EXPECT_EQ(alerts.shown[0].style, AlertStyle::warning);
    EXPECT_EQ(alerts.shown[0].buttons, QStringList{u"Okay"_s});
    // Another sender, a closed panel, no session: nothing.
    const size_t shown = panels.opensShown.size();
    controller->mediaGathering().gatherMediaFiles({u"Gather"_s, 0});
    EXPECT_EQ(panels.opensShown.size(), shown);
    controller->mediaGathering().gatherSelectedFiles();
    sessionFiles().clearSession();
    controller->mediaGathering().gatherMediaFiles({u"Gather Selected Media..."_s, 0});
    EXPECT_EQ(panels.opensShown.size(), shown + 1);
    EXPECT_FALSE(controller->mediaGathering().isBusy());
}

TEST_F(MediaOutTest, WhatCouldNotBeCopiedIsToldAndCopiedOnceMore) {
    addFiles(u"Day"_s, {u"a.mov"_s, u"b.mov"_s});
    library().selectMovies({0, 1});
    controller->mediaGathering().copySelectedFilesToURL(path(u"not yet"_s));
    settleGathering();
    ASSERT_EQ(failedWrites.list().size(), 1U);
    EXPECT_EQ(failedWrites.list()[0].path, path(u"not yet"_s));
    EXPECT_TRUE(failedWrites.list()[0].reason.startsWith(u"a.mov and 1 more: "_s))
        << qPrintable(failedWrites.list()[0].reason);
    QDir().mkpath(path(u"not yet"_s));
    const auto again = failedWrites.list()[0].tryAgain;
    again();
    settleGathering();
    EXPECT_TRUE(failedWrites.list().empty());
    EXPECT_TRUE(QFile::exists(path(u"not yet/b.mov"_s)));
}

TEST_F(MediaOutTest, PicturesOfARunThatCouldNotBeCopiedAreNamedAndTheirItemIsTriedOnce) {
    for (const int number : {1002, 1003, 1004})
        makeFile(u"sh010.%1.exr"_s.arg(number), "picture"_ba);
    addFiles(u"Day"_s, {u"sh010.1001.exr"_s});
    library().store().modify(library().playlists()[0]->movieList.front(), {{}, EditKind::background}, [](Movie& item) {
        item.frameRun = MovieRun{{u"sh010."_s, u".exr"_s, 4, false, 1001, 1004, 1}, {}, false, {}};
    });
    QFile::remove(path(u"sh010.1001.exr"_s));
    library().selectMovies({0});
    controller->mediaGathering().copySelectedFilesToURL(path(u"not yet"_s));
    settleGathering();
    ASSERT_EQ(failedWrites.list().size(), 1U);
    EXPECT_TRUE(failedWrites.list()[0].reason.startsWith(u"sh010.1002.exr and 2 more: "_s))
        << qPrintable(failedWrites.list()[0].reason);
    QDir().mkpath(path(u"not yet"_s));
    said.clear();
    const auto again = failedWrites.list()[0].tryAgain;
    again();
    settleGathering();
    EXPECT_TRUE(failedWrites.list().empty());
    EXPECT_EQ(said.value(0), u"Gathering Media: File 1 of 1"_s);
    EXPECT_EQ(out(u"../not yet"_s), (QStringList{u"sh010.1002.exr"_s, u"sh010.1003.exr"_s, u"sh010.1004.exr"_s}));
}

TEST_F(MediaOutTest, CancelledGatheringEndsWithoutAWord) {
    QStringList names;
    for (int number = 0; number < 300; ++number)
        names << u"%1.mov"_s.arg(number);
    addFiles(u"Day"_s, names);
    QObject::connect(&controller->progress(), &ProgressBoard::changed, controller.get(), [this] {
        for (const auto& job : controller->progress().jobs())
            if (job.line() == u"Gathering Media File 5 of 300"_s) controller->progress().cancel(job.id);
    });
    controller->mediaGathering().copyPlaylistFilesToURL(path(u"out"_s));
    settleGathering();
    EXPECT_GE(out().size(), 4);
    EXPECT_LT(out().size(), 300);
    EXPECT_TRUE(alerts.shown.empty() && failedWrites.list().empty());
}

TEST_F(MediaOutTest, AMovieGoesAsABundleAndComesBackWithItsReviewOnAnotherMachine) {
    addFiles(u"Day"_s, {u"clip 1.mov"_s});
    library().selectMovies({0});
    controller->setFlagOfSelectedMovies({{}, 903});
    panels.saveAnswers = {path(u"out/clip 1.dlm"_s)};
    controller->bundleExport().launchExport();
    ASSERT_EQ(jobs(u"Exporting Daylark Movie"_s).size(), 1U);
    EXPECT_EQ(jobs(u"Exporting Daylark Movie"_s)[0].texts.text, u"Large files may take several minutes"_s);
    settleBundles();
    EXPECT_TRUE(jobs(u"Exporting"_s).empty());
    const SavePanel& panel = panels.savesShown.back();
    EXPECT_EQ(panel.title, u"Export Daylark Movie"_s);
    EXPECT_EQ(panel.prompt, u"Export"_s);
    EXPECT_EQ(panel.nameLabel, u"Export As"_s);
    EXPECT_EQ(panel.proposedName, u"clip 1.dlm"_s);
    EXPECT_EQ(out(u"clip 1.dlm"_s), (QStringList{u".directory"_s, u".icon.png"_s, u"clip 1.mov"_s, u"data.dls"_s}));

    // Elsewhere: another folder, no original.
    ASSERT_TRUE(QDir().rename(path(u"out/clip 1.dlm"_s), path(u"received.dlm"_s)) && QFile::remove(path(u"clip 1.mov"_s)));
    const auto takeIn = [this](const std::function<void()>& how, qsizetype playlist) {
        sessionFiles().clearSession();
        addPlaylist(u"Mine"_s, {u"other.mov"_s});
        how();
        settleAdding();
        settleFiles();
        settleThumbnails();
        ASSERT_EQ(qsizetype(library().playlists().size()), playlist + 1);
        const auto& items = library().playlists()[size_t(playlist)]->movieList;
        ASSERT_FALSE(items.empty());
        EXPECT_EQ(items.back()->filepathString, path(u"received.dlm/clip 1.mov"_s));
        EXPECT_EQ(items.back()->flagString, u"903"_s);
        EXPECT_EQ(items.back()->sortOrder, playlist == 0 ? 2 : 1);
        EXPECT_EQ(sessionFiles().currentSessionPath(), QString()) << "a bundle is no session";
    };
    const QString bundle = path(u"received.dlm"_s);
    takeIn([&] { controller->mediaAdding().dropOnMovies({bundle}); }, 0);
    takeIn([&] { controller->mediaAdding().dropOnPlaylists({bundle}); }, 1);
    takeIn([&] { controller->mediaAdding().dropOnPlaylists({bundle + u"/data.dls"_s}); }, 1);
    takeIn([&] { controller->openFiles({bundle}); }, 0);
    takeIn([&] { controller->openFiles({bundle + u"/data.dls"_s}); }, 0);
    takeIn([&] {
        panels.openAnswers = {{bundle}};
        controller->mediaAdding().addBundlesFromOpenDialog();
    }, 0);
    takeIn([&] {
        panels.openAnswers = {{bundle + u"/data.dls"_s}};
        sessionFiles().importSession();
    }, 0);
}

TEST_F(MediaOutTest, ABundleFileIsWrittenAsEverBesideAnEmptyFolderAndAnOldOneWithAMovieOpens) {
    addFiles(u"Day"_s, {u"clip.mov"_s});
    library().selectMovies({0});
    panels.saveAnswers = {path(u"out/clip.dlm"_s)};
    controller->bundleExport().saveDLMToDisk();
    settleBundles();
    EXPECT_EQ(out(), (QStringList{u"clip.dlm"_s, u"clip.dlm.dlm"_s}));
    EXPECT_TRUE(out(u"clip.dlm"_s).isEmpty());
    controller->openFiles({path(u"out/clip.dlm.dlm"_s)});
    settleAdding();
    EXPECT_EQ(library().arrangedMovies().size(), 1U) << "it holds nothing";

    auto bundle = std::make_shared<DLMovieBundle>();
    bundle->mMetaData = std::make_shared<Movie>(u"/gone/old.mov"_s);
    bundle->mMetaData->setFlag(905);
    bundle->mQTMovieData = "the movie's bytes";
    controller->openFiles({makeFile(u"old.dlm"_s, encodeBundleRoot(bundle))});
    settleAdding();
    ASSERT_EQ(library().arrangedMovies().size(), 2U);
    EXPECT_EQ(library().arrangedMovies()[1]->filepathString, path(u"old.mov"_s));
    EXPECT_EQ(library().arrangedMovies()[1]->flagString, u"905"_s);
    EXPECT_EQ(library().selectedMovieRows(), Library::Rows{1}) << "as whatever is opened from the desktop";
}

TEST_F(MediaOutTest, ABundleThatCanNotBeWrittenIsToldAndNothingSelectedIsNothing) {
    addFiles(u"Day"_s, {u"clip.mov"_s});
    controller->bundleExport().exportDMB();
    controller->bundleExport().saveDLMToDisk();
    EXPECT_TRUE(panels.savesShown.empty());
    library().selectMovies({0});
    panels.saveAnswers = {makeFile(u"in the way.dlm"_s)};
    controller->bundleExport().exportDMB();
    settleBundles();
    ASSERT_EQ(failedWrites.list().size(), 1U);
    EXPECT_EQ(failedWrites.list()[0].path, path(u"in the way.dlm"_s));
    ASSERT_TRUE(QFile::remove(path(u"in the way.dlm"_s)));
    const auto again = failedWrites.list()[0].tryAgain;
    again();
    settleBundles();
    EXPECT_TRUE(failedWrites.list().empty());
    EXPECT_TRUE(QFile::exists(path(u"in the way.dlm/clip.mov"_s)));
}

TEST_F(MediaOutTest, AReviewedCopyGivesTheTitleAndSaveStillGoesToTheOldFile) {
    addFiles(u"Day"_s, {u"a.mov"_s});
    addPlaylist(u"Night"_s, {u"b.mov"_s});
    panels.saveAnswers = {path(u"show.dls"_s), path(u"out/show_final.dls"_s), {}};
    sessionFiles().saveSession();
    settleFiles();
    sessionFiles().setSessionTitle(u"show"_s);
    sessionFiles().exportSessionAsReviewed();
    settleFiles();
    EXPECT_EQ(panels.savesShown.back().title, u"Save Session As..."_s);
    EXPECT_EQ(panels.savesShown.back().proposedName, u"show_reviewed"_s);
    EXPECT_EQ(sessionFiles().windowTitle(), u"show_final"_s);
    EXPECT_EQ(preferences->sessionTitle(), u"show_final"_s);
    EXPECT_EQ(sessionFiles().currentSessionPath(), path(u"show.dls"_s));
    const SessionContents reviewed = sessionAt(path(u"out/show_final.dls"_s));
    EXPECT_EQ(reviewed.playlists.size(), 2U);
    EXPECT_FALSE(reviewed.lastSelectedPlaylistIndex || reviewed.version);
    sessionFiles().exportSessionAsReviewed(); // cancelled
    EXPECT_EQ(panels.savesShown.back().proposedName, u"show_final_reviewed"_s);
    EXPECT_EQ(sessionFiles().windowTitle(), u"show_final"_s);
}

TEST_F(MediaOutTest, SelectedPlaylistsBecomeASessionOfThemAlone) {
    addFiles(u"Day 1/2"_s, {u"a.mov"_s});
    addPlaylist(u"Night"_s, {u"b.mov"_s});
    addPlaylist(u"Other"_s, {});
    library().selectPlaylists({});
    sessionFiles().exportSelectedPlaylistsAsSession();
    EXPECT_TRUE(panels.savesShown.empty());
    library().selectPlaylists({0, 2});
    const QString title = sessionFiles().windowTitle();
    panels.saveAnswers = {path(u"out/two.dls"_s)};
    sessionFiles().exportSelectedPlaylistsAsSession();
    settleFiles();
    EXPECT_EQ(panels.savesShown.back().title, u"Save Playlist As..."_s);
    EXPECT_EQ(panels.savesShown.back().proposedName, u"Day 1:2"_s);
    EXPECT_EQ(sessionFiles().windowTitle(), title);
    const SessionContents two = sessionAt(path(u"out/two.dls"_s));
    ASSERT_EQ(two.playlists.size(), 2U);
    EXPECT_EQ(two.playlists[0]->name, u"Day 1/2"_s);
    EXPECT_EQ(two.playlists[1]->name, u"Other"_s);
    panels.saveAnswers = {path(u"no folder/x.dls"_s)};
    sessionFiles().exportSelectedPlaylistsAsSession();
    settleFiles();
    ASSERT_EQ(failedWrites.list().size(), 1U);
    EXPECT_EQ(failedWrites.list()[0].path, path(u"no folder/x.dls"_s));
}

TEST_F(MediaOutTest, RevealShowsTheFoundOnesAllAtOnceWhereTheyAreNow) {
    addFiles(u"Day"_s, {u"a.mov"_s, u"b.mov"_s, u"c.mov"_s});
    const auto movies = library().arrangedMovies();
    preferences->networkMode.set(false);
    controller->edits().store().modify(movies[0], {}, [this](Movie& movie) {
        movie.filepathBookmarkData = createFileBookmark(path(u"a.mov"_s));
    });
    controller->edits().store().modify(movies[1], {}, [](Movie& movie) { movie.creatingThumbnailText = fileNotFoundText; });
    ASSERT_TRUE(QFile::rename(path(u"a.mov"_s), path(u"moved.mov"_s)));
    library().selectMovies({0, 1, 2});
    controller->mediaReveal().revealInFinder();
    ASSERT_TRUE(waitUntil([this] { return !browser.revealed.isEmpty(); }));
    EXPECT_EQ(browser.revealed, (QStringList{path(u"moved.mov"_s), path(u"c.mov"_s)}));
}

} // namespace
} // namespace daylark::test
