#include "annotate/DrawingCanvas.h"

namespace daylark {

QPointF PictureMapping::toMovie(const QPointF& area) const {
    if (!isValid()) return {};
    const double x = area.x() - picture.x();
    const double y = picture.bottom() - area.y();
    const double scaleX = movie.width() / picture.width(), scaleY = movie.height() / picture.height();
    return {scaleX * (mirrorY ? picture.width() - x : x), scaleY * (mirrorX ? picture.height() - y : y)};
}

QPointF PictureMapping::toArea(const QPointF& point) const {
    if (!isValid()) return {};
    const double x = point.x() * picture.width() / movie.width();
    const double y = point.y() * picture.height() / movie.height();
    return {picture.x() + (mirrorY ? picture.width() - x : x),
            picture.bottom() - (mirrorX ? picture.height() - y : y)};
}

void DrawingCanvas::setStrokes(const Drawing& drawing) {
    drawing_ = false;
    strokes_ = drawing;
}

void DrawingCanvas::clearViewOfStrokes() {
    drawing_ = false;
    strokes_.strokesArray.clear();
}

// The lists are parallel; what stands in the others beyond the strokes (after `clearViewOfStrokes`, or in a
// drawing made elsewhere) must not become this stroke's.
void DrawingCanvas::beginStroke(const QPointF& point, Brush type, const QColor& colour, double width,
                                double opacity) {
    const size_t count = strokes_.strokesArray.size();
    strokes_.brushTypeArray.resize(count, int(DrawingCanvas::brush));
    strokes_.colourArray.resize(count);
    strokes_.widthArray.resize(count, 1);
    strokes_.opacityArray.resize(count, 1);
    strokes_.strokesArray.push_back({point});
    strokes_.brushTypeArray.push_back(type);
    strokes_.colourArray.push_back(colour);
    strokes_.widthArray.push_back(width);
    strokes_.opacityArray.push_back(opacity);
    strokes_.hasKeys = true;
    drawing_ = true;
}

void DrawingCanvas::continueStroke(const QPointF& point) {
    if (drawing_) strokes_.strokesArray.back().push_back(point);
}

void DrawingCanvas::endStroke(const QPointF& point) {
    continueStroke(point);
    drawing_ = false;
}

} // namespace daylark
