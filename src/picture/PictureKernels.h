#pragma once

#include <QtGlobal>

namespace daylark {

/// The inner loops of the software renderer, made for the processor at hand. Pure functions on plain arrays;
/// any thread; internal to media/. Pixels are worked on in rows, or in strips of eight rows side by side
/// ([pixel][row]), where filtering along the rows goes eight at a time. Arrays of a strip have room for whole
/// blocks of eight.
struct PictureKernels {
    static constexpr int lanes = 8;

    /// out[x] = in[x * step]: one component of packed ones.
    void (*pick8)(const quint8* in, int step, quint8* out, int count);
    /// out[x] = sum of weights[t] * rows[t][x]; rows of 8-bit and of 16-bit samples, of halves and of floats. What is no number
    /// counts as 0, what is beyond `PicturePlanes::largest` as that.
    void (*blend8)(const quint8* const* rows, const float* weights, int taps, float* out, int count);
    void (*blend16)(const quint8* const* rows, const float* weights, int taps, float* out, int count);
    void (*blendHalf)(const quint8* const* rows, const float* weights, int taps, float* out, int count);
    void (*blendReal)(const quint8* const* rows, const float* weights, int taps, float* out, int count);
    /// Eight rows, `stride` apart, side by side.
    void (*toStrip)(const float* rows, qsizetype stride, float* strip, int count);
    /// Eight rows of finished pixels from a strip of them.
    void (*fromStrip)(const quint32* strip, quint32* rows, qsizetype stride, int count);
    /// Each pixel of a strip from `taps` of the strip `in` on from start[pixel].
    void (*resample)(const float* in, const int* start, const float* weights, int taps, float* out,
                     int count);
    /// Pairs of pixels: out[2i] = weights[0] * even[i] + weights[1] * even[i + 1], out[2i + 1] likewise from
    /// `odd` and weights[2], [3].
    void (*doubled)(const float* even, const float* odd, const float* weights, float* out, int pairs);
    /// Three channels by a 3 x 4 matrix, in place.
    void (*multiply)(float* const* channels, const float* matrix, int count);
    /// value = min(2 ^ log2Ceiling, max(0, value) ^ power), in place; 0 gives `atZero`.
    void (*raise)(float* values, float power, float log2Ceiling, float atZero, int count);
    /// By a 3 x 4 matrix, which gives 0 to 255, rounded to 0xffRRGGBB. `alpha`, where there is one, times
    /// `alphaScale` is what is to be seen of it.
    void (*pack8)(const float* const* channels, const float* alpha, float alphaScale, const float* matrix,
                  quint32* out, int count);
    /// The same with 0 to 65535, red in the low bits.
    void (*pack16)(const float* const* channels, const float* alpha, float alphaScale, const float* matrix,
                   quint64* out, int count);
};

[[nodiscard]] const PictureKernels& pictureKernels();
/// For any processor of the kind; the tests compare.
[[nodiscard]] const PictureKernels& plainPictureKernels();

} // namespace daylark
