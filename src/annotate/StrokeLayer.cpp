#include "annotate/StrokeLayer.h"

#include "base/jobs/ShareOut.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>

namespace daylark {

namespace {

constexpr double nearPoints = 0.25; ///< points of a line closer than this are one, area points
constexpr double gentleTurn = 0.94; ///< cosine of the turn up to which a mitred joint looks like a round one
constexpr int bandHeight = 160;     ///< pixels that one thread paints at a time
constexpr size_t pointsWorthThreads = 4000;
constexpr size_t pointsAtOnce = 4000, strokesAtOnce = 400; ///< between two looks at the time

QColor strokeColour(const Stroke& stroke) {
    return stroke.colour.isValid() ? stroke.colour : QColor(Qt::black);
}

// Round joints cost four times as much as mitred ones; see `pathOf`.
QPen strokePen(const QColor& colour, double width) {
    return {colour, width, Qt::SolidLine, Qt::RoundCap, Qt::MiterJoin};
}

double strokeWidth(const Stroke& stroke, const PictureMapping& mapping) {
    return stroke.width * mapping.scale();
}

double opacityOf(const Stroke& stroke) {
    return std::clamp(stroke.opacity, 0.0, 1.0);
}

/// Where a stroke's ink lies, area points.
QRectF strokeBounds(const Stroke& stroke, const PictureMapping& mapping) {
    const std::vector<QPointF>& points = stroke.points;
    if (points.size() < 2) return {};
    double left = points[0].x(), right = left, low = points[0].y(), high = low;
    for (const QPointF& point : points) {
        left = std::min(left, point.x());
        right = std::max(right, point.x());
        low = std::min(low, point.y());
        high = std::max(high, point.y());
    }
    const double reach = strokeWidth(stroke, mapping) + 2; // a mitre reaches further than a cap
    return QRectF(mapping.toArea({left, low}), mapping.toArea({right, high}))
        .normalized()
        .adjusted(-reach, -reach, reach, reach);
}

/// The points from `first` on as one line. Where it turns sharply a new part begins, whose round caps make
/// the joint round. A single point draws nothing, as in drawings made elsewhere.
QPainterPath pathOf(const std::vector<QPointF>& points, const PictureMapping& mapping, size_t first = 0) {
    QPainterPath path;
    if (first >= points.size()) return path;
    QPointF last = mapping.toArea(points[first]), heading;
    path.moveTo(last);
    for (size_t i = first + 1; i < points.size(); ++i) {
        const QPointF next = mapping.toArea(points[i]);
        const QPointF step = next - last;
        const double length = std::hypot(step.x(), step.y());
        if (length < nearPoints && i + 1 < points.size()) continue;
        const QPointF direction = length > 0 ? step / length : heading;
        if (!heading.isNull() && QPointF::dotProduct(direction, heading) < gentleTurn) path.moveTo(last);
        path.lineTo(next);
        heading = direction;
        last = next;
    }
    return path;
}

void clear(QImage& layer, const QRect& pixels) {
    QPainter painter(&layer);
    painter.setCompositionMode(QPainter::CompositionMode_Clear);
    painter.fillRect(pixels, Qt::transparent);
}

} // namespace

void paintStrokes(QPainter& layer, const Drawing& drawing, const PictureMapping& mapping,
                  const StrokeSelection& selection) {
    if (!mapping.isValid()) return;
    layer.save();
    layer.setRenderHint(QPainter::Antialiasing);
    const size_t end = std::min(selection.end, drawing.strokes.size());
    for (size_t at = selection.first; at < end; ++at) {
        const Stroke& stroke = drawing.strokes[at];
        if (stroke.points.size() < 2) continue;
        if (!selection.part.isNull() && !strokeBounds(stroke, mapping).intersects(selection.part)) continue;
        QColor colour = strokeColour(stroke);
        // An eraser clears whatever its opacity: stored drawings count on it.
        const bool clears = stroke.erases();
        layer.setCompositionMode(clears ? QPainter::CompositionMode_Clear
                                        : QPainter::CompositionMode_SourceOver);
        colour.setAlphaF(float(clears ? 1.0 : opacityOf(stroke)));
        layer.strokePath(pathOf(stroke.points, mapping), strokePen(colour, strokeWidth(stroke, mapping)));
    }
    layer.restore();
}

QRect StrokeLayer::toPixels(const QRectF& part) const {
    return QRectF(part.topLeft() * ratio_, part.size() * ratio_).toAlignedRect() & finished_.rect();
}

void StrokeLayer::paintBands(QImage& image, const QRect& pixels, const StrokeSelection& selection, bool clear) {
    if (pixels.isEmpty()) return;
    size_t points = 0;
    const size_t end = std::min(selection.end, painted_.strokes.size());
    for (size_t stroke = selection.first; stroke < end; ++stroke)
        points += painted_.strokes[stroke].points.size();
    const int height = points < pointsWorthThreads ? pixels.height() : bandHeight;
    const int count = (pixels.height() + height - 1) / height;
    uchar* const bits = image.bits(); // no band detaches
    const qsizetype stride = image.bytesPerLine();
    const int width = image.width();
    const auto band = [this, pixels, selection, clear, height, bits, stride, width](int number) {
        const int top = pixels.top() + number * height;
        const int rows = std::min(height, pixels.bottom() + 1 - top);
        QImage lines(bits + top * stride, width, rows, stride, QImage::Format_ARGB32_Premultiplied);
        QPainter painter(&lines);
        const QRect here(pixels.left(), 0, pixels.width(), rows);
        painter.setClipRect(here);
        if (clear) {
            painter.setCompositionMode(QPainter::CompositionMode_Clear);
            painter.fillRect(here, Qt::transparent);
            painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
        }
        painter.translate(0, -top);
        painter.scale(ratio_, ratio_);
        StrokeSelection seen = selection;
        seen.part = QRectF(QPointF(pixels.left(), top) / ratio_, QSizeF(pixels.width(), rows) / ratio_);
        paintStrokes(painter, painted_, mapping_, seen);
    };
    if (count == 1)
        band(0);
    else
        shareOut(count, band);
}

void StrokeLayer::paintAnew(const QRect& pixels) {
    paintBands(finished_, pixels, {}, true);
}

/// All that touches this part is painted without being felt.
bool StrokeLayer::isSoonPainted(const QRect& pixels) const {
    const QRectF part(QPointF(pixels.topLeft()) / ratio_, QSizeF(pixels.size()) / ratio_);
    size_t points = 0, strokes = 0;
    for (const Stroke& stroke : painted_.strokes) {
        if (!strokeBounds(stroke, mapping_).intersects(part)) continue;
        points += stroke.points.size();
        if (points > pointsAtOnce || ++strokes > strokesAtOnce) return false;
    }
    return true;
}

/// As many strokes of `painted_` as are painted between two looks at the time.
size_t StrokeLayer::endOfSome(size_t first, size_t end) const {
    size_t points = 0, at = first;
    while (at < end && at - first < strokesAtOnce && points < pointsAtOnce)
        points += painted_.strokes[at++].points.size();
    return at;
}

bool StrokeLayer::standsAt(const PictureMapping& mapping, const QSize& area, double devicePixelRatio) const {
    const QSize pixels(std::max(1, qRound(area.width() * devicePixelRatio)),
                       std::max(1, qRound(area.height() * devicePixelRatio)));
    return finished_.size() == pixels && ratio_ == devicePixelRatio && mapping == mapping_;
}

void StrokeLayer::forgetGrowing() {
    if (grownPoints_ == 0) return;
    grownPoints_ = 0;
    const QRect used = toPixels(grown_);
    grown_ = {};
    if (!used.isEmpty()) clear(growing_, used);
}

QRectF StrokeLayer::update(const DrawingCanvas& canvas, const PictureMapping& mapping, const QSize& area,
                           double devicePixelRatio, QDeadlineTimer until) {
    const QRectF whole(QPointF(0, 0), QSizeF(area));
    QRectF changed = place(mapping, area, devicePixelRatio);
    if (compare_ || painted_.strokes.size() > canvas.finishedCount()) changed |= takeBack(canvas);
    if (remake_) changed |= goOnRemaking(until);
    if (!remake_ && painted_.strokes.size() < canvas.finishedCount()) changed |= finish(canvas, until);
    behind_ = remake_ || painted_.strokes.size() < canvas.finishedCount();
    return (canvas.isDrawing() ? changed | growStroke(canvas) : changed) & whole;
}

/// Makes the layer fit the area, and moves or forgets what stands on it where the picture lies elsewhere.
QRectF StrokeLayer::place(const PictureMapping& mapping, const QSize& area, double devicePixelRatio) {
    if (standsAt(mapping, area, devicePixelRatio)) return {};
    const QSize pixels(std::max(1, qRound(area.width() * devicePixelRatio)),
                       std::max(1, qRound(area.height() * devicePixelRatio)));
    const bool anew = finished_.size() != pixels || ratio_ != devicePixelRatio;
    const QPointF moved = (mapping.picture.topLeft() - mapping_.picture.topLeft()) * devicePixelRatio;
    PictureMapping back = mapping;
    back.picture.moveTopLeft(mapping_.picture.topLeft());
    const auto isWhole = [](double number) { return std::abs(number - std::round(number)) < 1e-3; };
    const bool onlyMoved = !anew && back == mapping_ && isWhole(moved.x()) && isWhole(moved.y());
    const bool wasRemade = remake_.has_value();
    if (!anew) forgetGrowing();
    mapping_ = mapping;
    ratio_ = devicePixelRatio;
    remake_.reset();
    if (anew) {
        finished_ = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
        finished_.fill(Qt::transparent);
        growing_ = {};
        grownPoints_ = 0;
        grown_ = {};
    }
    if (onlyMoved) {
        moveBy(moved.toPoint());
        if (wasRemade) remake(finished_.rect());
    } else {
        // Painted by `finish`, with whatever is new.
        if (!anew && painted_.hasStrokes()) finished_.fill(Qt::transparent);
        painted_ = {};
    }
    return {QPointF(0, 0), QSizeF(area)};
}

/// What is seen here now: at once, or when it is whole.
void StrokeLayer::comeIn(const QRect& pixels) {
    if (pixels.isEmpty()) return;
    if (!remake_ && isSoonPainted(pixels)) return paintAnew(pixels);
    clear(finished_, pixels);
    remake(pixels);
}

void StrokeLayer::remake(QRect pixels) {
    if (remake_) pixels |= remake_->pixels;
    remake_ = Remake{finished_.copy(), pixels, 0};
    clear(remake_->image, pixels);
}

/// The layer's pixels stand elsewhere; what comes in at the edges is painted.
void StrokeLayer::moveBy(const QPoint& pixels) {
    const QRect all = finished_.rect(), kept = all.translated(pixels) & all;
    if (kept.isEmpty()) return comeIn(all);
    uchar* const bits = finished_.bits();
    const qsizetype stride = finished_.bytesPerLine();
    const bool down = pixels.y() > 0;
    for (int i = 0; i < kept.height(); ++i) {
        const int to = down ? kept.bottom() - i : kept.top() + i;
        std::memmove(bits + to * stride + kept.left() * 4,
                     bits + (to - pixels.y()) * stride + (kept.left() - pixels.x()) * 4,
                     size_t(kept.width()) * 4);
    }
    comeIn({all.left(), all.top(), all.width(), kept.top()});
    comeIn({all.left(), kept.bottom() + 1, all.width(), all.bottom() - kept.bottom()});
    comeIn({all.left(), kept.top(), kept.left(), kept.height()});
    comeIn({kept.right() + 1, kept.top(), all.right() - kept.right(), kept.height()});
}

/// Strokes painted that are no more are painted over: what lay beneath them shows again.
QRectF StrokeLayer::takeBack(const DrawingCanvas& canvas) {
    compare_ = false;
    const Drawing& drawing = canvas.shown();
    const size_t painted = painted_.strokes.size();
    const size_t most = std::min(painted, canvas.finishedCount());
    size_t same = 0;
    while (same < most && painted_.strokes[same] == drawing.strokes[same])
        ++same;
    QRectF gone;
    for (size_t stroke = same; stroke < painted; ++stroke)
        gone |= strokeBounds(painted_.strokes[stroke], mapping_);
    if (same == painted && !remake_) return {};
    painted_.strokes.resize(same);
    const QRect pixels = toPixels(gone);
    if (!remake_ && isSoonPainted(pixels)) {
        paintAnew(pixels);
        return gone;
    }
    remake(pixels);
    return {};
}

QRectF StrokeLayer::goOnRemaking(const QDeadlineTimer& until) {
    const size_t end = painted_.strokes.size();
    do {
        const size_t next = endOfSome(remake_->next, end);
        paintBands(remake_->image, remake_->pixels, {remake_->next, next, {}}, false);
        remake_->next = next;
    } while (remake_->next < end && !until.hasExpired());
    if (remake_->next < end) return {};
    finished_ = remake_->image;
    const QRect pixels = remake_->pixels;
    remake_.reset();
    return {QPointF(pixels.topLeft()) / ratio_, QSizeF(pixels.size()) / ratio_};
}

QRectF StrokeLayer::finish(const DrawingCanvas& canvas, const QDeadlineTimer& until) {
    const Drawing& drawing = canvas.shown();
    const size_t end = canvas.finishedCount();
    QRectF changed = grown_;
    forgetGrowing();
    do {
        const size_t first = painted_.strokes.size();
        QRectF some;
        size_t points = 0;
        for (size_t at = first; at < end && at - first < strokesAtOnce && points < pointsAtOnce; ++at) {
            some |= strokeBounds(drawing.strokes[at], mapping_);
            points += drawing.strokes[at].points.size();
            painted_.strokes.push_back(drawing.strokes[at]);
        }
        paintBands(finished_, toPixels(some), {first, painted_.strokes.size(), {}}, false);
        changed |= some;
    } while (painted_.strokes.size() < end && !until.hasExpired());
    return changed;
}

/// Paints the new points only, opaque: the opacity comes when the layer is drawn, so that where the line
/// meets itself it is no denser.
QRectF StrokeLayer::growStroke(const DrawingCanvas& canvas) {
    const Stroke& stroke = canvas.shown().strokes.back();
    const std::vector<QPointF>& points = stroke.points;
    if (growing_.isNull()) {
        growing_ = QImage(finished_.size(), QImage::Format_ARGB32_Premultiplied);
        growing_.fill(Qt::transparent);
    }
    if (grownPoints_ == 0) {
        growingOpacity_ = opacityOf(stroke);
        growingErases_ = stroke.erases();
        grownPoints_ = 1;
    }
    if (points.size() <= grownPoints_) return {};
    const QPainterPath path = pathOf(points, mapping_, grownPoints_ - 1);
    const double width = strokeWidth(stroke, mapping_);
    QPainter painter(&growing_);
    painter.scale(ratio_, ratio_);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.strokePath(path, strokePen(growingErases_ ? QColor(Qt::black) : strokeColour(stroke), width));
    grownPoints_ = points.size();
    const double reach = width + 2;
    const QRectF changed = path.boundingRect().adjusted(-reach, -reach, reach, reach);
    grown_ |= changed;
    return changed;
}

// Pixel on pixel: the painter's unit becomes the layer's own pixel, so that nothing is scaled.
void StrokeLayer::paint(QPainter& painter, const QRectF& part) const {
    const QRect pixels = toPixels(part);
    if (pixels.isEmpty()) return;
    painter.save();
    painter.scale(1 / ratio_, 1 / ratio_);
    const QRect grown = grownPoints_ == 0 ? QRect() : toPixels(grown_) & pixels;
    if (grown.isEmpty() || !growingErases_) {
        painter.drawImage(pixels.topLeft(), finished_, pixels);
        if (!grown.isEmpty()) {
            painter.setOpacity(growingOpacity_);
            painter.drawImage(grown.topLeft(), growing_, grown);
        }
    } else {
        QImage erased = finished_.copy(pixels);
        QPainter layer(&erased);
        layer.setCompositionMode(QPainter::CompositionMode_DestinationOut);
        layer.drawImage(grown.topLeft() - pixels.topLeft(), growing_, grown);
        layer.end();
        painter.drawImage(pixels.topLeft(), erased);
    }
    painter.restore();
}

} // namespace daylark
