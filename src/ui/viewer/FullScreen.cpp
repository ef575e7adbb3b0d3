#include "ui/viewer/FullScreen.h"

#include "base/PlainText.h"
#include "ui/viewer/LostScreens.h"
#include "ui/viewer/MouseZones.h"
#include "ui/viewer/MovieListOverlay.h"
#include "ui/picture/PictureView.h"
#include "ui/viewer/ViewerPanelHost.h"
#include "viewer/MoviePlayerController.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPointer>
#include <QScreen>
#include <QTimer>
#include <QWindow>

#include <utility>

namespace daylark {

FullScreen::FullScreen(QMainWindow& window, PictureView& picture, QWidget& strip, ViewerPanelHost& host,
                       MoviePlayerController& controller)
    : QObject(&window)
    , window_(window)
    , picture_(picture)
    , strip_(strip)
    , host_(host)
    , controller_(controller)
    , zones_(new MouseZones(picture))
    , list_(new MovieListOverlay(controller, picture))
    , screens_(new QMenu(tr("Full Screen O&n"), &window)) {
    ViewerInput& input = controller.input();
    connect(zones_, &MouseZones::entered, &input, &ViewerInput::mouseEntered);
    connect(zones_, &MouseZones::exited, &input, &ViewerInput::mouseExited);
    connect(&input, &ViewerInput::showMovieList, list_, &MovieListOverlay::setShown);
    connect(&host, &ViewerPanelHost::cursorHideWanted, this, &FullScreen::hideCursor);
    connect(screens_, &QMenu::aboutToShow, this, &FullScreen::fillScreensMenu);
    const auto several = [this] {
        screens_->menuAction()->setVisible(QGuiApplication::screens().size() > 1);
    };
    connect(qGuiApp, &QGuiApplication::screenAdded, this, several);
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, several);
    // The window manager has its say too, a moment before or after.
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, [this] {
        for (const int moment : {0, 250, 1000})
            QTimer::singleShot(moment, this, &FullScreen::fillScreen);
    });
    several();
    host.setMovieList({[this](bool shown) { list_->setShown(shown); }, [this] { return list_->isShown(); }});
    window_.installEventFilter(this);
    QCoreApplication::instance()->installEventFilter(this);
}

FullScreen::~FullScreen() {
    showCursor();
}

void FullScreen::fillScreensMenu() {
    screens_->clear();
    const auto all = QGuiApplication::screens();
    for (QScreen* screen : all) {
        const QSize size = screen->size() * screen->devicePixelRatio();
        QString name = QStringLiteral("%1 %2").arg(screen->manufacturer(), screen->model()).trimmed();
        if (name.isEmpty()) name = screen->name();
        QAction* item = screens_->addAction(
            plain::menuTitle(QStringLiteral("%1 (%2 × %3)").arg(name).arg(size.width()).arg(size.height())));
        item->setCheckable(true);
        item->setChecked(screen == window_.screen());
        connect(item, &QAction::triggered, this, [this, at = QPointer<QScreen>(screen)] { enter(at); });
    }
}

void FullScreen::toggle() {
    on_ ? leave() : enter();
}

void FullScreen::enter(QScreen* screen) {
    if (!screen) screen = window_.screen();
    if (on_) {
        if (screen != window_.screen()) window_.setGeometry(screen->geometry());
        return;
    }
    before_ = window_.isMaximized() ? QRect() : window_.geometry();
    setOn(true);
    if (screen != window_.screen()) {
        window_.windowHandle()->setScreen(screen);
        window_.setGeometry(QRect(screen->geometry().topLeft(), window_.size()));
    }
    entered();
    window_.setWindowState(window_.windowState() | Qt::WindowFullScreen);
    Q_EMIT changed();
}

void FullScreen::leave() {
    if (!on_) return;
    setOn(false);
    window_.setWindowState(window_.windowState() & ~Qt::WindowFullScreen);
    left();
}

/// What is put away is what stood open before the change, whoever asked for it.
void FullScreen::setOn(bool on) {
    if (on)
        controller_.geometry().windowWillEnterFullScreen();
    else
        controller_.geometry().windowWillExitFullScreen();
    on_ = on;
    host_.setFullScreen(on);
}

/// The screen that it filled may have gone.
void FullScreen::fillScreen() {
    if (on_ && window_.geometry() != window_.screen()->geometry())
        window_.setGeometry(window_.screen()->geometry());
}

void FullScreen::entered() {
    window_.menuBar()->hide();
    strip_.hide();
    zones_->setEnabled(true);
    hideCursor();
}

void FullScreen::left() {
    zones_->setEnabled(false);
    showCursor();
    window_.menuBar()->show();
    strip_.show();
    QRect before = std::exchange(before_, {});
    if (!before.isNull() && LostScreens::isLost(before)) before = ViewerPanelHost::broughtOntoAScreen(before);
    if (!before.isNull() && window_.geometry() != before) window_.setGeometry(before);
    controller_.panels().reopenAfterFullScreen(); // first: docked ones belong to the window's frame
    controller_.geometry().windowDidExitFullScreen();
    Q_EMIT changed();
}

void FullScreen::hideCursor() {
    if (cursorHidden_ || !on_) return;
    cursorHidden_ = true;
    cursorAt_ = QCursor::pos();
    QGuiApplication::setOverrideCursor(Qt::BlankCursor);
}

void FullScreen::showCursor() {
    if (!cursorHidden_) return;
    cursorHidden_ = false;
    QGuiApplication::restoreOverrideCursor();
}

bool FullScreen::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &window_ && event->type() == QEvent::WindowStateChange && window_.isFullScreen() != on_) {
        setOn(!on_); // by the window manager
        if (on_) {
            entered();
            Q_EMIT changed();
        } else {
            left();
        }
    }
    if (cursorHidden_) {
        if (event->type() == QEvent::MouseMove || event->type() == QEvent::TabletMove) {
            const QPointF moved = static_cast<QSinglePointEvent*>(event)->globalPosition() - cursorAt_;
            if (moved.manhattanLength() >= 2) showCursor();
        } else if (event->type() == QEvent::ApplicationDeactivate) {
            showCursor();
        }
    }
    return QObject::eventFilter(watched, event);
}

} // namespace daylark
