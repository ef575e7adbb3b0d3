#pragma once

#include "model/Drawing.h"

namespace daylark {

/// Parts of a drawing, for what became of it. Plain functions; any thread.

/// How many strokes at the start are the same in both; none where one of them was removed.
[[nodiscard]] size_t commonStrokes(const Drawing& a, const Drawing& b);
[[nodiscard]] Drawing strokesFrom(const Drawing& drawing, size_t first);
[[nodiscard]] Drawing strokesUpTo(const Drawing& drawing, size_t end);

} // namespace daylark
