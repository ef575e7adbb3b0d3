#include "app/sessions/TemporarySession.h"

#include "app/playlists/Library.h"
#include "platform/FailedWrites.h"
#include "platform/lock/Leftovers.h"

#include <QFileInfo>

#include <utility>

namespace daylark {

namespace {

Change sessionChange(const QString& field, qint64 after) {
    Change change;
    change.record = sessionRecord;
    change.field = field;
    change.after = Value(after);
    return change;
}

} // namespace

TemporarySession::TemporarySession(Library& library, const QString& path, FailedWrites& failedWrites,
                                   QObject* parent)
    : QObject(parent)
    , library_(library)
    , path_(path)
    , failedWrites_(failedWrites)
    , journal_(path) {
    connect(&library_.store(), &ReviewStore::applied, this, &TemporarySession::noteEdit);
    connect(&library_, &Library::playlistSelectionChanged, this, &TemporarySession::noteSelection);
    connect(&journal_, &Journal::grown, this, &TemporarySession::save);
    connect(&journal_, &Journal::troubleChanged, this, [this](const QString& reason) {
        trouble_ = reason.isEmpty() ? QString() : tr("Changes are not stored: %1").arg(reason);
        const QFileInfo session(path_);
        const QString journal = session.path() + u'/' + session.completeBaseName() + QLatin1String(".journal");
        if (reason.isEmpty())
            failedWrites_.written(journal);
        else // the journal tries again of itself
            failedWrites_.failed(tr("Changes"), journal, reason);
        Q_EMIT troubleChanged(trouble_);
    });
}

TemporarySession::~TemporarySession() {
    finishWriting();
}

void TemporarySession::load(bool restore) {
    work_.run([this, path = path_, restore] {
        // The records go over whole: nothing is left on this side.
        auto place = std::make_shared<Place>(ownPlace(path));
        auto start = std::make_shared<JournalStart>(startFromJournals(place->path, restore));
        fileIsKnown_ = restore;
        WorkQueue::deliver(this, [this, place, start, restore] { takeOver(*place, *start, restore); });
    });
}

/// Beside the first copy's: "mia_daylarkSession-2.dls" and so on. Where no file can be made nothing can be overwritten either.
TemporarySession::Place TemporarySession::ownPlace(const QString& path) {
    constexpr int mostCopies = 16;
    const QFileInfo first(path);
    Place place{path, {}, {}};
    for (int number = 1; number <= mostCopies; ++number) {
        const QString further = number == 1 ? QString() : u'-' + QString::number(number);
        const QString base = first.path() + u'/' + first.completeBaseName() + further;
        OwnerLock::Taken taken = OwnerLock::take(base + QStringLiteral(".owner"));
        if (taken.lock || taken.holder.isEmpty()) {
            if (number > 1) place.path = base + u'.' + first.suffix();
            place.lock = std::move(taken.lock);
            if (place.lock)
                for (const QString& written : {place.path, base + QStringLiteral(".journal")})
                    removeLeftoversOf(written);
            return place;
        }
        if (number == 1)
            place.notice = tr("Another copy of Daylark is at work (on %1): this one keeps a session of its own")
                               .arg(taken.holder);
    }
    return place;
}

void TemporarySession::takeOver(Place& place, JournalStart& start, bool restore) {
    path_ = place.path;
    lock_ = std::move(place.lock);
    notice_ = place.notice;
    journal_.keepBeside(path_);
    ReviewStore& store = library_.store();
    const ReviewRecords::Playlists madeMeanwhile = store.playlists();
    library_.setPlaylists(start.contents.playlists, start.contents.colourConfiguration);
    journal_.begin(start, store.records().idsByPosition());
    isModified_ = start.isModified && !start.contents.playlists.empty(); // of an empty one nothing comes back
    // What was made while the file was being read comes after it, and into the journal.
    store.insertPlaylists(qsizetype(store.playlists().size()), madeMeanwhile, {{}, EditKind::background});
    isLoaded_ = true;
    if (restore && (start.exists || start.steps > 0)) {
        selectedRow_ = start.contents.lastSelectedPlaylistIndex.value_or(0);
        library_.selectPlaylist(selectedRow_);
    }
    Q_EMIT loaded(restore);
}

/// So that a crash leaves the selection where it was; the file has it at the end of a run.
void TemporarySession::noteSelection() {
    const auto& rows = library_.selectedPlaylistRows();
    if (!isLoaded_ || rows.empty() || rows.front() == selectedRow_) return;
    selectedRow_ = rows.front();
    journal_.append({sessionChange(selectedPlaylistField, selectedRow_)});
}

/// The mark goes into the edit's own step: a crash leaves both or neither.
void TemporarySession::noteEdit(const Edit& edit) {
    Changes step = edit.changes;
    if (edit.info.kind != EditKind::background && !std::exchange(isModified_, true))
        step.push_back(sessionChange(modifiedField, 1));
    journal_.append(std::move(step));
}

void TemporarySession::setIsModified(bool modified) {
    if (std::exchange(isModified_, modified) != modified) journal_.append({sessionChange(modifiedField, modified)});
}

void TemporarySession::save() {
    if (!isLoaded_) return;
    if (writing_)
        again_ = true;
    else
        startWrite();
}

SessionContents TemporarySession::contents() const {
    SessionContents contents;
    contents.playlists = library_.playlists();
    contents.hasPlaylists = true;
    if (!library_.selectedPlaylistRows().empty())
        contents.lastSelectedPlaylistIndex = library_.selectedPlaylistRows().front();
    contents.version = SessionContents::Version{};
    contents.colourConfiguration = library_.store().records().colourConfiguration();
    return contents;
}

void TemporarySession::startWrite() {
    writing_ = true;
    const quint64 sequence = journal_.sequence();
    // The file has no place for the mark, and takes the steps that set it out of the journal.
    if (isModified_) journal_.append({sessionChange(modifiedField, 1)});
    work_.run([this, path = path_, snapshot = std::make_shared<SessionContents>(snapshotOf(contents())),
               ids = library_.store().records().idsByPosition(), sequence]() mutable {
        const QByteArray bytes = encodeSession(*snapshot), fingerprint = sessionFingerprint(bytes);
        snapshot.reset();
        // Whatever stands there and cannot be read may still be somebody's review: it is kept beside.
        Result<void> written;
        if (!fileIsKnown_ && QFileInfo(path).isFile() && !readSessionFile(path))
            if (const Result<QString> aside = setFileAside(path); !aside) written = aside.error();
        if (written) {
            // First the journal learns of the file: whichever of the two a crash leaves, they fit each other.
            static_cast<void>(journal_.announceSession(fingerprint, ids, sequence));
            written = writeSessionFile(path, bytes, Readers::owner);
        }
        fileIsWritten_ = bool(written);
        fileIsKnown_ = fileIsKnown_ || fileIsWritten_; // one that failed left the old one whole
        if (fileIsWritten_) journal_.sessionIsThere(fingerprint);
        WorkQueue::deliver(this, [this, written] {
            tellOfFile(written);
            writing_ = false;
            if (std::exchange(again_, false)) startWrite();
        });
    });
}

void TemporarySession::tellOfFile(const Result<void>& written) {
    if (written)
        failedWrites_.written(path_);
    else
        failedWrites_.failed(tr("Session of this run"), path_, written.error().text, [this] { save(); });
}

bool TemporarySession::finishWriting() {
    work_.wait();
    while (std::exchange(again_, false)) {
        startWrite();
        work_.wait();
    }
    const bool journalIsWritten = journal_.flush();
    return !isLoaded_ || fileIsWritten_ || journalIsWritten;
}

} // namespace daylark
