#include "app/AppFixture.h"
#include "commands/library/LibraryCommands.h"
#include "commands/viewer/ViewerCommands.h"
#include "viewer/FakePanelHost.h"

#include <QSignalSpy>

namespace daylark {
namespace {

using namespace Qt::StringLiterals;
using bench::waitUntil;

/// A review under way, and every command of both windows run in it, one by one.
class EveryCommandTest : public test::AppFixture {
protected:
    void TearDown() override {
        closeProgram();
        AppFixture::TearDown();
    }
    void closeProgram() {
        libraryCommands.reset();
        viewerCommands.reset();
        libraryState.reset();
        viewerState.reset();
    }

    /// Two playlists of three items that can be played, one of them in both, all reviewed; the viewer shows
    /// the first one at a frame with a bookmark that is drawn on.
    void openReview() {
        closeProgram();
        if (controller) quit();
        QDir all(folder.path());
        for (const QString& left : all.entryList({u"*daylarkSession*"_s}, QDir::Files | QDir::Hidden))
            all.remove(left);
        alerts.answers.clear();
        start();
        const QString clip = bench::movie({.frames = 48, .group = 12});
        QStringList files;
        for (const char* name : {"a.mov", "b.mov", "c.mov"}) {
            files << path(QLatin1String(name));
            QFile::link(clip, files.back());
        }
        addPlaylist(u"Day"_s, {});
        controller->mediaAdding().addMediaFilesToSelectedPlaylist(files);
        settleAdding();
        settleThumbnails();
        const Library::Movies movies = library().arrangedMovies();
        ASSERT_EQ(movies.size(), 3u);
        for (const auto& movie : movies)
            review(movie);
        const auto night = addPlaylist(u"Night"_s, {});
        library().addMovies(night, {movies[1]});
        addPlaylist(u"Empty"_s, {});
        openViewer();
        bindCommands();
    }
    void review(const std::shared_ptr<Movie>& movie) {
        ReviewStore& store = controller->edits().store();
        const auto mark = std::make_shared<Bookmark>(2, 8, 24.0F),
                   later = std::make_shared<Bookmark>(20, 5, 24.0F);
        mark->overlayString = u"left"_s;
        mark->drawings.strokes = {{.points = {{1, 1}, {9, 9}}}, {.points = {{4, 4}, {5, 9}}}};
        controller->edits().addBookmarks(movie, {mark, later});
        store.modify(movie, {u"Review"_s}, [](Movie& item) {
            item.setFlag(903);
            Grade grade;
            grade.exposure = 0.5;
            item.setGrade(grade);
            item.applyGrade = true;
            item.displayGradeIcon();
        });
    }
    void openViewer() {
        library().selectPlaylist(0);
        library().selectMovies({0, 1});
        viewer().panels().setHost(&host);
        QSignalSpy probed(&viewer(), &MoviePlayerController::movieProbed);
        controller->loadMovieWindow();
        ASSERT_TRUE(
            waitUntil([&] { return player->isOpen() && player->pictureIsCurrent() && !probed.isEmpty(); }));
    }
    void bindCommands() {
        LibraryWindowActions window;
        const auto nothing = [] {};
        window.renamePlaylist = window.toggleInformation = window.showPlaylistOrder = nothing;
        window.goToPlaylists = window.goToItems = window.minimise = window.close = nothing;
        window.showPreferences = window.showKeys = window.showAbout = nothing;
        window.searchItems = window.editRules = nothing;
        window.selectAll = [this] { library().selectMovies({0, 1, 2}); };
        window.showTiles = [](bool) {};
        window.enlargeTiles = [](int) {};
        window.tilesShown = [] { return true; };
        window.informationShown = [] { return false; };
        libraryCommands = std::make_unique<CommandSet>(libraryTable(), *preferences);
        libraryState.emplace(bindLibraryCommands(*libraryCommands, *controller, window));

        const auto press = [this](int tag) {
            return [this, tag] { viewer().bookmarks().bookmarkButtonPress({{}, tag}, 0); };
        };
        ViewerWindowActions actions;
        actions.toggleFullScreen = actions.leave = actions.bringForward = actions.close = nothing;
        actions.editBookmarkText = actions.writeNotes = actions.showKeys = nothing;
        actions.isFullScreen = [] { return false; };
        actions.goToSelectedBookmark = press(bookmarkTag::goToFirst);
        actions.deleteSelectedBookmark = press(bookmarkTag::remove);
        actions.loopBookmark = press(bookmarkTag::loop);
        actions.makeThumbnail = [this](const QString& choice) {
            controller->thumbnails().recreateCurrentThumbnail(viewer().currentMovie(),
                                                              QImage(64, 36, QImage::Format_RGB32), {choice});
        };
        viewerCommands = std::make_unique<CommandSet>(viewerTable(), *preferences);
        viewerState.emplace(bindViewerCommands(*viewerCommands, viewer(), actions));
    }
    MoviePlayerController& viewer() { return controller->playerWindow(); }

