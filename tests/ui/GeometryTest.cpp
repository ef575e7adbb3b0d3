#include "ui/ViewerWindowFixture.h"

#include "picture/scene/DisplayGeometry.h"
#include "ui/controls/ZoomButton.h"

#include <QLabel>
#include <QMenu>
#include <QScreen>
#include <QSet>
#include <QTemporaryDir>
#include <QToolButton>
#include <QWheelEvent>

#include <algorithm>

namespace daylark {
namespace {

class GeometryTest : public ViewerWindowFixture {
protected:
    void open() {
        openFrames(24);
        ASSERT_EQ(pictureOnScreen(), 1);
    }
    void trigger(const char* id) {
        window->commands().action(QLatin1String(id))->trigger();
        QCoreApplication::processEvents();
    }
    QSize area() const { return window->picture()->size(); }
    QRect screenRoom() const { return window->screen()->availableGeometry(); }
};

TEST_F(GeometryTest, WindowSizesAreThoseOfThePictureAndNeverLeaveTheScreen) {
    open();
    const QPoint corner = window->geometry().topLeft();
    // 256 x 144: narrower than the narrowest window.
    for (const char* size : {"viewer.windowActual", "viewer.windowHalf", "viewer.windowThird"}) {
        window->resize(1000, 800);
        trigger(size);
        EXPECT_EQ(area(), QSize(440, 247)) << size;
        EXPECT_EQ(window->width(), 440);
        EXPECT_EQ(window->geometry().topLeft(), corner);
    }
    // The strip has folded; what is left of it lies within the window.
    for (QWidget* control : window->transportBar()->findChildren<QWidget*>()) {
        if (!control->isVisible()) continue;
        EXPECT_LE(control->mapTo(window.get(), QPoint(control->width(), 0)).x(), 440)
            << qPrintable(control->objectName());
    }
    EXPECT_FALSE(child<QWidget>("counter")->isHidden());
    window->resize(1700, 900);
    QCoreApplication::processEvents();
    EXPECT_FALSE(child<QWidget>("repeatPopUp")->isHidden());

    // As large as the screen or larger, and placed far below it.
    controller.geometry().setPictureSize({2048, 1152});
    trigger("viewer.windowActual");
    EXPECT_TRUE(screenRoom().contains(window->geometry()));
    EXPECT_EQ(window->frameGeometry().width(), std::min(2048, screenRoom().width()));
    trigger("viewer.windowHalf");
    const int frame = window->frameGeometry().width() - window->width();
    EXPECT_EQ(area().width(), std::min(1024, screenRoom().width() - frame));
    preferences.panelLayout1.viewerWidth.set(600);
    preferences.panelLayout1.viewerHeight.set(500);
    preferences.panelLayout1.viewerX.set(40);
    preferences.panelLayout1.viewerY.set(50);
    trigger("viewer.windowFavourite");
    EXPECT_EQ(window->geometry().topLeft(), QPoint(40, 50));
    EXPECT_EQ(window->size(), QSize(600, 500));
}

TEST_F(GeometryTest, WhatTheStripHasNoRoomForStandsBehindMore) {
    open();
    auto* more = child<QToolButton>("moreControls");
    window->resize(1700, 900);
    QCoreApplication::processEvents();
    EXPECT_TRUE(more->isHidden());
    QSet<const QToolButton*> nothingThere; // hidden for other reasons
    const auto all = window->transportBar()->findChildren<QToolButton*>(Qt::FindDirectChildrenOnly);
    for (const QToolButton* button : all)
        if (button->isHidden()) nothingThere.insert(button);
    for (const int width : {1000, 918, 700, 440}) {
        SCOPED_TRACE(width);
        window->resize(width, 700);
        QCoreApplication::processEvents();
        const QWidget* bar = window->transportBar();
        EXPECT_TRUE(more->isVisible());
        EXPECT_LE(more->geometry().right(), bar->width());
        Q_EMIT more->menu()->aboutToShow();
        const QList<QAction*> behind = more->menu()->actions();
        const auto direct = bar->findChildren<QToolButton*>(Qt::FindDirectChildrenOnly);
        for (const QToolButton* button : direct) {
            if (!button->isHidden() || button == more || nothingThere.contains(button)) continue;
            QAction* entry = button->menu() ? button->menu()->menuAction() : button->defaultAction();
            EXPECT_TRUE(behind.contains(entry)) << qPrintable(button->accessibleName());
            EXPECT_FALSE(entry->text().isEmpty());
        }
        qsizetype lines = 0;
        const auto readOuts = bar->findChildren<QLabel*>(Qt::FindDirectChildrenOnly);
        for (const QLabel* readOut : readOuts)
            lines += readOut->isHidden();
        EXPECT_EQ(std::count_if(behind.begin(), behind.end(), [](const QAction* line) { return line->text().contains(u": "); }),
                  lines);
    }
    QAction* notes = window->commands().action(QStringLiteral("viewer.notes"));
    ASSERT_TRUE(more->menu()->actions().contains(notes));
    more->menu()->popup(more->mapToGlobal(QPoint()));
    QTest::mouseClick(more->menu(), Qt::LeftButton, {}, more->menu()->actionGeometry(notes).center());
    EXPECT_TRUE(controller.panels().isVisible(ViewerPanel::notes));
}

TEST_F(GeometryTest, ShiftAndTheWheelZoomAtThePointer) {
    open();
    const QPointF at = window->picture()->pictureRect().topLeft() + QPointF(90, 60);
    const auto turn = [&](int notches) {
        QWheelEvent event(at, window->picture()->mapToGlobal(at), {}, {0, 120 * notches}, Qt::NoButton, Qt::ShiftModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(window->picture(), &event);
    };
    const auto under = [&] { return controller.scene().scene().mapping().toMovie(at); };
    const QPointF detail = under();
    const double wide = controller.geometry().geometry().viewerScaleX();
    turn(1);
    turn(2);
    EXPECT_NEAR(controller.geometry().geometry().viewerScaleX(), wide * 1.2 * 1.2 * 1.2, 1e-6);
    EXPECT_NEAR(under().x(), detail.x(), 0.5);
    EXPECT_NEAR(under().y(), detail.y(), 0.5);
    EXPECT_EQ(player.currentFrame(), 1);
    trigger("viewer.fit");
    controller.drawingTools().chooseInteractiveTool({QStringLiteral("Draw")});
    turn(1);
    EXPECT_TRUE(controller.drawingTools().isDrawMode()) << "a pen in hand stays there";
    preferences.wheelZoomsWithShift.set(false);
    const double before = controller.geometry().geometry().viewerScaleX();
    turn(-1);
    EXPECT_EQ(controller.geometry().geometry().viewerScaleX(), before);
    EXPECT_EQ(player.currentFrame(), 2);
}

TEST_F(GeometryTest, VersionsAreComparedAtTheSameFrameAndPlace) {
    preferences.constrainViewerToMovieProportions.set(false); // another window is another place
    openTwo();
    preferences.loadFrame.set(StartFrame::sameFrame);
    goTo(17);
    ASSERT_TRUE(settled());
    trigger("viewer.zoomIn");
    trigger("viewer.zoomIn");
    controller.geometry().panBy(QPointF(-300, 40));
    const QRectF view = controller.geometry().geometry().view();
    for (const auto pressed : {Qt::Key_PageDown, Qt::Key_PageUp}) {
        key(pressed);
        ASSERT_TRUE(settled());
        EXPECT_EQ(controller.currentMovie(), pressed == Qt::Key_PageDown ? second : first);
        EXPECT_EQ(player.currentFrame(), 17);
        EXPECT_EQ(controller.geometry().geometry().view(), view);
    }
    preferences.loadFrame.set(StartFrame::first);
    key(Qt::Key_PageDown);
    ASSERT_TRUE(settled());
    EXPECT_EQ(player.currentFrame(), 1);
    EXPECT_TRUE(controller.geometry().geometry().isFitted());
}

TEST_F(GeometryTest, ASnapshotOfThePictureHasItsSizeAndNoBars) {
    open();
    window->resize(900, 900); // wide bars above and below
    preferences.constrainViewerToMovieProportions.set(false);
    QCoreApplication::processEvents();
    const Scene alone = filledByPicture(controller.scene().scene());
    const QImage picture = renderScene(alone, alone.frame.displaySize());
    EXPECT_EQ(picture.size(), QSize(256, 144));
    EXPECT_EQ(readBarCode(picture).value_or(-1), 1);
    QTemporaryDir folder;
    preferences.snapshotFileFormat.set(SnapshotFormat::png);
    preferences.snapshotImageScale.set(SnapshotScale::pictureSize);
    panels.saveAnswers = {folder.filePath(QStringLiteral("still.png"))};
    trigger("viewer.takeSnapshot");
    controller.snapshots().waitForWriting();
    EXPECT_EQ(QImage(folder.filePath(QStringLiteral("still.png"))).size(), QSize(256, 144));
}

TEST_F(GeometryTest, ASavedLayoutGivesTheViewersOwnFrameBackPanelsAndProportionsOrNot) {
    open();
    const auto save = [this](int button) {
        alerts.answers = {button};
        trigger("viewer.savePanelLayout");
    };
    const QRect saved(30, 40, 740, 640); // fits on any screen
    window->setGeometry(saved);
    ASSERT_TRUE(bench::waitUntil([&] { return window->geometry() == saved; }));
    ASSERT_TRUE(preferences.constrainViewerToMovieProportions());
    save(Alerts::firstButton);
    trigger("viewer.playlistDrawer");
    for (const char* command : {"viewer.windowFavourite", "viewer.restorePanelLayout1"}) {
        SCOPED_TRACE(command);
        window->resize(690, 520);
        QTest::qWait(250); // until it has taken the movie's proportions
        trigger(command);
        QTest::qWait(250);
        EXPECT_EQ(window->size(), saved.size());
        EXPECT_EQ(window->geometry().topLeft(), saved.topLeft());
    }
}

TEST_F(GeometryTest, ConstrainedTheWindowKeepsTheMoviesProportionsWhenDraggedAndWhenAMovieIsLoaded) {
    preferences.constrainViewerToMovieProportions.set(true);
    window->resize(760, 700);
    openTwo();
    EXPECT_GT(area().width(), 600); // not smaller than it was for want of knowing the movie
    const auto isInProportion = [this] {
        return std::abs(area().width() - area().height() * 16.0 / 9) <= 2.0;
    };
    EXPECT_TRUE(bench::waitUntil(isInProportion));
    window->resize(700, 700); // the edge is let go
    EXPECT_TRUE(bench::waitUntil([&] { return isInProportion() && area().width() == 700; }));
    const QSize before = window->size();
    controller.transport().displayNextMovie();
    ASSERT_TRUE(settled());
    QCoreApplication::processEvents();
    EXPECT_EQ(window->height(), before.height()) << "it does not grow from movie to movie";
    trigger("viewer.constrain");
    window->resize(800, 790);
    QTest::qWait(250);
    EXPECT_EQ(window->size(), QSize(800, 790));
}

TEST_F(GeometryTest, AZoomedPictureKeepsItsSizeWhenTheWindowIsResizedAndFitsAgainOnCommand) {
    open();
    auto* zoom = child<ZoomButton>("zoom");
    ASSERT_TRUE(zoom);
    EXPECT_TRUE(zoom->menu()->actions().contains(window->commands().action(QStringLiteral("viewer.fit"))));
    trigger("viewer.zoomIn");
    trigger("viewer.zoomIn");
    const QSizeF zoomed = controller.geometry().geometry().view().size();
    window->resize(1000, 800);
    QCoreApplication::processEvents();
    EXPECT_EQ(controller.geometry().geometry().view().size(), zoomed);
    EXPECT_TRUE(controller.drawingTools().isScrollMode());
    trigger("viewer.fit");
    EXPECT_EQ(controller.geometry().geometry().view().size(), QSizeF(area()));
    EXPECT_EQ(controller.drawingTools().interactiveMode(), QStringLiteral("off"));
    EXPECT_EQ(pictureOnScreen(), 1);
}

} // namespace
} // namespace daylark
