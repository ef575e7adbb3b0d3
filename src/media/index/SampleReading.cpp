#include "media/index/SampleReading.h"

#include "media/index/AviHeaderIndex.h"
#include "media/index/MovHeaderIndex.h"
#include "media/index/MxfHeaderIndex.h"
#include "media/index/SecondFields.h"

#include <algorithm>

extern "C" {
#include <libavutil/crc.h>
}

namespace daylark {
namespace {

/// A VP8 picture that is only referred to travels as a packet of its own and says so in its first byte.
bool isHiddenPicture(const AVStream& stream, const AVPacket& packet) {
    return stream.codecpar->codec_id == AV_CODEC_ID_VP8 && packet.size > 0 && !(packet.data[0] & 0x10);
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
    if (stream->duration != AV_NOPTS_VALUE && std::abs(stream->duration - span) > 2 * gap) return {};
    return samples;
}

/// The parameter sets that the packets are to be decoded by, as the demuxer announces them.
class Descriptions {
public:
    explicit Descriptions(const AVCodecParameters& own)
        : own_(reinterpret_cast<const char*>(own.extradata), own.extradata_size) {}

    /// The number of those that hold from this packet on.
    quint16 numberAt(const AVPacket& packet) {
        size_t size = 0;
        const uint8_t* data = av_packet_get_side_data(&packet, AV_PKT_DATA_NEW_EXTRADATA, &size);
        if (!data || size == 0) return current_;
        const QByteArray said(reinterpret_cast<const char*>(data), qsizetype(size));
        const auto known = std::find(others.begin(), others.end(), said);
        constexpr size_t most = 1000;
        if (said == own_)
            current_ = 0;
        else if (known != others.end())
            current_ = quint16(known - others.begin() + 1);
        else if (others.size() < most) {
            others.push_back(said);
            current_ = quint16(others.size());
        }
        return current_;
    }
    std::vector<QByteArray> others;

private:
    QByteArray own_;
    quint16 current_ = 0;
};

Result<RawSamples> readAllPackets(const MediaFile& file) {
    RawSamples read;
    read.readThrough = true;
    const av::PacketPtr packet(av_packet_alloc());
    SecondFields fields(*file.video());
    Descriptions descriptions(*file.video()->codecpar);
    for (;;) {
        const int code = file.readPacket(packet.get());
        if (code == AVERROR_EXIT) return av::errorOf("reading", code);
        if (code < 0) break;
        const bool second = fields.isSecond(*packet) && !read.samples.empty();
        read.samples.push_back(sampleOf(*file.video(), *packet));
        RawSample& sample = read.samples.back();
        sample.description = descriptions.numberAt(*packet);
        if (!second) continue;
        const RawSample& first = read.samples[read.samples.size() - 2];
        sample.secondField = true;
        sample.pts = first.pts;
        sample.dts = first.dts;
    }
    read.descriptions = std::move(descriptions.others);
    return read;
}

bool sharesTimes(const std::vector<RawSample>& samples) {
    std::vector<qint64> times;
    for (const RawSample& sample : samples)
        if (sample.shown && sample.pts != AV_NOPTS_VALUE) times.push_back(sample.pts);
    std::sort(times.begin(), times.end());
    return std::adjacent_find(times.begin(), times.end()) != times.end();
}

} // namespace

quint32 contentOf(const AVPacket& packet) {
    constexpr int reach = 512;
    if (!packet.data || packet.size <= 0) return 0;
    const AVCRC* table = av_crc_get_table(AV_CRC_32_IEEE);
    quint32 sum = av_crc(table, quint32(packet.size), packet.data, size_t(std::min(packet.size, reach)));
    if (packet.size > reach) sum = av_crc(table, sum, packet.data + packet.size - reach, reach);
    return sum ? sum : 1;
}

unsigned codecProperties(const AVStream& stream) {
    const AVCodecDescriptor* descriptor = avcodec_descriptor_get(stream.codecpar->codec_id);
    return descriptor ? unsigned(descriptor->props) : 0;
}

Result<RawSamples> readSamples(const MediaFile& file) {
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
    // Which of several with one time are fields of one picture, only their data says.
    if (!samples.empty() && !sharesTimes(samples)) return RawSamples{std::move(samples), {}, false};
    const Result<MediaFile> fresh = file.reopened();
    if (!fresh) return fresh.error();
    return readAllPackets(*fresh);
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

} // namespace daylark
