#include "picture/PictureSampling.h"

#include <algorithm>
#include <cmath>

namespace daylark {
namespace {

/// Where a wanted pixel lies, in samples of the plane.
double positionOf(const AxisSpec& spec, int pixel) {
    const double place = double(spec.first) + pixel;
    const double x = spec.reversed ? spec.targetSize - 1 - place : place;
    const double luma = (x + 0.5) * spec.lumaSize / spec.targetSize - 0.5;
    return (luma - spec.origin) / (1 << spec.log2Step);
}

double halfWidthOf(const AxisSpec& spec) {
    return std::max(1.0, double(spec.lumaSize) / spec.targetSize / (1 << spec.log2Step));
}

/// The samples strictly within the triangle.
struct Reach {
    int from, to;
};

Reach reachOf(double position, double halfWidth) {
    return {int(std::floor(position - halfWidth)) + 1, int(std::ceil(position + halfWidth)) - 1};
}

} // namespace

SampledAxis sampledAxis(const AxisSpec& spec) {
    SampledAxis axis;
    axis.count = spec.count;
    axis.start.resize(size_t(spec.count));
    const double halfWidth = halfWidthOf(spec);
    const int last = spec.planeSize - 1;
    int lowest = last, highest = 0;
    for (int pixel = 0; pixel < spec.count; ++pixel) {
        const Reach reach = reachOf(positionOf(spec, pixel), halfWidth);
        const int from = std::clamp(reach.from, 0, last), to = std::clamp(reach.to, 0, last);
        axis.start[size_t(pixel)] = from;
        axis.taps = std::max(axis.taps, to - from + 1);
        lowest = std::min(lowest, from);
        highest = std::max(highest, to);
    }
    axis.first = std::min(lowest, std::max(0, highest + 1 - axis.taps));
    axis.span = highest + 1 - axis.first;
    axis.weights.resize(size_t(spec.count) * size_t(axis.taps));
    for (int pixel = 0; pixel < spec.count; ++pixel) {
        int& start = axis.start[size_t(pixel)];
        start = std::min(start - axis.first, axis.span - axis.taps);
        const double position = positionOf(spec, pixel);
        const Reach reach = reachOf(position, halfWidth);
        double sum = 0;
        for (int i = reach.from; i <= reach.to; ++i)
            sum += 1 - std::abs(i - position) / halfWidth;
        float* weights = axis.weights.data() + pixel * axis.taps;
        for (int i = reach.from; i <= reach.to; ++i)
            weights[std::clamp(i, 0, last) - axis.first - start] +=
                float((1 - std::abs(i - position) / halfWidth) / sum);
    }
    return axis;
}

bool SampledAxis::isCopy() const {
    if (taps != 1 || span != count) return false;
    for (int pixel = 0; pixel < count; ++pixel)
        if (start[size_t(pixel)] != pixel) return false;
    return true;
}

bool SampledAxis::isDoubling(int& begin, int& end) const {
    constexpr int margin = 4; // the edges are none of it
    if (taps != 2 || count < 4 * margin) return false;
    begin = margin;
    end = (count - margin) & ~1;
    for (int pixel = begin + 2; pixel < end; ++pixel)
        if (start[size_t(pixel)] != start[size_t(pixel) - 2] + 1 ||
            !std::equal(weightsOf(pixel), weightsOf(pixel + 1), weightsOf(pixel - 2)))
            return false;
    return true;
}

} // namespace daylark
