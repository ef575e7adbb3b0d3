#include "ui/viewer/SnapshotFlash.h"

#include <QGraphicsOpacityEffect>
#include <QPainter>
#include <QPropertyAnimation>
#include <QTimer>

namespace daylark {

SnapshotFlash::SnapshotFlash(QWidget* covered)
    : QWidget(covered)
    , opacity_(new QGraphicsOpacityEffect(this))
    , fading_(new QPropertyAnimation(opacity_, "opacity", this)) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setGraphicsEffect(opacity_);
    fading_->setDuration(120);
    fading_->setEndValue(0.0);
    connect(fading_, &QPropertyAnimation::finished, this, &QWidget::hide);
    hide();
}

void SnapshotFlash::flash() {
    fading_->stop();
    setGeometry(parentWidget()->rect());
    opacity_->setOpacity(0.7);
    show();
    raise();
    QTimer::singleShot(200, this, [this] { fading_->start(); });
}

void SnapshotFlash::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(rect(), Qt::white);
}

} // namespace daylark
