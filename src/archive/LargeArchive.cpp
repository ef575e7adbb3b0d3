#include "archive/LargeArchive.h"

#include "archive/PlistGuard.h"

#include <QFile>
#include <QFileInfo>
#include <QUuid>

#include <algorithm>

namespace daylark {

namespace {

constexpr qint64 mostInMemory = 512 << 20;
constexpr qint64 markSize = 8;

Error brokenTable() {
    return {QStringLiteral("The property list is damaged")};
}
Error tooLarge() {
    return {QStringLiteral("The archive is too large")};
}

quint64 bigEndian(const char* bytes, int width) {
    quint64 value = 0;
    for (int at = 0; at < width; ++at)
        value = value << 8U | quint8(bytes[at]);
    return value;
}

void appendBigEndian(QByteArray& bytes, quint64 value, int width) {
    for (int at = width - 1; at >= 0; --at)
        bytes.append(char(value >> (8 * at)));
}

/// A binary property list in a file, taken into memory with a short datum in the place of each large one.
class ShortenedPlist {
public:
    using Place = LargeArchive::Place;

    ShortenedPlist(QFile& file, QByteArray mark, qint64 large)
        : file_(file)
        , mark_(std::move(mark))
        , large_(large) {}

    /// The places that were left out are then in `places`.
    Result<QByteArray> read() {
        if (!readTable()) return brokenTable();
        findLargeData();
        qint64 size = table_ - markSize + offsets_.size() * 8;
        for (const Cut& cut : cuts_)
            size -= cut.end - cut.begin;
        if (size > mostInMemory) return tooLarge();
        return rebuilt();
    }

    std::vector<Place> places;

private:
    /// An object that is left out, and by how much what follows it moves.
    struct Cut {
        qint64 begin = 0, end = 0, shift = 0;
    };

    QByteArray bytesAt(qint64 offset, qint64 length) {
        return file_.seek(offset) ? file_.read(length) : QByteArray();
    }

    bool readTable() {
        const qint64 end = file_.size() - kPlistTrailerSize;
        trailer_ = bytesAt(end, kPlistTrailerSize);
        if (end < markSize || trailer_.size() != kPlistTrailerSize) return false;
        const int width = quint8(trailer_[6]);
        const quint64 count = bigEndian(trailer_.constData() + 8, 8), table = bigEndian(trailer_.constData() + 24, 8);
        if (width < 1 || width > 8 || table < quint64(markSize) || table > quint64(end) || count == 0 ||
            count > (quint64(end) - table) / quint64(width) || count > quint64(mostInMemory / 16))
            return false;
        table_ = qint64(table);
        const QByteArray bytes = bytesAt(table_, qint64(count) * width);
        if (bytes.size() != qint64(count) * width) return false;
        offsets_.reserve(size_t(count));
        for (qint64 at = 0; at < bytes.size(); at += width) {
            const quint64 offset = bigEndian(bytes.constData() + at, width);
            if (offset < quint64(markSize) || offset >= table) return false;
            offsets_.push_back(qint64(offset));
        }
        return true;
    }

    /// Large data need much room before the next object, so only few objects must be looked at.
    void findLargeData() {
        std::vector<qint64> sorted = offsets_;
        std::sort(sorted.begin(), sorted.end());
        sorted.push_back(table_);
        for (size_t at = 0; at + 1 < sorted.size(); ++at) {
            if (sorted[at + 1] - sorted[at] < large_) continue;
            const QByteArray head = bytesAt(sorted[at], 10);
            if (head.size() < 10 || quint8(head[0]) != 0x4F || (quint8(head[1]) & 0xF0U) != 0x10U) continue;
            const int power = quint8(head[1]) & 0x0FU;
            if (power > 3) continue;
            const quint64 length = bigEndian(head.constData() + 2, 1 << power);
            const qint64 begin = sorted[at] + 2 + (1 << power);
            if (length < quint64(large_) || length > quint64(sorted[at + 1] - begin)) continue;
            places.push_back({begin, qint64(length)});
            const qint64 end = begin + qint64(length), before = cuts_.empty() ? 0 : cuts_.back().shift;
            cuts_.push_back({sorted[at], end, before + standIn(cuts_.size()).size() - (end - sorted[at])});
        }
    }

    /// A datum of more than 14 bytes.
    [[nodiscard]] QByteArray standIn(size_t number) const {
        QByteArray object("\x4F\x10", 2);
        object.append(char(mark_.size() + 4));
        object.append(mark_);
        appendBigEndian(object, number, 4);
        return object;
    }

    [[nodiscard]] qint64 moved(qint64 offset) const {
        const auto next = std::lower_bound(cuts_.begin(), cuts_.end(), offset,
                                           [](const Cut& cut, qint64 at) { return cut.begin < at; });
        return next == cuts_.begin() ? offset : offset + std::prev(next)->shift;
    }

    Result<QByteArray> rebuilt() {
        QByteArray bytes;
        qint64 at = 0;
        const auto keep = [&](qint64 end) {
            const QByteArray part = bytesAt(at, end - at);
            bytes.append(part);
            return part.size() == end - at;
        };
        for (size_t number = 0; number < cuts_.size(); ++number) {
            if (!keep(cuts_[number].begin)) return brokenTable();
            bytes.append(standIn(number));
            at = cuts_[number].end;
        }
        if (!keep(table_)) return brokenTable();
        const qint64 table = bytes.size();
        constexpr int width = 8;
        for (const qint64 offset : offsets_)
            appendBigEndian(bytes, quint64(moved(offset)), width);
        trailer_[6] = char(width);
        bytes.append(trailer_.first(24));
        appendBigEndian(bytes, quint64(table), 8);
        return bytes;
    }

    QFile& file_;
    QByteArray mark_, trailer_;
    qint64 large_, table_ = 0;
    std::vector<qint64> offsets_;
    std::vector<Cut> cuts_;
};

} // namespace

Result<LargeArchive> LargeArchive::read(const QString& path, const ArchiveClasses& classes, qint64 large) {
    QFile file(path);
    if (!QFileInfo(path).isFile()) return Error{QStringLiteral("%1 is no file").arg(path)}; // a pipe would never end
    if (!file.open(QIODevice::ReadOnly))
        return Error{QStringLiteral("could not read %1: %2").arg(path, file.errorString())};
    LargeArchive archive;
    QByteArray bytes;
    if (file.size() <= large || !file.peek(markSize).startsWith("bplist")) {
        if (file.size() > mostInMemory) return tooLarge();
        bytes = file.readAll();
    } else {
        archive.mark_ = QUuid::createUuid().toRfc4122();
        ShortenedPlist shortened(file, archive.mark_, large);
        Result<QByteArray> read = shortened.read();
        if (!read) return read.error();
        bytes = *std::move(read);
        archive.places_ = std::move(shortened.places);
    }
    Result<Value> root = unarchiveRoot(bytes, classes);
    if (!root) return root.error();
    archive.root_ = *std::move(root);
    return archive;
}

std::optional<LargeArchive::Place> LargeArchive::left(const QByteArray& data) const {
    if (mark_.isEmpty() || data.size() != mark_.size() + 4 || !data.startsWith(mark_)) return std::nullopt;
    const quint64 number = bigEndian(data.constData() + mark_.size(), 4);
    return number < places_.size() ? std::optional(places_[size_t(number)]) : std::nullopt;
}

} // namespace daylark
