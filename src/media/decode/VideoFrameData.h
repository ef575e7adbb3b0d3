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
    bool isHalf = false;        ///< the frame's 16 bits a sample are halves, for which the library has no planar format
    bool isSceneLinear = false; ///< of halves and floats: proportional to light
    QString colourSpace;        ///< as the file names it; null: it says nothing
    QStringList channels;       ///< what the file calls what its planes hold, red first; empty: it doesn't
    double black = 0, white = 1; ///< what of the file's own numbers stands as 0 and 1 here
};

/// What the stream says of how its pictures are to be turned.
[[nodiscard]] Orientation orientationOf(const AVStream& stream);
/// Shape of one pixel of the stream, or of this picture of it; 1:1 where unknown.
[[nodiscard]] AVRational pixelAspectOf(AVFormatContext* format, AVStream* stream, AVFrame* frame = nullptr);

} // namespace daylark
