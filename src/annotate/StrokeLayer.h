#pragma once

#include "annotate/DrawingCanvas.h"

#include <QImage>
#include <QRect>

class QPainter;

namespace daylark {

/// Paints strokes first to last onto a transparent layer: brushes blend at their opacity, erasers clear what
/// earlier strokes left (on the layer only, never the picture). The painter's coordinates are the player
/// area's points.
void paintStrokes(QPainter& layer, const Drawing& drawing, const PictureMapping& mapping, size_t first = 0);

/// The drawing as an image over the player area, kept from one painting to the next: finished strokes are
/// painted once, the stroke in progress grows by its new points only, so that a pen is followed at every
/// event however many strokes stand. Interface thread.
class StrokeLayer {
public:
    /// Brings the layer up to the canvas. What has to be painted anew on the screen, in area points (empty:
    /// nothing).
    [[nodiscard]] QRectF update(const DrawingCanvas& canvas, const PictureMapping& mapping, const QSize& area,
                                double devicePixelRatio);
    void invalidate() { valid_ = false; } ///< the strokes were replaced
    /// Draws the part of the layer that lies in `part` (area points) where it belongs.
    void paint(QPainter& painter, const QRectF& part) const;

private:
    void paintFinished(const DrawingCanvas& canvas, size_t first);
    [[nodiscard]] QRectF growStroke(const DrawingCanvas& canvas);

    QImage finished_; ///< premultiplied, device pixels
    QImage growing_;  ///< the stroke in progress, opaque; null when there is none
    PictureMapping mapping_;
    double ratio_ = 1;
    size_t finishedStrokes_ = 0; ///< painted into finished_
    size_t grownPoints_ = 0;     ///< of the stroke in progress painted into growing_
    double growingOpacity_ = 1;
    bool growingErases_ = false;
    bool valid_ = false;
};

} // namespace daylark
