#pragma once

#include "base/jobs/WorkQueue.h"
#include "model/Session.h"
#include "platform/lock/OwnerLock.h"
#include "review/Edit.h"
#include "review/journal/Journal.h"

#include <QObject>
#include <QString>

#include <optional>

namespace daylark {

class FailedWrites;
class Library;

/// The session that outlives the program: the file that the viewer's closing and termination write, and the crash journal
/// that holds every edit since. A start takes both together. The file is read and written on a worker; the interface goes
/// on. A second copy of the program on the same folder, on this host or another, has a file and a journal of its own
/// beside the first one's, and says so. Interface thread. Either one that cannot be written is among the failed writes
/// until it can, the journal also in `trouble`.
class TemporarySession : public QObject {
    Q_OBJECT
public:
    TemporarySession(Library& library, const QString& path, FailedWrites& failedWrites, QObject* parent = nullptr);
    ~TemporarySession() override; ///< waits for writes under way

    /// Reads what the last run left and begins this run's journal; `loaded` follows. Without `restore` the
    /// session stays empty, and what was left only in journals is kept as session files.
    void load(bool restore);
    /// Snapshot now, written behind; while one is being written, further calls join in one more. Does nothing
    /// before `loaded`: what stands on the disk has not been taken over yet.
    void save();
    [[nodiscard]] bool isLoaded() const { return isLoaded_; }
    /// Waits until file and journal are on the disk; for termination. False when neither holds the last edits, which then are
    /// in memory alone.
    bool finishWriting();
    [[nodiscard]] SessionContents contents() const; ///< what the file would hold now
    /// Whether there are edits that no session file of a person's own holds: kept in the journal, so that it comes back with
    /// them. Every edit but the program's own sets it.
    [[nodiscard]] bool isModified() const { return isModified_; }
    void setIsModified(bool modified);
    /// What a second copy tells of itself, in words; empty in the first. From `loaded` on.
    [[nodiscard]] QString notice() const { return notice_; }
    [[nodiscard]] QString trouble() const { return trouble_; } ///< what keeps edits from being stored; empty: nothing

Q_SIGNALS:
    void loaded(bool restored);
    void troubleChanged(const QString& trouble);

private:
    /// Where this copy keeps its session, and that nobody else does.
    struct Place {
        QString path;
        std::optional<OwnerLock> lock;
        QString notice;
    };
    [[nodiscard]] static Place ownPlace(const QString& path);
    void takeOver(Place& place, JournalStart& start, bool restore);
    void startWrite();
    void tellOfFile(const Result<void>& written);
    void noteSelection();
    void noteEdit(const Edit& edit);

    Library& library_;
    QString path_; ///< from `loaded` on this copy's own
    std::optional<OwnerLock> lock_;
    FailedWrites& failedWrites_;
    bool isLoaded_ = false;
    qint64 selectedRow_ = -1; ///< as the journal has it
    bool isModified_ = false; ///< likewise
    bool writing_ = false, again_ = false;
    bool fileIsWritten_ = true; ///< by the last try; the worker's while it writes
    bool fileIsKnown_ = false; ///< read or written whole, so that it may be written over; the worker's
    QString trouble_, notice_;
    Journal journal_;
    WorkQueue work_; // before the journal goes, so that nobody speaks to it any more
};

} // namespace daylark
