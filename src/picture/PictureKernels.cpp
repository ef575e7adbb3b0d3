// Written for the compiler's vectoriser: plain loops and vectors of eight, compiled once for any processor
// and once for those with wider registers. Every body is inlined into a function that names the instructions
// it may use; so no call out of here.
#include "picture/PictureKernels.h"

#define KERNEL_BODY static inline __attribute__((always_inline)) void

namespace daylark {
namespace {

constexpr int lanes = PictureKernels::lanes;
using Floats = float __attribute__((vector_size(32)));

KERNEL_BODY load(Floats& vector, const void* from) {
    __builtin_memcpy(&vector, from, sizeof vector);
}

KERNEL_BODY store(void* to, const Floats& vector) {
    __builtin_memcpy(to, &vector, sizeof vector);
}

template<int Step>
KERNEL_BODY pickSteps(const quint8* in, int step, quint8* __restrict out, int count) {
    for (int x = 0; x < count; ++x)
        out[x] = in[x * (Step ? Step : step)];
}

KERNEL_BODY pickBody(const quint8* in, int step, quint8* out, int count) {
    if (step == 2) return pickSteps<2>(in, step, out, count);
    if (step == 3) return pickSteps<3>(in, step, out, count);
    if (step == 4) return pickSteps<4>(in, step, out, count);
    pickSteps<0>(in, step, out, count);
}

/// A half by its bits: its fraction and exponent moved to a float's places, whose bias the factor makes good, tiny numbers
/// included. Infinity becomes 65536, what is no number 0.
struct Half {
    quint16 bits;
};

static inline __attribute__((always_inline)) float valueOf(Half half) {
    const quint32 size = quint32(half.bits & 0x7fffU);
    const float value = __builtin_bit_cast(float, size << 13) * 0x1p112F;
    const quint32 signedBits = __builtin_bit_cast(quint32, value) | quint32(half.bits & 0x8000U) << 16;
    return size > 0x7c00U ? 0.0F : __builtin_bit_cast(float, signedBits);
}

static inline __attribute__((always_inline)) float valueOf(float value) {
    constexpr float most = 1e30F;
    value = value == value ? value : 0.0F;
    value = value < most ? value : most;
    return value > -most ? value : -most;
}

static inline __attribute__((always_inline)) float valueOf(quint8 value) {
    return float(int(value));
}

static inline __attribute__((always_inline)) float valueOf(quint16 value) {
    return float(int(value));
}

template<class Sample, int Taps, bool Add>
KERNEL_BODY blendTaps(const quint8* const* rows, const float* weights, float* __restrict out, int count) {
    const auto* row0 = reinterpret_cast<const Sample*>(rows[0]);
    const auto* row1 = reinterpret_cast<const Sample*>(rows[Taps > 1 ? 1 : 0]);
    const auto* row2 = reinterpret_cast<const Sample*>(rows[Taps > 2 ? 2 : 0]);
    const auto* row3 = reinterpret_cast<const Sample*>(rows[Taps > 3 ? 3 : 0]);
    const float w0 = weights[0], w1 = weights[Taps > 1 ? 1 : 0];
    const float w2 = weights[Taps > 2 ? 2 : 0], w3 = weights[Taps > 3 ? 3 : 0];
    for (int x = 0; x < count; ++x) {
        float sum = w0 * valueOf(row0[x]);
        if (Taps > 1) sum += w1 * valueOf(row1[x]);
        if (Taps > 2) sum += w2 * valueOf(row2[x]);
        if (Taps > 3) sum += w3 * valueOf(row3[x]);
        out[x] = Add ? out[x] + sum : sum;
    }
}

template<class Sample>
KERNEL_BODY blendBody(const quint8* const* rows, const float* weights, int taps, float* out, int count) {
    if (taps == 1) return blendTaps<Sample, 1, false>(rows, weights, out, count);
    if (taps == 2) return blendTaps<Sample, 2, false>(rows, weights, out, count);
    if (taps == 3) return blendTaps<Sample, 3, false>(rows, weights, out, count);
    blendTaps<Sample, 4, false>(rows, weights, out, count);
    int done = 4;
    for (; done + 4 <= taps; done += 4)
        blendTaps<Sample, 4, true>(rows + done, weights + done, out, count);
    if (taps - done == 1) blendTaps<Sample, 1, true>(rows + done, weights + done, out, count);
    if (taps - done == 2) blendTaps<Sample, 2, true>(rows + done, weights + done, out, count);
    if (taps - done == 3) blendTaps<Sample, 3, true>(rows + done, weights + done, out, count);
}

/// Eight rows of eight become eight columns.
KERNEL_BODY transpose(Floats* v) {
    Floats pairs[8], quads[8];
    for (int i = 0; i < 8; i += 2) {
        pairs[i] = __builtin_shufflevector(v[i], v[i + 1], 0, 8, 1, 9, 4, 12, 5, 13);
        pairs[i + 1] = __builtin_shufflevector(v[i], v[i + 1], 2, 10, 3, 11, 6, 14, 7, 15);
    }
    for (int i = 0; i < 8; i += 4)
        for (int j = 0; j < 2; ++j) {
            quads[i + 2 * j] =
                __builtin_shufflevector(pairs[i + j], pairs[i + j + 2], 0, 1, 8, 9, 4, 5, 12, 13);
            quads[i + 2 * j + 1] =
                __builtin_shufflevector(pairs[i + j], pairs[i + j + 2], 2, 3, 10, 11, 6, 7, 14, 15);
        }
    for (int i = 0; i < 4; ++i) {
        v[i] = __builtin_shufflevector(quads[i], quads[i + 4], 0, 1, 2, 3, 8, 9, 10, 11);
        v[i + 4] = __builtin_shufflevector(quads[i], quads[i + 4], 4, 5, 6, 7, 12, 13, 14, 15);
    }
}

KERNEL_BODY toStripBody(const float* rows, qsizetype stride, float* __restrict strip, int count) {
    for (int x = 0; x < count; x += lanes) {
        Floats block[lanes];
        for (int l = 0; l < lanes; ++l)
            load(block[l], rows + l * stride + x);
        transpose(block);
        for (int l = 0; l < lanes; ++l)
            store(strip + (x + l) * lanes, block[l]);
    }
}

KERNEL_BODY fromStripBody(const quint32* strip, quint32* __restrict rows, qsizetype stride, int count) {
    int x = 0;
    for (; x + lanes <= count; x += lanes) {
        Floats block[lanes];
        for (int l = 0; l < lanes; ++l)
            load(block[l], strip + (x + l) * lanes);
        transpose(block);
        for (int l = 0; l < lanes; ++l)
            store(rows + l * stride + x, block[l]);
    }
    for (; x < count; ++x)
        for (int l = 0; l < lanes; ++l)
            rows[l * stride + x] = strip[x * lanes + l];
}

template<int Taps>
KERNEL_BODY resampleTaps(const float* in, const int* start, const float* weights, int taps,
                         float* __restrict out, int count) {
    const int known = Taps ? Taps : taps;
    for (int x = 0; x < count; ++x, weights += known) {
        const float* from = in + start[x] * lanes;
        Floats sum, samples;
        load(samples, from);
        sum = samples * weights[0];
        for (int t = 1; t < known; ++t) {
            load(samples, from + t * lanes);
            sum += samples * weights[t];
        }
        store(out + x * lanes, sum);
    }
}

KERNEL_BODY resampleBody(const float* in, const int* start, const float* weights, int taps, float* out,
                         int count) {
    if (taps == 2) return resampleTaps<2>(in, start, weights, taps, out, count);
    if (taps == 3) return resampleTaps<3>(in, start, weights, taps, out, count);
    if (taps == 4) return resampleTaps<4>(in, start, weights, taps, out, count);
    resampleTaps<0>(in, start, weights, taps, out, count);
}

KERNEL_BODY doubledBody(const float* even, const float* odd, const float* weights, float* __restrict out,
                        int pairs) {
    const float a0 = weights[0], a1 = weights[1], b0 = weights[2], b1 = weights[3];
    for (int i = 0; i < pairs; ++i) {
        out[2 * i] = a0 * even[i] + a1 * even[i + 1];
        out[2 * i + 1] = b0 * odd[i] + b1 * odd[i + 1];
    }
}

KERNEL_BODY multiplyBody(float* const* channels, const float* m, int count) {
    float* __restrict a = channels[0];
    float* __restrict b = channels[1];
    float* __restrict c = channels[2];
    const float m00 = m[0], m01 = m[1], m02 = m[2], m03 = m[3], m10 = m[4], m11 = m[5], m12 = m[6],
                m13 = m[7];
    const float m20 = m[8], m21 = m[9], m22 = m[10], m23 = m[11];
    for (int x = 0; x < count; ++x) {
        const float p = a[x], q = b[x], r = c[x];
        a[x] = m00 * p + m01 * q + m02 * r + m03;
        b[x] = m10 * p + m11 * q + m12 * r + m13;
        c[x] = m20 * p + m21 * q + m22 * r + m23;
    }
}

/// By way of base-2 logarithm and power, both to about 1e-7 (least-maximum fits: of log2((1 + t) / (1 - t)) /
/// t in t * t for numbers from sqrt 1/2 to sqrt 2, and of 2^f for f from -1/2 to 1/2). Whatever the bits are,
/// nothing overflows on the way.
KERNEL_BODY raiseBody(float* __restrict values, float power, float log2Ceiling, float atZero, int count) {
    constexpr int rootHalf = 0x3f3504f3;        // sqrt 1/2 as bits
    constexpr float roundToWhole = 12582912.0F; // 1.5 * 2^23: the sum's low bits are the rounded number
    for (int x = 0; x < count; ++x) {
        const float given = values[x];
        const int bits = __builtin_bit_cast(int, given);
        const int exponent = int(unsigned(bits) - unsigned(rootHalf)) >> 23;
        const float rest = __builtin_bit_cast(float, int(unsigned(bits) - (unsigned(exponent) << 23)));
        const float t = (rest - 1.0F) / (rest + 1.0F), s = t * t;
        const float series = 2.88539042F + s * (0.961588326F + s * 0.595780723F);
        float y = power * (float(exponent) + t * series);
        y = y > -126.0F ? y : -126.0F;
        y = y < log2Ceiling ? y : log2Ceiling;
        const float shifted = y + roundToWhole;
        const float f = y - (shifted - roundToWhole);
        const float part =
            1.00000007F +
            f * (0.693146967F +
                 f * (0.240221197F + f * (0.0555071327F + f * (0.00967554133F + f * 0.00132764722F))));
        const int raised =
            int(unsigned(__builtin_bit_cast(int, part)) + (unsigned(__builtin_bit_cast(int, shifted)) << 23));
        values[x] = given > 0.0F ? __builtin_bit_cast(float, raised) : atZero;
    }
}

/// Not a number counts as 0.
static inline __attribute__((always_inline)) float heldUpTo(float value, float limit) {
    value = value > 0.0F ? value : 0.0F;
    return value < limit ? value : limit;
}

template<bool Alpha, class Pixel>
KERNEL_BODY packPixels(const float* const* channels, const float* __restrict alpha, float alphaScale,
                       const float* m, Pixel* __restrict out, int count) {
    constexpr bool deep = sizeof(Pixel) == 8;
    constexpr float white = deep ? 65535.0F : 255.0F, half = 0.5F;
    const float* __restrict a = channels[0];
    const float* __restrict b = channels[1];
    const float* __restrict c = channels[2];
    const float m00 = m[0], m01 = m[1], m02 = m[2], m03 = m[3], m10 = m[4], m11 = m[5], m12 = m[6],
                m13 = m[7];
    const float m20 = m[8], m21 = m[9], m22 = m[10], m23 = m[11];
    for (int x = 0; x < count; ++x) {
        const float p = a[x], q = b[x], r = c[x];
        float red = heldUpTo(m00 * p + m01 * q + m02 * r + m03, white);
        float green = heldUpTo(m10 * p + m11 * q + m12 * r + m13, white);
        float blue = heldUpTo(m20 * p + m21 * q + m22 * r + m23, white);
        if (Alpha) {
            const float seen = heldUpTo(alpha[x] * alphaScale, 1.0F);
            red *= seen, green *= seen, blue *= seen;
        }
        const int ri = int(red + half), gi = int(green + half), bi = int(blue + half);
        if (deep)
            out[x] = Pixel(quint64(quint32(ri | gi << 16)) | quint64(quint32(bi) | 0xffff0000U) << 32);
        else
            out[x] = Pixel(0xff000000U | quint32(ri << 16 | gi << 8 | bi));
    }
}

template<class Pixel>
KERNEL_BODY packBody(const float* const* channels, const float* alpha, float alphaScale, const float* matrix,
                     Pixel* out, int count) {
    if (alpha)
        packPixels<true>(channels, alpha, alphaScale, matrix, out, count);
    else
        packPixels<false>(channels, alpha, alphaScale, matrix, out, count);
}

// clang-format off
#define PICTURE_KERNELS(NAME, ATTRIBUTE) \
    struct NAME { \
        ATTRIBUTE static void pick8(const quint8* i, int s, quint8* o, int n) { pickBody(i, s, o, n); } \
        ATTRIBUTE static void blend8(const quint8* const* r, const float* w, int t, float* o, int n) { \
            blendBody<quint8>(r, w, t, o, n); \
        } \
        ATTRIBUTE static void blend16(const quint8* const* r, const float* w, int t, float* o, int n) { \
            blendBody<quint16>(r, w, t, o, n); \
        } \
        ATTRIBUTE static void blendHalf(const quint8* const* r, const float* w, int t, float* o, int n) { \
            blendBody<Half>(r, w, t, o, n); \
        } \
        ATTRIBUTE static void blendReal(const quint8* const* r, const float* w, int t, float* o, int n) { \
            blendBody<float>(r, w, t, o, n); \
        } \
        ATTRIBUTE static void toStrip(const float* r, qsizetype d, float* s, int n) { toStripBody(r, d, s, n); } \
        ATTRIBUTE static void fromStrip(const quint32* s, quint32* r, qsizetype d, int n) { \
            fromStripBody(s, r, d, n); \
        } \
        ATTRIBUTE static void resample(const float* i, const int* s, const float* w, int t, float* o, int n) { \
            resampleBody(i, s, w, t, o, n); \
        } \
        ATTRIBUTE static void doubled(const float* e, const float* d, const float* w, float* o, int n) { \
            doubledBody(e, d, w, o, n); \
        } \
        ATTRIBUTE static void multiply(float* const* c, const float* m, int n) { multiplyBody(c, m, n); } \
        ATTRIBUTE static void raise(float* v, float p, float c, float z, int n) { raiseBody(v, p, c, z, n); } \
        ATTRIBUTE static void pack8(const float* const* c, const float* a, float s, const float* m, quint32* o, int n) { \
            packBody(c, a, s, m, o, n); \
        } \
        ATTRIBUTE static void pack16(const float* const* c, const float* a, float s, const float* m, quint64* o, int n) { \
            packBody(c, a, s, m, o, n); \
        } \
        static constexpr PictureKernels table{pick8, blend8, blend16, blendHalf, blendReal, \
                                              toStrip, fromStrip, resample, doubled, multiply, raise, pack8, pack16}; \
    };
// clang-format on

PICTURE_KERNELS(PlainKernels, )
#if defined(__x86_64__)
PICTURE_KERNELS(WideKernels, __attribute__((target("avx2,fma"))))
PICTURE_KERNELS(WidestKernels, __attribute__((target("avx2,fma,avx512f,avx512bw,avx512dq,avx512vl"))))
#endif

} // namespace

const PictureKernels& plainPictureKernels() {
    return PlainKernels::table;
}

const PictureKernels& pictureKernels() {
#if defined(__x86_64__)
    if (__builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx512dq") &&
        __builtin_cpu_supports("avx512vl") && __builtin_cpu_supports("avx512f") &&
        __builtin_cpu_supports("fma"))
        return WidestKernels::table;
    if (__builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma")) return WideKernels::table;
#endif
    return PlainKernels::table;
}

} // namespace daylark
