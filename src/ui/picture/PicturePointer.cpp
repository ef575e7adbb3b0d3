#include "ui/picture/PicturePointer.h"

#include "ui/picture/PictureView.h"
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

PicturePointer::PicturePointer(MoviePlayerController& controller, PictureView& picture)
    : QObject(&picture)
    , controller_(controller)
    , picture_(picture) {
    picture_.installEventFilter(this);
    connect(&controller_.drawingTools(), &DrawingTools::modeChanged, this, &PicturePointer::showCursor);
    controller_.geometry().setArea(picture_.size());
}

bool PicturePointer::eventFilter(QObject* watched, QEvent* event) {
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

bool PicturePointer::pointer(Phase phase, const QPointF& at) {
    if (!controller_.currentMovie()) return false;
    const bool taken = controller_.drawingTools().isDrawMode() || controller_.drawingTools().isScrollMode();
    if (taken && phase == Phase::down) Q_EMIT picture_.pressed(); // whatever the tool makes of it
    if (controller_.drawingTools().isDrawMode() || controller_.drawings().canvas().isDrawing())
        return draw(phase, at);
    if (controller_.drawingTools().isScrollMode() || dragging_) return pan(phase, at);
    return false;
}

bool PicturePointer::draw(Phase phase, const QPointF& at) {
    const PictureMapping map = controller_.scene().scene().mapping();
    if (!map.isValid()) return false;
    if (phase == Phase::down) {
        picture_.setFocus();
        controller_.drawings().strokeBegan(map.toMovie(at));
    } else if (phase == Phase::move) {
        controller_.drawings().strokeMoved(map.toMovie(at));
    } else {
        controller_.drawings().strokeEnded(map.toMovie(at));
    }
    return true;
}

bool PicturePointer::pan(Phase phase, const QPointF& at) {
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

void PicturePointer::showCursor() {
    if (controller_.drawingTools().isScrollMode())
        picture_.setCursor(dragging_ ? Qt::ClosedHandCursor : Qt::OpenHandCursor);
    else if (controller_.drawingTools().isDrawMode())
        picture_.setCursor(drawingCursor(picture_.devicePixelRatioF()));
    else
        picture_.setCursor(Qt::ArrowCursor);
}

} // namespace daylark
