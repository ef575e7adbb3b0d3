#include "picture/scopes/Vectorscope.h"

#include <algorithm>
#include <cmath>

namespace daylark {

namespace {

constexpr double redWeight = 0.2126, blueWeight = 0.0722, greenWeight = 1 - redWeight - blueWeight;
constexpr double skinDegrees = 123; // from Cb towards Cr

} // namespace

QPointF colourDifferences(double red, double green, double blue) {
    const double luma = redWeight * red + greenWeight * green + blueWeight * blue;
    return {(blue - luma) / (2 * (1 - blueWeight)), (red - luma) / (2 * (1 - redWeight))};
}

QPointF targetAt(const VectorscopeTarget& target, double amount) {
    return colourDifferences(target.red * amount, target.green * amount, target.blue * amount);
}

QPointF skinLine() {
    constexpr double radians = skinDegrees * M_PI / 180;
    return {0.5 * std::cos(radians), 0.5 * std::sin(radians)};
}

Vectorscope vectorscopeOf(const QImage& picture) {
    Vectorscope scope;
    if (picture.isNull()) return scope;
    scope.counts.resize(size_t(Vectorscope::side) * size_t(Vectorscope::side));
    // Cells a step of each component, in whole numbers: a part of a thousandth of a cell off.
    constexpr int one = 1 << 16, middle = Vectorscope::side / 2 * one + one / 2;
    const auto stepsOf = [](double red, double green, double blue) {
        const QPointF cells = colourDifferences(red, green, blue) * (Vectorscope::side - 1) / 255 * one;
        return QPoint(int(std::lround(cells.x())), int(std::lround(-cells.y())));
    };
    const QPoint red = stepsOf(1, 0, 0), green = stepsOf(0, 1, 0), blue = stepsOf(0, 0, 1);
    const auto cell = [](int at) { return std::clamp(at / one, 0, Vectorscope::side - 1); };
    for (int y = 0; y < picture.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        for (int x = 0; x < picture.width(); ++x) {
            const int r = qRed(line[x]), g = qGreen(line[x]), b = qBlue(line[x]);
            const int column = cell(middle + r * red.x() + g * green.x() + b * blue.x());
            const int row = cell(middle + r * red.y() + g * green.y() + b * blue.y());
            ++scope.counts[size_t(row) * size_t(Vectorscope::side) + size_t(column)];
        }
    }
    return scope;
}

} // namespace daylark