    /// As every command finds it.
    void takePlace() {
        library().selectPlaylist(0);
        library().selectMovies({0, 1});
        if (viewer().transport().isRunning()) viewer().transport().pauseMovie();
        viewer().list().setSelectionIndex(0);
        settle();
        viewer().transport().goToFrame(3, 0.3);
        viewer().bookmarks().loadActiveBookmarks();
        settle();
        viewer().drawingTools().setInteractiveModeState(u"draw"_s);
        panels.openAnswers = {{path(u"d.mov"_s)}};
        panels.saveAnswers = {path(u"saved.dls"_s)};
        pasteboard.content.clear();
        controller->edits().history().clear();
    }
    /// What the program does by itself behind a command is done.
    void settle() {
        settleAdding();
        settleThumbnails();
        settleFiles();
        ASSERT_TRUE(waitUntil([this] {
            return !viewer().audio().isBusy() && !controller->relinking().isBusy() && !controller->fileExistence().isChecking() &&
                   !controller->fileStates().isUpdating();
        }));
        settleThumbnails();
        ASSERT_TRUE(waitUntil([this] { return !viewer().currentMovie() || player->pictureIsCurrent(); }));
        controller->edits().history().endRun();
    }

    void tryOut(CommandSet& commands, const QString& id);

    FakePanelHost host;
    std::unique_ptr<CommandSet> libraryCommands, viewerCommands;
    std::optional<LibraryWindowState> libraryState;
    std::optional<ViewerWindowState> viewerState;
    QStringList enabled, edited; ///< commands that could be run, and that made a step
};

/// Runs it with every question refused, then agreed to; what made a step is taken back and done again.
void EveryCommandTest::tryOut(CommandSet& commands, const QString& id) {
    ReviewStore& store = controller->edits().store();
    UndoHistory& history = controller->edits().history();
    std::vector<EditInfo> edits;
    // Fields that no undo brings back: what the program does by itself, and which bookmarks are lit by the frame.
    QStringList byItself{u"activeImage"_s, u"activeStrip"_s};
    QObject context;
    QObject::connect(&store, &ReviewStore::applied, &context, [&](const Edit& edit) {
        if (edit.info.kind != EditKind::background) return edits.push_back(edit.info);
        for (const Change& change : edit.changes)
            byItself << change.field;
    });
    const auto expectFields = [&](const ReviewRecords::Playlists& as, const char* when) {
        QStringList differing = test::differingFields(store.playlists(), as);
        for (const QString& field : byItself)
            differing.removeAll(field);
        EXPECT_TRUE(differing.isEmpty()) << when << ": " << qPrintable(differing.join(u' '));
        EXPECT_TRUE(replica->isTrue()) << when << ", without a word: " << qPrintable(replica->difference());
    };

    takePlace();
    if (!commands.isEnabled(id)) return;
    enabled << id;
    const ReviewRecords::Playlists before = test::copyOf(store.playlists());
    edits.clear();
    alerts.answers.clear();
    const size_t asked = alerts.shown.size();
    commands.run(id);
    settle();
    if (alerts.shown.size() > asked && alerts.shown.back().buttons.size() > 1) {
        EXPECT_TRUE(edits.empty()) << "though the answer was no";
        expectFields(before, "refused");
        alerts.answers = {Alerts::firstButton, Alerts::firstButton};
        takePlace();
        edits.clear();
        commands.run(id);
        settle();
    }
    EXPECT_TRUE(replica->isTrue()) << "without a word: " << qPrintable(replica->difference());
    EXPECT_LE(edits.size(), 1u) << "one command is one step";
    if (edits.empty() || edits.front().kind != EditKind::step) return;
    edited << id;
    EXPECT_FALSE(edits.front().title.isEmpty());
    const ReviewRecords::Playlists after = test::copyOf(store.playlists());
    ASSERT_TRUE(history.canUndo());
    history.undo();
    settle();
    expectFields(before, "undone");
    history.redo();
    settle();
    expectFields(after, "done again");
    history.undo();
    settle();
    expectFields(before, "undone again");
}

TEST_F(EveryCommandTest, AnnouncesAllThatItChangesAndUndoBringsItBack) {
    openReview();
    QFile::link(bench::movie({.frames = 48, .group = 12}), path(u"d.mov"_s));
    const QStringList ownTests{u"edit.undo"_s, u"edit.redo"_s};
    size_t total = 0;
    for (const bool ofViewer : {false, true})
        for (const Command& command : ofViewer ? viewerTable() : libraryTable()) {
            if (ownTests.contains(command.id)) continue;
            SCOPED_TRACE(qPrintable(command.id));
            ++total;
            const QByteArray beginning = test::archiveOf(controller->edits().store().playlists());
            tryOut(ofViewer ? *viewerCommands : *libraryCommands, command.id);
            if (HasFatalFailure()) return;
            // What can't be taken back begins anew.
            library().selectPlaylist(0);
            if (library().arrangedMovies().size() != 3 ||
                test::archiveOf(controller->edits().store().playlists()) != beginning)
                openReview();
            if (HasFatalFailure()) return;
        }
    EXPECT_GT(enabled.size(), qsizetype(total * 8 / 10)) << "the review has too little to run commands on";
    EXPECT_GT(edited.size(), 30) << qPrintable(edited.join(u' '));
}

} // namespace
} // namespace daylark
