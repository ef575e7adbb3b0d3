#pragma once

#include "media/container/MediaFile.h"
#include "media/index/RawSample.h"

#include <gtest/gtest.h>

#include <vector>

namespace daylark {

/// What reading a movie's pictures through gives: what a container's tables must say as well.
inline std::vector<RawSample> samplesFromPackets(const QString& path) {
    const Result<MediaFile> file = MediaFile::open(path, nullptr);
    std::vector<RawSample> samples;
    const av::PacketPtr packet(av_packet_alloc());
    while (file && file->readPacket(packet.get()) >= 0)
        samples.push_back({packet->pts, packet->dts, packet->pos, packet->duration, 0,
                           (packet->flags & AV_PKT_FLAG_KEY) != 0, !(packet->flags & AV_PKT_FLAG_DISCARD)});
    return samples;
}

inline void expectSameSamples(const std::vector<RawSample>& header, const std::vector<RawSample>& packets) {
    ASSERT_EQ(header.size(), packets.size());
    ASSERT_FALSE(packets.empty());
    for (size_t i = 0; i < header.size(); ++i) {
        ASSERT_EQ(header[i].pts, packets[i].pts) << i;
        ASSERT_EQ(header[i].dts, packets[i].dts) << i;
        ASSERT_EQ(header[i].position, packets[i].position) << i;
        ASSERT_EQ(header[i].key, packets[i].key) << i;
        ASSERT_EQ(header[i].shown, packets[i].shown) << i;
    }
    EXPECT_EQ(header.back().duration, packets.back().duration);
}

} // namespace daylark
