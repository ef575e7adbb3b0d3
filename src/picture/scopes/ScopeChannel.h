#pragma once

#include <QRgb>

namespace daylark {

/// What of a pixel a scope counts: one component, or luma by Rec. 709. Levels are 0 to 255, which is 0 to 100 %.
enum class ScopeChannel { luma, red, green, blue };

inline constexpr int scopeLevels = 256;

[[nodiscard]] constexpr int levelOf(QRgb pixel, ScopeChannel channel) {
    switch (channel) {
    case ScopeChannel::red:
        return qRed(pixel);
    case ScopeChannel::green:
        return qGreen(pixel);
    case ScopeChannel::blue:
        return qBlue(pixel);
    case ScopeChannel::luma:
        break;
    }
    return (54 * qRed(pixel) + 183 * qGreen(pixel) + 19 * qBlue(pixel) + 128) / 256; // the weights make 256
}

} // namespace daylark
