#pragma once

#include <QColor>
#include <QFont>
#include <QIcon>
#include <QString>

class QApplication;

namespace daylark {

/// How everything looks: neutral greys that tint no picture, one accent for the selection. Applied once by
/// main.
namespace theme {
inline const QColor window{0x1b, 0x1b, 0x1b}, panel{0x23, 0x23, 0x23}, raised{0x2d, 0x2d, 0x2d},
    line{0x3a, 0x3a, 0x3a}, text{0xd6, 0xd6, 0xd6}, dimText{0x8e, 0x8e, 0x8e}, disabled{0x5c, 0x5c, 0x5c},
    selection{0x3f, 0x5a, 0x78}, selectedText{0xff, 0xff, 0xff}, focus{0x6f, 0x9b, 0xd1},
    warning{0xd9, 0x8a, 0x3b};

void apply(QApplication& application); ///< palette, style sheet, Fusion style
[[nodiscard]] QFont numberFont();      ///< PT Mono Bold at the normal size (a fixed font where it is missing)
[[nodiscard]] QFont smallFont();       ///< one size below the normal one, for table cells
[[nodiscard]] QColor flagColour(const QString& code);
/// A named icon for buttons and menus, crisp at every device pixel ratio, dimmed when disabled.
[[nodiscard]] QIcon icon(const QString& name);
} // namespace theme

} // namespace daylark
