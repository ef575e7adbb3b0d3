#include "app/files/FileStates.h"

#include "app/playlists/Library.h"
#include "app/program/ProgressBoard.h"
#include "base/jobs/CancelFlag.h"
#include "base/jobs/WorkQueue.h"
#include "export/relink/PatientFileCheck.h"
#include "preferences/Preferences.h"

#include <QElapsedTimer>

#include <set>
#include <unordered_set>

namespace daylark {

namespace {

/// Answers go to the interface thread in batches: few enough to come soon, small enough to be put on the
/// records at once.
constexpr size_t checksPerBatch = 200;
constexpr qint64 batchIntervalMs = 100;

struct FileCheckTask {
    std::weak_ptr<Movie> movie;
    FileReference file;
};

struct FileCheckAnswer {
    std::weak_ptr<Movie> movie;
    FileCheck check;
};

} // namespace

class FileStates::Worker {
public:
    using Answers = std::vector<FileCheckAnswer>;

    void start(FileStates& states);
    void apply(FileStates& states, const Answers& answers);
    void finish(FileStates& states);
    [[nodiscard]] bool isMissing(const std::shared_ptr<Movie>& movie) const {
        return missing.count(movie) > 0;
    }

    std::set<std::weak_ptr<Movie>, std::owner_less<std::weak_ptr<Movie>>> missing;
    bool running = false, again = false;
    int job = 0; ///< of a refresh that takes more than a moment
    qint64 done = 0, total = 0;
    std::shared_ptr<CancelFlag> cancelled;
    WorkQueue work;

private:
    std::vector<FileCheckTask> tasks(const FileStates& states) const;
};

std::vector<FileCheckTask> FileStates::Worker::tasks(const FileStates& states) const {
    const bool networkMode = states.preferences_.networkMode();
    std::vector<FileCheckTask> result;
    std::unordered_set<const Movie*> seen;
    for (const auto& playlist : states.library_.playlists())
        for (const auto& movie : playlist->movieList)
            if (seen.insert(movie.get()).second) result.push_back({movie, movie->fileReference(networkMode)});
    return result;
}

void FileStates::Worker::start(FileStates& states) {
    running = true;
    auto deliver = [&states](Answers&& batch) {
        auto answers = std::make_shared<const Answers>(std::move(batch));
        WorkQueue::deliver(&states, [&states, answers] { states.worker_->apply(states, *answers); });
    };
    auto list = tasks(states);
    done = 0;
    total = qint64(list.size());
    cancelled = std::make_shared<CancelFlag>(false);
    if (list.size() > checksPerBatch) {
        job = states.progress_.begin({tr("Looking for Media Files...")}, total, false);
        cancelled = states.progress_.cancelFlag(job);
    }
    work.run([&states, deliver, cancelled = cancelled, list = std::move(list)] {
        QElapsedTimer sinceBatch;
        sinceBatch.start();
        Answers batch;
        PatientFileCheck check;
        for (const FileCheckTask& task : list) {
            if (*cancelled) break;
            batch.push_back({task.movie, check(task.file, cancelled.get())});
            if (batch.size() < checksPerBatch && sinceBatch.elapsed() < batchIntervalMs) continue;
            deliver(std::exchange(batch, {}));
            sinceBatch.restart();
        }
        deliver(std::move(batch));
        WorkQueue::deliver(&states, [&states] { states.worker_->finish(states); });
    });
}

void FileStates::Worker::apply(FileStates& states, const Answers& answers) {
    done += qint64(answers.size());
    if (job) states.progress_.advance(job, done, total);
    for (const FileCheckAnswer& answer : answers) {
        const auto movie = answer.movie.lock();
        if (!movie) continue;
        // Views repaint what changed, not ten thousand items.
        states.library_.store().modify(movie, {{}, EditKind::background},
                                       [&answer](Movie& item) { item.applyFileCheck(answer.check); });
        if (answer.check.found)
            missing.erase(movie);
        else
            missing.insert(movie);
    }
}

void FileStates::Worker::finish(FileStates& states) {
    if (job) states.progress_.end(std::exchange(job, 0));
    for (auto it = missing.begin(); it != missing.end();)
        it = it->expired() ? missing.erase(it) : std::next(it);
    for (const auto& playlist : states.library_.playlists()) {
        qint64 count = 0;
        for (const auto& movie : playlist->movieList)
            count += isMissing(movie);
        const qint64 status = playlist->statusForMissing(count);
        if (playlist->status == status) continue;
        states.library_.store().modify(playlist, {{}, EditKind::background},
                                       [status](Playlist& list) { list.status = status; });
    }
    running = false;
    if (std::exchange(again, false)) start(states);
    Q_EMIT states.updated();
}

FileStates::FileStates(Library& library, Preferences& preferences, ProgressBoard& progress, QObject* parent)
    : QObject(parent)
    , library_(library)
    , preferences_(preferences)
    , progress_(progress)
    , worker_(std::make_unique<Worker>()) {}

FileStates::~FileStates() {
    if (worker_->cancelled) *worker_->cancelled = true;
}

void FileStates::updateAllFilePaths() {
    if (worker_->running)
        worker_->again = true;
    else
        worker_->start(*this);
}

bool FileStates::isUpdating() const {
    return worker_->running;
}

qint64 FileStates::missingCount() const {
    qint64 count = 0;
    for (const auto& movie : library_.arrangedMovies())
        count += worker_->isMissing(movie);
    return count;
}

} // namespace daylark
