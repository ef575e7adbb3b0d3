#include "ViewerWindowFixture.h"

#include "ui/common/RichTextField.h"
#include "ui/common/ToolPanel.h"
#include "ui/panels/BookmarkPanel.h"
#include "ui/panels/BookmarkTable.h"
#include "ui/panels/DrawingPanel.h"
#include "ui/panels/NotesPanel.h"
#include "ui/viewer/ViewerPanelHost.h"

#include <QDoubleSpinBox>
#include <QSpinBox>
#include <QTableView>

namespace daylark {
namespace {

/// Who has the keyboard: the viewer, but for what is typed into.
class ViewerKeyboardTest : public ViewerWindowFixture {
protected:
    void trigger(const char* id) { window->commands().action(QLatin1String(id))->trigger(); }
    [[nodiscard]] ::testing::AssertionResult viewerHasKeyboard() const {
        const auto has = [this] {
            return QApplication::activeWindow() == window.get() &&
                   QApplication::focusWidget() == window->picture();
        };
        if (bench::waitUntil(has, 5000)) return ::testing::AssertionSuccess();
        const auto name = [](const QWidget* widget) {
            return widget
                       ? QString::fromLatin1(widget->metaObject()->className()) + u' ' + widget->objectName()
                       : QStringLiteral("nobody");
        };
        return ::testing::AssertionFailure() << qPrintable(name(QApplication::activeWindow())) << ", "
                                             << qPrintable(name(QApplication::focusWidget()));
    }
    [[nodiscard]] QDoubleSpinBox* toolWidthField() const {
        return window->findChild<DrawingPanel*>()->findChildren<QDoubleSpinBox*>().front();
    }
    DrawingTools& tools = controller.drawingTools();
};

TEST_F(ViewerKeyboardTest, AListThatPlaysOnLeavesTheKeyboardWhereItIs) {
    preferences.repeatType.set(RepeatMode::playPlaylistOnce);
    openTwo();
    trigger("viewer.notes");
    RichTextField* field = window->notes()->field(NotesField::notes);
    takeKeyboard(field);
    transport.playMovieForwards();
    playOntoTheEnd();
    ASSERT_TRUE(bench::waitUntil([this] { return controller.currentMovie() == second; }));
    ASSERT_TRUE(settled());
    QTest::qWait(150); // a window that is asked for comes a little later
    ASSERT_TRUE(transport.isRunning());
    ASSERT_TRUE(field->hasFocus());
    EXPECT_EQ(QApplication::activeWindow(), field->window());
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("k;b"));
    window->notes()->flush();
    EXPECT_EQ(second->notes->string(), QStringLiteral("k;b"));
    EXPECT_TRUE(transport.isRunning());
    EXPECT_TRUE(second->bookmarkStore.empty());

    // A handle that was typed in hands it back all the same.
    transport.pauseMovie();
    trigger("viewer.options");
    auto* tail = child<QSpinBox>("handleTail");
    if (!tail)
        for (QSpinBox* box : window->findChildren<QSpinBox*>())
            if (box->accessibleName() == QLatin1String("Tail handle, frames")) tail = box;
    ASSERT_TRUE(tail);
    takeKeyboard(tail);
    QTest::keyClick(tail, Qt::Key_Return);
    EXPECT_TRUE(viewerHasKeyboard());
}

TEST_F(ViewerKeyboardTest, DrawingToolsAreLaidDownWithTheMovieAndNotTakenUpByShowingAllPanels) {
    openTwo();
    key(Qt::Key_S);
    ASSERT_TRUE(controller.panels().isVisible(ViewerPanel::drawing));
    EXPECT_EQ(tools.interactiveMode(), QStringLiteral("off"));
    EXPECT_FALSE(tools.brushToolButton());
    key(Qt::Key_H);
    key(Qt::Key_D); // by itself it takes up the brush, as its preference wants it
    EXPECT_TRUE(tools.isDrawMode() && tools.brushToolButton());
    tools.chooseInteractiveTool({QStringLiteral("Erase")});
    EXPECT_EQ(tools.currentWidth(), 40);
    transport.displayNextMovie();
    ASSERT_TRUE(settled());
    EXPECT_EQ(tools.interactiveMode(), QStringLiteral("off"));
    EXPECT_FALSE(tools.brushToolButton() || tools.eraserToolButton());
    EXPECT_EQ(tools.currentWidth(), 10);
    key(Qt::Key_T);
    key(Qt::Key_T);
    ASSERT_TRUE(tools.eraserToolButton());
    key(Qt::Key_H);
    key(Qt::Key_S);
    EXPECT_FALSE(tools.isDrawMode()) << "put away, the panel had laid it down";
}

TEST_F(ViewerKeyboardTest, DrawingToolsHandTheKeyboardBackDockedOrNot) {
    if (QGuiApplication::platformName() != QLatin1String("xcb")) GTEST_SKIP() << "needs a window manager";
    openFrames(24);
    for (const bool docked : {false, true}) {
        SCOPED_TRACE(docked);
        ToolPanel* panel = window->findChild<ViewerPanelHost*>()->window(ViewerPanel::drawing);
        panel->setFloating(!docked);
        key(Qt::Key_D);
        ASSERT_TRUE(panel->isVisible());
        ASSERT_TRUE(viewerHasKeyboard());
        QTest::qWait(150); // a panel that was made active looks a moment later whether it is typed into
        takeKeyboard(toolWidthField());
        QTest::keyClick(toolWidthField(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(toolWidthField(), docked ? QStringLiteral("21") : QStringLiteral("33"));
        QTest::keyClick(toolWidthField(), Qt::Key_Return);
        EXPECT_TRUE(viewerHasKeyboard());
        EXPECT_EQ(tools.currentWidth(), docked ? 21 : 33);
        QTest::qWait(150);
        takeKeyboard(toolWidthField());
        trigger("viewer.showAllPanels");
        EXPECT_TRUE(viewerHasKeyboard());
        trigger("viewer.hideAllPanels");
        EXPECT_TRUE(viewerHasKeyboard());
    }
}

TEST_F(ViewerKeyboardTest, TheQuoteKeyBringsTheViewerForwardFromAPanel) {
    openFrames(24);
    key(Qt::Key_Semicolon);
    key(Qt::Key_B);
    QWidget* table = window->bookmarks()->table();
    takeKeyboard(table);
    ASSERT_NE(QApplication::activeWindow(), window.get());
    QTest::keyClick(table, Qt::Key_Apostrophe);
    EXPECT_TRUE(viewerHasKeyboard());
    EXPECT_TRUE(controller.panels().isVisible(ViewerPanel::bookmarks));
}

} // namespace
} // namespace daylark
