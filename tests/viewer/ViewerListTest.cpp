#include "viewer/ViewerFixture.h"

namespace daylark {
namespace {

class ViewerListTest : public ViewerFixture {
protected:
    void SetUp() override {
        for (const char* name : {"a", "b", "c", "d", "e"})
            movies.push_back(record(QStringLiteral("/shots/%1.mov").arg(QLatin1String(name))));
        list.setMovies(movies, 0);
    }
    [[nodiscard]] QString order() const {
        QString names;
        for (const auto& movie : list.movies())
            names += movie->filenameString.front();
        return names;
    }
    ViewerList& list = controller.list();
    std::vector<std::shared_ptr<Movie>> movies;
};

TEST_F(ViewerListTest, DraggedRowsStandTogetherAndTheSelectionStaysOnItsMovies) {
    list.setSelectionIndexes({1, 3});
    QSignalSpy shown(&list, &ViewerList::selectionChanged);
    QSignalSpy reordered(&list, &ViewerList::reordered);
    list.setSelectionIndexes({1, 2, 3}); // the same is on screen
    list.setSelectionIndexes({1, 3});
    list.moveMovies({1, 3}, 5);
    EXPECT_EQ(order(), QStringLiteral("acebd"));
    EXPECT_EQ(list.selectionIndexes(), (ViewerList::Rows{3, 4}));
    list.moveMovies({4}, 0);
    EXPECT_EQ(order(), QStringLiteral("daceb"));
    EXPECT_EQ(list.selectedMovie(), movies[1]) << "on screen stays what was on screen";
    EXPECT_EQ(shown.count(), 0);
    list.moveMovies({2}, 2); // onto its own place
    list.moveMovies({2}, 3);
    list.moveMovies({9, -1}, 0); // rows that don't exist
    EXPECT_EQ(order(), QStringLiteral("daceb"));
    EXPECT_EQ(reordered.count(), 2);
    EXPECT_EQ(library.calls, QStringList(2, QStringLiteral("viewerReordered")));
}

TEST_F(ViewerListTest, FlagsAndCopiesAreOfEveryMovieSelected) {
    list.setSelectionIndexes({3, 1});
    EXPECT_EQ(list.selectionIndex(), 1) << "the first of them is on screen";
    controller.setFlagImage({{}, 903});
    EXPECT_EQ(movies[1]->flagString, QStringLiteral("903"));
    EXPECT_EQ(movies[3]->flag.name(), QStringLiteral("flag_Orange.png"));
    EXPECT_EQ(movies[0]->flagString, QStringLiteral("900"));
    controller.setFlagImage({{}, 950});
    EXPECT_EQ(movies[3]->flagString, QStringLiteral("950"));
    EXPECT_EQ(movies[3]->flag.name(), QStringLiteral("flag_Orange.png")) << "an unknown tag leaves the image";
    controller.setFlagImage({{}, 900});
    EXPECT_EQ(movies[1]->flagString, QStringLiteral("900"));
    EXPECT_TRUE(movies[1]->flag.isNil());
    controller.copyPath();
    EXPECT_EQ(pasteboard.content, QStringLiteral("/shots/b.mov\n/shots/d.mov"));
    controller.copyFilename();
    EXPECT_EQ(pasteboard.content, QStringLiteral("b.mov\nd.mov"));
    controller.revealInFinder();
    EXPECT_EQ(browser.revealed,
              QStringList({QStringLiteral("/shots/b.mov"), QStringLiteral("/shots/d.mov")}));
}

TEST_F(ViewerListTest, SelectedMoviesStaySelectedWhenTheLibraryShowsAnotherOrder) {
    list.setSelectionIndexes({0, 2});
    EXPECT_TRUE(list.follow({movies[2], movies[1], movies[0]}));
    EXPECT_EQ(list.selectionIndexes(), (ViewerList::Rows{0, 2}));
    EXPECT_EQ(list.selectedMovie(), movies[0]);
    EXPECT_FALSE(list.follow({movies[1], movies[2]})) << "the one on screen is not in it";
    EXPECT_EQ(list.count(), 3);
}

TEST_F(ViewerListTest, AMovieThatStandsTwiceInTheListIsTwoItems) {
    list.setMovies({movies[0], movies[1], movies[0]}, 2);
    list.setSelectionIndexes({2});
    EXPECT_TRUE(list.follow({movies[1], movies[0], movies[0]}));
    EXPECT_EQ(list.selectionIndex(), 2) << "the second stays the second";
    EXPECT_EQ(list.selectionIndexes(), ViewerList::Rows{2});
    EXPECT_EQ(list.findPreviousMovie(), 1);
    EXPECT_TRUE(list.follow({movies[1], movies[0]})) << "one of the two went";
    EXPECT_EQ(list.selectionIndex(), 1);
}

} // namespace
} // namespace daylark
