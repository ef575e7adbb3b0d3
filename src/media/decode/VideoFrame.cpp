#include "media/decode/VideoFrame.h"

#include "media/decode/VideoFrameData.h"

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
    // In whole numbers: 792 pixels of 12:11 are 864, and 863 by a rounded quotient.
    const AVRational aspect = data_->pixelAspect;
    const QSize shown(std::max(1, int(qint64(size().width()) * aspect.num / aspect.den)), size().height());
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

} // namespace daylark
