#pragma once

#include "archive/Decoder.h"

#include <algorithm>
#include <cmath>

/// Numbers as records take them out of an archive: a stranger's file may hold any, and the arithmetic below relies on what
/// is left here. Sensible numbers come through unchanged. Any thread.
namespace daylark::decoded {

constexpr qint64 mostFrames = qint64(1) << 53; ///< whole in double precision, with room to add in 64 bits
constexpr float mostRate = 100'000;            ///< frames a second

/// Frame numbers and counts, of either sign: beyond what adds up they stop at the end.
[[nodiscard]] inline qint64 frames(const Decoder& coder, const char* key) {
    return std::clamp(coder.decodeInt64(key), -mostFrames, mostFrames);
}

/// Frames a second; what is none (negative, infinite, not a number, absurd) is 0, as where nothing is known.
[[nodiscard]] inline float rate(const Decoder& coder, const char* key) {
    const float rate = coder.decodeFloat(key);
    return rate >= 0 && rate <= mostRate ? rate : 0;
}

/// A finite number, else 0.
[[nodiscard]] inline float finite(const Decoder& coder, const char* key) {
    const float number = coder.decodeFloat(key);
    return std::isfinite(number) ? number : 0;
}
[[nodiscard]] inline double finite(const Decoder& coder, const char* key, double otherwise) {
    const double number = coder.decodeDouble(key);
    return std::isfinite(number) ? number : otherwise;
}

} // namespace daylark::decoded
