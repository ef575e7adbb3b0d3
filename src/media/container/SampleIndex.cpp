#include "media/container/SampleIndex.h"

#include "media/container/Av.h"

#include <algorithm>

namespace daylark {

qint64 SampleIndex::frameAt(const MediaTime& time) const {
    if (samples.empty()) return -1;
    const AVRational wanted{1, std::max(1, int(qint32(time.scale)))}, own{1, std::max(1, timeScale)};
    // Compared as exact fractions: a position never falls on a neighbour through rounding.
    const auto after = std::partition_point(samples.begin(), samples.end(), [&](const Sample& sample) {
        return av_compare_ts(sample.ticks, own, time.value, wanted) <= 0;
    });
    return std::max<qint64>(0, after - samples.begin() - 1);
}

MediaTime SampleIndex::timeOf(qint64 frame) const {
    if (samples.empty()) return {0, timeScale};
    return {samples[size_t(std::clamp<qint64>(frame, 0, count() - 1))].ticks, timeScale};
}

} // namespace daylark
