#include "playback/read/DecodeThread.h"

#include "playback/read/DragPlan.h"
#include "playback/read/FrameCache.h"

#include <malloc.h>

#include <algorithm>

namespace daylark {

namespace {

constexpr qint64 decodersShare = 8; // of the budget, one part in so many, for decoders that stand aside

} // namespace

DecodeThread::DecodeThread(FrameCache& cache, std::function<void(Opening)> opened,
                           std::function<void()> lookAgain, Neighbours* neighbours, SampleTables* tables)
    : cache_(cache)
    , neighbours_(neighbours)
    , tables_(tables)
    , opened_(std::move(opened))
    , lookAgain_(std::move(lookAgain))
    , thread_([this] { run(); }) {}

DecodeThread::~DecodeThread() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
        cancel_ = true;
    }
    wake_.notify_one();
    thread_.join();
}

void DecodeThread::open(quint64 generation, const QString& path) {
    give({generation, path.isNull() ? QStringLiteral("") : path});
}

void DecodeThread::close(quint64 generation) {
    give({generation, {}});
}

void DecodeThread::give(Command command) {
    {
        const std::lock_guard lock(mutex_);
        command_ = std::move(command);
        demand_ = {};
        dirty_ = true;
        cancel_ = true;
        resting_ = false;
    }
    wake_.notify_one();
}

void DecodeThread::want(quint64 generation, const ReadDemand& demand) {
    const bool ready = demand.dragging ? isCovered(demand.target, cache_) : cache_.contains(demand.target);
    {
        const std::lock_guard lock(mutex_);
        if (demand_.dragging != demand.dragging) gaveUp_ = false; // a hand that rests waits for nothing else
        demand_ = demand;
        demandGeneration_ = generation;
        dirty_ = true;
        resting_ = false;
        if (underWay_ >= 0 && !ready && !isWorthFinishing(demand)) {
            cancel_ = true;
            gaveUp_ = gaveUp_ || !aheadRead_;
        }
    }
    wake_.notify_one();
}

// What is read ahead of need is given up at once. Of what was asked for, a short read never is, and of the
// long ones one at least brings a picture before the next is given up; while a hand drags, those in the
// target's own group are finished, whose pictures are near.
bool DecodeThread::isWorthFinishing(const ReadDemand& demand) const {
    if (isOnTheWay(underWay_, demand.target)) return true;
    if (aheadRead_) return false;
    if (shortRead_ || gaveUp_) return true;
    return demand.dragging && isOnTheWay(demand.target, underWay_);
}

/// One that decodes little: a key frame, or a frame or two beyond the last one.
bool DecodeThread::isShort(qint64 frame) const {
    constexpr qint64 few = 4;
    const qint64 last = movie_->lastRead;
    return movie_->index->samples[size_t(frame)].key || (last >= 0 && frame > last && frame - last <= few);
}

// A read in the target's own group that comes before it is finished: the target needs it.
bool DecodeThread::isOnTheWay(qint64 frame, qint64 target) const {
    if (!index_ || target < 0 || target >= index_->count() || frame > target) return false;
    qint64 key = target;
    while (key > frame && !index_->samples[size_t(key)].key)
        --key;
    return key == frame;
}

void DecodeThread::rest() {
    cache_.sweep();
    if (movie_) movie_->reader->limitDecoders(cache_.budget() / decodersShare); // lets go what was given back
    if (neighbours_) neighbours_->setResting(true);
    if (!resting_.exchange(true)) lookAgain_();
}

void DecodeThread::work() {
    if (neighbours_) neighbours_->setResting(false);
}

void DecodeThread::run() {
    std::unique_lock lock(mutex_);
    for (;;) {
        wake_.wait(lock, [this] { return stopping_ || dirty_; });
        if (stopping_) break;
        dirty_ = false;
        cancel_ = false;
        if (command_) {
            const Command command = std::move(*command_);
            command_.reset();
            index_.reset();
            lock.unlock();
            work();
            obey(command);
            lock.lock();
            dirty_ = true;
            continue;
        }
        const bool current = movie_ && demandGeneration_ == readerGeneration_;
        const ReadDemand demand = current ? demand_ : ReadDemand();
        lock.unlock();
        const bool more = current && readOne(demand);
        lock.lock();
        underWay_ = -1;
        gaveUp_ = gaveUp_ && movie_ && movie_->lastRead < 0;
        dirty_ = dirty_ || more;
        if (dirty_ || (!current && movie_)) continue; // a movie just opened awaits its first demand
        lock.unlock();
        rest();
        lock.lock();
    }
    lock.unlock();
    movie_.reset();
}

