#pragma once

#include <QImage>

namespace daylark {

/// Scopes of a picture in 8 bit as images of light on dark, to be laid under a graticule and stretched: levels from 100 % at
/// the top line to 0 % at the foot (of the histogram from 0 % at the left), the vectorscope square with grey in the middle.
/// Null without a picture. Any thread.
[[nodiscard]] QImage waveformTrace(const QImage& picture);
[[nodiscard]] QImage paradeTrace(const QImage& picture); ///< red, green and blue beside each other
[[nodiscard]] QImage vectorscopeTrace(const QImage& picture);
[[nodiscard]] QImage histogramTrace(const QImage& picture);

/// What lies under every trace.
inline constexpr QRgb scopeDark = 0xff101010;
/// Columns between the parade's three, of `paradeColumns` each where the picture has as many.
inline constexpr int paradeGap = 6, paradeColumns = 160;

} // namespace daylark
