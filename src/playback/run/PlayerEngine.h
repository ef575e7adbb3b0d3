#pragma once

#include "playback/read/DecodeThread.h"
#include "playback/read/FrameCache.h"
#include "playback/read/SeekingHand.h"
#include "playback/run/Player.h"
#include "playback/run/RunClock.h"
#include "playback/run/RunTally.h"

#include <QTimer>

#include <atomic>
#include <memory>
#include <optional>
#include <vector>

namespace daylark {

/// The player's state; interface thread, like the player.
class Player::Engine {
public:
    Engine(Player& player, PlaybackClock& clock, qint64 cacheBudget, SoundOutput* sound,
           std::shared_ptr<SampleTables> tables)
        : q_(player)
        , clock_(clock)
        , run_(clock, sound)
        , cache_(0)
        , tables_(std::move(tables))
        , neighbours_([this](qint64 bytes) { cache_.addElsewhere(bytes); }, tables_.get())
        , index_(std::make_shared<SampleIndex>())
        , decoder_(
              cache_,
              [this](DecodeThread::Opening opening) { post([this, opening] { openingDone(opening); }); },
              [this] { announce(); }, &neighbours_, tables_.get()) {
        setCacheBudget(cacheBudget);
        timer_.setTimerType(Qt::PreciseTimer);
        timer_.setSingleShot(true);
        QObject::connect(&timer_, &QTimer::timeout, &player, &Player::tick);
        constexpr int momentMs = 50;
        rest_.setInterval(momentMs);
        rest_.setSingleShot(true);
        QObject::connect(&rest_, &QTimer::timeout, &player, [this] {
            hand_.rest();
            demand();
        });
    }

    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;

    void open(const QString& path, const MovieSound& sound);
    void renew(const QString& path, const std::vector<qint64>& changed, const MovieSound& sound);
    void close();
    void moveTo(const MediaTime& time);
    void step(int direction);
    void setRate(float rate);
    void setLoops(bool loops);
    void setRange(const Lap& range, RangeEnd atEnd);
    void setVolume(float volume);
    void setDragging(bool dragging);
    void setCacheBudget(qint64 bytes);
    void tick();

    Player& q_;
    PlaybackClock& clock_;
    RunClock run_;
    FrameCache cache_;
    const std::shared_ptr<SampleTables> tables_;
    Neighbours neighbours_;
    std::shared_ptr<const SampleIndex> index_;
    bool open_ = false;
    qint64 frame_ = -1; // the current one, from 0
    qint64 ticks_ = 0;  // the current time
    float rate_ = 0;
    VideoFrame shown_;
    qint64 shownNumber_ = -1;
    bool rolling_ = false;
    float volume_ = 0.5f;
    RunTally tally_;
    QString decoderName_;

private:
    template<class Call>
    void post(Call call) {
        QMetaObject::invokeMethod(&q_, std::move(call), Qt::QueuedConnection);
    }
    void announce();
    void forget();
    void openingDone(const DecodeThread::Opening& opening);
    void renewalDone(const DecodeThread::Opening& opening);
    void place(qint64 ticks, int direction);
    void demand();
    [[nodiscard]] ReadDemand currentDemand() const;
    [[nodiscard]] bool isReadyToRoll() const;
    void present();
    void show(const VideoFrame& picture, qint64 frame);
    void startRun();
    void tryToRoll();
    void stopRun();
    void advance();
    void end();
    void arm();
    [[nodiscard]] qint64 ticksAtPosition(double position) const;
    [[nodiscard]] qint64 frameAtPosition(double position) const;
    [[nodiscard]] qint64 endOfFrame(qint64 frame) const;
    [[nodiscard]] int direction() const { return rate_ < 0 ? -1 : 1; }
    [[nodiscard]] qint64 last() const { return index_->count() - 1; }
    [[nodiscard]] std::optional<Lap> rangeAhead() const;
    /// The frames that a run from the current one doesn't leave, and what becomes of it at their end.
    [[nodiscard]] Lap stretch() const { return rangeAhead().value_or(Lap{0, last()}); }
    [[nodiscard]] bool turns() const { return rangeAhead() ? rangeEnd_ == RangeEnd::turns : loops_; }
    [[nodiscard]] Lap lap() const { return turns() ? stretch() : Lap(); }
    void handLapToSound();

    quint64 generation_ = 0;
    bool isRenewing_ = false;
    std::vector<qint64> changed_; // pictures that a renewal under way is to read anew
    bool holdDemands_ = false; // while listeners of `opened` choose where to start
    bool loops_ = false;
    Lap range_;
    RangeEnd rangeEnd_ = RangeEnd::turns;
    SeekingHand hand_;
    int travel_ = 1;     // direction of the last movement
    int endedAt_ = 0;    // 1 or -1 after playing onto that end, until the position changes
    qint64 runFrom_ = 0; // the first frame that this run may still show
    std::atomic<bool> announced_ = false;
    QTimer timer_;
    QTimer rest_;          // runs while a dragging hand has moved lately
    DecodeThread decoder_; // last: its thread ends before what it uses
};

} // namespace daylark
