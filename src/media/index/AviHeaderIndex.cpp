#include "media/index/AviHeaderIndex.h"

#include "media/index/SampleChecks.h"

#include <QFile>
#include <QtEndian>

#include <algorithm>

namespace daylark {
namespace {

constexpr qint64 chunkHead = 8; // what it is, and how many bytes follow
constexpr qint64 listHead = 12;

struct IndexedChunk {
    qint64 position = 0; ///< of its head
    qint64 size = 0;     ///< of what follows the head
    [[nodiscard]] qint64 end() const { return position + chunkHead + size + size % 2; }
};

/// What the index names of all streams, in file order.
std::vector<IndexedChunk> indexedChunks(const AVFormatContext& format) {
    std::vector<IndexedChunk> chunks;
    for (unsigned s = 0; s < format.nb_streams; ++s) {
        AVStream* stream = format.streams[s];
        for (int i = 0; i < avformat_index_get_entries_count(stream); ++i) {
            const AVIndexEntry* entry = avformat_index_get_entry(stream, i);
            chunks.push_back({entry->pos, entry->size});
        }
    }
    std::sort(chunks.begin(), chunks.end(),
              [](const IndexedChunk& a, const IndexedChunk& b) { return a.position < b.position; });
    return chunks;
}

/// Samples are in chunks called after the number of their stream: "00dc", "01wb".
bool isOfStream(const QByteArray& name) {
    return name[0] >= '0' && name[0] <= '9' && name[1] >= '0' && name[1] <= '9';
}

/// Between two indexed chunks, or behind the last, stands no sample: paddings, indexes and the heads of
/// lists.
bool holdsNoSample(QFile& file, qint64 from, qint64 to) {
    constexpr int mostChunks = 1000;
    for (int i = 0; from < to; ++i) {
        if (i == mostChunks || !file.seek(from)) return false;
        const QByteArray head = file.read(chunkHead);
        if (head.size() < chunkHead) return false;
        const QByteArray name = head.left(4);
        const qint64 size = qFromLittleEndian<quint32>(head.data() + 4);
        if (isOfStream(name) && size > 0) return false;
        from += name == "RIFF" || name == "LIST" ? listHead : chunkHead + size + size % 2;
    }
    return from == to;
}

bool nothingIsMissing(const QString& path, const std::vector<IndexedChunk>& chunks) {
    QFile file(path);
    if (chunks.empty() || !file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) return false;
    for (size_t i = 0; i < chunks.size(); ++i) {
        const qint64 next = i + 1 < chunks.size() ? chunks[i + 1].position : file.size();
        if (chunks[i].size <= 0 || chunks[i].end() > next) return false;
        if (chunks[i].end() < next && !holdsNoSample(file, chunks[i].end(), next)) return false;
    }
    return true;
}

} // namespace

std::vector<RawSample> readAviHeader(const MediaFile& file) {
    AVStream* stream = file.video();
    const int count = avformat_index_get_entries_count(stream);
    const av::PacketPtr packet(av_packet_alloc());
    if (count < 2 || file.readPacket(packet.get()) < 0) return {};
    std::vector<RawSample> samples;
    for (int i = 0; i < count; ++i) {
        const AVIndexEntry* entry = avformat_index_get_entry(stream, i);
        if (i > 0 && (entry->timestamp <= samples.back().pts || entry->pos <= samples.back().position))
            return {};
        samples.push_back(
            {entry->timestamp, entry->timestamp, entry->pos + chunkHead, packet->duration, 0, true, true});
    }
    if (packet->pos != samples[0].position || packet->pts != samples[0].pts ||
        !nothingIsMissing(file.path(), indexedChunks(*file.format())))
        return {};
    for (const qint64 n : placesToCheck(count, 6))
        if (!isFoundBySeeking(file, samples[size_t(n)], avformat_index_get_entry(stream, int(n))->size))
            return {};
    return samples;
}

} // namespace daylark
