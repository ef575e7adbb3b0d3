#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>

namespace daylark {

/// The program's own icons by the names that records and controls use ("flag_Green.png", "NSStatusAvailable"): drawn from
/// SVGs built into the program (resources/icons), any size, crisp. Any thread.

[[nodiscard]] bool hasNamedImage(const QString& name);

/// `pixels` is the side of the square that the icon fits into. Null for an unknown name.
[[nodiscard]] QImage namedImage(const QString& name, int pixels);

/// The icon as TIFF (LZW), 32 x 32 pixels, for archives; empty for an unknown name.
[[nodiscard]] QByteArray namedImageTiff(const QString& name);

} // namespace daylark
