#include "app/AppFixture.h"

namespace daylark::test {
namespace {

class UndoTest : public AppFixture {
protected:
    void SetUp() override { start(); }

    UndoHistory& history() { return controller->edits().history(); }
    QByteArray archive() { return archiveOf(library().playlists()); }
    void undoAll() {
        while (history().canUndo())
            history().undo();
    }
    void redoAll() {
        while (history().canRedo())
            history().redo();
    }
};

TEST_F(UndoTest, WhateverTheLibraryDoesGoesBackToTheBeginningAndForthToTheEnd) {
    addPlaylist(u"Day 1"_s, {u"c.mov"_s, u"b.mov"_s, u"a.mov"_s});
    history().clear();
    const QByteArray beginning = archive();
    PlaylistEditing& editing = controller->playlistEditing();
    ReviewEdits& edits = controller->edits();
    library().setSort(u"filenameString"_s, true);
    editing.moveMovies(library().moviesAt({2}), library().movieAt(0));
    library().selectMovies({0, 1});
    controller->setFlagOfSelectedMovies({{}, 903});
    edits.setNotes(library().movieAt(2), NotesField::notes2, AttributedString(u"grain"_s));
    editing.addEmptyPlaylist();
    editing.renamePlaylist(1, u"Day 2"_s);
    library().selectPlaylist(0);
    alerts.answers = {Alerts::firstButton};
    controller->itemTransfer().dropOnPlaylist({library().playlists()[0]->movieList[0]}, library().playlists()[1], true);
    ASSERT_EQ(alerts.shown.size(), 1U) << "whether to instance it";
    alerts.shown.clear();
    library().selectPlaylist(1);
    editing.addDivider();
    library().movePlaylists({2}, 1);
    library().selectPlaylist(1);
    editing.removeSelectedPlaylists(); // a lone divider: without a question
    edits.pasteGrade(library().arrangedMovies(), {.gamma = 2}, true);
    controller->thumbnails().recreateCurrentThumbnail(library().movieAt(0), QImage(64, 36, QImage::Format_RGB32),
                                                      {u"Set Thumbnail Image"_s, 0});
    EXPECT_TRUE(alerts.shown.empty());
    const QByteArray end = archive();
    for (int round = 0; round < 2; ++round) {
        undoAll();
        EXPECT_EQ(archive(), beginning);
        EXPECT_EQ(playlistNames(), QStringList{u"Day 1"_s});
        EXPECT_EQ(shownNames(), (QStringList{u"c.mov"_s, u"b.mov"_s, u"a.mov"_s}));
        redoAll();
        EXPECT_EQ(archive(), end);
        EXPECT_EQ(playlistNames(), (QStringList{u"Day 1"_s, u"Day 2"_s}));
    }
    EXPECT_EQ(library().playlists()[1]->itemCount, u"1"_s);
}

TEST_F(UndoTest, WhatCantBeUndoneIsNotOfferedAndTheRestIs) {
    const auto playlist = addPlaylist(u"Day"_s, {u"a.mov"_s, u"b.mov"_s, u"c.mov"_s});
    controller->edits().setFlag({playlist->movieList[0], playlist->movieList[2]}, 901);
    EXPECT_EQ(history().undoText(), u"Undo Flag of 2 Items"_s);
    library().selectMovies({1, 2});
    controller->setFlagOfSelectedMovies({{}, 904});
    alerts.answers = {Alerts::firstButton};
    library().selectMovies({1});
    controller->playlistEditing().removeSelectedMovies();
    EXPECT_EQ(alerts.shown.back().informativeText, u"This can't be undone"_s);
    EXPECT_EQ(history().undoText(), u"Undo Flag of 2 Items"_s);
    history().undo();
    EXPECT_EQ(playlist->movieList[1]->flagString, u"901"_s);
    history().undo();
    EXPECT_EQ(playlist->movieList[1]->flagString, u"900"_s);
    EXPECT_EQ(shownNames(), (QStringList{u"a.mov"_s, u"c.mov"_s}));
    redoAll();
    EXPECT_EQ(shownNames(), (QStringList{u"a.mov"_s, u"c.mov"_s}));
    alerts.answers = {Alerts::firstButton};
    controller->playlistEditing().removeAllPlaylists(true);
    EXPECT_FALSE(history().canUndo() || history().canRedo());
}

TEST_F(UndoTest, AStepIsShownWhereItChangesSomethingAndMarksTheSession) {
    const auto first = addPlaylist(u"Day 1"_s, {u"a.mov"_s, u"b.mov"_s});
    addPlaylist(u"Day 2"_s, {u"c.mov"_s});
    controller->edits().setFlag({first->movieList[1]}, 905);
    sessionFiles().setSessionIsModified(false);
    history().undo();
    EXPECT_EQ(library().selectedPlaylist(), first);
    EXPECT_EQ(library().selectedMovies(), Library::Movies{first->movieList[1]});
    EXPECT_TRUE(sessionFiles().sessionIsModified());
    library().selectPlaylist(1);
    history().redo();
    EXPECT_EQ(library().selectedMovies(), Library::Movies{first->movieList[1]});
}

TEST_F(UndoTest, ADragInAListThatShowsLessKeepsWhatIsNotShown) {
    const auto playlist =
        addPlaylist(u"Day"_s, {u"1.mov"_s, u"2.mov"_s, u"3.mov"_s, u"4.mov"_s, u"5.mov"_s});
    const auto& list = playlist->movieList;
    // 2 and 4 are hidden: 5 is dragged before 1.
    controller->playlistEditing().setOrder(playlist, {list[4], list[0], list[2]});
    EXPECT_EQ(shownNames(), (QStringList{u"5.mov"_s, u"2.mov"_s, u"1.mov"_s, u"4.mov"_s, u"3.mov"_s}));
    EXPECT_EQ(shownNumbers(), (std::vector<qint64>{1, 2, 3, 4, 5}));
    EXPECT_EQ(list.size(), 5U);
    history().undo();
    EXPECT_EQ(shownNames(), (QStringList{u"1.mov"_s, u"2.mov"_s, u"3.mov"_s, u"4.mov"_s, u"5.mov"_s}));
}

} // namespace
} // namespace daylark::test
