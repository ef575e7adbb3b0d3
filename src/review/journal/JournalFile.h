#pragma once

#include "base/Result.h"
#include "review/journal/JournalFormat.h"
#include "review/journal/JournalPlace.h"

#include <vector>

namespace daylark {

/// The journal's file as its writer sees it: whole records go in at the end and are on the disk when a call
/// returns; what could not be written whole is cut off again, so that the file never holds half a record with
/// another behind it. Room on the disk is reserved ahead, where the file system can, so that a disk that others
/// fill still takes the next steps. Remembers where its records stand, which makes it short again without being read. One
/// thread. Every error leaves the file as it was.
class JournalFile {
public:
    explicit JournalFile(JournalPlace place)
        : place_(std::move(place)) {}
    ~JournalFile();
    JournalFile(const JournalFile&) = delete;
    JournalFile& operator=(const JournalFile&) = delete;

    /// Makes a new journal that begins with this record, in the place of whatever stands there.
    [[nodiscard]] Result<void> begin(const JournalRecord& base);
    /// Goes on with the one that stands there, after its first `soundBytes`.
    [[nodiscard]] Result<void> goOn(qsizetype soundBytes);
    [[nodiscard]] bool isOpen() const { return file_ >= 0; }

    [[nodiscard]] Result<void> append(const std::vector<JournalRecord>& records);
    /// Leaves out what the session file of that base holds. Errors: no such base here.
    [[nodiscard]] Result<void> shorten(const QByteArray& fingerprint);

    [[nodiscard]] qsizetype size() const { return size_; }
    [[nodiscard]] const JournalPlace& place() const { return place_; }

private:
    struct Entry {
        JournalRecord::Kind kind = JournalRecord::Kind::changes;
        quint64 sequence = 0;
        qsizetype at = 0, length = 0;
        QByteArray fingerprint; ///< of a base
    };
    [[nodiscard]] Result<void> replaceWith(const QByteArray& bytes);
    [[nodiscard]] QByteArray bytesOf(const Entry& entry) const;
    void reserveAhead();
    void close();

    JournalPlace place_;
    int file_ = -1;
    qsizetype size_ = 0, reserved_ = 0; ///< bytes; the file's length and what the disk has given it
    std::vector<Entry> entries_;
};

} // namespace daylark
