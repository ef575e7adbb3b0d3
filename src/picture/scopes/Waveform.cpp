#include "picture/scopes/Waveform.h"

#include <algorithm>

namespace daylark {

Waveform waveformOf(const QImage& picture, ScopeChannel channel, int columns) {
    Waveform waveform;
    waveform.columns = std::clamp(columns, 0, picture.width());
    if (waveform.columns == 0) return {};
    waveform.counts.resize(size_t(scopeLevels) * size_t(waveform.columns));
    std::vector<int> columnOf(size_t(picture.width()));
    for (int x = 0; x < picture.width(); ++x)
        columnOf[size_t(x)] = int(qint64(x) * waveform.columns / picture.width());
    for (int y = 0; y < picture.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        for (int x = 0; x < picture.width(); ++x)
            ++waveform.counts[size_t(levelOf(line[x], channel)) * size_t(waveform.columns) + size_t(columnOf[size_t(x)])];
    }
    return waveform;
}

} // namespace daylark
