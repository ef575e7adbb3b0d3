#include "support/QuickTimeEdits.h"

#include <QFile>
#include <QtEndian>

#include <cmath>
#include <optional>

namespace daylark::truth {
namespace {

struct Box {
    qsizetype start = 0, size = 0; // the size counts the eight bytes of the box's head
};

quint32 numberAt(const QByteArray& bytes, qsizetype at) {
    return at + 4 <= bytes.size() ? qFromBigEndian<quint32>(bytes.constData() + at) : 0;
}

std::optional<Box> boxIn(const QByteArray& bytes, Box parent, const char* type) {
    for (qsizetype at = parent.start + 8; at + 8 <= parent.start + parent.size;) {
        const auto size = qsizetype(numberAt(bytes, at));
        if (size < 8) return std::nullopt;
        if (bytes.mid(at + 4, 4) == type) return Box{at, size};
        at += size;
    }
    return std::nullopt;
}

QByteArray number(qint64 value) {
    QByteArray bytes(4, '\0');
    qToBigEndian(quint32(qint32(value)), bytes.data());
    return bytes;
}

QByteArray boxOf(const char* type, const QByteArray& content) {
    return number(content.size() + 8) + type + content;
}

void grow(QByteArray& bytes, Box box, qsizetype by) {
    bytes.replace(box.start, 4, number(box.size + by));
}

} // namespace

bool replaceEditList(const QString& path, const std::vector<Edit>& edits, int mediaTicks, int movieTicks) {
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite)) return false;
    QByteArray bytes = file.readAll();
    const auto movie = boxIn(bytes, {-8, bytes.size() + 8}, "moov");
    const auto mediaData = boxIn(bytes, {-8, bytes.size() + 8}, "mdat");
    if (!movie || !mediaData || mediaData->start > movie->start) return false;
    const auto track = boxIn(bytes, *movie, "trak");
    if (!track) return false;
    qint64 skipped = 0;
    const auto old = boxIn(bytes, *track, "edts");
    if (old)
        if (const auto list = boxIn(bytes, *old, "elst")) {
            const qsizetype last = list->start + 16 + 12 * (qsizetype(numberAt(bytes, list->start + 12)) - 1);
            skipped = std::max(0, qint32(numberAt(bytes, last + 4)));
        }
    QByteArray lines;
    for (const Edit& edit : edits)
        lines += number(qint64(edit.frames) * movieTicks) +
                 number(edit.from < 0 ? -1 : skipped + qint64(edit.from) * mediaTicks) +
                 number(qint64(std::lround(edit.rate * (1 << 16))));
    const QByteArray box = boxOf("edts", boxOf("elst", number(0) + number(qint64(edits.size())) + lines));
    const auto header = boxIn(bytes, *track, "tkhd");
    if (!header) return false;
    const Box place = old ? *old : Box{header->start + header->size, 0};
    bytes.replace(place.start, place.size, box);
    grow(bytes, *track, box.size() - place.size);
    grow(bytes, *movie, box.size() - place.size);
    return file.seek(0) && file.resize(0) && file.write(bytes) == bytes.size();
}

} // namespace daylark::truth
