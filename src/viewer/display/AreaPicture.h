#pragma once

#include "annotate/DrawingCanvas.h"
#include "media/decode/VideoFrame.h"
#include "model/ColourTransform.h"
#include "viewer/display/DisplayGeometry.h"

#include <QImage>
#include <QSize>

#include <optional>

class QPainter;

namespace daylark {

/// Everything that lies on the player area below the read-outs; what the window shows and what a snapshot
/// holds are the same layers. A plain value; any thread.
struct AreaPicture {
    VideoFrame frame;
    DisplayGeometry geometry; ///< of the area in points
    bool mirrorLeftRight = false, mirrorUpsideDown = false;
    ColourTransform colour;
    std::optional<DisplayGeometry::MaskBars> mask; ///< on the area, y upwards; none: no mask
    double maskOpacity = 1;
    Drawing strokes;  ///< those that are shown
    QSizeF movieSize; ///< pixels that the strokes count in
};

/// The mask's bars, black, in area points.
void paintMask(QPainter& painter, const DisplayGeometry& geometry, const DisplayGeometry::MaskBars& bars,
               double opacity);
/// From the area's points to the movie's pixels, for strokes.
[[nodiscard]] PictureMapping strokeMapping(const DisplayGeometry& geometry, const QSizeF& movieSize,
                                           bool mirrorLeftRight, bool mirrorUpsideDown);
/// The layers in an image of this many pixels, by the software renderer; the area is stretched onto it.
[[nodiscard]] QImage renderAreaPicture(const AreaPicture& area, const QSize& pixels);

} // namespace daylark
