#include "viewer/ViewerFixture.h"

namespace daylark {
namespace {

class ViewerBookmarksTest : public ViewerFixture {};

TEST_F(ViewerBookmarksTest, ABookmarkStartsOnTheFrameShownAndLastsAsPreferred) {
    showFrames(60);
    prefer("bookmarkDuration", 24);
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
    prefer("bookmarkDuration", 10);
    for (const qint64 frame : {10, 15}) {
        goTo(frame);
        bookmarks.addBookmark();
    }
    bookmarks.setOverlayString(bookmarks.bookmarks()[0], QStringLiteral("A"));
    bookmarks.setOverlayString(bookmarks.bookmarks()[1], QStringLiteral("B"));
    EXPECT_EQ(bookmarks.overlayTextData(), QStringLiteral("  A  B"));
    goTo(12);
    EXPECT_EQ(bookmarks.overlayTextData(), QStringLiteral("  A"));
    goTo(26);
    EXPECT_EQ(bookmarks.overlayTextData(), QString());
    edits.editBookmark(controller.currentMovie(), bookmarks.bookmarks()[1],
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
    bookmarks.goToFirstFrameOf(beyond);
    EXPECT_EQ(bench::settledPicture(player), 60);
}

} // namespace
} // namespace daylark
