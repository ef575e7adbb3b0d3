#include "ViewerWindowFixture.h"

#include "ui/panels/BookmarkPanel.h"
#include "ui/panels/BookmarkTable.h"
#include "ui/controls/PositionSlider.h"
#include "ui/controls/VolumeButton.h"

#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QSlider>
#include <QTableView>
#include <QToolButton>

namespace daylark {

class ViewerTransportTest : public ViewerWindowFixture {};

TEST_F(ViewerTransportTest, StepKeysShowExactlyTheFrameOfTheCounter) {
    openFrames(48);
    EXPECT_SHOWN(1);
    for (int step = 0; step < 5; ++step)
        key(Qt::Key_Right);
    EXPECT_SHOWN(6);
    key(Qt::Key_Left);
    EXPECT_SHOWN(5);
    key(Qt::Key_End);
    EXPECT_SHOWN(48);
    key(Qt::Key_Right); // past the last: the first
    EXPECT_SHOWN(1);
    key(Qt::Key_Left);
    EXPECT_SHOWN(48);
    key(Qt::Key_Home);
    EXPECT_SHOWN(1);
}

TEST_F(ViewerTransportTest, SpaceAndShuttleKeysRunAndStop) {
    openFrames(48);
    key(Qt::Key_Space);
    EXPECT_TRUE(transport.movieIsPlayingForwards());
    key(Qt::Key_Space);
    EXPECT_FALSE(transport.isRunning());
    key(Qt::Key_L);
    key(Qt::Key_L);
    EXPECT_FLOAT_EQ(player.rate(), 3);
    EXPECT_TRUE(child<QLabel>("rate")->text().contains(QStringLiteral("3.0")));
    key(Qt::Key_J);
    EXPECT_TRUE(transport.movieIsPlayingBackwards());
    key(Qt::Key_K);
    EXPECT_FALSE(transport.isRunning());
    key(Qt::Key_Up);
    EXPECT_TRUE(transport.movieIsPlayingForwards());
    key(Qt::Key_Right); // a step while playing only stops
    EXPECT_FALSE(transport.isRunning());
}

TEST_F(ViewerTransportTest, PageKeysChangeTheMovieAndTheTitle) {
    openTwo();
    EXPECT_EQ(window->windowTitle(), first->filenameString);
    key(Qt::Key_PageDown);
    ASSERT_TRUE(settled());
    EXPECT_EQ(controller.currentMovie(), second);
    EXPECT_EQ(window->windowTitle(), second->filenameString);
    EXPECT_FALSE(window->commands().action(QStringLiteral("viewer.nextMovie"))->isEnabled());
    key(Qt::Key_PageUp);
    ASSERT_TRUE(settled());
    EXPECT_EQ(controller.currentMovie(), first);
}

TEST_F(ViewerTransportTest, SliderSnapsToTheFrameUnderThePointer) {
    openFrames(48);
    PositionSlider* slider = window->slider();
    const auto at = [&](int frame) {
        return QPoint(slider->xOf(double(player.index().timeOf(frame - 1).value)) + 3, slider->height() / 3);
    };
    QTest::mouseClick(slider, Qt::LeftButton, {}, at(20));
    EXPECT_SHOWN(20);
    EXPECT_EQ(slider->value(), 20);
    QTest::mousePress(slider, Qt::LeftButton, {}, at(30));
    QTest::mouseMove(slider, at(41));
    EXPECT_SHOWN(41);
    QTest::mouseMove(slider, QPoint(slider->width() + 200, 10));
    QTest::mouseRelease(slider, Qt::LeftButton, {}, at(48));
    EXPECT_SHOWN(48);
}

TEST_F(ViewerTransportTest, TheSliderLeavesNoBookmarkSelected) {
    openFrames(48);
    bookmarks.addBookmark();
    QTableView* table = window->bookmarks()->table();
    table->selectRow(0);
    ASSERT_TRUE(window->bookmarks()->selectedBookmark());
    QTest::mouseClick(window->slider(), Qt::LeftButton, {}, QPoint(300, 10));
    EXPECT_FALSE(window->bookmarks()->selectedBookmark());
    EXPECT_FALSE(table->selectionModel()->hasSelection());
}

TEST_F(ViewerTransportTest, CopyTimecodeIsInTheMenuAndCopiesNothing) {
    openFrames(48);
    pasteboard.content = QStringLiteral("before");
    QAction* copy = window->commands().action(QStringLiteral("viewer.copyTimecode"));
    EXPECT_TRUE(copy->isEnabled());
    copy->trigger();
    EXPECT_EQ(pasteboard.content, QStringLiteral("before"));
    const auto places = copy->associatedObjects();
    EXPECT_TRUE(
        std::any_of(places.begin(), places.end(), [](QObject* at) { return qobject_cast<QMenu*>(at); }));
}

TEST_F(ViewerTransportTest, DraggingPausesAndALongMovieHasNoTicksToSnapTo) {
    openFrames(240);
    key(Qt::Key_Space);
    PositionSlider* slider = window->slider();
    QTest::mouseClick(slider, Qt::LeftButton, {}, QPoint(slider->width() / 2, 10));
    EXPECT_FALSE(transport.isRunning());
    const double there = slider->ticksAt(slider->width() / 2);
    EXPECT_SHOWN(
        int(player.index().frameAt({qint64(there) + player.index().step / 2, player.index().timeScale})) + 1);
    key(Qt::Key_Space);
    EXPECT_TRUE(bench::waitUntil([&] { return player.isRolling(); })) << "the hand has let go";
}

TEST_F(ViewerTransportTest, AStripUnderTheTrackShowsWhichFramesAreReady) {
    openFrames(240);
    PositionSlider* slider = window->slider();
    const auto stripAt = [&](int frame) {
        const int x = slider->xOf(double(player.index().timeOf(frame - 1).value));
        const QImage picture = slider->grab().toImage();
        return picture.pixelColor(int(x * picture.devicePixelRatio()), int(16 * picture.devicePixelRatio()));
    };
    const auto isReady = [&](int frame) {
        const auto ticks = double(player.index().timeOf(frame - 1).value);
        return std::any_of(slider->ready().begin(), slider->ready().end(),
                           [&](const auto& range) { return range.first <= ticks && ticks < range.second; });
    };
    const QColor bare = stripAt(200);
    goTo(100);
    ASSERT_TRUE(bench::waitUntil([&] { return isReady(103); }));
    EXPECT_NE(stripAt(103), bare);
    EXPECT_EQ(stripAt(200), bare);
    goTo(194);
    ASSERT_TRUE(bench::waitUntil([&] { return isReady(200); }));
    EXPECT_EQ(stripAt(200), stripAt(103));
}

TEST_F(ViewerTransportTest, AllSixRepeatModesAreChosenByThePopUpAndInTheMenu) {
    openFrames(48);
    const QString playback = QStringLiteral("&Playback");
    QMenu* menu = nullptr;
    const auto titles = window->menuBar()->actions();
    for (QAction* title : titles)
        if (title->text() == playback) menu = title->menu()->actions().back()->menu();
    ASSERT_TRUE(menu);
    EXPECT_EQ(menu, child<QToolButton>("repeatPopUp")->menu());
    const auto modes = menu->actions();
    ASSERT_EQ(modes.size(), 6);
    for (QAction* mode : modes) {
        menu->popup(window->mapToGlobal(QPoint(60, 60)));
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(mode).center());
        EXPECT_EQ(preferences.repeatType.text(), mode->text());
        EXPECT_TRUE(mode->isChecked());
        EXPECT_TRUE(child<QToolButton>("repeatPopUp")->text().endsWith(mode->text()));
    }
}

