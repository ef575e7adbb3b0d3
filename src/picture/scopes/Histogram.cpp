#include "picture/scopes/Histogram.h"

#include <algorithm>

namespace daylark {

quint32 Histogram::highestInside() const {
    quint32 highest = 0;
    for (const Counts* counts : {&luma, &red, &green, &blue})
        highest = std::max(highest, *std::max_element(counts->begin() + 1, counts->end() - 1));
    return highest;
}

Histogram histogramOf(const QImage& picture) {
    Histogram histogram;
    for (int y = 0; y < picture.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        for (int x = 0; x < picture.width(); ++x) {
            ++histogram.luma[size_t(levelOf(line[x], ScopeChannel::luma))];
            ++histogram.red[size_t(qRed(line[x]))];
            ++histogram.green[size_t(qGreen(line[x]))];
            ++histogram.blue[size_t(qBlue(line[x]))];
        }
    }
    return histogram;
}

} // namespace daylark
