#include "app/AppFixture.h"

#include "app/files/FolderScan.h"

namespace daylark::test {
namespace {

class FolderListsTest : public AppFixture {
protected:
    void SetUp() override {
        start();
        QDir().mkpath(path(u"Day"_s));
    }
    std::shared_ptr<Playlist> addFolderlist() {
        panels.openAnswers.push_back({path(u"Day"_s)});
        controller->playlistEditing().addEmptyFolderlist();
        return library().playlists().back();
    }
    /// The list shows these, however the folder was looked at.
    void expectShown(const QStringList& names) {
        static_cast<void>(waitUntil([&] { return shownNames() == names; }, 20000));
        EXPECT_EQ(shownNames(), names);
    }
    bool remove(const QString& name) const { return QFile::remove(path(name)); }
    bool rename(const QString& from, const QString& to) const { return QFile::rename(path(from), path(to)); }
};

TEST_F(FolderListsTest, ItShowsItsFolderByNameAndFollowsIt) {
    makeFile(u"Day/shot_10.mov"_s);
    makeFile(u"Day/Shot_9.mov"_s);
    makeFile(u"Day/readme.txt"_s);
    makeFile(u"Day/.hidden.mov"_s);
    makeFile(u"Day/sub/shot_11.mov"_s);
    const auto list = addFolderlist();
    EXPECT_EQ(panels.opensShown.back().title, u"Choose Folder To Display"_s);
    EXPECT_TRUE(panels.opensShown.back().chooseFolders && !panels.opensShown.back().chooseFiles);
    EXPECT_EQ(list->name, u"Day"_s);
    expectShown({u"Shot_9.mov"_s, u"shot_10.mov"_s, u"shot_11.mov"_s});
    makeFile(u"Day/sub/a.mov"_s);
    expectShown({u"a.mov"_s, u"Shot_9.mov"_s, u"shot_10.mov"_s, u"shot_11.mov"_s});
    remove(u"Day/shot_10.mov"_s);
    expectShown({u"a.mov"_s, u"Shot_9.mov"_s, u"shot_11.mov"_s});
    EXPECT_FALSE(controller->edits().history().undoText().contains(u"Item"_s)) << "no step of a person's";
    library().setSort(u"filenameString"_s, false);
    library().setSort(u"sortOrder"_s, true);
    controller->playlistEditing().moveMovies({library().movieAt(2)}, library().movieAt(0));
    expectShown({u"a.mov"_s, u"Shot_9.mov"_s, u"shot_11.mov"_s});

    quit(); // and what changes between two runs
    makeFile(u"Day/b.mov"_s);
    remove(u"Day/sub/shot_11.mov"_s);
    start();
    expectShown({u"a.mov"_s, u"b.mov"_s, u"Shot_9.mov"_s});
}

TEST_F(FolderListsTest, ReviewWorkOutlivesItsFile) {
    makeFile(u"Day/b.mov"_s, "reviewed");
    makeFile(u"Day/c.mov"_s, "moved");
    makeFile(u"Day/a.mov"_s, "plain");
    addFolderlist();
    expectShown({u"a.mov"_s, u"b.mov"_s, u"c.mov"_s});
    const auto worked = library().arrangedMovies()[1], renamed = library().arrangedMovies()[2];
    controller->edits().setFlag({worked, renamed}, 904);
    remove(u"Day/b.mov"_s);
    remove(u"Day/a.mov"_s);
    rename(u"Day/c.mov"_s, u"Day/aa.mov"_s);
    expectShown({u"aa.mov"_s, u"b.mov"_s});
    EXPECT_EQ(library().arrangedMovies()[0], renamed) << "the same item under its new name";
    ASSERT_TRUE(waitUntil([&] { return worked->creatingThumbnailText == fileNotFoundText; }));
    ASSERT_TRUE(waitUntil([&] { return renamed->creatingThumbnailText != fileNotFoundText; }));
    library().selectMovies({1});
    EXPECT_TRUE(controller->playlistEditing().mayRemoveSelectedMovies());
    library().selectMovies({0});
    EXPECT_FALSE(controller->playlistEditing().mayRemoveSelectedMovies()) << "it would come back at once";
    makeFile(u"Day/b.mov"_s, "again");
    ASSERT_TRUE(waitUntil([&] { return worked->creatingThumbnailText != fileNotFoundText; }));
    EXPECT_EQ(shownNames(), (QStringList{u"aa.mov"_s, u"b.mov"_s}));
    EXPECT_EQ(library().arrangedMovies()[1], worked);
    EXPECT_EQ(worked->flagString, u"904"_s);
}

TEST_F(FolderListsTest, AFileThatGrewIsReadAgain) {
    const QString whole = bench::movie({.frames = 24, .group = 12});
    QFile source(whole);
    ASSERT_TRUE(source.open(QIODevice::ReadOnly));
    const QByteArray bytes = source.readAll();
    makeFile(u"Day/a.mov"_s, bytes.left(bytes.size() / 3)); // it is being copied
    addFolderlist();
    expectShown({u"a.mov"_s});
    settleThumbnails();
    makeFile(u"Day/a.mov"_s, bytes);
    ASSERT_TRUE(waitUntil([this] { return library().arrangedMovies()[0]->mMovieDurationFrames == 24; }, 40000));
    ASSERT_TRUE(waitUntil([this] { return !library().arrangedMovies()[0]->thumbnail.isNil(); }));
}

TEST(FolderScan, AFolderThatCannotBeReadTellsNothing) {
    EXPECT_FALSE(scanFolder(u"/no/such/folder"_s, {{u"/no/such/folder/a.mov"_s, {}}}, {true}, {}).isReadable);
    QTemporaryDir folder;
    const FolderScan empty = scanFolder(folder.path(), {{folder.filePath(u"a.mov"_s), {}}}, {true}, {});
    EXPECT_TRUE(empty.isReadable && empty.files.empty());
    EXPECT_EQ(empty.folders, QStringList{folder.path()});
    CancelFlag cancelled = true;
    EXPECT_FALSE(scanFolder(folder.path(), {}, {true}, {&cancelled, {}}).isReadable);
}

} // namespace
} // namespace daylark::test
