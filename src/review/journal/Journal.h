#pragma once

#include "review/Change.h"
#include "review/journal/SessionRecovery.h"

#include <QObject>
#include <QString>

#include <memory>

namespace daylark {

/// The crash journal of one running copy. Every step is appended and synced to the disk by a thread of its own,
/// as soon as the one before is (a quarter of a second at the latest on a disk that answers); handing a step
/// over never waits. What cannot be written stays in memory and is tried again until it can, and
/// `troubleChanged` says so. A session file that is written holds the steps up to its snapshot: told of it, the
/// journal becomes short again.
///
/// Owned by the session's keeper; interface thread, except where it says otherwise. The destructor tries once
/// more to write what is left, and waits.
class Journal : public QObject {
    Q_OBJECT
public:
    explicit Journal(const QString& sessionPath, QObject* parent = nullptr);
    ~Journal() override;

    /// The session file that it goes with, when that is another one than at first; before `begin`.
    void keepBeside(const QString& sessionPath);
    /// Takes over what `start` found; the session's records now go by these numbers. Once, before any step.
    void begin(JournalStart& start, const std::vector<RecordId>& ids);
    void append(Changes step);                              ///< nothing before `begin`
    [[nodiscard]] quint64 sequence() const { return sequence_; } ///< of the last step appended

    /// Waits until the steps so far are on the disk; false when they can't be. Any thread.
    bool flush();
    /// A session file with this fingerprint, which holds the steps up to `sequence`, is about to be put in the
    /// temporary session's place. Waits until the journal says so on the disk; false when it can't. Any thread.
    bool announceSession(const QByteArray& fingerprint, const std::vector<RecordId>& ids, quint64 sequence);
    /// It stands there: what it holds leaves the journal. Returns at once. Any thread.
    void sessionIsThere(const QByteArray& fingerprint);

    struct Figures {
        quint64 sequence = 0; ///< of the last step that is on the disk
        qint64 bytes = 0, syncs = 0;
        qint64 longestDelayNs = 0; ///< from a step's appending to its being on the disk
    };
    [[nodiscard]] Figures figures() const; ///< any thread

Q_SIGNALS:
    /// What keeps steps from being written, in words; empty when all is well again.
    void troubleChanged(const QString& trouble);
    /// The journal has grown long: a session file should be written.
    void grown();

private:
    class Writer;
    QString sessionPath_;
    std::unique_ptr<Writer> writer_;
    quint64 sequence_ = 0;
    bool begun_ = false;
};

} // namespace daylark
