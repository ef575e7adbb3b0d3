#pragma once

namespace daylark {

/// The eight numbers of a movie's colour correction. Neutral at 0, 1, 1, 1, 0, 1, 1, 1. A plain value.
struct Grade {
    double exposure = 0.0, contrast = 1.0, saturation = 1.0, gamma = 1.0, brightness = 0.0;
    double redChannel = 1.0, greenChannel = 1.0, blueChannel = 1.0;
    [[nodiscard]] bool isNeutral() const { return *this == Grade{}; }
    bool operator==(const Grade&) const = default;
};

} // namespace daylark
