#pragma once

#include "media/container/Av.h"
#include "media/decode/VideoFrame.h"

namespace daylark {

/// What the opaque handle holds: the decoder's frame and what the stream says about showing it. Internal to
/// media/.
class VideoFrame::Data {
public:
    av::FramePtr frame;
    AVRational pixelAspect{1, 1};
    int rotation = 0; ///< clockwise: 0, 90, 180, 270
};

/// The stream's rotation, clockwise in degrees; a multiple of 90.
[[nodiscard]] int rotationOf(const AVStream& stream);
/// Shape of one pixel of the stream; 1:1 where unknown.
[[nodiscard]] AVRational pixelAspectOf(AVFormatContext* format, AVStream* stream, AVFrame* frame = nullptr);

} // namespace daylark
