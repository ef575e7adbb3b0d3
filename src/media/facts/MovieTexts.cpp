#include "media/facts/MovieTexts.h"

#include <array>
#include <charconv>
#include <cmath>

namespace daylark {

namespace {

/// As C's "%.Nf" rounds (what lies half way goes to the even digit), in every language: 12.5 is "12".
QString fixedText(double value, int decimals) {
    std::array<char, 512> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed, decimals);
    return QString::fromLatin1(text.data(), end.ptr - text.data());
}

} // namespace

QString fileSizeTextOf(qint64 bytes) {
    return fixedText(double(bytes) / 1e6, 1);
}

QString frameRateTextOf(float rate) {
    return fixedText(double(rate), 0);
}

qint64 durationFramesOf(float seconds, float rate) {
    const float frames = roundf(seconds * rate);
    return std::isfinite(frames) && std::abs(frames) < 9e18F ? qint64(frames) : 0;
}

} // namespace daylark
