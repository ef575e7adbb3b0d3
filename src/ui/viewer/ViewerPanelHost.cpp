#include "ui/viewer/ViewerPanelHost.h"

#include "ui/common/ToolPanel.h"

#include <QApplication>
#include <QDataStream>
#include <QGuiApplication>
#include <QIODevice>
#include <QMainWindow>
#include <QRegion>
#include <QScreen>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace daylark {

namespace {

constexpr int arrangementVersion = 3;
constexpr int gapBetweenPanels = 8, gapAtEdges = 12, gapUnderControls = 32, stepOffOthers = 32;
constexpr int lowDockHeight = 184; // of one below the picture
constexpr int tabHeight = 32;
constexpr int mostCovered = 3;     // panels take the picture's third at most; else they stand beside it
constexpr int listRoom = 300; // of the list over the picture, with a little air

/// Where a panel opens for the first time, at which corner of the picture.
struct Berth {
    Qt::Corner corner = Qt::TopRightCorner;
    QSize size = {}; ///< empty: as large as its content wants to be
};

Berth berthOf(ViewerPanel panel) {
    switch (panel) {
    case ViewerPanel::notes:
        return {Qt::TopLeftCorner, {300, 360}};
    case ViewerPanel::bookmarks:
        return {Qt::BottomLeftCorner, {860, 232}};
    case ViewerPanel::scopes:
        return {Qt::BottomRightCorner, {416, 328}};
    case ViewerPanel::controls:
        return {Qt::BottomLeftCorner, {880, 0}};
    default:
        return {};
    }
}

} // namespace

ViewerPanelHost::ViewerPanelHost(QMainWindow& viewer, ViewerPanels& panels)
    : QObject(&viewer)
    , viewer_(viewer)
    , panels_(panels) {
    panels_.setHost(this);
    qApp->installEventFilter(this);
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, &ViewerPanelHost::keyboardMoved);
}

ViewerPanelHost::~ViewerPanelHost() {
    stop();
}

void ViewerPanelHost::stop() {
    panels_.setHost(nullptr);
    for (ToolPanel* window : std::as_const(windows_))
        window->disconnect(this);
    windows_.clear(); // the viewer may delete them before this
}

ToolPanel* ViewerPanelHost::addPanel(ViewerPanel panel, const QString& title, QWidget* content, Place place,
                                     Qt::DockWidgetArea area) {
    auto* window = new ToolPanel(title, content, &viewer_);
    const QString name = ViewerPanels::layoutName(panel);
    window->setObjectName(name.isEmpty() ? QStringLiteral("controlsWindow") : name);
    if (panel == ViewerPanel::controls) window->setAllowedAreas(Qt::NoDockWidgetArea);
    viewer_.addDockWidget(area, window);
    window->hide();
    if (place == Place::floating) window->setFloating(true);
    windows_.insert(panel, window);
    connect(window, &ToolPanel::closeWanted, this, [this, panel] { panels_.show(panel, false); });
    connect(window, &ToolPanel::keyboardUnused, this, &ViewerPanelHost::giveKeyboardToViewer);
    connect(window, &ToolPanel::visibilityChanged, this, &ViewerPanelHost::visibilityChanged);
    connect(window, &ToolPanel::topLevelChanged, this, &ViewerPanelHost::visibilityChanged);
    return window;
}

void ViewerPanelHost::hideAll() {
    for (ToolPanel* window : std::as_const(windows_))
        window->hide();
}

QByteArray ViewerPanelHost::arrangement() const {
    QStringList placed;
    for (auto at = windows_.begin(); at != windows_.end(); ++at)
        if (isPlaced(at.key())) placed << at.value()->objectName();
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << placed << viewer_.saveState(arrangementVersion);
    return bytes;
}

bool ViewerPanelHost::takeArrangement(const QByteArray& arrangement) {
    QStringList placed;
    QByteArray state;
    QDataStream stream(arrangement);
    stream >> placed >> state;
    if (stream.status() != QDataStream::Ok || !viewer_.restoreState(state, arrangementVersion)) return false;
    for (auto at = windows_.begin(); at != windows_.end(); ++at)
        if (placed.contains(at.value()->objectName())) placed_.insert(at.key());
    return true;
}

