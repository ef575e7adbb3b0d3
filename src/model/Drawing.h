#pragma once

#include "archive/Value.h"

#include <QColor>
#include <QPointF>

#include <vector>

namespace daylark {

/// One line of a drawing. Points and width are in the movie's pixels.
struct Stroke {
    std::vector<QPointF> points = {};
    int brushType = 1; ///< 1 brush, 0 eraser
    QColor colour = {}; ///< invalid: black
    double width = 1;
    double opacity = 1; ///< 0 to 1

    [[nodiscard]] bool erases() const { return brushType == 0; }
    bool operator==(const Stroke&) const = default;
};

/// What is drawn on a bookmark, in drawing order. In the archive it is a dictionary of five parallel lists, one entry a
/// stroke; a removed drawing is a dictionary without keys (`hasKeys` false). Lists of unequal length, as files may have
/// them, are read by the strokes' own: what another lacks is the default, what it has beyond is left out. A plain value.
struct Drawing {
    std::vector<Stroke> strokes;
    bool hasKeys = true;

    [[nodiscard]] bool hasStrokes() const { return !strokes.empty(); }
    void append(const Drawing& other);
    void removeLastStroke(); ///< an emptied drawing keeps its five lists
    bool operator==(const Drawing&) const = default;

    [[nodiscard]] Value toValue() const;
    [[nodiscard]] static Drawing fromValue(const Value& value); ///< anything but a dictionary gives an empty drawing without keys
};

} // namespace daylark
