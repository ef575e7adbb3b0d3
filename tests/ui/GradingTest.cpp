#include "ui/ViewerWindowFixture.h"

#include "annotate/GradeArithmetic.h"
#include "ui/panels/GradingPanel.h"
#include "ui/viewer/SnapshotFlash.h"
#include "ui/viewer/ViewerPanelHost.h"

#include <QDockWidget>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QSlider>
#include <QTemporaryDir>
#include <QToolButton>

namespace daylark {
namespace {

class GradingTest : public ViewerWindowFixture {
protected:
    GradingPanel* openPanel() {
        window->commands().action(QStringLiteral("viewer.gradeTools"))->trigger();
        return window->findChild<GradingPanel*>();
    }
    /// The picture's pixel at a fraction of its size, from the screen.
    QColor onScreen(double x, double y) {
        EXPECT_TRUE(pictureIsDrawn());
        const QRect rect = window->picture()->pictureRect().toAlignedRect();
        const QImage shown = window->picture()->grab(rect).toImage();
        return shown.pixelColor(int(shown.width() * x), int(shown.height() * y));
    }
};

TEST_F(GradingTest, SlidersNumbersAndResetsChangeThePictureAtOnceAndFollowTheRecord) {
    openFrames(24);
    GradingPanel* panel = openPanel();
    ASSERT_TRUE(panel && panel->isVisible());
    ASSERT_EQ(pictureOnScreen(), 1);
    const QColor plain = onScreen(0.5, 0.7);

    QSlider* red = panel->slider(ViewerGrade::red);
    QTest::mouseClick(red, Qt::LeftButton, {}, QPoint(2, red->height() / 2)); // towards nothing
    EXPECT_LT(first->redChannel, 1);
    QTest::keyClick(panel->number(ViewerGrade::red), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(panel->number(ViewerGrade::red), panel->locale().toString(0.5));
    QTest::keyClick(panel->number(ViewerGrade::red), Qt::Key_Return);
    EXPECT_EQ(first->redChannel, 0.5);
    EXPECT_EQ(red->value(), 100);
    EXPECT_NEAR(onScreen(0.5, 0.7).red(), plain.red() * 0.5, 1.5);
    EXPECT_NEAR(onScreen(0.5, 0.7).green(), plain.green(), 1);
    EXPECT_FALSE(first->gradeIcon.isNil());

    window->commands().action(QStringLiteral("viewer.toggleGrade"))->trigger();
    EXPECT_NEAR(onScreen(0.5, 0.7).red(), plain.red(), 1);
    window->commands().action(QStringLiteral("viewer.toggleGrade"))->trigger();
    EXPECT_NEAR(onScreen(0.5, 0.7).red(), plain.red() * 0.5, 1.5);
    QTest::mouseClick(panel->reset(ViewerGrade::red), Qt::LeftButton);
    EXPECT_EQ(first->redChannel, 1);
    EXPECT_EQ(onScreen(0.5, 0.7), plain);

    // A number beyond the slider is kept.
    QTest::keyClick(panel->number(ViewerGrade::exposure), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(panel->number(ViewerGrade::exposure), QStringLiteral("-12"));
    QTest::keyClick(panel->number(ViewerGrade::exposure), Qt::Key_Return);
    EXPECT_EQ(first->exposure, -12);
    EXPECT_LE(onScreen(0.5, 0.7).lightness(), 1);
    for (QLabel* label : panel->findChildren<QLabel*>())
        if (label->property("tag").toInt() == ViewerGrade::exposure)
            QTest::mouseDClick(label, Qt::LeftButton);
    EXPECT_EQ(first->exposure, 0);
    edits.setGrade(first, {.gamma = 2}); // from elsewhere
    EXPECT_EQ(panel->number(ViewerGrade::gamma)->value(), 2);
}

TEST_F(GradingTest, CopiedGradesArePastedOntoWhatIsSelectedAndOntoAll) {
    openTwo();
    edits.setGrade(first, {.exposure = 0.5});
    const auto trigger = [this](const char* id) { window->commands().action(QLatin1String(id))->trigger(); };
    trigger("viewer.copyGrade");
    controller.transport().displayNextMovie();
    ASSERT_TRUE(settled());
    trigger("viewer.pasteGrade");
    EXPECT_EQ(second->exposure, 0.5);
    trigger("viewer.resetGrade");
    EXPECT_TRUE(second->grade().isNeutral());
    edits.setGrade(first, {});
    trigger("viewer.gradeAll");
    EXPECT_EQ(first->exposure, 0.5);
    EXPECT_EQ(second->exposure, 0.5);
}

TEST_F(GradingTest, ASnapshotHoldsWhatIsOnTheScreen) {
    openFrames(24);
    preferences.displayFrameCounter.set(true);
    preferences.snapshotFileFormat.set(SnapshotFormat::png);
    edits.setGrade(first, {.saturation = 0.3, .gamma = 1.4});
    goTo(7);
    ASSERT_EQ(pictureOnScreen(), 7);
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("still.png"));
    panels.saveAnswers = {path};
    const QImage screen = window->picture()->grab().toImage().convertToFormat(QImage::Format_RGB32);
    window->commands().action(QStringLiteral("viewer.takeSnapshot"))->trigger();
    EXPECT_TRUE(window->picture()->findChild<SnapshotFlash*>()->isVisible());
    controller.snapshots().waitForWriting();
    const QImage saved = QImage(path).convertToFormat(QImage::Format_RGB32);
    ASSERT_EQ(saved.size(), screen.size());
    int largest = 0;
    for (int y = 0; y < screen.height(); ++y)
        for (int x = 0; x < screen.width(); ++x) {
            const QRgb a = screen.pixel(x, y), b = saved.pixel(x, y);
            largest = std::max({largest, std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                                std::abs(qBlue(a) - qBlue(b))});
        }
    EXPECT_LE(largest, 1);
    EXPECT_EQ(controller.snapshots().snapshotNumber(), 2);
    EXPECT_TRUE(
        bench::waitUntil([this] { return !window->picture()->findChild<SnapshotFlash*>()->isVisible(); }));
}

} // namespace
} // namespace daylark
