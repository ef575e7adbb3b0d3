#include "playback/read/Neighbours.h"

#include "media/sequence/RunFiles.h"

#include <QFileInfo>

#include <algorithm>
#include <chrono>
#include <tuple>
#include <utility>

namespace daylark {

namespace {

constexpr qint64 startPictures = 4;  // ready at a neighbour's start: enough for a run to begin
constexpr qint64 neighbourShare = 4; // of the budget, one part in so many

constexpr qint64 mostMovies = 4; // before those left behind are looked through

/// Size and time of its last change: of a run of pictures, of all of them.
std::pair<qint64, QDateTime> stampOf(const QString& path, const CancelFlag* cancel) {
    const auto run = RunAddress::of(path);
    if (!run) {
        const QFileInfo file(path);
        return {file.size(), file.lastModified()};
    }
    std::pair<qint64, QDateTime> stamp;
    const Result<RunFiles> files = RunFiles::look(*run, cancel);
    if (!files) return stamp;
    for (const qint64 number : files->numbers) {
        const QFileInfo file(files->address.pathOf(number));
        stamp.first += file.size() + 1; // that there is one more counts as well
        stamp.second = stamp.second.isValid() ? std::max(stamp.second, file.lastModified()) : file.lastModified();
    }
    return stamp;
}

} // namespace

qint64 PreparedMovie::byteCount() const {
    qint64 bytes = 0;
    for (const auto& [frame, picture] : pictures)
        bytes += picture.isNull() ? 0 : picture.byteCount();
    return std::max(bytes, reader->pictureBytes());
}

Result<std::unique_ptr<PreparedMovie>> prepareMovie(const QString& path, const CancelFlag& cancel,
                                                    SampleTables* tables) {
    auto movie = std::make_unique<PreparedMovie>();
    movie->path = path;
    // A run's pictures are only looked at where it is to be ready for later: opening it takes their names alone.
    if (!RunAddress::of(path)) std::tie(movie->fileSize, movie->fileModified) = stampOf(path, &cancel);
    auto reader = FrameReader::open(path, &cancel, tables);
    if (!reader) return reader.error();
    movie->reader = std::move(*reader);
    movie->reader->limitDecoders(0);
    movie->index = std::make_shared<const SampleIndex>(movie->reader->index());
    return movie;
}

Neighbours::Neighbours(std::function<void(qint64)> held, SampleTables* tables)
    : held_(std::move(held))
    , tables_(tables)
    , thread_([this] { run(); }) {}

Neighbours::~Neighbours() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
        cancel_ = true;
    }
    wake_.notify_all();
    done_.notify_all();
    thread_.join();
}

void Neighbours::setBudget(qint64 bytes) {
    budget_ = bytes;
}

void Neighbours::give(qint64 bytes) {
    bytes_ += bytes;
    if (bytes != 0) held_(bytes);
}

void Neighbours::recount(PreparedMovie& movie) {
    const qint64 bytes = movie.byteCount();
    give(bytes - std::exchange(movie.counted, bytes));
}

void Neighbours::want(std::vector<NeighbourMovie> movies) {
    {
        const std::lock_guard lock(mutex_);
        wishes_ = std::move(movies);
        finished_.clear();
        pruneDue_ = true;
        if (!underWay_.isNull() && underWay_ != taking_ &&
            std::none_of(wishes_.begin(), wishes_.end(),
                         [&](const NeighbourMovie& wish) { return wish.path == underWay_; }))
            cancel_ = true;
    }
    wake_.notify_all();
}

void Neighbours::setResting(bool resting) {
    {
        const std::lock_guard lock(mutex_);
        if (resting == resting_) return;
        resting_ = resting;
    }
    if (resting) wake_.notify_all();
}

Neighbours::Movies::iterator Neighbours::find(const QString& path) {
    return std::find_if(movies_.begin(), movies_.end(),
                        [&](const auto& movie) { return movie->path == path; });
}

std::unique_ptr<PreparedMovie> Neighbours::take(const QString& path, const CancelFlag& cancel) {
    std::unique_ptr<PreparedMovie> movie;
    {
        std::unique_lock lock(mutex_);
        taking_ = path;
        if (!underWay_.isNull() && underWay_ != path) cancel_ = true; // the machine is wanted for this one
        while (underWay_ == path && !stopping_ && !cancel)
            done_.wait_for(lock, std::chrono::milliseconds(2));
        taking_.clear();
        wishes_.erase(std::remove_if(wishes_.begin(), wishes_.end(),
                                     [&](const NeighbourMovie& wish) { return wish.path == path; }),
                      wishes_.end());
        if (const auto at = find(path); at != movies_.end()) {
            movie = std::move(*at);
            movies_.erase(at);
        }
    }
    if (!movie) return nullptr;
    give(-std::exchange(movie->counted, 0));
    const bool isTheSame = stampOf(path, &cancel) == std::pair(movie->fileSize, movie->fileModified);
    return isTheSame ? std::move(movie) : nullptr;
}

