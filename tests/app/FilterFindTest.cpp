#include "app/AppFixture.h"

#include "model/StatusCodes.h"

namespace daylark::test {
namespace {

class FilterTest : public AppFixture {
protected:
    void SetUp() override { start(); }
    static MovieFilter filter(const char* id) {
        for (const MovieFilter::Choice& choice : MovieFilter::choices())
            if (QLatin1String(choice.id) == QLatin1String(id)) return MovieFilter::withChoice(choice);
        ADD_FAILURE() << id;
        return {};
    }
    QString shownWith(const MovieFilter& filter) {
        library().setFilter(filter);
        return shownNames().join(u' ');
    }
    std::shared_ptr<Movie> item(size_t at) { return library().unfilteredMovies()[at]; }
    ReviewEdits& edits() { return controller->edits(); }
};

TEST_F(FilterTest, EveryChoiceShowsWhatItSaysUnderItsTitle) {
    addPlaylist(u"Day"_s, {u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s});
    edits().setFlag({item(0)}, status::notApproved);
    edits().setNotes(item(1), NotesField::notes2, AttributedString(u"late"_s));
    const auto drawn = std::make_shared<Bookmark>(1, 2, 24.0F);
    drawn->drawings.strokes = {{.points = {{1, 1}, {9, 9}}}};
    edits().addBookmarks(item(2), {drawn});
    edits().addBookmarks(item(3), {std::make_shared<Bookmark>(1, 2, 24.0F)});
    Grade grade;
    grade.gamma = 1.2;
    edits().setGrade(item(4), grade);
    library().store().modify(item(0), {{}, EditKind::background}, [](Movie& movie) {
        movie.creatingThumbnailText = fileNotFoundText;
    });
    library().store().modify(item(1), {{}, EditKind::background}, [](Movie& movie) {
        movie.creatingThumbnailText = u"File Not Found"_s; // one blank: not missing by this filter
    });
    const struct {
        const char *id, *button, *shown;
    } all[] = {{"unflagged", "Unflagged", "b c d e"},
               {"anyFlag", "Any Flag", "a"},
               {"withNotes", "Notes", "b"},
               {"withoutNotes", "No Notes", "a c d e"},
               {"withDrawings", "Drawings", "c"},
               {"withoutDrawings", "No Drawings", "a b d e"},
               {"withBookmarks", "BMs", "c d"},
               {"withoutBookmarks", "No BMs", "a b e"},
               {"withGrade", "CCs", "e"},
               {"withoutGrade", "No CCs", "a b c d"},
               {"missing", "Missing", "a"},
               {"notMissing", "Not Missing", "b c d e"},
               {"showAll", "More Filters", "a b c d e"}};
    for (const auto& each : all) {
        EXPECT_EQ(shownWith(filter(each.id)), QLatin1String(each.shown)) << each.id;
        EXPECT_EQ(library().filter().buttonTitle(), QLatin1String(each.button));
    }
    EXPECT_EQ(std::size(all), MovieFilter::choices().size());
    EXPECT_EQ(shownWith(MovieFilter::withFlag(904)), u"a"_s);
    EXPECT_EQ(library().filter().buttonTitle(), u"Flagged"_s);
    EXPECT_EQ(shownWith(MovieFilter::withFlag(908)), QString());
    EXPECT_EQ(shownWith(MovieFilter::withFlag(900)), u"a b c d e"_s) << "no flag's tag";
}

TEST_F(FilterTest, TheSearchLooksAtWholePathsWithoutRegardToCaseAndAccents) {
    addPlaylist(u"Day"_s, {u"Café/Żółw_010.mov"_s, u"plain/SHOT_020.mov"_s, u"scho\u0308n/shot_030.mov"_s});
    EXPECT_EQ(shownWith(MovieFilter::withText(u"cafe"_s)), u"Żółw_010.mov"_s);
    EXPECT_EQ(shownWith(MovieFilter::withText(u"schön"_s)), u"shot_030.mov"_s) << "however it is composed";
    EXPECT_EQ(shownWith(MovieFilter::withText(u"sHoT_0"_s)), u"SHOT_020.mov shot_030.mov"_s);
    EXPECT_EQ(shownWith(MovieFilter::withText(u"*"_s)), QString()) << "no wildcards";
    EXPECT_EQ(shownWith(MovieFilter::withText({})).count(u' '), 2);
    EXPECT_FALSE(library().filter().isOn());
}

TEST_F(FilterTest, ItemsComeAndGoAtOnceAndTheViewerKeepsItsList) {
    const auto day = addPlaylist(u"Day"_s, {u"a"_s, u"b"_s, u"c"_s, u"d"_s});
    library().setFilter(filter("unflagged"));
    alerts.answers = {Alerts::firstButton}; // the files are missing
    controller->loadMovieWindow();
    ViewerList& viewer = controller->playerWindow().list();
    edits().setFlag({item(0)}, status::approved); // on screen
    EXPECT_EQ(shownNames(), (QStringList{u"b"_s, u"c"_s, u"d"_s}));
    EXPECT_EQ(viewer.count(), 4);
    edits().setFlag({item(2)}, status::approved);
    EXPECT_EQ(shownNames(), (QStringList{u"b"_s, u"d"_s}));

    // What changes the playlist itself reaches the viewer, without what the filter hides being lost there.
    viewer.setSelectionIndex(1);
    controller->playlistEditing().moveMovies({item(3)}, item(1));
    EXPECT_EQ(viewer.count(), 4);
    EXPECT_EQ(viewer.movies()[1]->filenameString, u"d"_s);
    edits().history().undo();
    edits().history().undo();
    EXPECT_EQ(shownNames(), (QStringList{u"b"_s, u"c"_s, u"d"_s}));
    EXPECT_EQ(day->count(), 4);
}

TEST_F(FilterTest, WhatIsHiddenIsNeitherLostNorRenumbered) {
    const auto day = addPlaylist(u"Day"_s, {u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s});
    edits().setFlag({item(1), item(3)}, status::skip);
    library().setFilter(filter("unflagged"));
    library().selectMovies({2});
    controller->playlistEditing().moveMovies(library().selectedMovies(), library().movieAt(0));
    EXPECT_EQ(shownNames(), (QStringList{u"e"_s, u"a"_s, u"c"_s}));
    EXPECT_EQ(shownNumbers(), (std::vector<qint64>{1, 3, 5}));
    library().setSort(u"filenameString"_s, false);
    controller->playlistEditing().bakeCurrentSortOrder();
    EXPECT_EQ(shownNames(), (QStringList{u"e"_s, u"c"_s, u"a"_s}));
    library().setFilter({});
    EXPECT_EQ(shownNames(), (QStringList{u"e"_s, u"b"_s, u"c"_s, u"d"_s, u"a"_s}));
    EXPECT_EQ(shownNumbers(), (std::vector<qint64>{1, 2, 3, 4, 5}));
    library().setFilter(filter("anyFlag"));
    library().selectMovies({0, 1});
    alerts.answers = {Alerts::firstButton};
    controller->playlistEditing().removeSelectedMovies();
    EXPECT_EQ(day->count(), 3);
    library().setFilter({});
    EXPECT_EQ(shownNumbers(), (std::vector<qint64>{1, 2, 3}));
}

class FindTest : public AppFixture {
protected:
    void SetUp() override {
        start();
        addPlaylist(u"First"_s, {u"x/a_1.mov"_s, u"x/b.mov"_s, u"x/A_2.mov"_s});
        addPlaylist(u"Second"_s, {u"x/c.mov"_s});
        controller->playlistEditing().addDivider();
        const auto smart = std::make_shared<Playlist>();
        smart->playlistType = playlistType::smart;
        library().appendPlaylist(smart, false);
        library().addMovies(smart, {std::make_shared<Movie>(path(u"x/a_only_here.mov"_s))});
        addPlaylist(u"Third"_s, {u"a_folder/z.mov"_s, u"x/a_3.mov"_s});
        library().selectPlaylist(1);
        preferences->findInputScope.set(FindInput::filenames);
    }
    Find& find() { return controller->find(); }
    /// Playlist and item that are selected.
    QString place() {
        const auto& rows = library().selectedMovieRows();
        return library().selectedPlaylist()->name + u' ' +
               (rows.empty() ? u"-"_s : library().movieAt(rows.front())->filenameString);
    }
};

TEST_F(FindTest, MatchesAreSteppedThroughAcrossOrdinaryPlaylistsAndRound) {
    find().setFindString(u"a_"_s);
    EXPECT_EQ(find().foundText(), u"3 Matches"_s);
    EXPECT_EQ(place(), u"First a_1.mov"_s);
    QStringList stepped;
    for (int step = 0; step < 3; ++step) {
        find().selectNextFoundMovie();
        stepped << place();
    }
    EXPECT_EQ(stepped, (QStringList{u"First A_2.mov"_s, u"Third a_3.mov"_s, u"First a_1.mov"_s}));
    find().selectPreviousFoundMovie();
    EXPECT_EQ(place(), u"Third a_3.mov"_s) << "round the other way";
    find().selectPreviousFoundMovie();
    EXPECT_EQ(place(), u"First A_2.mov"_s);

    library().selectPlaylist(1); // somebody looked elsewhere
    find().selectNextFoundMovie();
    EXPECT_TRUE(place().startsWith(u"Third"_s)) << qPrintable(place());
    library().removePlaylists({4});
    find().selectNextFoundMovie();
    EXPECT_EQ(place(), u"First a_1.mov"_s);
}

TEST_F(FindTest, TypingOnKeepsTheMatchAndNothingFoundLeavesTheSelection) {
    find().setFindString(u"a"_s);
    find().selectNextFoundMovie();
    EXPECT_EQ(place(), u"First A_2.mov"_s);
    find().setFindString(u"a_2"_s);
    EXPECT_EQ(find().foundText(), u"1 Match"_s);
    EXPECT_EQ(place(), u"First A_2.mov"_s);
    find().setFindString(u"a_1"_s); // it stands before what is selected
    EXPECT_EQ(place(), u"First a_1.mov"_s);
    find().setFindString(u"a_1x"_s);
    EXPECT_EQ(find().foundText(), u"No Matches Found"_s);
    EXPECT_TRUE(find().foundMovies().empty());
    find().selectNextFoundMovie();
    EXPECT_EQ(place(), u"First a_1.mov"_s);
    find().setFindString(u"only_here"_s);
    EXPECT_EQ(find().foundText(), u"No Matches Found"_s) << "smartlists are never searched";
    find().setFindString({});
    EXPECT_EQ(find().foundText(), QString());
}

TEST_F(FindTest, ItLooksAtNamesOrPathsAndAnotherChoiceBeginsAnew) {
    find().setFindString(u"a_folder"_s);
    EXPECT_EQ(find().foundText(), u"No Matches Found"_s);
    preferences->findInputScope.set(FindInput::filepathsAndNames);
    EXPECT_EQ(find().findString(), QString());
    EXPECT_EQ(find().foundText(), QString());
    find().setFindString(u"A_FOLDER"_s);
    EXPECT_EQ(place(), u"Third z.mov"_s);
}

TEST_F(FindTest, MatchesThatTheFilterHidesAreCountedAndPassedOver) {
    find().setFindString(u"a_"_s);
    library().setFilter(MovieFilter::withText(u"_2"_s));
    find().selectNextFoundMovie();
    EXPECT_EQ(place(), u"First A_2.mov"_s);
    find().selectNextFoundMovie();
    EXPECT_EQ(place(), u"First A_2.mov"_s) << "once round";
    library().setFilter(MovieFilter::withText(u"nothing"_s));
    find().selectPreviousFoundMovie(); // and no end is not reached
    EXPECT_EQ(find().foundText(), u"3 Matches"_s);
}

TEST_F(FindTest, ThePanelClosesWhereSomethingIsRemoved) {
    find().showFindPanel();
    library().selectPlaylist(1);
    library().selectMovies({0});
    alerts.answers = {Alerts::secondButton, Alerts::firstButton};
    controller->playlistEditing().removeSelectedMovies();
    EXPECT_TRUE(find().panelIsShown()) << "nothing was removed";
    controller->playlistEditing().removeSelectedMovies();
    EXPECT_FALSE(find().panelIsShown());
    find().showFindPanel();
    controller->playlistEditing().removeSelectedPlaylistsWithoutWarning();
    EXPECT_FALSE(find().panelIsShown());
}

} // namespace
} // namespace daylark::test
