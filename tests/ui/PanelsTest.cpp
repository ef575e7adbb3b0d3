#include "ui/ViewerWindowFixture.h"

#include "ui/panels/BookmarkPanel.h"
#include "ui/panels/ControlsPanel.h"
#include "ui/viewer/FullScreen.h"
#include "ui/panels/NotesPanel.h"
#include "ui/panels/OptionsPanel.h"
#include "ui/common/PanelTitle.h"
#include "ui/controls/PositionSlider.h"
#include "ui/controls/RangeIndicator.h"
#include "ui/controls/VolumeButton.h"
#include "ui/common/RichTextField.h"
#include "ui/common/ToolPanel.h"
#include "ui/viewer/ViewerPanelHost.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QDoubleSpinBox>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QScreen>
#include <QSlider>
#include <QSpinBox>
#include <QTabBar>
#include <QTableView>
#include <QToolButton>

namespace daylark {
namespace {

constexpr ViewerPanel rememberedPanels[] = {ViewerPanel::grading,   ViewerPanel::drawing,
                                            ViewerPanel::bookmarks, ViewerPanel::options,
                                            ViewerPanel::notes,     ViewerPanel::playlistDrawer};

class PanelsTest : public ViewerWindowFixture {
protected:
    [[nodiscard]] ToolPanel* panel(ViewerPanel which) const { return window->findChild<ViewerPanelHost*>()->window(which); }
    [[nodiscard]] bool isOpen(ViewerPanel which) const { return panel(which)->isVisible(); }
    void trigger(const char* id) { window->commands().action(QLatin1String(id))->trigger(); }
    [[nodiscard]] int restores(ViewerPanel which) {
        return (*controller.panels().restorePreference(which))();
    }
    /// The button of a command in the strip under the picture.
    [[nodiscard]] QToolButton* stripButton(const char* id) const {
        for (QToolButton* button : window->transportBar()->findChildren<QToolButton*>())
            if (button->defaultAction() && button->defaultAction()->objectName() == QLatin1String(id))
                return button;
        return nullptr;
    }
    template<class Widget>
    [[nodiscard]] Widget* option(const char* name) const {
        return window->findChild<OptionsPanel*>()->findChild<Widget*>(QLatin1String(name));
    }
    static void click(QCheckBox* box) { // where its mark is
        QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(10, box->height() / 2));
    }
    static void typeNumber(QWidget* field, const QString& text) {
        field->setFocus();
        QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(field, text);
        QTest::keyClick(field, Qt::Key_Return);
    }
    void shot(const QString& name) const {
        const QString folder = qEnvironmentVariable("DAYLARK_PANEL_SHOTS");
        if (folder.isEmpty()) return;
        QTest::qWait(400);
        QDir().mkpath(folder);
        window->screen()->grabWindow(0).save(QDir(folder).filePath(name));
    }
};

TEST_F(PanelsTest, ButtonsCloseBoxesAndPreferencesSayTheSame) {
    openFrames(24);
    const std::pair<ViewerPanel, const char*> buttons[] = {
        {ViewerPanel::notes, "viewer.notes"},        {ViewerPanel::drawing, "viewer.drawingTools"},
        {ViewerPanel::grading, "viewer.gradeTools"}, {ViewerPanel::bookmarks, "viewer.bookmarks"},
        {ViewerPanel::options, "viewer.options"},    {ViewerPanel::playlistDrawer, "viewer.playlistDrawer"}};
    for (const auto& [which, id] : buttons) {
        SCOPED_TRACE(id);
        QToolButton* button = stripButton(id);
        ASSERT_TRUE(button);
        QTest::mouseClick(button, Qt::LeftButton);
        EXPECT_TRUE(isOpen(which));
        EXPECT_TRUE(button->isChecked());
        EXPECT_FALSE(button->defaultAction()->isIconVisibleInMenu()) << "a tick is to be seen there";
        EXPECT_EQ(restores(which), 1);
        QTest::mouseClick(panel(which)->findChild<PanelTitle*>()->findChild<QToolButton*>(), Qt::LeftButton);
        EXPECT_FALSE(isOpen(which));
        EXPECT_FALSE(button->isChecked());
        EXPECT_EQ(restores(which), 0);
    }
    EXPECT_EQ(panel(ViewerPanel::grading)->windowTitle(), QStringLiteral("Colour Correction"));
    EXPECT_EQ(panel(ViewerPanel::controls)->windowTitle(), first->filenameString);

    trigger("viewer.showAllPanels");
    for (const ViewerPanel which : rememberedPanels)
        EXPECT_TRUE(isOpen(which) && restores(which) == 1);
    EXPECT_FALSE(isOpen(ViewerPanel::controls)); // outside full screen
    EXPECT_TRUE(stripButton("viewer.notes")->isChecked());
    trigger("viewer.hideAllPanels");
    for (const ViewerPanel which : rememberedPanels)
        EXPECT_TRUE(!isOpen(which) && restores(which) == 0);
    EXPECT_FALSE(stripButton("viewer.notes")->isChecked());
}

TEST_F(PanelsTest, PanelsLeaveTheKeyboardToTheViewerUntilSomethingIsTypedInto) {
    preferences.dockWherePanelsCover.set(false);
    openFrames(24);
    window->picture()->setFocus();
    trigger("viewer.showAllPanels");
    const auto viewerHasKeyboard = [this] { return QApplication::activeWindow() == window.get(); };
    EXPECT_EQ(QApplication::focusWidget(), window->picture());
    ToolPanel* notes = panel(ViewerPanel::notes);
    // Taken hold of anywhere else, a panel hands the keyboard back.
    notes->activateWindow();
    QTest::mouseClick(notes->findChild<PanelTitle*>(), Qt::LeftButton);
    EXPECT_TRUE(bench::waitUntil(viewerHasKeyboard));
    EXPECT_FALSE(notes->usesKeyboard());
    notes->activateWindow();
    RichTextField* field = window->notes()->field(NotesField::notes);
    QTest::mouseClick(field->viewport(), Qt::LeftButton);
    QTest::qWait(200);
    EXPECT_EQ(QApplication::activeWindow(), notes);
    QTest::keyClicks(field, QStringLiteral("nod"));
    window->notes()->flush();
    EXPECT_EQ(first->notes->string(), QStringLiteral("nod"));
    window->activateWindow();
    ASSERT_TRUE(bench::waitUntil(viewerHasKeyboard));
    EXPECT_FALSE(notes->usesKeyboard()); // a later press on the panel finds no field typed into
}

TEST_F(PanelsTest, PanelsOpenOnTheScreenClearOfTheStripAndComeBackWhereTheyWereLeft) {
    preferences.dockWherePanelsCover.set(false);
    openFrames(24);
    trigger("viewer.showAllPanels");
    const QRect screen = window->screen()->availableGeometry();
    for (const ViewerPanel which : rememberedPanels) {
        if (which == ViewerPanel::playlistDrawer) continue;
        EXPECT_TRUE(panel(which)->isFloating());
        EXPECT_TRUE(screen.contains(panel(which)->geometry())) << qPrintable(ViewerPanels::layoutName(which));
    }
    EXPECT_FALSE(panel(ViewerPanel::playlistDrawer)->isFloating());
    EXPECT_EQ(ViewerPanelHost::broughtOntoAScreen({-5000, 90, 200, 100}).left(), screen.left());
    EXPECT_TRUE(screen.contains(ViewerPanelHost::broughtOntoAScreen({30000, 30000, 9000, 9000})));

    panel(ViewerPanel::notes)->setGeometry(40, 60, 310, 333);
    trigger("viewer.gradeTools"); // away
    window->findChild<ViewerPanelHost*>()->window(ViewerPanel::options)->move(200, 20);
    window->close();
    for (const ViewerPanel which : rememberedPanels)
        EXPECT_FALSE(isOpen(which));
    window = nullptr;
    window = std::make_unique<ViewerWindow>(controller);
    EXPECT_FALSE(isOpen(ViewerPanel::notes));
    show({first});
    EXPECT_TRUE(isOpen(ViewerPanel::notes) && isOpen(ViewerPanel::options));
    EXPECT_TRUE(isOpen(ViewerPanel::playlistDrawer));
    EXPECT_FALSE(isOpen(ViewerPanel::grading));
    EXPECT_EQ(panel(ViewerPanel::notes)->geometry(), QRect(40, 60, 310, 333));
    EXPECT_EQ(panel(ViewerPanel::options)->pos(), QPoint(200, 20));

    window->close();
    preferences.restorePreviousWindows.set(false);
    show({first});
    EXPECT_FALSE(isOpen(ViewerPanel::notes));
}

TEST_F(PanelsTest, TwoLayoutsAreKeptAndTheMenuBringsThemBack) {
    openFrames(24);
    QMenu* menu = nullptr;
    for (QAction* action : window->menuBar()->actions())
        if (action->text().remove(u'&') == QLatin1String("Panels")) menu = action->menu();
    ASSERT_TRUE(menu);
    EXPECT_TRUE(menu->actions().contains(window->commands().action(QStringLiteral("viewer.drawingTools"))));

    trigger("viewer.restorePanelLayout2");
    ASSERT_EQ(alerts.shown.size(), 1u);
    EXPECT_EQ(alerts.shown.back().message, QStringLiteral("No saved layout"));
    const auto save = [this](int button) {
        alerts.answers = {button};
        trigger("viewer.savePanelLayout");
    };
    trigger("viewer.notes");
    panel(ViewerPanel::notes)->setGeometry(30, 40, 320, 300);
    save(Alerts::firstButton);
    trigger("viewer.notes");
    trigger("viewer.gradeTools");
    panel(ViewerPanel::grading)->move(77, 88);
    panel(ViewerPanel::notes)->setGeometry(90, 90, 280, 280);
    save(Alerts::secondButton);
    panel(ViewerPanel::grading)->move(5, 5);
    trigger("viewer.hideAllPanels");

    trigger("viewer.restorePanelLayout1");
    EXPECT_TRUE(isOpen(ViewerPanel::notes));
    EXPECT_FALSE(isOpen(ViewerPanel::grading));
    EXPECT_EQ(panel(ViewerPanel::notes)->geometry(), QRect(30, 40, 320, 300));
    EXPECT_TRUE(stripButton("viewer.notes")->isChecked());
    trigger("viewer.restorePanelLayout2"); // closes nothing
    EXPECT_TRUE(isOpen(ViewerPanel::notes) && isOpen(ViewerPanel::grading));
    EXPECT_EQ(panel(ViewerPanel::grading)->pos(), QPoint(77, 88));
    EXPECT_EQ(panel(ViewerPanel::notes)->size(), QSize(280, 280));
}

TEST_F(PanelsTest, FullScreenGivesBackWhatItPutAwayDockedOnesDocked) {
    openFrames(24);
    for (const char* id : {"viewer.playlistDrawer", "viewer.notes", "viewer.gradeTools", "viewer.options"})
        trigger(id);
    panel(ViewerPanel::notes)->setFloating(false);
    window->fullScreen()->enter();
    for (const ViewerPanel which : rememberedPanels)
        EXPECT_FALSE(isOpen(which));
    trigger("viewer.gradeTools");
    trigger("viewer.gradeTools"); // closed there by hand
    window->fullScreen()->leave();
    EXPECT_TRUE(isOpen(ViewerPanel::notes) && !panel(ViewerPanel::notes)->isFloating());
    EXPECT_TRUE(isOpen(ViewerPanel::playlistDrawer) && isOpen(ViewerPanel::options));
    EXPECT_TRUE(panel(ViewerPanel::options)->isFloating());
    EXPECT_FALSE(isOpen(ViewerPanel::grading) || isOpen(ViewerPanel::bookmarks));
    EXPECT_TRUE(stripButton("viewer.notes")->isChecked());
    EXPECT_EQ(restores(ViewerPanel::notes), 1);
    preferences.panelsReturnFromFullScreen.set(false);
    window->fullScreen()->enter();
    window->fullScreen()->leave();
    for (const ViewerPanel which : rememberedPanels)
        EXPECT_FALSE(isOpen(which));
}

TEST_F(PanelsTest, LayoutsKeepWhatStoodDockedAndAMaximisedWindow) {
    openFrames(24);
    trigger("viewer.notes");
    trigger("viewer.gradeTools");
    panel(ViewerPanel::notes)->setFloating(false);
    alerts.answers = {Alerts::firstButton, Alerts::secondButton};
    trigger("viewer.savePanelLayout");
    EXPECT_TRUE(window->commands().action(QStringLiteral("viewer.dockPanels"))->isEnabled());
    trigger("viewer.floatPanels");
    EXPECT_TRUE(panel(ViewerPanel::notes)->isFloating());
    EXPECT_FALSE(window->commands().action(QStringLiteral("viewer.floatPanels"))->isEnabled());
    trigger("viewer.restorePanelLayout1");
    EXPECT_FALSE(panel(ViewerPanel::notes)->isFloating());
    EXPECT_TRUE(isOpen(ViewerPanel::notes) && isOpen(ViewerPanel::grading));
    EXPECT_TRUE(panel(ViewerPanel::grading)->isFloating());
    window->setWindowState(Qt::WindowMaximized);
    trigger("viewer.savePanelLayout");
    window->setWindowState(Qt::WindowNoState);
    key(Qt::Key_2, Qt::AltModifier);
    EXPECT_TRUE(window->isMaximized());
    preferences.layoutsKeepDocking.set(false);
    trigger("viewer.restorePanelLayout1");
    EXPECT_TRUE(panel(ViewerPanel::notes)->isFloating());
}

TEST_F(PanelsTest, AllPanelsTogetherLeaveThePictureFree) {
    if (window->screen()->availableSize().width() < 1280) GTEST_SKIP() << "needs a screen that people have";
    openFrames(24);
    preferences.constrainViewerToMovieProportions.set(false);
    const QRect screen = window->screen()->availableGeometry();
    window->setGeometry(QRect(screen.topLeft() + QPoint(0, 30), QSize(std::min(1280, screen.width()), 640)));
    ASSERT_TRUE(bench::waitUntil([&] { return window->height() == 640; }));
    const auto freeOfPanels = [this] {
        const QRect picture(window->picture()->mapToGlobal(QPoint()), window->picture()->size());
        QRegion free(picture);
        for (const ViewerPanel which : rememberedPanels)
            if (isOpen(which) && panel(which)->isFloating()) free -= panel(which)->geometry();
        qint64 points = 0;
        for (const QRect& part : free)
            points += qint64(part.width()) * part.height();
        return double(points) / (double(picture.width()) * picture.height());
    };
    trigger("viewer.showAllPanels");
    EXPECT_TRUE(bench::waitUntil([&] { return screen.contains(window->frameGeometry()) && freeOfPanels() > 0.6; }))
        << window->frameGeometry().x() << ' ' << window->frameGeometry().y() << ' ' << window->width() << ' '
        << window->height();
    for (const ViewerPanel which : rememberedPanels)
        EXPECT_TRUE(isOpen(which));
    EXPECT_GE(window->picture()->width(), 300);
    EXPECT_GE(window->picture()->height(), 150);
    trigger("viewer.floatPanels");
    for (const ViewerPanel which : rememberedPanels)
        EXPECT_TRUE(panel(which)->isFloating());
    trigger("viewer.dockPanels");
    for (const ViewerPanel which : rememberedPanels)
        EXPECT_FALSE(panel(which)->isFloating());
    EXPECT_EQ(freeOfPanels(), 1.0);
}

TEST_F(PanelsTest, TheWidthThatDockedPanelsWereGivenGoesWithThemUnlessSomebodySizedTheWindow) {
    if (window->screen()->availableSize().width() < 1280) GTEST_SKIP() << "needs a screen that people have";
    openFrames(24);
    preferences.constrainViewerToMovieProportions.set(false);
    const QRect screen = window->screen()->availableGeometry();
    window->setGeometry(QRect(screen.topLeft() + QPoint(0, 30), QSize(700, 560)));
    ASSERT_TRUE(bench::waitUntil([&] { return window->size() == QSize(700, 560); }));
    const auto widthIs = [this](auto test) { return bench::waitUntil([&] { return test(window->width()); }); };
    for (int round = 0; round < 2; ++round) { // once more from where it came back to
        trigger("viewer.showAllPanels");
        EXPECT_TRUE(widthIs([](int width) { return width > 800; }));
        QTest::qWait(200); // nothing else is to come
        trigger("viewer.gradeTools");
        QTest::qWait(50);
        EXPECT_GT(window->width(), 800) << "others stand there";
        trigger("viewer.hideAllPanels");
        EXPECT_TRUE(widthIs([](int width) { return width == 700; })) << window->width();
        EXPECT_EQ(window->height(), 560);
    }
    trigger("viewer.showAllPanels");
    EXPECT_TRUE(widthIs([](int width) { return width > 800; }));
    QTest::qWait(200);
    window->resize(window->size() + QSize(0, 20));
    QTest::qWait(200);
    const QSize chosen = window->size();
    trigger("viewer.hideAllPanels");
    QTest::qWait(200);
    EXPECT_EQ(window->size(), chosen);
}

TEST_F(PanelsTest, TabsOfDockedPanelsAreWhole) {
    if (window->screen()->availableSize().width() < 1280) GTEST_SKIP() << "needs a screen that people have";
    openFrames(24);
    window->resize(1240, 640);
    for (const char* id :
         {"viewer.gradeTools", "viewer.drawingTools", "viewer.options", "viewer.playlistDrawer", "viewer.colour"})
        trigger(id);
    trigger("viewer.dockPanels");
    QTest::qWait(100);
    EXPECT_EQ(panel(ViewerPanel::grading)->windowTitle(), QStringLiteral("Grade"));
    EXPECT_EQ(panel(ViewerPanel::grading)->findChild<PanelTitle*>()->title(), QStringLiteral("Colour Correction"));
    int tabs = 0;
    for (const QTabBar* bar : window->findChildren<QTabBar*>()) {
        if (!bar->isVisible()) continue;
        for (int tab = 0; tab < bar->count(); ++tab, ++tabs)
            EXPECT_GE(bar->tabRect(tab).width(), bar->fontMetrics().horizontalAdvance(bar->tabText(tab)) + 12)
                << bar->tabText(tab).toStdString();
    }
    EXPECT_GE(tabs, 4);
    trigger("viewer.floatPanels");
    EXPECT_EQ(panel(ViewerPanel::grading)->windowTitle(), QStringLiteral("Colour Correction"));
}

TEST_F(PanelsTest, ALayoutSavedBeforePanelsWereEverShownPutsThemWhereTheyWouldHaveOpened) {
    openFrames(24);
    alerts.answers = {Alerts::firstButton};
    trigger("viewer.savePanelLayout");
    trigger("viewer.restorePanelLayout1");
    trigger("viewer.showAllPanels");
    const QRect screen = window->screen()->availableGeometry();
    QList<QRect> frames;
    for (const ViewerPanel which : rememberedPanels) {
        if (which == ViewerPanel::playlistDrawer) continue;
        SCOPED_TRACE(qPrintable(ViewerPanels::layoutName(which)));
        const ToolPanel* shown = panel(which);
        EXPECT_TRUE(screen.contains(shown->geometry()));
        EXPECT_GE(shown->width(), shown->minimumSizeHint().width());
        EXPECT_GE(shown->height(), shown->minimumSizeHint().height());
        if (which == ViewerPanel::notes) {
            EXPECT_GE(shown->height(), 300);
        }
        for (const QRect& other : frames)
            EXPECT_NE(other.topLeft(), shown->geometry().topLeft());
        frames << shown->geometry();
    }
}

TEST_F(PanelsTest, OptionsSetAndFollowThePreferences) {
    openFrames(60);
    trigger("viewer.options");
    EXPECT_LE(panel(ViewerPanel::options)->height(), 720);
    EXPECT_GE(panel(ViewerPanel::options)->height(), panel(ViewerPanel::options)->minimumSizeHint().height());
    const QImage bare = window->picture()->grab().toImage();
    click(option<QCheckBox>("displayFrameCounter"));
    EXPECT_TRUE(preferences.displayFrameCounter());
    EXPECT_NE(window->picture()->grab().toImage(), bare);
    click(option<QCheckBox>("displayFrameCounter"));
    EXPECT_EQ(window->picture()->grab().toImage(), bare);
    preferences.mirrorX.set(true); // from elsewhere
    EXPECT_TRUE(option<QCheckBox>("mirrorX")->isChecked());
    click(option<QCheckBox>("mirrorX"));
    EXPECT_FALSE(controller.geometry().mirrorsUpsideDown());

    goTo(12);
    trigger("viewer.markIn");
    EXPECT_TRUE(option<QCheckBox>("trimHandles")->isChecked());
    EXPECT_EQ(option<QSpinBox>("handleHead")->value(), 11);
    panel(ViewerPanel::options)->activateWindow();
    typeNumber(option<QSpinBox>("handleTail"), QStringLiteral("20"));
    EXPECT_EQ(controller.range().lastFrameForLoop(), 40);
    EXPECT_TRUE(bench::waitUntil([this] { return QApplication::activeWindow() == window.get(); }));

    typeNumber(option<QDoubleSpinBox>("rateMultiplier"), window->locale().toString(2.5));
    transport.playMovieForwards();
    EXPECT_EQ(player.rate(), 2.5f);
    QTest::mouseClick(option<QPushButton>("resetRate"), Qt::LeftButton);
    EXPECT_EQ(player.rate(), 1.0f);
    EXPECT_EQ(option<QDoubleSpinBox>("rateMultiplier")->value(), 1.0);
    transport.pauseMovie();
    goTo(31);
    QTest::mouseClick(option<QPushButton>("counterToOne"), Qt::LeftButton);
    EXPECT_EQ(controller.time().currentFrameNumberForDisplay().toInt(), 1);
    EXPECT_EQ(option<QSpinBox>("counterStartFrame")->value(), -29);
}

TEST_F(PanelsTest, TheFloatingControlsSeekAndShowTheRange) {
    openFrames(48);
    trigger("viewer.controls");
    auto* controls = window->findChild<ControlsPanel*>();
    ASSERT_TRUE(controls && controls->isVisible());
    EXPECT_FALSE(panel(ViewerPanel::controls)
                     ->geometry()
                     .intersects(QRect(window->transportBar()->mapToGlobal(QPoint()),
                                       window->transportBar()->size())));
    PositionSlider* slider = controls->slider();
    const int x = slider->xOf(double(player.index().timeOf(29).value));
    QTest::mouseClick(slider, Qt::LeftButton, {}, QPoint(x, 14));
    EXPECT_SHOWN(30);
    EXPECT_TRUE(controls->counterText().startsWith(u"0030 / ")) << controls->counterText().toStdString();
    EXPECT_EQ(slider->value(), 30);
    EXPECT_EQ(window->slider()->value(), 30);
    controller.range().markOutPoint();
    auto* bar = controls->findChild<RangeIndicator*>();
    EXPECT_TRUE(bar->isVisible());
    EXPECT_EQ(bar->rangeEnd(), 30);
    auto* volume = controls->findChild<VolumeButton*>();
    QTest::mouseClick(volume, Qt::LeftButton);
    QSlider* loudness = volume->slider();
    ASSERT_TRUE(loudness->isVisible());
    EXPECT_EQ(loudness->visibleRegion(), QRegion(loudness->rect())) << "whole, inside its window";
    EXPECT_TRUE(loudness->window()->rect().contains(
        QRect(loudness->mapTo(loudness->window(), QPoint()), loudness->size())));
    QTest::mouseClick(loudness, Qt::LeftButton, {}, QPoint(loudness->width() - 4, loudness->height() / 2));
    EXPECT_GT(player.volume(), 0.5F);
    QTest::mouseClick(volume, Qt::LeftButton);
    QTest::mouseClick(panel(ViewerPanel::controls)->findChild<PanelTitle*>()->findChild<QToolButton*>(), Qt::LeftButton);
    EXPECT_FALSE(controls->isVisible());
}

// Not a check but pictures to look at, of the whole screen; only where a folder is named for them.
TEST_F(PanelsTest, PicturesOfAllPanels) {
    if (qEnvironmentVariableIsEmpty("DAYLARK_PANEL_SHOTS")) GTEST_SKIP();
    const QSize screen = window->screen()->size();
    const QString size = QStringLiteral("-%1.png").arg(screen.height());
    first = record(bench::movie({.frames = 48, .group = 12}));
    second = record(bench::movie({.frames = 48, .group = 24}));
    show({first, second});
    window->resize(screen.width() > 1500 ? QSize(1360, 900) : QSize(1180, 660));
    window->move(screen.width() > 1500 ? QPoint(60, 40) : QPoint(20, 30));
    goTo(9);
    controller.bookmarks().addBookmark();
    goTo(20);
    controller.bookmarks().addBookmark();
    controller.range().markOutPoint();
    ASSERT_TRUE(settled());
    shot(QStringLiteral("bare") + size);
    for (const char* id : {"viewer.notes", "viewer.bookmarks", "viewer.drawingTools", "viewer.gradeTools",
                           "viewer.options", "viewer.controls", "viewer.playlistDrawer"}) {
        trigger(id);
        shot(QString::fromLatin1(id) + size);
        trigger(id);
    }
    trigger("viewer.showAllPanels");
    shot(QStringLiteral("all") + size);
    trigger("viewer.hideAllPanels");
    for (const ViewerPanel which : {ViewerPanel::notes, ViewerPanel::bookmarks, ViewerPanel::grading})
        panel(which)->setFloating(false);
    for (const char* id : {"viewer.notes", "viewer.bookmarks", "viewer.gradeTools"})
        trigger(id);
    shot(QStringLiteral("docked") + size);
    trigger("viewer.hideAllPanels");
    for (const ViewerPanel which : {ViewerPanel::notes, ViewerPanel::bookmarks, ViewerPanel::grading})
        panel(which)->setFloating(true);
    trigger("viewer.fullScreen");
    QTest::qWait(500);
    trigger("viewer.showAllPanels");
    shot(QStringLiteral("full") + size);
    trigger("viewer.hideAllPanels");
    trigger("viewer.controls");
    shot(QStringLiteral("full-controls") + size);
    trigger("viewer.fullScreen");
    QTest::qWait(500);
    shot(QStringLiteral("left") + size);
}

} // namespace
} // namespace daylark
