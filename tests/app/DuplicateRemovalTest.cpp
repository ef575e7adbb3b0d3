#include "app/AppFixture.h"

namespace daylark::test {
namespace {

class DuplicateRemovalTest : public AppFixture {
protected:
    void SetUp() override { start(); }
    void ask(int answer) {
        alerts.answers = {answer};
        controller->duplicateRemoval().removeDuplicateItems();
    }
    void flag(std::initializer_list<size_t> items) {
        for (const size_t at : items)
            controller->edits().setFlag({library().arrangedMovies()[at]}, 901);
    }
    [[nodiscard]] const Alert& question() const { return alerts.shown.back(); }
    [[nodiscard]] QStringList shownPaths() {
        QStringList paths;
        for (const auto& movie : library().arrangedMovies())
            paths << QDir(folder.path()).relativeFilePath(movie->filepathString);
        return paths;
    }
};

TEST_F(DuplicateRemovalTest, TheItemWithReviewWorkStaysAndTheSecondButtonRemovesWhateverItIsCalled) {
    const auto day = addPlaylist(u"Day"_s, {u"1/a.mov"_s, u"2/a.mov"_s, u"b.mov"_s, u"B.mov"_s});
    controller->edits().setNotes(day->movieList[1], NotesField::notes, AttributedString(u"keep"_s));
    ask(Alerts::dismissed); // Escape presses no button
    EXPECT_EQ(question().message, u"1 duplicate found."_s);
    EXPECT_EQ(question().buttons, (QStringList{u"Remove All Duplicates"_s, u"Cancel"_s}));
    EXPECT_TRUE(question().tellsDismissal);
    EXPECT_EQ(day->count(), 4);
    ask(Alerts::secondButton);
    EXPECT_EQ(shownPaths(), (QStringList{u"2/a.mov"_s, u"b.mov"_s, u"B.mov"_s}));
    controller->edits().history().undo();
    EXPECT_EQ(shownPaths(), (QStringList{u"1/a.mov"_s, u"2/a.mov"_s, u"b.mov"_s, u"B.mov"_s}));
    ask(Alerts::firstButton);
    EXPECT_EQ(day->count(), 3);
    ask(Alerts::firstButton);
    EXPECT_EQ(question().message, u"No duplicates found"_s);
    EXPECT_EQ(question().buttons, QStringList{u"Okay"_s});
}

TEST_F(DuplicateRemovalTest, AnAnswerIsForThePlaylistThatWasAskedAbout) {
    const auto day = addPlaylist(u"Day"_s, {u"1/a.mov"_s, u"2/a.mov"_s});
    const auto other = addPlaylist(u"Other"_s, {u"b.mov"_s});
    library().selectPlaylist(0);
    alerts.meanwhile = [this] { library().selectPlaylist(1); };
    ask(Alerts::firstButton);
    EXPECT_EQ(day->count() + other->count(), 3);
    library().selectPlaylist(0);
    library().selectMovies({0});
    alerts.answers = {Alerts::firstButton};
    controller->playlistEditing().removeSelectedMovies();
    EXPECT_EQ(day->count() + other->count(), 3);
}

TEST_F(DuplicateRemovalTest, ModifiedOnesCanBeKept) {
    const auto day =
        addPlaylist(u"Day"_s, {u"1/a.mov"_s, u"2/a.mov"_s, u"3/a.mov"_s, u"1/c.mov"_s, u"2/c.mov"_s});
    flag({0, 2});
    ask(Alerts::thirdButton);
    EXPECT_EQ(question().message, u"3 duplicates found. 1 is modified."_s);
    EXPECT_EQ(question().buttons,
              (QStringList{u"Remove All Duplicates"_s, u"Keep Modified Duplicates"_s, u"Cancel"_s}));
    EXPECT_EQ(day->count(), 5);
    ask(Alerts::secondButton);
    EXPECT_EQ(shownPaths(), (QStringList{u"1/a.mov"_s, u"3/a.mov"_s, u"1/c.mov"_s}));
    ask(Alerts::secondButton); // only the modified one is left
    EXPECT_EQ(question().message, u"1 duplicate found. 1 is modified."_s);
    EXPECT_EQ(day->count(), 3);
    controller->edits().history().undo();
    flag({1, 4});
    ask(Alerts::firstButton);
    EXPECT_EQ(question().message, u"3 duplicates found. 2 are modified."_s);
    EXPECT_EQ(day->count(), 2);
}

TEST_F(DuplicateRemovalTest, OnlyWhatIsShownIsComparedAndOnePlaceOfARecordStays) {
    const auto day = addPlaylist(u"Day"_s, {u"1/a.mov"_s, u"2/a.mov"_s, u"b.mov"_s});
    library().setFilter(MovieFilter::withText(u"/1/"_s));
    ask(Alerts::firstButton);
    EXPECT_EQ(question().message, u"No duplicates found"_s);
    library().setFilter({});
    const auto b = day->movieList[2];
    alerts.answers = {Alerts::firstButton};
    controller->itemTransfer().dropOnPlaylist({b}, day, true);
    ask(Alerts::firstButton);
    EXPECT_EQ(question().message, u"2 duplicates found."_s);
    EXPECT_EQ(shownPaths(), (QStringList{u"1/a.mov"_s, u"b.mov"_s}));
    EXPECT_EQ(b->iCount, 0);
    EXPECT_TRUE(b->instanceIcon.isNil());
}

} // namespace
} // namespace daylark::test
