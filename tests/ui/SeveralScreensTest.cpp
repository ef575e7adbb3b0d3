#include "ViewerWindowFixture.h"

#include "ui/viewer/FullScreen.h"
#include "ui/viewer/LostScreens.h"

#include <QMenu>
#include <QProcess>
#include <QScreen>

namespace daylark {

/// Runs where the display has been split into two screens beside each other; a screen goes away and comes
/// back by the display's own tool.
class SeveralScreensTest : public ViewerWindowFixture {
protected:
    void SetUp() override {
        if (QGuiApplication::screens().size() != 2) GTEST_SKIP() << "needs two screens";
        right = rightScreen();
        openFrames(48);
        window->resize(900, 640);
    }
    void TearDown() override {
        if (right.isNull()) return; // skipped
        window->fullScreen()->leave();
        if (QGuiApplication::screens().size() == 1) {
            xrandr({QStringLiteral("--setmonitor"), QStringLiteral("RIGHT"),
                    QStringLiteral("960/250x1080/280+960+0"), QStringLiteral("none")});
            EXPECT_TRUE(bench::waitUntil([] { return QGuiApplication::screens().size() == 2; }));
        }
    }
    static void xrandr(const QStringList& arguments) {
        EXPECT_EQ(QProcess::execute(QStringLiteral("xrandr"), arguments), 0);
    }
    static void takeRightScreenAway() {
        xrandr({QStringLiteral("--delmonitor"), QStringLiteral("RIGHT")});
        ASSERT_TRUE(bench::waitUntil([] { return QGuiApplication::screens().size() == 1; }));
    }
    static QRect leftScreen() { return QGuiApplication::primaryScreen()->geometry(); }
    static QRect rightScreen() { return QGuiApplication::screens().back()->geometry(); }
    void putOnRightScreen() {
        const QPoint there = right.topLeft() + QPoint(40, 60);
        window->move(there);
        ASSERT_TRUE(bench::waitUntil([&] { return right.contains(window->geometry()); }));
    }
    [[nodiscard]] bool fills(const QRect& screen) {
        return bench::waitUntil([&] {
            return window->isFullScreen() && window->geometry() == screen &&
                   window->picture()->mapToGlobal(QPoint()) == screen.topLeft() &&
                   window->picture()->size() == screen.size();
        });
    }
    /// It has its say after the window has: frame, proportions, state.
    static void letTheWindowManagerSettle() { QTest::qWait(400); }
    QRect right;
};

TEST_F(SeveralScreensTest, FullScreenFillsTheScreenOfTheWindowOrTheOneChosen) {
    putOnRightScreen();
    letTheWindowManagerSettle();
    const QRect before = window->geometry();
    key(Qt::Key_F11);
    EXPECT_TRUE(fills(right));
    key(Qt::Key_Escape);
    EXPECT_TRUE(bench::waitUntil([&] { return window->geometry() == before; }));
    letTheWindowManagerSettle();
    QMenu* screens = window->fullScreen()->screensMenu();
    ASSERT_TRUE(screens->menuAction()->isVisible());
    Q_EMIT screens->aboutToShow();
    ASSERT_EQ(screens->actions().size(), 2);
    EXPECT_TRUE(screens->actions().back()->isChecked());
    screens->actions().front()->trigger();
    EXPECT_TRUE(fills(leftScreen()));
    key(Qt::Key_Escape);
    EXPECT_TRUE(bench::waitUntil([&] { return window->geometry() == before; })) << "where it came from";
}

TEST_F(SeveralScreensTest, AScreenThatGoesAwayLeavesThePictureFullOnTheOther) {
    putOnRightScreen();
    key(Qt::Key_F11);
    ASSERT_TRUE(fills(right));
    takeRightScreenAway();
    const auto at = [](const QRect& rect) {
        return testing::Message() << rect.x() << "," << rect.y() << " " << rect.width() << "x" << rect.height();
    };
    EXPECT_TRUE(fills(leftScreen())) << at(window->geometry()) << ", picture "
                                     << at({window->picture()->mapToGlobal(QPoint()), window->picture()->size()})
                                     << ", full screen " << window->isFullScreen() << ", screen "
                                     << at(window->screen()->geometry());
    EXPECT_FALSE(window->fullScreen()->screensMenu()->menuAction()->isVisible());
    key(Qt::Key_Escape);
    EXPECT_TRUE(bench::waitUntil(
        [&] { return !window->isFullScreen() && leftScreen().contains(window->geometry()); }));
}

TEST_F(SeveralScreensTest, WindowsOnAScreenThatGoesAwayComeBackShownOrNot) {
    const LostScreens lost;
    putOnRightScreen();
    takeRightScreenAway();
    EXPECT_TRUE(bench::waitUntil([&] { return leftScreen().contains(window->geometry()); }));
    TearDown();
    putOnRightScreen();
    window->close();
    takeRightScreenAway();
    show({first});
    EXPECT_TRUE(bench::waitUntil([&] { return leftScreen().contains(window->geometry()); }));
    EXPECT_SHOWN(1);
}

TEST_F(SeveralScreensTest, AWindowRememberedOnAScreenThatIsGoneOpensOnOneThatIsThere) {
    putOnRightScreen();
    window->close();
    takeRightScreenAway();
    window.reset();
    window = std::make_unique<ViewerWindow>(controller); // the next start
    show({first});
    EXPECT_TRUE(bench::waitUntil([&] { return leftScreen().contains(window->geometry()); }));
    EXPECT_SHOWN(1);
}

} // namespace daylark
