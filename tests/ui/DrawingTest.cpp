#include "ui/ViewerWindowFixture.h"

#include "model/Session.h"
#include "support/Places.h"
#include "ui/panels/DrawingPanel.h"
#include "ui/viewer/SnapshotFlash.h"
#include "ui/viewer/ViewerPanelHost.h"

#include <QDockWidget>
#include <QFile>
#include <QPointingDevice>
#include <QProcess>
#include <QSlider>
#include <QTabletEvent>
#include <QTemporaryDir>
#include <QToolButton>

#include <cmath>

namespace daylark {
namespace {

class DrawingTest : public ViewerWindowFixture {
protected:
    DrawingTest() {
        preferences.autoSwitchToDrawingMode.set(false);
        preferences.brushWidth.set(12.0);
        preferences.eraserWidth.set(30.0);
        preferences.brushColour.set(QColor(255, 255, 0));
    }
    void open() {
        openFrames(24);
        window->commands().action(QStringLiteral("viewer.drawingTools"))->trigger();
        panel = window->findChild<DrawingPanel*>();
        ASSERT_TRUE(panel && panel->isVisible());
        ASSERT_EQ(pictureOnScreen(), 1);
    }
    void press(const char* title) { QTest::mouseClick(panel->tool(QLatin1String(title)), Qt::LeftButton); }
    /// A place on the picture as a fraction of what is shown of it.
    QPoint at(double x, double y) const {
        const QRectF rect = window->picture()->pictureRect();
        return (rect.topLeft() + QPointF(rect.width() * x, rect.height() * y)).toPoint();
    }
    void stroke(const std::vector<QPoint>& points) {
        PictureView* view = window->picture();
        QTest::mousePress(view, Qt::LeftButton, {}, points.front());
        for (size_t i = 1; i < points.size(); ++i)
            QTest::mouseMove(view, points[i]);
        // Moves with the button held, as a hand makes them.
        for (size_t i = 1; i < points.size(); ++i) {
            QMouseEvent move(QEvent::MouseMove, points[i], view->mapToGlobal(points[i]), Qt::NoButton,
                             Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(view, &move);
        }
        QTest::mouseRelease(view, Qt::LeftButton, {}, points.back());
    }
    QColor pixel(const QPoint& place) const {
        EXPECT_TRUE(pictureIsDrawn());
        return window->picture()->grab().toImage().pixelColor(place * window->picture()->devicePixelRatioF());
    }
    bool isYellow(const QPoint& place) const {
        const QColor colour = pixel(place);
        return colour.red() > 240 && colour.green() > 240 && colour.blue() < 20;
    }
    void trigger(const char* id) { window->commands().action(QLatin1String(id))->trigger(); }

    DrawingPanel* panel = nullptr;
};

TEST_F(DrawingTest, StrokesShowWhereTheyWereDrawnAndErasersUncoverThePicture) {
    open();
    const QColor plain = pixel(at(0.5, 0.6));
    press("Draw");
    stroke({at(0.2, 0.6), at(0.5, 0.6), at(0.8, 0.6)});
    EXPECT_TRUE(isYellow(at(0.5, 0.6)));
    EXPECT_TRUE(isYellow(at(0.3, 0.6)));
    EXPECT_FALSE(isYellow(at(0.5, 0.7)));
    ASSERT_EQ(first->bookmarkStore.size(), 1u);
    EXPECT_EQ(first->bookmarkStore.front()->drawings.strokes.size(), 1u);
    EXPECT_FALSE(first->drawingIcon.isNil());
    press("Erase");
    stroke({at(0.5, 0.5), at(0.5, 0.6), at(0.5, 0.7)});
    EXPECT_EQ(pixel(at(0.5, 0.6)), plain);
    EXPECT_TRUE(isYellow(at(0.3, 0.6)));
    EXPECT_EQ(first->bookmarkStore.size(), 1u);

    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(isYellow(at(0.5, 0.6)));
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(pixel(at(0.5, 0.6)), plain);
    EXPECT_TRUE(first->bookmarkStore.empty());
    key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(isYellow(at(0.5, 0.6)));
}

TEST_F(DrawingTest, ADrawingStaysOnItsDetailWhenZoomedResizedMirroredAndSteppedAwayFrom) {
    open();
    press("Draw");
    stroke({at(0.2, 0.3), at(0.4, 0.3)});
    trigger("viewer.zoomIn");
    trigger("viewer.zoomIn");
    EXPECT_TRUE(isYellow(at(0.3, 0.3)));
    EXPECT_FALSE(isYellow(at(0.3, 0.35)));
    trigger("viewer.fit");
    window->resize(900, 700);
    QCoreApplication::processEvents();
    EXPECT_TRUE(isYellow(at(0.3, 0.3)));
    trigger("viewer.flop");
    EXPECT_TRUE(isYellow(at(0.7, 0.3)));
    EXPECT_FALSE(isYellow(at(0.3, 0.3)));
    // Drawn on the mirrored picture, seen again on the plain one.
    press("Draw");
    stroke({at(0.1, 0.8), at(0.3, 0.8)});
    trigger("viewer.flop");
    EXPECT_TRUE(isYellow(at(0.8, 0.8)));
    trigger("viewer.flip");
    EXPECT_TRUE(isYellow(at(0.3, 0.7)));
    trigger("viewer.flip");
    goTo(5);
    ASSERT_EQ(pictureOnScreen(), 5);
    controller.bookmarks().loadActiveBookmarks();
    EXPECT_FALSE(isYellow(at(0.3, 0.3)));
    window->commands().action(QStringLiteral("viewer.firstFrame"))->trigger();
    ASSERT_EQ(pictureOnScreen(), 1);
    EXPECT_TRUE(isYellow(at(0.3, 0.3)));
    preferences.displayDrawingsOptions.set(DrawingsShown::onlyWhenPaused);
    trigger("viewer.playPause");
    EXPECT_FALSE(isYellow(at(0.3, 0.3)));
    trigger("viewer.playPause");
}

TEST_F(DrawingTest, APenDrawsThroughEveryPointItWasAtAndItsMouseEventsAreNotTakenTwice) {
    EXPECT_FALSE(QCoreApplication::testAttribute(Qt::AA_CompressHighFrequencyEvents));
    open();
    press("Draw");
    PictureView* view = window->picture();
    const QPointingDevice pen(QStringLiteral("pen"), 7, QInputDevice::DeviceType::Stylus,
                              QPointingDevice::PointerType::Pen,
                              QInputDevice::Capability::Position | QInputDevice::Capability::Pressure, 1, 1);
    const auto send = [&](QEvent::Type type, const QPointF& place) {
        const bool up = type == QEvent::TabletRelease;
        QTabletEvent event(type, &pen, place, view->mapToGlobal(place), up ? 0 : 0.7, 0, 0, 0, 0, 0,
                           Qt::NoModifier, type == QEvent::TabletMove ? Qt::NoButton : Qt::LeftButton,
                           up ? Qt::NoButton : Qt::LeftButton);
        QApplication::sendEvent(view, &event);
        return event.isAccepted();
    };
    const QPointF start = at(0.2, 0.5);
    EXPECT_FALSE(send(QEvent::TabletMove, start)); // hovers
    EXPECT_TRUE(send(QEvent::TabletPress, start));
    for (int i = 1; i <= 50; ++i) {
        const QPointF place = start + QPointF(i * 3.25, std::sin(i) * 4);
        EXPECT_TRUE(send(QEvent::TabletMove, place));
        QMouseEvent echo(QEvent::MouseMove, place, place, view->mapToGlobal(place), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier, Qt::MouseEventSynthesizedByQt);
        QApplication::sendEvent(view, &echo);
    }
    EXPECT_TRUE(send(QEvent::TabletRelease, start + QPointF(170, 0)));
    ASSERT_EQ(first->bookmarkStore.size(), 1u);
    const auto& points = first->bookmarkStore.front()->drawings.strokes.at(0).points;
    ASSERT_EQ(points.size(), 52u);
    const double scale = 256 / view->pictureRect().width(); // parts of a screen's pixel are kept
    EXPECT_NEAR(points[9].x() - points[8].x(), 3.25 * scale, 1e-3);
}

TEST_F(DrawingTest, TheFirstClickOnTheViewerDrawsWhileAnotherWindowIsActive) {
    open();
    press("Draw");
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    const auto click = [this](QEvent::Type type, const QPoint& place) {
        QTest::mouseEvent(type == QEvent::MouseButtonPress ? QTest::MousePress : QTest::MouseRelease,
                          window->windowHandle(), Qt::LeftButton, {},
                          window->picture()->mapTo(window.get(), place));
    };
    click(QEvent::MouseButtonPress, at(0.2, 0.4));
    click(QEvent::MouseButtonRelease, at(0.6, 0.4));
    ASSERT_EQ(first->bookmarkStore.size(), 1u);
    EXPECT_TRUE(isYellow(at(0.4, 0.4)));
}

/// The largest difference of any colour, and how many pixels are drawn on.
struct Compared {
    int largest = 256, yellowish = 0;
};

Compared compared(const QImage& a, const QImage& b) {
    Compared result;
    if (a.size() != b.size()) return result;
    result.largest = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) {
            const QRgb one = a.pixel(x, y), other = b.pixel(x, y);
            result.largest =
                std::max({result.largest, std::abs(qRed(one) - qRed(other)),
                          std::abs(qGreen(one) - qGreen(other)), std::abs(qBlue(one) - qBlue(other))});
            result.yellowish += qRed(one) > qBlue(one) + 60 && qGreen(one) > qBlue(one) + 60;
        }
    return result;
}

TEST_F(DrawingTest, ASnapshotHoldsThePixelsOnScreenHoweverThePictureLiesAndWhateverLiesOnIt) {
    open();
    preferences.movieMaskOpacity.set(0.6);
    preferences.snapshotFileFormat.set(SnapshotFormat::png);
    preferences.displayFrameCounter.set(true);
    press("Draw");
    for (auto* slider : panel->findChildren<QSlider*>())
        if (slider->accessibleName() == QLatin1String("Opacity of the tool")) slider->setValue(50);
    EXPECT_EQ(preferences.brushOpacity(), 0.5F);
    stroke({at(0.1, 0.2), at(0.5, 0.7), at(0.9, 0.3), at(0.3, 0.45)});
    press("Erase");
    stroke({at(0.4, 0.2), at(0.6, 0.8)});
    trigger("viewer.mask.2.35");
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("still.png"));
    const auto step = [&](const char* what) {
        SCOPED_TRACE(what);
        panels.saveAnswers = {path};
        const auto* flash = window->picture()->findChild<SnapshotFlash*>(); // of the snapshot before
        ASSERT_TRUE(bench::waitUntil([flash] { return !flash->isVisible(); }));
        ASSERT_TRUE(settled() && pictureIsDrawn());
        const QImage screen = window->picture()->grab().toImage().convertToFormat(QImage::Format_RGB32);
        trigger("viewer.takeSnapshot");
        controller.snapshots().waitForWriting();
        const Compared result = compared(screen, QImage(path).convertToFormat(QImage::Format_RGB32));
        EXPECT_LE(result.largest, 1);
        EXPECT_GT(result.yellowish, 2000);
    };
    step("fitted");
    controller.drawingVisibility().setDrawingBackground(QStringLiteral("White"));
    step("on white");
    controller.drawingVisibility().setDrawingBackground(QStringLiteral("Black"));
    trigger("viewer.flop");
    step("on black, mirrored");
    controller.drawingVisibility().setDrawingBackground(QStringLiteral("Picture"));
    trigger("viewer.flip");
    trigger("viewer.zoomIn");
    step("zoomed and mirrored");
}

TEST_F(DrawingTest, TheHeadlessToolDrawsTheSameArea) {
    open();
    press("Draw");
    stroke({at(0.1, 0.2), at(0.5, 0.7), at(0.9, 0.3)});
    press("Erase");
    stroke({at(0.4, 0.2), at(0.6, 0.8)});
    controller.grade().setValue(ViewerGrade::exposure, 0.5);
    const QTemporaryDir folder;
    const QString session = folder.filePath(QStringLiteral("day.dls")),
                  still = folder.filePath(QStringLiteral("still.png"));
    const std::map<QString, QString> overrides{{QStringLiteral("mirrorY"), QStringLiteral("1")},
                                               {QStringLiteral("showMask"), QStringLiteral("1")},
                                               {QStringLiteral("movieMaskOpacity"), QStringLiteral("0.5")}};
    QStringList more;
    for (const auto& [key, value] : overrides) {
        preferences.find(key)->store(value);
        more << QStringLiteral("--defaults") << key + u'=' + value;
    }
    QFile file(session);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    auto playlist = std::make_shared<Playlist>();
    playlist->movieList.push_back(first);
    SessionContents contents;
    contents.playlists = {playlist};
    contents.hasPlaylists = true;
    file.write(encodeSession(contents));
    file.close();
    for (const char* background : {"Picture", "White", "Black"}) {
        SCOPED_TRACE(background);
        controller.drawingVisibility().setDrawingBackground(QLatin1String(background));
        const QSize size = window->picture()->size();
        QProcess tool;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), folder.path());
        tool.setProcessEnvironment(environment);
        tool.start(programFolder() + QStringLiteral("/daylark-tool"),
                   QStringList{QStringLiteral("snapshot"), session, QStringLiteral("--playlist"),
                               QStringLiteral("1"), QStringLiteral("--item"), QStringLiteral("1"),
                               QStringLiteral("--frame"), QStringLiteral("1"), QStringLiteral("--size"),
                               QStringLiteral("%1x%2").arg(size.width()).arg(size.height()),
                               QStringLiteral("--out"), still, QStringLiteral("--defaults"),
                               QStringLiteral("drawingBackgroundColour=%1").arg(QLatin1String(background))} +
                       more);
        ASSERT_TRUE(tool.waitForFinished(60000));
        ASSERT_EQ(tool.exitCode(), 0) << tool.readAllStandardError().constData();
        const auto* flash = window->picture()->findChild<SnapshotFlash*>(); // of the snapshot before
        ASSERT_TRUE(bench::waitUntil([flash] { return !flash->isVisible(); }));
        ASSERT_TRUE(settled() && pictureIsDrawn());
        const QImage screen = window->picture()->grab().toImage().convertToFormat(QImage::Format_RGB32);
        const Compared result = compared(screen, QImage(still).convertToFormat(QImage::Format_RGB32));
        EXPECT_LE(result.largest, 1);
        EXPECT_GT(result.yellowish, 2000);
    }
}

