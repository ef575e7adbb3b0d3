#pragma once

#include "archive/Value.h"

#include <QColor>
#include <QPointF>

#include <vector>

namespace daylark {

/// The strokes drawn on a bookmark: five parallel lists, one entry a stroke, in drawing order. Points are in the movie's
/// pixels. A removed drawing is a dictionary without keys (`hasKeys` false). Drawings read from files may have lists of
/// unequal length: readers go by `strokesArray` and take a default where another list is shorter. A plain value.
struct Drawing {
    std::vector<std::vector<QPointF>> strokesArray;
    std::vector<int> brushTypeArray; ///< 1 brush, 0 eraser
    std::vector<QColor> colourArray;
    std::vector<double> widthArray;  ///< movie pixels
    std::vector<double> opacityArray; ///< 0 to 1
    bool hasKeys = true;

    [[nodiscard]] bool hasStrokes() const { return !strokesArray.empty(); }
    void append(const Drawing& other);   ///< each list followed by the other's
    void removeLastStroke();             ///< the last entry of each list
    bool operator==(const Drawing&) const = default;

    [[nodiscard]] Value toValue() const;
    [[nodiscard]] static Drawing fromValue(const Value& value); ///< anything but a dictionary gives an empty drawing without keys
};

} // namespace daylark