void ViewerPanelHost::restoreArrangement(const QByteArray& arrangement) {
    takeArrangement(arrangement);
    hideAll();
}

void ViewerPanelHost::restoreDocking(const QByteArray& arrangement) {
    QSet<ToolPanel*> open;
    for (ToolPanel* window : std::as_const(windows_))
        if (!window->isHidden()) open.insert(window);
    takeArrangement(arrangement);
    for (ToolPanel* window : std::as_const(windows_))
        window->setVisible(open.contains(window));
}

// Whatever the window manager does with clicks on tool windows: what is typed into gets the keyboard.
bool ViewerPanelHost::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::MouseButtonPress || !watched->isWidgetType()) return false;
    const auto* widget = static_cast<const QWidget*>(watched);
    for (ToolPanel* window : std::as_const(windows_)) {
        if (!window->isFloating() || widget->window() != window) continue;
        window->pressedOn(widget);
        if (ToolPanel::takesKeys(widget) && QApplication::activeWindow() != window) window->activateWindow();
    }
    return false;
}

// The viewer counts as active while one of its tool windows is, so its own events do not tell.
void ViewerPanelHost::keyboardMoved(const QWindow* to) {
    if (!to || to != viewer_.windowHandle()) return;
    // A panel that is taken hold of later must not find its text field with the keyboard again.
    for (ToolPanel* window : std::as_const(windows_))
        if (window->isFloating()) window->forgetFocus();
}

void ViewerPanelHost::giveKeyboardToViewer() {
    viewer_.activateWindow();
    if (viewer_.centralWidget() && !viewer_.focusWidget()) viewer_.centralWidget()->setFocus();
}

void ViewerPanelHost::bringKeyboardToViewer() {
    if (!viewer_.isVisible() || QApplication::mouseButtons() != Qt::NoButton) return;
    QWidget* focus = viewer_.focusWidget(); // in a docked panel it may be a field
    if (focus && ToolPanel::takesKeys(focus)) focus->clearFocus();
    giveKeyboardToViewer();
}

bool ViewerPanelHost::isPanelVisible(ViewerPanel panel) const {
    if (panel == ViewerPanel::playlistDrawer && isFullScreen() && movieList_.isShown)
        return movieList_.isShown();
    const ToolPanel* window = windows_.value(panel);
    return window && !window->isHidden();
}

void ViewerPanelHost::setPanelVisible(ViewerPanel panel, bool visible) {
    if (panel == ViewerPanel::playlistDrawer && isFullScreen() && movieList_.show)
        return movieList_.show(visible);
    ToolPanel* window = windows_.value(panel);
    if (!window) return;
    const QWidget* focus = QApplication::focusWidget();
    const bool hadFocus = focus && window->isAncestorOf(focus);
    if (visible && window->isFloating() && window->isHidden()) offerPlace(panel);
    window->setVisible(visible);
    if (visible) window->raise(); // of docked panels in one place, the tab
    if (!visible && !window->isFloating()) // once the others that go with it are gone, too
        QMetaObject::invokeMethod(this, &ViewerPanelHost::giveWidthBack, Qt::QueuedConnection);
    if (!visible && hadFocus) {
        viewer_.activateWindow();
        if (viewer_.centralWidget()) viewer_.centralWidget()->setFocus();
    }
}

bool ViewerPanelHost::isPlaced(ViewerPanel panel) const {
    const auto offered = offered_.constFind(panel);
    return placed_.contains(panel) ||
           (offered != offered_.constEnd() && windows_.value(panel)->geometry() != *offered);
}

/// A panel that a person has moved opens where it was left, if there still is a screen.
void ViewerPanelHost::offerPlace(ViewerPanel panel) {
    ToolPanel* window = windows_.value(panel);
    const QRect left = window->geometry();
    const bool isOnThisScreen = QGuiApplication::screenAt(left.center()) == viewer_.screen();
    if (isPlaced(panel) && (isOnThisScreen || panel != ViewerPanel::controls)) {
        placed_.insert(panel);
        window->setGeometry(broughtOntoAScreen(left));
        return;
    }
    window->setGeometry(offeredFrame(panel, framesBesides(window)));
    offered_.insert(panel, window->geometry());
}