TEST_F(DrawingTest, TheHandMovesAFittedPictureWithItsDrawingAndMask) {
    open();
    press("Draw");
    stroke({at(0.2, 0.3), at(0.4, 0.3)});
    preferences.movieMaskOpacity.set(1.0);
    trigger("viewer.mask.2.35");
    press("Scroll");
    const QRectF before = window->picture()->pictureRect();
    const QPoint from = at(0.5, 0.5), by(60, 35);
    QTest::mousePress(window->picture(), Qt::LeftButton, {}, from);
    QTest::mouseRelease(window->picture(), Qt::LeftButton, {}, from);
    EXPECT_TRUE(controller.geometry().geometry().isFitted()) << "not moved, only touched";
    QTest::mousePress(window->picture(), Qt::LeftButton, {}, from);
    QMouseEvent move(QEvent::MouseMove, from + by, window->picture()->mapToGlobal(from + by), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window->picture(), &move);
    QTest::mouseRelease(window->picture(), Qt::LeftButton, {}, from + by);
    const QPointF moved = window->picture()->pictureRect().topLeft() - before.topLeft();
    EXPECT_NEAR(moved.x(), by.x(), 0.7);
    EXPECT_NEAR(moved.y(), by.y(), 0.7);
    EXPECT_TRUE(isYellow(at(0.3, 0.3)));
    EXPECT_EQ(pixel(at(0.5, 0.03)), QColor(Qt::black));
    EXPECT_NE(pixel(at(0.5, 0.2)), QColor(Qt::black));
}

