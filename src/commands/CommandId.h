#pragma once

#include <QString>

namespace daylark {

/// A command's ID out of a literal, as the tables write it. Any thread.
[[nodiscard]] inline QString id(const char* literal) {
    return QString::fromLatin1(literal);
}

} // namespace daylark
