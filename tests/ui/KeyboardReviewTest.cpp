#include "ViewerWindowFixture.h"

#include "support/Robot.h"
#include "ui/panels/BookmarkPanel.h"
#include "ui/panels/BookmarkRows.h"
#include "ui/panels/BookmarkTable.h"
#include "ui/viewer/FullScreen.h"

#include <QLineEdit>
#include <QProcess>
#include <QScreen>
#include <QTemporaryDir>

namespace daylark {

/// A review by keyboard alone, by keys that go through the X server as a person's do. Its steps are kept as
/// pictures in the folder that DAYLARK_REVIEW_SHOTS names.
class KeyboardReviewTest : public ViewerWindowFixture {
protected:
    void SetUp() override {
        if (QGuiApplication::platformName() != QLatin1String("xcb")) GTEST_SKIP() << "needs an X server";
        openReview();
    }
    void TearDown() override { layout(QStringLiteral("us")); }

    void openReview() {
        MovieSpec spec;
        spec.path = folder.filePath(QStringLiteral("sc042_take3_v007.mov"));
        spec.size = QSize(960, 540);
        spec.frames = 96;
        spec.groupSize = 12;
        spec.timecode = QStringLiteral("01:00:10:00");
        ASSERT_TRUE(makeMovie(spec));
        first = record(spec.path);
        preferences.displayFrameCounter.set(true);
        preferences.displayTimecode.set(true);
        preferences.displayFilename.set(true);
        preferences.bookmarkDuration.set(12);
        show({first});
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
        ASSERT_TRUE(robot.waitFor([this] { return window->picture()->hasFocus(); }));
    }
    static void layout(const QString& name) { QProcess::execute(QStringLiteral("setxkbmap"), {name}); }
    void press(const char* key) { robot.key(QLatin1String(key)); }
    [[nodiscard]] bool shows(int frame) {
        return robot.waitFor([&] { return pictureOnScreen() == frame && counterOnStrip() == frame; });
    }
    void keep(const char* step) {
        const QString into = qEnvironmentVariable("DAYLARK_REVIEW_SHOTS");
        if (into.isEmpty()) return;
        robot.rest(250);
        EXPECT_TRUE(robot.shot(QStringLiteral("%1/%2.png").arg(into, QLatin1String(step))));
    }
    [[nodiscard]] const Bookmark& bookmark(size_t at) const { return *first->bookmarkStore.at(at); }

    QTemporaryDir folder;
    demo::Robot robot;
};

TEST_F(KeyboardReviewTest, BookmarksAreMadeNamedVisitedLoopedAndTheMovieFlaggedWithoutAMouse) {
    EXPECT_TRUE(shows(1));
    keep("01_opened");
    press("space");
    ASSERT_TRUE(robot.waitFor([this] { return player.isRolling(); }));
    clock.now += qint64(1000) * 1000 * 1000;
    player.tick();
    press("space");
    ASSERT_TRUE(robot.waitFor([this] { return !transport.isRunning() && settled(); }));
    EXPECT_TRUE(shows(int(player.currentFrame())));
    EXPECT_GT(player.currentFrame(), 12);
    press("comma");
    EXPECT_TRUE(shows(1));
    for (int step = 0; step < 9; ++step)
        press("Right");
    EXPECT_TRUE(shows(10));

    press("semicolon");
    ASSERT_TRUE(robot.waitFor([this] { return first->bookmarkStore.size() == 1; }));
    EXPECT_EQ(bookmark(0).firstFrame, 10);
    EXPECT_EQ(bookmark(0).lastFrame, 21);
    press("F2");
    ASSERT_TRUE(
        robot.waitFor([] { return qobject_cast<QLineEdit*>(QApplication::focusWidget()) != nullptr; }));
    robot.type(QStringLiteral("boom in shot; fix"));
    keep("02_typing");
    press("Return");
    EXPECT_TRUE(
        robot.waitFor([this] { return bookmark(0).overlayString == QLatin1String("boom in shot; fix"); }));
    EXPECT_FALSE(transport.isRunning());
    EXPECT_EQ(window->picture()->scene().readOuts.overlayText, QStringLiteral("boom in shot; fix"));
    press("period"); // from the panel
    EXPECT_TRUE(shows(96));
    for (int step = 0; step < 26; ++step)
        press("Left");
    EXPECT_TRUE(shows(70));
    press("semicolon");
    ASSERT_TRUE(robot.waitFor([this] { return first->bookmarkStore.size() == 2; }));
    press("comma");
    EXPECT_TRUE(shows(1));
    press("ctrl+Right");
    EXPECT_TRUE(shows(10));
    keep("03_first_bookmark");
    press("ctrl+Right");
    EXPECT_TRUE(shows(70));
    press("ctrl+Left");
    EXPECT_TRUE(shows(10));

    press("ctrl+l");
    EXPECT_TRUE(robot.waitFor([this] { return bookmark(0).loopStatus; }));
    EXPECT_TRUE(controller.range().isLooping());
    keep("04_looping");
    press("ctrl+l");
    EXPECT_TRUE(robot.waitFor([this] { return !bookmark(0).loopStatus; }));
    press("ctrl+4");
    EXPECT_TRUE(robot.waitFor([this] { return first->flagString == QLatin1String("904"); }));

    press("b"); // away again
    EXPECT_TRUE(robot.waitFor([this] { return !controller.panels().isVisible(ViewerPanel::bookmarks); }));
    const QSize before = window->size();
    press("F11");
    ASSERT_TRUE(robot.waitFor(
        [this] { return window->isFullScreen() && window->picture()->size() == window->screen()->size(); }));
    EXPECT_TRUE(shows(10));
    press("p");
    EXPECT_TRUE(robot.waitFor([this] { return controller.panels().isVisible(ViewerPanel::playlistDrawer); }));
    press("f");
    EXPECT_TRUE(robot.waitFor([this] { return controller.panels().isVisible(ViewerPanel::controls); }));
    keep("05_full_screen");
    press("Right");
    EXPECT_TRUE(shows(11));
    press("Escape");
    ASSERT_TRUE(robot.waitFor([&] { return !window->isFullScreen() && window->size() == before; }));
    EXPECT_TRUE(shows(11));
    EXPECT_FALSE(controller.panels().isVisible(ViewerPanel::controls));
    keep("06_back");
    press("F1");
    robot.rest(300);
    keep("07_keys");
    press("Escape");
    press("ctrl+w");
    EXPECT_TRUE(robot.waitFor([this] { return !window->isVisible(); }));
}

TEST_F(KeyboardReviewTest, KeysGoByTheirPlaceOnAFrenchKeyboard) {
    layout(QStringLiteral("fr"));
    robot.rest(200);
    controller.grade().setValue(ViewerGrade::exposure, 0.5); // a neutral grade is always on
    const bool applied = controller.grade().isApplied();
    press("24"); // prints A, lies at Q
    robot.rest(100);
    EXPECT_EQ(controller.grade().isApplied(), applied);
    press("38"); // prints Q, lies at A
    EXPECT_TRUE(robot.waitFor([&] { return controller.grade().isApplied() != applied; }));
    press("47"); // prints M, lies at the semicolon
    EXPECT_TRUE(robot.waitFor([this] { return first->bookmarkStore.size() == 1; }));
    press("60"); // prints a colon, lies at the full stop
    EXPECT_TRUE(shows(96));
}

} // namespace daylark
