#include "app/AppFixture.h"

namespace daylark::test {
namespace {

class ItemTransferTest : public AppFixture {
protected:
    void SetUp() override {
        start();
        target = addPlaylist(u"Target"_s, {u"w"_s, u"x"_s, u"y"_s, u"z"_s});
        source = addPlaylist(u"Source"_s, {u"a"_s, u"b"_s, u"c"_s});
    }
    ItemTransfer& transfer() { return controller->itemTransfer(); }
    UndoHistory& history() { return controller->edits().history(); }
    static QStringList namesOf(const Playlist& playlist) {
        QStringList names;
        for (const auto& movie : playlist.movieList)
            names << movie->filenameString;
        return names;
    }
    /// One less than the places where it stands, and the icon with it.
    void expectCountsTrue() {
        std::map<std::shared_ptr<Movie>, int> places;
        for (const auto& playlist : library().playlists())
            for (const auto& movie : playlist->movieList)
                ++places[movie];
        for (const auto& [movie, count] : places) {
            EXPECT_EQ(movie->iCount, count - 1) << qPrintable(movie->filenameString);
            EXPECT_EQ(movie->instanceIcon.isNil(), count < 2) << qPrintable(movie->filenameString);
        }
    }
    std::shared_ptr<Playlist> source, target;
};

TEST_F(ItemTransferTest, CopiesAreRecordsOfTheirOwnNumberedBehindTheOthers) {
    controller->edits().setFlag({source->movieList[1]}, 903);
    transfer().dropOnPlaylist(library().moviesAt({0, 1}), target, false);
    EXPECT_EQ(target->count(), 4) << "the answer was Cancel";
    ASSERT_EQ(alerts.shown.size(), 1u);
    EXPECT_EQ(alerts.shown[0].message, u"Add To Playlist"_s);
    EXPECT_EQ(alerts.shown[0].informativeText, u"Would you like to Copy or Move these items?"_s);
    EXPECT_EQ(alerts.shown[0].buttons, (QStringList{u"Copy"_s, u"Move"_s, u"Cancel"_s}));
    alerts.answers = {Alerts::firstButton};
    transfer().dropOnPlaylist(library().moviesAt({0, 1}), target, false);
    EXPECT_EQ(namesOf(*target).mid(4), (QStringList{u"a"_s, u"b"_s}));
    EXPECT_EQ(target->movieList[4]->sortOrder, 5);
    EXPECT_EQ(target->movieList[5]->sortOrder, 6);
    EXPECT_EQ(target->movieList[5]->flagString, u"903"_s);
    EXPECT_NE(target->movieList[5], source->movieList[1]);
    EXPECT_EQ(source->count(), 3);
    history().undo();
    EXPECT_EQ(target->count(), 4);
}

TEST_F(ItemTransferTest, MovedItemsLeaveAClosedListAndUndoBringsAllBack) {
    library().setFilter(MovieFilter::withText(u"/b"_s)); // what is shown is dragged
    alerts.answers = {Alerts::secondButton};
    transfer().dropOnPlaylist(library().moviesAt({0}), target, false);
    EXPECT_EQ(namesOf(*source), (QStringList{u"a"_s, u"c"_s}));
    EXPECT_EQ(source->movieList[1]->sortOrder, 2);
    EXPECT_EQ(namesOf(*target).last(), u"b"_s);
    EXPECT_EQ(library().filter().text(), u"/b"_s) << "the search stands as it was";
    expectCountsTrue();
    history().undo();
    EXPECT_EQ(namesOf(*source), (QStringList{u"a"_s, u"b"_s, u"c"_s}));
    EXPECT_EQ(source->movieList[2]->sortOrder, 3);
    EXPECT_EQ(target->count(), 4);
    history().redo();
    EXPECT_EQ(source->count(), 2);
    expectCountsTrue();
}

TEST_F(ItemTransferTest, AnInstanceIsTheSameRecordAndCountedOnEveryPath) {
    const auto shared = source->movieList[0];
    alerts.answers = {Alerts::firstButton};
    transfer().dropOnPlaylist({shared}, target, true);
    EXPECT_EQ(alerts.shown.back().message, u"Instance items to \"Target\"?"_s);
    EXPECT_EQ(alerts.shown.back().buttons, (QStringList{u"Instance"_s, u"Cancel"_s}));
    EXPECT_EQ(alerts.shown.back().style, AlertStyle::informational);
    EXPECT_EQ(target->movieList[4], shared);
    EXPECT_EQ(shared->sortOrder, 1) << "as it was";
    expectCountsTrue();
    history().undo();
    expectCountsTrue();
    history().redo();
    expectCountsTrue();

    library().selectPlaylist(1); // the history showed what it changed
    alerts.answers = {Alerts::firstButton};
    transfer().dropOnPlaylist({shared}, source, true); // twice in its own list
    EXPECT_EQ(source->count(), 4);
    EXPECT_EQ(shared->iCount, 2);
    expectCountsTrue();
    alerts.answers = {Alerts::firstButton}; // copied out: one place, one count
    transfer().dropOnPlaylist(library().moviesAt({0, 3}), target, false);
    EXPECT_EQ(target->count(), 7);
    EXPECT_NE(target->movieList[5], target->movieList[6]);
    expectCountsTrue();
    alerts.answers = {Alerts::secondButton}; // moved: one place less
    library().selectMovies({3});
    transfer().dropOnPlaylist({shared}, target, false);
    expectCountsTrue();

    library().selectPlaylist(0);
    alerts.answers = {Alerts::firstButton};
    controller->playlistEditing().removeSelectedPlaylists(); // for good
    EXPECT_EQ(source->count(), 3);
    expectCountsTrue();
    while (history().canUndo())
        history().undo(); // steps of a list that has gone are forgotten, their counts with them
    expectCountsTrue();
    while (history().canRedo())
        history().redo();
    expectCountsTrue();
}

TEST_F(ItemTransferTest, WhatTakesNoItemsRefusesAndSeveralPlaylistsAreTooMany) {
    controller->playlistEditing().addDivider();
    controller->playlistEditing().addEmptySmartlist();
    for (const size_t row : {2u, 3u}) {
        library().selectPlaylist(1);
        transfer().dropOnPlaylist(library().moviesAt({0}), library().playlists()[row], false);
        transfer().dropOnPlaylist(library().moviesAt({0}), library().playlists()[row], true);
        EXPECT_EQ(library().playlists()[row]->count(), 0);
    }
    EXPECT_TRUE(alerts.shown.empty());
    library().selectPlaylists({0, 1});
    transfer().dropOnPlaylist(library().moviesAt({0}), source, false);
    EXPECT_EQ(alerts.shown.back().message, u"Too many playlists selected"_s);
    EXPECT_EQ(alerts.shown.back().informativeText, u"Select only one and try again"_s);
}

TEST_F(ItemTransferTest, PlaylistsAreCombinedIntoCopiesOfEachRecordOnce) {
    const auto shared = source->movieList[2];
    alerts.answers = {Alerts::firstButton};
    transfer().dropOnPlaylist({shared}, target, true);
    transfer().addSelectedItemsToNewPlaylist();
    EXPECT_EQ(alerts.shown.back().message, u"Select More Than One Playlist"_s);
    library().selectPlaylists({0, 1});
    transfer().addSelectedItemsToNewPlaylist();
    const auto combined = library().playlists().back();
    EXPECT_EQ(combined->name, u"Combined Playlists"_s);
    EXPECT_EQ(namesOf(*combined),
              (QStringList{u"w"_s, u"x"_s, u"y"_s, u"c"_s, u"z"_s, u"a"_s, u"b"_s})); // by number, then the next list
    for (qsizetype at = 0; at < combined->count(); ++at) {
        EXPECT_EQ(combined->movieList[size_t(at)]->sortOrder, at + 1);
        EXPECT_EQ(combined->movieList[size_t(at)]->iCount, 0);
    }
    expectCountsTrue();
    history().undo();
    EXPECT_EQ(playlistNames(), (QStringList{u"Target"_s, u"Source"_s}));
    transfer().addAllItemsToNewPlaylist();
    EXPECT_EQ(library().playlists().back()->count(), 7);
}

TEST_F(ItemTransferTest, FoundItemsBecomeCopiesOrInstancesUnderTheTextTheyWereFoundBy) {
    Find& find = controller->find();
    preferences->findInputScope.set(FindInput::filenames);
    find.showFindPanel();
    find.setFindString(u"A"_s);
    transfer().createPlaylistWithFoundsItems(true);
    const auto instances = library().playlists().back();
    EXPECT_EQ(instances->name, u"Instances of \"A\""_s);
    EXPECT_EQ(instances->movieList[0], source->movieList[0]);
    EXPECT_FALSE(find.panelIsShown());
    EXPECT_TRUE(find.foundMovies().empty() && find.foundText().isEmpty());
    expectCountsTrue();
    find.setFindString(u"a"_s);
    transfer().createPlaylistWithFoundsItems(false);
    EXPECT_EQ(library().playlists().back()->name, u"Copies of \"a\""_s);
    EXPECT_EQ(library().playlists().back()->count(), 2);
    expectCountsTrue();
    transfer().createPlaylistWithFoundsItems(false); // nothing is found any more
    EXPECT_EQ(library().playlists().size(), 4u);
}

TEST_F(ItemTransferTest, ARecordThatStandsTwiceKeepsItsPlacesThroughRestartAndUndo) {
    const auto twice = source->movieList[0];
    alerts.answers = {Alerts::firstButton};
    transfer().dropOnPlaylist({twice}, source, true);
    EXPECT_EQ(shownNames(), (QStringList{u"a"_s, u"b"_s, u"c"_s, u"a"_s}));
    library().selectMovies({3});
    controller->playlistEditing().moveMovies(library().selectedMovies(), library().movieAt(2));
    EXPECT_EQ(shownNames(), (QStringList{u"a"_s, u"b"_s, u"a"_s, u"c"_s}));
    history().undo();
    EXPECT_EQ(shownNames(), (QStringList{u"a"_s, u"b"_s, u"c"_s, u"a"_s}));
    history().redo();
    quit();
    start();
    library().selectPlaylist(1);
    EXPECT_EQ(shownNames(), (QStringList{u"a"_s, u"b"_s, u"a"_s, u"c"_s}));
    EXPECT_EQ(library().arrangedMovies()[0], library().arrangedMovies()[2]);
}

} // namespace
} // namespace daylark::test
