#pragma once

#include "model/MediaTime.h"

#include <QtGlobal>

#include <vector>

namespace daylark {

/// The video samples of a movie in presentation order; the one authority on which picture stands where.
///
///     frame      0      1      2      3
///     ticks    |------|------|------|------|   endTicks
///              0      1001   2002   ...        (timeScale ticks a second, the first shown sample at 0)
///
/// Frame n (counted from 0 here; the rest of the program counts from 1) is the n-th sample shown, whatever the B-frames,
/// edit list, open groups or rate. Times are exact integers: where the rate is constant (nearly all movies) a frame is
/// exactly `step` ticks long. A plain value; never changes once built; any thread.
struct SampleIndex {
    struct Sample {
        qint64 pts = 0;     ///< the stream's own presentation time, in timeBase units
        qint64 ticks = 0;   ///< when it is shown, in 1/timeScale seconds from the first shown sample
        bool key = false;
    };
    std::vector<Sample> samples;
    std::vector<qint64> missing = {};     ///< of a run of pictures: the frames (from 0) that have none of their own, in order
    int timeBaseNum = 1, timeBaseDen = 1; ///< the stream's
    qint32 timeScale = 600;               ///< ticks a second of this movie's player clock
    qint32 step = 0;                      ///< ticks of one frame; 0 when the rate varies or there is none
    qint64 endTicks = 0;                  ///< where the last frame ends

    [[nodiscard]] qint64 count() const { return qint64(samples.size()); }
    /// The frame shown at a time on any scale: the last one that starts at or before it, clamped to the ends; -1 if empty.
    [[nodiscard]] qint64 frameAt(const MediaTime& time) const;
    [[nodiscard]] MediaTime timeOf(qint64 frame) const; ///< its start; clamped
    [[nodiscard]] MediaTime duration() const { return {endTicks, timeScale}; }
};

} // namespace daylark
