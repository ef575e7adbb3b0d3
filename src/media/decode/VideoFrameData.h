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
    Orientation orientation;
};

/// What the stream says of how its pictures are to be turned.
[[nodiscard]] Orientation orientationOf(const AVStream& stream);
/// Shape of one pixel of the stream, or of this picture of it; 1:1 where unknown.
[[nodiscard]] AVRational pixelAspectOf(AVFormatContext* format, AVStream* stream, AVFrame* frame = nullptr);

} // namespace daylark
