// MXF files from anywhere: their partitions and index tables read, their edit units looked into.
#include "media/container/MxfIndex.h"

#include "SeedFolder.h"

#include <QTemporaryDir>
#include <QtEndian>

#include <algorithm>
#include <cstdint>
#include <cstdlib>

using namespace daylark;

namespace {

constexpr int units = 4;

template<class Number>
QByteArray number(Number value) {
    QByteArray bytes(qsizetype(sizeof value), '\0');
    qToBigEndian(value, bytes.data());
    return bytes;
}

QByteArray element(const char* key, const QByteArray& value) {
    return QByteArray::fromHex(key) + char(0x83) + number(qint32(value.size())).sliced(1) + value;
}

QByteArray item(quint16 tag, const QByteArray& value) {
    return number(tag) + number(quint16(value.size())) + value;
}

QByteArray partition(const char* key, qint64 at, qint64 before, qint32 container) {
    return element(key, QByteArray(8, '\0') + number(at) + number(before) + QByteArray(28, '\0') +
                            number(qint64(0)) + number(container) + QByteArray(20, '\0'));
}

/// A header partition with an index table and four pictures, a footer, and the list of both.
QByteArray seedFile() {
    const QByteArray picture = element("060e2b34010201010d01030115010501", QByteArray(40, '\1'));
    QByteArray entries = number(qint32(units)) + number(qint32(11)), essence;
    for (qint64 n = 0; n < units; ++n) {
        entries += QByteArray(3, '\0') + number(n * picture.size());
        essence += picture;
    }
    const QByteArray table = element("060e2b34025301010d01020101100100",
                                     item(0x3f0c, number(qint64(0))) + item(0x3f0d, number(qint64(units))) +
                                         item(0x3f05, number(qint32(0))) + item(0x3f06, number(qint32(2))) +
                                         item(0x3f07, number(qint32(1))) + item(0x3f0a, entries));
    const QByteArray head = partition("060e2b34020501010d01020101020400", 0, 0, 1) + table + essence;
    const QByteArray foot = partition("060e2b34020501010d01020101040400", head.size(), 0, 0);
    const QByteArray places =
        number(qint32(1)) + number(qint64(0)) + number(qint32(0)) + number(qint64(head.size()));
    const qint32 listSize = 20 + qint32(places.size()) + 4;
    return head + foot + element("060e2b34020501010d01020101110100", places + number(listSize));
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    fuzz::seedCorpus(*argc, *argv, "units", seedFile());
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("fuzzed.mxf")));
    if (!file.open(QIODevice::WriteOnly)) return 0;
    file.write(reinterpret_cast<const char*>(data), qint64(size));
    file.close();
    const auto index = MxfIndex::read(file.fileName(), units);
    if (!index) return 0;
    for (qint64 n = 0; n < index->count(); ++n) {
        if (index->start(n) < 0 || index->end(n) <= index->start(n) || index->end(n) > qint64(size))
            std::abort();
        const auto first = index->elementAt(index->start(n));
        if (first && index->pictureIn(n, *first) && first->end() > qint64(size)) std::abort();
    }
    return 0;
}
