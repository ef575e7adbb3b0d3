#include "media/facts/MovieTexts.h"

#include <cmath>

namespace daylark {

QString fileSizeTextOf(qint64 bytes) {
    return QString::asprintf("%.1f", double(bytes) / 1e6);
}

QString frameRateTextOf(float rate) {
    return QString::asprintf("%.0f", double(rate));
}

qint64 durationFramesOf(float seconds, float rate) {
    const float frames = roundf(seconds * rate);
    return std::isfinite(frames) && std::abs(frames) < 9e18F ? qint64(frames) : 0;
}

} // namespace daylark
