#include "media/index/MovHeaderIndex.h"

#include "media/container/MovBoxes.h"

#include <algorithm>
#include <cstring>
#include <optional>

namespace daylark {
namespace {

/// Presentation minus decoding time of each sample, before any shift; none when the table is not sound.
std::optional<std::vector<qint32>> compositionOffsets(const MovBoxes::Track& track, size_t samples) {
    std::vector<qint32> offsets(samples, 0);
    const auto table =
        MovBoxes::find(track.content, {MovBoxes::fourCc("mdia"), MovBoxes::fourCc("minf"),
                                       MovBoxes::fourCc("stbl"), MovBoxes::fourCc("ctts")});
    if (!table) return offsets;
    BoxBytes ctts(*table);
    ctts.skip(4);
    const quint32 runs = ctts.u32();
    if (ctts.failed() || quint64(runs) * 8 > quint64(ctts.rest().size())) return std::nullopt;
    size_t next = 0;
    for (quint32 run = 0; run < runs; ++run) {
        const quint32 count = ctts.u32();
        const qint32 offset = ctts.i32();
        if (count > samples - next) return std::nullopt;
        std::fill_n(offsets.begin() + qsizetype(next), count, offset);
        next += count;
    }
    if (next != samples) return std::nullopt;
    return offsets;
}

/// The codecs whose packets no parser changes on their way out of this container.
bool isHandedOutAsStored(AVCodecID codec) {
    return codec == AV_CODEC_ID_H264 || codec == AV_CODEC_ID_HEVC || codec == AV_CODEC_ID_MPEG4;
}

/// The header's samples with the demuxer's times (which know the edit list); the offsets are still unshifted.
std::vector<RawSample> samplesOf(const MediaFile& file) {
    AVStream* stream = file.video();
    if (!isHandedOutAsStored(stream->codecpar->codec_id)) return {};
    const Result<MovBoxes> boxes = MovBoxes::read(file.path());
    if (!boxes || boxes->isFragmented()) return {};
    const std::vector<MovBoxes::Track> tracks = boxes->tracks();
    const auto track =
        std::find_if(tracks.begin(), tracks.end(), [&](const auto& t) { return qint64(t.id) == stream->id; });
    if (track == tracks.end() || MovBoxes::sampleDescriptions(*track).size() != 1) return {};
    const auto places = boxes->samples(*track);
    if (!places || places->size() < 2 ||
        places->size() != size_t(std::max(0, avformat_index_get_entries_count(stream))))
        return {};
    const auto offsets = compositionOffsets(*track, places->size());
    if (!offsets) return {};
    std::vector<RawSample> samples(places->size());
    for (size_t i = 0; i < samples.size(); ++i) {
        const AVIndexEntry* entry = avformat_index_get_entry(stream, int(i));
        const MovBoxes::Sample& place = (*places)[i];
        if (quint64(entry->pos) != place.position || quint32(entry->size) != place.size ||
            (i > 0 && entry->timestamp <= samples[i - 1].dts))
            return {};
        samples[i] = {entry->timestamp + (*offsets)[i],
                      entry->timestamp,
                      entry->pos,
                      0,
                      0,
                      (entry->flags & AVINDEX_KEYFRAME) != 0,
                      !(entry->flags & AVINDEX_DISCARD_FRAME)};
    }
    return samples;
}

/// Brings the packet of this sample into `packet`; a seek may land a little before it.
bool findPacket(const MediaFile& file, AVPacket* packet, const RawSample& sample) {
    if (av_seek_frame(file.format(), file.video()->index, sample.dts, AVSEEK_FLAG_ANY) < 0) return false;
    constexpr int patience = 32;
    for (int i = 0; i < patience && file.readPacket(packet) >= 0; ++i)
        if (packet->pos == sample.position) return true;
    return false;
}

/// The packet is this sample; takes over what only the packet knows.
bool agrees(const AVPacket* packet, RawSample& sample) {
    sample.duration = packet->duration;
    return packet->pts == sample.pts && packet->dts == sample.dts && packet->pos == sample.position &&
           ((packet->flags & AV_PKT_FLAG_KEY) != 0) == sample.key &&
           !(packet->flags & AV_PKT_FLAG_DISCARD) == sample.shown;
}

} // namespace

std::vector<RawSample> readMovHeader(const MediaFile& file) {
    if (!std::strstr(file.format()->iformat->name, "mov")) return {};
    std::vector<RawSample> samples = samplesOf(file);
    if (samples.empty()) return {};
    const av::PacketPtr packet(av_packet_alloc());
    if (!findPacket(file, packet.get(), samples[0]) || packet->pts == AV_NOPTS_VALUE) return {};
    // Decoding times are moved so that they never lie behind the presentation's, all by the same amount.
    const qint64 shift = packet->pts - samples[0].pts;
    for (RawSample& sample : samples)
        sample.pts += shift;
    constexpr size_t looked = 24;
    const size_t last = samples.size() - std::min(samples.size(), looked);
    for (const size_t from : {size_t(0), last}) {
        if (!findPacket(file, packet.get(), samples[from])) return {};
        for (size_t i = from;;) {
            if (!agrees(packet.get(), samples[i])) return {};
            if (++i == std::min(samples.size(), from + looked)) break;
            if (file.readPacket(packet.get()) < 0) return {};
        }
    }
    return samples;
}

} // namespace daylark
