#include "media/sequence/StandInPicture.h"

#include <QImage>
#include <QPainter>
#include <QTransform>

#include <algorithm>
#include <array>
#include <cstring>

namespace daylark {

namespace {

std::shared_ptr<VideoFrame::Data> emptyPicture(const PictureShape& shape) {
    auto data = std::make_shared<VideoFrame::Data>();
    data->frame.reset(av_frame_alloc());
    if (!data->frame) return nullptr;
    data->frame->format = AV_PIX_FMT_GBRP;
    data->colourSpace = QStringLiteral("data"); // as it is, whatever its neighbours are looked at through
    data->frame->width = std::max(1, shape.size.width());
    data->frame->height = std::max(1, shape.size.height());
    data->pixelAspect = shape.pixelAspect;
    data->orientation = shape.orientation;
    if (av_frame_get_buffer(data->frame.get(), 0) < 0) return nullptr;
    for (int plane = 0; plane < 3; ++plane)
        std::memset(data->frame->data[plane], 0, size_t(data->frame->linesize[plane]) * size_t(data->frame->height));
    return data;
}

/// One line across, `below` the middle: smaller where it would not fit, down to `least`, and shortened beyond that.
void drawFitting(QPainter& painter, const QRectF& whole, double below, const QString& text, double pixels, double least) {
    const double room = whole.width() * 0.92;
    QFont font = painter.font();
    int size = std::max(1, int(pixels));
    const auto widthAt = [&](int at) {
        font.setPixelSize(at);
        return QFontMetricsF(font).horizontalAdvance(text);
    };
    while (size > std::max(1.0, least) && widthAt(size) > room)
        --size;
    font.setPixelSize(size);
    painter.setFont(font);
    painter.drawText(whole.translated(0, below), Qt::AlignCenter | Qt::TextSingleLine,
                     QFontMetricsF(font).elidedText(text, Qt::ElideMiddle, room));
}

/// A crossed frame, the number that is missing, its file and why there is no picture of it.
QImage painted(QSize size, qint64 number, const QString& name, const QString& reason) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(QColor(32, 32, 32));
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const double unit = std::min(size.width(), size.height()) / 100.0;
    painter.setPen(QPen(QColor(64, 64, 64), std::max(1.0, unit)));
    painter.drawLine(0, 0, size.width(), size.height());
    painter.drawLine(0, size.height(), size.width(), 0);
    const QRectF whole(0, 0, size.width(), size.height());
    QFont font;
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(QColor(220, 150, 60));
    drawFitting(painter, whole, -unit * 8, QString::number(number), unit * 22, 1);
    font.setBold(false);
    painter.setFont(font);
    painter.setPen(QColor(190, 190, 190));
    drawFitting(painter, whole, unit * 13, name, unit * 6, unit * 3);
    drawFitting(painter, whole, unit * 22, reason, unit * 5, unit * 3);
    return image;
}

/// From how it is looked at to how such pictures are stored: orientations turn, then mirror.
QImage asStored(const QImage& shown, QSize size, const Orientation& orientation) {
    const QImage turned =
        shown.mirrored(orientation.mirrored, false).transformed(QTransform().rotate(-orientation.rotation));
    return turned.size() == size ? turned : turned.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

} // namespace

VideoFrame blackPicture(const PictureShape& shape) {
    return VideoFrame(emptyPicture(shape));
}

VideoFrame slatePicture(const PictureShape& shape, qint64 number, const QString& name, const QString& reason) {
    const auto data = emptyPicture(shape);
    if (!data) return {};
    const AVFrame& frame = *data->frame;
    const QImage image = asStored(painted(VideoFrame(data).displaySize(), number, name, reason),
                                  QSize(frame.width, frame.height), data->orientation);
    if (image.isNull()) return VideoFrame(data);
    for (int y = 0; y < frame.height; ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < frame.width; ++x) {
            frame.data[0][y * frame.linesize[0] + x] = uchar(qGreen(row[x]));
            frame.data[1][y * frame.linesize[1] + x] = uchar(qBlue(row[x]));
            frame.data[2][y * frame.linesize[2] + x] = uchar(qRed(row[x]));
        }
    }
    return VideoFrame(data);
}

} // namespace daylark
