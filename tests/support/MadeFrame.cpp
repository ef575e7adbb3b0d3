#include "support/MadeFrame.h"

#include "media/decode/VideoFrameData.h"

#include <cstring>
#include <random>
#include <vector>

namespace daylark {

namespace {

/// Left a ramp, in the middle black and white in lines of one sample, right noise.
quint16 sampleAt(int x, int y, int width, quint32 white, std::mt19937& random) {
    if (3 * x < width) return quint16(quint64(white) * quint32((x * 3 + y) % width) / quint32(width));
    if (3 * x < 2 * width) return quint16((x + y / 3) % 2 ? white : 0);
    return quint16(random() % (white + 1));
}

} // namespace

VideoFrame madeFrame(const FrameWish& wish) {
    const AVPixelFormat format = av_get_pix_fmt(wish.format.constData());
    const AVPixFmtDescriptor* description = av_pix_fmt_desc_get(format);
    if (!description) return {};
    auto data = std::make_shared<VideoFrame::Data>();
    data->orientation = {wish.rotation, wish.mirrored};
    data->pixelAspect = {wish.pixelAspect, 1};
    data->frame.reset(av_frame_alloc());
    AVFrame& frame = *data->frame;
    frame.format = format;
    frame.width = wish.size.width();
    frame.height = wish.size.height();
    frame.colorspace = AVColorSpace(wish.colourSpace);
    frame.color_range = wish.fullRange ? AVCOL_RANGE_JPEG : AVCOL_RANGE_MPEG;
    frame.chroma_location = AVChromaLocation(wish.chromaLocation);
    if (av_frame_get_buffer(&frame, 0) < 0) return {};
    for (size_t plane = 0; plane < AV_NUM_DATA_POINTERS && frame.buf[plane]; ++plane)
        std::memset(frame.buf[plane]->data, 0, frame.buf[plane]->size);
    std::mt19937 random(7);
    for (int i = 0; i < description->nb_components; ++i) {
        const bool chroma = (i == 1 || i == 2) && !(description->flags & AV_PIX_FMT_FLAG_RGB);
        const int width = chroma ? AV_CEIL_RSHIFT(frame.width, description->log2_chroma_w) : frame.width;
        const int height = chroma ? AV_CEIL_RSHIFT(frame.height, description->log2_chroma_h) : frame.height;
        const int depth = description->comp[i].depth;
        const quint32 white = depth < 32 ? (1U << depth) - 1 : 0; // floats stay black
        std::vector<quint16> row(size_t(width), 0);
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x)
                row[size_t(x)] = sampleAt(x, y, width, white, random);
            av_write_image_line2(row.data(), frame.data, frame.linesize, description, 0, y, i, width, 2);
        }
    }
    return VideoFrame(std::move(data));
}

} // namespace daylark
