#include "ui/ViewerPanelHost.h"

#include "ui/PanelTitle.h"

#include <QAction>
#include <QApplication>
#include <QDockWidget>
#include <QGuiApplication>
#include <QMainWindow>
#include <QScreen>

#include <algorithm>

namespace daylark {

ViewerPanelHost::ViewerPanelHost(QMainWindow& viewer, ViewerPanels& panels)
    : QObject(&viewer)
    , viewer_(viewer)
    , panels_(panels) {
    panels_.setHost(this);
}

ViewerPanelHost::~ViewerPanelHost() {
    stop();
}

void ViewerPanelHost::stop() {
    panels_.setHost(nullptr);
    for (QDockWidget* window : std::as_const(windows_))
        window->disconnect(this);
}

QDockWidget* ViewerPanelHost::addPanel(ViewerPanel panel, const QString& title, QWidget* content, Place place,
                                       Qt::DockWidgetArea area) {
    auto* window = new QDockWidget(title, &viewer_);
    window->setObjectName(ViewerPanels::layoutName(panel).isEmpty() ? QStringLiteral("controlsWindow")
                                                                    : ViewerPanels::layoutName(panel));
    window->setWidget(content);
    auto* close = new QAction(window);
    connect(close, &QAction::triggered, this, [this, panel] { panels_.show(panel, false); });
    window->setTitleBarWidget(new PanelTitle(title, close, window));
    viewer_.addDockWidget(area, window);
    window->hide();
    if (place == Place::floating) window->setFloating(true);
    windows_.insert(panel, window);
    connect(window, &QDockWidget::visibilityChanged, this, &ViewerPanelHost::visibilityChanged);
    return window;
}

void ViewerPanelHost::hideAll() {
    for (QDockWidget* window : std::as_const(windows_))
        window->hide();
}

bool ViewerPanelHost::isPanelVisible(ViewerPanel panel) const {
    const QDockWidget* window = windows_.value(panel);
    return window && !window->isHidden();
}

void ViewerPanelHost::setPanelVisible(ViewerPanel panel, bool visible) {
    QDockWidget* window = windows_.value(panel);
    if (!window) return;
    const QWidget* focus = QApplication::focusWidget();
    const bool hadFocus = focus && window->isAncestorOf(focus);
    if (visible && window->isFloating() && !placed_.value(panel)) {
        placeBesideViewer(window);
        placed_.insert(panel, true);
    }
    window->setAttribute(Qt::WA_ShowWithoutActivating);
    window->setVisible(visible);
    if (visible && window->isFloating()) {
        window->setGeometry(broughtOntoAScreen(window->geometry()));
        window->raise();
    }
    if (!visible && hadFocus) {
        viewer_.activateWindow();
        if (viewer_.centralWidget()) viewer_.centralWidget()->setFocus();
    }
}

/// The first time: down the viewer's right side, one a little below the other, clear of the controls strip.
void ViewerPanelHost::placeBesideViewer(QDockWidget* window) {
    const QRect viewer = viewer_.frameGeometry();
    const QSize size = window->size().expandedTo(window->sizeHint());
    int step = 0;
    for (const QDockWidget* other : std::as_const(windows_))
        if (other != window && other->isFloating() && !other->isHidden()) ++step;
    QRect frame(QPoint(viewer.right() + 8, viewer.top() + 24 + step * 32), size);
    const QScreen* screen = viewer_.screen();
    if (screen && frame.right() > screen->availableGeometry().right())
        frame.moveRight(viewer.right() - 16 - step * 16);
    window->setGeometry(broughtOntoAScreen(frame));
}

QRect ViewerPanelHost::panelFrame(ViewerPanel panel) const {
    const QDockWidget* window = windows_.value(panel);
    if (!window) return {};
    return {window->mapToGlobal(QPoint(0, 0)), window->size()};
}

void ViewerPanelHost::setPanelFrame(ViewerPanel panel, const QRect& frame) {
    QDockWidget* window = windows_.value(panel);
    if (!window) return;
    window->setFloating(true);
    window->setGeometry(
        broughtOntoAScreen({frame.topLeft(), frame.size().expandedTo(window->minimumSizeHint())}));
    placed_.insert(panel, true);
}

QRect ViewerPanelHost::viewerFrame() const {
    return viewer_.geometry();
}

void ViewerPanelHost::setViewerFrame(const QRect& frame) {
    if (isFullScreen()) return;
    viewer_.setWindowState(viewer_.windowState() & ~Qt::WindowMaximized);
    viewer_.setGeometry(broughtOntoAScreen(frame));
}

bool ViewerPanelHost::isFullScreen() const {
    return viewer_.isFullScreen();
}

void ViewerPanelHost::hideCursorUntilMouseMoves() {
    Q_EMIT cursorHideWanted();
}

void ViewerPanelHost::closeColourPanel() {
    Q_EMIT colourPanelCloseWanted();
}

QRect ViewerPanelHost::broughtOntoAScreen(const QRect& frame) {
    const QScreen* best = nullptr;
    qint64 most = 0;
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect shared = screen->availableGeometry() & frame;
        const qint64 area = qint64(shared.width()) * shared.height();
        if (!shared.isEmpty() && area > most) {
            most = area;
            best = screen;
        }
    }
    if (!best) best = QGuiApplication::primaryScreen();
    if (!best) return frame;
    const QRect room = best->availableGeometry();
    QRect placed(frame.topLeft(), frame.size().boundedTo(room.size()));
    placed.moveLeft(std::clamp(placed.left(), room.left(), room.right() - placed.width() + 1));
    placed.moveTop(std::clamp(placed.top(), room.top(), room.bottom() - placed.height() + 1));
    return placed;
}

} // namespace daylark
