#include "viewer/ViewerFixture.h"

#include <algorithm>

namespace daylark {
namespace {

class ViewerBookmarksTest : public ViewerFixture {
protected:
    std::shared_ptr<Bookmark> mark(qint64 first, qint64 last) {
        const auto bookmark = std::make_shared<Bookmark>(first, last - first + 1, 24.0f);
        edits.addBookmarks(controller.currentMovie(), {bookmark});
        bookmarks.sortBookmarks();
        return bookmark;
    }
    void press(int tag, const std::shared_ptr<Bookmark>& bookmark) {
        const auto all = bookmarks.bookmarks();
        const auto found = std::find(all.begin(), all.end(), bookmark);
        ASSERT_NE(found, all.end());
        bookmarks.bookmarkButtonPress({{}, tag}, found - all.begin());
    }
    PlaybackRange& range = controller.range();
};

Drawing strokesOf(int count, const QColor& colour) {
    Drawing drawing;
    for (int stroke = 0; stroke < count; ++stroke) {
        drawing.strokes.push_back({{{double(stroke), 1.0}}, 1, colour, 4, 1});
    }
    return drawing;
}

TEST_F(ViewerBookmarksTest, ABookmarkStartsOnTheFrameShownAndLastsAsPreferred) {
    showFrames(60);
    preferences.bookmarkDuration.set(24);
    goTo(30);
    bookmarks.addBookmark();
    goTo(10);
    QSignalSpy announced(&edits, &ReviewEdits::movieChanged);
    bookmarks.addBookmark();
    EXPECT_GE(announced.count(), 1);
    const auto all = bookmarks.bookmarks();
    ASSERT_EQ(all.size(), 2u);
    const Bookmark& made = *all.front(); // sorted before the other
    EXPECT_EQ(made.firstFrame, 10);
    EXPECT_EQ(made.lastFrame, 33);
    EXPECT_EQ(made.duration, 24);
    EXPECT_EQ(made.fps, 24.0f);
    EXPECT_EQ(made.firstTC, QStringLiteral("00:00:00:09"));
    EXPECT_EQ(made.lastTC, QStringLiteral("00:00:01:08"));
    EXPECT_EQ(bookmarks.activeBookmarks(), std::vector{all.front()});
    EXPECT_EQ(controller.currentMovie()->bookmarkIcon.name(), QStringLiteral("bookmark_on.png"));
    bookmarks.removeBookmark(all.front());
    EXPECT_EQ(bookmarks.bookmarks(), std::vector{all.back()});
    EXPECT_TRUE(bookmarks.activeBookmarks().empty());
}

TEST_F(ViewerBookmarksTest, TextsOfAllActiveBookmarksAreJoinedAndFollowThePosition) {
    showFrames(60);
    preferences.bookmarkDuration.set(10);
    for (const qint64 frame : {10, 15}) {
        goTo(frame);
        bookmarks.addBookmark();
    }
    bookmarks.setOverlayString(bookmarks.bookmarks()[0], QStringLiteral("A"));
    QSignalSpy told(&bookmarks, &ViewerBookmarks::activeBookmarksChanged);
    bookmarks.setOverlayString(bookmarks.bookmarks()[1], QStringLiteral("B"));
    EXPECT_EQ(bookmarks.overlayTextData(), QStringLiteral("  A  B"));
    EXPECT_EQ(told.count(), 1) << "another text of the same bookmarks";
    goTo(12);
    EXPECT_EQ(bookmarks.overlayTextData(), QStringLiteral("  A"));
    goTo(26);
    EXPECT_EQ(bookmarks.overlayTextData(), QString());
    edits.editBookmark(controller.currentMovie(), bookmarks.bookmarks()[1], {},
                       [](Bookmark& b) { b.lastFrame = 26; });
    EXPECT_EQ(bookmarks.overlayTextData(), QStringLiteral("  B")) << "edits by others show as well";
}

TEST_F(ViewerBookmarksTest, GoingToABookmarkShowsItsFrameAtEveryRate) {
    for (const auto& [num, den] :
         {std::pair{24, 1}, std::pair{24000, 1001}, std::pair{30000, 1001}, std::pair{25, 2}}) {
        show({record(bench::movie({.frames = 60, .group = 12, .rateNum = num, .rateDen = den}))});
        for (const qint64 frame : {1, 2, 31, 59, 60}) {
            bookmarks.goToFrame(frame);
            EXPECT_EQ(player.currentFrame(), frame) << num << "/" << den;
        }
    }
    const auto beyond = std::make_shared<Bookmark>(61, 1, 12.5f);
    edits.addBookmarks(controller.currentMovie(), {beyond});
    goTo(5);
    press(bookmarkTag::goToFirst, beyond);
    EXPECT_EQ(bench::settledPicture(player), 60);
}

TEST_F(ViewerBookmarksTest, SettingInOrOutPastTheOtherEndCollapsesOntoTheFrameShown) {
    showFrames(60);
    const auto early = mark(5, 8), late = mark(20, 30);
    goTo(25);
    press(bookmarkTag::setIn, early);
    EXPECT_EQ(std::tuple(early->firstFrame, early->lastFrame, early->duration), std::tuple(25, 25, 1));
    EXPECT_EQ(early->firstTC, QStringLiteral("00:00:01:00"));
    EXPECT_EQ(early->lastTC, early->firstTC);
    EXPECT_EQ(bookmarks.bookmarks(), (ViewerBookmarks::Bookmarks{late, early})) << "sorted anew";
    press(bookmarkTag::setOut, late);
    EXPECT_EQ(std::tuple(late->firstFrame, late->lastFrame, late->duration), std::tuple(20, 25, 6));
    goTo(3);
    press(bookmarkTag::setOut, late);
    EXPECT_EQ(std::tuple(late->firstFrame, late->lastFrame, late->duration), std::tuple(3, 3, 1));
    EXPECT_EQ(late->firstTC, QStringLiteral("00:00:00:02"));
}

TEST_F(ViewerBookmarksTest, ATypedLengthMovesTheLastFrameAndNothingBelowOneIsTaken) {
    showFrames(60);
    const auto first = mark(10, 19), second = mark(10, 14);
    ASSERT_EQ(bookmarks.bookmarks().front(), second);
    QSignalSpy announced(&bookmarks, &ViewerBookmarks::bookmarksChanged);
    bookmarks.setDuration(second, 24);
    EXPECT_EQ(second->lastFrame, 33);
    EXPECT_EQ(bookmarks.bookmarks().front(), first);
    EXPECT_EQ(announced.count(), 1);
    bookmarks.setDuration(second, 0);
    bookmarks.setDuration(second, -5);
    EXPECT_EQ(second->duration, 24);
    edits.editBookmark(controller.currentMovie(), second, {}, [](Bookmark& b) { b.duration = 2; });
    press(bookmarkTag::fromDuration, second);
    EXPECT_EQ(second->lastFrame, 11);
}

TEST_F(ViewerBookmarksTest, ALoopHoldsItsBookmarkAndOnlyOneLoops) {
    showFrames(60);
    const auto first = mark(5, 10), second = mark(20, 30);
    press(bookmarkTag::loop, first);
    EXPECT_TRUE(first->loopStatus);
    EXPECT_EQ(first->loopImage.name(), QStringLiteral("loop_ON.png"));
    EXPECT_EQ(range.bars(), (PlaybackRange::BarState{5, 10, 60, true}));
    press(bookmarkTag::loop, second);
    EXPECT_FALSE(first->loopStatus);
    EXPECT_EQ(first->loopImage.name(), QStringLiteral("loop_OFF.png"));
    EXPECT_TRUE(second->loopStatus) << "a loop of another bookmark takes no second press";
    EXPECT_EQ(range.firstFrameForLoop(), 20);
    goTo(25);
    press(bookmarkTag::setIn, second);
    EXPECT_EQ(range.bars(), (PlaybackRange::BarState{25, 30, 60, true})) << "follows its bookmark";
    press(bookmarkTag::loop, second);
    EXPECT_FALSE(second->loopStatus);
    EXPECT_FALSE(range.isLooping());
    EXPECT_FALSE(range.bars().shown);

    press(bookmarkTag::loop, second);
    press(bookmarkTag::remove, first);
    EXPECT_TRUE(range.isLooping()) << "another one went";
    press(bookmarkTag::remove, second);
    EXPECT_FALSE(range.isLooping());
    EXPECT_FALSE(range.bars().shown);
}

TEST_F(ViewerBookmarksTest, WithHandlesTrimmedTheFirstPressOnlyEndsTheirRange) {
    showFrames(60);
    const auto bookmark = mark(20, 30);
    preferences.trimHandles.set(true);
    ASSERT_TRUE(range.isLooping());
    press(bookmarkTag::loop, bookmark);
    EXPECT_FALSE(range.isLooping());
    EXPECT_FALSE(bookmark->loopStatus);
    EXPECT_TRUE(preferences.trimHandles());
    press(bookmarkTag::loop, bookmark);
    EXPECT_TRUE(bookmark->loopStatus);
    EXPECT_EQ(range.firstFrameForLoop(), 20);
    EXPECT_FALSE(preferences.trimHandles());
    preferences.trimHandles.set(true);
    EXPECT_FALSE(bookmark->loopStatus) << "a range of handles ends the loop";
    EXPECT_EQ(range.firstFrameForLoop(), 10);
}

TEST_F(ViewerBookmarksTest, BookmarksBeyondTheEndLeadToTheLastFrame) {
    showFrames(60);
    const auto beyond = mark(100, 200);
    for (const int tag : {bookmarkTag::goToFirst, bookmarkTag::goToLast, bookmarkTag::loop}) {
        goTo(5);
        press(tag, beyond);
        EXPECT_EQ(bench::settledPicture(player), 60) << tag;
    }
    EXPECT_TRUE(beyond->loopStatus);
    EXPECT_FALSE(range.bars().shown);
    goTo(5);
    bookmarks.goToNextBookmark();
    EXPECT_EQ(bench::settledPicture(player), 60);
    bookmarks.bookmarkButtonPress({{}, bookmarkTag::goToFirst}, 7); // no such row
    bookmarks.bookmarkButtonPress({{}, bookmarkTag::goToFirst}, -1);
    EXPECT_EQ(player.currentFrame(), 60);
}

TEST_F(ViewerBookmarksTest, TheMuteMenuActsByTitleAndInvertingTwiceGivesTheMutesBack) {
    showFrames(60);
    const auto a = mark(1, 60), b = mark(2, 60), c = mark(3, 60);
    goTo(5);
    press(bookmarkTag::mute, b);
    EXPECT_EQ(b->activeImage.name(), QStringLiteral("NSStatusUnavailable"));
    EXPECT_EQ(bookmarks.activeBookmarks(), (ViewerBookmarks::Bookmarks{a, c}));
    const auto mutes = [&] { return std::tuple(a->mute, b->mute, c->mute); };
    const auto menu = [&](const char* title) { bookmarks.setMuteValues({QLatin1String(title), 0}); };
    QSignalSpy announced(&bookmarks, &ViewerBookmarks::bookmarksChanged);
    menu("Invert Muted Bookmarks");
    EXPECT_EQ(announced.count(), 1) << "one action, told once";
    EXPECT_EQ(mutes(), std::tuple(true, false, true));
    EXPECT_EQ(bookmarks.activeBookmarks(), ViewerBookmarks::Bookmarks{b});
    EXPECT_EQ(b->activeImage.name(), QStringLiteral("NSStatusAvailable"));
    menu("Invert Muted Bookmarks");
    EXPECT_EQ(mutes(), std::tuple(false, true, false));
    menu("Mute All Bookmarks");
    EXPECT_EQ(mutes(), std::tuple(true, true, true));
    EXPECT_TRUE(bookmarks.activeBookmarks().empty());
    menu("Mute Everything");
    menu("Unmute All Bookmarks");
    EXPECT_EQ(mutes(), std::tuple(false, false, false));
}

TEST_F(ViewerBookmarksTest, CopiesAreIndependentAndGoFromMovieToMovie) {
    const auto one = record(bench::movie({.frames = 60, .group = 12}));
    const auto other = record(bench::movie({.frames = 48, .group = 12}));
    show({one, other});
    const auto loud = mark(10, 20), muted = mark(5, 6);
    bookmarks.setOverlayString(loud, QStringLiteral("boom"));
    edits.editBookmark(one, loud, {}, [](Bookmark& b) { b.addDrawingToBookmark(strokesOf(1, Qt::red)); });
    press(bookmarkTag::mute, muted);
    bookmarks.copySelectedBookmarks({QStringLiteral("Copy Unmuted Bookmarks"), 0});
    bookmarks.setOverlayString(loud, QStringLiteral("changed since"));
    press(bookmarkTag::mute, loud);
    bookmarks.copySelectedBookmarks({QStringLiteral("Copy Unmuted Bookmarks"), 0});
    ASSERT_EQ(bookmarks.copiedBookmarks().size(), 1u) << "nothing to copy: the earlier copy stays";

    controller.list().setSelectionIndex(1);
    ASSERT_TRUE(settled());
    bookmarks.pasteCopiedBookmarks();
    bookmarks.pasteCopiedBookmarks();
    const auto pasted = bookmarks.bookmarks();
    ASSERT_EQ(pasted.size(), 2u);
    EXPECT_EQ(pasted[0]->overlayString, QStringLiteral("boom"));
    EXPECT_EQ(pasted[0]->drawings, strokesOf(1, Qt::red));
    EXPECT_EQ(other->drawingIcon.name(), QStringLiteral("dl-brushActive-01.png"));
    bookmarks.setOverlayString(pasted[0], QStringLiteral("mine"));
    EXPECT_EQ(pasted[1]->overlayString, QStringLiteral("boom"));
    bookmarks.copySelectedBookmarks({QStringLiteral("Copy All Bookmarks"), 0});
    EXPECT_EQ(bookmarks.copiedBookmarks().size(), 2u);
    EXPECT_EQ(one->bookmarkStore.size(), 2u);
}

TEST_F(ViewerBookmarksTest, NextAndPreviousPassOverMutedOnesAndStopAtTheEnds) {
    showFrames(60);
    mark(10, 12);
    press(bookmarkTag::mute, mark(20, 22));
    mark(30, 32);
    std::vector<qint64> way;
    for (int turn = 0; turn < 3; ++turn) {
        bookmarks.goToNextBookmark();
        way.push_back(bench::settledPicture(player));
    }
    for (int turn = 0; turn < 2; ++turn) {
        bookmarks.goToPreviousBookmark();
        way.push_back(bench::settledPicture(player));
    }
    EXPECT_EQ(way, (std::vector<qint64>{10, 30, 30, 10, 10}));
}

TEST_F(ViewerBookmarksTest, DrawingsOfAllActiveBookmarksStandTogetherInTheirOrder) {
    showFrames(60);
    goTo(10);
    preferences.bookmarkDuration.set(20);
    bookmarks.addBookmarkWithDrawing(strokesOf(2, Qt::red));
    EXPECT_EQ(controller.currentMovie()->drawingIcon.name(), QStringLiteral("dl-brushActive-01.png"));
    goTo(5);
    bookmarks.addBookmarkWithDrawing(strokesOf(1, Qt::blue)); // frames 5 to 24: sorted before the other
    mark(1, 60);                                              // without a drawing
    QSignalSpy changed(&bookmarks, &ViewerBookmarks::activeDrawingsChanged);
    goTo(12);
    EXPECT_EQ(changed.count(), 1);
    Drawing both = strokesOf(1, Qt::blue);
    both.append(strokesOf(2, Qt::red));
    EXPECT_EQ(bookmarks.activeDrawings(), both);
    goTo(13);
    EXPECT_EQ(changed.count(), 1) << "the same drawings on the next frame";
    edits.editBookmark(controller.currentMovie(), bookmarks.bookmarks()[1], {},
                       [](Bookmark& b) { b.removeLastStrokeFromDrawing(); });
    EXPECT_EQ(changed.count(), 2);
    EXPECT_EQ(bookmarks.activeDrawings().strokes.size(), 2u);
    goTo(40);
    EXPECT_FALSE(bookmarks.activeDrawings().hasStrokes());
}

TEST_F(ViewerBookmarksTest, DeletingAllAsksAndDeletingTheActiveOnesDoesNot) {
    showFrames(60);
    const auto a = mark(1, 10), b = mark(5, 10), c = mark(20, 30);
    goTo(7);
    press(bookmarkTag::loop, b);
    bookmarks.deleteActiveBookmarks();
    EXPECT_TRUE(alerts.shown.empty());
    EXPECT_EQ(bookmarks.bookmarks(), ViewerBookmarks::Bookmarks{c});
    EXPECT_FALSE(range.isLooping()) << "the looping one went";
    bookmarks.deleteActiveBookmarks(); // none is active
    press(bookmarkTag::loop, c);
    alerts.answers = {Alerts::secondButton, Alerts::firstButton};
    bookmarks.deleteAllBookmarks();
    EXPECT_EQ(bookmarks.bookmarks().size(), 1u);
    EXPECT_EQ(alerts.shown.back().message, QStringLiteral("Remove All Bookmarks From Movie?"));
    EXPECT_EQ(alerts.shown.back().informativeText, QStringLiteral("Drawings will also be removed"));
    bookmarks.deleteAllBookmarks();
    EXPECT_TRUE(bookmarks.bookmarks().empty());
    EXPECT_FALSE(range.isLooping());
    EXPECT_TRUE(controller.currentMovie()->bookmarkIcon.isNil());
}

} // namespace
} // namespace daylark
