#include "ViewerWindowFixture.h"

#include "ui/common/notice/PassingLine.h"
#include "ui/panels/BookmarkPanel.h"
#include "ui/panels/BookmarkTable.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QScrollBar>

namespace daylark {

class BookmarkPanelTest : public ViewerWindowFixture {
protected:
    void openWith(const std::vector<std::pair<qint64, qint64>>& ranges) {
        openFrames(48);
        ViewerBookmarks::Bookmarks made;
        for (const auto& [from, to] : ranges) {
            made.push_back(std::make_shared<Bookmark>(from, to - from + 1, 24.0f));
            made.back()->computeTimecodeWithOffset();
        }
        edits.addBookmarks(first, made);
        key(Qt::Key_B);
        if (window->bookmarks()->isHidden())
            window->commands().action(QStringLiteral("viewer.bookmarks"))->trigger();
        ASSERT_TRUE(bench::waitUntil([this] { return table()->isVisible(); }));
    }
    [[nodiscard]] BookmarkTable* table() const { return window->bookmarks()->table(); }
    [[nodiscard]] std::shared_ptr<Bookmark> bookmark(size_t at) const { return first->bookmarkStore.at(at); }
    [[nodiscard]] QString text(int row, int column) const {
        return table()->model()->index(row, column).data().toString();
    }
    void press(int row, int tag) {
        QRect button = table()->buttonRect(row, tag);
        if (!table()->viewport()->rect().contains(
                button)) { // on a small screen some columns lie beyond the edge
            table()->horizontalScrollBar()->setValue(table()->horizontalScrollBar()->value() +
                                                     button.right() - table()->viewport()->width() + 1);
            button = table()->buttonRect(row, tag);
        }
        ASSERT_TRUE(table()->viewport()->rect().contains(button)) << tag;
        QTest::mouseClick(table()->viewport(), Qt::LeftButton, {}, button.center());
    }
    void typeInto(int row, int column, const char* text) {
        takeKeyboard(table());
        table()->setCurrentIndex(table()->model()->index(row, column));
        QTest::keyClick(table(), Qt::Key_F2);
        auto* field = qobject_cast<QLineEdit*>(QApplication::focusWidget());
        ASSERT_NE(field, nullptr);
        field->selectAll();
        QTest::keyClicks(field, QLatin1String(text));
        QTest::keyClick(field, Qt::Key_Return);
        QCoreApplication::processEvents();
    }
};

TEST_F(BookmarkPanelTest, InANarrowPanelWhatWasWrittenKeepsItsRoom) {
    openWith({{10, 20}});
    const auto shown = [this](int column) { return !table()->isColumnHidden(column); };
    QWidget* panel = window->bookmarks()->window();
    for (const int width : {600, 900, 500}) {
        panel->resize(width, 240);
        QCoreApplication::processEvents();
        EXPECT_GE(table()->columnWidth(BookmarkRows::descriptionColumn), 100) << width;
        EXPECT_TRUE(shown(BookmarkRows::firstFrameColumn) && shown(BookmarkRows::actionsColumn));
        EXPECT_EQ(shown(BookmarkRows::lastTCColumn), width == 900) << width;
    }
    panel->resize(900, 240);
    QCoreApplication::processEvents();
    EXPECT_TRUE(shown(BookmarkRows::noteColumn) && shown(BookmarkRows::firstTCColumn));
}

TEST_F(BookmarkPanelTest, TheProductionsNumbersStandBesideTheCountedOnesWhereTheyAreOthers) {
    openWith({{10, 20}, {30, 40}});
    const QHeaderView& header = *table()->horizontalHeader();
    EXPECT_TRUE(table()->isColumnHidden(BookmarkRows::firstProdColumn));
    edits.setFirstFrameNumber(first, 1001);
    EXPECT_FALSE(table()->isColumnHidden(BookmarkRows::firstProdColumn));
    EXPECT_FALSE(table()->isColumnHidden(BookmarkRows::lastProdColumn));
    EXPECT_EQ(text(0, BookmarkRows::firstProdColumn), QStringLiteral("1010"));
    EXPECT_EQ(text(1, BookmarkRows::lastProdColumn), QStringLiteral("1040"));
    EXPECT_EQ(text(1, BookmarkRows::lastFrameColumn), QStringLiteral("40")) << "as it is counted";
    EXPECT_EQ(header.visualIndex(BookmarkRows::firstProdColumn), header.visualIndex(BookmarkRows::firstFrameColumn) + 1);
    EXPECT_EQ(header.visualIndex(BookmarkRows::lastProdColumn), header.visualIndex(BookmarkRows::lastFrameColumn) + 1);
    EXPECT_GE(table()->columnWidth(BookmarkRows::firstProdColumn), header.sectionSizeHint(BookmarkRows::firstProdColumn));
    edits.history().undo();
    EXPECT_TRUE(table()->isColumnHidden(BookmarkRows::firstProdColumn));
}

TEST_F(BookmarkPanelTest, ButtonsOfARowGoToItsFramesAndSetThem) {
    openWith({{10, 20}, {30, 40}});
    press(1, bookmarkTag::goToFirst);
    EXPECT_SHOWN(30);
    EXPECT_EQ(window->bookmarks()->selectedBookmark(), bookmark(1));
    press(0, bookmarkTag::goToLast);
    EXPECT_SHOWN(20);
    key(Qt::Key_Home);
    for (int step = 1; step < 13; ++step)
        key(Qt::Key_Right);
    EXPECT_SHOWN(13);
    press(0, bookmarkTag::setIn);
    EXPECT_EQ(bookmark(0)->firstFrame, 13);
    EXPECT_EQ(text(0, BookmarkRows::firstFrameColumn), QStringLiteral("13"));
    EXPECT_EQ(text(0, BookmarkRows::firstTCColumn), QStringLiteral("00:00:00:12"));
    EXPECT_EQ(text(0, BookmarkRows::durationColumn), QStringLiteral("8"));
    const auto late = bookmark(1);
    press(1, bookmarkTag::setOut); // before its first frame: one frame, and sorted by its end now
    EXPECT_EQ(std::pair(late->firstFrame, late->lastFrame), std::pair(qint64(13), qint64(13)));
    EXPECT_EQ(bookmark(0), late);
    EXPECT_EQ(window->bookmarks()->selectedBookmark(), late) << "its row moved, the selection with it";
    EXPECT_EQ(table()->currentIndex().row(), 0);
}

TEST_F(BookmarkPanelTest, MuteLoopAndDeleteButtonsAreOfTheirRow) {
    openWith({{10, 20}, {30, 40}, {42, 44}});
    press(0, bookmarkTag::goToFirst);
    EXPECT_TRUE(table()->model()->index(0, 0).data(Qt::BackgroundRole).isValid());
    press(0, bookmarkTag::mute);
    EXPECT_TRUE(bookmark(0)->mute);
    EXPECT_FALSE(table()->model()->index(0, 0).data(Qt::BackgroundRole).isValid());
    press(1, bookmarkTag::loop);
    EXPECT_TRUE(bookmark(1)->loopStatus);
    EXPECT_EQ(controller.range().firstFrameForLoop(), 30);
    const QPoint loopButton = table()->buttonRect(1, bookmarkTag::loop).center();
    QTest::mouseDClick(table()->viewport(), Qt::LeftButton, {}, loopButton); // and once more, quickly
    QTest::mouseRelease(table()->viewport(), Qt::LeftButton, {}, loopButton);
    EXPECT_FALSE(bookmark(1)->loopStatus);
    EXPECT_SHOWN(10) << "a double press is no double click on the row";
    const auto last = bookmark(2);
    press(1, bookmarkTag::remove);
    EXPECT_EQ(first->bookmarkStore.size(), 2U);
    EXPECT_EQ(bookmark(1), last);
    EXPECT_EQ(table()->model()->rowCount(), 2);
    auto* slide = child<QWidget>("rowSlide");
    ASSERT_NE(slide, nullptr);
    EXPECT_TRUE(slide->isVisible());
    press(1, bookmarkTag::goToFirst); // clicks reach the rows while they slide
    EXPECT_SHOWN(42);
    EXPECT_TRUE(bench::waitUntil([slide] { return !slide->isVisible(); }));
}

TEST_F(BookmarkPanelTest, AButtonLetGoElsewhereDoesNothing) {
    openWith({{10, 20}, {30, 40}});
    const auto at = [&](int row) { return table()->buttonRect(row, bookmarkTag::remove).center(); };
    QTest::mousePress(table()->viewport(), Qt::LeftButton, {}, at(0));
    QTest::mouseMove(table()->viewport(), at(1));
    QTest::mouseRelease(table()->viewport(), Qt::LeftButton, {}, at(1));
    EXPECT_EQ(first->bookmarkStore.size(), 2U);
}

TEST_F(BookmarkPanelTest, TypedTextsAndLengthsReachTheBookmarkAndThePicture) {
    openWith({{10, 20}});
    press(0, bookmarkTag::goToFirst);
    typeInto(0, BookmarkRows::descriptionColumn, "boom in l f");
    EXPECT_EQ(bookmark(0)->overlayString, QStringLiteral("boom in l f"));
    EXPECT_EQ(bookmarks.overlayTextData(), QStringLiteral("  boom in l f"));
    EXPECT_TRUE(window->picture()->scene().readOuts.overlayText.contains(QStringLiteral("boom in l f")));
    preferences.onscreenTextColour.set(QColor(1, 2, 3));
    EXPECT_EQ(window->picture()->scene().readOuts.overlayColour, QColor(1, 2, 3));
    typeInto(0, BookmarkRows::noteColumn, "see B");
    EXPECT_EQ(bookmark(0)->overlayString2, QStringLiteral("see B"));
    typeInto(0, BookmarkRows::durationColumn, "a24");
    EXPECT_EQ(bookmark(0)->duration, 24) << "letters are no length";
    EXPECT_EQ(bookmark(0)->lastFrame, 33);
    EXPECT_FALSE(transport.isRunning());
}

TEST_F(BookmarkPanelTest, EscapeKeepsWhatIsTypedAndF2OffABookmarkSaysWhyNothingHappens) {
    openWith({{10, 20}});
    press(0, bookmarkTag::goToFirst);
    takeKeyboard(table());
    table()->setCurrentIndex(table()->model()->index(0, BookmarkRows::descriptionColumn));
    QTest::keyClick(table(), Qt::Key_F2);
    auto* field = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_NE(field, nullptr);
    QTest::keyClicks(field, QStringLiteral("softer"));
    QTest::keyClick(field, Qt::Key_Escape);
    QCoreApplication::processEvents();
    EXPECT_EQ(bookmark(0)->overlayString, QStringLiteral("softer"));
    EXPECT_FALSE(qobject_cast<QLineEdit*>(QApplication::focusWidget()));

    window->bookmarks()->clearSelection();
    goTo(40);
    ASSERT_TRUE(settled());
    takeKeyboard(window->picture());
    auto* line = child<PassingLine>("passingLine");
    for (const auto& [pressed, held] : {std::pair(Qt::Key_F2, Qt::NoModifier), std::pair(Qt::Key_L, Qt::ControlModifier)}) {
        line->goAway();
        key(pressed, held);
        EXPECT_TRUE(line->text().startsWith(u"No bookmark at this frame")) << line->text().toStdString();
    }
    EXPECT_FALSE(qobject_cast<QLineEdit*>(QApplication::focusWidget()));
}

TEST_F(BookmarkPanelTest, KeysGoFromBookmarkToBookmark) {
    openWith({{10, 20}, {30, 40}});
    key(Qt::Key_Right, Qt::ControlModifier);
    EXPECT_SHOWN(10);
    key(Qt::Key_Right, Qt::ControlModifier);
    EXPECT_SHOWN(30);
    key(Qt::Key_Right, Qt::ControlModifier);
    EXPECT_SHOWN(30);
    key(Qt::Key_Left, Qt::ControlModifier);
    EXPECT_SHOWN(10);
}

TEST_F(BookmarkPanelTest, MenusMuteCopyPasteAndDelete) {
    openWith({{10, 20}, {30, 40}});
    const auto choose = [&](const char* id) {
        QAction* action = window->commands().action(QLatin1String(id));
        ASSERT_TRUE(action->isEnabled()) << id;
        action->trigger();
    };
    EXPECT_FALSE(window->commands().action(QStringLiteral("viewer.pasteBookmarks"))->isEnabled());
    press(0, bookmarkTag::mute);
    choose("viewer.copyUnmutedBookmarks");
    choose("viewer.pasteBookmarks");
    EXPECT_EQ(first->bookmarkStore.size(), 3U);
    choose("viewer.invertMutedBookmarks");
    EXPECT_FALSE(bookmark(0)->mute);
    EXPECT_TRUE(bookmark(1)->mute && bookmark(2)->mute);
    choose("viewer.unmuteAllBookmarks");
    press(0, bookmarkTag::goToFirst);
    choose("viewer.deleteActiveBookmarks");
    EXPECT_EQ(table()->model()->rowCount(), 2);
    EXPECT_FALSE(window->commands().action(QStringLiteral("viewer.deleteActiveBookmarks"))->isEnabled());
    alerts.answers = {Alerts::firstButton};
    choose("viewer.deleteAllBookmarks");
    EXPECT_EQ(table()->model()->rowCount(), 0);
}

TEST_F(BookmarkPanelTest, AThousandBookmarksMakeNoWidgetsAndKeepScrollPositionAndSelection) {
    std::vector<std::pair<qint64, qint64>> ranges;
    for (int at = 0; at < 1000; ++at)
        ranges.emplace_back(1 + at / 25, 41 + at / 25);
    openWith(ranges);
    EXPECT_LE(table()->viewport()->findChildren<QWidget*>().size(), 2);
    table()->scrollToBottom();
    const int scrolled = table()->verticalScrollBar()->value();
    ASSERT_GT(scrolled, 0);
    const auto last = bookmark(999), beforeLast = bookmark(998);
    press(998, bookmarkTag::mute);
    key(Qt::Key_Right); // other rows are active now
    EXPECT_EQ(table()->verticalScrollBar()->value(), scrolled);
    EXPECT_EQ(window->bookmarks()->selectedBookmark(), beforeLast);
    press(999, bookmarkTag::remove);
    EXPECT_EQ(first->bookmarkStore.size(), 999U);
    EXPECT_EQ(window->bookmarks()->selectedBookmark(), beforeLast);
}

} // namespace daylark
