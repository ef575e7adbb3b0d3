#include "playback/DecodeThread.h"

#include "playback/FrameCache.h"

namespace daylark {

DecodeThread::DecodeThread(FrameCache& cache, std::function<void(Opening)> opened,
                           std::function<void()> lookAgain)
    : cache_(cache)
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
    }
    wake_.notify_one();
}

void DecodeThread::want(quint64 generation, const ReadDemand& demand) {
    const bool ready = cache_.contains(demand.target);
    {
        const std::lock_guard lock(mutex_);
        demand_ = demand;
        demandGeneration_ = generation;
        dirty_ = true;
        if (underWay_ >= 0 && !ready && !gaveUp_ && !isOnTheWay(underWay_, demand.target))
            cancel_ = gaveUp_ = true;
    }
    wake_.notify_one();
}

// A read in the target's own group that comes before it is finished: the target needs it.
bool DecodeThread::isOnTheWay(qint64 frame, qint64 target) const {
    if (!index_ || target < 0 || target >= index_->count() || frame > target) return false;
    qint64 key = target;
    while (key > frame && !index_->samples[size_t(key)].key)
        --key;
    return key == frame;
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
            obey(command);
            lock.lock();
            dirty_ = true;
            continue;
        }
        if (!reader_ || demandGeneration_ != readerGeneration_) continue;
        const ReadDemand demand = demand_;
        lock.unlock();
        const bool more = readOne(demand);
        lock.lock();
        underWay_ = -1;
        gaveUp_ = gaveUp_ && lastRead_ < 0;
        dirty_ = dirty_ || more;
    }
    lock.unlock();
    reader_.reset();
}

void DecodeThread::obey(const Command& command) {
    reader_.reset();
    lastRead_ = -1;
    readerGeneration_ = command.generation;
    if (command.path.isNull()) return;
    auto reader = FrameReader::open(command.path, &cancel_);
    Opening opening{command.generation, nullptr, {}, {}};
    if (reader) {
        reader_ = std::move(*reader);
        opening.index = std::make_shared<const SampleIndex>(reader_->index());
        opening.decoder = reader_->decoderName();
        const std::lock_guard lock(mutex_);
        index_ = opening.index;
    } else {
        opening.reason = reader.error().text;
    }
    opened_(std::move(opening));
}

bool DecodeThread::readOne(const ReadDemand& demand) {
    const ReadState state{reader_->index().count(), lastRead_,
                          [this](qint64 frame) { return reader_->keyFrameBefore(frame); }};
    const std::optional<qint64> frame = nextFrameToRead(demand, state, cache_);
    if (!frame) return false;
    {
        const std::lock_guard lock(mutex_);
        if (dirty_) return true; // something newer came while planning
        underWay_ = *frame;
    }
    auto picture = reader_->read(*frame, &cancel_);
    if (!picture && cancel_) {
        lastRead_ = -1;
        return true;
    }
    lastRead_ = *frame;
    cache_.put(readerGeneration_, *frame, picture ? *picture : VideoFrame());
    lookAgain_();
    return true;
}

} // namespace daylark
