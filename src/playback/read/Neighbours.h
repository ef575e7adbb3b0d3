#pragma once

#include "media/decode/FrameReader.h"

#include <QDateTime>
#include <QString>

#include <condition_variable>
#include <functional>
#include <list>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

namespace daylark {

/// A movie that may be opened next, and where it will start.
struct NeighbourMovie {
    QString path;
    /// The frame (from 1) that it will show first. Called on another thread: it holds values only. Null: the
    /// first.
    std::function<qint64(const SampleIndex&)> startFrame;
};

/// A movie made ready: opened, and its first pictures decoded.
struct PreparedMovie {
    QString path;
    qint64 fileSize = -1;
    QDateTime fileModified;
    std::unique_ptr<FrameReader> reader;
    std::shared_ptr<const SampleIndex> index;
    std::map<qint64, VideoFrame> pictures; ///< by frame, from 0
    qint64 lastRead = -1;
    qint64 counted = 0; ///< bytes told of it

    [[nodiscard]] qint64 byteCount() const; ///< of its pictures, here and in its decoders
};

/// Opens a movie and builds its index, or takes it from `tables` (which may be null). Errors as
/// `FrameReader::open`.
[[nodiscard]] Result<std::unique_ptr<PreparedMovie>>
prepareMovie(const QString& path, const CancelFlag& cancel, SampleTables* tables);

/// Opens the movies beside the current one and decodes the pictures they will start with, on a thread of its
/// own that works only while the current movie's decoding rests. What it holds stays within a quarter of the
/// budget and is told as it comes and goes, so that the cache makes room. A movie that cannot be prepared is
/// left alone until it is wished for anew. Owned by the player; calls from any thread; the destructor waits
/// for the read under way, which it ends.
class Neighbours {
public:
    /// `held`: bytes that came (or, negative, went); from any thread. `tables` outlives it.
    explicit Neighbours(std::function<void(qint64 bytes)> held, SampleTables* tables = nullptr);
    ~Neighbours();
    Neighbours(const Neighbours&) = delete;
    Neighbours& operator=(const Neighbours&) = delete;

    void setBudget(qint64 bytes); ///< of the whole cache
    /// Replaces the wishes, the most urgent first; what was prepared for others is let go. Returns at once.
    void want(std::vector<NeighbourMovie> movies);
    void setResting(bool resting); ///< the current movie's decoding has nothing to do

    /// Hands over what is ready of this movie, if its file is still the same; waits while it is being
    /// prepared (which would take as long elsewhere), until `cancel`. Null when there is nothing. Decode
    /// thread.
    [[nodiscard]] std::unique_ptr<PreparedMovie> take(const QString& path, const CancelFlag& cancel);
    /// Keeps a movie that was left, in case it is a neighbour of the next one; without wishes it ends here.
    /// Decode thread.
    void keep(std::unique_ptr<PreparedMovie> movie);

private:
    using Movies = std::list<std::unique_ptr<PreparedMovie>>;
    void run();
    bool workOnce(std::unique_lock<std::mutex>& lock);
    void letGoUnwanted(std::unique_lock<std::mutex>& lock);
    void prepare(const NeighbourMovie& wish, std::unique_lock<std::mutex>& lock);
    [[nodiscard]] bool readMore(PreparedMovie& movie, qint64 start);
    [[nodiscard]] const NeighbourMovie* nextWish();
    [[nodiscard]] Movies::iterator find(const QString& path);
    void give(qint64 bytes);
    void recount(PreparedMovie& movie);

    const std::function<void(qint64)> held_;
    SampleTables* const tables_;
    CancelFlag cancel_ = false;
    std::atomic<qint64> bytes_ = 0, budget_ = 0;

    std::mutex mutex_; // guards down to the blank line
    std::condition_variable wake_, done_;
    std::vector<NeighbourMovie> wishes_;
    std::set<QString> finished_; ///< wishes that are met, or cannot be
    Movies movies_;
    QString underWay_; ///< the movie being worked on, which is not in `movies_` meanwhile
    QString taking_;   ///< the movie that the decode thread waits for
    bool resting_ = true, pruneDue_ = false, stopping_ = false;

    std::thread thread_;
};

} // namespace daylark
