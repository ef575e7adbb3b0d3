#pragma once

#include <QString>

#include <utility>
#include <vector>

namespace daylark {

/// The files of one crash journal beside the temporary session, and the lock that makes them one running copy's
/// own. The lock is the kernel's and goes with its process, so what a killed copy left is there to be claimed by
/// the next one. Held for as long as the object lives. Any thread; opens files.
///
///     mia_daylarkSession.dls               the temporary session, everybody's
///     mia_daylarkSession.journal           the first copy's journal
///     mia_daylarkSession.journal.base      the session file that it began from, should another copy replace that one
///     mia_daylarkSession.journal.lock
///     mia_daylarkSession.journal-2 ...     a second copy's, running at the same time
class JournalPlace {
public:
    /// The places that no running copy holds: all those where one has left something, and one that is free to
    /// begin with, even if nothing was left there. Empty where no file can be made.
    [[nodiscard]] static std::vector<JournalPlace> claim(const QString& sessionPath);

    ~JournalPlace();
    JournalPlace(JournalPlace&& other) noexcept
        : journalPath_(std::move(other.journalPath_))
        , lock_(std::exchange(other.lock_, -1)) {}
    JournalPlace& operator=(JournalPlace&& other) noexcept {
        std::swap(journalPath_, other.journalPath_);
        std::swap(lock_, other.lock_);
        return *this;
    }

    [[nodiscard]] const QString& journalPath() const { return journalPath_; }
    [[nodiscard]] QString basePath() const { return journalPath_ + QStringLiteral(".base"); }
    /// Makes `basePath` another name of this session file. Where the file system has no such names, it stays
    /// without.
    void keepBase(const QString& sessionPath) const;
    void removeFiles() const; ///< the lock's stays

private:
    JournalPlace(QString journalPath, int lock)
        : journalPath_(std::move(journalPath))
        , lock_(lock) {}

    QString journalPath_;
    int lock_;
};

} // namespace daylark
