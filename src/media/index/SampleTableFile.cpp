#include "media/index/SampleTableFile.h"

#include "platform/AtomicFile.h"

#include <QCryptographicHash>
#include <QDataStream>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <limits>

extern "C" {
#include <libavutil/crc.h>
}

namespace daylark {
namespace {

constexpr quint32 magic = 0x444C5354; // "DLST"
constexpr quint32 layout = 2;         // of these files; one of another layout is made anew
constexpr qint64 largest = qint64(256) << 20;
constexpr auto streamVersion = QDataStream::Qt_6_0;

quint32 sumOf(const QByteArray& bytes, qsizetype from) {
    return av_crc(av_crc_get_table(AV_CRC_32_IEEE), 0,
                  reinterpret_cast<const uint8_t*>(bytes.constData()) + from, size_t(bytes.size() - from));
}

QString fileOf(const QString& folder, const QString& path) {
    const QByteArray name = QCryptographicHash::hash(path.toUtf8(), QCryptographicHash::Sha1).toHex();
    return QDir(folder).filePath(QString::fromLatin1(name) + QStringLiteral(".table"));
}

/// A table is one library's view of a file: another version may see more.
quint32 libraryVersion() {
    return avformat_version() ^ avcodec_version() << 7;
}

bool readPackets(QDataStream& in, const TableFileKey& key, SampleTable& table) {
    constexpr qint64 bytesOfOne = 8 + 8 + 4 + 4 + 1 + 2;
    quint32 count = 0;
    in >> count;
    if (qint64(count) * bytesOfOne > in.device()->bytesAvailable()) return false;
    table.packets.resize(count);
    for (SampleTable::Packet& packet : table.packets) {
        quint8 isKey = 0;
        in >> packet.stamp >> packet.position >> packet.content >> packet.frame >> isKey >> packet.description;
        packet.key = isKey != 0;
        if (packet.position < -1 || packet.position >= key.size || packet.frame < -1 ||
            packet.description > table.descriptions.size())
            return false;
    }
    return in.status() == QDataStream::Ok;
}

/// The frames' numbers are 0 to count, each once.
bool placeFrames(SampleTable& table) {
    table.packetOfFrame.assign(table.index.samples.size(), -1);
    size_t placed = 0;
    for (size_t place = 0; place < table.packets.size(); ++place) {
        const qint32 frame = table.packets[place].frame;
        if (frame < 0) continue;
        if (size_t(frame) >= table.packetOfFrame.size() || table.packetOfFrame[size_t(frame)] >= 0)
            return false;
        table.packetOfFrame[size_t(frame)] = qint32(place);
        table.index.samples[size_t(frame)].key = table.packets[place].key;
        ++placed;
    }
    return placed > 0 && placed == table.packetOfFrame.size();
}

bool readFrames(QDataStream& in, SampleTable& table) {
    SampleIndex& index = table.index;
    quint32 count = 0;
    in >> index.timeBaseNum >> index.timeBaseDen >> index.timeScale >> index.step >> index.endTicks >> count;
    if (qint64(count) * 16 > in.device()->bytesAvailable()) return false;
    index.samples.resize(count);
    qint64 last = -1;
    for (SampleIndex::Sample& sample : index.samples) {
        in >> sample.pts >> sample.ticks;
        if (sample.ticks <= last) return false;
        last = sample.ticks;
    }
    const bool constant = index.step == 0 || index.endTicks == qint64(count) * index.step;
    return in.status() == QDataStream::Ok && in.atEnd() && index.timeBaseNum > 0 && index.timeBaseDen > 0 &&
           index.timeScale > 0 && index.step >= 0 && constant && index.endTicks > last &&
           index.endTicks <= std::numeric_limits<qint32>::max() && index.samples.front().ticks == 0 &&
           placeFrames(table);
}

} // namespace

QByteArray encodeTable(const TableFileKey& key, const SampleTable& table) {
    QByteArray payload;
    QDataStream out(&payload, QIODevice::WriteOnly);
    out.setVersion(streamVersion);
    const SampleIndex& index = table.index;
    out << libraryVersion() << key.path.toUtf8() << key.size << key.modified << qint32(table.reorderDepth)
        << table.halves << table.stampsHold << quint32(table.descriptions.size());
    for (const QByteArray& description : table.descriptions)
        out << description;
    out << quint32(table.packets.size());
    for (const SampleTable::Packet& packet : table.packets)
        out << packet.stamp << packet.position << packet.content << packet.frame << quint8(packet.key)
            << packet.description;
    out << index.timeBaseNum << index.timeBaseDen << index.timeScale << index.step << index.endTicks
        << quint32(index.samples.size());
    for (const SampleIndex::Sample& sample : index.samples)
        out << sample.pts << sample.ticks;
    QByteArray bytes;
    QDataStream head(&bytes, QIODevice::WriteOnly);
    head << magic << layout << sumOf(payload, 0);
    return bytes + payload;
}

std::optional<SampleTable> decodeTable(const TableFileKey& key, const QByteArray& bytes) {
    QDataStream in(bytes);
    in.setVersion(streamVersion);
    quint32 itsMagic = 0, itsLayout = 0, sum = 0, version = 0, descriptions = 0;
    in >> itsMagic >> itsLayout >> sum;
    constexpr qsizetype head = 12;
    if (bytes.size() < head || itsMagic != magic || itsLayout != layout || sum != sumOf(bytes, head))
        return std::nullopt;
    QByteArray path;
    TableFileKey itsKey;
    SampleTable table;
    qint32 depth = 0;
    in >> version >> path >> itsKey.size >> itsKey.modified >> depth >> table.halves >> table.stampsHold >>
        descriptions;
    constexpr qint32 deepest = 16;
    constexpr quint32 mostDescriptions = 1000;
    if (version != libraryVersion() || path != key.path.toUtf8() || itsKey.size != key.size ||
        itsKey.modified != key.modified || depth < 0 || depth > deepest || descriptions > mostDescriptions)
        return std::nullopt;
    table.reorderDepth = depth;
    table.readThrough = true;
    for (quint32 i = 0; i < descriptions && in.status() == QDataStream::Ok; ++i) {
        QByteArray description;
        in >> description;
        table.descriptions.push_back(description);
    }
    if (in.status() != QDataStream::Ok || !readPackets(in, key, table) || !readFrames(in, table))
        return std::nullopt;
    return table;
}

std::optional<SampleTable> readTableFile(const QString& folder, const TableFileKey& key) {
    QFile file(fileOf(folder, key.path));
    if (!file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly) || file.size() > largest)
        return std::nullopt;
    std::optional<SampleTable> table = decodeTable(key, file.readAll());
    if (table) file.setFileTime(QDateTime::currentDateTime(), QFileDevice::FileModificationTime); // used just now
    return table;
}

void writeTableFile(const QString& folder, const TableFileKey& key, const SampleTable& table) {
    const QByteArray bytes = encodeTable(key, table);
    if (bytes.size() > largest || !QDir().mkpath(folder)) return;
    static_cast<void>(writeFileAtomically(fileOf(folder, key.path), bytes));
}

void limitTableFiles(const QString& folder, qint64 bytes) {
    const QFileInfoList files =
        QDir(folder).entryInfoList({QStringLiteral("*.table")}, QDir::Files, QDir::Time); // the newest first
    for (const QFileInfo& file : files) {
        bytes -= file.size();
        if (bytes < 0) QFile::remove(file.filePath());
    }
}

} // namespace daylark
