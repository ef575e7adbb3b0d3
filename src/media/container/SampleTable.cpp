#include "media/container/SampleTable.h"

#include "media/container/AviHeaderIndex.h"
#include "media/facts/FrameRate.h"
#include "media/container/MovHeaderIndex.h"
#include "media/container/MxfHeaderIndex.h"
#include "media/container/SecondFields.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <numeric>

extern "C" {
#include <libavutil/crc.h>
}

namespace daylark {
namespace {

constexpr qint64 unknownTime = AV_NOPTS_VALUE;

/// A VP8 picture that is only referred to travels as a packet of its own and says so in its first byte.
bool isHiddenPicture(const AVStream& stream, const AVPacket& packet) {
    return stream.codecpar->codec_id == AV_CODEC_ID_VP8 && packet.size > 0 && !(packet.data[0] & 0x10);
}

/// Of the ends of the data and its length: tells samples apart without touching all of a large one.
quint32 contentOf(const AVPacket& packet) {
    constexpr int reach = 512;
    if (!packet.data || packet.size <= 0) return 0;
    const AVCRC* table = av_crc_get_table(AV_CRC_32_IEEE);
    quint32 sum = av_crc(table, quint32(packet.size), packet.data, size_t(std::min(packet.size, reach)));
    if (packet.size > reach) sum = av_crc(table, sum, packet.data + packet.size - reach, reach);
    return sum ? sum : 1;
}

RawSample sampleOf(const AVStream& stream, const AVPacket& packet) {
    RawSample sample{packet.pts,
                     packet.dts,
                     packet.pos,
                     packet.duration,
                     contentOf(packet),
                     (packet.flags & AV_PKT_FLAG_KEY) != 0,
                     true};
    sample.shown = !(packet.flags & AV_PKT_FLAG_DISCARD) && !isHiddenPicture(stream, packet);
    return sample;
}

unsigned codecProperties(const AVStream& stream) {
    const AVCodecDescriptor* descriptor = avcodec_descriptor_get(stream.codecpar->codec_id);
    return descriptor ? unsigned(descriptor->props) : 0;
}

/// The index in the header of a file whose pictures all stand for themselves is as exact as reading the file,
/// and spares reading gigabytes. Empty where that doesn't hold.
std::vector<RawSample> readHeaderIndex(const MediaFile& file) {
    AVStream* stream = file.video();
    const int count = avformat_index_get_entries_count(stream);
    if (stream->nb_frames <= 0 || count < 2) return {};
    std::vector<RawSample> samples;
    samples.reserve(size_t(count));
    for (int i = 0; i < count; ++i) {
        const AVIndexEntry* entry = avformat_index_get_entry(stream, i);
        if (!samples.empty() && entry->timestamp <= samples.back().pts) return {};
        const bool shown = !(entry->flags & AVINDEX_DISCARD_FRAME);
        samples.push_back({entry->timestamp, entry->timestamp, entry->pos, 0, 0, true, shown});
    }
    // The header speaks of decoding times; a first packet with another presentation time gives it away.
    const av::PacketPtr packet(av_packet_alloc());
    if (file.readPacket(packet.get()) < 0 || packet->pts != samples[0].pts || packet->dts != samples[0].dts ||
        packet->pos != samples[0].position)
        return {};
    // A fragmented file's header knows its first fragment only.
    const qint64 span = samples.back().pts - samples.front().pts;
    const qint64 gap = std::max<qint64>(1, span / (count - 1));
    if (stream->duration != unknownTime && std::abs(stream->duration - span) > 2 * gap) return {};
    return samples;
}

Result<std::vector<RawSample>> readAllPackets(const MediaFile& file) {
    std::vector<RawSample> samples;
    const av::PacketPtr packet(av_packet_alloc());
    const bool byFields = file.format()->iformat->flags & AVFMT_TS_DISCONT;
    SecondFields fields(*file.video());
    for (;;) {
        const int code = file.readPacket(packet.get());
        if (code == AVERROR_EXIT) return av::errorOf("reading", code);
        if (code < 0) return samples;
        const bool second = byFields && fields.isSecond(*packet) && !samples.empty();
        samples.push_back(sampleOf(*file.video(), *packet));
        if (!second) continue;
        const RawSample& first = samples[samples.size() - 2];
        samples.back().pts = first.pts;
        samples.back().dts = first.dts;
    }
}

/// From what the container's tables say, where they say all; else through the whole file.
Result<std::vector<RawSample>> readSamples(const MediaFile& file) {
    const QByteArray container(file.format()->iformat->name);
    const bool standAlone = codecProperties(*file.video()) & AV_CODEC_PROP_INTRA_ONLY;
    std::vector<RawSample> samples;
    if (container.contains("mov")) {
        samples = readMovHeader(file);
        if (samples.empty() && standAlone) samples = readHeaderIndex(file);
    } else if (container == "mxf" && standAlone) {
        samples = readMxfHeader(file);
    } else if (container == "avi" && standAlone) {
        samples = readAviHeader(file);
    } else {
        return readAllPackets(file);
    }
    if (!samples.empty()) return samples;
    const Result<MediaFile> fresh = file.reopened();
    if (!fresh) return fresh.error();
    return readAllPackets(*fresh);
}

/// For containers that give decoding times only: the decoder tells the order, the decoding times the times.
Result<void> orderByDecoding(const MediaFile& file, std::vector<RawSample>& samples) {
    Result<MediaFile> fresh = file.reopened();
    if (!fresh) return fresh.error();
    std::vector<size_t> order;
    std::vector<bool> seen(samples.size(), false);
    const auto done = decodeFromStart(*fresh, 0, [&](qint64 place) {
        if (place >= 0 && place < qint64(samples.size()) && !seen[size_t(place)]) {
            seen[size_t(place)] = true;
            order.push_back(size_t(place));
        }
        return true;
    });
    if (!done) return done;
    // What the decoder did not give back keeps its place after the sample before it in the file.
    std::vector<double> rank(samples.size(), -1);
    for (size_t i = 0; i < order.size(); ++i)
        rank[order[i]] = double(i);
    for (size_t place = 0; place < samples.size(); ++place)
        if (!seen[place]) rank[place] = (place ? rank[place - 1] : -1.0) + 0.001;
    std::vector<qint64> times;
    for (const RawSample& sample : samples)
        times.push_back(sample.dts);
    std::sort(times.begin(), times.end());
    std::vector<size_t> places(samples.size());
    std::iota(places.begin(), places.end(), 0);
    std::stable_sort(places.begin(), places.end(), [&](size_t a, size_t b) { return rank[a] < rank[b]; });
    for (size_t i = 0; i < places.size(); ++i)
        samples[places[i]].pts = times[i];
    return {};
}

/// Gives every sample a presentation time.
Result<void> completeTimes(const MediaFile& file, std::vector<RawSample>& samples) {
    // The MXF demuxer passes the file's order off as the presentation's where the file's index has no more.
    const bool reorders =
        (codecProperties(*file.video()) & AV_CODEC_PROP_REORDER) && file.video()->codecpar->video_delay > 0;
    const bool decodingTimesOnly =
        reorders && std::strcmp(file.format()->iformat->name, "mxf") == 0 &&
        std::all_of(samples.begin(), samples.end(), [](const RawSample& s) { return s.pts == s.dts; });
    if (decodingTimesOnly)
        for (RawSample& sample : samples)
            sample.pts = unknownTime;
    const auto lacksPts = [](const RawSample& sample) { return sample.pts == unknownTime; };
    if (std::none_of(samples.begin(), samples.end(), lacksPts)) return {};
    qint64 next = 0;
    for (RawSample& sample : samples) {
        if (sample.dts == unknownTime) sample.dts = sample.pts != unknownTime ? sample.pts : next;
        next = sample.dts + std::max<qint64>(1, sample.duration);
    }
    if (reorders) return orderByDecoding(file, samples);
    for (RawSample& sample : samples)
        if (sample.pts == unknownTime) sample.pts = sample.dts;
    return {};
}

/// Recordings joined end to end begin their times anew; the second is shown after the first, not between its
/// pictures.
void joinRestarts(const AVStream& stream, std::vector<RawSample>& samples) {
    const qint64 farBack = std::max<qint64>(1, av_rescale_q(2, {1, 1}, stream.time_base));
    qint64 offset = 0, latest = std::numeric_limits<qint64>::min();
    for (RawSample& sample : samples) {
        if (!sample.shown) continue;
        if (latest != std::numeric_limits<qint64>::min() && sample.pts + offset < latest - farBack)
            offset = latest + std::max<qint64>(1, sample.duration) - sample.pts;
        sample.pts += offset;
        latest = std::max(latest, sample.pts);
    }
}

/// Pictures before the first key frame, in file order or on the screen, are shown only if the decoder can
/// make them.
Result<void> dropUndecodableStart(const MediaFile& file, std::vector<RawSample>& samples) {
    const auto key =
        std::find_if(samples.begin(), samples.end(), [](const RawSample& s) { return s.key && s.shown; });
    if (key == samples.end()) return {};
    // This decoder makes grey pictures where it lacks what they refer to; the others leave them out.
    if (file.video()->codecpar->codec_id == AV_CODEC_ID_HEVC)
        std::for_each(samples.begin(), key, [](RawSample& sample) { sample.shown = false; });
    const qint64 keyTime = key->pts;
    const auto leads = [&](const RawSample& s) { return s.shown && s.pts < keyTime; };
    if (std::none_of(samples.begin(), samples.end(), leads)) return {};
    Result<MediaFile> fresh = file.reopened();
    if (!fresh) return fresh.error();
    std::vector<bool> decoded(samples.size(), false);
    const auto done = decodeFromStart(*fresh, 4, [&](qint64 place) {
        if (place < 0 || place >= qint64(samples.size())) return true;
        decoded[size_t(place)] = true;
        return samples[size_t(place)].pts <= keyTime;
    });
    if (!done) return done;
    for (size_t place = 0; place < samples.size(); ++place)
        if (leads(samples[place]) && !decoded[place]) samples[place].shown = false;
    return {};
}

/// How many samples at most come later on the screen than one that follows them in the file.
int reorderDepthOf(const std::vector<SampleTable::Packet>& packets) {
    constexpr size_t deepest = 16;
    int depth = 0;
    for (size_t place = 1; place < packets.size(); ++place) {
        if (packets[place].frame < 0) continue;
        int later = 0;
        for (size_t back = 1; back <= std::min(place, deepest); ++back)
            later += packets[place - back].frame > packets[place].frame;
        depth = std::max(depth, later);
    }
    return depth;
}

SampleTable tableOf(const std::vector<RawSample>& samples, const AVStream& stream) {
    SampleTable table;
    for (size_t place = 0; place < samples.size(); ++place) {
        const RawSample& sample = samples[place];
        table.packets.push_back({sample.pts, sample.position, sample.content, -1, sample.key});
        if (sample.shown) table.packetOfFrame.push_back(qint32(place));
    }
    auto& order = table.packetOfFrame;
    std::stable_sort(order.begin(), order.end(),
                     [&](qint32 a, qint32 b) { return samples[size_t(a)].pts < samples[size_t(b)].pts; });
    const size_t shown = order.size();
    // Two packets with one time are the two halves of a picture.
    order.erase(
        std::unique(order.begin(), order.end(),
                    [&](qint32 a, qint32 b) { return samples[size_t(a)].pts == samples[size_t(b)].pts; }),
        order.end());
    table.halves = order.size() < shown;
    table.index.timeBaseNum = stream.time_base.num;
    table.index.timeBaseDen = stream.time_base.den;
    for (size_t n = 0; n < order.size(); ++n) {
        SampleTable::Packet& packet = table.packets[size_t(order[n])];
        packet.frame = qint32(n);
        table.index.samples.push_back({packet.stamp, 0, packet.key});
    }
    setClock(table.index, stream, order.empty() ? 0 : samples[size_t(order.back())].duration);
    table.reorderDepth = reorderDepthOf(table.packets);
    return table;
}

} // namespace

qint64 stampOf(const AVPacket& packet) {
    return packet.pts != unknownTime ? packet.pts : packet.dts;
}

bool SampleTable::isAt(size_t place, const AVPacket& packet) const {
    if (place >= packets.size()) return false;
    const Packet& entry = packets[place];
    if (entry.position >= 0 && packet.pos >= 0 && entry.position != packet.pos) return false;
    if (entry.content && entry.content != contentOf(packet)) return false;
    return !stampsHold || entry.stamp == stampOf(packet);
}

bool SampleTable::canRecognise(size_t place) const {
    if (stampsHold || packets[place].position >= 0) return true;
    return std::count_if(packets.begin(), packets.end(),
                         [&](const Packet& packet) { return packet.content == packets[place].content; }) == 1;
}

Result<void> decodeFromStart(const MediaFile& file, int reorderDepth,
                             const std::function<bool(qint64 place)>& visit) {
    Result<av::CodecPtr> codec = file.openDecoder(reorderDepth);
    if (!codec) return codec.error();
    const av::PacketPtr packet(av_packet_alloc());
    const av::FramePtr frame(av_frame_alloc());
    bool atEnd = false;
    for (qint64 place = 0; !atEnd; ++place) {
        const int code = file.readPacket(packet.get());
        if (code == AVERROR_EXIT) return av::errorOf("reading", code);
        atEnd = code < 0;
        packet->pts = packet->dts = place;
        avcodec_send_packet(codec->get(),
                            atEnd ? nullptr : packet.get()); // a damaged sample just gives no picture
        while (avcodec_receive_frame(codec->get(), frame.get()) >= 0)
            if (!visit(frame->pts)) return {};
    }
    return {};
}

Result<SampleTable> buildSampleTable(const MediaFile& file) {
    if (!file.video()) return Error{QStringLiteral("no picture")};
    Result<std::vector<RawSample>> read = readSamples(file);
    if (!read) return read.error();
    std::vector<RawSample> samples = std::move(*read);
    std::vector<qint64> stamps;
    stamps.reserve(samples.size());
    for (const RawSample& sample : samples)
        stamps.push_back(sample.pts != unknownTime ? sample.pts : sample.dts);
    const bool stampsHold = std::none_of(samples.begin(), samples.end(),
                                         [](const RawSample& s) { return s.pts == unknownTime; }) ||
                            !(file.format()->iformat->flags & AVFMT_TS_DISCONT);
    if (const auto done = completeTimes(file, samples); !done) return done.error();
    joinRestarts(*file.video(), samples);
    if (const auto done = dropUndecodableStart(file, samples); !done) return done.error();
    SampleTable table = tableOf(samples, *file.video());
    table.stampsHold = stampsHold;
    for (size_t place = 0; place < stamps.size(); ++place)
        table.packets[place].stamp = stamps[place];
    return table;
}

} // namespace daylark
