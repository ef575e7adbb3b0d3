#include "media/decode/AlphaPictures.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace daylark {
namespace {

/// What a block of this kind calls its alpha.
constexpr uint8_t alphaNumber[] = {0, 0, 0, 0, 0, 0, 0, 1};

AVPixelFormat withAlpha(int format) {
    switch (format) {
    case AV_PIX_FMT_YUV420P:
        return AV_PIX_FMT_YUVA420P;
    case AV_PIX_FMT_YUV422P:
        return AV_PIX_FMT_YUVA422P;
    case AV_PIX_FMT_YUV444P:
        return AV_PIX_FMT_YUVA444P;
    case AV_PIX_FMT_YUV420P10:
        return AV_PIX_FMT_YUVA420P10;
    case AV_PIX_FMT_YUV422P10:
        return AV_PIX_FMT_YUVA422P10;
    case AV_PIX_FMT_YUV444P10:
        return AV_PIX_FMT_YUVA444P10;
    default:
        return AV_PIX_FMT_NONE;
    }
}

/// With one thread it gives each picture as soon as it has its packet.
av::CodecPtr openAlphaDecoder(const AVCodecParameters& parameters) {
    const AVCodec* decoder = avcodec_find_decoder(parameters.codec_id);
    av::CodecPtr codec(decoder ? avcodec_alloc_context3(decoder) : nullptr);
    if (!codec) return nullptr;
    codec->width = parameters.width;
    codec->height = parameters.height;
    codec->thread_count = 1;
    codec->flags |= AV_CODEC_FLAG_LOW_DELAY;
    return avcodec_open2(codec.get(), decoder, nullptr) >= 0 ? std::move(codec) : nullptr;
}

} // namespace

void AlphaPictures::flush() {
    made_.clear();
    if (codec_) avcodec_flush_buffers(codec_.get());
}

void AlphaPictures::feed(const AVPacket& packet, qint64 number) {
    size_t size = 0;
    const uint8_t* data = av_packet_get_side_data(&packet, AV_PKT_DATA_MATROSKA_BLOCKADDITIONAL, &size);
    constexpr size_t head = sizeof alphaNumber;
    if (!data || size <= head || std::memcmp(data, alphaNumber, head) != 0) return;
    if (!codec_) codec_ = openAlphaDecoder(parameters_);
    const av::PacketPtr alpha(av_packet_alloc());
    if (!codec_ || av_new_packet(alpha.get(), int(size - head)) < 0) return;
    std::memcpy(alpha->data, data + head, size - head);
    alpha->pts = alpha->dts = number;
    alpha->flags = packet.flags;
    avcodec_send_packet(codec_.get(), alpha.get()); // damage: opaque
    for (;;) {
        av::FramePtr frame(av_frame_alloc());
        if (avcodec_receive_frame(codec_.get(), frame.get()) < 0) break;
        const qint64 its = frame->pts;
        made_[its] = std::move(frame);
    }
    constexpr size_t held = 64; // more than a decoder holds back
    while (made_.size() > held)
        made_.erase(made_.begin());
}

void AlphaPictures::addTo(AVFrame& frame, qint64 number) {
    const auto found = made_.find(number);
    if (found == made_.end()) return;
    const av::FramePtr alpha = std::move(found->second);
    made_.erase(found);
    const AVPixelFormat joined = withAlpha(frame.format);
    const AVPixFmtDescriptor* own = av_pix_fmt_desc_get(AVPixelFormat(frame.format));
    const AVPixFmtDescriptor* its = av_pix_fmt_desc_get(AVPixelFormat(alpha->format));
    if (joined == AV_PIX_FMT_NONE || !own || !its || own->comp[0].depth != its->comp[0].depth ||
        alpha->width != frame.width || alpha->height != frame.height)
        return;
    AVBufferRef* const* place = std::find(std::begin(frame.buf), std::end(frame.buf), nullptr);
    AVBufferRef* plane = av_frame_get_plane_buffer(alpha.get(), 0);
    if (place == std::end(frame.buf) || !plane) return;
    AVBufferRef* shared = av_buffer_ref(plane);
    if (!shared) return;
    frame.buf[place - std::begin(frame.buf)] = shared;
    frame.data[3] = alpha->data[0];
    frame.linesize[3] = alpha->linesize[0];
    frame.format = joined;
}

} // namespace daylark
