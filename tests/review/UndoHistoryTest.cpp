#include "review/UndoHistory.h"
#include "review/ReviewStore.h"
#include "support/RecordSamples.h"
#include "support/Replica.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace daylark {
namespace {

using namespace Qt::StringLiterals;
using test::archiveOf;

class UndoHistoryTest : public ::testing::Test {
protected:
    UndoHistoryTest() {
        day->movieList.assign({a, b, c});
        store.replaceSession({day});
        QObject::connect(&history, &UndoHistory::moved, [this](const ReviewPlace& at) { place = at; });
    }
    void TearDown() override { EXPECT_TRUE(replica.isTrue()); }

    void flag(const std::shared_ptr<Movie>& movie, int tag, EditKind kind = EditKind::step) {
        store.modify(movie, {u"Flag"_s, kind}, [tag](Movie& edited) { edited.setFlag(tag); });
    }
    void type(const std::shared_ptr<Movie>& movie, const QString& text) {
        store.modify(movie, {u"Notes"_s, EditKind::step, u"notes of "_s + movie->filenameString},
                     [&](Movie& edited) {
                         edited.notes = AttributedString(text);
                         edited.displayNotesIcon();
                     });
    }
    void removeForGood(const std::shared_ptr<Movie>& movie) {
        ObjectList<Movie> list = day->movieList;
        std::erase(list, movie);
        store.setMovies(day, list, {u"Remove Movie"_s, EditKind::final});
    }
    void reorder(std::initializer_list<std::shared_ptr<Movie>> movies) {
        ObjectList<Movie> list;
        list.assign(movies.begin(), movies.end());
        store.setMovies(day, list, {u"Order"_s});
    }

