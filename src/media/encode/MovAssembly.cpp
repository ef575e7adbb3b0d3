#include "media/encode/MovAssembly.h"

#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <unistd.h>

namespace daylark {
namespace {

using BoxType = MovBoxes::Type;

constexpr BoxType four(const char (&text)[5]) {
    return MovBoxes::fourCc(text);
}

template<class Number>
void appendBig(QByteArray& bytes, Number number) {
    const Number big = qToBigEndian(number);
    bytes.append(reinterpret_cast<const char*>(&big), sizeof big);
}

template<class Number>
void put(QByteArray& bytes, qsizetype at, Number number) {
    if (at + qsizetype(sizeof number) <= bytes.size()) qToBigEndian(number, bytes.data() + at);
}

QByteArray boxed(BoxType type, QByteArrayView content) {
    QByteArray bytes;
    appendBig<quint32>(bytes, quint32(content.size() + 8));
    appendBig<quint32>(bytes, type);
    return bytes.append(content);
}

/// Every sample lies in the file itself.
bool isSelfContained(QByteArrayView track) {
    const auto references = MovBoxes::find(track, {four("mdia"), four("minf"), four("dinf"), four("dref")});
    if (!references || references->size() < 8) return true; // nothing says otherwise
    for (const auto& entry : MovBoxes::children(references->sliced(8)))
        if (entry.content.size() < 4 || (entry.content[3] & 1) == 0) return false;
    return true;
}

/// Uncompressed sound of the first QuickTime versions counts its samples as of one byte each; the description says how long a
/// run of them is. 0: the table's own sizes hold.
struct OldSound {
    quint32 samples = 0, bytes = 0;
};
OldSound oldSoundOf(const MovBoxes::Track& track, QByteArrayView sampleTable) {
    const auto sizes = MovBoxes::find(sampleTable, {four("stsz")});
    const auto descriptions = MovBoxes::sampleDescriptions(track);
    if (track.handler != four("soun") || !sizes || descriptions.empty()) return {};
    BoxBytes table(*sizes);
    table.skip(4);
    if (table.u32() != 1) return {};
    BoxBytes entry(descriptions.front().content);
    const quint16 version = entry.u16();
    entry.skip(6);
    const quint32 channels = entry.u16(), bits = entry.u16();
    entry.skip(8);
    if (version == 0) return {1, channels * bits / 8};
    const quint32 samples = entry.u32();
    entry.skip(4);
    const quint32 bytes = entry.u32();
    return version == 1 && !entry.failed() && samples > 0 ? OldSound{samples, bytes} : OldSound();
}

struct ChunkTable {
    std::vector<quint64> offsets;
    std::vector<quint32> counts; ///< samples in each
};
std::optional<ChunkTable> chunkTableOf(QByteArrayView sampleTable) {
    ChunkTable table;
    const auto narrow = MovBoxes::find(sampleTable, {four("stco")}), wide = MovBoxes::find(sampleTable, {four("co64")});
    const auto runs = MovBoxes::find(sampleTable, {four("stsc")});
    if ((!narrow && !wide) || !runs) return std::nullopt;
    BoxBytes offsets(narrow ? *narrow : *wide);
    offsets.skip(4);
    const quint32 count = offsets.u32();
    if (quint64(count) * (narrow ? 4 : 8) > quint64(offsets.rest().size())) return std::nullopt;
    for (quint32 i = 0; i < count; ++i)
        table.offsets.push_back(narrow ? offsets.u32() : offsets.u64());
    table.counts.resize(count, 0);
    BoxBytes entries(*runs);
    entries.skip(4);
    const quint32 entryCount = entries.u32();
    if (quint64(entryCount) * 12 > quint64(entries.rest().size())) return std::nullopt;
    for (quint32 i = 0; i < entryCount; ++i) {
        const quint32 first = entries.u32(), samples = entries.u32();
        entries.skip(4);
        if (first < 1 || (i == 0 && first != 1)) return std::nullopt;
        for (quint32 chunk = first - 1; chunk < count; ++chunk) {
            if (i + 1 < entryCount) {
                BoxBytes next(entries.rest());
                if (chunk + 1 >= next.u32()) break;
            }
            table.counts[chunk] = samples;
        }
    }
    return table;
}

Result<void> writeAll(int handle, const QByteArray& bytes) {
    for (qsizetype done = 0; done < bytes.size();) {
        const ssize_t written = ::write(handle, bytes.constData() + done, size_t(bytes.size() - done));
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return Error{QString::fromLocal8Bit(std::strerror(errno))};
        done += written;
    }
    return {};
}

} // namespace

Result<MovAssembly> MovAssembly::of(const QString& movie, bool withSound) {
    Result<MovBoxes> boxes = MovBoxes::read(movie);
    if (!boxes) return boxes.error();
    if (boxes->isFragmented()) return Error{QStringLiteral("its samples lie in fragments")};
    const auto header = MovBoxes::find(boxes->movie(), {four("mvhd")});
    if (!header) return Error{QStringLiteral("no movie header")};
    BoxBytes bytes(*header);
    const bool wide = bytes.u8() == 1;
    bytes.skip(wide ? 19 : 11);
    MovAssembly assembly;
    assembly.timeScale_ = bytes.u32();
    if (bytes.failed() || assembly.timeScale_ == 0) return Error{QStringLiteral("no time scale")};
    for (const auto& track : boxes->tracks())
        assembly.nextId_ = std::max(assembly.nextId_, track.id + 1);
    assembly.files_.push_back({movie, std::move(*boxes)});
    assembly.soundChanges_ = !withSound;
    if (const Result<void> added = assembly.addTracks(0, withSound, false, 0); !added) return added.error();
    if (const Result<void> read = assembly.readOtherBoxes(); !read) return read.error();
    return assembly;
}

Result<void> MovAssembly::addSound(const QString& file) {
    Result<MovBoxes> boxes = MovBoxes::read(file);
    if (!boxes) return boxes.error();
    files_.push_back({file, std::move(*boxes)});
    soundChanges_ = true;
    return addTracks(int(files_.size()) - 1, true, true, nextId_);
}

Result<void> MovAssembly::addTracks(int file, bool withSound, bool onlySound, quint32 idsFrom) {
    for (MovBoxes::Track& track : files_[size_t(file)].boxes.tracks()) {
        const bool isSound = track.handler == four("soun");
        if (isSound ? !withSound : onlySound) continue;
        const auto sampleTable = MovBoxes::find(track.content, {four("mdia"), four("minf"), four("stbl")});
        if (!sampleTable || !isSelfContained(track.content)) return Error{QStringLiteral("a track without samples of its own")};
        const Result<std::vector<MovBoxes::Sample>> samples = files_[size_t(file)].boxes.samples(track);
        const auto table = samples ? chunkTableOf(*sampleTable) : std::nullopt; // in order, by then
        if (!table) return Error{QStringLiteral("tables that contradict each other")};
        const OldSound old = oldSoundOf(track, *sampleTable);
        Track kept{file, idsFrom ? idsFrom++ : track.id, std::move(track), {}};
        size_t sample = 0;
        for (size_t i = 0; i < table->offsets.size(); ++i) {
            Chunk chunk{qint64(table->offsets[i]), 0, 0};
            if (old.samples) {
                chunk.length = qint64(table->counts[i]) / old.samples * old.bytes;
            } else {
                for (quint32 n = 0; n < table->counts[i] && sample < samples->size(); ++n)
                    chunk.length += (*samples)[sample++].size;
            }
            kept.chunks.push_back(chunk);
        }
        tracks_.push_back(std::move(kept));
    }
    return {};
}

/// What tells readers the kind of file comes first; small boxes that only speak about the movie go with it.
Result<void> MovAssembly::readOtherBoxes() {
    constexpr qint64 most = qint64(16) << 20;
    QFile file(files_.front().path);
    if (!file.open(QIODevice::ReadOnly)) return Error{file.errorString()};
    for (qint64 at = 0; at + 8 <= file.size();) {
        file.seek(at);
        const QByteArray head = file.read(16);
        BoxBytes bytes(head);
        quint64 size = bytes.u32();
        const BoxType type = bytes.u32();
        if (size == 1) size = bytes.u64();
        if (size < 8 || size > quint64(file.size() - at)) break; // to the end, or nonsense behind the last box
        const bool isKept = type == four("ftyp") || type == four("uuid") || type == four("udta");
        if (isKept && qint64(size) <= most) {
            file.seek(at);
            const QByteArray box = file.read(qint64(size));
            before_ = type == four("ftyp") ? box + before_ : before_ + box;
        }
        at += qint64(size);
    }
    return {};
}

Result<void> MovAssembly::write(int handle, const ExportWatch& watch) {
    if (const Result<void> written = writeAll(handle, before_); !written) return written;
    if (const Result<void> copied = copyChunks(handle, watch); !copied) return copied;
    return writeAll(handle, header());
}

/// The tracks go side by side as far as they have come, each in its own order.
Result<void> MovAssembly::copyChunks(int handle, const ExportWatch& watch) {
    struct Place {
        double share = 0; ///< of its track
        Track* track = nullptr;
        Chunk* chunk = nullptr;
    };
    std::vector<Place> places;
    qint64 total = 0;
    for (Track& track : tracks_)
        for (size_t i = 0; i < track.chunks.size(); ++i) {
            places.push_back({double(i) / double(track.chunks.size()), &track, &track.chunks[i]});
            total += track.chunks[i].length;
        }
    // Tables may name the same bytes again and again; no movie does so throughout.
    qint64 there = 0;
    for (const File& file : files_)
        there += QFileInfo(file.path).size();
    if (total > 2 * there) return Error{QStringLiteral("tables that contradict each other")};
    std::stable_sort(places.begin(), places.end(), [](const Place& a, const Place& b) { return a.share < b.share; });
    QByteArray head;
    appendBig<quint32>(head, 1);
    appendBig<quint32>(head, four("mdat"));
    appendBig<quint64>(head, quint64(total + 16));
    if (const Result<void> written = writeAll(handle, head); !written) return written;

    std::vector<std::unique_ptr<QFile>> sources;
    for (const File& file : files_) {
        sources.push_back(std::make_unique<QFile>(file.path));
        if (!sources.back()->open(QIODevice::ReadOnly | QIODevice::Unbuffered)) return Error{sources.back()->errorString()};
    }
    qint64 done = 0;
    const qint64 begin = before_.size() + head.size();
    for (const Place& place : places) {
        QFile& source = *sources[size_t(place.track->file)];
        place.chunk->to = begin + done;
        source.seek(place.chunk->from);
        for (qint64 left = place.chunk->length; left > 0;) {
            constexpr qint64 most = qint64(4) << 20;
            const QByteArray bytes = source.read(std::min(left, most));
            if (bytes.isEmpty()) return Error{QStringLiteral("the movie ends too early")};
            if (const Result<void> written = writeAll(handle, bytes); !written) return written;
            left -= bytes.size();
            done += bytes.size();
            watch.tell(done, total);
            if (watch.isCancelled()) return Error{QStringLiteral("cancelled")};
        }
    }
    return {};
}

QByteArray MovAssembly::header() const {
    QByteArray content;
    const auto addTracksOf = [&](int file) {
        for (const Track& track : tracks_)
            if (track.file == file) content += boxed(four("trak"), trackBox(track, track.boxes.content, 0));
    };
    bool tracksStand = false;
    quint64 longest = 0;
    for (const Track& track : tracks_)
        if (const auto head = MovBoxes::find(track.boxes.content, {four("tkhd")})) {
            BoxBytes bytes(*head);
            const bool wide = bytes.u8() == 1;
            bytes.skip(wide ? 27 : 19);
            const quint64 duration = wide ? bytes.u64() : bytes.u32();
            if (!bytes.failed() && duration != (wide ? ~0ULL : 0xFFFFFFFFULL)) longest = std::max(longest, duration);
        }
    for (const auto& box : MovBoxes::children(files_.front().boxes.movie())) {
        if (box.type == four("trak")) {
            if (tracksStand) continue;
            tracksStand = true;
            for (int file = 0; file < int(files_.size()); ++file)
                addTracksOf(file);
            continue;
        }
        QByteArray bytes = box.content.toByteArray();
        if (box.type == four("mvhd") && !bytes.isEmpty()) {
            const bool wide = bytes[0] == 1;
            if (soundChanges_ && wide)
                put<quint64>(bytes, 24, longest);
            else if (soundChanges_)
                put<quint32>(bytes, 16, quint32(std::min<quint64>(longest, 0xFFFFFFFFU)));
            put<quint32>(bytes, bytes.size() - 4, nextId_ + quint32(files_.size()) - 1);
        }
        content += boxed(box.type, bytes);
    }
    return boxed(four("moov"), content);
}

/// A track's box, down to the table that says where its samples lie.
QByteArray MovAssembly::trackBox(const Track& track, QByteArrayView content, int depth) const {
    constexpr BoxType way[] = {four("mdia"), four("minf"), four("stbl")};
    QByteArray bytes;
    for (const auto& box : MovBoxes::children(content)) {
        if (depth < 3 && box.type == way[depth]) {
            bytes += boxed(box.type, trackBox(track, box.content, depth + 1));
        } else if (depth == 3 && (box.type == four("stco") || box.type == four("co64"))) {
            bytes += boxed(four("co64"), offsets(track));
        } else if (depth == 0 && box.type == four("tref")) {
            const QByteArray kept = references(box.content);
            if (!kept.isEmpty()) bytes += boxed(box.type, kept);
        } else if (depth == 0 && box.type == four("tkhd") && !box.content.isEmpty()) {
            QByteArray head = box.content.toByteArray();
            put<quint32>(head, head[0] == 1 ? 20 : 12, track.id);
            bytes += boxed(box.type, head);
        } else {
            bytes += boxed(box.type, box.content);
        }
    }
    return bytes;
}

QByteArray MovAssembly::offsets(const Track& track) const {
    QByteArray bytes(4, '\0');
    appendBig<quint32>(bytes, quint32(track.chunks.size()));
    for (const Chunk& chunk : track.chunks)
        appendBig<quint64>(bytes, quint64(chunk.to));
    return bytes;
}

/// Without those to tracks that are gone.
QByteArray MovAssembly::references(QByteArrayView content) const {
    QByteArray bytes;
    for (const auto& kind : MovBoxes::children(content)) {
        QByteArray ids;
        BoxBytes reader(kind.content);
        while (reader.rest().size() >= 4) {
            const quint32 id = reader.u32();
            if (std::any_of(tracks_.begin(), tracks_.end(), [id](const Track& track) { return track.id == id; }))
                appendBig<quint32>(ids, id);
        }
        if (!ids.isEmpty()) bytes += boxed(kind.type, ids);
    }
    return bytes;
}

} // namespace daylark
