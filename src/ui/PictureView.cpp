#include "ui/PictureView.h"

#include "ui/Theme.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace daylark {

namespace {

constexpr int headsUpMargin = 12;
const QColor headsUpShade(0, 0, 0, 150);

/// Text on a darkened plate, so that it reads on any picture.
void paintPlate(QPainter& painter, const QRectF& bounds, Qt::Alignment alignment, const QString& text,
                const QColor& colour) {
    const int flags = int(alignment) | Qt::TextWordWrap;
    const QRectF textRect = painter.boundingRect(bounds.adjusted(8, 4, -8, -4), flags, text);
    painter.setPen(Qt::NoPen);
    painter.setBrush(headsUpShade);
    painter.drawRoundedRect(textRect.adjusted(-8, -4, 8, 4), 4, 4);
    painter.setPen(colour);
    painter.drawText(textRect, flags, text);
}

} // namespace

PictureView::PictureView(QWidget* parent)
    : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("Picture"));
    setObjectName(QStringLiteral("picture"));
}

void PictureView::setFrame(const VideoFrame& frame) {
    frame_ = frame;
    image_ = {};
    update();
}

void PictureView::clear() {
    setFrame({});
}

void PictureView::setMoving(bool moving) {
    if (moving == moving_) return;
    moving_ = moving;
    if (moving_) return;
    image_ = {};
    update();
}

void PictureView::setHeadsUp(const HeadsUp& headsUp) {
    if (headsUp == headsUp_) return;
    headsUp_ = headsUp;
    update();
}

QRect PictureView::deviceRect() const {
    const QSize picture = frame_.isNull() ? QSize() : frame_.displaySize();
    if (picture.isEmpty()) return {};
    const qreal ratio = devicePixelRatioF();
    const QSize room(int(std::lround(width() * ratio)), int(std::lround(height() * ratio)));
    const QSize fitted = picture.scaled(room, Qt::KeepAspectRatio).expandedTo({1, 1});
    return {{(room.width() - fitted.width()) / 2, (room.height() - fitted.height()) / 2}, fitted};
}

QRect PictureView::pictureRect() const {
    const QRect device = deviceRect();
    if (device.isEmpty()) return {};
    const qreal ratio = devicePixelRatioF();
    return QRectF(device.x() / ratio, device.y() / ratio, device.width() / ratio, device.height() / ratio)
        .toAlignedRect();
}

void PictureView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), Qt::black);
    if (const QRect device = deviceRect(); !device.isEmpty()) {
        const RenderQuality quality = moving_ ? RenderQuality::quick : RenderQuality::exact;
        if (image_.size() != device.size()) image_ = renderFrame(frame_, device.size(), false, quality);
        const qreal ratio = devicePixelRatioF();
        image_.setDevicePixelRatio(ratio);
        painter.drawImage(QPointF(device.topLeft()) / ratio, image_);
    }
    paintHeadsUp(painter);
}

void PictureView::paintHeadsUp(QPainter& painter) const {
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF room = QRectF(rect()).adjusted(headsUpMargin, headsUpMargin, -headsUpMargin, -headsUpMargin);
    QFont numbers = theme::numberFont();
    numbers.setPixelSize(std::clamp(height() / 36, 13, 28));
    QFont words = font();
    words.setPixelSize(numbers.pixelSize());

    painter.setFont(numbers);
    if (!headsUp_.counter.isEmpty())
        paintPlate(painter, room, Qt::AlignLeft | Qt::AlignTop, headsUp_.counter, theme::text);
    if (!headsUp_.timecode.isEmpty())
        paintPlate(painter, room, Qt::AlignLeft | Qt::AlignBottom, headsUp_.timecode, theme::text);
    painter.setFont(words);
    if (!headsUp_.filename.isEmpty()) {
        const int space = int(room.width() * 0.6);
        paintPlate(painter, room, Qt::AlignRight | Qt::AlignTop,
                   painter.fontMetrics().elidedText(headsUp_.filename, Qt::ElideMiddle, space), theme::text);
    }
    if (!headsUp_.message.isEmpty()) {
        painter.setPen(theme::dimText);
        painter.drawText(room, Qt::AlignCenter | Qt::TextWordWrap, headsUp_.message);
    }
    if (!headsUp_.overlayText.isEmpty()) {
        words.setPixelSize(std::clamp(height() / 28, 15, 40));
        painter.setFont(words);
        // Beside the timecode, never over it.
        const qreal aside = room.width() * 0.2;
        paintPlate(painter, room.adjusted(aside, 0, -aside, 0), Qt::AlignHCenter | Qt::AlignBottom,
                   headsUp_.overlayText, headsUp_.overlayColour);
    }
}

} // namespace daylark
