#include "app/files/Thumbnails.h"

#include "app/playlists/Library.h"
#include "app/program/ProgressBoard.h"
#include "base/jobs/Patience.h"
#include "base/jobs/WorkQueue.h"
#include "media/facts/MovieProbe.h"
#include "media/index/SampleTables.h"
#include "picture/Thumbnail.h"
#include "preferences/Preferences.h"
#include "viewer/RunPreferences.h"
#include "viewer/display/ColourPreferences.h"

#include <QThread>

#include <algorithm>
#include <deque>
#include <unordered_set>

namespace daylark {

namespace {

const QString setThumbnailImageTitle = QStringLiteral("Set Thumbnail Image");
const QString noThumbnailText = QStringLiteral("No QT Thumbnail");
constexpr QSize thumbnailBox{100, 56};

/// One core is left to the interface and to playback.
int thumbnailThreads() {
    return std::clamp(QThread::idealThreadCount() - 1, 1, 2);
}

} // namespace

/// What is to be done for one item; handed to a worker as a value.
struct Thumbnails::Task {
    std::weak_ptr<Movie> movie;
    const Movie* identity = nullptr; ///< to tell tasks apart; never followed
    FileReference file;
    QString choice; ///< null: no thumbnail wanted
    bool probe = false;
    bool force = false;
    bool onlyIfFound = false;
    bool legacyRules = false;
    RunView view = {};
    StillColour colour = {};
    Image known = {}; ///< its thumbnail, which is to be brought to the display anew; nil: another one is made
    std::shared_ptr<CancelFlag> cancelled;
};

struct Thumbnails::Outcome {
    std::optional<FileCheck> check;
    std::optional<AssetProperties> properties;
    std::optional<ThumbnailResult> thumbnail;
    std::optional<FrameRun> run;
};

/// Tasks wait on the interface thread, where they are sorted and dropped; workers have only those that are
/// being done.
class Thumbnails::Queue {
public:
    std::deque<Task> waiting;
    int running = 0;
    qint64 done = 0, total = 0; ///< since the queue was last idle
    int job = 0;
    std::shared_ptr<CancelFlag> cancelled;
    const int threads = thumbnailThreads();
    WorkQueue work{thumbnailThreads(), WorkQueue::Pace::background};
};

Thumbnails::Thumbnails(Library& library, Preferences& preferences, ProgressBoard& progress,
                       std::shared_ptr<SampleTables> tables, std::shared_ptr<StillColours> colours, QObject* parent)
    : QObject(parent)
    , library_(library)
    , preferences_(preferences)
    , progress_(progress)
    , tables_(tables ? std::move(tables) : std::make_shared<SampleTables>())
    , colours_(colours ? std::move(colours) : std::make_shared<StillColours>())
    , queue_(std::make_unique<Queue>()) {
    connect(&progress_, &ProgressBoard::changed, this, [this] {
        if (queue_->cancelled && *queue_->cancelled && !queue_->waiting.empty()) cancelAll();
    });
    connect(&library_.store(), &ReviewStore::changed, this, [this](const Change& change) {
        if (change.field != QLatin1String("inputColourSpace")) return;
        if (const auto movie = library_.store().records().find<Movie>(change.record)) bringToDisplayAnew(movie);
    });
}

Thumbnails::~Thumbnails() {
    queue_->waiting.clear();
    if (queue_->cancelled) *queue_->cancelled = true;
}

bool Thumbnails::isIdle() const {
    return queue_->waiting.empty() && queue_->running == 0;
}

// What is asked for.

void Thumbnails::probeAndThumbnail(const Movies& newItems) {
    Task kind;
    kind.probe = true;
    kind.choice = preferences_.thumbnailFrame.text();
    enqueue(newItems, kind);
}

void Thumbnails::readAgain(const Movies& items) {
    Task kind;
    kind.probe = true;
    kind.force = true;
    kind.choice = preferences_.thumbnailFrame.text();
    enqueue(items, kind);
}

void Thumbnails::bringToDisplayAnew(const std::shared_ptr<Movie>& movie) {
    if (movie->thumbnail.encoded().isEmpty()) return;
    Task kind;
    kind.choice = preferences_.thumbnailFrame.text();
    kind.force = true;
    kind.known = movie->thumbnail;
    enqueue({movie}, kind);
}

void Thumbnails::updateThumbnailsInArray(const Movies& items) {
    Task kind;
    kind.choice = preferences_.thumbnailFrame.text();
    enqueue(items, kind);
}

void Thumbnails::updateThumbnailsSequentially(const std::shared_ptr<Playlist>& playlist) {
    updateThumbnailsInArray(Movies(playlist->movieList.begin(), playlist->movieList.end()));
}

void Thumbnails::updateThumbnailForMovie(const std::shared_ptr<Movie>& movie) {
    updateThumbnailsInArray({movie});
}

void Thumbnails::createMissingThumbnails(const Sender& sender) {
    Task kind;
    kind.choice = sender.title;
    kind.onlyIfFound = true;
    enqueue(moviesOfAllPlaylists(), kind);
}

void Thumbnails::recreateSelectedThumbnails(const Sender& sender) {
    Task kind;
    kind.choice = sender.title;
    kind.force = true;
    enqueue(library_.selectedMovies(), kind);
}

void Thumbnails::recreateAllThumbnails(const Sender& sender) {
    Task kind;
    kind.choice = sender.title;
    kind.force = true;
    kind.onlyIfFound = true;
    enqueue(moviesOfAllPlaylists(), kind);
}

void Thumbnails::recreateCurrentThumbnail(const std::shared_ptr<Movie>& current, const QImage& picture,
                                          const Sender& sender) {
    if (!current) return;
    if (sender.title != setThumbnailImageTitle) {
        Task kind;
        kind.choice = sender.title;
        kind.force = true;
        kind.legacyRules = true;
        enqueue({current}, kind);
        return;
    }
    Outcome outcome;
    outcome.thumbnail.emplace();
    if (picture.isNull())
        outcome.thumbnail->creatingThumbnailText = noThumbnailText;
    else {
        outcome.thumbnail->thumbnail =
            Image::fromQImage(picture.scaled(thumbnailBox, Qt::KeepAspectRatio, Qt::SmoothTransformation));
        outcome.thumbnail->creatingThumbnailText = QStringLiteral("");
    }
    library_.store().modify(current, {tr("Thumbnail")},
                            [&outcome](Movie& movie) { applyThumbnail(movie, outcome, true); });
    if (!picture.isNull()) Q_EMIT pictureChosen(current, picture);
    Q_EMIT thumbnailDidLoad(current);
}

Thumbnails::Movies Thumbnails::moviesOfAllPlaylists() const {
    Movies movies;
    std::unordered_set<const Movie*> seen; // an item of several playlists is one item
    for (const auto& playlist : library_.playlists())
        for (const auto& movie : playlist->movieList)
            if (seen.insert(movie.get()).second) movies.push_back(movie);
    return movies;
}

// The queue.

void Thumbnails::enqueue(const Movies& items, const Task& kind) {
    const bool networkMode = preferences_.networkMode();
    for (const auto& movie : items) {
        if (!kind.force && !kind.probe && !movie->thumbnail.isNil()) continue;
        Task task = kind;
        task.movie = movie;
        task.identity = movie.get();
        task.file = movie->fileReference(networkMode);
        task.view = runViewOf(preferences_);
        task.colour = {colourChoiceOf(preferences_, library_.store().records().colourConfiguration()), movie->inputColourSpace,
                       colours_};
        queue_->waiting.push_back(std::move(task));
        ++queue_->total;
    }
    dispatch();
}

void Thumbnails::prioritise(const Movies& visible) {
    std::unordered_set<const Movie*> wanted;
    for (const auto& movie : visible)
        wanted.insert(movie.get());
    std::stable_partition(queue_->waiting.begin(), queue_->waiting.end(),
                          [&wanted](const Task& task) { return wanted.count(task.identity) > 0; });
}

void Thumbnails::cancelAll() {
    queue_->waiting.clear();
    if (queue_->cancelled) *queue_->cancelled = true;
}

void Thumbnails::dispatch() {
    Queue& queue = *queue_;
    if (!queue.job && !queue.waiting.empty()) {
        queue.job = progress_.begin({tr("Creating Thumbnails...")}, queue.total, false);
        queue.cancelled = progress_.cancelFlag(queue.job);
    }
    while (queue.running < queue.threads && !queue.waiting.empty()) {
        Task task = std::move(queue.waiting.front());
        queue.waiting.pop_front();
        const auto movie = task.movie.lock();
        if (!movie || (!task.force && !task.probe && !movie->thumbnail.isNil())) {
            ++queue.done;
            continue;
        }
        if (!task.force && !movie->thumbnail.isNil()) task.choice.clear();
        task.cancelled = queue.cancelled;
        ++queue.running;
        queue.work.run([this, task = std::move(task)] {
            auto outcome = std::make_shared<const Outcome>(carryOut(task, *tables_));
            WorkQueue::deliver(this, [this, task, outcome] { taskDone(task, *outcome); });
        });
    }
    if (queue.running > 0 || !queue.waiting.empty()) {
        progress_.advance(queue.job, queue.done, queue.total);
        return;
    }
    queue.done = queue.total = 0;
    if (!queue.job) return;
    progress_.end(std::exchange(queue.job, 0));
    queue.cancelled.reset();
    Q_EMIT idle();
}

Thumbnails::Outcome Thumbnails::carryOut(const Task& task, SampleTables& tables) {
    Outcome outcome;
    if (*task.cancelled) return outcome;
    const auto answer = askWithPatience<FileCheck>([file = task.file] { return checkFile(file); }, fileSystemPatience,
                                                   task.cancelled.get());
    if (*task.cancelled) return outcome; // what was cut short says nothing about the file
    const FileCheck check = answer.value_or(FileCheck{false, task.file.path});
    // A missing file says so; "no thumbnail" would hide it from the viewer, which passes missing files over. What its item
    // shows stays.
    if (task.onlyIfFound || !check.found) outcome.check = check;
    if (!check.found) return outcome;
    const QString media = mediaAddress(check.path, task.file.run, task.view);
    if (task.probe) {
        if (Result<ProbeResult> probed = probeMovie(media, task.cancelled.get(), &tables)) {
            outcome.properties = probed->asset;
            outcome.run = probed->run;
        }
    }
    const ThumbnailRequest request{media, task.choice, task.legacyRules, task.colour};
    if (!task.known.isNil()) {
        const Image anew = sameThumbnailAnew(task.known, request, task.cancelled.get(), &tables);
        if (!anew.isNil()) outcome.thumbnail = ThumbnailResult{anew, {}, {}}; // else a person chose it: it stays
    } else if (!task.choice.isNull() && !*task.cancelled) {
        outcome.thumbnail = makeThumbnail(request, task.cancelled.get(), &tables);
    }
    // What was cut short says nothing about the file.
    return *task.cancelled ? Outcome{} : outcome;
}

void Thumbnails::applyThumbnail(Movie& movie, const Outcome& outcome, bool force) {
    if (!outcome.thumbnail) return;
    const ThumbnailResult& made = *outcome.thumbnail;
    if (!force && !movie.thumbnail.isNil()) return; // another request was faster
    movie.thumbnail = made.thumbnail;
    if (made.creatingThumbnailText) movie.creatingThumbnailText = *made.creatingThumbnailText;
    if (made.mThumbnailFrame) movie.mThumbnailFrame = *made.mThumbnailFrame;
}

void Thumbnails::taskDone(const Task& task, const Outcome& outcome) {
    --queue_->running;
    ++queue_->done;
    if (const auto movie = task.movie.lock()) {
        library_.store().modify(movie, {{}, EditKind::background}, [&](Movie& item) {
            if (outcome.check) item.applyFileCheck(*outcome.check);
            if (outcome.properties) applyAssetProperties(item, *outcome.properties);
            applyRun(item, outcome.run);
            applyThumbnail(item, outcome, task.force);
        });
        if (outcome.thumbnail) Q_EMIT thumbnailDidLoad(movie);
    }
    dispatch();
}

} // namespace daylark
