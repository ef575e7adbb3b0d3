#pragma once

#include <QString>

namespace daylark {

/// Who sent an action: the menu item, button or control, told apart by exact title or by tag.
struct Sender {
    QString title;
    int tag = 0;
};

} // namespace daylark
