#pragma once

#include "media/container/SampleIndex.h"
#include "media/decode/VideoFrame.h"
#include "model/MediaTime.h"
#include "playback/read/Neighbours.h"
#include "playback/run/PlaybackClock.h"
#include "playback/run/PlayerStatistics.h"
#include "playback/sound/SoundOutput.h"

#include <QObject>
#include <QString>

#include <memory>
#include <utility>
#include <vector>

namespace daylark {

class SampleTables;

/// Plays one movie at a time: rate, position, single steps, loop, volume, end of movie. Positions are times
/// on the movie's clock; which picture stands at a position is the sample index's to say, never a rounded
/// second. Pictures come from one decode thread; requests are coalesced (the newest wins) and numbered by a
/// generation, and pictures of an old generation are dropped. Reset order: stop taking, bump the generation,
/// flush, resume. Interface thread; nothing here waits for a disk or a decoder.
class Player : public QObject {
    Q_OBJECT
public:
    /// `cacheBudget`: what decoded pictures may take (bytes); 0 means `FrameCache::defaultBudget()`. `sound`,
    /// if any, is heard forwards up to rate 2 and is the clock while it is heard; both outlive the player.
    /// `tables`: where movies' sample tables are shared; null makes some of its own.
    explicit Player(PlaybackClock& clock, QObject* parent = nullptr, qint64 cacheBudget = 0,
                    SoundOutput* sound = nullptr, std::shared_ptr<SampleTables> tables = nullptr);
    ~Player() override;

    /// Opens a file on the decode thread; answers with `opened` or `openFailed`. A newer `open` or `close`
    /// cancels an older one.
    void open(const QString& path, const MovieSound& sound = {});
    /// The run of pictures that is open, opened anew because some of its pictures have come, gone or been made again: place,
    /// rate and all other pictures stay, and while it is opened what is shown stays. `changed`: frames, from 1. Answers with
    /// `renewed`, or with `openFailed` where it cannot be read any more. Where nothing is open: as `open`.
    void renew(const QString& path, const std::vector<qint64>& changed, const MovieSound& sound = {});
    /// Another sound for the movie that is open, or being opened; a run goes on, and the sound comes in where
    /// it is.
    void setSound(const MovieSound& sound);
    /// The movies that may be opened next, the likeliest first: opened and their first pictures decoded
    /// ahead, within the cache's budget, while this movie's own decoding rests. `open` then shows them at
    /// once.
    void setNeighbours(std::vector<NeighbourMovie> movies);
    void close(); ///< forgets movie and picture; rate 0
    [[nodiscard]] bool isOpen() const;
    /// For whoever else opens the same movies, on whatever thread.
    [[nodiscard]] const std::shared_ptr<SampleTables>& sampleTables() const;

    [[nodiscard]] const SampleIndex& index() const; ///< empty when nothing is open
    [[nodiscard]] MediaTime duration() const;
    [[nodiscard]] MediaTime currentTime() const;
    void setCurrentTime(const MediaTime& time); ///< clamped to the movie; shows the frame that stands there
    /// While a hand drags: the nearest ready picture is shown at once, and key frames come first. The exact
    /// one follows when the hand rests, at the latest when dragging ends.
    void setDragging(bool dragging);
    /// The frame that the current position stands on, counted from 1; 0 when nothing is open. Known at once,
    /// whether its picture is ready or not.
    [[nodiscard]] qint64 currentFrame() const;
    [[nodiscard]] bool pictureIsCurrent() const; ///< the picture last shown is the one of `currentFrame`

    [[nodiscard]] float rate() const; ///< 0 stopped, negative backwards
    void setRate(float rate);
    void gotoBeginning();
    void stepForward();  ///< one frame; stays on the last
    void stepBackward(); ///< one frame; stays on the first

    /// The clock moves the position: false when stopped, and while the first pictures of a run are still
    /// being read.
    [[nodiscard]] bool isRolling() const;
    /// The frames whose pictures are ready, as inclusive ranges counted from 1.
    [[nodiscard]] std::vector<std::pair<qint64, qint64>> readyRanges() const;

    void setCacheBudget(qint64 bytes); ///< as in the constructor; holds at once
    [[nodiscard]] PlayerStatistics statistics() const;

    void setLoops(bool loops); ///< at an end (either direction) goes on from the other instead of `didEnd`
    enum class RangeEnd {
        turns, ///< a run goes on from the range's other end, to the frame and the sample
        ends   ///< as at the end of the movie: `didEnd`
    };
    /// Frames (from 1, inclusive) that a run which comes to them doesn't leave, in either direction: no picture
    /// from beyond is shown. One that stands beyond their end goes its way. `last` < `first`: none. Holds for the
    /// movie that is open.
    void setRange(qint64 first, qint64 last, RangeEnd atEnd = RangeEnd::turns);
    void setVolume(float volume); ///< 0 to 1
    [[nodiscard]] float volume() const;

    [[nodiscard]] VideoFrame shownFrame() const; ///< the picture on screen; null before the first

public Q_SLOTS:
    /// Looks at the clock and moves on; the player's own timer calls it, and tests that turn the clock by
    /// hand.
    void tick();

Q_SIGNALS:
    void opened();
    void openFailed(const QString& reason);
    void renewed(); ///< the index may be another one; its pictures follow
    /// A picture to show: exactly frame `number` (from 1). While a hand drags or a run is late it may be one
    /// on the way to the current frame; standing, the current one always follows.
    void frameShown(const daylark::VideoFrame& frame, qint64 number);
    void positionChanged(); ///< currentFrame or currentTime changed, its picture perhaps still to come
    void rateChanged(float rate);
    void didEnd(); ///< played onto an end, of the movie or the range, without looping; the rate is 0

private:
    class Engine;
    std::unique_ptr<Engine> engine_;
};

} // namespace daylark
