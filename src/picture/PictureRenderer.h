#pragma once

#include "media/decode/VideoFrame.h"
#include "model/ColourTransform.h"
#include "picture/colour/DisplayProcessor.h"

#include <QImage>
#include <QRect>
#include <QSize>

#include <memory>

namespace daylark {

struct PicturePlanes;

/// How a picture is laid on pixels. The whole picture covers `size` device pixels (any size: zoom has no
/// limit); `visible` is the part of them that is wanted, and only that is computed.
struct PictureRequest {
    QSize size; ///< of the whole picture; empty: `displaySize()`
    QRect
        visible; ///< in the pixels of `size`; null: all of it. What lies outside the picture comes out black
    bool mirrorLeftRight = false, mirrorUpsideDown = false;
    ColourTransform colour;
    bool deep = false; ///< 16 bit a component (Format_RGBX64) in place of 8 (Format_RGB32)
    std::shared_ptr<const DisplayProcessor> display; ///< before `colour`; null: the picture's numbers are a display's already
    bool quickly = false;                            ///< by the display's quick form, for pictures of a run
};

/// The software renderer. Each plane is resampled straight onto the wanted pixels with a triangle as wide as
/// the wider of the two grids' steps (so a picture at 1:1 is untouched, nothing rings, nothing shifts), then
/// matrix and range, then the colour transform, in floating point, once; rounded at the end; alpha over
/// black. Within one step of 255 of the same arithmetic in double precision. Any thread; a null frame gives a
/// null image.
[[nodiscard]] QImage renderPicture(const VideoFrame& frame, const PictureRequest& request);
/// The same of planes; an empty size is theirs.
[[nodiscard]] QImage renderPicture(const PicturePlanes& picture, const PictureRequest& request);

/// The picture as RGB, rotated as the file asks, scaled to `size` pixels exactly (an empty size means
/// `displaySize()`). 8 bit a component (Format_RGB32, alpha over black); `deep` gives Format_RGBX64. What
/// `renderPicture` makes when nothing else is asked of it. Any thread.
[[nodiscard]] QImage renderFrame(const VideoFrame& frame, QSize size = {}, bool deep = false);

} // namespace daylark