TEST_F(ViewerTransportTest, VolumeSliderSetsThePlayerAndAnyTransportActionHidesIt) {
    openFrames(48);
    QTest::mouseClick(child<QToolButton>("volume"), Qt::LeftButton);
    auto* slider = child<QSlider>("volumeSlider");
    ASSERT_TRUE(slider->isVisible());
    slider->setValue(80);
    EXPECT_NEAR(player.volume(), 0.8, 1e-6);
    EXPECT_NEAR(preferences.volume(), 0.8, 1e-6);
    key(Qt::Key_Right);
    EXPECT_TRUE(bench::waitUntil([slider] { return !slider->isVisible(); })); // fades
    EXPECT_SHOWN(2);
}

TEST(VolumeIcon, ChangesAtItsThresholds) {
    EXPECT_EQ(VolumeButton::iconName(0), QStringLiteral("dl-volume-01.png"));
    EXPECT_EQ(VolumeButton::iconName(0.3499F), QStringLiteral("dl-volume-02.png"));
    EXPECT_EQ(VolumeButton::iconName(0.35F), QStringLiteral("dl-volume-03.png"));
    EXPECT_EQ(VolumeButton::iconName(0.8F), QStringLiteral("dl-volume-04.png"));
    EXPECT_TRUE(VolumeButton::iconName(-1).isEmpty());
}

TEST_F(ViewerTransportTest, AMissingFileIsSaidCalmlyAndTheNextMovieStillShows) {
    first = record(QStringLiteral("/nowhere/lost.mov"));
    second = record(bench::movie({.frames = 48, .group = 12}));
    controller.open({first, second}, 0);
    ASSERT_TRUE(bench::waitUntil([&] { return !alerts.shown.empty(); }));
    EXPECT_TRUE(window->picture()->scene().readOuts.message.contains(QStringLiteral("lost.mov")));
    EXPECT_TRUE(window->picture()->pictureRect().isEmpty());
    EXPECT_FALSE(window->slider()->isEnabled());
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    key(Qt::Key_PageDown);
    EXPECT_SHOWN(1);
    EXPECT_TRUE(window->picture()->scene().readOuts.message.isEmpty());
}

} // namespace daylark