/// Where a panel that nobody has placed opens, clear of those frames as far as there is room.
QRect ViewerPanelHost::offeredFrame(ViewerPanel panel, const QList<QRect>& taken) const {
    const ToolPanel* window = windows_.value(panel);
    const Berth berth = berthOf(panel);
    const QSize wanted = window->sizeHint().expandedTo(window->minimumSizeHint());
    QSize size(berth.size.width() > 0 ? berth.size.width() : wanted.width(),
               berth.size.height() > 0 ? berth.size.height() : wanted.height());
    size.setWidth(std::min(size.width(), pictureFrame().width() - 2 * gapAtEdges));
    size = size.expandedTo(window->minimumSizeHint());
    QList<QSize> sizes{size};
    if (berth.size.isValid()) // smaller will do
        sizes << QSize(size.width() * 3 / 4, size.height()).expandedTo(window->minimumSizeHint());
    return broughtOntoAScreen(panel == ViewerPanel::controls ? controlsFrame(size)
                                                             : freeFrame(sizes, berth.corner, taken));
}

QList<QRect> ViewerPanelHost::framesBesides(const ToolPanel* panel) const {
    QList<QRect> taken;
    for (const ToolPanel* other : windows_)
        if (other != panel && other->isFloating() && !other->isHidden()) taken << other->geometry();
    return taken;
}

QRect ViewerPanelHost::pictureFrame() const {
    const QWidget* picture = viewer_.centralWidget();
    return picture ? QRect(picture->mapToGlobal(QPoint()), picture->size()) : viewer_.geometry();
}

QRect ViewerPanelHost::controlsFrame(const QSize& size) const {
    QRect frame(QPoint(), size.boundedTo(pictureFrame().size()));
    frame.moveCenter(pictureFrame().center());
    frame.moveBottom(pictureFrame().bottom() - gapUnderControls);
    return frame;
}

/// The picture without what lies over it in full screen: the list at the right, the controls at the foot.
QRect ViewerPanelHost::openPicture() const {
    QRect frame = pictureFrame();
    if (!isFullScreen()) return frame;
    if (movieList_.isShown && movieList_.isShown()) frame.setRight(frame.right() - listRoom);
    const ToolPanel* controls = windows_.value(ViewerPanel::controls);
    if (controls) frame.setBottom(frame.bottom() - gapUnderControls - controls->sizeHint().height());
    return frame;
}

/// Beside the viewer where the screen has room, else over the picture's corner; below or beside the panels
/// that stand there already, the first of the sizes that fits. Where nothing is free: a step off the others,
/// so that every title can be taken hold of.
QRect ViewerPanelHost::freeFrame(const QList<QSize>& sizes, Qt::Corner corner,
                                 const QList<QRect>& taken) const {
    const bool right = corner == Qt::TopRightCorner || corner == Qt::BottomRightCorner;
    const bool bottom = corner == Qt::BottomLeftCorner || corner == Qt::BottomRightCorner;
    const QRect viewer = viewer_.frameGeometry(), picture = openPicture();
    const QRect screen = viewer_.screen() ? viewer_.screen()->availableGeometry() : viewer;
    QRect fallback;
    for (const QSize& size : sizes) {
        QList<int> columns, rows;
        if (right && viewer.right() + 2 * gapBetweenPanels + size.width() <= screen.right())
            columns << viewer.right() + gapBetweenPanels;
        if (!right && viewer.left() - 2 * gapBetweenPanels - size.width() >= screen.left())
            columns << viewer.left() - gapBetweenPanels - size.width();
        columns << (right ? picture.right() - gapAtEdges - size.width() : picture.left() + gapAtEdges);
        rows << (bottom ? picture.bottom() - gapAtEdges - size.height() : picture.top() + gapAtEdges);
        if (fallback.isNull()) fallback = {QPoint(columns.front(), rows.front()), size};
        for (const QRect& other : taken) {
            columns << (right ? other.left() - gapBetweenPanels - size.width()
                              : other.right() + 1 + gapBetweenPanels);
            rows << (bottom ? other.top() - gapBetweenPanels - size.height()
                            : other.bottom() + 1 + gapBetweenPanels);
        }
        for (const int x : std::as_const(columns))
            for (const int y : std::as_const(rows)) {
                const QRect frame(QPoint(x, y), size);
                const auto meets = [&](const QRect& other) { return other.intersects(frame); };
                if (screen.contains(frame) && y >= picture.top() && frame.bottom() <= picture.bottom() &&
                    std::none_of(taken.begin(), taken.end(), meets))
                    return frame;
            }
    }
    const auto hides = [&](const QRect& other) {
        const QPoint apart =
            right ? other.topRight() - fallback.topRight() : other.topLeft() - fallback.topLeft();
        return apart.manhattanLength() < stepOffOthers;
    };
    while (std::any_of(taken.begin(), taken.end(), hides))
        fallback.translate(right ? -stepOffOthers : stepOffOthers, bottom ? -stepOffOthers : stepOffOthers);
    return fallback;
}

