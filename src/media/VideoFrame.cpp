#include "media/VideoFrame.h"

#include "media/VideoFrameData.h"

#include <QPainter>
#include <QTransform>

#include <algorithm>
#include <cmath>

extern "C" {
#include <libavutil/display.h>
}

namespace daylark {

int rotationOf(const AVStream& stream) {
    const auto* matrix = reinterpret_cast<const int32_t*>(
        av_stream_get_side_data(&stream, AV_PKT_DATA_DISPLAYMATRIX, nullptr));
    if (!matrix) return 0;
    const double degrees = -av_display_rotation_get(matrix); // the matrix turns anticlockwise
    if (!std::isfinite(degrees)) return 0;
    return ((int(std::lround(degrees / 90)) % 4) + 4) % 4 * 90;
}

AVRational pixelAspectOf(AVFormatContext* format, AVStream* stream, AVFrame* frame) {
    const AVRational aspect = av_guess_sample_aspect_ratio(format, stream, frame);
    return aspect.num > 0 && aspect.den > 0 ? aspect : AVRational{1, 1};
}

QSize VideoFrame::size() const {
    return data_ ? QSize(data_->frame->width, data_->frame->height) : QSize();
}

QSize VideoFrame::displaySize() const {
    if (!data_) return {};
    const QSize shown(std::max(1, int(size().width() * av_q2d(data_->pixelAspect))), size().height());
    return data_->rotation % 180 ? shown.transposed() : shown;
}

qsizetype VideoFrame::byteCount() const {
    qsizetype bytes = 0;
    if (data_)
        for (const AVBufferRef* buffer : data_->frame->buf)
            if (buffer) bytes += qsizetype(buffer->size);
    return bytes;
}

int VideoFrame::bitDepth() const {
    const AVPixFmtDescriptor* format =
        data_ ? av_pix_fmt_desc_get(AVPixelFormat(data_->frame->format)) : nullptr;
    return format ? format->comp[0].depth : 0;
}

namespace {

int matrixOf(const AVFrame& frame) {
    switch (frame.colorspace) {
    case AVCOL_SPC_BT709:
        return SWS_CS_ITU709;
    case AVCOL_SPC_BT470BG:
    case AVCOL_SPC_SMPTE170M:
        return SWS_CS_ITU601;
    case AVCOL_SPC_SMPTE240M:
        return SWS_CS_SMPTE240M;
    case AVCOL_SPC_FCC:
        return SWS_CS_FCC;
    case AVCOL_SPC_BT2020_NCL:
    case AVCOL_SPC_BT2020_CL:
        return SWS_CS_BT2020;
    default:
        return frame.height >= 720 ? SWS_CS_ITU709 : SWS_CS_ITU601;
    }
}

bool isFullRange(const AVFrame& frame, const AVPixFmtDescriptor& format) {
    if (frame.color_range != AVCOL_RANGE_UNSPECIFIED) return frame.color_range == AVCOL_RANGE_JPEG;
    switch (frame.format) {
    case AV_PIX_FMT_YUVJ420P:
    case AV_PIX_FMT_YUVJ422P:
    case AV_PIX_FMT_YUVJ444P:
    case AV_PIX_FMT_YUVJ440P:
    case AV_PIX_FMT_YUVJ411P:
        return true;
    default:
        return format.nb_components <= 2 || (format.flags & AV_PIX_FMT_FLAG_RGB);
    }
}

/// An image whose rows have the alignment and slack that the scaler's vector code wants.
QImage scalerImage(QSize size, QImage::Format format, int bytesPerPixel) {
    const qsizetype stride = (qsizetype(size.width()) * bytesPerPixel + 63) / 64 * 64;
    auto* bytes = static_cast<uchar*>(av_malloc(size_t(stride) * size_t(size.height()) + 64));
    if (!bytes) return {};
    return QImage(
        bytes, size.width(), size.height(), stride, format, [](void* block) { av_free(block); }, bytes);
}

/// The scaler last used on this thread: pictures of one movie come in a row and setting one up costs as much
/// as using it.
struct ScalerSlot {
    av::ScalerPtr scaler;
    int source[5] = {}, target[4] = {};
};

SwsContext* scalerFor(ScalerSlot& slot, const AVFrame& frame, QSize size, AVPixelFormat target,
                      RenderQuality quality) {
    const AVPixFmtDescriptor* format = av_pix_fmt_desc_get(AVPixelFormat(frame.format));
    if (!format) return nullptr;
    const int source[] = {frame.width, frame.height, frame.format, matrixOf(frame),
                          isFullRange(frame, *format)};
    const int wanted[] = {size.width(), size.height(), target, int(quality)};
    if (slot.scaler && std::equal(std::begin(source), std::end(source), slot.source) &&
        std::equal(std::begin(wanted), std::end(wanted), slot.target))
        return slot.scaler.get();
    const bool shrinks = size.width() < frame.width || size.height() < frame.height;
    const int flags =
        quality == RenderQuality::quick
            ? SWS_FAST_BILINEAR
            : SWS_ACCURATE_RND | SWS_FULL_CHR_H_INT | SWS_FULL_CHR_H_INP | (shrinks ? SWS_AREA : SWS_BICUBIC);
    slot.scaler.reset(sws_getContext(frame.width, frame.height, AVPixelFormat(frame.format), size.width(),
                                     size.height(), target, flags, nullptr, nullptr, nullptr));
    if (!slot.scaler) return nullptr;
    std::copy(std::begin(source), std::end(source), slot.source);
    std::copy(std::begin(wanted), std::end(wanted), slot.target);
    const int* matrix = sws_getCoefficients(source[3]);
    sws_setColorspaceDetails(slot.scaler.get(), matrix, source[4], matrix, 1, 0, 1 << 16, 1 << 16);
    return slot.scaler.get();
}

QImage overBlack(const QImage& picture, bool deep) {
    QImage result(picture.size(), deep ? QImage::Format_RGBX64 : QImage::Format_RGB32);
    result.fill(Qt::black);
    QPainter painter(&result);
    painter.drawImage(0, 0, picture);
    return result;
}

} // namespace

QImage renderFrame(const VideoFrame& frame, QSize size, bool deep, RenderQuality quality) {
    const VideoFrame::Data* data = frame.data();
    if (!data) return {};
    if (size.isEmpty()) size = frame.displaySize();
    const QSize unturned = data->rotation % 180 ? size.transposed() : size;
    const AVPixFmtDescriptor* format = av_pix_fmt_desc_get(AVPixelFormat(data->frame->format));
    const bool hasAlpha = format && (format->flags & AV_PIX_FMT_FLAG_ALPHA);
    thread_local ScalerSlot slot;
    SwsContext* scaler =
        scalerFor(slot, *data->frame, unturned, deep ? AV_PIX_FMT_RGBA64LE : AV_PIX_FMT_BGRA, quality);
    if (!scaler) return {};
    const QImage::Format shallow = hasAlpha ? QImage::Format_ARGB32 : QImage::Format_RGB32;
    const QImage::Format wide = hasAlpha ? QImage::Format_RGBA64 : QImage::Format_RGBX64;
    QImage picture = scalerImage(unturned, deep ? wide : shallow, deep ? 8 : 4);
    if (picture.isNull()) return {};
    uint8_t* target[] = {picture.bits(), nullptr, nullptr, nullptr};
    const int stride[] = {int(picture.bytesPerLine()), 0, 0, 0};
    if (sws_scale(scaler, data->frame->data, data->frame->linesize, 0, data->frame->height, target, stride) <=
        0)
        return {};
    if (hasAlpha) picture = overBlack(picture, deep);
    return data->rotation ? picture.transformed(QTransform().rotate(data->rotation)) : picture;
}

} // namespace daylark
