#pragma once

#include "archive/Value.h"
#include "base/Result.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <vector>

namespace daylark {

/// Which record: a number handed out at run time by `ReviewRecords`, never reused in a run and never stored in
/// a saved session.
using RecordId = quint64;
inline constexpr RecordId noRecord = 0;
/// The session itself, whose fields are the list of its playlists and its colour configuration.
inline constexpr RecordId sessionRecord = 1;

/// One change of review data as a value: which record, which field, what stood there and what stands there
/// now. Nothing in it is a function, so it can be taken back, written down and carried out elsewhere.
///
/// A plain field holds its whole value (`at` is -1). Lists and drawings change in one span: `before` stood at
/// position `at` and `after` stands there now. Lists of records hold their numbers; a nil list is a nil value.
/// A record that comes into the session is announced first by a change of the field `wholeRecord`, whose
/// `after` holds all of it, so that whoever follows the changes can make it too; it has nothing to take back.
///
/// A plain value; any thread may read and encode one.
struct Change {
    RecordId record = noRecord;
    QString field; ///< the record's own name of it: "flagString", "notes", "movieList"
    Value before, after;
    qint64 at = -1;
    /// Changes of one drag of a slider or one run of typing carry the same key; empty: a step of its own.
    QString mergeKey;
    /// The records that a list's change names, so that a step taken back finds them alive. Memory only.
    std::vector<std::shared_ptr<Archivable>> keeps;

    static const QString wholeRecord;
    [[nodiscard]] bool isWholeRecord() const { return field == wholeRecord; }
    /// What takes this one back.
    [[nodiscard]] Change inverted() const;
};

using Changes = std::vector<Change>;

[[nodiscard]] Value listOfRecordIds(const std::vector<RecordId>& ids);
/// The numbers in a list's value; empty for anything else.
[[nodiscard]] std::vector<RecordId> recordIdsOf(const Value& list);

/// Bytes that hold these changes, in order, all or nothing: a keyed archive. Any thread.
[[nodiscard]] QByteArray encodeChanges(const Changes& changes);
/// Errors: no archive of changes. Bytes may be a stranger's. Any thread; the records inside are the caller's.
[[nodiscard]] Result<Changes> decodeChanges(const QByteArray& bytes);

} // namespace daylark
