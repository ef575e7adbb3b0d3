#pragma once

#include "model/Timecode.h"

#include <QString>

#include <optional>

namespace daylark {

class Movie;

/// What a production calls the frames of an item: 1001 for the first, where the program counts it as 1. A value; any thread.
struct FrameNumbers {
    qint64 first = 1, step = 1;

    /// The production's numbers are other ones than those that are counted from 1.
    [[nodiscard]] bool areOwn() const { return first != 1 || step != 1; }
    [[nodiscard]] qint64 numberOf(qint64 frame) const { return first + (frame - 1) * step; } ///< frame from 1
    [[nodiscard]] std::optional<qint64> frameOf(qint64 number) const;                        ///< none: between two steps
    bool operator==(const FrameNumbers&) const = default;
};

/// By hand, else by the item's run of pictures, else what is usual: this number, or where there is none that of the timecode
/// with which the item begins. `start` is its timecode track's, `fps` its rate where the record does not know it.
[[nodiscard]] FrameNumbers frameNumbersOf(const Movie& movie, std::optional<qint64> usualFirst,
                                          const std::optional<SmpteTime>& start = {}, float fps = 0);
/// By the count of the timecode that the first frame has; 1 where there is none.
[[nodiscard]] FrameNumbers numbersByTimecode(const std::optional<SmpteTime>& start, float fps);
/// Only the timecode of the item's file can tell.
[[nodiscard]] bool isNumberedByTimecode(const Movie& movie, std::optional<qint64> usualFirst);

/// Frames since 00:00:00:00 at the rate rounded to a whole number, as timecode texts count them; none for a text that is no
/// "hh:mm:ss:ff". Parts may be left out from the left; ";" and "." stand for ":" too.
[[nodiscard]] std::optional<qint64> framesOfTimecode(const QString& text, float fps);

/// Where somebody wants to go who has typed this: "1012" is the production's number where the item has its own and else
/// counted from 1, "#12" is counted from 1 in any case; "01:00:02:12" is a timecode; "+8", "-1:00" go on from where one is.
/// None for what is no place in the item.
struct FrameEntry {
    qint64 current = 1, count = 0; ///< frames from 1, and how many there are
    FrameNumbers numbers;
    float fps = 0;
    std::optional<SmpteTime> start; ///< of the timecode track
    qint64 timecodeStep = 1;        ///< by which it goes from one frame to the next
    [[nodiscard]] std::optional<qint64> frameOf(const QString& text) const;
};

} // namespace daylark
