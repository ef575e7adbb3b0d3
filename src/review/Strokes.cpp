#include "review/Strokes.h"

#include <algorithm>

namespace daylark {

size_t commonStrokes(const Drawing& a, const Drawing& b) {
    if (!a.hasKeys || !b.hasKeys) return 0;
    const auto [left, right] =
        std::mismatch(a.strokes.begin(), a.strokes.end(), b.strokes.begin(), b.strokes.end());
    return size_t(left - a.strokes.begin());
}

Drawing strokesFrom(const Drawing& drawing, size_t first) {
    const size_t from = std::min(first, drawing.strokes.size());
    return {{drawing.strokes.begin() + std::ptrdiff_t(from), drawing.strokes.end()}, drawing.hasKeys};
}

Drawing strokesUpTo(const Drawing& drawing, size_t end) {
    const size_t count = std::min(end, drawing.strokes.size());
    return {{drawing.strokes.begin(), drawing.strokes.begin() + std::ptrdiff_t(count)}, drawing.hasKeys};
}

} // namespace daylark
