#include "viewer/sound/MovieAudio.h"

#include "media/encode/MovieExport.h"
#include "media/encode/SoundExport.h"
#include "media/facts/MediaFacts.h"
#include "media/facts/MediaTypes.h"
#include "model/Movie.h"
#include "platform/Alerts.h"
#include "platform/FailedWrites.h"
#include "platform/FileBookmark.h"
#include "platform/Panels.h"
#include "playback/run/Player.h"
#include "review/ReviewEdits.h"
#include "viewer/CurrentMovie.h"
#include "viewer/LibraryLink.h"

#include <QElapsedTimer>
#include <QFileInfo>

#include <algorithm>

namespace daylark {

MovieSound soundOf(const Movie& movie) {
    using Kind = MovieSound::Kind;
    if (movie.movieHasUserAudio())
        return {Kind::added, movie.mUserAudioTrack, movie.mUserAudioTrackBookmarkData};
    return {movie.shouldRemoveAudioTracks ? Kind::none : Kind::own, {}, {}};
}

MovieAudio::MovieAudio(const Surroundings& surroundings, QObject* parent)
    : QObject(parent)
    , surroundings_(surroundings) {
    connect(&surroundings_.current, &CurrentMovie::changed, this, [this] { lookForSound({}); });
    connect(&surroundings_.player, &Player::opened, this, [this] { lookForSound(surroundings_.current.movie()); });
}

MovieAudio::~MovieAudio() {
    *listening_ = true;
    for (const auto& cancelled : running_)
        *cancelled = true;
}

bool MovieAudio::isChanged() const {
    const auto& movie = surroundings_.current.movie();
    return movie && soundOf(*movie).kind != MovieSound::Kind::own;
}

bool MovieAudio::isSilenced() const {
    const auto& movie = surroundings_.current.movie();
    return movie && soundOf(*movie).kind == MovieSound::Kind::none;
}

bool MovieAudio::isHeard() const {
    const auto& movie = surroundings_.current.movie();
    return movie && !isSilenced() && (movie->movieHasUserAudio() || hasOwnSound_);
}

/// Until somebody has looked into the file of a movie, it is taken to have a sound; no movie: not opened yet.
void MovieAudio::lookForSound(const std::shared_ptr<Movie>& movie) {
    *listening_ = true; // for the movie before
    listening_ = std::make_shared<CancelFlag>(false);
    const auto& current = surroundings_.current.movie();
    hasOwnSound_ = current && !current->frameRun && mediaTypeOfPath(current->filepathString) != MediaType::image;
    Q_EMIT soundKnown();
    if (!movie || !hasOwnSound_) return;
    hearing_.run([this, path = movie->filepathString, cancelled = listening_] {
        const Result<MediaFacts> facts = readMediaFacts(path, cancelled.get());
        if (!facts) return;
        WorkQueue::deliver(this, [this, cancelled, has = !facts->sounds.empty()] {
            if (*cancelled) return;
            hasOwnSound_ = has;
            Q_EMIT soundKnown();
        });
    });
}

// Which sound. The viewer follows the record, in the middle of a run, too.

/// Making a bookmark looks at the disk.
void MovieAudio::addAudioTrack() {
    const auto movie = surroundings_.current.movie();
    if (!movie) return;
    OpenPanel panel;
    panel.title = tr("Link Audio File");
    const QStringList chosen = surroundings_.panels.runOpen(panel);
    if (chosen.isEmpty()) return;
    ++lookedAt_;
    looking_.run([this, weak = std::weak_ptr<Movie>(movie), path = chosen.front()] {
        const QByteArray bookmark = createFileBookmark(path);
        WorkQueue::deliver(this, [this, weak, bookmark] {
            --lookedAt_;
            const auto linked = weak.lock();
            if (!linked || bookmark.isEmpty()) return; // one of them is gone
            surroundings_.edits.store().modify(linked, {tr("Link Audio File")},
                                               [&bookmark](Movie& edited) { edited.addAudioFile(bookmark); });
        });
    });
}

void MovieAudio::revertMovieAudioTracks() {
    if (const auto movie = surroundings_.current.movie())
        surroundings_.edits.store().modify(movie, {tr("Revert Audio")},
                                           [](Movie& edited) { edited.revertToOriginalMovieAudio(); });
}

void MovieAudio::removeMovieAudioTracks() {
    if (const auto movie = surroundings_.current.movie())
        surroundings_.edits.store().modify(movie, {tr("Remove Audio")}, [](Movie& edited) {
            edited.removeOriginalMovieAudio();
            edited.removeAddedMovieAudio();
        });
}

// Files.

MovieAudio::Export MovieAudio::exportTo(const QString& path) const {
    const Movie& movie = *surroundings_.current.movie();
    return {movie.filepathString, soundOf(movie), path};
}

void MovieAudio::saveMovieAudioTracks() {
    const auto movie = surroundings_.current.movie();
    if (!movie) return;
    SavePanel panel;
    panel.title = tr("Save Audio As...");
    panel.prompt = tr("Save Audio");
    panel.proposedName = movie->fileTitle() + QStringLiteral(".wav");
    panel.allowedTypes = {QStringLiteral("wav")};
    const QString path = surroundings_.panels.runSave(panel);
    if (path.isEmpty() || movie != surroundings_.current.movie()) return;
    const auto write = [tables = surroundings_.player.sampleTables()](const Export& job, const ExportWatch& watch) {
        const Result<SavedSound> saved = saveSoundAsWave(job.movie, job.sound, job.path, tables.get(), watch);
        return saved ? Result<void>() : Result<void>(saved.error());
    };
    start(tr("Saving Audio"), exportTo(path), write, [this, path](const Result<void>& written) {
        if (written) return surroundings_.failedWrites.written(path);
        Alert alert;
        alert.message = tr("The audio could not be saved as \"%1\".").arg(QFileInfo(path).fileName());
        alert.informativeText = written.error().text;
        surroundings_.alerts.show(alert);
    });
}

QString MovieAudio::askForMoviePath(const QString& proposedName) {
    SavePanel panel;
    panel.title = tr("Save Movie As...");
    panel.prompt = tr("Save");
    panel.proposedName = proposedName;
    return surroundings_.panels.runSave(panel);
}

void MovieAudio::saveMovieAs() {
    const auto movie = surroundings_.current.movie();
    if (!movie) return;
    const QFileInfo name(movie->filenameString);
    QString proposed = name.completeBaseName() + QStringLiteral(" (New Audio)");
    if (!name.suffix().isEmpty()) proposed += u'.' + name.suffix();
    const QString path = askForMoviePath(proposed);
    if (!path.isEmpty() && movie == surroundings_.current.movie()) saveMovie(exportTo(path));
}

/// No alert tells that it failed; what wasn't written waits at the windows' foot.
void MovieAudio::saveMovie(const Export& job) {
    const auto write = [tables = surroundings_.player.sampleTables()](const Export& one, const ExportWatch& watch) {
        const Result<qint64> saved = saveMovieWithSound(one.movie, one.sound, one.path, tables.get(), watch);
        return saved ? Result<void>() : Result<void>(saved.error());
    };
    start(tr("Saving Movie"), job, write, [this, job](const Result<void>& written) {
        FailedWrites& failedWrites = surroundings_.failedWrites;
        if (written) return failedWrites.written(job.path);
        const auto elsewhere = [this, job] {
            const QString other = askForMoviePath(QFileInfo(job.path).fileName());
            if (other.isEmpty()) return;
            if (other != job.path) surroundings_.failedWrites.written(job.path); // not wanted there any more
            saveMovie({job.movie, job.sound, other});
        };
        failedWrites.failed(tr("Movie"), job.path, written.error().text, [this, job] { saveMovie(job); }, elsewhere);
    });
}

void MovieAudio::start(const QString& title, const Export& job, const Writer& write,
                       const std::function<void(const Result<void>&)>& done) {
    LibraryLink::Work work{0, std::make_shared<CancelFlag>(false)};
    if (library_) work = library_->workBegins(title, QFileInfo(job.path).fileName());
    running_.push_back(work.cancelled);
    writing_.run([this, work, job, write, done] {
        constexpr qint64 pause = 100; // milliseconds: often enough to look at
        QElapsedTimer told;
        ExportWatch watch{work.cancelled.get(), [&](qint64 finished, qint64 total) {
                              if (told.isValid() && told.elapsed() < pause && finished < total) return;
                              told.start();
                              WorkQueue::deliver(this, [this, id = work.id, finished, total] {
                                  if (library_) library_->workAdvances(id, finished, total);
                              });
                          }};
        // One that was cancelled while it waited isn't begun.
        const Result<void> written = *work.cancelled ? Result<void>(Error{QStringLiteral("cancelled")}) : write(job, watch);
        WorkQueue::deliver(this, [this, work, written, done] {
            std::erase(running_, work.cancelled);
            if (library_) library_->workEnds(work.id);
            if (!*work.cancelled) done(written);
        });
    });
}

} // namespace daylark
