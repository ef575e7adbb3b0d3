#include "review/journal/JournalFormat.h"

#include <QCryptographicHash>
#include <QtEndian>

#include <array>

namespace daylark {

namespace {

constexpr char magic[] = "Daylark journal\x01"; // 16 bytes; the last one is the version
constexpr qsizetype headerSize = 16;
constexpr qsizetype prefixSize = 8; // length and checksum
constexpr qsizetype bodyHeadSize = 9; // sequence and kind
constexpr qsizetype largestPayload = qsizetype(1) << 30;
constexpr qsizetype fingerprintSize = 32;
constexpr qsizetype numberSize = 8;

constexpr std::array<quint32, 256> checksumTable = [] {
    std::array<quint32, 256> table{};
    for (quint32 byte = 0; byte < 256; ++byte) {
        quint32 value = byte;
        for (int bit = 0; bit < 8; ++bit)
            value = (value & 1) ? value >> 1 ^ 0xEDB88320U : value >> 1;
        table[byte] = value;
    }
    return table;
}();

quint32 checksumOf(QByteArrayView bytes) {
    quint32 value = ~0U;
    for (const char byte : bytes)
        value = checksumTable[(value ^ uchar(byte)) & 0xFF] ^ value >> 8;
    return ~value;
}

template<class T>
void appendNumber(QByteArray& bytes, T number) {
    const T little = qToLittleEndian(number);
    bytes.append(reinterpret_cast<const char*>(&little), sizeof little);
}

template<class T>
T numberAt(QByteArrayView bytes, qsizetype at) {
    return qFromLittleEndian<T>(bytes.data() + at);
}

bool isKind(quint8 kind) {
    return kind >= quint8(JournalRecord::Kind::base) && kind <= quint8(JournalRecord::Kind::changes);
}

} // namespace

QByteArray journalHeader() {
    static_assert(sizeof magic == headerSize + 1);
    return {magic, headerSize};
}

QByteArray journalRecordBytes(const JournalRecord& record) {
    if (record.payload.size() > largestPayload) return {};
    QByteArray body;
    body.reserve(bodyHeadSize + record.payload.size());
    appendNumber(body, record.sequence);
    body.append(char(record.kind));
    body.append(record.payload);
    QByteArray bytes;
    bytes.reserve(prefixSize + body.size());
    appendNumber(bytes, quint32(body.size()));
    appendNumber(bytes, checksumOf(body));
    return bytes + body;
}

JournalRecords parseJournal(const QByteArray& bytes) {
    JournalRecords journal;
    if (!bytes.startsWith(journalHeader())) return journal;
    qsizetype at = headerSize;
    while (bytes.size() - at >= prefixSize + bodyHeadSize) {
        const auto length = qsizetype(numberAt<quint32>(bytes, at));
        if (length < bodyHeadSize || length > bytes.size() - at - prefixSize) break;
        const QByteArrayView body = QByteArrayView(bytes).sliced(at + prefixSize, length);
        const auto kind = numberAt<quint8>(body, sizeof(quint64));
        if (checksumOf(body) != numberAt<quint32>(bytes, at + 4) || !isKind(kind)) break;
        journal.records.push_back({JournalRecord::Kind(kind), numberAt<quint64>(body, 0),
                                   body.sliced(bodyHeadSize).toByteArray()});
        at += prefixSize + length;
    }
    journal.soundBytes = at;
    return journal;
}

QByteArray sessionFingerprint(const QByteArray& sessionBytes) {
    return QCryptographicHash::hash(sessionBytes, QCryptographicHash::Blake2b_256);
}

QByteArray journalNumbersBytes(const std::vector<quint64>& ids) {
    QByteArray bytes;
    bytes.reserve(qsizetype(ids.size()) * numberSize);
    for (const quint64 id : ids)
        appendNumber(bytes, id);
    return bytes;
}

std::optional<std::vector<quint64>> parseJournalNumbers(const QByteArray& payload) {
    if (payload.size() % numberSize != 0) return std::nullopt;
    std::vector<quint64> ids;
    ids.reserve(size_t(payload.size() / numberSize));
    for (qsizetype at = 0; at < payload.size(); at += numberSize)
        ids.push_back(numberAt<quint64>(payload, at));
    return ids;
}

QByteArray journalBaseBytes(const JournalBase& base) {
    return base.fingerprint.leftJustified(fingerprintSize, '\0', true) + journalNumbersBytes(base.ids);
}

std::optional<JournalBase> parseJournalBase(const QByteArray& payload) {
    if (payload.size() < fingerprintSize) return std::nullopt;
    auto ids = parseJournalNumbers(payload.sliced(fingerprintSize));
    if (!ids) return std::nullopt;
    return JournalBase{payload.left(fingerprintSize), *std::move(ids)};
}

} // namespace daylark
