#include "ViewerWindowFixture.h"

#include "commands/viewer/ViewerCommands.h"
#include "ui/panels/BookmarkPanel.h"
#include "ui/panels/BookmarkTable.h"
#include "ui/common/PlainLabel.h"
#include "ui/viewer/FloatingTimecode.h"
#include "ui/viewer/FullScreen.h"
#include "ui/commands/KeysDialog.h"
#include "ui/viewer/MouseZones.h"
#include "ui/viewer/MovieListOverlay.h"
#include "ui/common/ToolPanel.h"
#include "ui/viewer/ViewerPanelHost.h"

#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QScreen>
#include <QTableView>
#include <QTableWidget>
#include <QToolBar>
#include <QWheelEvent>

namespace daylark {

class ViewerInputTest : public ViewerWindowFixture {
protected:
    void TearDown() override {
        window->fullScreen()->leave();
        while (QGuiApplication::overrideCursor())
            QGuiApplication::restoreOverrideCursor();
    }
    [[nodiscard]] ViewerPanels& panelsOfViewer() { return controller.panels(); }
    [[nodiscard]] bool isShown(ViewerPanel panel) { return panelsOfViewer().isVisible(panel); }
    void wheel(QPoint delta, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        const QPoint at = window->picture()->rect().center();
        QWheelEvent event(at, window->picture()->mapToGlobal(at), {}, delta, Qt::NoButton, modifiers,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(window->picture(), &event);
    }
    void enterFullScreen() {
        window->activateWindow(); // a panel that was just shown may have become the active one
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
        key(Qt::Key_F11);
        ASSERT_TRUE(bench::waitUntil(
            [this] { return window->isFullScreen() && window->size() == window->screen()->size(); }));
    }
    /// Called with everything that the viewer announces of the movie.
    QMetaObject::Connection connectWatcher(const std::function<void()>& look) {
        return QObject::connect(&time, &TimeDisplay::changed, window.get(), look);
    }
    void moveMouseTo(QPoint at) { QTest::mouseMove(window->picture(), at); }
    [[nodiscard]] QPoint rightEdge() const { return {window->picture()->width() - 4, 200}; }
    [[nodiscard]] QPoint lowerEdge() const { return {300, window->picture()->height() - 4}; }
};

TEST_F(ViewerInputTest, WheelStepsOneFrameAnEventAndGoesByBookmarksWithCtrl) {
    openFrames(48);
    wheel({0, -120});
    EXPECT_SHOWN(2);
    wheel({0, -960}); // however far it turned
    EXPECT_SHOWN(3);
    wheel({0, 15});
    EXPECT_SHOWN(2);
    wheel({240, 0});
    EXPECT_SHOWN(2);
    for (const int frame : {10, 30}) {
        goTo(frame);
        ASSERT_TRUE(settled());
        key(Qt::Key_Semicolon);
    }
    goTo(1);
    ASSERT_TRUE(settled());
    wheel({0, -120}, Qt::ControlModifier);
    EXPECT_SHOWN(10);
    wheel({0, -120}, Qt::ControlModifier);
    EXPECT_SHOWN(30);
    wheel({0, 120}, Qt::ControlModifier);
    EXPECT_SHOWN(10);
}

TEST_F(ViewerInputTest, KeysCountWhateverTheModifiersButShortcutsComeFirst) {
    openFrames(48);
    key(Qt::Key_B, Qt::ShiftModifier);
    EXPECT_TRUE(isShown(ViewerPanel::bookmarks));
    key(Qt::Key_B);
    EXPECT_FALSE(isShown(ViewerPanel::bookmarks));
    key(Qt::Key_Semicolon, Qt::ControlModifier);
    EXPECT_EQ(first->bookmarkStore.size(), 1U);
    key(Qt::Key_Period, Qt::ShiftModifier);
    EXPECT_SHOWN(48);
    key(Qt::Key_Comma);
    EXPECT_SHOWN(1);
    controller.grade().setValue(ViewerGrade::exposure, 0.5); // a neutral grade is always on
    EXPECT_TRUE(first->applyGrade);
    key(Qt::Key_A);
    EXPECT_FALSE(first->applyGrade);
    key(Qt::Key_T, Qt::ControlModifier); // takes a snapshot
    EXPECT_FALSE(controller.drawingTools().isDrawMode());
    key(Qt::Key_F); // only in full screen
    EXPECT_FALSE(isShown(ViewerPanel::controls));
}

TEST_F(ViewerInputTest, KeysPressedInPanelsReachTheViewerAndThoseTypedIntoFieldsDoNot) {
    openFrames(48);
    key(Qt::Key_Semicolon);
    key(Qt::Key_F2); // opens the panel, too
    ASSERT_TRUE(isShown(ViewerPanel::bookmarks));
    ASSERT_TRUE(bench::waitUntil([] { return qobject_cast<QLineEdit*>(QApplication::focusWidget()); }));
    auto* editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    QTest::keyClicks(editor, QStringLiteral("b;s p"));
    QTest::keyClick(editor, Qt::Key_Return);
    EXPECT_TRUE(bench::waitUntil(
        [&] { return first->bookmarkStore.front()->overlayString == QLatin1String("b;s p"); }));
    EXPECT_TRUE(isShown(ViewerPanel::bookmarks));
    EXPECT_EQ(first->bookmarkStore.size(), 1U);
    EXPECT_FALSE(transport.isRunning());
    QTest::keyClick(window->bookmarks()->table(), Qt::Key_Period);
    EXPECT_SHOWN(48);
    QTest::keyClick(window->bookmarks()->table(), Qt::Key_Space);
    EXPECT_TRUE(transport.isRunning());
    QTest::keyClick(window->bookmarks()->table(), Qt::Key_B);
    EXPECT_FALSE(isShown(ViewerPanel::bookmarks));
}

TEST_F(ViewerInputTest, HeldArrowKeyGoesNoFasterThanPicturesAndAHeldPanelKeyDoesNotFlicker) {
    player.setCacheBudget(1'500'000); // too little for what is far away to be there already
    first = record(bench::movie({.frames = 240, .group = 240})); // and nothing near it to begin with
    show({first});
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    const auto hold = [this](Qt::Key key) {
        QTest::simulateEvent(window->picture(), true, key, Qt::NoModifier, QString(), true);
    };
    key(Qt::Key_Right);
    for (int at = 0; at < 10; ++at) {
        ASSERT_TRUE(settled());
        hold(Qt::Key_Right);
    }
    EXPECT_SHOWN(12);
    int far = 0; // a picture that isn't there yet: what decodes ahead may have got to one of them
    for (const int frame : {200, 60, 230, 90, 210, 70}) {
        goTo(far = frame);
        if (!player.pictureIsCurrent()) break;
    }
    ASSERT_FALSE(player.pictureIsCurrent());
    for (int at = 0; at < 10; ++at)
        hold(Qt::Key_Left);
    EXPECT_EQ(player.currentFrame(), far) << "no picture, no step";
    EXPECT_SHOWN(far);
    hold(Qt::Key_Left);
    EXPECT_SHOWN(far - 1);
    key(Qt::Key_O);
    const bool shown = isShown(ViewerPanel::options);
    for (int at = 0; at < 3; ++at)
        hold(Qt::Key_O);
    EXPECT_EQ(isShown(ViewerPanel::options), shown);
}

TEST_F(ViewerInputTest, FullScreenIsThePictureAloneAndEscapeBringsEverythingBack) {
    openFrames(48);
    key(Qt::Key_B);
    key(Qt::Key_P);
    preferences.constrainViewerToMovieProportions.set(true);
    enterFullScreen();
    EXPECT_FALSE(isShown(ViewerPanel::bookmarks));
    EXPECT_FALSE(isShown(ViewerPanel::playlistDrawer));
    EXPECT_TRUE(bench::waitUntil([this] { return window->picture()->size() == window->screen()->size(); }));
    EXPECT_FALSE(preferences.constrainViewerToMovieProportions());
    key(Qt::Key_Right);
    EXPECT_SHOWN(2);
    key(Qt::Key_Escape);
    EXPECT_FALSE(window->isFullScreen());
    EXPECT_TRUE(preferences.constrainViewerToMovieProportions());
    EXPECT_TRUE(window->menuBar()->isVisible());
    EXPECT_TRUE(child<QToolBar>("viewerControls")->isVisible());
    key(Qt::Key_Escape); // nothing more
    EXPECT_TRUE(window->isVisible());
    EXPECT_SHOWN(2);
    preferences.constrainViewerToMovieProportions.set(false);
    window->setGeometry({{40, 50}, window->minimumSizeHint().expandedTo({700, 600})});
    ASSERT_TRUE(bench::waitUntil([&] { return window->geometry().topLeft() == QPoint(40, 50); }));
    const QRect before = window->geometry();
    key(Qt::Key_F, Qt::ControlModifier);
    ASSERT_TRUE(bench::waitUntil([this] { return window->isFullScreen(); }, 5000));
    key(Qt::Key_F, Qt::ControlModifier);
    EXPECT_FALSE(window->isFullScreen());
    EXPECT_TRUE(bench::waitUntil([&] { return window->geometry() == before; }, 5000));
}

TEST_F(ViewerInputTest, EdgesShowListAndControlsInFullScreenAndAClickPutsThemAway) {
    openTwo();
    const MovieListOverlay* list = window->fullScreen()->movieList();
    moveMouseTo(rightEdge());
    EXPECT_FALSE(list->isShown()) << "only in full screen";
    preferences.disableRightMouseZone.set(
        true); // before: the pointer may still be at the edge while the window grows
    preferences.disableLowerMouseZone.set(true);
    enterFullScreen();
    for (const QPoint at : {rightEdge(), lowerEdge(), QPoint(2, 200), QPoint(300, 300)})
        moveMouseTo(at);
    EXPECT_FALSE(list->isShown());
    EXPECT_FALSE(isShown(ViewerPanel::controls));
    preferences.disableRightMouseZone.set(false);
    preferences.disableLowerMouseZone.set(false);
    moveMouseTo(rightEdge());
    EXPECT_TRUE(bench::waitUntil([&] { return list->isShown(); }));
    EXPECT_EQ(preferences.restorePlaylistDrawer(), 1);
    EXPECT_TRUE(window->commands().action(QStringLiteral("viewer.playlistDrawer"))->isChecked());
    EXPECT_TRUE(
        bench::waitUntil([&] { return list->geometry().right() == window->picture()->rect().right(); }));
    moveMouseTo(lowerEdge());
    EXPECT_TRUE(bench::waitUntil([&] { return isShown(ViewerPanel::controls); }));
    QTest::mouseClick(window->picture(), Qt::LeftButton, {}, {300, 300});
    EXPECT_FALSE(list->isShown());
    EXPECT_FALSE(isShown(ViewerPanel::controls));
    EXPECT_EQ(preferences.restorePlaylistDrawer(), 0);
    EXPECT_TRUE(bench::waitUntil([&] { return !list->isVisible(); }));
    key(Qt::Key_P); // the same list by its key
    EXPECT_TRUE(list->isShown());
    key(Qt::Key_Escape);
    EXPECT_FALSE(list->isShown());
    EXPECT_FALSE(isShown(ViewerPanel::playlistDrawer));
}

TEST_F(ViewerInputTest, AClickWithAToolPutsListAndControlsAwayToo) {
    openTwo();
    preferences.disableRightMouseZone.set(true);
    preferences.disableLowerMouseZone.set(true);
    enterFullScreen();
    for (const char* tool : {"Scroll", "Draw"}) {
        SCOPED_TRACE(tool);
        controller.drawingTools().chooseInteractiveTool({QLatin1String(tool)});
        panelsOfViewer().show(ViewerPanel::playlistDrawer, true);
        panelsOfViewer().show(ViewerPanel::controls, true);
        ASSERT_TRUE(window->fullScreen()->movieList()->isShown());
        QTest::mouseClick(window->picture(), Qt::LeftButton, {}, {300, 300});
        EXPECT_FALSE(window->fullScreen()->movieList()->isShown());
        EXPECT_FALSE(isShown(ViewerPanel::controls));
    }
}

TEST_F(ViewerInputTest, FullScreenByTheWindowManagerPutsDrawerAndListAwayLikeItsKey) {
    preferences.panelsReturnFromFullScreen.set(false);
    openTwo();
    key(Qt::Key_P);
    key(Qt::Key_N);
    ToolPanel* drawer = window->findChild<ViewerPanelHost*>()->window(ViewerPanel::playlistDrawer);
    ASSERT_TRUE(drawer->isVisible());
    window->setWindowState(window->windowState() | Qt::WindowFullScreen);
    ASSERT_TRUE(bench::waitUntil([this] { return window->isFullScreen(); }));
    EXPECT_FALSE(drawer->isVisible());
    EXPECT_FALSE(isShown(ViewerPanel::notes));
    EXPECT_FALSE(isShown(ViewerPanel::playlistDrawer));
    EXPECT_EQ(preferences.restorePlaylistDrawer(), 0);
    const MovieListOverlay* list = window->fullScreen()->movieList();
    key(Qt::Key_P);
    EXPECT_TRUE(list->isShown());
    EXPECT_FALSE(drawer->isVisible());
    window->setWindowState(window->windowState() & ~Qt::WindowFullScreen);
    ASSERT_TRUE(bench::waitUntil([this] { return !window->isFullScreen(); }));
    EXPECT_FALSE(list->isShown());
    EXPECT_FALSE(drawer->isVisible());
    EXPECT_FALSE(isShown(ViewerPanel::playlistDrawer));
    EXPECT_TRUE(bench::waitUntil([&] { return !list->isVisible(); }));
}

TEST_F(ViewerInputTest, PointerHidesInFullScreenUntilItMoves) {
    openFrames(48);
    enterFullScreen();
    QTest::mouseMove(window->windowHandle(), {400, 400});
    QTest::mouseMove(window->windowHandle(), {420, 430});
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    QTest::mouseClick(window->picture(), Qt::LeftButton, {}, {420, 430});
    ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::BlankCursor);
    QTest::mouseMove(window->windowHandle(), {440, 300});
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    key(Qt::Key_J);
    EXPECT_NE(QGuiApplication::overrideCursor(), nullptr) << "a run begins";
    QTest::mouseMove(window->windowHandle(), {420, 320});
    key(Qt::Key_K);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    QTest::mouseMove(window->windowHandle(), {440, 300});
    QTest::mouseClick(window->picture(), Qt::LeftButton, {}, {440, 300});
    key(Qt::Key_Escape);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(ViewerInputTest, WithHotkeysOffInFullScreenOnlyEscapeWorks) {
    openFrames(48);
    preferences.disableHotkeysInFullScreenMode.set(true);
    key(Qt::Key_Right);
    EXPECT_SHOWN(2);
    enterFullScreen();
    for (const Qt::Key pressed : {Qt::Key_Space, Qt::Key_Right, Qt::Key_Semicolon, Qt::Key_B, Qt::Key_I})
        key(pressed);
    EXPECT_FALSE(transport.isRunning());
    EXPECT_TRUE(first->bookmarkStore.empty());
    EXPECT_SHOWN(2);
    key(Qt::Key_Escape);
    EXPECT_FALSE(window->isFullScreen());
    key(Qt::Key_Semicolon);
    EXPECT_EQ(first->bookmarkStore.size(), 1U);
}

TEST_F(ViewerInputTest, FloatingTimecodeFollowsThePictureAndItsFiguresTheWindow) {
    openFrames(48);
    FloatingTimecode* floating = window->findChild<FloatingTimecode*>();
    preferences.displayTimecode.set(true);
    EXPECT_FALSE(floating->isVisible());
    EXPECT_FALSE(window->picture()->scene().readOuts.timecode.isEmpty());
    preferences.timecodeDisplayType.set(TimecodePlace::floating);
    ASSERT_TRUE(floating->isVisible());
    EXPECT_TRUE(window->picture()->scene().readOuts.timecode.isEmpty());
    key(Qt::Key_Right);
    EXPECT_SHOWN(2);
    EXPECT_EQ(floating->field()->text(), time.currentTimeCodeForDisplay());
    EXPECT_TRUE(floating->field()->text().endsWith(QStringLiteral("00:00:00:01")));
    floating->resize(800, 120);
    ASSERT_TRUE(bench::waitUntil([&] { return floating->field()->height() == 120; }));
    EXPECT_DOUBLE_EQ(floating->field()->font().pointSizeF(), 68.0);
    floating->resize(200, 90); // no narrower than its text
    ASSERT_TRUE(bench::waitUntil([&] { return floating->field()->height() == 90; }));
    const auto fits = [&] {
        const QFontMetrics figures(floating->field()->font());
        return floating->width() >= figures.horizontalAdvance(QStringLiteral("TC 00:00:00:00")) &&
               floating->height() >= figures.height();
    };
    EXPECT_TRUE(bench::waitUntil(fits)) << floating->width();
    floating->resize(800, 120);
    QTest::keyClick(floating, Qt::Key_Period);
    EXPECT_SHOWN(48);
    preferences.displayTimecode.set(false);
    EXPECT_FALSE(floating->isVisible());
    preferences.displayTimecode.set(true);
    EXPECT_EQ(floating->size(), QSize(800, 120));
    key(Qt::Key_W, Qt::ControlModifier);
    EXPECT_FALSE(floating->isVisible());
}

TEST_F(ViewerInputTest, TheFloatingTimecodeKeepsToItsPreferenceFromTheFirstPictureOn) {
    preferences.displayTimecode.set(true);
    FloatingTimecode* floating = window->findChild<FloatingTimecode*>();
    bool seen = false;
    const auto watch = connectWatcher([&] { seen = seen || floating->isVisible(); });
    openTwo();
    transport.displayNextMovie();
    ASSERT_TRUE(settled());
    EXPECT_FALSE(seen || floating->isVisible());
    EXPECT_TRUE(window->picture()->scene().readOuts.timecode.endsWith(QStringLiteral("00:00:00:00")));
    window->close();
    QObject::disconnect(watch);
    preferences.timecodeDisplayType.set(TimecodePlace::floating);
    show({first});
    EXPECT_TRUE(floating->isVisible());
    EXPECT_TRUE(floating->field()->text().endsWith(QStringLiteral("00:00:00:00")));
    EXPECT_TRUE(window->picture()->scene().readOuts.timecode.isEmpty());
}

TEST_F(ViewerInputTest, ReadOutsHaveTheColourOfThePreference) {
    openFrames(48);
    preferences.onscreenTextColour.set(QColor(0, 255, 255));
    preferences.displayFrameCounter.set(true);
    const QImage shown =
        renderScene(controller.scene().scene(), window->picture()->size()).copy(0, 0, 200, 60);
    bool found = false;
    for (int y = 0; y < shown.height(); ++y)
        for (int x = 0; x < shown.width(); ++x)
            found = found || shown.pixelColor(x, y) == QColor(0, 255, 255);
    EXPECT_TRUE(found);
}

TEST_F(ViewerInputTest, PageOfKeysNamesEveryCommandThatHasOne) {
    const Commands& commands = window->commands();
    const KeysDialog page(commands, viewerMenus(), QStringLiteral("Keys"), window.get());
    QStringList keys;
    for (int row = 0; row < page.table()->rowCount(); ++row)
        if (const auto* item = page.table()->item(row, 1)) keys << item->text().trimmed();
    int expected = 0;
    for (const Command& command : viewerTable()) {
        if (command.keys.empty()) continue;
        ++expected;
        EXPECT_TRUE(keys.contains(commands.keys().label(command.id))) << qPrintable(command.id);
    }
    EXPECT_EQ(keys.size(), expected);
    for (const char* key : {"Space / Ctrl+Space", "J / Down", "K", "L / Up", "[", "]", "A", "C", "O", "P", "N", "D", "T", "F",
                            "B", "S", "H", "Esc", ";", "'", ", / Home", ". / End", "F11 / Ctrl+F"})
        EXPECT_EQ(keys.count(QLatin1String(key)), 1) << key;
    const QAction* bookmark = commands.action(QStringLiteral("viewer.addBookmark"));
    EXPECT_TRUE(bookmark->shortcuts().isEmpty()) << "goes by its place";
    EXPECT_TRUE(bookmark->toolTip().contains(QStringLiteral("(;)")));
}

} // namespace daylark
