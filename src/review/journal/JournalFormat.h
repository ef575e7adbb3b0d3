#pragma once

#include <QByteArray>

#include <optional>
#include <vector>

namespace daylark {

/// The crash journal's bytes. A header of 16 bytes, then records one after another, each
///
///     length   4 bytes   of what follows the checksum
///     checksum 4 bytes   CRC-32 of that
///     sequence 8 bytes   the last step that the record takes account of; never falls among steps
///     kind     1 byte
///     payload
///
/// all little-endian. A file may be cut off or damaged anywhere: what stands before the damage counts. Plain
/// functions on values; any thread.
struct JournalRecord {
    enum class Kind : quint8 {
        base = 1,      ///< a session file and the numbers of its records by position; holds the steps up to `sequence`
        numbering = 2, ///< from here on the records go by other numbers
        changes = 3    ///< a step: an archive of changes
    };
    Kind kind = Kind::changes;
    quint64 sequence = 0;
    QByteArray payload;
    bool operator==(const JournalRecord&) const = default;
};

[[nodiscard]] QByteArray journalHeader();
/// Empty for a payload that is too large for a record (1 GiB).
[[nodiscard]] QByteArray journalRecordBytes(const JournalRecord& record);

struct JournalRecords {
    std::vector<JournalRecord> records;
    qsizetype soundBytes = 0; ///< header and whole records; 0 when it is no journal at all
};
[[nodiscard]] JournalRecords parseJournal(const QByteArray& bytes);

/// Tells session files apart by what is in them; the hash of no bytes stands for an empty session.
[[nodiscard]] QByteArray sessionFingerprint(const QByteArray& sessionBytes);

/// The payload of a base; the numbers alone are that of a numbering.
struct JournalBase {
    QByteArray fingerprint;
    std::vector<quint64> ids;
    bool operator==(const JournalBase&) const = default;
};
[[nodiscard]] QByteArray journalBaseBytes(const JournalBase& base);
[[nodiscard]] std::optional<JournalBase> parseJournalBase(const QByteArray& payload);
[[nodiscard]] QByteArray journalNumbersBytes(const std::vector<quint64>& ids);
[[nodiscard]] std::optional<std::vector<quint64>> parseJournalNumbers(const QByteArray& payload);

} // namespace daylark
