#include "media/index/SampleChecks.h"

#include <algorithm>
#include <random>

namespace daylark {

std::vector<qint64> placesToCheck(qint64 count, size_t inBetween) {
    std::vector<qint64> places{0, std::min<qint64>(1, count - 1), count - 1};
    std::mt19937 random(5);
    for (size_t i = 0; i < inBetween; ++i)
        places.push_back(qint64(random() % quint64(count)));
    return places;
}

bool isFoundBySeeking(const MediaFile& file, const RawSample& sample, qint64 size) {
    const av::PacketPtr packet(av_packet_alloc());
    return av_seek_frame(file.format(), file.video()->index, sample.dts, 0) >= 0 &&
           file.readPacket(packet.get()) >= 0 && packet->pts == sample.pts && packet->dts == sample.dts &&
           packet->pos == sample.position && packet->size == size &&
           ((packet->flags & AV_PKT_FLAG_KEY) != 0) == sample.key &&
           !(packet->flags & AV_PKT_FLAG_DISCARD) == sample.shown;
}

} // namespace daylark
