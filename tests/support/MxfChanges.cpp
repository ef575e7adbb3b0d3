#include "support/MxfChanges.h"

#include <QtEndian>

#include <algorithm>

namespace daylark::truth {
namespace {

/// The entries of the first index table segment.
struct Entries {
    char* count = nullptr; ///< 32 bits
    char* duration = nullptr;
    char* first = nullptr;
    int each = 0;
    int all = 0;
    [[nodiscard]] char* at(int unit) const { return first + qsizetype(unit) * each; }
};

Entries entriesOf(QByteArray& file) {
    Entries entries;
    const qsizetype segment = file.indexOf(QByteArray::fromHex("060e2b34025301010d01020101100100"));
    const qsizetype duration = file.indexOf(QByteArray::fromHex("3f0d0008"), segment);
    const qsizetype array = file.indexOf(QByteArray::fromHex("3f0a"), duration);
    constexpr qsizetype head = 12; // tag, length, count and size of the entries
    if (segment < 0 || duration < 0 || array < 0 || array + head > file.size()) return entries;
    entries.duration = file.data() + duration + 4;
    entries.count = file.data() + array + 4;
    entries.first = file.data() + array + head;
    entries.all = qFromBigEndian<qint32>(entries.count);
    entries.each = qFromBigEndian<qint32>(entries.count + 4);
    return entries;
}

} // namespace

bool changeMxfDurations(QByteArray& file, qint64 from, qint64 to) {
    QByteArray said = QByteArray::fromHex("02020008") + QByteArray(8, 0), instead = said;
    qToBigEndian(from, said.data() + 4);
    qToBigEndian(to, instead.data() + 4);
    const bool there = file.contains(said);
    file.replace(said, instead);
    return there;
}

bool leaveOutOfMxfIndex(QByteArray& file, int unit) {
    const Entries entries = entriesOf(file);
    if (unit >= entries.all) return false;
    std::move(entries.at(unit + 1), entries.at(entries.all), entries.at(unit));
    qToBigEndian<qint32>(entries.all - 1, entries.count);
    qToBigEndian<qint64>(entries.all - 1, entries.duration);
    return changeMxfDurations(file, entries.all, entries.all - 1);
}

bool exchangeInMxfIndex(QByteArray& file, int unit) {
    const Entries entries = entriesOf(file);
    if (unit + 1 >= entries.all) return false;
    std::swap_ranges(entries.at(unit), entries.at(unit + 1), entries.at(unit + 1));
    return true;
}

} // namespace daylark::truth
