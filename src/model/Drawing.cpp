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

template<class List, class Box>
Value boxedList(const List& list, Box box) {
    Value::Array boxed;
    boxed.reserve(list.size());
    for (const auto& element : list)
        boxed.push_back(box(element));
    return boxed;
}

/// Takes an element of any class, so that the five lists stay parallel: what is none of its kind becomes the
/// default.
template<class List, class Unbox>
void unboxList(const Value& drawing, QStringView key, List& list, Unbox unbox) {
    const Value boxed = drawing[key];
    const Value::Array* array = boxed.array();
    if (!array) return;
    const std::size_t count = std::min(array->size(), mostStrokesOfDrawing);
    list.reserve(count);
    for (std::size_t i = 0; i < count; ++i)
        list.push_back(unbox((*array)[i]));
}

double realOfValue(const Value& value, double otherwise) {
    const Number* number = value.number();
    const double real = number ? numberToDouble(*number) : otherwise;
    return std::isfinite(real) ? real : otherwise;
}

template<class T>
void appendList(std::vector<T>& list, const std::vector<T>& other) {
    const std::size_t count = other.size(); // by index: a drawing may be appended to itself
    list.reserve(list.size() + count);
    for (std::size_t i = 0; i < count; ++i)
        list.push_back(other[i]);
}

template<class T>
void dropLast(std::vector<T>& list) {
    if (!list.empty()) list.pop_back();
}

} // namespace

void Drawing::append(const Drawing& other) {
    appendList(strokesArray, other.strokesArray);
    appendList(brushTypeArray, other.brushTypeArray);
    appendList(colourArray, other.colourArray);
    appendList(widthArray, other.widthArray);
    appendList(opacityArray, other.opacityArray);
    hasKeys = true;
}

void Drawing::removeLastStroke() {
    dropLast(strokesArray);
    dropLast(brushTypeArray);
    dropLast(colourArray);
    dropLast(widthArray);
    dropLast(opacityArray);
}

Value Drawing::toValue() const {
    if (!hasKeys) return Value::Dictionary();
    const auto real = [](double value) { return Value(value); };
    return Value::Dictionary{
        {QStringLiteral("strokesArray"), boxedList(strokesArray, drawingPoints)},
        {QStringLiteral("brushTypeArray"), boxedList(brushTypeArray, [](int type) { return Value(type); })},
        {QStringLiteral("colourArray"),
         boxedList(colourArray, [](const QColor& colour) { return Value(colour); })},
        {QStringLiteral("widthArray"), boxedList(widthArray, real)},
        {QStringLiteral("opacityArray"), boxedList(opacityArray, real)},
    };
}

Drawing Drawing::fromValue(const Value& value) {
    Drawing drawing;
    const Value::Dictionary* dictionary = value.dictionary();
    drawing.hasKeys = dictionary && !dictionary->empty();
    if (!drawing.hasKeys) return drawing;
    std::size_t pointsLeft = mostPointsOfDrawing;
    unboxList(value, u"strokesArray", drawing.strokesArray, [&](const Value& boxed) {
        std::vector<QPointF> stroke;
        const Value::Array* points = boxed.array();
        if (!points) return stroke;
        stroke.reserve(std::min(points->size(), pointsLeft));
        for (const Value& element : *points) {
            const QPointF* point = element.point();
            if (!point || !std::isfinite(point->x()) || !std::isfinite(point->y())) continue;
            if (pointsLeft == 0) break;
            --pointsLeft;
            stroke.push_back(*point);
        }
        return stroke;
    });
    unboxList(value, u"brushTypeArray", drawing.brushTypeArray, [](const Value& boxed) {
        const Number* number = boxed.number();
        return number ? int(numberToInt64(*number)) : 1;
    });
    unboxList(value, u"colourArray", drawing.colourArray, [](const Value& boxed) { return boxed.colour(); });
    unboxList(value, u"widthArray", drawing.widthArray,
              [](const Value& boxed) { return realOfValue(boxed, 10.0); });
    unboxList(value, u"opacityArray", drawing.opacityArray,
              [](const Value& boxed) { return realOfValue(boxed, 1.0); });
    return drawing;
}

} // namespace daylark
