#pragma once

#include "annotate/DrawingCanvas.h"

#include <QImage>
#include <QRect>

#include <limits>

class QPainter;

namespace daylark {

/// Paints strokes first to last onto a transparent layer: brushes blend at their opacity, erasers clear what
/// earlier strokes left (on the layer only, never the picture). The painter's coordinates are the player
/// area's points.
struct StrokeSelection {
    size_t first = 0, end = std::numeric_limits<size_t>::max(); ///< the strokes from `first` to before `end`
    QRectF part = {}; ///< those that touch this part of the area only; null: all
};
void paintStrokes(QPainter& layer, const Drawing& drawing, const PictureMapping& mapping,
                  const StrokeSelection& selection = {});

/// The drawing as an image over the player area, kept from one painting to the next: finished strokes are
/// painted once, the stroke in progress grows by its new points only, so that a pen is followed at every
/// event however many strokes stand. A picture that is moved moves the layer; a stroke taken back is painted
/// over where it was. Interface thread; large drawings are painted by the thread pool as well.
class StrokeLayer {
public:
    /// Brings the layer up to the canvas. What has to be painted anew on the screen, in area points (empty:
    /// nothing).
    [[nodiscard]] QRectF update(const DrawingCanvas& canvas, const PictureMapping& mapping, const QSize& area,
                                double devicePixelRatio);
    void strokesChanged() { compare_ = true; } ///< the strokes may be others than those painted
    /// Draws the part of the layer that lies in `part` (area points) where it belongs.
    void paint(QPainter& painter, const QRectF& part) const;

private:
    void moveBy(const QPoint& pixels);
    [[nodiscard]] QRectF takeBack(const DrawingCanvas& canvas);
    [[nodiscard]] QRectF finish(const DrawingCanvas& canvas);
    [[nodiscard]] QRectF growStroke(const DrawingCanvas& canvas);
    void paintAnew(const QRect& pixels);
    void paintBands(const QRect& pixels, const StrokeSelection& selection, bool clear);
    void forgetGrowing();
    [[nodiscard]] QRect toPixels(const QRectF& part) const; ///< whole ones, on the layer

    QImage finished_; ///< premultiplied, device pixels
    QImage growing_;  ///< the stroke in progress, opaque; transparent elsewhere
    Drawing painted_; ///< the strokes in finished_
    PictureMapping mapping_;
    double ratio_ = 1;
    size_t grownPoints_ = 0; ///< of the stroke in progress painted into growing_; 0: there is none
    QRectF grown_;           ///< where on growing_
    double growingOpacity_ = 1;
    bool growingErases_ = false;
    bool compare_ = false;
};

} // namespace daylark