TEST_F(DrawingTest, DrawingsComeBackWhereARunEndsByItself) {
    preferences.repeatType.set(RepeatMode::playMovieOnce);
    preferences.displayDrawingsOptions.set(DrawingsShown::onlyWhenPaused);
    open();
    press("Draw");
    trigger("viewer.lastFrame");
    ASSERT_EQ(pictureOnScreen(), 24);
    stroke({at(0.2, 0.6), at(0.8, 0.6)});
    trigger("viewer.firstFrame");
    ASSERT_EQ(pictureOnScreen(), 1);
    trigger("viewer.playPause");
    EXPECT_FALSE(controller.drawingVisibility().drawingsAreShown());
    playOntoTheEnd();
    ASSERT_TRUE(bench::waitUntil([this] { return !transport.isRunning(); }));
    ASSERT_EQ(pictureOnScreen(), 24);
    EXPECT_TRUE(isYellow(at(0.5, 0.6)));
}

TEST_F(DrawingTest, ABackgroundLeftFromAnotherRunLiesOnlyBehindDrawings) {
    preferences.drawingBackgroundColour.set(DrawingBackground::black);
    open();
    const QColor picture = pixel(at(0.5, 0.9));
    ASSERT_NE(picture, QColor(Qt::black));
    press("Draw");
    stroke({at(0.2, 0.6), at(0.8, 0.6)});
    EXPECT_EQ(pixel(at(0.5, 0.9)), QColor(Qt::black));
    EXPECT_TRUE(isYellow(at(0.5, 0.6)));
    trigger("viewer.stepForward");
    ASSERT_EQ(pictureOnScreen(), 2);
    EXPECT_NE(pixel(at(0.5, 0.9)), QColor(Qt::black));
}