DecodeThread::Opening DecodeThread::openedAs(const Command& command) {
    Opening opening{command.generation, nullptr, {}, {}};
    if (neighbours_) movie_ = neighbours_->take(command.path, cancel_);
    if (!movie_) {
        auto fresh = prepareMovie(command.path, cancel_, tables_);
        if (fresh)
            movie_ = std::move(*fresh);
        else
            opening.reason = fresh.error().text;
    }
    if (!movie_) return opening;
    for (const auto& [frame, picture] : movie_->pictures)
        cache_.put(command.generation, frame, picture);
    movie_->pictures.clear();
    opening.decoder = movie_->reader->decoderName();
    opening.index = movie_->index;
    return opening;
}

void DecodeThread::obey(const Command& command) {
    std::unique_ptr<PreparedMovie> left = std::move(movie_);
    readerGeneration_ = command.generation;
    if (!command.path.isNull()) {
        Opening opening = openedAs(command);
        {
            const std::lock_guard lock(mutex_);
            index_ = opening.index;
        }
        opened_(std::move(opening));
    }
    cache_.sweep();
    if (left && neighbours_) {
        left->reader->limitDecoders(0); // it keeps its place, no others
        neighbours_->keep(std::move(left));
    }
    left.reset();
    malloc_trim(0); // decoders' tables lie about in the heap otherwise, movie after movie
}

/// Where pictures refer to others a decoder keeps tables of motion with each, which take about as much as the
/// picture itself (measured with H.264).
qint64 DecodeThread::bytesInDecoders() const {
    const qint64 pictures = std::max<qint64>(0, movie_->reader->pictureBytes() - cache_.byteCount());
    const auto& samples = movie_->index->samples;
    const bool standAlone = samples.size() > 1 && samples[1].key;
    return standAlone ? pictures : 2 * pictures;
}

qint64 DecodeThread::keyFrameAfter(qint64 frame) const {
    const auto& samples = movie_->index->samples;
    do
        ++frame;
    while (frame < qint64(samples.size()) && !samples[size_t(frame)].key);
    return frame;
}

bool DecodeThread::readOne(const ReadDemand& demand) {
    FrameReader& reader = *movie_->reader;
    const ReadState state{movie_->index->count(), movie_->lastRead,
                          [&reader](qint64 frame) { return reader.keyFrameBefore(frame); },
                          [this](qint64 frame) { return keyFrameAfter(frame); }};
    const std::optional<qint64> frame = nextFrameToRead(demand, state, cache_);
    if (!frame) return false;
    {
        const std::lock_guard lock(mutex_);
        if (dirty_) return true; // something newer came while planning
        underWay_ = *frame;
        shortRead_ = isShort(*frame);
        aheadRead_ = !demand.dragging && cache_.contains(demand.target);
    }
    // While the movie stands on a picture that is ready, its neighbours have their turn as well.
    if (demand.playing || !cache_.contains(demand.target))
        work();
    else if (neighbours_)
        neighbours_->setResting(true);
    reader.limitDecoders(cache_.budget() / decodersShare);
    const auto keep = [this](qint64 number, const VideoFrame& picture) {
        cache_.put(readerGeneration_, number, picture);
        cache_.setBeside(readerGeneration_, bytesInDecoders());
        lookAgain_();
    };
    qint64 lastPassed = -1;
    const auto passed = [&](qint64 number, const VideoFrame& picture) {
        keep(number, picture);
        lastPassed = number;
        const std::lock_guard lock(mutex_);
        gaveUp_ = false;
    };
    // A hand that drags wants every picture on the way. A jump is quicker when they are let go (their memory
    // is used again), and a key frame has none; the group is filled afterwards anyway.
    const bool isKey = movie_->index->samples[size_t(*frame)].key;
    auto picture = demand.dragging && !isKey ? reader.readThrough(*frame, passed, &cancel_)
                                             : reader.read(*frame, &cancel_);
    if (!picture && cancel_) {
        movie_->lastRead = lastPassed; // the reader keeps its place
        return true;
    }
    movie_->lastRead = *frame;
    keep(*frame, picture ? *picture : VideoFrame());
    return true;
}

} // namespace daylark
