#include "annotate/GradeArithmetic.h"

#include <algorithm>
#include <cmath>

namespace daylark {
namespace {

constexpr Rgb lumaWeights{0.2125, 0.7154, 0.0721};

double heldTo(double value, double neutral, double limit) {
    return std::isfinite(value) ? std::clamp(value, -limit, limit) : neutral;
}

double powerOf(double gamma) {
    if (gamma == 0) return gradePowerLimit;
    return std::clamp(1 / gamma, -gradePowerLimit, gradePowerLimit);
}

double raised(double value, double power) {
    return std::min(std::pow(std::max(0.0, value), power), gradeCurveCeiling);
}

} // namespace

Grade heldGrade(const Grade& grade) {
    Grade held;
    held.exposure = heldTo(grade.exposure, 0, 20);
    held.brightness = heldTo(grade.brightness, 0, 1000);
    held.contrast = heldTo(grade.contrast, 1, 1000);
    held.saturation = heldTo(grade.saturation, 1, 1000);
    held.redChannel = heldTo(grade.redChannel, 1, 1000);
    held.greenChannel = heldTo(grade.greenChannel, 1, 1000);
    held.blueChannel = heldTo(grade.blueChannel, 1, 1000);
    held.gamma = std::isfinite(grade.gamma) ? grade.gamma : 1;
    return held;
}

Rgb graded(const Rgb& colour, const Grade& grade) {
    const Grade g = heldGrade(grade);
    Rgb c{colour[0] * g.redChannel, colour[1] * g.greenChannel, colour[2] * g.blueChannel};
    if (g.gamma != 1)
        for (double& value : c)
            value = raised(value, powerOf(g.gamma));
    for (double& value : c)
        value *= std::exp2(g.exposure);
    const double luma = lumaWeights[0] * c[0] + lumaWeights[1] * c[1] + lumaWeights[2] * c[2];
    for (double& value : c)
        value = luma + (value - luma) * g.saturation;
    for (double& value : c)
        value = (value - 0.5) * g.contrast + 0.5;
    for (double& value : c)
        value += g.brightness;
    return c;
}

ColourTransform colourTransformOf(const Grade& grade) {
    const Grade g = heldGrade(grade);
    if (g.isNeutral()) return {};
    const Rgb gains{g.redChannel, g.greenChannel, g.blueChannel};
    const double exposure = std::exp2(g.exposure);
    ColourTransform transform;
    for (size_t i = 0; i < 3; ++i) {
        for (size_t j = 0; j < 3; ++j)
            transform.map[i][j] =
                g.contrast * ((1 - g.saturation) * lumaWeights[j] + (i == j ? g.saturation : 0.0));
        transform.map[i][3] = 0.5 - 0.5 * g.contrast + g.brightness;
    }
    if (g.gamma != 1) {
        transform.gain = gains;
        transform.power = powerOf(g.gamma);
        transform.scale = exposure;
        return transform;
    }
    // Without a power gains and exposure are part of the affine map: no curve, nothing held at 0.
    for (auto& row : transform.map)
        for (size_t j = 0; j < 3; ++j)
            row[j] *= gains[j] * exposure;
    return transform;
}

Rgb transformed(const Rgb& colour, const ColourTransform& transform) {
    Rgb c = colour;
    if (transform.hasCurve())
        for (size_t i = 0; i < 3; ++i)
            c[i] = transform.scale * raised(transform.gain[i] * c[i], transform.power);
    Rgb out;
    for (size_t i = 0; i < 3; ++i) {
        const auto& row = transform.map[i];
        out[i] = row[0] * c[0] + row[1] * c[1] + row[2] * c[2] + row[3];
    }
    return out;
}

} // namespace daylark
