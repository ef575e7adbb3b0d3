#pragma once

#include "picture/colour/ColourLibrary.h"
#include "picture/colour/DisplayKernels.h"

#include <QtGlobal>

#include <array>
#include <memory>
#include <vector>

namespace daylark {

/// A display transform whose steps we carry out ourselves, eight pixels at a time, where the library takes them one by one: its
/// matrices, the few steps of the film's output transform that mix the channels, and between them whatever is a function of
/// each channel alone, as tables that the library fills. Held against the library on some thousand colours when it is made:
/// where a step is unknown, or what comes out is more than a quarter of a step of 255 away, there is none. Never changes; any
/// thread. Internal to picture/colour.
class DisplaySteps {
public:
    /// Null: this transform can't be carried out so. `isLight`: what comes in reaches beyond white.
    [[nodiscard]] static std::unique_ptr<const DisplaySteps> of(const ocio::ConstProcessorRcPtr& whole, bool isLight);
    void apply(float* const* rgb, qsizetype count) const;

private:
    /// A function of one number, the same or another one for each channel.
    struct Curves {
        std::array<std::vector<float>, 3> values; ///< the last two empty where they are as the first
        std::array<DisplayKernels::Curve, 3> curves;
    };
    enum class Kind { matrix, hold, curves, glow, darkenRed, dim };
    struct Step {
        Kind kind = Kind::matrix;
        std::array<float, 12> matrix{};
        float least = 0, most = 0;
        std::unique_ptr<Curves> curves;
    };
    using Alone = std::vector<ocio::ConstTransformRcPtr>; ///< steps that leave each channel alone with itself

    [[nodiscard]] bool take(const ocio::ConstTransformRcPtr& transform, Alone& waiting, bool isLight);
    [[nodiscard]] bool takeFunction(const ocio::ConstFixedFunctionTransformRcPtr& function);
    void takeMatrix(const ocio::ConstMatrixTransformRcPtr& matrix);
    [[nodiscard]] bool takeCurves(Alone& waiting, bool isLight);
    [[nodiscard]] bool isNear(const ocio::ConstCPUProcessorRcPtr& exact, bool isLight) const;

    std::vector<Step> steps_;
};

} // namespace daylark
