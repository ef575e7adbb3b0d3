#include "review/ReviewEdits.h"
#include "support/RecordSamples.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace daylark {
namespace {

using namespace Qt::StringLiterals;

class ReviewEditsTest : public ::testing::Test {
protected:
    /// Fields announced since the last call.
    QStringList announced() {
        QStringList fields;
        for (const auto& arguments : movies_)
            fields << arguments.at(1).toString();
        movies_.clear();
        return fields;
    }
    ReviewEdits edits_;
    QSignalSpy movies_{&edits_, &ReviewEdits::movieChanged};
    QSignalSpy bookmarks_{&edits_, &ReviewEdits::bookmarkChanged};
    std::shared_ptr<Movie> movie_ = std::make_shared<Movie>(u"/a.mov"_s);
};

TEST_F(ReviewEditsTest, EachChangeIsToldOnceByItsField) {
    const auto other = std::make_shared<Movie>(u"/b.mov"_s);
    other->setFlag(901);
    edits_.setFlag({movie_, other}, 901);
    ASSERT_EQ(movies_.count(), 1) << "the other had it already";
    EXPECT_EQ(announced(), QStringList{u"flagString"_s});

    edits_.setNotes(movie_, NotesField::notes2, AttributedString(u"n"_s));
    edits_.setNotes(movie_, NotesField::notes2, AttributedString(u"n"_s));
    EXPECT_EQ(announced(), QStringList{u"notes2"_s});
    EXPECT_FALSE(movie_->notesIcon.isNil());

    Grade grade;
    grade.gamma = 2;
    edits_.setGrade(movie_, grade);
    edits_.setApplyGrade(movie_, false);
    EXPECT_EQ(announced(), (QStringList{u"grade"_s, u"applyGrade"_s}));
    EXPECT_FALSE(movie_->gradeIcon.isNil());
    edits_.setGrade(movie_, Grade()); // neutral: is applied again
    EXPECT_EQ(announced(), (QStringList{u"grade"_s, u"applyGrade"_s}));
    EXPECT_TRUE(movie_->applyGrade && movie_->gradeIcon.isNil());

    const auto playlist = test::samplePlaylist({movie_});
    int renamed = 0;
    QObject::connect(&edits_.store(), &ReviewStore::changed,
                     [&renamed](const Change& change) { renamed += change.field == u"name"_s; });
    edits_.setPlaylistName(playlist, u"Day 2"_s);
    edits_.setPlaylistName(playlist, u"Day 2"_s);
    EXPECT_EQ(renamed, 1);
    EXPECT_EQ(edits_.history().undoText(), u"Undo Rename Playlist"_s);
    edits_.setFlag({movie_, other}, 903);
    EXPECT_EQ(edits_.history().undoText(), u"Undo Flag of 2 Items"_s);
    EXPECT_EQ(announced().size(), 2);
    edits_.history().undo();
    EXPECT_EQ(announced(), (QStringList{u"flagString"_s, u"flagString"_s}));
    EXPECT_EQ(movie_->flagString + other->flagString, u"901901"_s);
    EXPECT_EQ(other->flag, movie_->flag);
}

TEST_F(ReviewEditsTest, BookmarkEditsKeepIconsTrueAndOrderStable) {
    const auto late = std::make_shared<Bookmark>(20, 1, 25.0F),
               early = std::make_shared<Bookmark>(5, 9, 25.0F),
               earlyShort = std::make_shared<Bookmark>(5, 1, 25.0F);
    movie_->bookmarkStore.isNil = true; // as an older file leaves it
    edits_.addBookmarks(movie_, {late, early, earlyShort});
    EXPECT_FALSE(movie_->bookmarkStore.isNil || movie_->bookmarkIcon.isNil());
    edits_.sortBookmarks(movie_);
    EXPECT_EQ(movie_->bookmarkStore, (ObjectList<Bookmark>{earlyShort, early, late}));
    edits_.sortBookmarks(movie_);
    EXPECT_EQ(announced().size(), 2) << "sorting what is sorted is no change";

    edits_.editBookmark(movie_, late, {}, [](Bookmark& b) { b.addDrawingToBookmark(test::sampleDrawing(1)); });
    EXPECT_EQ(bookmarks_.count(), 1);
    EXPECT_FALSE(movie_->drawingIcon.isNil());
    edits_.removeBookmarks(movie_, {late});
    EXPECT_TRUE(movie_->drawingIcon.isNil());
    edits_.removeBookmarks(movie_, {late});
    EXPECT_EQ(announced().size(), 1);
    edits_.removeBookmarks(movie_, movie_->bookmarkStore);
    EXPECT_TRUE(movie_->bookmarkStore.empty() && movie_->bookmarkIcon.isNil());
}

} // namespace
} // namespace daylark
