#pragma once

#include <QtGlobal>

namespace daylark {

/// The inner loops of `DisplaySteps`, made for the processor at hand. Pure functions on plain arrays, three channels (`rgb`) of
/// `count` floats each, in place; any thread; internal to picture/colour.
struct DisplayKernels {
    /// A function of one number by a table that goes by the number's own bits, straight lines between its places: 2^octaveBits
    /// places an octave from 2^lowest to 2^highest, and two beyond. Nearer to zero it is a straight line, and so it is below.
    struct Curve {
        static constexpr int lowest = -30, highest = 17;
        const float* values = nullptr;
        int octaveBits = 0;
        float atZero = 0, slopeAbove = 0, slopeBelow = 0;
    };

    void (*hold)(float* const* rgb, float least, float most, int count); ///< what is no number becomes `least`
    void (*lookUp)(float* values, const Curve& curve, int count);
    /// The steps of the film's output transform that are no functions of one channel: its glow, its darker red, and the
    /// surround that is less dark than a cinema's (`power`: what a luminance is to be multiplied by).
    void (*glow)(float* const* rgb, int count);
    void (*darkenRed)(float* const* rgb, int count);
    void (*dim)(float* const* rgb, const Curve& power, int count);
};

[[nodiscard]] const DisplayKernels& displayKernels();

} // namespace daylark
