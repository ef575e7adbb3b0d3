#pragma once

#include "media/decode/VideoFrame.h"
#include "playback/read/Lap.h"

#include <algorithm>
#include <map>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

namespace daylark {

/// Decoded pictures of one movie by frame number (from 0), bounded in bytes: after every `put` the pictures
/// held take at most the budget less what is held elsewhere (for neighbouring movies) and what the decoders
/// hold (that up to half of the budget), except that the last one is never given up. What goes first is what
/// is farthest from the playhead in the direction of travel; what lies behind counts double. Each opening of
/// a movie has a generation: pictures of another one are not taken. Owned by the player; any thread (the
/// decode thread puts, the interface thread looks). Nothing here fails.
class FrameCache {
public:
    /// Where the playhead stands and where it is heading.
    struct Travel {
        qint64 playhead = 0;
        int direction = 1; ///< 1 or -1
        Lap lap = {}; ///< of a run
    };

    explicit FrameCache(qint64 budget)
        : budget_(budget) {}
    /// A quarter of the machine's memory, at most 4 GiB.
    [[nodiscard]] static qint64 defaultBudget();
    void setBudget(qint64 bytes);
    /// Counts in (or, negative, out) pictures that others hold of the same budget.
    void addElsewhere(qint64 bytes);
    /// What this movie's decoders hold in bytes beside the pictures here.
    void setBeside(quint64 generation, qint64 bytes);

    /// Forgets everything; from now on takes this generation only. What was held is freed by `sweep`, since
    /// freeing many pictures takes time that the interface thread does not have.
    void reset(quint64 generation);
    void sweep();
    /// From now on takes this generation only, and keeps what it holds: the same movie, opened anew.
    void carryOver(quint64 generation);
    void drop(const std::vector<qint64>& frames);
    void setTravel(const Travel& travel);
    /// Takes a picture (a null one stands for a frame that cannot be read). False when it was not kept.
    bool put(quint64 generation, qint64 frame, const VideoFrame& picture);

    [[nodiscard]] bool contains(qint64 frame) const;
    [[nodiscard]] VideoFrame find(qint64 frame) const; ///< null when not held
    /// Walks from `last` towards `first` and gives the first frame with a picture.
    [[nodiscard]] std::optional<qint64> nearestBetween(qint64 first, qint64 last) const;
    /// The frame with a picture nearest to this one, on either side.
    [[nodiscard]] std::optional<qint64> nearest(qint64 frame) const;
    [[nodiscard]] bool wouldKeep(qint64 frame) const; ///< a picture like those held
    [[nodiscard]] qint64 capacity() const;            ///< pictures like those held that fit; at least 1
    [[nodiscard]] qint64 byteCount() const;           ///< of the pictures here
    [[nodiscard]] qint64 elsewhere() const;           ///< and of those that don't stand here
    [[nodiscard]] qint64 budget() const;
    /// The frames held, as inclusive ranges in order.
    [[nodiscard]] std::vector<std::pair<qint64, qint64>> readyRanges() const;

private:
    using Pictures = std::map<qint64, VideoFrame>;
    [[nodiscard]] qint64 cost(qint64 frame) const;
    [[nodiscard]] Pictures::const_iterator dearest() const;
    [[nodiscard]] qint64 room() const { return budget_ - elsewhere_ - std::min(beside_, budget_ / 2); }
    [[nodiscard]] std::vector<VideoFrame> giveUp();

    mutable std::mutex mutex_;
    qint64 budget_, elsewhere_ = 0;
    qint64 beside_ = 0; ///< what the movie's decoders hold
    Pictures pictures_;
    std::vector<Pictures> forgotten_;
    Travel travel_;
    quint64 generation_ = 0;
    qint64 bytes_ = 0;
    qint64 lastSize_ = 0;
};

} // namespace daylark
