#include "ui/ViewerWindowFixture.h"

#include "support/PictureMaker.h"
#include "ui/common/PlainLabel.h"
#include "ui/common/ToolPanel.h"
#include "ui/desktop/Translations.h"
#include "ui/panels/ControlsPanel.h"
#include "ui/panels/ScopeView.h"
#include "ui/picture/PixelPlate.h"
#include "ui/viewer/ViewerPanelHost.h"
#include "ui/viewer/ViewerSizing.h"

#include <QComboBox>
#include <QFile>
#include <QMenu>
#include <QMouseEvent>
#include <QTemporaryDir>
#include <QTimer>
#include <QToolButton>

namespace daylark {
namespace {

/// What tells a picture's numbers and how it is shown: the read-out, the scopes, displays and views in the strip.
class LookingTest : public ViewerWindowFixture {
protected:
    /// In a window that may be wider than the screen: kept in the movie's proportions, or just shown, it is brought onto the
    /// screen a moment later, which takes the room for what stands in the strip.
    void open() {
        preferences.constrainViewerToMovieProportions.set(false);
        openFrames(24);
        ASSERT_EQ(pictureOnScreen(), 1);
        ASSERT_TRUE(settledWindow());
    }
    [[nodiscard]] bool settledWindow() const {
        const auto* settling = window->findChild<ViewerSizing*>()->findChild<QTimer*>();
        return settling && bench::waitUntil([settling] { return !settling->isActive(); });
    }
    void pointAt(const QPointF& at) {
        PictureView* picture = window->picture();
        QMouseEvent move(QEvent::MouseMove, at, picture->mapToGlobal(at), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(picture, &move);
        QCoreApplication::processEvents();
    }
    [[nodiscard]] PixelPlate* plate() const { return child<PixelPlate>("pixelPlate"); }
    [[nodiscard]] QToolButton* popUp(const char* name) const { return child<QToolButton>(name); }
    [[nodiscard]] static QStringList titles(QMenu* menu) {
        Q_EMIT menu->aboutToShow();
        QStringList titles;
        for (const QAction* action : menu->actions())
            titles << action->text();
        return titles;
    }
    void choose(const char* button, const QString& title) {
        Q_EMIT popUp(button)->menu()->aboutToShow();
        for (QAction* action : popUp(button)->menu()->actions())
            if (action->text() == title) return action->trigger();
        FAIL() << qPrintable(title);
    }
};

TEST_F(LookingTest, TheReadOutComesByItsKeyFollowsThePointerAndStandsAside) {
    open();
    EXPECT_FALSE(plate()->isVisible());
    key(Qt::Key_X);
    EXPECT_TRUE(plate()->isVisible());
    EXPECT_TRUE(preferences.displayPixelReadOut());
    EXPECT_TRUE(window->commands().action(QStringLiteral("viewer.pixelReadOut"))->isChecked());
    const QRectF picture = window->picture()->pictureRect();
    pointAt(picture.center());
    EXPECT_TRUE(plate()->accessibleDescription().startsWith(QStringLiteral("x 128   y 72")))
        << qPrintable(plate()->accessibleDescription());
    EXPECT_TRUE(window->picture()->rect().contains(plate()->geometry()));
    EXPECT_FALSE(plate()->geometry().contains(window->picture()->rect().center()));
    const QRect before = plate()->geometry();
    pointAt(QPointF(before.center())); // it is never under the pointer
    EXPECT_FALSE(plate()->geometry().intersects(before));
    EXPECT_TRUE(window->picture()->rect().contains(plate()->geometry()));
    pointAt(picture.topLeft() - QPointF(0, 3)); // the bar above the picture
    if (picture.top() > 4) {
        EXPECT_TRUE(controller.pixels().text().place.isEmpty());
    }
    pointAt(picture.center());
    QEvent left(QEvent::Leave);
    QApplication::sendEvent(window->picture(), &left);
    EXPECT_FALSE(controller.pixels().values());
    // Full screen watches the pointer as well, and stops when it ends.
    key(Qt::Key_F11);
    key(Qt::Key_F11);
    EXPECT_TRUE(window->picture()->hasMouseTracking());
    key(Qt::Key_X);
    EXPECT_FALSE(plate()->isVisible());
}

TEST_F(LookingTest, TheScopesPanelShowsWhatIsChosenByPopUpOrKey) {
    open();
    key(Qt::Key_W);
    ToolPanel* panel = window->findChild<ViewerPanelHost*>()->window(ViewerPanel::scopes);
    ASSERT_TRUE(panel->isVisible());
    EXPECT_EQ(preferences.restoreScopesWindow(), 1);
    auto* choice = panel->findChild<QComboBox*>();
    auto* scope = panel->findChild<ScopeView*>();
    ASSERT_TRUE(bench::waitUntil([this] { return !controller.scopes().isBehind(); }));
    EXPECT_EQ(scope->accessibleName(), QStringLiteral("Scope: Waveform"));
    std::vector<QImage> seen;
    for (int kind = 0; kind < 4; ++kind) {
        EXPECT_EQ(choice->currentIndex(), kind);
        ASSERT_TRUE(bench::waitUntil([this] { return !controller.scopes().isBehind(); }));
        const QImage now = scope->grab().toImage();
        for (const QImage& other : seen)
            EXPECT_NE(now, other) << kind;
        seen.push_back(now);
        if (kind < 3) window->commands().action(QStringLiteral("viewer.nextScope"))->trigger();
    }
    choice->setCurrentIndex(2);
    Q_EMIT choice->activated(2);
    EXPECT_EQ(controller.scopes().kind(), ScopeKind::vectorscope);
    EXPECT_EQ(scope->accessibleName(), QStringLiteral("Scope: Vectorscope"));
    key(Qt::Key_H); // all away
    EXPECT_FALSE(panel->isVisible());
    EXPECT_TRUE(controller.scopes().trace().isNull());
    EXPECT_FALSE(window->commands().action(QStringLiteral("viewer.nextScope"))->isEnabled());
}

TEST_F(LookingTest, DisplayAndViewStandInTheStripWhereThePictureIsManaged) {
    open();
    window->resize(1900, 860);
    EXPECT_FALSE(popUp("displayPopUp")->isVisible());
    EXPECT_FALSE(popUp("viewPopUp")->isVisible());
    controller.colour().setInputSpace(QStringLiteral("ACEScg"));
    ASSERT_TRUE(QTest::qWaitFor([this] { return controller.colour().processor() != nullptr; }, 30000));
    QCoreApplication::processEvents();
    ASSERT_TRUE(popUp("displayPopUp")->isVisible()) << "in a window of " << window->width();
    ASSERT_TRUE(popUp("viewPopUp")->isVisible());
    EXPECT_EQ(popUp("displayPopUp")->text(), QStringLiteral("sRGB"));
    EXPECT_TRUE(titles(popUp("displayPopUp")->menu()).contains(QStringLiteral("Rec.709")));
    choose("displayPopUp", QStringLiteral("Rec.709"));
    EXPECT_EQ(preferences.colourDisplay(), QStringLiteral("Rec.709"));
    choose("viewPopUp", QStringLiteral("Raw"));
    EXPECT_EQ(preferences.colourView(), QStringLiteral("Raw"));
    EXPECT_EQ(popUp("viewPopUp")->text(), QStringLiteral("Raw"));
    EXPECT_EQ(popUp("viewPopUp")->toolTip(), QStringLiteral("View: Raw"));
    // In a narrow window they stand behind the strip's end, and come back from there.
    window->resize(640, 700);
    QCoreApplication::processEvents();
    EXPECT_FALSE(popUp("displayPopUp")->isVisible());
    EXPECT_FALSE(popUp("viewPopUp")->isVisible());
    const QStringList more = titles(popUp("moreControls")->menu());
    EXPECT_TRUE(more.contains(QStringLiteral("&Display"))) << qPrintable(more.join(u','));
    EXPECT_TRUE(more.contains(QStringLiteral("&View"))) << qPrintable(more.join(u','));
    edits.history().undo(); // a movie like any other again
    QCoreApplication::processEvents();
    EXPECT_FALSE(titles(popUp("moreControls")->menu()).contains(QStringLiteral("&Display")));
    window->resize(1900, 860);
    QCoreApplication::processEvents();
    EXPECT_FALSE(popUp("viewPopUp")->isVisible());
}

/// 1280 points across, in every language; and the production's number is whole.
TEST_F(LookingTest, ARunsLayerDisplayAndViewStayInTheStripOfASmallScreen) {
    const QTemporaryDir folder;
    const auto shot = record(folder.filePath(QStringLiteral("sh010.1001.exr")));
    for (const int number : {1001, 1008}) {
        test::WrittenPicture picture =
            test::barCodePicture(folder.filePath(QStringLiteral("sh010.%1.exr").arg(number)), number);
        test::addLayer(picture, QStringLiteral("diffuse"), number);
        writePicture(picture);
    }
    shot->frameRun = MovieRun();
    shot->frameRun->run = {QStringLiteral("sh010."), QStringLiteral(".exr"), 4, false, 1001, 1008, 1};
    const auto isWhole = [](const QWidget* label) {
        return label && label->isVisible() && label->width() >= label->sizeHint().width();
    };
    for (const char* language : {"", "de", "fr"}) {
        SCOPED_TRACE(language);
        Translations table;
        if (*language) {
            ASSERT_TRUE(table.read(QStringLiteral(":/translations/daylark_%1.ts").arg(QLatin1String(language))));
            QCoreApplication::installTranslator(&table); // until it goes
        }
        window.reset(); // before another one takes the panels
        window = std::make_unique<ViewerWindow>(controller);
        window->resize(1280, 660);
        show({shot});
        ASSERT_TRUE(settledWindow());
        window->resize(1280, 660);
        goTo(8);
        ASSERT_TRUE(settled());
        ASSERT_TRUE(bench::waitUntil([this] { return controller.colour().processor() != nullptr; }));
        QCoreApplication::processEvents();
        for (const char* name : {"layerPopUp", "displayPopUp", "viewPopUp", "flagPopUp"})
            EXPECT_TRUE(isWhole(popUp(name))) << name;
        EXPECT_TRUE(isWhole(child<QLabel>("counter")));
        EXPECT_TRUE(child<QLabel>("counter")->text().endsWith(QStringLiteral("1008")));
        controller.panels().toggle(ViewerPanel::controls);
        auto* controls = window->findChild<ControlsPanel*>();
        ASSERT_TRUE(controls && controls->isVisible());
        QCoreApplication::processEvents();
        const auto labels = controls->findChildren<PlainLabel*>();
        const auto counter = std::find_if(labels.begin(), labels.end(),
                                          [](const PlainLabel* label) { return label->text().endsWith(QStringLiteral("1008")); });
        ASSERT_NE(counter, labels.end());
        EXPECT_TRUE(isWhole(*counter)) << (*counter)->width() << " of " << (*counter)->sizeHint().width();
        if (const QString shots = qEnvironmentVariable("DAYLARK_PANEL_SHOTS"); !shots.isEmpty()) {
            window->grab().save(shots + QStringLiteral("/strip-%1.png").arg(QLatin1String(language)));
            controls->window()->grab().save(shots + QStringLiteral("/controls-%1.png").arg(QLatin1String(language)));
        }
        controller.panels().toggle(ViewerPanel::controls);
        controller.close();
    }
}

TEST_F(LookingTest, AButtonIsDarkAgainWhoseListThePointerHasLeftItFor) {
    open();
    window->resize(1900, 860);
    QCoreApplication::processEvents();
    int lists = 0;
    for (auto* button : window->findChildren<QToolButton*>()) {
        if (!button->menu() || !button->isVisible() || !button->isEnabled()) continue;
        ++lists;
        QCursor::setPos(button->mapToGlobal(button->rect().center()));
        ASSERT_TRUE(bench::waitUntil([button] { return button->underMouse(); })) << qPrintable(button->objectName());
        QTimer hand; // goes into the list and chooses
        QObject::connect(&hand, &QTimer::timeout, [] {
            auto* list = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            if (!list) return;
            const QPoint at = list->actionGeometry(list->actions().front()).center();
            QCursor::setPos(list->mapToGlobal(at));
            QTest::mouseClick(list->windowHandle(), Qt::LeftButton, {}, at);
        });
        hand.start(20);
        QTest::mouseClick(button, Qt::LeftButton);
        EXPECT_TRUE(bench::waitUntil([button] { return !button->underMouse(); })) << qPrintable(button->objectName());
    }
    EXPECT_GE(lists, 3);
}

TEST_F(LookingTest, TheWayToTheMenusThatHaveNoRoomIsSeen) {
    open();
    window->resize(window->minimumSizeHint().expandedTo({430, 400}));
    auto* way = child<QToolButton>("qt_menubar_ext_button");
    ASSERT_TRUE(way && bench::waitUntil([way] { return way->isVisible(); }));
    EXPECT_EQ(way->text(), QStringLiteral("»"));
    const QImage seen = way->grab().toImage();
    int brightest = 0;
    for (int y = 0; y < seen.height(); ++y)
        for (int x = 0; x < seen.width(); ++x)
            brightest = std::max(brightest, qGray(seen.pixel(x, y)));
    EXPECT_GT(brightest, 120);
}

TEST_F(LookingTest, ABrokenConfigurationIsSaidInTheStripInOneLine) {
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("broken.ocio")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("ocio_profile_version: 2\nnonsense");
    file.close();
    open();
    window->resize(1900, 860);
    controller.colour().setInputSpace(QStringLiteral("ACEScg"));
    controller.colour().chooseConfig(file.fileName());
    ASSERT_TRUE(QTest::qWaitFor([this] { return !controller.colour().problem().isEmpty(); }, 30000));
    QCoreApplication::processEvents();
    ASSERT_TRUE(popUp("displayPopUp")->isVisible());
    EXPECT_EQ(popUp("displayPopUp")->text(), QStringLiteral("Shown Raw"));
    EXPECT_TRUE(popUp("displayPopUp")->toolTip().contains(QStringLiteral("cannot be used")));
    EXPECT_FALSE(popUp("viewPopUp")->isVisible());
    Q_EMIT popUp("displayPopUp")->menu()->aboutToShow();
    const QList<QAction*> lines = popUp("displayPopUp")->menu()->actions();
    ASSERT_GE(lines.size(), 3); // why, a line, and where to choose another
    EXPECT_FALSE(lines.front()->isEnabled());
    lines.back()->trigger();
    EXPECT_TRUE(controller.panels().isVisible(ViewerPanel::colour));
}

} // namespace
} // namespace daylark
