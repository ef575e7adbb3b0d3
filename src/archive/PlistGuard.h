#pragma once

#include "base/Result.h"

#include <QByteArray>

namespace daylark {

/// How a binary property list ends, in bytes.
inline constexpr qsizetype kPlistTrailerSize = 32;

/// Looks at a property list's bytes before the parser gets them. The parser copies shared objects wherever
/// they are referenced and works recursively; this refuses what would make it need more memory than a small
/// multiple of the bytes, or more stack than there is. Linear in the bytes. Any thread.
[[nodiscard]] Result<void> checkPropertyList(const QByteArray& bytes);

} // namespace daylark
