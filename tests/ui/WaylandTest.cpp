#include "ui/ViewerWindowFixture.h"

#include "ui/LibraryFixture.h"
#include "ui/common/ToolPanel.h"
#include "ui/panels/DrawingPanel.h"
#include "ui/viewer/ViewerPanelHost.h"

namespace daylark {

using namespace Qt::StringLiterals;

/// What Qt complains of while it lives.
class Complaints {
public:
    Complaints() {
        texts().clear();
        previous_ = qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
            if (type != QtDebugMsg && type != QtInfoMsg) texts() << text;
        });
    }
    ~Complaints() { qInstallMessageHandler(previous_); }
    static QStringList& texts() {
        static QStringList list;
        return list;
    }

private:
    QtMessageHandler previous_;
};

/// Windows in a Wayland compositor. Run by a test of its own, which starts one.
class WaylandTest : public ViewerWindowFixture {
protected:
    void SetUp() override {
        if (!QGuiApplication::platformName().startsWith(u"wayland"_s)) GTEST_SKIP() << "needs a compositor";
        ViewerWindowFixture::SetUp();
    }
    static bool isShown(QWidget* widget) { return QTest::qWaitForWindowExposed(widget->window()); }
    void trigger(const char* id) { window->commands().action(QLatin1String(id))->trigger(); }
};

TEST_F(WaylandTest, PlaysDrawsFillsTheScreenAndFloatsPanelsWithoutAComplaint) {
    const Complaints complaints;
    preferences.autoSwitchToDrawingMode.set(false);
    first = record(bench::movie({.frames = 48, .group = 12}));
    show({first});
    ASSERT_TRUE(isShown(window.get()));
    EXPECT_SHOWN(1);
    key(Qt::Key_Right);
    EXPECT_SHOWN(2);
    key(Qt::Key_Space);
    ASSERT_TRUE(bench::waitUntil([this] { return player.isRolling(); }));
    key(Qt::Key_Space);

    trigger("viewer.drawingTools");
    auto* host = window->findChild<ViewerPanelHost*>();
    ToolPanel* panel = host->window(ViewerPanel::drawing);
    ASSERT_TRUE(bench::waitUntil([panel] { return panel->isVisible(); }));
    EXPECT_TRUE(panel->isFloating());
    EXPECT_TRUE(isShown(panel));
    QTest::mouseClick(window->findChild<DrawingPanel*>()->tool(u"Draw"_s), Qt::LeftButton);
    PictureView* view = window->picture();
    const auto at = [view](double x, double y) {
        const QRectF picture = view->pictureRect();
        return QPointF(picture.left() + picture.width() * x, picture.top() + picture.height() * y).toPoint();
    };
    QTest::mousePress(view, Qt::LeftButton, {}, at(0.2, 0.6));
    for (const double x : {0.4, 0.6, 0.8}) { // with the button held, as a hand makes them
        QMouseEvent move(QEvent::MouseMove, at(x, 0.6), view->mapToGlobal(at(x, 0.6)), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QApplication::sendEvent(view, &move);
    }
    QTest::mouseRelease(view, Qt::LeftButton, {}, at(0.8, 0.6));
    ASSERT_TRUE(bench::waitUntil([this] { return !first->bookmarkStore.empty(); }));
    EXPECT_EQ(first->bookmarkStore.front()->drawings.strokes.size(), 1U);

    trigger("viewer.fullScreen");
    ASSERT_TRUE(bench::waitUntil([this] { return window->size() == window->screen()->size(); }));
    EXPECT_TRUE(bench::waitUntil([view] { return view->width() == view->screen()->size().width(); }));
    trigger("viewer.fullScreen");
    ASSERT_TRUE(bench::waitUntil([this] { return !window->isFullScreen(); }));
    EXPECT_TRUE(QTest::qWaitFor([this] { return window->width() < window->screen()->size().width(); }));
    window->close();
    EXPECT_TRUE(Complaints::texts().isEmpty()) << qPrintable(Complaints::texts().join(u'\n'));
}

/// The library beside it.
class WaylandLibraryTest : public LibraryFixture {
protected:
    void SetUp() override {
        if (!QGuiApplication::platformName().startsWith(u"wayland"_s)) GTEST_SKIP() << "needs a compositor";
        LibraryFixture::SetUp();
    }
};

TEST_F(WaylandLibraryTest, ShowsItsItemsAndItsOtherWindowsWithoutAComplaint) {
    openWindow();
    const Complaints complaints;
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    ASSERT_TRUE(dropFiles(table(), {makeFile(u"a.mov"_s), makeFile(u"b.mov"_s)}));
    settleAdding();
    EXPECT_EQ(shownNames().size(), 2);
    trigger("app.preferences");
    trigger("help.shortcuts");
    window->bringToFront();
    QTest::qWait(200);
    closeWindow();
    EXPECT_TRUE(Complaints::texts().isEmpty()) << qPrintable(Complaints::texts().join(u'\n'));
}

} // namespace daylark
