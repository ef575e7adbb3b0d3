#include "ui/viewer/LostScreens.h"

#include "ui/viewer/ViewerPanelHost.h"

#include <QApplication>
#include <QScreen>
#include <QWidget>

namespace daylark {

LostScreens::LostScreens(QObject* parent)
    : QObject(parent) {
    constexpr int momentMs = 300;
    settled_.setSingleShot(true);
    settled_.setInterval(momentMs);
    connect(&settled_, &QTimer::timeout, this, &LostScreens::bringBack);
    connect(qGuiApp, &QGuiApplication::screenRemoved, &settled_, qOverload<>(&QTimer::start));
}

bool LostScreens::isLost(const QRect& frame) {
    qint64 seen = 0;
    const auto screens = QGuiApplication::screens();
    for (const QScreen* screen : screens) {
        const QRect shared = screen->geometry() & frame;
        if (!shared.isEmpty()) seen += qint64(shared.width()) * shared.height();
    }
    return 2 * seen < qint64(frame.width()) * frame.height();
}

void LostScreens::bringBack() {
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        const bool placed = window->windowType() == Qt::Window || window->windowType() == Qt::Tool ||
                            window->windowType() == Qt::Dialog;
        if (!placed || !window->isVisible() || window->isFullScreen() || window->isMaximized()) continue;
        if (isLost(window->geometry()))
            window->setGeometry(ViewerPanelHost::broughtOntoAScreen(window->geometry()));
    }
}

} // namespace daylark
