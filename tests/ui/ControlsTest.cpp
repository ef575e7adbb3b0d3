#include "LibraryFixture.h"
#include "ViewerWindowFixture.h"

#include "app/program/ProgressBoard.h"
#include "model/StatusCodes.h"
#include "ui/panels/DrawingPanel.h"
#include "ui/preferences/PreferencesWindow.h"
#include "ui/library/ProgressWindow.h"
#include "ui/controls/VolumeButton.h"

#include <QAbstractItemView>
#include <QColorDialog>
#include <QComboBox>
#include <QMenu>
#include <QLabel>
#include <QMenuBar>
#include <QProgressBar>
#include <QSlider>
#include <QToolButton>
#include <QWheelEvent>

namespace daylark {

/// Controls that are seldom used, by the events that a hand makes.
class ControlsTest : public ViewerWindowFixture {
protected:
    DrawingPanel* openDrawingTools() {
        window->commands().action(QStringLiteral("viewer.drawingTools"))->trigger();
        return window->findChild<DrawingPanel*>();
    }
    template<class Widget>
    static Widget* called(const QWidget* parent, const char* accessibleName) {
        const auto all = parent->findChildren<Widget*>();
        for (Widget* widget : all)
            if (widget->accessibleName() == QLatin1String(accessibleName)) return widget;
        ADD_FAILURE() << accessibleName;
        return nullptr;
    }
    static void choose(QComboBox* box, const char* text) {
        box->showPopup();
        const QModelIndex row = box->model()->index(box->findText(QLatin1String(text)), 0);
        QTest::mouseClick(box->view()->viewport(), Qt::LeftButton, {}, box->view()->visualRect(row).center());
        ASSERT_EQ(box->currentText(), QLatin1String(text));
    }
    [[nodiscard]] QColor middleOfPicture() const {
        EXPECT_TRUE(pictureIsDrawn());
        const QImage shown = window->picture()->grab().toImage();
        return shown.pixelColor(shown.width() / 2, shown.height() * 3 / 4);
    }
};

TEST_F(ControlsTest, TheBrushsColourComesFromSwatchesAndADialogThatGoesWithItsPanelAndTheViewer) {
    openFrames(24);
    DrawingPanel* panel = openDrawingTools();
    ASSERT_TRUE(panel);
    QTest::mouseClick(called<QToolButton>(panel, "Red"), Qt::LeftButton);
    const QColor red = controller.brushColour();
    EXPECT_GT(red.red(), 200);
    EXPECT_LT(red.blue(), 100);
    auto* well = panel->findChild<QToolButton*>(QStringLiteral("colourWell"));
    QTest::mouseClick(well, Qt::LeftButton);
    auto* dialog = panel->findChild<QColorDialog*>();
    ASSERT_TRUE(dialog && dialog->isVisible());
    EXPECT_EQ(dialog->currentColor(), red);
    const auto parts = dialog->findChildren<QWidget*>();
    for (QWidget* part : parts)
        if (QLatin1String(part->metaObject()->className()).contains(QLatin1String("WellArray"))) {
            QTest::mouseClick(part, Qt::LeftButton, {}, QPoint(8, 8));
            break;
        }
    EXPECT_NE(controller.brushColour(), red);
    EXPECT_EQ(controller.brushColour(), dialog->currentColor());
    window->activateWindow();
    window->commands().action(QStringLiteral("viewer.drawingTools"))->trigger();
    EXPECT_FALSE(dialog->isVisible());
    openDrawingTools();
    QTest::mouseClick(well, Qt::LeftButton);
    ASSERT_TRUE(dialog->isVisible());
    window->close();
    EXPECT_FALSE(dialog->isVisible());
}

TEST_F(ControlsTest, DrawingsStandOnThePictureOnBlackOrOnWhite) {
    openFrames(24);
    auto* behind = called<QComboBox>(openDrawingTools(), "Behind drawings");
    ASSERT_TRUE(behind);
    const QColor picture = middleOfPicture();
    choose(behind, "Black");
    EXPECT_EQ(preferences.drawingBackgroundColour(), DrawingBackground::black);
    EXPECT_EQ(middleOfPicture(), QColor(Qt::black));
    choose(behind, "White");
    EXPECT_EQ(middleOfPicture(), QColor(Qt::white));
    choose(behind, "Picture");
    EXPECT_EQ(middleOfPicture(), picture);
}

TEST_F(ControlsTest, TheVolumeGoesByWheelOnItsButtonAndByHandOnItsSlider) {
    openFrames(24);
    auto* button = child<VolumeButton>("volume");
    transport.setVolume(0.5F);
    for (const int turned : {120, 120, -120}) {
        const QPoint at = button->rect().center();
        QWheelEvent wheel(at, button->mapToGlobal(at), {}, {0, turned}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(button, &wheel);
    }
    EXPECT_NEAR(player.volume(), 0.55, 1e-6);
    QTest::mouseClick(button, Qt::LeftButton);
    QSlider* slider = button->slider();
    ASSERT_TRUE(slider->isVisible());
    QTest::mouseClick(slider, Qt::LeftButton, {}, QPoint(slider->width() / 2, 3)); // above its handle
    EXPECT_GT(player.volume(), 0.6F);
    EXPECT_FLOAT_EQ(preferences.volume(), player.volume());
    EXPECT_TRUE(slider->isVisible());
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_TRUE(bench::waitUntil([slider] { return !slider->isVisible(); }));
}

TEST_F(ControlsTest, TheVolumesIconFollowsThePreferenceAndTheNextMovieAFlagSetElsewhere) {
    openTwo();
    auto* button = child<VolumeButton>("volume");
    const QString half = button->toolTip();
    preferences.volume.set(0.0F); // by the preferences window
    EXPECT_NE(button->toolTip(), half);
    EXPECT_EQ(button->slider()->value(), 0);
    EXPECT_EQ(player.volume(), 0.0F);

    const QAction* next = window->commands().action(QStringLiteral("viewer.nextMovie"));
    ASSERT_TRUE(next->isEnabled());
    edits.setFlag({second}, status::skip); // in the library
    EXPECT_FALSE(next->isEnabled());
    edits.setFlag({second}, status::approved);
    EXPECT_TRUE(next->isEnabled());
}

TEST_F(ControlsTest, AMissingMovieDoesNotPlayNorMakesTheNextOneStart) {
    const auto missing = record(QStringLiteral("/nowhere/gone.mov"));
    first = record(bench::movie({.frames = 24, .group = 12}));
    controller.open({missing, first}, 0);
    ASSERT_TRUE(bench::waitUntil([this] { return !alerts.shown.empty(); }));
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    for (const Qt::Key pressed : {Qt::Key_Space, Qt::Key_L, Qt::Key_J}) {
        key(pressed);
        EXPECT_FALSE(transport.isRunning());
    }
    transport.displayNextMovie();
    ASSERT_TRUE(settled());
    EXPECT_FALSE(transport.isRunning());
    EXPECT_SHOWN(1);
    key(Qt::Key_Space);
    EXPECT_TRUE(transport.isRunning());
}

TEST_F(ControlsTest, EachThumbnailChoiceOfTheMenuAsksForItself) {
    openFrames(24);
    QSignalSpy wanted(window.get(), &ViewerWindow::thumbnailWanted);
    QMenu* menu = nullptr;
    const QAction* firstFrame = window->commands().action(QStringLiteral("viewer.thumbnail.FirstFrame"));
    const auto places = firstFrame->associatedObjects();
    for (QObject* place : places)
        if (auto* found = qobject_cast<QMenu*>(place)) menu = found;
    ASSERT_TRUE(menu);
    QStringList expected;
    const auto choices = menu->actions();
    ASSERT_EQ(choices.size(), 5);
    for (QAction* choice : choices) {
        expected << choice->text();
        menu->popup(window->mapToGlobal(QPoint(100, 100)));
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(choice).center());
    }
    QStringList asked;
    for (const auto& call : wanted)
        asked << call.front().toString();
    EXPECT_EQ(asked, expected);
    EXPECT_TRUE(asked.contains(QStringLiteral("Set Thumbnail Image")));
}

TEST_F(ControlsTest, TheRendererChosenLeavesTheOpenViewerAsItIs) {
    openFrames(24);
    PreferencesWindow dialog(preferences, nullptr);
    dialog.show();
    auto* choice = dialog.findChild<QComboBox*>(QStringLiteral("pictureRenderer"));
    ASSERT_TRUE(choice);
    choose(choice, "OpenGL");
    EXPECT_EQ(preferences.pictureRenderer(), RendererChoice::openGl);
    EXPECT_TRUE(window->picture()->rendererName().startsWith(QStringLiteral("Software")));
    EXPECT_SHOWN(1);
    choose(choice, "Software");
    EXPECT_EQ(preferences.pictureRenderer(), RendererChoice::software);
    window->close();
    show({first});
    EXPECT_EQ(window->picture()->rendererName(), QStringLiteral("Software"));
    EXPECT_SHOWN(1);
}

class ProgressWindowTest : public LibraryFixture {};

TEST_F(ProgressWindowTest, AJobsCancelTellsThatJobAndTheWindowGoesWithTheLast) {
    openWindow();
    auto* progress = window->findChild<ProgressWindow*>();
    ASSERT_TRUE(progress);
    ProgressBoard& board = controller->progress();
    const int first = board.begin({QStringLiteral("Copying")}, 10, true);
    const int second = board.begin({QStringLiteral("Searching")}, 0, true);
    ASSERT_TRUE(bench::waitUntil([&] { return progress->isVisible(); }));
    const auto buttons = progress->findChildren<QToolButton*>();
    ASSERT_EQ(buttons.size(), 2);
    QTest::mouseClick(buttons.back(), Qt::LeftButton);
    EXPECT_FALSE(board.cancelFlag(first)->load());
    EXPECT_TRUE(board.cancelFlag(second)->load());
    board.end(second);
    EXPECT_TRUE(progress->isVisible());
    board.end(first);
    EXPECT_FALSE(progress->isVisible());
}

TEST_F(ProgressWindowTest, AJobSaysItsTitleASecondLineAndACountThatItsTitleDoesNotCarry) {
    openWindow();
    auto* progress = window->findChild<ProgressWindow*>();
    ProgressBoard& board = controller->progress();
    const auto said = [&] {
        QStringList texts;
        for (const auto* label : progress->findChildren<QLabel*>())
            if (!label->isHidden()) texts << label->text();
        return texts.join(QLatin1Char('|'));
    };
    using Count = ProgressBoard::Count;
    const int exported =
        board.begin({QStringLiteral("Exporting"), QStringLiteral("May take minutes")}, 0, true);
    EXPECT_EQ(said(), QStringLiteral("Exporting|May take minutes"));
    EXPECT_EQ(progress->windowTitle(), QStringLiteral("Exporting"));
    const int counted = board.begin({QStringLiteral("Searching...")}, 3, true);
    board.advance(counted, 2, 3);
    EXPECT_TRUE(said().endsWith(QStringLiteral("|Searching... 2 of 3"))) << said().toStdString();
    EXPECT_EQ(progress->windowTitle(), QStringLiteral("Progress"));
    board.end(exported);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    board.say(counted, {QStringLiteral("Gathering: File 3 of 3"), {}, Count::untold});
    EXPECT_EQ(said(), QStringLiteral("Gathering: File 3 of 3"));
    EXPECT_EQ(progress->findChild<QProgressBar*>()->maximum(), 3);
    const int quiet = board.begin({QStringLiteral("Looking")}, 5, false); // the status line's alone
    EXPECT_EQ(said(), QStringLiteral("Gathering: File 3 of 3"));
    board.end(quiet);
    board.end(counted);
}

} // namespace daylark
