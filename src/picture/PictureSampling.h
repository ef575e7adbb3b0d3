#pragma once

#include <vector>

namespace daylark {

/// One axis of a plane laid on a row of wanted pixels: which samples each pixel is made of, and by how much.
/// The triangle is as wide as the wider of the two grids' steps, its weights add up to 1; beyond the plane's
/// edge its last sample counts on. A plain value; internal to media/.
struct SampledAxis {
    int first = 0, span = 0;    ///< the samples that are needed: `span` of them from `first` on
    int count = 0;              ///< wanted pixels
    int taps = 0;               ///< samples a pixel
    std::vector<int> start;     ///< a pixel's first sample, counted from `first`
    std::vector<float> weights; ///< `taps` a pixel

    [[nodiscard]] const float* weightsOf(int pixel) const { return weights.data() + pixel * taps; }
    /// Pixel n is sample n.
    [[nodiscard]] bool isCopy() const;
    /// Two pixels a sample: in pixels `begin` to `end` (both even), weights and samples repeat from pair to
    /// pair.
    [[nodiscard]] bool isDoubling(int& begin, int& end) const;
};

struct AxisSpec {
    int lumaSize = 0;         ///< samples of the picture along the axis
    int planeSize = 0;        ///< samples of this plane
    int log2Step = 0;         ///< luma samples from one of its samples to the next
    double origin = 0;        ///< where its first one sits, in luma samples
    int targetSize = 0;       ///< pixels that the whole picture covers
    int first = 0, count = 0; ///< the wanted ones
    bool reversed = false;    ///< counted from the other end
};

[[nodiscard]] SampledAxis sampledAxis(const AxisSpec& spec);

} // namespace daylark