TEST_F(DrawingTest, TheHandMovesAZoomedPictureAndTheMaskLiesOnIt) {
    open();
    trigger("viewer.actualPixels");
    const QRectF before = window->picture()->pictureRect();
    EXPECT_EQ(before.size(), QSizeF(256, 144));
    EXPECT_TRUE(controller.drawingTools().isScrollMode());
    EXPECT_EQ(window->picture()->cursor().shape(), Qt::OpenHandCursor);
    const QPoint from = at(0.5, 0.5);
    QTest::mousePress(window->picture(), Qt::LeftButton, {}, from);
    QMouseEvent move(QEvent::MouseMove, from + QPoint(40, 25), window->picture()->mapToGlobal(from),
                     Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window->picture(), &move);
    EXPECT_EQ(window->picture()->cursor().shape(), Qt::ClosedHandCursor);
    QTest::mouseRelease(window->picture(), Qt::LeftButton, {}, from + QPoint(40, 25));
    const QPointF moved = window->picture()->pictureRect().topLeft() - before.topLeft();
    EXPECT_NEAR(moved.x(), 40, 0.7); // on whole pixels of the screen
    EXPECT_NEAR(moved.y(), 25, 0.7);
    EXPECT_EQ(window->picture()->cursor().shape(), Qt::OpenHandCursor);
    trigger("viewer.fit");
    preferences.movieMaskOpacity.set(1.0);
    trigger("viewer.mask.2.35");
    EXPECT_EQ(window->commands().action(QStringLiteral("viewer.mask"))->text(), QStringLiteral("Hide Mask"));
    EXPECT_EQ(pixel(at(0.5, 0.97)), QColor(Qt::black));
    trigger("viewer.mask");
    EXPECT_NE(pixel(at(0.5, 0.97)), QColor(Qt::black));
    window->commands().action(QStringLiteral("viewer.windowActual"))->trigger();
    EXPECT_EQ(window->picture()->width(), window->width());
}

} // namespace
} // namespace daylark
