#pragma once

#include "archive/AttributedString.h"

#include <QByteArray>
#include <QColor>
#include <QPointF>
#include <QSize>
#include <QString>

#include <optional>
#include <vector>

namespace daylark {

/// "$version" of every keyed archive that there is.
inline constexpr qint64 kKeyedArchiveVersion = 100000;

/// The small texts inside archived value objects (colours, points, sizes, fonts, run lengths), written and
/// read in one place. Reading tolerates every input: what makes no sense gives an invalid or empty value. Any
/// thread.

/// "r g b" or "r g b a", components 0 to 1, with a closing NUL.
[[nodiscard]] QByteArray colourText(const QColor& colour);
/// The components of a colour text: `space` is 1 or 2 (red, green, blue), 3 or 4 (white) or 5 (cyan, magenta,
/// yellow, black); each may be followed by an alpha. Invalid when the components are missing.
[[nodiscard]] QColor colourFromText(const QByteArray& text, int space);

[[nodiscard]] QString pairText(double first, double second); ///< "{x, y}"
[[nodiscard]] std::optional<QPointF> pairFromText(QStringView text);
[[nodiscard]] QSize sizeFromText(QStringView text); ///< invalid when it isn't a size

/// A font's name tells family, bold and italic ("Courier-BoldOblique"). Helvetica is what text without a font
/// is shown in, so it stands for "the default family".
[[nodiscard]] QString fontName(const TextAttributes& attributes);
void applyFontName(const QString& name, TextAttributes& attributes);

/// Run lengths and attribute indices, as pairs of little-endian integers of 7 bits a byte.
struct RunIndex {
    quint64 length = 0;
    quint64 attributes = 0;
};
[[nodiscard]] QByteArray runIndexData(const std::vector<RunIndex>& runs);
/// Stops at the first damaged pair and when `limit` characters are covered.
[[nodiscard]] std::vector<RunIndex> runIndicesFromData(const QByteArray& data, quint64 limit);

} // namespace daylark
