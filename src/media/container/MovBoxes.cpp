#include "media/container/MovBoxes.h"

#include <QFile>

#include <algorithm>

namespace daylark {
namespace {

constexpr qint64 largestHeader = qint64(512) << 20;
constexpr quint32 mostSamples = 1U << 24;
using Samples = std::vector<MovBoxes::Sample>;

/// Reads one box's size and type off the front of `bytes`, which stands for all that may follow; none when it
/// does not fit.
std::optional<MovBoxes::Box> firstBox(QByteArrayView bytes, qsizetype& length) {
    BoxBytes reader(bytes);
    quint64 size = reader.u32();
    MovBoxes::Box box;
    box.type = reader.u32();
    if (size == 1) size = reader.u64();
    if (reader.failed()) return std::nullopt;
    const qsizetype head = bytes.size() - reader.rest().size();
    if (size == 0) size = quint64(bytes.size()); // to the end
    if (size < quint64(head) || size > quint64(bytes.size())) return std::nullopt;
    length = qsizetype(size);
    box.content = bytes.sliced(head, length - head);
    return box;
}

bool readSizes(QByteArrayView table, qint64 fileSize, Samples& samples) {
    BoxBytes stsz(table);
    stsz.skip(4);
    const quint32 each = stsz.u32(), count = stsz.u32();
    if (stsz.failed() || count > mostSamples) return false;
    if (each ? quint64(each) * count > quint64(fileSize) : quint64(count) * 4 > quint64(stsz.rest().size()))
        return false;
    samples.resize(count);
    for (MovBoxes::Sample& sample : samples)
        sample.size = each ? each : stsz.u32();
    return true;
}

bool readCompactSizes(QByteArrayView table, Samples& samples) {
    BoxBytes stz2(table);
    stz2.skip(4);
    const quint32 bits = stz2.u32() & 0xFF, count = stz2.u32();
    if (stz2.failed() || (bits != 4 && bits != 8 && bits != 16)) return false;
    if ((quint64(count) * bits + 7) / 8 > quint64(stz2.rest().size()) || count > mostSamples) return false;
    samples.resize(count);
    quint8 pair = 0;
    for (quint32 i = 0; i < count; ++i) {
        if (bits == 4 && i % 2 == 0) pair = stz2.u8();
        samples[i].size = bits == 16 ? stz2.u16() : bits == 8 ? stz2.u8() : i % 2 ? pair & 15 : pair >> 4;
    }
    return true;
}

/// How many samples lie in each chunk, as runs.
struct ChunkRun {
    quint32 firstChunk, samples, description;
};

std::optional<std::vector<ChunkRun>> readChunkRuns(QByteArrayView table) {
    BoxBytes stsc(table);
    stsc.skip(4);
    const quint32 count = stsc.u32();
    if (stsc.failed() || quint64(count) * 12 > quint64(stsc.rest().size())) return std::nullopt;
    std::vector<ChunkRun> runs(count);
    quint32 before = 0;
    for (ChunkRun& run : runs) {
        run = {stsc.u32(), stsc.u32(), stsc.u32()};
        if (run.firstChunk <= before || (before == 0 && run.firstChunk != 1)) return std::nullopt;
        before = run.firstChunk;
    }
    return runs;
}

/// Positions of the chunks one after the other; 32 or 64 bits wide.
class ChunkPlaces {
public:
    explicit ChunkPlaces(QByteArrayView table) {
        const auto wide = MovBoxes::find(table, {MovBoxes::fourCc("co64")});
        const auto narrow = MovBoxes::find(table, {MovBoxes::fourCc("stco")});
        width_ = wide ? 8 : 4;
        BoxBytes head(wide ? *wide : narrow.value_or(QByteArrayView()));
        head.skip(4);
        const quint32 count = head.u32();
        if (!head.failed() && quint64(count) * quint64(width_) <= quint64(head.rest().size())) count_ = count;
        entries_ = BoxBytes(head.rest());
    }
    [[nodiscard]] quint32 count() const { return count_; }
    quint64 next() { return width_ == 8 ? entries_.u64() : entries_.u32(); }

private:
    BoxBytes entries_{QByteArrayView()};
    quint32 count_ = 0;
    int width_ = 4;
};

bool placeSamples(ChunkPlaces& chunks, const std::vector<ChunkRun>& runs, qint64 fileSize, Samples& samples) {
    size_t next = 0, run = 0;
    for (quint32 chunk = 1; chunk <= chunks.count() && next < samples.size(); ++chunk) {
        if (run + 1 < runs.size() && runs[run + 1].firstChunk == chunk) ++run;
        quint64 position = chunks.next();
        for (quint32 i = 0; i < runs[run].samples && next < samples.size(); ++i, ++next) {
            MovBoxes::Sample& sample = samples[next];
            sample.position = position;
            sample.description = runs[run].description;
            if (position > quint64(fileSize) || sample.size > quint64(fileSize) - position) return false;
            position += sample.size;
        }
    }
    return next == samples.size();
}

} // namespace

void BoxBytes::skip(qsizetype bytes) {
    if (bytes < 0 || bytes > rest_.size()) {
        failed_ = true;
        rest_ = {};
        return;
    }
    rest_ = rest_.sliced(bytes);
}

quint64 BoxBytes::number(int bytes) {
    if (bytes > rest_.size()) {
        skip(bytes);
        return 0;
    }
    quint64 value = 0;
    for (int i = 0; i < bytes; ++i)
        value = value << 8 | quint8(rest_[i]);
    rest_ = rest_.sliced(bytes);
    return value;
}

Result<MovBoxes> MovBoxes::read(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return Error{file.errorString()};
    const qint64 fileSize = file.size();
    // Boxes other than the header are stepped over, never read.
    constexpr int mostBoxes = 100'000;
    qint64 at = 0;
    for (int box = 0; box < mostBoxes && at >= 0 && at + 8 <= fileSize; ++box) {
        if (!file.seek(at)) break;
        const QByteArray head = file.read(16);
        BoxBytes reader(head);
        quint64 size = reader.u32();
        const Type type = reader.u32();
        if (size == 1) size = reader.u64();
        const qint64 length = head.size() - reader.rest().size();
        if (size == 0) size = quint64(fileSize - at);
        if (reader.failed() || size < quint64(length) || size > quint64(fileSize - at)) break;
        if (type == fourCc("moov")) {
            if (size > quint64(largestHeader)) return Error{QStringLiteral("the movie header is too large")};
            file.seek(at + length);
            QByteArray content = file.read(qint64(size) - length);
            if (content.size() != qint64(size) - length || find(content, {fourCc("cmov")}))
                return Error{QStringLiteral("the movie header cannot be read")};
            return of(std::move(content), fileSize);
        }
        at += qint64(size);
    }
    return Error{QStringLiteral("no movie header")};
}

MovBoxes MovBoxes::of(QByteArray content, qint64 fileSize) {
    MovBoxes boxes;
    boxes.bytes_ = std::move(content);
    boxes.fileSize_ = fileSize;
    return boxes;
}

std::vector<MovBoxes::Box> MovBoxes::children(QByteArrayView content) {
    std::vector<Box> boxes;
    qsizetype length = 0;
    while (const std::optional<Box> box = firstBox(content, length)) {
        boxes.push_back(*box);
        content = content.sliced(length);
    }
    return boxes;
}

std::optional<QByteArrayView> MovBoxes::find(QByteArrayView content, std::initializer_list<Type> path) {
    for (const Type type : path) {
        qsizetype length = 0;
        std::optional<Box> box = firstBox(content, length);
        while (box && box->type != type) {
            content = content.sliced(length);
            box = firstBox(content, length);
        }
        if (!box) return std::nullopt;
        content = box->content;
    }
    return content;
}

std::vector<MovBoxes::Track> MovBoxes::tracks() const {
    std::vector<Track> tracks;
    for (const Box& box : children(bytes_)) {
        if (box.type != fourCc("trak")) continue;
        Track track;
        track.content = box.content;
        BoxBytes tkhd(find(box.content, {fourCc("tkhd")}).value_or(QByteArrayView()));
        tkhd.skip(tkhd.u32() >> 24 == 1 ? 16 : 8); // version and flags, two dates
        track.id = tkhd.u32();
        BoxBytes mdhd(find(box.content, {fourCc("mdia"), fourCc("mdhd")}).value_or(QByteArrayView()));
        const bool wide = mdhd.u32() >> 24 == 1;
        mdhd.skip(wide ? 16 : 8);
        track.timeScale = mdhd.u32();
        track.duration = wide ? mdhd.u64() : mdhd.u32();
        BoxBytes hdlr(find(box.content, {fourCc("mdia"), fourCc("hdlr")}).value_or(QByteArrayView()));
        hdlr.skip(8); // version and flags, the component's type
        track.handler = hdlr.u32();
        tracks.push_back(track);
    }
    return tracks;
}

bool MovBoxes::isFragmented() const {
    return find(bytes_, {fourCc("mvex")}).has_value();
}

std::vector<MovBoxes::Box> MovBoxes::sampleDescriptions(const Track& track) {
    const auto stsd = find(track.content, {fourCc("mdia"), fourCc("minf"), fourCc("stbl"), fourCc("stsd")});
    if (!stsd || stsd->size() < 8) return {};
    std::vector<Box> descriptions = children(stsd->sliced(8));
    constexpr qsizetype reservedAndReference = 8;
    for (Box& description : descriptions)
        description.content =
            description.content.sliced(std::min(reservedAndReference, description.content.size()));
    return descriptions;
}

Result<std::vector<MovBoxes::Sample>> MovBoxes::samples(const Track& track) const {
    const Error broken{QStringLiteral("the sample tables contradict each other")};
    const auto stbl = find(track.content, {fourCc("mdia"), fourCc("minf"), fourCc("stbl")});
    const auto stsc = stbl ? find(*stbl, {fourCc("stsc")}) : std::nullopt;
    if (!stsc) return Error{QStringLiteral("no sample tables")};
    Samples samples;
    const auto stsz = find(*stbl, {fourCc("stsz")});
    const auto stz2 = find(*stbl, {fourCc("stz2")});
    if (stsz ? !readSizes(*stsz, fileSize_, samples) : !stz2 || !readCompactSizes(*stz2, samples))
        return broken;
    if (samples.empty()) return samples;
    const auto runs = readChunkRuns(*stsc);
    ChunkPlaces chunks(*stbl);
    if (!runs || runs->empty() || !placeSamples(chunks, *runs, fileSize_, samples)) return broken;
    return samples;
}

} // namespace daylark
