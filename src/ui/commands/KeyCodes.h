#pragma once

#include <QString>
#include <Qt>

#include <optional>

class QKeyEvent;

namespace daylark {

/// Keys told apart by where they lie, as the key codes of an ANSI keyboard: the same place is the same code
/// whatever the keyboard's language prints there. Where an event does not tell the place (sent by a program,
/// or on a platform without scan codes), what the key prints stands for it.
namespace keyCodes {
/// The code of the key pressed; none for keys that are neither letters nor signs of the viewer's table.
[[nodiscard]] std::optional<int> of(const QKeyEvent& event);
[[nodiscard]] Qt::Key ansiKey(int keyCode); ///< what an ANSI keyboard prints there; `Key_unknown` for others
[[nodiscard]] QString name(int keyCode);    ///< "Space", "A", ";"; as menus show it
} // namespace keyCodes

} // namespace daylark
