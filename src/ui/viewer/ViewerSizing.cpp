#include "ui/viewer/ViewerSizing.h"

#include "ui/viewer/ViewerPanelHost.h"
#include "viewer/display/ViewerGeometry.h"

#include <QEvent>
#include <QMainWindow>
#include <QScreen>

#include <utility>

namespace daylark {

ViewerSizing::ViewerSizing(QMainWindow& window, QWidget& area, ViewerGeometry& geometry)
    : QObject(&window)
    , window_(window)
    , area_(area)
    , geometry_(geometry) {
    settled_.setSingleShot(true);
    settled_.setInterval(100);
    connect(&settled_, &QTimer::timeout, this, [this] {
        keepProportions();
        if (std::exchange(opening_, false)) keepOnScreen();
    });
    connect(&geometry_, &ViewerGeometry::windowFrameWanted, this,
            [this](const DisplayGeometry::WindowFrame& frame, bool animated) { takeFrame(frame, animated); });
    window_.installEventFilter(this);
}

bool ViewerSizing::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &window_ && event->type() == QEvent::Show && !event->spontaneous()) opening_ = true;
    if (watched == &window_ && ((event->type() == QEvent::Resize && !resizing_) || opening_)) settled_.start();
    return QObject::eventFilter(watched, event);
}

// The constraint counts the strip one point higher than the size commands do; so the picture's height stays.
void ViewerSizing::takeFrame(const DisplayGeometry::WindowFrame& frame, bool constrained) {
    if (window_.isFullScreen() || (constrained && (!window_.isVisible() || window_.isMaximized()))) return;
    const int strip = DisplayGeometry::controlsHeight + (constrained ? 1 : 0);
    resizeArea({frame.size.width(), frame.size.height() - strip}, frame.origin);
}

void ViewerSizing::takeWholeFrame(const QRect& frame) {
    setFrame(frame);
    whole_ = window_.size();
    opening_ = true; // docked panels may need more of it in a moment
    settled_.start();
}

void ViewerSizing::keepProportions() {
    if (window_.isFullScreen() || window_.isMaximized() || !window_.isVisible()) return;
    if (window_.size() == whole_) return;
    const QSize now(area_.width(), area_.height() + DisplayGeometry::controlsHeight);
    const QSize wanted = geometry_.windowWillResize(now);
    if (wanted == now) return;
    // A window manager that has it otherwise is not asked again and again.
    if (now == refused_ && sinceAsked_.isValid() && !sinceAsked_.hasExpired(1000)) return;
    refused_ = now;
    sinceAsked_.start();
    resizeArea({wanted.width(), wanted.height() - DisplayGeometry::controlsHeight}, {});
}

/// Its frame is known only now.
void ViewerSizing::keepOnScreen() {
    if (window_.isFullScreen() || window_.isMaximized() || !window_.isVisible() || !window_.screen()) return;
    if (!window_.screen()->availableGeometry().contains(window_.frameGeometry())) setFrame(window_.geometry());
}

void ViewerSizing::resizeArea(const QSize& area, const std::optional<QPoint>& origin) {
    setFrame({origin.value_or(window_.geometry().topLeft()), window_.size() + area - area_.size()});
    whole_ = {};
}

void ViewerSizing::setFrame(const QRect& frame) {
    resizing_ = true;
    window_.setWindowState(window_.windowState() & ~Qt::WindowMaximized);
    const QRect outer = window_.frameGeometry(), inner = window_.geometry();
    const QMargins title(inner.left() - outer.left(), inner.top() - outer.top(), outer.right() - inner.right(),
                         outer.bottom() - inner.bottom());
    window_.setGeometry(ViewerPanelHost::broughtOntoAScreen(frame.marginsAdded(title)).marginsRemoved(title));
    resizing_ = false;
}

} // namespace daylark
