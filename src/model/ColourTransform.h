#pragma once

#include <array>

namespace daylark {

/// What a grade does to display-referred RGB (0 to 1, black to white, values beyond are kept, nothing is clamped): one curve a
/// channel, then one affine map.
///
///     curve(c) = scale * max(0, gain[channel] * c) ^ power
///     out[i]   = map[i][0] * r + map[i][1] * g + map[i][2] * b + map[i][3]
///
/// The renderers know nothing else of a grade. A plain value; any thread.
struct ColourTransform {
    std::array<double, 3> gain{1, 1, 1};
    double power = 1;
    double scale = 1;
    std::array<std::array<double, 4>, 3> map{{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}}};

    /// Changes no picture: the renderers then leave the step out.
    /// The curve is linear and the same for all channels and at 1: only `map` is to be applied.
    [[nodiscard]] bool hasCurve() const { return power != 1 || scale != 1 || gain != std::array<double, 3>{1, 1, 1}; }
    bool operator==(const ColourTransform&) const = default;
};

} // namespace daylark
