#pragma once

#include "media/decode/FrameReader.h"
#include "playback/read/Neighbours.h"
#include "playback/read/ReadPlan.h"

#include <QString>

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

namespace daylark {

class FrameCache;

/// The one thread that opens and reads the current movie. It holds one movie at a time (taken from its
/// neighbours where it is ready there), fills the cache after the newest demand, and says "look again" when
/// there is something new or nothing left to do; older demands and openings are given up. The calls return at
/// once (one short lock); the callbacks come on the decode thread. Owned by the player; the destructor ends
/// the read under way and waits.
class DecodeThread {
public:
    struct Opening {
        quint64 generation = 0;
        std::shared_ptr<const SampleIndex> index; ///< null: failed
        QString reason;
        QString decoder; ///< for people
    };
    /// `neighbours` and `tables` may be null; they outlive the thread, as the cache does.
    DecodeThread(FrameCache& cache, std::function<void(Opening)> opened, std::function<void()> lookAgain,
                 Neighbours* neighbours = nullptr, SampleTables* tables = nullptr);
    ~DecodeThread();
    DecodeThread(const DecodeThread&) = delete;
    DecodeThread& operator=(const DecodeThread&) = delete;

    void open(quint64 generation, const QString& path);
    void close(quint64 generation);
    void want(quint64 generation, const ReadDemand& demand);
    [[nodiscard]] bool isResting() const {
        return resting_;
    } ///< the newest demand is met as far as it can be

private:
    struct Command {
        quint64 generation = 0;
        QString path; ///< null: close
    };
    void run();
    void obey(const Command& command);
    [[nodiscard]] Opening openedAs(const Command& command);
    bool readOne(const ReadDemand& demand);
    void give(Command command);
    void rest();
    void work();
    [[nodiscard]] bool isOnTheWay(qint64 frame, qint64 target) const;
    [[nodiscard]] bool isWorthFinishing(const ReadDemand& demand) const;
    [[nodiscard]] bool isShort(qint64 frame) const;
    [[nodiscard]] qint64 bytesInDecoders() const;
    [[nodiscard]] qint64 keyFrameAfter(qint64 frame) const;

    FrameCache& cache_;
    Neighbours* const neighbours_;
    SampleTables* const tables_;
    const std::function<void(Opening)> opened_;
    const std::function<void()> lookAgain_;
    CancelFlag cancel_ = false;
    std::atomic<bool> resting_ = true;

    std::mutex mutex_; // guards down to the blank line
    std::condition_variable wake_;
    std::optional<Command> command_;
    ReadDemand demand_;
    quint64 demandGeneration_ = 0;
    std::shared_ptr<const SampleIndex> index_;
    qint64 underWay_ = -1;
    bool shortRead_ = false; ///< the read under way ends soon by itself
    bool aheadRead_ = false; ///< nobody waits for it yet
    bool dirty_ = false, stopping_ = false;
    bool gaveUp_ = false; ///< a read was given up since the last picture: the next one may end

    std::unique_ptr<PreparedMovie> movie_; // the decode thread's own, as is what follows
    quint64 readerGeneration_ = 0;

    std::thread thread_;
};

} // namespace daylark
