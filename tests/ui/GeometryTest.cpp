#include "ui/ViewerWindowFixture.h"

#include "picture/scene/DisplayGeometry.h"
#include "ui/controls/ZoomButton.h"

#include <QMenu>
#include <QScreen>

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
    EXPECT_EQ(window->width(), std::min(2048, screenRoom().width()));
    trigger("viewer.windowHalf");
    EXPECT_EQ(area().width(), std::min(1024, screenRoom().width()));
    preferences.panelLayout1.viewerWidth.set(600);
    preferences.panelLayout1.viewerHeight.set(500);
    preferences.panelLayout1.viewerX.set(40);
    preferences.panelLayout1.viewerY.set(50);
    trigger("viewer.windowFavourite");
    EXPECT_EQ(window->geometry().topLeft(), QPoint(40, 50));
    EXPECT_EQ(window->size(), QSize(600, 500));
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
