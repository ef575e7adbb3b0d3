#include "annotate/DrawingCanvas.h"

#include <algorithm>
#include <functional>
#include <unordered_map>

namespace daylark {

Drawing eachStrokeOnce(const Drawing& drawing) {
    // By a few numbers first: a drawing of a file may have a hundred thousand strokes.
    const auto signOf = [](const Stroke& stroke) {
        size_t sign = stroke.points.size();
        const auto mix = [&sign](double number) { sign = sign * 1099511628211U ^ std::hash<double>()(number); };
        const std::vector<QPointF>& points = stroke.points;
        for (size_t at = 0; at < points.size(); at += std::max<size_t>(1, points.size() / 2)) {
            mix(points[at].x());
            mix(points[at].y());
        }
        mix(stroke.width);
        return sign;
    };
    Drawing once;
    std::unordered_multimap<size_t, size_t> known; // sign and place
    for (const Stroke& stroke : drawing.strokes) {
        const size_t sign = signOf(stroke);
        const auto [first, last] = known.equal_range(sign);
        if (std::any_of(first, last, [&](const auto& one) { return once.strokes[one.second] == stroke; })) continue;
        known.emplace(sign, once.strokes.size());
        once.strokes.push_back(stroke);
    }
    return once;
}

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
    lineless_.clear();
}

void DrawingCanvas::clearViewOfStrokes() {
    drawing_ = false;
    for (Stroke& stroke : strokes_.strokes)
        stroke.points.clear();
    lineless_.insert(lineless_.begin(), strokes_.strokes.begin(), strokes_.strokes.end());
    strokes_.strokes.clear();
}

Value DrawingCanvas::currentStrokesDictionary() const {
    if (lineless_.empty()) return strokes_.toValue();
    Drawing all = strokes_;
    all.hasKeys = true;
    all.strokes.insert(all.strokes.end(), lineless_.begin(), lineless_.end());
    const Value lists = all.toValue();
    Value::Dictionary dictionary = *lists.dictionary();
    for (auto& [key, list] : dictionary)
        if (key.string() == QLatin1String("strokesArray")) list = strokes_.toValue()[u"strokesArray"];
    return dictionary;
}

void DrawingCanvas::beginStroke(const QPointF& point, Brush type, const QColor& colour, double width,
                                double opacity) {
    lineless_.push_back({{}, int(type), colour, width, opacity});
    strokes_.strokes.push_back(lineless_.front()); // lines and the other lists' entries go together by position
    lineless_.erase(lineless_.begin());
    strokes_.strokes.back().points = {point};
    strokes_.hasKeys = true;
    drawing_ = true;
}

void DrawingCanvas::continueStroke(const QPointF& point) {
    if (drawing_) strokes_.strokes.back().points.push_back(point);
}

void DrawingCanvas::endStroke(const QPointF& point) {
    continueStroke(point);
    drawing_ = false;
}

} // namespace daylark
