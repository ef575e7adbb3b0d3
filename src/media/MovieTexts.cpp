#include "media/MovieTexts.h"

#include <cmath>

namespace daylark {

QString fileSizeTextOf(qint64 bytes) {
    return QString::asprintf("%.1f", double(bytes) / 1e6);
}

QString frameRateTextOf(float rate) {
    return QString::asprintf("%.0f", double(rate));
}

QString durationTextOf(float seconds) {
    const int s = std::isfinite(seconds) && std::abs(seconds) < 2e9F ? int(seconds) : 0;
    if (s >= -3599 && s <= 3599) return QString::asprintf("%02i:%02i", (s / 60) % 60, s % 60);
    return QString::asprintf("%i:%02i:%02i", s / 3600, (s / 60) % 60, s % 60);
}

qint64 durationFramesOf(float seconds, float rate) {
    const float frames = roundf(seconds * rate);
    return std::isfinite(frames) && std::abs(frames) < 9e18F ? qint64(frames) : 0;
}

} // namespace daylark
