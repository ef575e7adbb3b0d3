#pragma once

#include "media/decode/VideoFrame.h"

#include <QByteArray>
#include <QSize>

namespace daylark {

/// A decoded picture that no file has given: any pixel format by the codec library's name ("yuv420p10le"),
/// filled with ramps, hard edges and noise that are the same at every call.
struct FrameWish {
    QByteArray format = "yuv420p";
    QSize size{96, 64};
    int rotation = 0;
    bool fullRange = false;
    int colourSpace = 1;    ///< as the codec library numbers them: 1 BT.709, 5 BT.601, 9 BT.2020
    int chromaLocation = 0; ///< likewise; 0 unknown, 1 left, 2 centre, 3 top left
    bool mirrored = false;
    int pixelAspect = 1; ///< a pixel's width over its height
};

/// Null for an unknown format.
[[nodiscard]] VideoFrame madeFrame(const FrameWish& wish);

} // namespace daylark
