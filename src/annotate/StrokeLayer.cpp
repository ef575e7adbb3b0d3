#include "annotate/StrokeLayer.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace daylark {

namespace {

template<class T>
T entryOr(const std::vector<T>& list, size_t index, const T& missing) {
    return index < list.size() ? list[index] : missing;
}

QPen strokePen(const QColor& colour, double width) {
    return {colour, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin};
}

double strokeWidth(const Drawing& drawing, size_t stroke, const PictureMapping& mapping) {
    return entryOr(drawing.widthArray, stroke, 1.0) * mapping.scale();
}

bool erases(const Drawing& drawing, size_t stroke) {
    return entryOr(drawing.brushTypeArray, stroke, int(DrawingCanvas::brush)) == DrawingCanvas::eraser;
}

double opacityOf(const Drawing& drawing, size_t stroke) {
    return std::clamp(entryOr(drawing.opacityArray, stroke, 1.0), 0.0, 1.0);
}

/// The points from `first` on as one line. A single point draws nothing; wanted.
QPainterPath pathOf(const std::vector<QPointF>& points, const PictureMapping& mapping, size_t first = 0) {
    QPainterPath path;
    if (first >= points.size()) return path;
    path.moveTo(mapping.toArea(points[first]));
    for (size_t i = first + 1; i < points.size(); ++i)
        path.lineTo(mapping.toArea(points[i]));
    return path;
}

} // namespace

void paintStrokes(QPainter& layer, const Drawing& drawing, const PictureMapping& mapping, size_t first) {
    if (!mapping.isValid()) return;
    layer.save();
    layer.setRenderHint(QPainter::Antialiasing);
    for (size_t stroke = first; stroke < drawing.strokesArray.size(); ++stroke) {
        if (drawing.strokesArray[stroke].size() < 2) continue;
        QColor colour = entryOr(drawing.colourArray, stroke, QColor());
        if (!colour.isValid()) colour = Qt::black;
        // An eraser clears whatever its opacity; wanted.
        const bool clears = erases(drawing, stroke);
        layer.setCompositionMode(clears ? QPainter::CompositionMode_Clear
                                        : QPainter::CompositionMode_SourceOver);
        colour.setAlphaF(float(clears ? 1.0 : opacityOf(drawing, stroke)));
        layer.strokePath(pathOf(drawing.strokesArray[stroke], mapping),
                         strokePen(colour, strokeWidth(drawing, stroke, mapping)));
    }
    layer.restore();
}

void StrokeLayer::paintFinished(const DrawingCanvas& canvas, size_t first) {
    QPainter painter(&finished_);
    painter.scale(ratio_, ratio_);
    Drawing done = canvas.currentStrokesDictionary();
    done.strokesArray.resize(canvas.finishedCount());
    paintStrokes(painter, done, mapping_, first);
    finishedStrokes_ = canvas.finishedCount();
}

QRectF StrokeLayer::update(const DrawingCanvas& canvas, const PictureMapping& mapping, const QSize& area,
                           double devicePixelRatio) {
    const QSize pixels(std::max(1, qRound(area.width() * devicePixelRatio)),
                       std::max(1, qRound(area.height() * devicePixelRatio)));
    QRectF changed;
    if (!valid_ || mapping != mapping_ || finished_.size() != pixels ||
        finishedStrokes_ > canvas.finishedCount()) {
        mapping_ = mapping;
        ratio_ = devicePixelRatio;
        finished_ = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
        finished_.fill(Qt::transparent);
        growing_ = {};
        grownPoints_ = 0;
        valid_ = true;
        paintFinished(canvas, 0);
        changed = QRectF(QPointF(0, 0), QSizeF(area));
    } else if (finishedStrokes_ < canvas.finishedCount()) {
        const auto& points = canvas.currentStrokesDictionary().strokesArray;
        for (size_t stroke = finishedStrokes_; stroke < canvas.finishedCount(); ++stroke) {
            const double reach = strokeWidth(canvas.currentStrokesDictionary(), stroke, mapping_) / 2 + 2;
            changed |= pathOf(points[stroke], mapping_).boundingRect().adjusted(-reach, -reach, reach, reach);
        }
        growing_ = {};
        grownPoints_ = 0;
        paintFinished(canvas, finishedStrokes_);
    }
    return canvas.isDrawing() ? changed | growStroke(canvas) : changed;
}

/// Paints the new points only, opaque: the opacity comes when the layer is drawn, so that where the line
/// meets itself it is no denser.
QRectF StrokeLayer::growStroke(const DrawingCanvas& canvas) {
    const Drawing& drawing = canvas.currentStrokesDictionary();
    const size_t stroke = drawing.strokesArray.size() - 1;
    const std::vector<QPointF>& points = drawing.strokesArray[stroke];
    if (growing_.isNull()) {
        growing_ = QImage(finished_.size(), QImage::Format_ARGB32_Premultiplied);
        growing_.fill(Qt::transparent);
        growingOpacity_ = opacityOf(drawing, stroke);
        growingErases_ = erases(drawing, stroke);
        grownPoints_ = 1;
    }
    if (points.size() <= grownPoints_) return {};
    const QPainterPath path = pathOf(points, mapping_, grownPoints_ - 1);
    const double width = strokeWidth(drawing, stroke, mapping_);
    QPainter painter(&growing_);
    painter.scale(ratio_, ratio_);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.strokePath(path,
                       strokePen(growingErases_ ? QColor(Qt::black) : drawing.colourArray[stroke], width));
    grownPoints_ = points.size();
    const double reach = width / 2 + 2;
    return path.boundingRect().adjusted(-reach, -reach, reach, reach);
}

void StrokeLayer::paint(QPainter& painter, const QRectF& part) const {
    if (!valid_) return;
    const QRect pixels =
        QRectF(part.topLeft() * ratio_, part.size() * ratio_).toAlignedRect() & finished_.rect();
    if (pixels.isEmpty()) return;
    const QRectF target(QPointF(pixels.topLeft()) / ratio_, QSizeF(pixels.size()) / ratio_);
    if (growing_.isNull() || !growingErases_) {
        painter.drawImage(target, finished_, pixels);
        if (growing_.isNull()) return;
        painter.save();
        painter.setOpacity(growingOpacity_);
        painter.drawImage(target, growing_, pixels);
        painter.restore();
        return;
    }
    QImage erased = finished_.copy(pixels);
    QPainter layer(&erased);
    layer.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    layer.drawImage(QPoint(0, 0), growing_, pixels);
    layer.end();
    painter.drawImage(target, erased);
}

} // namespace daylark
