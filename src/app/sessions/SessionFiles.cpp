#include "app/sessions/SessionFiles.h"

#include "app/playlists/Library.h"
#include "app/sessions/RecentSessions.h"
#include "app/sessions/SessionMigration.h"
#include "base/jobs/WorkQueue.h"
#include "model/bundle/BundleReading.h"
#include "platform/Alerts.h"
#include "platform/FailedWrites.h"
#include "platform/Panels.h"
#include "preferences/Preferences.h"

#include <QFileInfo>

#include <numeric>
#include <set>
#include <utility>

namespace daylark {

namespace {

const QString sessionExtension = QStringLiteral("dls");
const QString saveSessionTitle = QStringLiteral("Save Session As...");

} // namespace

/// The worker, and what it knows of the files: those that it has read or written whole may be written over.
class SessionFiles::Queue {
public:
    Result<void> mayWriteOver(const QString& path) {
        const QFileInfo file(path);
        if (known_.count(path) || !file.exists()) return {};
        if (!file.isFile()) return Error{SessionFiles::tr("what stands there is no file")};
        if (readSessionFile(path)) return {};
        // Whatever stands there and cannot be read may still be somebody's review: it is kept beside.
        const Result<QString> aside = setFileAside(path);
        return aside ? Result<void>() : Result<void>(aside.error());
    }
    void remember(const QString& path) { known_.insert(path); }

private:
    std::set<QString> known_; // the worker's alone

public:
    WorkQueue work;
};

SessionFiles::SessionFiles(const Surroundings& surroundings, QObject* parent)
    : QObject(parent)
    , surroundings_(surroundings)
    , queue_(std::make_unique<Queue>())
    , temporary_(surroundings.library, surroundings.temporarySessionPath, surroundings.failedWrites) {
    connect(&temporary_, &TemporarySession::loaded, this, [this](bool restored) {
        if (restored) updatePlaylistsWithNewVariables(surroundings_.library);
        setSessionIsModified(modified_ || temporary_.isModified());
        Q_EMIT temporarySessionLoaded(restored);
    });
    connect(&surroundings_.library.store(), &ReviewStore::applied, this, [this](const Edit& edit) {
        if (edit.info.kind != EditKind::background) setSessionIsModified(true);
    });
}

SessionFiles::~SessionFiles() {
    finishWriting();
}

void SessionFiles::write(const QString& path, const SessionContents& contents,
                         std::function<void(WriteOutcome)> then) {
    auto snapshot = std::make_shared<SessionContents>(snapshotOf(contents));
    queue_->work.run([this, path, snapshot = std::move(snapshot), then = std::move(then)]() mutable {
        WriteOutcome outcome;
        outcome.folderExists = QFileInfo(QFileInfo(path).absolutePath()).isDir();
        Result<void> written = outcome.folderExists ? queue_->mayWriteOver(path) : Error{tr("its folder is gone")};
        if (written) written = writeSessionFile(path, encodeSession(*snapshot));
        outcome.written = bool(written);
        if (outcome.written)
            queue_->remember(path);
        else
            outcome.reason = written.error().text;
        snapshot.reset();
        WorkQueue::deliver(this, [then, outcome] { then(outcome); });
    });
}

void SessionFiles::read(const QString& path, std::function<void(ReadOutcome)> then) {
    queue_->work.run([this, path, then = std::move(then)] {
        auto outcome = std::make_shared<ReadOutcome>();
        const QFileInfo file(path);
        outcome->exists = file.exists();
        if (outcome->exists && file.isReadable()) {
            if (Result<SessionContents> contents = readSessionFile(path)) {
                outcome->readable = true;
                outcome->contents = *std::move(contents);
                queue_->remember(path);
            }
        }
        // The records go over whole: nothing is left on this side.
        WorkQueue::deliver(this, [then, outcome] { then(std::move(*outcome)); });
    });
}

// Saving.

void SessionFiles::writeSession(const QString& path, std::function<void(WriteOutcome)> then) {
    SessionContents contents;
    contents.playlists = withAnswers(surroundings_.library.playlists(), surroundings_.library.smartLists());
    contents.hasPlaylists = true;
    contents.colourConfiguration = surroundings_.library.store().records().colourConfiguration();
    write(path, contents, [this, path, then = std::move(then), saved = edits_](WriteOutcome outcome) {
        if (outcome.written && edits_ == saved) setSessionIsModified(false);
        tellOfSession(path, outcome);
        if (then) then(outcome);
    });
}

/// Written in one place, it is missing in no other.
void SessionFiles::tellOfSession(const QString& path, const WriteOutcome& outcome) {
    FailedWrites& failedWrites = surroundings_.failedWrites;
    if (outcome.written) {
        for (const QString& one : std::exchange(unwritten_, {}))
            failedWrites.written(one);
        return;
    }
    if (!unwritten_.contains(path)) unwritten_.append(path);
    failedWrites.failed(
        tr("Session"), path, outcome.reason, [this, path] { writeSession(path, {}); }, [this] { saveSessionAs(); });
}

void SessionFiles::saveSession() {
    if (currentSessionPath_.isEmpty()) {
        askAndSave();
        return;
    }
    if (pathIsOfOtherSession_ && !mayWriteOverOtherSession()) return;
    writeSession(currentSessionPath_, [this](WriteOutcome outcome) {
        if (!outcome.folderExists) askAndSave(); // the folder is gone
    });
}

bool SessionFiles::mayWriteOverOtherSession() {
    Alert question;
    question.message = tr("Replace \"%1\"?").arg(QFileInfo(currentSessionPath_).fileName());
    question.informativeText = tr("The session of the last run was not restored. Saving now puts what is in the library "
                                  "in the place of what that file holds.");
    question.buttons = QStringList{tr("Save As..."), tr("Replace"), tr("Cancel")};
    switch (surroundings_.alerts.run(question)) {
    case Alerts::firstButton:
        saveSessionAs();
        return false;
    case Alerts::secondButton:
        pathIsOfOtherSession_ = false;
        return true;
    default:
        return false;
    }
}

QString SessionFiles::askForPath(const QString& title, const QString& proposedName) {
    if (panelOpen_) return {};
    SavePanel panel;
    panel.title = title;
    panel.prompt = tr("Save");
    panel.proposedName = proposedName;
    panel.allowedTypes = QStringList{sessionExtension};
    panelOpen_ = true;
    const QString path = surroundings_.panels.runSave(panel);
    panelOpen_ = false;
    return path;
}

void SessionFiles::askAndSave() {
    const QString path = askForPath(saveSessionTitle, {});
    if (path.isEmpty()) return;
    setCurrentSessionPath(path);
    writeSession(path, {});
}

void SessionFiles::saveSessionAs() {
    const QString name = currentSessionPath_.isEmpty() ? tr("Untitled Session")
                                                       : QFileInfo(currentSessionPath_).completeBaseName();
    const QString path = askForPath(saveSessionTitle, name);
    if (path.isEmpty()) return;
    writeSession(path, {});
    setCurrentSessionPath(path); // after the write, unlike Save; wanted
}

// Copies for others.

void SessionFiles::exportPlaylists(const QString& path, const std::vector<std::shared_ptr<Playlist>>& playlists) {
    SessionContents contents;
    contents.playlists = withAnswers(playlists, surroundings_.library.smartLists());
    contents.hasPlaylists = true;
    contents.colourConfiguration = surroundings_.library.store().records().colourConfiguration();
    write(path, contents, [this, path, playlists](const WriteOutcome& outcome) {
        if (outcome.written)
            surroundings_.failedWrites.written(path);
        else
            surroundings_.failedWrites.failed(tr("Exported session"), path, outcome.reason,
                                              [this, path, playlists] { exportPlaylists(path, playlists); });
    });
}

void SessionFiles::exportSessionAsReviewed() {
    const QString path =
        askForPath(saveSessionTitle, surroundings_.preferences.sessionTitle() + QStringLiteral("_reviewed"));
    if (path.isEmpty()) return;
    exportPlaylists(path, surroundings_.library.playlists());
    setSessionTitle(QFileInfo(path).completeBaseName());
}

void SessionFiles::exportSelectedPlaylistsAsSession() {
    const Library& library = surroundings_.library;
    std::vector<std::shared_ptr<Playlist>> playlists;
    for (const qsizetype row : library.selectedPlaylistRows())
        playlists.push_back(library.playlists()[size_t(row)]);
    if (playlists.empty()) return;
    QString name = playlists.front()->name;
    name.replace(QLatin1Char('/'), QLatin1Char(':')); // a name, not a path
    const QString path = askForPath(tr("Save Playlist As..."), name);
    if (!path.isEmpty()) exportPlaylists(path, playlists);
}

// The temporary session.

void SessionFiles::storeSessionPath() {
    if (currentSessionPath_.isEmpty())
        surroundings_.preferences.sessionPath.reset();
    else
        surroundings_.preferences.sessionPath.set(currentSessionPath_);
}

void SessionFiles::saveTempSession() {
    if (!temporary_.isLoaded()) return;
    storeSessionPath();
    temporary_.save();
}

void SessionFiles::finishWriting() {
    queue_->work.wait();
    inMemoryAlone_ = !temporary_.finishWriting();
}

Result<QString> SessionFiles::rescueTo(const QString& folder) {
    const QString name = QFileInfo(surroundings_.temporarySessionPath).fileName();
    const QString path = folder + u'/' + name;
    if (!makePrivateFolder(folder)) return Error{tr("%1 cannot be made").arg(folder)};
    const Result<void> written = writeSessionFile(path, encodeSession(temporary_.contents()), Readers::owner);
    return written ? Result<QString>(path) : Result<QString>(written.error());
}

void SessionFiles::loadTempSession(bool restore) {
    temporary_.load(restore);
}

// Importing.

void SessionFiles::importSession() {
    OpenPanel panel;
    panel.title = tr("Import Session");
    panel.allowedTypes = QStringList{sessionExtension};
    const QStringList paths = surroundings_.panels.runOpen(panel);
    if (paths.isEmpty() || QFileInfo(paths.front()).suffix() != sessionExtension) return;
    const QString bundle = bundleOfPath(paths.front());
    if (bundle.isNull())
        dragSessionImport(paths.front());
    else
        Q_EMIT bundleChosen(bundle);
}

void SessionFiles::dragSessionImport(const QString& path) {
    imports_.append(path);
    if (imports_.size() == 1) startNextImport();
}

void SessionFiles::startNextImport() {
    read(imports_.front(), [this](ReadOutcome outcome) {
        const QString path = imports_.front();
        importContents(path, std::move(outcome)); // its question runs a loop of its own: further imports wait
        imports_.removeFirst();
        if (!imports_.isEmpty()) startNextImport();
    });
}

void SessionFiles::importContents(const QString& path, ReadOutcome outcome) {
    if (!outcome.readable) {
        Alert alert;
        alert.message =
            tr("This file can not be read.\nPlease check you have correct file permissions.");
        alert.buttons = QStringList{tr("Okay")};
        surroundings_.alerts.show(alert);
        return;
    }
    Q_EMIT bringToFront();
    Library& library = surroundings_.library;
    const auto selectFirstItem = [&library] {
        if (!library.arrangedMovies().empty()) library.selectMovies({0});
    };
    bool wholeSession = true; // what is in memory is what the file holds
    if (library.playlists().empty()) {
        appendImported(outcome.contents, EditKind::final);
        library.selectPlaylist(0);
        setSessionTitle(QFileInfo(path).completeBaseName());
        setCurrentSessionPath(path);
    } else {
        Alert question;
        question.message = tr("Replace Current Session?");
        question.buttons = QStringList{tr("Replace Session"), tr("Add To Session"),
                                       tr("Cancel")};
        switch (surroundings_.alerts.run(question)) {
        case Alerts::firstButton:
            clearSession();
            appendImported(outcome.contents, EditKind::final);
            library.selectPlaylist(0);
            setCurrentSessionPath(path);
            break;
        case Alerts::secondButton:
            appendImported(outcome.contents, EditKind::step);
            wholeSession = false;
            break;
        default:
            selectFirstItem();
            return;
        }
    }
    selectFirstItem();
    updatePlaylistsWithNewVariables(library);
    if (wholeSession) setSessionIsModified(false);
    Q_EMIT sessionImported();
}

/// A session that is opened is not taken back, and brings its colour configuration; one that is added to another is, and
/// leaves that one's.
void SessionFiles::appendImported(const SessionContents& contents, EditKind kind) {
    withoutAnswers(contents.playlists);
    ReviewStore& store = surroundings_.library.store();
    const ReviewStore::Group step(store, {tr("Add Session"), kind});
    if (kind == EditKind::final) store.setColourConfiguration(contents.colourConfiguration, {});
    for (const auto& playlist : contents.playlists) {
        for (const auto& movie : playlist->movieList)
            movie->mMovieBookmarkArray.isNil = false;
        surroundings_.library.appendPlaylist(playlist, false);
    }
}

void SessionFiles::clearSession() {
    Library& library = surroundings_.library;
    Library::Rows rows(library.playlists().size());
    std::iota(rows.begin(), rows.end(), qsizetype(0));
    library.removePlaylists(rows, EditKind::final);
    library.store().setColourConfiguration({}, {{}, EditKind::final});
    setCurrentSessionPath({});
}

// What identifies the session.

void SessionFiles::setCurrentSessionPath(const QString& path) {
    currentSessionPath_ = path;
    pathIsOfOtherSession_ = false;
    storeSessionPath();
    recentSessions::note(surroundings_.preferences, path);
    Q_EMIT pathChanged(path);
}

void SessionFiles::setPathOfOtherSession(const QString& path) {
    setCurrentSessionPath(path);
    pathIsOfOtherSession_ = !path.isEmpty();
}

void SessionFiles::forgetCurrentSessionPath() {
    currentSessionPath_.clear();
    Q_EMIT pathChanged({});
}

void SessionFiles::setSessionTitle(const QString& title) {
    surroundings_.preferences.sessionTitle.set(title);
    if (title_ == title) return;
    title_ = title;
    Q_EMIT titleChanged(title_);
}

void SessionFiles::setSessionIsModified(bool modified) {
    if (modified) ++edits_;
    temporary_.setIsModified(modified);
    if (modified_ == modified) return;
    modified_ = modified;
    Q_EMIT modifiedChanged(modified_);
}

} // namespace daylark
