#include "app/AppFixture.h"

namespace daylark::test {
namespace {

class NotesExportTest : public AppFixture {
protected:
    void SetUp() override {
        start();
        addPlaylist(u"Day 1"_s, {u"b.mov"_s, u"a.mov"_s});
        library().setSort(u"filenameString"_s, true);
    }
    QByteArray exportTo(const QString& name, const QString& title) {
        panels.saveAnswers = {path(name)};
        controller->notesExport().exportNotes({title, 0});
        EXPECT_TRUE(waitUntil([&] { return QFileInfo::exists(path(name)); })); // whole as soon as it is there
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
};

TEST_F(NotesExportTest, TheScopeFollowsTheSenderAndTheSortGoesBackAfterwards) {
    preferences->printBookmarksInNotes.set(false);
    preferences->statusNames[4].set(u"Edit"_s);
    library().selectMovies({1});
    controller->setFlagOfSelectedMovies({{}, 905});
    EXPECT_EQ(exportTo(u"all.csv"_s, u"Export Playlist Notes..."_s),
              "Filename,Notes 1,Notes 2,Flag\r\ra,,,\rb,,,Edit\r");
    EXPECT_EQ(library().sortField(), u"sortOrder"_s);
    EXPECT_EQ(panels.savesShown[0].title, u"Export Notes"_s);
    EXPECT_EQ(panels.savesShown[0].proposedName, u"Day 1_notes.csv"_s);
    library().selectMovies({1});
    EXPECT_EQ(exportTo(u"one.csv"_s, u"Export Movie Notes..."_s), "Filename,Notes 1,Notes 2,Flag\r\ra,,,\r");
}

TEST_F(NotesExportTest, TheOrderInWhichBookmarksWereSaidStaysOnTheMovies) {
    const auto movie = library().arrangedMovies().front();
    for (const auto& [timecode, frame] : {std::pair{u"00:00:09:00"_s, 2}, std::pair{u"00:00:01:00"_s, 1}}) {
        const auto bookmark = std::make_shared<Bookmark>(frame, 1, 24.0f);
        bookmark->firstTC = timecode;
        controller->edits().addBookmarks(movie, {bookmark});
    }
    preferences->printBookmarksInNotes.set(false);
    exportTo(u"without.csv"_s, u"Export Playlist Notes..."_s);
    EXPECT_EQ(movie->bookmarkStore.front()->firstFrame, 2) << "none was said";
    preferences->printBookmarksInNotes.set(true);
    EXPECT_TRUE(exportTo(u"with.csv"_s, u"Export Playlist Notes..."_s).contains("00:00:01:00"));
    EXPECT_EQ(movie->bookmarkStore.front()->firstFrame, 1);
    controller->edits().history().undo();
    EXPECT_EQ(movie->bookmarkStore.front()->firstFrame, 2);
    preferences->notesExportFormat.set(u"RTF (Rich Text)"_s);
    EXPECT_TRUE(exportTo(u"with.rtf"_s, u"Export Playlist Notes..."_s).contains("00:00:01:00"));
    EXPECT_EQ(movie->bookmarkStore.front()->firstFrame, 2) << "a rich text leaves the order alone";
}

TEST_F(NotesExportTest, AFailedWriteIsToldWithoutAnAlertAndCanBeTriedAgain) {
    panels.saveAnswers = {path(u"no such folder/notes.csv"_s)};
    controller->notesExport().exportNotes({u"Export Playlist Notes..."_s, 0});
    ASSERT_TRUE(waitUntil([this] { return !failedWrites.list().empty(); }));
    EXPECT_TRUE(alerts.shown.empty());
    EXPECT_EQ(failedWrites.list().front().path, path(u"no such folder/notes.csv"_s));
    QDir(folder.path()).mkdir(u"no such folder"_s);
    const auto again = failedWrites.list().front().tryAgain;
    again();
    EXPECT_TRUE(waitUntil([this] { return failedWrites.list().empty(); }));
    QFile written(path(u"no such folder/notes.csv"_s));
    EXPECT_TRUE(written.open(QIODevice::ReadOnly) && written.readAll().startsWith("Filename,"));
}

TEST_F(NotesExportTest, TheManifestListsWhatIsShownInItsOrder) {
    const auto exported = [this](const QString& name) {
        panels.saveAnswers = {path(name)};
        controller->manifestExport().exportPlaylistManifest();
        EXPECT_TRUE(waitUntil([&] { return QFileInfo::exists(path(name)); }));
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    };
    EXPECT_EQ(exported(u"all.csv"_s), "Review Order,Version Name,Playlist Name,Session Name\r"
                                      "1,a,Day 1,Untitled Session\r2,b,Day 1,Untitled Session\r");
    const SavePanel& panel = panels.savesShown.back();
    EXPECT_EQ(panel.title, u"Save As..."_s);
    EXPECT_EQ(panel.prompt, u"Save"_s);
    EXPECT_EQ(panel.proposedName, u"Day 1_manifest.csv"_s);
    EXPECT_EQ(panel.allowedTypes, QStringList{u"csv"_s});
    library().setFilter(MovieFilter::withText(u"b.mov"_s));
    EXPECT_TRUE(exported(u"some.csv"_s).endsWith("Session Name\r1,b,Day 1,Untitled Session\r"));
    library().selectPlaylists({});
    controller->manifestExport().exportPlaylistManifest();
    EXPECT_EQ(panels.savesShown.size(), 2u);
}

TEST_F(NotesExportTest, AnEmptyScopeShowsOneAlertAndNothingElse) {
    library().selectMovies({});
    controller->notesExport().exportNotes({u"Export Movie Notes..."_s, 0});
    ASSERT_EQ(alerts.shown.size(), 1u);
    EXPECT_EQ(alerts.shown[0].message, u"No movies found to export"_s);
    EXPECT_EQ(alerts.shown[0].style, AlertStyle::informational);
    EXPECT_EQ(alerts.shown[0].buttons, QStringList{u"Okay"_s});
    EXPECT_TRUE(panels.savesShown.empty());
    EXPECT_EQ(library().sortField(), u"filenameString"_s);
}

TEST_F(NotesExportTest, ACancelledDialogWritesNothingAndTheFormatKeepsTheExtensionInStep) {
    controller->notesExport().exportNotes({u"Export Playlist Notes..."_s, 0});
    EXPECT_EQ(library().sortField(), u"sortOrder"_s);
    const SavePanel& panel = panels.savesShown.back();
    EXPECT_EQ(panel.accessoryTitles, NotesExport::formatTitles());
    EXPECT_EQ(panel.accessoryChosen(u"RTF (Rich Text)"_s, u"my.notes.csv"_s), u"my.notes.rtf"_s);
    EXPECT_EQ(preferences->notesExportFormat(), u"RTF (Rich Text)"_s);
    EXPECT_EQ(panel.accessoryChosen(u"CSV (Comma Separated Values)"_s, u"plain"_s), u"plain.csv"_s);

    preferences->notesExportFormat.set(u"PDF"_s);
    panels.saveAnswers = {path(u"x.pdf"_s)};
    controller->notesExport().exportNotes({u"Export Playlist Notes..."_s, 0});
    EXPECT_EQ(panels.savesShown.back().proposedName, QString());
    EXPECT_FALSE(QFileInfo::exists(path(u"x.pdf"_s)));
}

} // namespace
} // namespace daylark::test