void Neighbours::keep(std::unique_ptr<PreparedMovie> movie) {
    if (RunAddress::of(movie->path)) return; // nobody knows whether its pictures are still those
    {
        const std::lock_guard lock(mutex_);
        if (wishes_.empty()) return;
        recount(*movie);
        movies_.push_back(std::move(movie));
        pruneDue_ = qint64(movies_.size()) > mostMovies;
    }
    wake_.notify_all();
}

/// Readers end here, on this thread: that may wait for a decoder.
void Neighbours::letGoUnwanted(std::unique_lock<std::mutex>& lock) {
    pruneDue_ = false;
    Movies gone;
    for (auto at = movies_.begin(); at != movies_.end();) {
        const auto next = std::next(at);
        const bool wanted =
            std::any_of(wishes_.begin(), wishes_.end(),
                        [&](const NeighbourMovie& wish) { return wish.path == (*at)->path; }) &&
            find((*at)->path) == at;
        if (!wanted) gone.splice(gone.end(), movies_, at);
        at = next;
    }
    lock.unlock();
    for (const auto& movie : gone)
        give(-movie->counted);
    gone.clear();
    lock.lock();
}

const NeighbourMovie* Neighbours::nextWish() {
    const auto wish = std::find_if(wishes_.begin(), wishes_.end(), [&](const NeighbourMovie& candidate) {
        return candidate.path != taking_ && finished_.count(candidate.path) == 0;
    });
    return wish == wishes_.end() ? nullptr : &*wish;
}

void Neighbours::run() {
    std::unique_lock lock(mutex_);
    while (!stopping_) {
        if (!workOnce(lock))
            wake_.wait(lock, [this] { return stopping_ || pruneDue_ || (resting_ && nextWish()); });
    }
    lock.unlock();
    movies_.clear();
}

bool Neighbours::workOnce(std::unique_lock<std::mutex>& lock) {
    if (pruneDue_) {
        letGoUnwanted(lock);
        return true;
    }
    const NeighbourMovie* wish = resting_ ? nextWish() : nullptr;
    if (!wish) return false;
    const NeighbourMovie copy = *wish; // the wishes may be replaced meanwhile
    prepare(copy, lock);
    return true;
}

/// One step of getting a movie ready: opening it, or one more picture.
void Neighbours::prepare(const NeighbourMovie& wish, std::unique_lock<std::mutex>& lock) {
    cancel_ = false;
    underWay_ = wish.path;
    std::unique_ptr<PreparedMovie> movie;
    if (const auto at = find(wish.path); at != movies_.end()) {
        movie = std::move(*at);
        movies_.erase(at);
    }
    lock.unlock();
    bool more = true;
    if (!movie) {
        const auto stamp = stampOf(wish.path, &cancel_); // what comes later is noticed
        auto fresh = prepareMovie(wish.path, cancel_, tables_);
        if (fresh) std::tie((*fresh)->fileSize, (*fresh)->fileModified) = stamp;
        more = fresh && (*fresh)->index->count() > 0;
        if (more) movie = std::move(*fresh);
    } else {
        const qint64 last = movie->index->count() - 1;
        const qint64 start = wish.startFrame ? wish.startFrame(*movie->index) - 1 : 0;
        more = readMore(*movie, std::clamp<qint64>(start, 0, last));
    }
    lock.lock();
    underWay_.clear();
    if (movie) movies_.push_back(std::move(movie));
    const bool givenUp = cancel_;
    if (!more && !givenUp) finished_.insert(wish.path);
    done_.notify_all();
}

/// False when there is no more to read.
bool Neighbours::readMore(PreparedMovie& movie, qint64 start) {
    const qint64 end = std::min(start + startPictures, movie.index->count());
    for (auto at = movie.pictures.begin(); at != movie.pictures.end();) {
        const bool near = at->first >= start && at->first < end;
        at = near ? std::next(at) : movie.pictures.erase(at);
    }
    qint64 frame = start;
    while (frame < end && movie.pictures.count(frame) != 0)
        ++frame;
    if (frame >= end) return false;
    const auto picture = movie.reader->read(frame, &cancel_);
    movie.lastRead = picture ? frame : -1;
    if (!picture || picture->isNull()) return false;
    recount(movie);
    if (bytes_ > budget_ / neighbourShare) return false;
    movie.pictures.emplace(frame, *picture);
    return true;
}

} // namespace daylark