QRect ViewerPanelHost::panelFrame(ViewerPanel panel) const {
    const ToolPanel* window = windows_.value(panel);
    if (!window) return {};
    if (window->isHidden() && window->isFloating() && !isPlaced(panel)) return frameToBeOffered(panel);
    return {window->mapToGlobal(QPoint(0, 0)), window->size()};
}

/// Panels that were never shown have no place yet: they get the one that they would open at, one after the other.
QRect ViewerPanelHost::frameToBeOffered(ViewerPanel panel) const {
    QList<QRect> taken = framesBesides(nullptr);
    for (auto at = windows_.begin(); at != windows_.end(); ++at) {
        const bool waits = at.value()->isHidden() && at.value()->isFloating() && !isPlaced(at.key());
        if (!waits && at.key() != panel) continue;
        const QRect frame = offeredFrame(at.key(), taken);
        if (at.key() == panel) return frame;
        taken << frame;
    }
    return {};
}

void ViewerPanelHost::setPanelFrame(ViewerPanel panel, const QRect& frame) {
    ToolPanel* window = windows_.value(panel);
    if (!window) return;
    window->setFloating(true);
    window->setGeometry(
        broughtOntoAScreen({frame.topLeft(), frame.size().expandedTo(window->minimumSizeHint())}));
    placed_.insert(panel);
}

bool ViewerPanelHost::isPanelDocked(ViewerPanel panel) const {
    const ToolPanel* window = windows_.value(panel);
    return window && !window->isFloating();
}

void ViewerPanelHost::setPanelDocked(ViewerPanel panel, bool docked) {
    ToolPanel* window = windows_.value(panel);
    if (!window || docked != window->isFloating()) return;
    if (docked) return dock(window);
    window->setFloating(true);
    placed_.remove(panel); // a place on the screen is to be found
    offered_.remove(panel);
    if (!window->isHidden()) offerPlace(panel);
}

/// Above or below what stands at that side already, or behind it as a tab where both are too high together.
void ViewerPanelHost::dock(ToolPanel* window) {
    window->setFloating(false);
    const Qt::DockWidgetArea area = viewer_.dockWidgetArea(window);
    if (area != Qt::LeftDockWidgetArea && area != Qt::RightDockWidgetArea)
        return viewer_.resizeDocks({window}, {lowDockHeight}, Qt::Vertical);
    ToolPanel* neighbour = nullptr;
    int highest = 0; // of those that may come there, too
    for (ToolPanel* other : std::as_const(windows_)) {
        if (other == window || viewer_.dockWidgetArea(other) != area) continue;
        highest = std::max(highest, other->minimumSizeHint().height());
        if (!other->isFloating() && (!neighbour || neighbour->isHidden())) neighbour = other;
    }
    const int together = highest + window->minimumSizeHint().height() + tabHeight;
    if (neighbour && together > pictureFrame().height()) viewer_.tabifyDockWidget(neighbour, window);
}

