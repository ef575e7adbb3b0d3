#pragma once

#include "ui/commands/Commands.h"
#include "ui/picture/PictureView.h"
#include "ui/controls/TransportBar.h"
#include "ui/viewer/ViewerWindow.h"
#include "viewer/ViewerFixture.h"

#include <QAction>
#include <QTest>

namespace daylark {

/// The viewer's window over a real controller and real movies, driven by key and mouse events.
class ViewerWindowFixture : public ViewerFixture {
protected:
    ViewerWindowFixture() {
        window = std::make_unique<ViewerWindow>(controller);
        window->resize(1280, 860);
    }

    /// Two movies of the same length under different names.
    void openTwo() {
        first = record(bench::movie({.frames = 48, .group = 12}));
        second = record(bench::movie({.frames = 48, .group = 24}));
        show({first, second});
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }
    void openFrames(int frames) {
        first = record(bench::movie({.frames = frames, .group = 12}));
        show({first});
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QWidget* focus = QApplication::focusWidget();
        QTest::keyClick(focus ? focus : window.get(), key, modifiers);
    }
    /// As a click into it would, in its own window.
    static void takeKeyboard(QWidget* widget) {
        widget->window()->activateWindow();
        widget->setFocus();
        ASSERT_TRUE(bench::waitUntil([widget] { return widget->hasFocus(); }));
        // Keys that no hand presses tell no time; a changed property does. What asks for the focus with a time
        // before the server last moved it is not heard.
        widget->window()->setWindowIconText(QString::number(++keyboardsTaken));
        QTest::qWait(30);
    }
    [[nodiscard]] bool pictureIsDrawn() const {
        return bench::waitUntil([this] { return window->picture()->isDrawn(); });
    }
    /// What is drawn into the pixels on screen, once the exact picture stands; -1 when unreadable.
    [[nodiscard]] int pictureOnScreen() {
        if (!settled() || !pictureIsDrawn()) return -2;
        const PictureView* view = window->picture();
        const QImage shown = window->picture()->grab(view->pictureRect().toAlignedRect()).toImage();
        return readBarCode(shown).value_or(-1);
    }
    [[nodiscard]] int counterOnStrip() const { return window->transportBar()->counterText().section(u' ', 0, 0).toInt(); }
    template<class Widget>
    [[nodiscard]] Widget* child(const char* name) const {
        return window->findChild<Widget*>(QLatin1String(name));
    }

    std::unique_ptr<ViewerWindow> window;
    std::shared_ptr<Movie> first, second;
    static inline int keyboardsTaken = 0;
};

#define EXPECT_SHOWN(frame)                                                                                  \
    EXPECT_EQ(pictureOnScreen(), frame);                                                                     \
    EXPECT_EQ(counterOnStrip(), frame)

} // namespace daylark
