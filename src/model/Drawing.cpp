#include "model/Drawing.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace daylark {

namespace {

/// Lists of a file may refer to one stroke any number of times; a drawing by hand stays far below this.
constexpr std::size_t mostPointsOfDrawing = 1000000;
constexpr std::size_t mostStrokesOfDrawing = 100000;

Value drawingPoints(const std::vector<QPointF>& stroke) {
    Value::Array points;
    points.reserve(stroke.size());
    for (const QPointF& point : stroke)
        points.emplace_back(point);
    return points;
}

/// One of the five lists: the same field of every stroke.
template<class Box>
Value fieldOfStrokes(const std::vector<Stroke>& strokes, Box box) {
    Value::Array boxed;
    boxed.reserve(strokes.size());
    for (const Stroke& stroke : strokes)
        boxed.push_back(box(stroke));
    return boxed;
}

/// Hands each stroke its entry of a list, of whatever class it is.
template<class Take>
void readField(const Value& drawing, QStringView key, std::vector<Stroke>& strokes, Take take) {
    const Value boxed = drawing[key];
    const Value::Array* array = boxed.array();
    for (std::size_t i = 0; array && i < std::min(array->size(), strokes.size()); ++i)
        take(strokes[i], (*array)[i]);
}

/// No picture is so large; what lies farther out, or is no number, cannot be painted.
bool isOnAPicture(double coordinate) {
    constexpr double farOut = 1e6; // pixels
    return std::abs(coordinate) <= farOut;
}

std::vector<QPointF> pointsOfStroke(const Value& boxed, std::size_t& pointsLeft) {
    std::vector<QPointF> points;
    const Value::Array* array = boxed.array();
    if (!array) return points;
    points.reserve(std::min(array->size(), pointsLeft));
    for (const Value& element : *array) {
        const QPointF* point = element.point();
        if (!point || !isOnAPicture(point->x()) || !isOnAPicture(point->y())) continue;
        if (pointsLeft == 0) break;
        --pointsLeft;
        points.push_back(*point);
    }
    return points;
}

double realOfValue(const Value& value, double otherwise) {
    const Number* number = value.number();
    const double real = number ? numberToDouble(*number) : otherwise;
    return std::isfinite(real) ? real : otherwise;
}

} // namespace

void Drawing::append(const Drawing& other) {
    const std::size_t count = other.strokes.size(); // by index: a drawing may be appended to itself
    strokes.reserve(strokes.size() + count);
    for (std::size_t i = 0; i < count; ++i)
        strokes.push_back(other.strokes[i]);
    hasKeys = true;
}

void Drawing::removeLastStroke() {
    if (!strokes.empty()) strokes.pop_back();
}

Value Drawing::toValue() const {
    if (!hasKeys) return Value::Dictionary();
    const auto list = [this](auto box) { return fieldOfStrokes(strokes, box); };
    return Value::Dictionary{
        {QStringLiteral("strokesArray"),
         list([](const Stroke& stroke) { return drawingPoints(stroke.points); })},
        {QStringLiteral("brushTypeArray"),
         list([](const Stroke& stroke) { return Value(stroke.brushType); })},
        {QStringLiteral("colourArray"), list([](const Stroke& stroke) { return Value(stroke.colour); })},
        {QStringLiteral("widthArray"), list([](const Stroke& stroke) { return Value(stroke.width); })},
        {QStringLiteral("opacityArray"), list([](const Stroke& stroke) { return Value(stroke.opacity); })},
    };
}

Drawing Drawing::fromValue(const Value& value) {
    Drawing drawing;
    const Value::Dictionary* dictionary = value.dictionary();
    drawing.hasKeys = dictionary && !dictionary->empty();
    if (!drawing.hasKeys) return drawing;
    const Value boxed = value[u"strokesArray"];
    const Value::Array* lines = boxed.array();
    if (!lines) return drawing;
    std::size_t pointsLeft = mostPointsOfDrawing;
    drawing.strokes.resize(std::min(lines->size(), mostStrokesOfDrawing));
    std::vector<Stroke>& strokes = drawing.strokes;
    for (std::size_t i = 0; i < strokes.size(); ++i)
        strokes[i].points = pointsOfStroke((*lines)[i], pointsLeft);
    readField(value, u"brushTypeArray", strokes, [](Stroke& stroke, const Value& entry) {
        const Number* number = entry.number();
        stroke.brushType = number ? qint32(numberToInt64(*number)) : 1;
    });
    readField(value, u"colourArray", strokes,
              [](Stroke& stroke, const Value& entry) { stroke.colour = entry.colour(); });
    readField(value, u"widthArray", strokes,
              [](Stroke& stroke, const Value& entry) { stroke.width = std::clamp(realOfValue(entry, 10.0), -1e4, 1e4); });
    readField(value, u"opacityArray", strokes,
              [](Stroke& stroke, const Value& entry) { stroke.opacity = realOfValue(entry, 1.0); });
    return drawing;
}

} // namespace daylark
