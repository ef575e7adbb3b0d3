#pragma once

#include <QtGlobal>

namespace daylark {

/// How samples are kept.
enum class SoundDepth { bits16, bits24, bits32, float32, float64 };

[[nodiscard]] constexpr int bytesOf(SoundDepth depth) {
    constexpr int bytes[] = {2, 3, 4, 4, 8};
    return bytes[int(depth)];
}
[[nodiscard]] constexpr bool isFloat(SoundDepth depth) {
    return depth == SoundDepth::float32 || depth == SoundDepth::float64;
}

/// What a sound is made of. A plain value.
struct SoundForm {
    int rate = 48000; ///< frames a second
    int channels = 2;
    quint32 speakers = 0; ///< a bit for each channel's, in their order, as WAVE files have them; 0: nobody says
    SoundDepth depth = SoundDepth::bits16;
};

} // namespace daylark
