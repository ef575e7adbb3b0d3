#include "media/index/MxfHeaderIndex.h"

#include "media/container/MxfIndex.h"
#include "media/index/SampleChecks.h"

#include <algorithm>
#include <cstring>
#include <numeric>

namespace daylark {
namespace {

std::vector<qint64> longestUnits(const MxfIndex& index) {
    std::vector<qint64> units(size_t(index.count()));
    std::iota(units.begin(), units.end(), 0);
    const size_t looked = std::min<size_t>(units.size(), 16);
    std::partial_sort(units.begin(), units.begin() + qsizetype(looked), units.end(), [&](qint64 a, qint64 b) {
        return index.end(a) - index.start(a) > index.end(b) - index.start(b);
    });
    units.resize(looked);
    return units;
}

/// Where the pictures' elements lie in their edit units, as the first one does; looks at some of them.
bool holdOnePictureEach(const MxfIndex& index, const MxfIndex::Element& first) {
    std::vector<qint64> units = placesToCheck(index.count(), 16);
    const std::vector<qint64> longest = longestUnits(index);
    units.insert(units.end(), longest.begin(), longest.end());
    return std::all_of(units.begin(), units.end(), [&](qint64 unit) {
        const auto picture = index.pictureIn(unit, first);
        return picture && picture->length > 0 &&
               picture->position - index.start(unit) == first.position - index.start(0);
    });
}

qint64 sizeOf(const MxfIndex& index, qint64 unit, const MxfIndex::Element& picture) {
    if (index.clip()) return index.end(unit) - index.start(unit);
    const auto element = index.pictureIn(unit, picture);
    return element ? element->length : -1;
}

} // namespace

std::vector<RawSample> readMxfHeader(const MediaFile& file) {
    if (std::strcmp(file.format()->iformat->name, "mxf") != 0) return {};
    const qint64 duration = file.video()->duration;
    const auto index = MxfIndex::read(file.path(), duration == AV_NOPTS_VALUE ? 0 : duration);
    const av::PacketPtr packet(av_packet_alloc());
    if (!index || file.readPacket(packet.get()) < 0 || packet->pts == AV_NOPTS_VALUE) return {};
    const qint64 offset = packet->pos - index->start(0);
    const auto picture = index->clip() ? index->clip() : index->elementAt(packet->pos);
    if (!picture || (!index->clip() && !holdOnePictureEach(*index, *picture))) return {};
    std::vector<RawSample> samples(size_t(index->count()));
    for (qint64 n = 0; n < index->count(); ++n)
        samples[size_t(n)] = {
            packet->pts + n, packet->pts + n, index->start(n) + offset, packet->duration, 0, true, true};
    for (const qint64 n : placesToCheck(index->count(), 5))
        if (!isFoundBySeeking(file, samples[size_t(n)], sizeOf(*index, n, *picture))) return {};
    return samples;
}

} // namespace daylark
