#pragma once

#include "base/Result.h"
#include "model/Session.h"
#include "review/journal/JournalFormat.h"
#include "review/journal/JournalPlace.h"

#include <QStringList>

#include <optional>

namespace daylark {

/// The session's field that a step may name beside review data: which playlist was selected last, by its row. Carrying it
/// out changes no record.
inline const QString selectedPlaylistField = QStringLiteral("selectedPlaylist");
/// Likewise: whether there are edits, up to this step, that no session file of a person's own holds.
inline const QString modifiedField = QStringLiteral("isModified");

/// What a session was when its journal ended: the session file of one of the journal's bases, and every step
/// after it carried out in order. Bytes may be a stranger's: what makes no sense is passed over, and a step that
/// is missing ends it. Any thread; the records are the caller's.
struct RecoveredSession {
    SessionContents contents;
    quint64 sequence = 0; ///< of the last step
    qint64 steps = 0;     ///< of review data that came from the journal
    bool isModified = false; ///< by the last step that says so
};
/// Empty when no base of the journal is of that session file. `contents` is what those bytes hold.
[[nodiscard]] std::optional<RecoveredSession>
recoverSession(SessionContents contents, const QByteArray& fingerprint, const JournalRecords& journal);

/// What a start finds of earlier runs.
struct JournalStart {
    bool exists = false;      ///< the temporary session
    SessionContents contents; ///< it, with the journal's steps
    QByteArray fingerprint;                ///< of the session file that `contents` began from
    std::optional<JournalPlace> place;     ///< this copy's from now on; empty where none can be made
    bool goesOn = false;                   ///< with the journal that stands there, else a new one begins
    qsizetype soundBytes = 0;              ///< of that journal
    quint64 sequence = 0;                  ///< of its last step
    qint64 steps = 0;                      ///< brought back
    bool isModified = false;               ///< what comes back is in no session file of a person's own
    QStringList keptAside;                 ///< files made of what could not be brought back
};

/// Reads the temporary session and what copies of the program that are gone left in their journals. The journal
/// that goes with the session file is carried out on it; another dead copy's becomes a session file of its own
/// beside it ("name (recovered 2026-11-21 13.05.09).dls"). With `restore` off all of them do, and the contents
/// are empty. A session file that cannot be read is set aside; the one that the journal began from stands in for
/// it. Worker threads.
[[nodiscard]] JournalStart startFromJournals(const QString& sessionPath, bool restore);

} // namespace daylark
