#pragma once

#include "base/Result.h"

#include <memory>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/imgutils.h>
#include <libavutil/pixdesc.h>
#include <libswscale/swscale.h>
}

/// Owners of the codec libraries' objects. Included by sources of this floor and by its internal headers
/// only; no AV type leaves the floor.
namespace daylark::av {

struct Deleter {
    void operator()(AVFormatContext* context) const { avformat_close_input(&context); }
    void operator()(AVCodecContext* context) const { avcodec_free_context(&context); }
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
    void operator()(SwsContext* context) const { sws_freeContext(context); }
};
template<class T>
using Owner = std::unique_ptr<T, Deleter>;

using FormatPtr = Owner<AVFormatContext>;
using CodecPtr = Owner<AVCodecContext>;
using FramePtr = Owner<AVFrame>;
using PacketPtr = Owner<AVPacket>;
using ScalerPtr = Owner<SwsContext>;

/// "reading: Invalid data found when processing input".
[[nodiscard]] Error errorOf(const char* what, int code);

} // namespace daylark::av
