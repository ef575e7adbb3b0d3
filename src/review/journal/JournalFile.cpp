#include "review/journal/JournalFile.h"

#include "platform/AtomicFile.h"

#include <QFile>

#include <algorithm>
#include <fcntl.h>
#include <unistd.h>

namespace daylark {

namespace {

constexpr qsizetype reserve = qsizetype(1) << 20, leastReserve = reserve / 2; // bytes ahead; thousands of steps

Error journalError(const QString& path) {
    return {QStringLiteral("could not write %1: %2").arg(path, qt_error_string())};
}

bool writeWhole(int file, const QByteArray& bytes, qsizetype at) {
    for (qsizetype done = 0; done < bytes.size();) {
        const ssize_t written =
            ::pwrite(file, bytes.constData() + done, size_t(bytes.size() - done), off_t(at + done));
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        done += written;
    }
    return true;
}

} // namespace

JournalFile::~JournalFile() {
    close();
}

void JournalFile::close() {
    if (file_ >= 0) ::close(file_);
    file_ = -1;
}

Result<void> JournalFile::begin(const JournalRecord& base) {
    return replaceWith(journalHeader() + journalRecordBytes(base));
}

Result<void> JournalFile::replaceWith(const QByteArray& bytes) {
    const QString path = place_.journalPath();
    if (Result<void> written = writeFileAtomically(path, bytes, Readers::owner); !written) return written;
    return goOn(bytes.size());
}

Result<void> JournalFile::goOn(qsizetype soundBytes) {
    const QByteArray path = QFile::encodeName(place_.journalPath());
    const int file = ::open(path.constData(), O_RDWR | O_CLOEXEC);
    if (file < 0) return journalError(place_.journalPath());
    close();
    file_ = file;
    size_ = soundBytes;
    entries_.clear();
    QByteArray bytes(soundBytes, Qt::Uninitialized);
    const bool whole = ::pread(file_, bytes.data(), size_t(soundBytes), 0) == soundBytes &&
                       ::ftruncate(file_, off_t(soundBytes)) == 0;
    if (!whole) {
        const Error error = journalError(place_.journalPath());
        close();
        return error;
    }
    reserved_ = 0;
    reserveAhead();
    qsizetype at = journalHeader().size();
    for (const JournalRecord& record : parseJournal(bytes).records) {
        const qsizetype length = journalRecordBytes(record).size();
        const auto base = record.kind == JournalRecord::Kind::base ? parseJournalBase(record.payload) : std::nullopt;
        entries_.push_back({record.kind, record.sequence, at, length, base ? base->fingerprint : QByteArray()});
        at += length;
    }
    return {};
}

Result<void> JournalFile::append(const std::vector<JournalRecord>& records) {
    QByteArray bytes;
    std::vector<Entry> coming;
    for (const JournalRecord& record : records) {
        const QByteArray whole = journalRecordBytes(record);
        const auto base = record.kind == JournalRecord::Kind::base ? parseJournalBase(record.payload) : std::nullopt;
        coming.push_back({record.kind, record.sequence, size_ + bytes.size(), whole.size(),
                          base ? base->fingerprint : QByteArray()});
        bytes += whole;
    }
    if (!writeWhole(file_, bytes, size_) || ::fdatasync(file_) != 0) {
        const Error error = journalError(place_.journalPath());
        static_cast<void>(::ftruncate(file_, off_t(size_)));
        reserved_ = 0; // went with what was cut off
        reserveAhead();
        return error;
    }
    size_ += bytes.size();
    reserveAhead();
    entries_.insert(entries_.end(), coming.begin(), coming.end());
    return {};
}

/// Blocks behind the end, which the file's length doesn't show. A file system that has no such thing, or no room left, goes
/// without.
void JournalFile::reserveAhead() {
    if (reserved_ - size_ >= leastReserve) return;
#ifdef FALLOC_FL_KEEP_SIZE
    if (::fallocate(file_, FALLOC_FL_KEEP_SIZE, off_t(size_), off_t(reserve)) == 0) reserved_ = size_ + reserve;
#endif
}

QByteArray JournalFile::bytesOf(const Entry& entry) const {
    QByteArray bytes(entry.length, Qt::Uninitialized);
    return ::pread(file_, bytes.data(), size_t(entry.length), off_t(entry.at)) == entry.length ? bytes
                                                                                             : QByteArray();
}

Result<void> JournalFile::shorten(const QByteArray& fingerprint) {
    const auto last = std::find_if(entries_.rbegin(), entries_.rend(),
                                   [&](const Entry& entry) { return entry.fingerprint == fingerprint; });
    if (last == entries_.rend()) return Error{QStringLiteral("the journal knows no such session")};
    const Entry& base = *last;
    QByteArray bytes = journalHeader() + bytesOf(base);
    for (const Entry& entry : entries_) {
        const bool isLater = entry.kind == JournalRecord::Kind::changes     ? entry.sequence > base.sequence
                             : entry.kind == JournalRecord::Kind::numbering ? entry.at > base.at
                                                                            : false;
        if (!isLater) continue;
        const QByteArray later = bytesOf(entry);
        if (later.isEmpty()) return journalError(place_.journalPath());
        bytes += later;
    }
    return replaceWith(bytes);
}

} // namespace daylark
