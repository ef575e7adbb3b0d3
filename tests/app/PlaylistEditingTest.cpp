#include "app/AppFixture.h"
#include "model/MoveRule.h"

#include <QDate>

#include <algorithm>
#include <random>

namespace daylark::test {
namespace {

class PlaylistEditingTest : public AppFixture {
protected:
    void SetUp() override { start(); }
    PlaylistEditing& editing() { return controller->playlistEditing(); }
};

TEST(MoveRule, MovedRowsStandTogetherInTheirOrderAtTheGap) {
    std::vector<int> five{0, 1, 2, 3, 4};
    moveRows(five, {1, 3}, 0);
    EXPECT_EQ(five, (std::vector<int>{1, 3, 0, 2, 4}));

    std::mt19937 random(7);
    for (int round = 0; round < 500; ++round) {
        const int size = 1 + int(random() % 9);
        std::vector<int> list(static_cast<size_t>(size));
        for (int i = 0; i < size; ++i)
            list[size_t(i)] = i;
        std::vector<qsizetype> rows;
        for (int i = 0; i < size; ++i)
            if (random() % 2) rows.push_back(i);
        const qsizetype gap = qsizetype(random() % unsigned(size + 1));
        std::vector<int> expected;
        const auto isMoved = [&rows](int i) { return std::count(rows.begin(), rows.end(), i) > 0; };
        for (int i = 0; i < gap; ++i)
            if (!isMoved(i)) expected.push_back(i);
        for (const qsizetype row : rows)
            expected.push_back(int(row));
        for (int i = int(gap); i < size; ++i)
            if (!isMoved(i)) expected.push_back(i);
        moveRows(list, rows, gap);
        EXPECT_EQ(list, expected) << "gap " << gap;
    }
}

TEST_F(PlaylistEditingTest, MovingItemsRenumbersThemAndShowsThePlaylistsOwnOrder) {
    const auto playlist = addPlaylist(u"Day"_s, {u"e.mov"_s, u"d.mov"_s, u"c.mov"_s, u"b.mov"_s, u"a.mov"_s});
    library().setSort(u"filenameString"_s, true);
    EXPECT_EQ(shownNames(), (QStringList{u"a.mov"_s, u"b.mov"_s, u"c.mov"_s, u"d.mov"_s, u"e.mov"_s}));
    library().selectMovies({1, 3});
    editing().moveMovies(library().moviesAt({1, 3}), library().movieAt(0)); // rows of what is shown
    EXPECT_EQ(shownNames(), (QStringList{u"b.mov"_s, u"d.mov"_s, u"a.mov"_s, u"c.mov"_s, u"e.mov"_s}));
    EXPECT_EQ(shownNumbers(), (std::vector<qint64>{1, 2, 3, 4, 5}));
    EXPECT_EQ(library().selectedMovieRows(), (Library::Rows{0, 1})); // the same records
    EXPECT_EQ(playlist->movieList.front()->filenameString, u"b.mov"_s);
    EXPECT_EQ(library().sortField(), u"sortOrder"_s);

    addPlaylist(u"Other"_s, {});
    library().selectPlaylists({0, 1});
    editing().moveMovies(library().moviesAt({0}), nullptr);
    EXPECT_EQ(alerts.shown.back().message, u"Too many playlists selected"_s);
    EXPECT_EQ(playlist->movieList.front()->filenameString, u"b.mov"_s);
}

TEST_F(PlaylistEditingTest, ItemsStandWhereTheirNumbersSayWhoeverChangesThem) {
    addPlaylist(u"Day"_s, {u"a.mov"_s, u"b.mov"_s, u"c.mov"_s});
    const auto first = library().arrangedMovies()[0];
    library().store().setSortOrder(first, {u"Order"_s}, 99);
    EXPECT_EQ(library().arrangedMovies().back(), first);
    controller->edits().history().undo();
    EXPECT_EQ(library().arrangedMovies().front(), first);
}

TEST_F(PlaylistEditingTest, AnOrderMadeInTheViewerIsThePlaylistsOwnOrder) {
    const auto playlist = addPlaylist(u"Day"_s, {u"c.mov"_s, u"b.mov"_s, u"a.mov"_s});
    library().setSort(u"filenameString"_s, true);
    alerts.answers = {Alerts::firstButton}; // the files are missing
    controller->loadMovieWindow();
    sessionFiles().setSessionIsModified(false);
    ViewerList& viewer = controller->playerWindow().list();
    viewer.moveMovies({2}, 0);
    EXPECT_EQ(shownNames(), (QStringList{u"c.mov"_s, u"a.mov"_s, u"b.mov"_s}));
    EXPECT_EQ(shownNumbers(), (std::vector<qint64>{1, 2, 3}));
    EXPECT_EQ(library().sortField(), u"sortOrder"_s);
    EXPECT_EQ(playlist->movieList[1]->filenameString, u"a.mov"_s);
    EXPECT_TRUE(sessionFiles().sessionIsModified());

    addPlaylist(u"Other"_s, {u"x.mov"_s}); // what the library shows now is no concern of the viewer's list
    viewer.moveMovies({0}, 3);
    EXPECT_EQ(playlist->movieList[2]->filenameString, u"c.mov"_s);
    EXPECT_EQ(shownNames(), QStringList{u"x.mov"_s});
}

TEST_F(PlaylistEditingTest, OnlyPlaylistsWithSomethingToLoseAreAskedFor) {
    const auto full = addPlaylist(u"Full"_s, {u"a.mov"_s});
    full->movieList[0]->addICount();
    addPlaylist(u"Empty"_s, {});
    editing().addDivider();
    sessionFiles().setCurrentSessionPath(path(u"x.dls"_s));
    library().selectPlaylist(2);
    editing().removeSelectedPlaylists();
    library().selectPlaylist(1);
    editing().removeSelectedPlaylists();
    EXPECT_TRUE(alerts.shown.empty());
    EXPECT_EQ(playlistNames(), QStringList{u"Full"_s});

    library().selectPlaylist(0);
    editing().removeSelectedPlaylists(); // the answer is "Cancel"
    ASSERT_EQ(alerts.shown.size(), 1u);
    EXPECT_EQ(alerts.shown[0].message, u"Remove Selected Playlist?"_s);
    EXPECT_EQ(alerts.shown[0].informativeText, u"This can't be undone"_s);
    EXPECT_EQ(alerts.shown[0].buttons, (QStringList{u"Remove Playlist"_s, u"Cancel"_s}));
    EXPECT_EQ(library().playlists().size(), 1u);

    const auto movie = full->movieList[0];
    alerts.answers = {Alerts::firstButton};
    editing().removeSelectedPlaylists();
    EXPECT_TRUE(library().playlists().empty());
    EXPECT_EQ(movie->iCount, 0);
    EXPECT_EQ(sessionFiles().windowTitle(), u"Untitled Session"_s);
    EXPECT_TRUE(sessionFiles().currentSessionPath().isEmpty());
    editing().removeSelectedPlaylists(); // nothing selected, nothing asked
    EXPECT_EQ(alerts.shown.size(), 2u);
}

TEST_F(PlaylistEditingTest, SeveralPlaylistsAreAskedForInThePluralWhenAnyHoldsItems) {
    addPlaylist(u"Empty"_s, {});
    addPlaylist(u"Full"_s, {u"a.mov"_s});
    library().selectPlaylists({0, 1});
    alerts.answers = {Alerts::secondButton};
    editing().removeSelectedPlaylists();
    ASSERT_EQ(alerts.shown.size(), 1u);
    EXPECT_EQ(alerts.shown[0].message, u"Remove Selected Playlists?"_s);
    EXPECT_EQ(alerts.shown[0].buttons.front(), u"Remove Playlists"_s);
    EXPECT_EQ(library().playlists().size(), 2u);
}

TEST_F(PlaylistEditingTest, RemovingItemsAsksRenumbersAndLetsAnInstanceLiveOn) {
    editing().removeSelectedMovies();
    EXPECT_EQ(alerts.shown.back().message, u"Select a movie and try again"_s);
    const auto other = addPlaylist(u"Other"_s, {});
    const auto playlist = addPlaylist(u"Day"_s, {u"a.mov"_s, u"b.mov"_s, u"c.mov"_s, u"d.mov"_s});
    const auto instance = playlist->movieList[1];
    instance->addICount();
    library().addMovies(other, {instance});
    library().selectMovies({1});
    editing().removeSelectedMovies();
    EXPECT_EQ(alerts.shown.back().message, u"Remove Selected Movie?"_s);
    EXPECT_EQ(playlist->count(), 4);
    library().selectMovies({1, 2});
    alerts.answers = {Alerts::firstButton};
    editing().removeSelectedMovies();
    EXPECT_EQ(alerts.shown.back().buttons, (QStringList{u"Remove Movies"_s, u"Cancel"_s}));
    EXPECT_EQ(shownNames(), (QStringList{u"a.mov"_s, u"d.mov"_s}));
    EXPECT_EQ(shownNumbers(), (std::vector<qint64>{1, 2}));
    EXPECT_EQ(instance->iCount, 0);
    EXPECT_EQ(other->movieList[0], instance);
}

TEST_F(PlaylistEditingTest, DividersAreSelectedOnlyInAnEmptyLibraryAndDatedByTheWeeksYear) {
    editing().addDivider();
    EXPECT_EQ(library().selectedPlaylistRows(), Library::Rows{0});
    EXPECT_EQ(library().playlists()[0]->name, u"================="_s);
    EXPECT_EQ(library().playlists()[0]->playlistType, u"divider"_s);
    EXPECT_TRUE(numberToBool(*library().playlists()[0]->isDivider));
    editing().addDatedDivider();
    EXPECT_EQ(library().selectedPlaylistRows(), Library::Rows{0});
    editing().addEmptyPlaylist();
    EXPECT_EQ(library().selectedPlaylistRows(), Library::Rows{2});
    EXPECT_EQ(PlaylistEditing::datedDividerName(QDate(2026, 11, 21)), u"====== 261121 ======"_s);
    EXPECT_EQ(PlaylistEditing::datedDividerName(QDate(2027, 1, 1)), u"====== 260101 ======"_s);
}

TEST_F(PlaylistEditingTest, ClearSessionAsksAndForgetsThePath) {
    addPlaylist(u"Day"_s, {u"a.mov"_s});
    sessionFiles().setCurrentSessionPath(path(u"x.dls"_s));
    editing().removeAllPlaylists(true);
    EXPECT_EQ(alerts.shown.back().message, u"Remove all media?"_s);
    EXPECT_EQ(library().playlists().size(), 1u);
    alerts.answers = {Alerts::firstButton};
    editing().removeAllPlaylists(true);
    EXPECT_TRUE(library().playlists().empty());
    EXPECT_TRUE(library().arrangedMovies().empty());
    EXPECT_FALSE(preferences->sessionPath.isStored());
    editing().removeAllPlaylists(true); // nothing to ask for
    EXPECT_EQ(alerts.shown.size(), 2u);
}

TEST_F(PlaylistEditingTest, SelectionsFollowTheirRecordsThroughMovesSortsAndRemovals) {
    addPlaylist(u"A"_s, {u"1.mov"_s, u"2.mov"_s, u"3.mov"_s});
    addPlaylist(u"B"_s, {});
    addPlaylist(u"C"_s, {});
    library().selectPlaylist(0);
    library().selectMovies({0});
    library().movePlaylists({0}, 3);
    EXPECT_EQ(playlistNames(), (QStringList{u"B"_s, u"C"_s, u"A"_s}));
    EXPECT_EQ(library().selectedPlaylistRows(), Library::Rows{2});
    EXPECT_EQ(library().selectedMovieRows(), Library::Rows{0});
    library().setSort(u"filenameString"_s, false);
    EXPECT_EQ(library().selectedMovieRows(), Library::Rows{2});
    library().removePlaylists({0});
    EXPECT_EQ(library().selectedPlaylistRows(), Library::Rows{1});
    library().removePlaylists({1}); // the selected one: its neighbour takes over
    EXPECT_EQ(library().selectedPlaylistRows(), Library::Rows{0});
    EXPECT_TRUE(library().arrangedMovies().empty());
}

TEST_F(PlaylistEditingTest, OfARecordThatStandsTwiceOneItemIsRemovedAndTheOtherStays) {
    const auto playlist = addPlaylist(u"Day"_s, {u"a.mov"_s, u"b.mov"_s});
    const auto twice = library().arrangedMovies()[0];
    controller->edits().store().modify(twice, {}, [](Movie& movie) { movie.iCount = 2; });
    library().addMovies(playlist, {twice});
    library().setSort(u"filenameString"_s, true);
    EXPECT_EQ(shownNames(), (QStringList{u"a.mov"_s, u"a.mov"_s, u"b.mov"_s}));
    library().selectMovies({1});
    EXPECT_EQ(library().selectedMovies(), Library::Movies{twice});
    alerts.answers = {Alerts::firstButton};
    controller->playlistEditing().removeSelectedMovies();
    EXPECT_EQ(shownNames(), (QStringList{u"a.mov"_s, u"b.mov"_s}));
    EXPECT_EQ(playlist->movieList[0], twice) << "where it stood first";
    EXPECT_EQ(twice->iCount, 1);
}

} // namespace
} // namespace daylark::test
