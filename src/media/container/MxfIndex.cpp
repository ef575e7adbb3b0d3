#include "media/container/MxfIndex.h"

#include "media/container/MovBoxes.h"

#include <algorithm>
#include <initializer_list>

namespace daylark {
namespace {

using Key = std::array<quint8, 16>;

constexpr int anyByte = -1; // the version of the dictionary
constexpr qint64 longestHead = 16 + 9;
constexpr qint64 largestSet = qint64(16) << 20;
constexpr int mostSets = 100'000; // in front of a partition's essence

bool startsWith(const Key& key, std::initializer_list<int> pattern) {
    return std::equal(pattern.begin(), pattern.end(), key.begin(),
                      [](int wanted, quint8 byte) { return wanted == anyByte || wanted == int(byte); });
}

bool isUniversal(const Key& key) {
    return startsWith(key, {0x06, 0x0e, 0x2b, 0x34});
}

bool isPartitionPack(const Key& key) {
    return startsWith(key,
                      {0x06, 0x0e, 0x2b, 0x34, 0x02, 0x05, 0x01, anyByte, 0x0d, 0x01, 0x02, 0x01, 0x01}) &&
           key[13] >= 2 && key[13] <= 4;
}

bool isPartitionList(const Key& key) {
    return startsWith(
        key, {0x06, 0x0e, 0x2b, 0x34, 0x02, 0x05, 0x01, anyByte, 0x0d, 0x01, 0x02, 0x01, 0x01, 0x11, 0x01});
}

bool isIndexSegment(const Key& key) {
    return startsWith(
        key, {0x06, 0x0e, 0x2b, 0x34, 0x02, 0x53, 0x01, anyByte, 0x0d, 0x01, 0x02, 0x01, 0x01, 0x10, 0x01});
}

bool isEssence(const Key& key) {
    return startsWith(key, {0x06, 0x0e, 0x2b, 0x34, 0x01, 0x02, 0x01});
}

bool isSystemItem(const Key& key) {
    return startsWith(key, {0x06, 0x0e, 0x2b, 0x34, 0x02, anyByte, 0x01, anyByte, 0x0d, 0x01, 0x03, 0x01});
}

/// Elements are told apart by their last four bytes, the number of the track.
bool isOfTrack(const Key& key, const Key& other) {
    return isEssence(key) && std::equal(key.begin() + 12, key.end(), other.begin() + 12);
}

} // namespace

QByteArray MxfIndex::bytesAt(qint64 position, qint64 size) const {
    const bool isThere = position >= 0 && position <= size_ && file_->seek(position);
    return isThere ? file_->read(size) : QByteArray();
}

std::optional<MxfIndex::Element> MxfIndex::elementAt(qint64 position) const {
    const QByteArray head = bytesAt(position, longestHead);
    Element element;
    if (head.size() < qsizetype(element.key.size()) + 1) return std::nullopt;
    std::copy_n(head.begin(), element.key.size(), element.key.begin());
    if (!isUniversal(element.key)) return std::nullopt;
    BoxBytes rest(QByteArrayView(head).sliced(qsizetype(element.key.size())));
    quint64 length = rest.u8();
    if (length & 0x80) { // so many bytes of length follow
        const int bytes = int(length & 0x7f);
        if (bytes > 8) return std::nullopt;
        length = 0;
        for (int i = 0; i < bytes; ++i)
            length = length << 8 | rest.u8();
    }
    element.position = position;
    element.value = position + head.size() - rest.rest().size();
    if (rest.failed() || length > quint64(size_ - element.value)) return std::nullopt;
    element.length = qint64(length);
    return element;
}

std::optional<MxfIndex::Element> MxfIndex::pictureIn(qint64 unit, const Element& picture) const {
    constexpr int mostElements = 1000;
    std::optional<Element> found;
    qint64 at = start(unit);
    for (int i = 0; at < end(unit); ++i) {
        const std::optional<Element> element = elementAt(at);
        if (!element || i == mostElements) return std::nullopt;
        if (isOfTrack(element->key, picture.key)) {
            if (found) return std::nullopt;
            found = element;
        }
        at = element->end();
    }
    return at == end(unit) ? found : std::nullopt;
}

/// By the list at the file's end, which a file that was cut short or is still being written doesn't have.
bool MxfIndex::readPartitions() {
    const QByteArray tail = bytesAt(std::max<qint64>(0, size_ - 4), 4);
    const qint64 listed = BoxBytes(tail).u32();
    const std::optional<Element> list = elementAt(size_ - std::min(size_, listed));
    if (!list || !isPartitionList(list->key) || list->end() != size_ || list->length > largestSet)
        return false;
    const QByteArray bytes = bytesAt(list->value, list->length);
    BoxBytes entries{QByteArrayView(bytes)};
    qint64 before = 0;
    while (entries.rest().size() >= 16) {
        Partition partition;
        partition.container = entries.u32();
        partition.position = entries.i64();
        const std::optional<Element> pack = elementAt(partition.position);
        if (!pack || !isPartitionPack(pack->key) || (partitions_.empty() && partition.position != 0))
            return false;
        const QByteArray content = bytesAt(pack->value, std::min<qint64>(pack->length, 88));
        BoxBytes fields{QByteArrayView(content)};
        fields.skip(8);
        if (fields.i64() != partition.position || fields.i64() != before) return false;
        fields.skip(8 + 8 + 8 + 4);
        partition.firstOffset = fields.i64();
        if (fields.u32() != partition.container || fields.failed()) return false;
        if (!partitions_.empty()) {
            if (partition.position <= before) return false;
            partitions_.back().end = partition.position;
        }
        before = partition.position;
        partitions_.push_back(partition);
    }
    if (partitions_.empty()) return false;
    partitions_.back().end = list->position;
    return std::all_of(partitions_.begin(), partitions_.end(),
                       [this](Partition& partition) { return walkPartition(partition); });
}

/// Between these two bytes.
bool MxfIndex::holdsNoEssence(qint64 from, qint64 to) const {
    while (from < to) {
        const std::optional<Element> element = elementAt(from);
        if (!element || isEssence(element->key)) return false;
        from = element->end();
    }
    return from == to;
}

/// Up to the essence, which comes last in a partition.
bool MxfIndex::walkPartition(Partition& partition) {
    qint64 at = partition.position;
    for (int i = 0; at < partition.end; ++i) {
        const std::optional<Element> element = elementAt(at);
        if (!element || i == mostSets) return false;
        if (isEssence(element->key) || isSystemItem(element->key)) {
            partition.essence = element;
            return true;
        }
        if (isIndexSegment(element->key)) {
            std::optional<Segment> segment = segmentOf(*element);
            if (!segment) return false;
            segments_.push_back(std::move(*segment));
        }
        at = element->end();
    }
    return at == partition.end;
}

std::optional<MxfIndex::Segment> MxfIndex::segmentOf(const Element& element) const {
    if (element.length > largestSet) return std::nullopt;
    const QByteArray bytes = bytesAt(element.value, element.length);
    BoxBytes items{QByteArrayView(bytes)};
    Segment segment;
    while (items.rest().size() >= 4) {
        const quint16 tag = items.u16();
        const qsizetype size = items.u16();
        if (size > items.rest().size()) return std::nullopt;
        BoxBytes value(items.rest().first(size));
        items.skip(size);
        switch (tag) {
        case 0x3f05:
            segment.unitBytes = value.u32();
            break;
        case 0x3f06:
            segment.index = value.u32();
            break;
        case 0x3f07:
            segment.container = value.u32();
            break;
        case 0x3f0c:
            segment.start = value.i64();
            break;
        case 0x3f0d:
            segment.duration = value.i64();
            break;
        case 0x3f0a: {
            const quint32 count = value.u32(), each = value.u32();
            if (count > 0 && (each < 11 || quint64(count) * each > quint64(value.rest().size())))
                return std::nullopt;
            for (quint32 i = 0; i < count; ++i) {
                segment.reorders = value.u8() != 0 || segment.reorders;
                value.skip(2);
                segment.offsets.push_back(value.i64());
                value.skip(qsizetype(each) - 11);
            }
            break;
        }
        default:
            break;
        }
        if (value.failed()) return std::nullopt;
    }
    return segment;
}

/// Of all edit units within the essence container; empty when the segments don't say one thing.
std::vector<qint64> MxfIndex::offsets(qint64 count) {
    std::stable_sort(segments_.begin(), segments_.end(),
                     [](const Segment& a, const Segment& b) { return a.start < b.start; });
    std::vector<qint64> offsets;
    for (size_t i = 0; i < segments_.size(); ++i) {
        const Segment& segment = segments_[i];
        if (segment.reorders || segment.index != segments_[0].index ||
            segment.container != segments_[0].container || segment.unitBytes != segments_[0].unitBytes)
            return {};
        const bool repeated = i > 0 && segment.start == segments_[i - 1].start;
        if (repeated &&
            (segment.offsets != segments_[i - 1].offsets || segment.duration != segments_[i - 1].duration))
            return {};
        if (repeated) continue;
        if (segment.unitBytes) {
            if (i > 0 || segment.start != 0 || (segment.duration != 0 && segment.duration != count))
                return {};
            for (qint64 unit = 0; unit < count; ++unit)
                offsets.push_back(unit * segment.unitBytes);
            continue;
        }
        if (segment.start != qint64(offsets.size()) || segment.duration != qint64(segment.offsets.size()))
            return {};
        offsets.insert(offsets.end(), segment.offsets.begin(), segment.offsets.end());
    }
    return qint64(offsets.size()) == count ? offsets : std::vector<qint64>();
}

/// Gives the edit units their places in the file; false where one would lie outside the essence.
bool MxfIndex::place(const std::vector<qint64>& offsets) {
    std::vector<Partition> parts;
    for (const Partition& partition : partitions_) {
        if (!partition.essence) continue;
        if (partition.container != segments_[0].container ||
            (parts.empty() ? partition.firstOffset != 0 : partition.firstOffset <= parts.back().firstOffset))
            return false;
        parts.push_back(partition);
    }
    if (parts.empty() || offsets[0] != 0) return false;
    const Element& first = *parts[0].essence;
    const bool isClip = isEssence(first.key) && offsets.size() > 1 && first.length > offsets.back();
    if (isClip && (parts.size() > 1 || !holdsNoEssence(first.end(), parts[0].end))) return false;
    if (isClip) clip_ = first;
    size_t part = 0;
    for (const qint64 offset : offsets) {
        while (part + 1 < parts.size() && offset >= parts[part + 1].firstOffset)
            ++part;
        const qint64 begin = isClip ? first.value : parts[part].essence->position;
        const qint64 within = offset - parts[part].firstOffset;
        if (within < 0 || within >= parts[part].end - begin) return false;
        if (!starts_.empty() && begin + within <= starts_.back()) return false;
        starts_.push_back(begin + within);
    }
    end_ = isClip ? first.end() : parts.back().end;
    return part + 1 == parts.size();
}

Result<MxfIndex> MxfIndex::read(const QString& path, qint64 count) {
    constexpr qint64 mostUnits = 1 << 24, smallestUnit = 16; // bytes
    MxfIndex index;
    index.file_ = std::make_unique<QFile>(path);
    if (!index.file_->open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return Error{QStringLiteral("cannot be read")};
    index.size_ = index.file_->size();
    if (count < 1 || count > std::min(mostUnits, index.size_ / smallestUnit))
        return Error{QStringLiteral("no likely length")};
    if (!index.readPartitions()) return Error{QStringLiteral("no sound partitions")};
    const std::vector<qint64> offsets = index.offsets(count);
    if (offsets.empty() || !index.place(offsets)) return Error{QStringLiteral("no sound index")};
    return index;
}

} // namespace daylark
