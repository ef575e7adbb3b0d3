// Written for the compiler's vectoriser, as the renderer's kernels: plain loops, compiled once for any processor and once for
// those with wider registers. The film's output transform is the Academy's, whose numbers are published.
#include "picture/colour/DisplayKernels.h"

#define DISPLAY_KERNEL_BODY static inline __attribute__((always_inline)) void

namespace daylark {
namespace {

using Curve = DisplayKernels::Curve;

constexpr qint32 firstBits = (127 + Curve::lowest) << 23;
constexpr float firstValue = 1.0F / float(1 << -Curve::lowest), lastValue = float(1 << Curve::highest);

static inline __attribute__((always_inline)) float larger(float a, float b) {
    return a > b ? a : b;
}

static inline __attribute__((always_inline)) float smaller(float a, float b) {
    return a < b ? a : b;
}

static inline __attribute__((always_inline)) float valueAt(float value, const float* table, const Curve& curve) {
    const int shift = 23 - curve.octaveBits;
    const float scale = __builtin_bit_cast(float, (127 - shift) << 23); // 2^-shift
    const float inside = smaller(larger(value, firstValue), lastValue);
    const qint32 bits = __builtin_bit_cast(qint32, inside) - firstBits;
    const qint32 place = bits >> shift;
    const float part = float(bits & ((1 << shift) - 1)) * scale;
    const float low = table[place], high = table[place + 1];
    const float near = curve.atZero + value * (value > 0 ? curve.slopeAbove : curve.slopeBelow);
    return value >= firstValue ? low + part * (high - low) : near;
}

DISPLAY_KERNEL_BODY lookUpBody(float* __restrict values, const Curve& given, int count) {
    const Curve curve = given;
    const float* __restrict table = curve.values;
    for (int x = 0; x < count; ++x)
        values[x] = valueAt(values[x], table, curve);
}

DISPLAY_KERNEL_BODY holdBody(float* const* rgb, float least, float most, int count) {
    for (int channel = 0; channel < 3; ++channel) {
        float* __restrict values = rgb[channel];
        for (int x = 0; x < count; ++x)
            values[x] = smaller(larger(values[x], least), most);
    }
}

/// How far the channels lie apart, of the largest.
static inline __attribute__((always_inline)) float saturation(float red, float green, float blue) {
    const float most = larger(red, larger(green, blue)), least = smaller(red, smaller(green, blue));
    return (larger(1e-10F, most) - larger(1e-10F, least)) / larger(1e-2F, most);
}

DISPLAY_KERNEL_BODY glowBody(float* const* rgb, int count) {
    constexpr float gain = 0.05F, middle = 0.08F;
    float *__restrict reds = rgb[0], *__restrict greens = rgb[1], *__restrict blues = rgb[2];
    for (int x = 0; x < count; ++x) {
        const float red = reds[x], green = greens[x], blue = blues[x];
        const float squares = blue * (blue - green) + green * (green - red) + red * (red - blue);
        const float luminance = (blue + green + red + 1.75F * __builtin_sqrtf(larger(squares, 0.0F))) * (1.0F / 3.0F);
        const float from = (saturation(red, green, blue) - 0.4F) * 5.0F;
        const float away = larger(0.0F, 1.0F - 0.5F * __builtin_fabsf(from)), rise = 1.0F - away * away;
        const float share = gain * 0.5F * (1.0F + (from > 0 ? rise : -rise));
        const float falling = share * (middle / larger(luminance, 1e-10F) - 0.5F);
        const float added = luminance > 2 * middle ? 0.0F : luminance > 2 * middle / 3 ? falling : share;
        reds[x] = red + red * added;
        greens[x] = green + green * added;
        blues[x] = blue + blue * added;
    }
}

/// The angle of (across, along), `along` above 0; to 2e-8.
static inline __attribute__((always_inline)) float angle(float across, float along) {
    const float size = __builtin_fabsf(across);
    const float part = smaller(size, along) / larger(larger(size, along), 1e-30F), square = part * part;
    float sum = 0.0028662257F;
    sum = sum * square - 0.0161657367F;
    sum = sum * square + 0.0429096138F;
    sum = sum * square - 0.0752896400F;
    sum = sum * square + 0.1065626393F;
    sum = sum * square - 0.1420889944F;
    sum = sum * square + 0.1999355085F;
    sum = sum * square - 0.3333314528F;
    const float flat = part + part * square * sum;
    return size > along ? 1.57079632679F - flat : flat;
}

DISPLAY_KERNEL_BODY darkenRedBody(float* const* rgb, int count) {
    constexpr float pivot = 0.03F, share = 0.18F, perKnot = 1.6976527F;
    float* __restrict reds = rgb[0];
    const float *__restrict greens = rgb[1], *__restrict blues = rgb[2];
    for (int x = 0; x < count; ++x) {
        const float red = reds[x], green = greens[x], blue = blues[x];
        const float along = 2 * red - (green + blue), across = 1.7320508F * (green - blue);
        // A bell over two knots on either side of pure red.
        const float away = smaller(2.0F, angle(across, larger(along, 1e-30F)) * perKnot), rest = 2.0F - away;
        const float bell = away < 1 ? (0.75F * away - 1.5F) * away * away + 1.0F : 0.25F * rest * rest * rest;
        const float weight = along > 0 ? bell * saturation(red, green, blue) : 0.0F;
        reds[x] = red + weight * (pivot - red) * share;
    }
}

DISPLAY_KERNEL_BODY dimBody(float* const* rgb, const Curve& given, int count) {
    const Curve power = given;
    const float* __restrict table = power.values;
    float *__restrict reds = rgb[0], *__restrict greens = rgb[1], *__restrict blues = rgb[2];
    for (int x = 0; x < count; ++x) {
        const float luminance = 0.27222871678F * reds[x] + 0.67408176581F * greens[x] + 0.05368951741F * blues[x];
        const float factor = valueAt(larger(1e-10F, luminance), table, power);
        reds[x] *= factor;
        greens[x] *= factor;
        blues[x] *= factor;
    }
}

// clang-format off
#define DISPLAY_KERNELS(NAME, ATTRIBUTE) \
    struct NAME { \
        ATTRIBUTE static void hold(float* const* c, float l, float m, int n) { holdBody(c, l, m, n); } \
        ATTRIBUTE static void lookUp(float* v, const Curve& t, int n) { lookUpBody(v, t, n); } \
        ATTRIBUTE static void glow(float* const* c, int n) { glowBody(c, n); } \
        ATTRIBUTE static void darkenRed(float* const* c, int n) { darkenRedBody(c, n); } \
        ATTRIBUTE static void dim(float* const* c, const Curve& t, int n) { dimBody(c, t, n); } \
        static constexpr DisplayKernels table{hold, lookUp, glow, darkenRed, dim}; \
    };
// clang-format on

DISPLAY_KERNELS(PlainDisplayKernels, )
#if defined(__x86_64__)
DISPLAY_KERNELS(WideDisplayKernels, __attribute__((target("avx2,fma"))))
#endif

} // namespace

const DisplayKernels& displayKernels() {
#if defined(__x86_64__)
    if (__builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma")) return WideDisplayKernels::table;
#endif
    return PlainDisplayKernels::table;
}

} // namespace daylark
