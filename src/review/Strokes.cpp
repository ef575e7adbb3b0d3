#include "review/Strokes.h"

#include <algorithm>

namespace daylark {

namespace {

/// Calls `each` with each of the five lists of a drawing.
template<class Drawing, class Each>
void forEachList(Drawing& drawing, Each each) {
    each(drawing.strokesArray);
    each(drawing.brushTypeArray);
    each(drawing.colourArray);
    each(drawing.widthArray);
    each(drawing.opacityArray);
}

bool isEven(const Drawing& drawing) {
    const size_t count = drawing.strokesArray.size();
    bool even = drawing.hasKeys;
    forEachList(drawing, [&](const auto& list) { even = even && list.size() == count; });
    return even;
}

} // namespace

size_t commonStrokes(const Drawing& a, const Drawing& b) {
    if (!isEven(a) || !isEven(b)) return 0;
    const size_t most = std::min(a.strokesArray.size(), b.strokesArray.size());
    size_t same = 0;
    while (same < most && a.strokesArray[same] == b.strokesArray[same] &&
           a.brushTypeArray[same] == b.brushTypeArray[same] && a.colourArray[same] == b.colourArray[same] &&
           a.widthArray[same] == b.widthArray[same] && a.opacityArray[same] == b.opacityArray[same])
        ++same;
    return same;
}

Drawing strokesFrom(const Drawing& drawing, size_t first) {
    Drawing rest = drawing;
    forEachList(rest, [first](auto& list) {
        list.erase(list.begin(), list.begin() + std::ptrdiff_t(std::min(first, list.size())));
    });
    return rest;
}

Drawing strokesUpTo(const Drawing& drawing, size_t end) {
    Drawing start = drawing;
    forEachList(start, [end](auto& list) { list.resize(std::min(end, list.size())); });
    return start;
}

} // namespace daylark