/// What is docked takes its width from the screen first, and only then from the picture.
void ViewerPanelHost::widenFor(int width, const QRect& narrow) {
    if (viewer_.isMaximized() || isFullScreen() || !viewer_.screen()) return;
    const QSize room = viewer_.screen()->availableSize();
    QRect frame = viewer_.geometry();
    frame.setSize(QSize(std::min(narrow.width() + width, room.width()), frame.height())
                      .expandedTo(viewer_.minimumSizeHint()));
    Q_EMIT viewerFrameWanted(frame);
    const bool again = lent_ && lent_->wide.size() == narrow.size();
    lent_ = {again ? lent_->narrow : narrow, viewer_.geometry()};
}

/// What docked panels were given goes with the last of them, unless a person has sized the window since.
void ViewerPanelHost::giveWidthBack() {
    if (!lent_ || isFullScreen() || viewer_.isFullScreen() || viewer_.isMaximized()) return;
    for (const ToolPanel* window : std::as_const(windows_))
        if (!window->isHidden() && !window->isFloating()) return;
    const Lent lent = *std::exchange(lent_, {});
    if (viewer_.size() != lent.wide.size()) return;
    const bool moved = viewer_.geometry().topLeft() != lent.wide.topLeft();
    Q_EMIT viewerFrameWanted({(moved ? viewer_.geometry() : lent.narrow).topLeft(), lent.narrow.size()});
}

void ViewerPanelHost::makeRoomFor(const std::vector<ViewerPanel>& panels) {
    const QRect picture = pictureFrame();
    QList<QRect> taken = framesBesides(nullptr);
    QList<ToolPanel*> homeless;
    QRegion covered;
    for (const ViewerPanel panel : panels) {
        ToolPanel* window = windows_.value(panel);
        if (!window || !window->isHidden() || !window->isFloating() || isPlaced(panel)) continue;
        const QRect frame = offeredFrame(panel, taken);
        taken << frame;
        covered += frame & picture;
        homeless << window;
    }
    qint64 points = 0;
    for (const QRect& part : covered)
        points += qint64(part.width()) * part.height();
    const QRect narrow = viewer_.geometry();
    if (points * mostCovered > qint64(picture.width()) * picture.height())
        for (ToolPanel* window : std::as_const(homeless))
            dock(window);
    const int width = columnsOf(panels);
    if (width * mostCovered <= picture.width()) return;
    // Once they stand there, with what they have made of the window by themselves.
    QMetaObject::invokeMethod(this, [this, width, narrow] { widenFor(width, narrow); }, Qt::QueuedConnection);
}

/// What those of these panels that are docked and hidden take beside the picture; nothing where others stand already.
int ViewerPanelHost::columnsOf(const std::vector<ViewerPanel>& panels) const {
    const auto columnAt = [&](Qt::DockWidgetArea area) {
        int column = 0;
        for (const ViewerPanel panel : panels) {
            ToolPanel* window = windows_.value(panel);
            if (!window || window->isFloating() || viewer_.dockWidgetArea(window) != area) continue;
            if (!window->isHidden()) return 0;
            column = std::max(column, window->minimumSizeHint().width());
        }
        return column;
    };
    return columnAt(Qt::LeftDockWidgetArea) + columnAt(Qt::RightDockWidgetArea);
}

bool ViewerPanelHost::isViewerMaximised() const {
    return viewer_.isMaximized();
}

void ViewerPanelHost::maximiseViewer() {
    viewer_.setWindowState(viewer_.windowState() | Qt::WindowMaximized);
}

QRect ViewerPanelHost::viewerFrame() const {
    return viewer_.geometry();
}

void ViewerPanelHost::setViewerFrame(const QRect& frame) {
    if (!isFullScreen()) Q_EMIT viewerFrameWanted(frame);
}

bool ViewerPanelHost::isFullScreen() const {
    return fullScreen_;
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
