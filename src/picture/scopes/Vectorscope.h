#pragma once

#include <QImage>
#include <QPoint>
#include <QPointF>

#include <array>
#include <vector>

namespace daylark {

/// Where the colours of a picture lie on the plane of colour differences (Rec. 709): Cb to the right, Cr upwards, each from
/// -0.5 to 0.5. A plain value.
struct Vectorscope {
    static constexpr int side = 257; ///< cells each way; the middle one is grey
    std::vector<quint32> counts;     ///< row by row from above; empty without a picture

    [[nodiscard]] quint32 at(QPoint cell) const {
        return counts[size_t(cell.y()) * size_t(side) + size_t(cell.x())];
    }
};

/// Cb and Cr of components from 0 to 1.
[[nodiscard]] QPointF colourDifferences(double red, double green, double blue);

/// A corner of the colour cube that bars are made of, as the graticule marks it.
struct VectorscopeTarget {
    const char* name; ///< as it is written beside it
    int red, green, blue; ///< 0 or 1
};
inline constexpr std::array<VectorscopeTarget, 6> vectorscopeTargets{
    {{"R", 1, 0, 0}, {"Yl", 1, 1, 0}, {"G", 0, 1, 0}, {"Cy", 0, 1, 1}, {"B", 0, 0, 1}, {"Mg", 1, 0, 1}}};
/// Where bars of so much (0.75, 1) have it.
[[nodiscard]] QPointF targetAt(const VectorscopeTarget& target, double amount);
/// The direction in which skin of any tone lies, of length 0.5.
[[nodiscard]] QPointF skinLine();

/// Of a picture in 8 bit. Any thread.
[[nodiscard]] Vectorscope vectorscopeOf(const QImage& picture);

} // namespace daylark
