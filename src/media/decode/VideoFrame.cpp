#include "media/decode/VideoFrame.h"

#include "media/decode/VideoFrameData.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace daylark {

Orientation orientationOf(const AVStream& stream) {
    size_t size = 0;
    const auto* matrix = reinterpret_cast<const int32_t*>(
        av_stream_get_side_data(&stream, AV_PKT_DATA_DISPLAYMATRIX, &size));
    if (!matrix || size < 9 * sizeof(int32_t)) return {};
    // (x, y) of the stored picture goes to (ax + cy, bx + dy), y downwards; a mirror turns the sense around.
    const double a = matrix[0], b = matrix[1], c = matrix[3], d = matrix[4];
    Orientation orientation;
    orientation.mirrored = a * d - b * c < 0;
    if (a == 0 && b == 0) return {};
    const double degrees = std::atan2(b, orientation.mirrored ? -a : a) * 180 / M_PI;
    orientation.rotation = (int(std::lround(degrees / 90)) + 4) % 4 * 90;
    return orientation;
}

AVRational pixelAspectOf(AVFormatContext* format, AVStream* stream, AVFrame* frame) {
    AVRational aspect = av_guess_sample_aspect_ratio(format, stream, frame);
    if (aspect.num <= 0 || aspect.den <= 0) return {1, 1};
    // MXF states the shape of the whole picture, which the library divides by the size that it knows: before
    // any picture is decoded that is the stored one, padding included.
    const AVCodecParameters& known = *stream->codecpar;
    const bool isWholeShape = std::strcmp(format->iformat->name, "mxf") == 0;
    if (frame && isWholeShape && known.width > 0 && known.height > 0 && frame->width > 0 &&
        (frame->width != known.width || frame->height != known.height))
        av_reduce(&aspect.num, &aspect.den, qint64(aspect.num) * known.width * frame->height,
                  qint64(aspect.den) * known.height * frame->width, 1 << 24);
    return aspect.num > 0 && aspect.den > 0 ? aspect : AVRational{1, 1};
}

QSize VideoFrame::size() const {
    return data_ ? QSize(data_->frame->width, data_->frame->height) : QSize();
}

QSize VideoFrame::displaySize() const {
    if (!data_) return {};
    // In whole numbers: 792 pixels of 12:11 are 864, and 863 by a rounded quotient.
    const AVRational aspect = data_->pixelAspect;
    const QSize shown(std::max(1, int(qint64(size().width()) * aspect.num / aspect.den)), size().height());
    return data_->orientation.isTurned() ? shown.transposed() : shown;
}

qsizetype VideoFrame::byteCount() const {
    qsizetype bytes = 0;
    if (data_)
        for (const AVBufferRef* buffer : data_->frame->buf)
            if (buffer) bytes += qsizetype(buffer->size);
    return bytes;
}

Orientation VideoFrame::orientation() const {
    return data_ ? data_->orientation : Orientation{};
}

bool VideoFrame::isSceneLinear() const {
    return data_ && data_->isSceneLinear;
}

QString VideoFrame::colourSpace() const {
    return data_ ? data_->colourSpace : QString();
}

int VideoFrame::bitDepth() const {
    const AVPixFmtDescriptor* format =
        data_ ? av_pix_fmt_desc_get(AVPixelFormat(data_->frame->format)) : nullptr;
    return format ? format->comp[0].depth : 0;
}

} // namespace daylark
