#include "review/journal/SessionRecovery.h"

#include "review/ReviewRecords.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <memory>

namespace daylark {

namespace {

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return QFileInfo(path).isFile() && file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

struct ReadSession {
    QByteArray fingerprint;
    SessionContents contents;
};

std::optional<ReadSession> readSession(const QString& path) {
    const QByteArray bytes = contentOf(path);
    if (bytes.isEmpty()) return std::nullopt;
    Result<SessionContents> contents = decodeSession(bytes);
    if (!contents) return std::nullopt;
    return ReadSession{sessionFingerprint(bytes), *std::move(contents)};
}

ReadSession emptySession() {
    ReadSession session{sessionFingerprint({}), {}};
    session.contents.hasPlaylists = true;
    return session;
}

/// The last base of that session file; the journal's end when there is none.
size_t baseOf(const std::vector<JournalRecord>& records, const QByteArray& fingerprint) {
    for (size_t at = records.size(); at-- > 0;) {
        if (records[at].kind != JournalRecord::Kind::base) continue;
        const auto base = parseJournalBase(records[at].payload);
        if (base && base->fingerprint == fingerprint) return at;
    }
    return records.size();
}

bool hasSteps(const JournalRecords& journal) {
    const auto& records = journal.records;
    return std::any_of(records.begin(), records.end(),
                       [](const auto& record) { return record.kind == JournalRecord::Kind::changes; });
}

std::unique_ptr<ReviewRecords> recordsWith(ReviewRecords::Playlists playlists, const std::vector<RecordId>& ids,
                                           const QString& colourConfiguration) {
    auto records = std::make_unique<ReviewRecords>(ReviewRecords::Keep::everything_met);
    records->adopt(std::move(playlists), ids);
    records->adoptColourConfiguration(colourConfiguration);
    return records;
}

/// A journal that a copy which is gone left.
struct LeftJournal {
    JournalPlace place;
    JournalRecords journal;
    QDateTime written;
};

QString recoveredPath(const QString& sessionPath) {
    const QFileInfo session(sessionPath);
    const QString stamp = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH.mm.ss"));
    for (int number = 1;; ++number) {
        const QString again = number == 1 ? QString() : QStringLiteral(" %1").arg(number);
        const QString path = session.dir().filePath(QStringLiteral("%1 (recovered %2)%3.%4")
                                                        .arg(session.completeBaseName(), stamp, again, session.suffix()));
        if (!QFileInfo::exists(path)) return path;
    }
}

/// Makes a session file of what a journal holds that cannot be taken over, so that it is not lost; one without
/// steps has nothing to lose.
void keepAside(const LeftJournal& left, const QString& sessionPath, QStringList& kept) {
    if (hasSteps(left.journal)) {
        std::optional<RecoveredSession> recovered;
        for (const QString& path : {sessionPath, left.place.basePath()})
            if (auto session = recovered ? std::nullopt : readSession(path))
                recovered = recoverSession(std::move(session->contents), session->fingerprint, left.journal);
        if (!recovered) {
            ReadSession empty = emptySession();
            recovered = recoverSession(std::move(empty.contents), empty.fingerprint, left.journal);
        }
        if (recovered && recovered->steps > 0) {
            const QString path = recoveredPath(sessionPath);
            if (!writeSessionFile(path, encodeSession(recovered->contents), Readers::owner)) return; // until the next start
            kept.append(path);
        } else if (!recovered) {
            const Result<QString> aside = setFileAside(left.place.journalPath());
            if (!aside) return;
            kept.append(*aside);
        }
    }
    left.place.removeFiles();
}

std::vector<LeftJournal> leftJournals(const QString& sessionPath) {
    std::vector<LeftJournal> left;
    for (JournalPlace& place : JournalPlace::claim(sessionPath)) {
        const QString path = place.journalPath();
        left.push_back({std::move(place), parseJournal(contentOf(path)), QFileInfo(path).lastModified()});
    }
    return left;
}

} // namespace

std::optional<RecoveredSession> recoverSession(SessionContents contents, const QByteArray& fingerprint,
                                               const JournalRecords& journal) {
    const size_t baseAt = baseOf(journal.records, fingerprint);
    if (baseAt == journal.records.size()) return std::nullopt;
    const JournalRecord& base = journal.records[baseAt];
    RecoveredSession recovered;
    recovered.sequence = base.sequence;
    auto records =
        recordsWith(std::move(contents.playlists), parseJournalBase(base.payload)->ids, contents.colourConfiguration);
    for (size_t at = 0; at < journal.records.size(); ++at) {
        const JournalRecord& record = journal.records[at];
        if (record.kind == JournalRecord::Kind::numbering && at > baseAt) {
            if (const auto ids = parseJournalNumbers(record.payload))
                records = recordsWith(records->playlists(), *ids, records->colourConfiguration());
        }
        if (record.kind != JournalRecord::Kind::changes || record.sequence <= base.sequence) continue;
        if (record.sequence != recovered.sequence + 1) break;
        const Result<Changes> step = decodeChanges(record.payload);
        if (!step) break;
        bool reviewed = false;
        for (const Change& change : *step) {
            if (change.record == sessionRecord && change.field == selectedPlaylistField) {
                const Number* row = change.after.number();
                contents.lastSelectedPlaylistIndex = row ? std::optional(numberToInt64(*row)) : std::nullopt;
                continue;
            }
            if (change.record == sessionRecord && change.field == modifiedField) {
                const Number* modified = change.after.number();
                recovered.isModified = modified && numberToInt64(*modified) != 0;
                continue;
            }
            records->apply(change);
            reviewed = true;
        }
        recovered.sequence = record.sequence;
        recovered.steps += reviewed;
    }
    recovered.contents = std::move(contents);
    recovered.contents.playlists = records->playlists();
    recovered.contents.colourConfiguration = records->colourConfiguration();
    recovered.contents.hasPlaylists = recovered.contents.hasPlaylists || recovered.steps > 0;
    return recovered;
}

JournalStart startFromJournals(const QString& sessionPath, bool restore) {
    JournalStart start;
    std::vector<LeftJournal> left = leftJournals(sessionPath);
    // The latest first: of two that go with the session file, the other one's steps are older.
    std::stable_sort(left.begin(), left.end(),
                     [](const auto& a, const auto& b) { return a.written > b.written; });
    start.exists = QFileInfo::exists(sessionPath);
    std::optional<ReadSession> session = restore && start.exists ? readSession(sessionPath) : std::nullopt;
    if (restore && start.exists && !session) {
        static_cast<void>(setFileAside(sessionPath));
        for (const LeftJournal& journal : left)
            if (!session) session = readSession(journal.place.basePath());
    }
    if (!session) session = emptySession();
    start.fingerprint = session->fingerprint;

    const auto matches = [&](const LeftJournal& journal) {
        return baseOf(journal.journal.records, start.fingerprint) < journal.journal.records.size();
    };
    const auto own = restore ? std::find_if(left.begin(), left.end(), matches) : left.end();
    for (auto journal = left.begin(); journal != left.end(); ++journal)
        if (journal != own) keepAside(*journal, sessionPath, start.keptAside);
    if (own != left.end()) {
        auto recovered =
            recoverSession(std::move(session->contents), start.fingerprint, own->journal);
        start.contents = std::move(recovered->contents);
        start.sequence = recovered->sequence;
        start.steps = recovered->steps;
        start.isModified = recovered->isModified;
        start.goesOn = true;
        start.soundBytes = own->journal.soundBytes;
        start.place = std::move(own->place);
    } else {
        start.contents = std::move(session->contents);
        if (!left.empty()) start.place = std::move(left.front().place);
    }
    return start;
}

} // namespace daylark