    std::shared_ptr<Movie> a = std::make_shared<Movie>(u"/a.mov"_s), b = std::make_shared<Movie>(u"/b.mov"_s),
                           c = std::make_shared<Movie>(u"/c.mov"_s);
    std::shared_ptr<Playlist> day = std::make_shared<Playlist>();
    ReviewStore store;
    UndoHistory history{store};
    test::Replica replica{store};
    ReviewPlace place;
};

TEST_F(UndoHistoryTest, EverythingGoesBackToTheBeginningAndForthToTheEnd) {
    const QByteArray beginning = archiveOf(store.playlists());
    const auto mark = std::make_shared<Bookmark>(7, 2, 25.0F);
    flag(a, 901);
    type(b, u"soft"_s);
    store.insertMovies(day, 1, {test::sampleMovie()}, {u"Add"_s});
    ObjectList<Bookmark> marks;
    marks.push_back(mark);
    store.setBookmarks(c, marks, {u"Add Bookmark"_s});
    store.modify(c, mark, {u"Stroke"_s},
                 [](Bookmark& bookmark) { bookmark.addDrawingToBookmark(test::sampleDrawing(2)); });
    reorder({c, b, a});
    store.insertPlaylists(0, {std::make_shared<Playlist>()}, {u"Add Playlist"_s});
    store.setPlaylists({day}, {u"Remove Empty Playlists"_s});
    const QByteArray end = archiveOf(store.playlists());
    for (int round = 0; round < 2; ++round) {
        while (history.canUndo())
            history.undo();
        EXPECT_EQ(archiveOf(store.playlists()), beginning);
        EXPECT_TRUE(replica.isTrue());
        EXPECT_EQ(history.undoText(), u"Undo"_s);
        while (history.canRedo())
            history.redo();
        EXPECT_EQ(archiveOf(store.playlists()), end);
        EXPECT_EQ(history.undoText(), u"Undo Remove Empty Playlists"_s);
    }
    history.undo();
    EXPECT_EQ(history.redoText(), u"Redo Remove Empty Playlists"_s);
    flag(b, 904); // another way from here
    EXPECT_FALSE(history.canRedo());
}

TEST_F(UndoHistoryTest, OneRunIsOneStepAndReachesAThousandBack) {
    type(a, u"s"_s);
    type(a, u"so"_s);
    type(a, u"sof"_s);
    history.endRun(); // the field was left
    type(a, u"soft"_s);
    type(b, u"x"_s);
    type(a, u"soft!"_s);
    history.undo();
    EXPECT_EQ(a->notes->string(), u"soft"_s);
    history.undo();
    EXPECT_EQ(b->notes->string(), QString());
    history.undo();
    EXPECT_EQ(a->notes->string(), u"sof"_s);
    history.undo();
    EXPECT_EQ(a->notes->string(), QString());
    EXPECT_TRUE(a->notesIcon.isNil());
    EXPECT_FALSE(history.canUndo());
    history.redo();
    EXPECT_EQ(a->notes->string(), u"sof"_s);
    EXPECT_FALSE(a->notesIcon.isNil());
    type(a, u"softer"_s); // not one run with what was typed before
    history.undo();
    EXPECT_EQ(a->notes->string(), u"sof"_s);
    history.clear();

    for (int i = 0; i < 1500; ++i)
        flag(a, i % 2 ? 901 : 902);
    int steps = 0;
    for (; history.canUndo(); ++steps)
        history.undo();
    EXPECT_EQ(steps, 1500);
    EXPECT_EQ(a->flagString, u"900"_s);
}

TEST_F(UndoHistoryTest, WhatIsFinalIsNotOfferedAndLeavesTheStepsOfOthers) {
    flag(a, 901);
    reorder({c, b, a});
    flag(b, 902);
    flag(c, 903);
    history.undo();
    removeForGood(b);
    EXPECT_FALSE(history.canRedo()) << "what was taken back is forgotten, as after any edit";
    EXPECT_EQ(history.undoText(), u"Undo Order"_s) << "the flag of what has gone went with it";
    history.undo();
    EXPECT_EQ(day->movieList, (ObjectList<Movie>{a, c}));
    history.undo();
    EXPECT_EQ(a->flagString, u"900"_s);
    EXPECT_FALSE(history.canUndo());
    while (history.canRedo())
        history.redo();
    EXPECT_EQ(day->movieList, (ObjectList<Movie>{c, a}));

    const auto other = std::make_shared<Playlist>();
    store.insertPlaylists(1, {other}, {u"Add Playlist"_s});
    store.insertMovies(other, 0, {b, a}, {u"Instance"_s});
    flag(b, 905);
    flag(a, 906);
    store.setPlaylists({day}, {u"Remove"_s, EditKind::final});
    EXPECT_EQ(history.undoText(), u"Undo Flag"_s);
    history.undo();
    EXPECT_EQ(a->flagString, u"901"_s) << "it still stands in the other list";
    EXPECT_EQ(history.undoText(), u"Undo Order"_s);
}

TEST_F(UndoHistoryTest, WhatTheProgramDoesByItselfIsNoStepAndKeepsWhatWasTakenBack) {
    flag(a, 901);
    history.undo();
    flag(b, 902, EditKind::background);
    ASSERT_TRUE(history.canRedo());
    EXPECT_FALSE(history.canUndo());
    history.redo();
    EXPECT_EQ(a->flagString, u"901"_s);
    EXPECT_EQ(b->flagString, u"902"_s);
    store.replaceSession({day});
    EXPECT_FALSE(history.canUndo() || history.canRedo());
}

TEST_F(UndoHistoryTest, AStepSaysWhereItChangedSomething) {
    const auto mark = std::make_shared<Bookmark>(7, 2, 25.0F);
    ObjectList<Bookmark> marks;
    marks.push_back(mark);
    store.setBookmarks(c, marks, {u"Add Bookmark"_s});
    store.modify(c, mark, {u"Text"_s}, [](Bookmark& bookmark) { bookmark.overlayString = u"x"_s; });
    store.modify(b, {u"Grade"_s, EditKind::step, {}, 31}, [](Movie& movie) { movie.gamma = 2; });
    store.modify(day, {u"Rename"_s}, [](Playlist& playlist) { playlist.name = u"n"_s; });
    history.undo();
    EXPECT_EQ(place.playlist, day);
    EXPECT_EQ(place.movie, nullptr);
    history.undo();
    EXPECT_EQ(place.movie, b);
    EXPECT_EQ(place.frame, 31);
    for (int step = 0; step < 2; ++step) {
        history.undo();
        EXPECT_EQ(place.movie, c);
        EXPECT_EQ(place.frame, 7);
    }
    history.redo();
    EXPECT_EQ(place.movie, c);
    {
        const ReviewStore::Group group(store, {u"Of Two"_s});
        store.modify(a, {}, [](Movie& movie) { movie.gamma = 2; });
        store.modify(c, mark, {}, [](Bookmark& bookmark) { bookmark.overlayString = u"y"_s; });
    }
    history.undo();
    EXPECT_EQ(place.movie, a);
    EXPECT_LT(place.frame, 0) << "another item's";
}

} // namespace
} // namespace daylark
