#include "ui/picture/DrawingOverlay.h"

#include "playback/run/Player.h"
#include "ui/picture/PictureView.h"
#include "viewer/display/AreaPicture.h"
#include "viewer/MoviePlayerController.h"

#include <QEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QTabletEvent>

#include <utility>

namespace daylark {

namespace {

/// A fine white cross with a black edge, open in the middle: seen on dark and on light pictures, and what is
/// drawn on is not covered.
QCursor drawingCursor(qreal ratio) {
    constexpr int side = 25, middle = side / 2, gap = 3;
    QPixmap pixmap(QSize(side, side) * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    for (const auto& [colour, width] : {std::pair(Qt::black, 3), std::pair(Qt::white, 1)}) {
        const int edge = width / 2, from = middle - edge, reach = middle - gap + edge;
        painter.fillRect(QRect(from, 1 - edge, width, reach), colour);
        painter.fillRect(QRect(from, middle + gap - edge, width, reach), colour);
        painter.fillRect(QRect(1 - edge, from, reach, width), colour);
        painter.fillRect(QRect(middle + gap - edge, from, reach, width), colour);
    }
    painter.end();
    return QCursor(pixmap, middle, middle);
}

} // namespace

DrawingOverlay::DrawingOverlay(MoviePlayerController& controller, PictureView& picture)
    : QObject(&picture)
    , controller_(controller)
    , picture_(picture) {
    picture_.installEventFilter(this);
    picture_.setOverlayPainter([this](QPainter& painter) { paint(painter); });
    connect(&controller_.drawing(), &DrawingMode::strokeGrew, this, &DrawingOverlay::drawingChanged);
    connect(&controller_.drawing(), &DrawingMode::strokesChanged, this, [this] {
        layer_.strokesChanged();
        drawingChanged();
    });
    connect(&controller_.drawing(), &DrawingMode::modeChanged, this, &DrawingOverlay::showCursor);
    connect(&controller_.geometry(), &ViewerGeometry::changed, this, &DrawingOverlay::showGeometry);
    controller_.geometry().setArea(picture_.size());
    showGeometry();
}

PictureMapping DrawingOverlay::mapping() const {
    const auto movie = controller_.currentMovie();
    if (!movie) return {};
    QSizeF size(movie->mMovieWidth, movie->mMovieHeight);
    if (size.isEmpty()) size = controller_.player().shownFrame().displaySize();
    const ViewerGeometry& geometry = controller_.geometry();
    return strokeMapping(geometry.geometry(), size, geometry.mirrorsLeftRight(),
                         geometry.mirrorsUpsideDown());
}

void DrawingOverlay::showGeometry() {
    const ViewerGeometry& geometry = controller_.geometry();
    picture_.setMirroring(geometry.mirrorsLeftRight(), geometry.mirrorsUpsideDown());
    const DisplayGeometry& lies = geometry.geometry();
    // Fitted, the picture view centres the picture on whole device pixels itself.
    picture_.setPictureRect(lies.isFitted() ? std::nullopt : std::optional(lies.toTopLeft(lies.picture())));
    refreshAll();
}

void DrawingOverlay::drawingChanged() {
    const Shown now{controller_.drawing().drawingsAreShown(), controller_.drawing().shownBackground()};
    if (std::exchange(shown_, now) == now)
        refreshStrokes();
    else
        refreshAll();
}

void DrawingOverlay::refreshAll() {
    picture_.refreshOverlay();
}

void DrawingOverlay::refreshStrokes() {
    if (!controller_.drawing().drawingsAreShown()) return;
    const QRectF changed = layer_.update(controller_.drawing().canvas(), mapping(), picture_.size(),
                                         picture_.devicePixelRatioF());
    if (!changed.isEmpty()) picture_.refreshOverlay(changed.toAlignedRect());
}

void DrawingOverlay::paint(QPainter& painter) {
    const ViewerGeometry& geometry = controller_.geometry();
    const QString background = controller_.drawing().shownBackground();
    const bool drawn = controller_.drawing().drawingsAreShown();
    const QRectF whole(QPointF(0, 0), QSizeF(picture_.size()));
    if (background == QLatin1String("Black")) painter.fillRect(whole, Qt::black);
    if (background == QLatin1String("White")) painter.fillRect(whole, Qt::white);
    if (const auto bars = geometry.mask())
        paintMask(painter, geometry.geometry(), *bars, geometry.maskOpacity());
    if (!drawn || !controller_.drawing().canvas().currentStrokesDictionary().hasStrokes()) return;
    // Another size than the screen's (a snapshot) is painted afresh.
    const double ratio = picture_.devicePixelRatioF();
    const QTransform scale = painter.transform();
    if (qFuzzyCompare(scale.m11() * painter.device()->devicePixelRatioF(), ratio)) {
        static_cast<void>(layer_.update(controller_.drawing().canvas(), mapping(), picture_.size(), ratio));
        layer_.paint(painter, painter.hasClipping() ? painter.clipBoundingRect() : whole);
        return;
    }
    StrokeLayer other;
    static_cast<void>(other.update(controller_.drawing().canvas(), mapping(), picture_.size(), scale.m11()));
    other.paint(painter, whole);
}

bool DrawingOverlay::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::Resize:
        controller_.geometry().setArea(picture_.size());
        break;
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease: {
        auto* tablet = static_cast<QTabletEvent*>(event);
        const Phase phase = event->type() == QEvent::TabletPress  ? Phase::down
                            : event->type() == QEvent::TabletMove ? Phase::move
                                                                  : Phase::up;
        if (phase == Phase::move && !penIsDown_) break;
        penIsDown_ = phase != Phase::up;
        tablet->setAccepted(pointer(phase, tablet->position()));
        return tablet->isAccepted();
    }
    case QEvent::MouseButtonPress:
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease: {
        auto* mouse = static_cast<QMouseEvent*>(event);
        if (mouse->source() != Qt::MouseEventNotSynthesized && penIsDown_) return true;
        const bool press = event->type() == QEvent::MouseButtonPress;
        const bool release = event->type() == QEvent::MouseButtonRelease;
        if ((press || release) ? mouse->button() != Qt::LeftButton : !(mouse->buttons() & Qt::LeftButton))
            break;
        if (pointer(press ? Phase::down : release ? Phase::up : Phase::move, mouse->position())) return true;
        break;
    }
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

bool DrawingOverlay::pointer(Phase phase, const QPointF& at) {
    if (!controller_.currentMovie()) return false;
    const bool taken = controller_.drawing().isDrawMode() || controller_.drawing().isScrollMode();
    if (taken && phase == Phase::down) Q_EMIT picture_.pressed(); // whatever the tool makes of it
    if (controller_.drawing().isDrawMode() || controller_.drawing().canvas().isDrawing())
        return draw(phase, at);
    if (controller_.drawing().isScrollMode() || dragging_) return pan(phase, at);
    return false;
}

bool DrawingOverlay::draw(Phase phase, const QPointF& at) {
    const PictureMapping map = mapping();
    if (!map.isValid()) return false;
    if (phase == Phase::down) {
        picture_.setFocus();
        controller_.drawing().strokeBegan(map.toMovie(at));
    } else if (phase == Phase::move) {
        controller_.drawing().strokeMoved(map.toMovie(at));
    } else {
        controller_.drawing().strokeEnded(map.toMovie(at));
    }
    return true;
}

bool DrawingOverlay::pan(Phase phase, const QPointF& at) {
    if (phase == Phase::down) {
        dragOrigin_ = at;
        startingPoint_ = controller_.geometry().geometry().view().topLeft();
        dragging_ = true;
    } else if (dragging_) {
        // The offset passes through single precision; the area's y goes down, the view's up.
        const QPointF offset(double(float(at.x() - dragOrigin_.x())),
                             -double(float(at.y() - dragOrigin_.y())));
        controller_.geometry().panBy(startingPoint_ + offset);
        if (phase == Phase::up) dragging_ = false;
    }
    showCursor();
    return true;
}

void DrawingOverlay::showCursor() {
    if (controller_.drawing().isScrollMode())
        picture_.setCursor(dragging_ ? Qt::ClosedHandCursor : Qt::OpenHandCursor);
    else if (controller_.drawing().isDrawMode())
        picture_.setCursor(drawingCursor(picture_.devicePixelRatioF()));
    else
        picture_.setCursor(Qt::ArrowCursor);
}

} // namespace daylark
