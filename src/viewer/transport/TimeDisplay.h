#pragma once

#include "model/runs/FrameNumbers.h"
#include "model/Movie.h"
#include "model/Timecode.h"

#include <QObject>
#include <QString>

#include <memory>
#include <optional>

namespace daylark {

class CurrentMovie;
class Player;
class Preferences;
class ReviewEdits;

/// Where the viewer is, in the forms that people read: frame number from 1, elapsed time, frame counter, timecode, duration,
/// rate. Recomputed with every picture shown. Interface thread.
class TimeDisplay : public QObject {
    Q_OBJECT
public:
    TimeDisplay(CurrentMovie& current, Player& player, ReviewEdits& edits, Preferences& preferences,
                QObject* parent = nullptr);

    void setTimeCodeData(const std::optional<SmpteTime>& start); ///< the timecode track's start; none: counted from zero
    [[nodiscard]] bool timecodeIsKnown() const { return timecodeIsKnown_; } ///< the movie's track was read, or has none

    [[nodiscard]] qint64 currentFrameNumber() const; ///< from 1, by the sample index
    [[nodiscard]] double sliderTime() const;         ///< ticks of the movie's clock
    [[nodiscard]] double sliderMaximum() const;      ///< ticks: start of the last frame
    [[nodiscard]] QString computeTimecodeFromFrameNumber(qint64 frame) const;
    [[nodiscard]] QString currentTimeForDisplay() const { return elapsed_; }
    [[nodiscard]] QString currentFrameNumberForDisplay() const { return counter_; } ///< by counterStartFrame
    [[nodiscard]] QString currentTimeCodeForDisplay() const { return timecode_; }
    /// What the production calls the frames of the movie on screen: by hand, by its pictures, else by preference.
    [[nodiscard]] FrameNumbers frameNumbers() const;
    [[nodiscard]] QString productionText() const; ///< "Prod 1039" of the frame on screen; empty where it has no number of its own
    [[nodiscard]] QString productionTextOf(qint64 frame) const; ///< the same of any frame, from 1
    [[nodiscard]] QString frameAndProductionText() const; ///< "Frame 39   Prod 1039", whatever the counter begins with
    [[nodiscard]] std::optional<qint64> frameOfEntry(const QString& text) const; ///< where a person means by this; from 1
    [[nodiscard]] QString approxFrameRate() const { return frameRate_; }
    [[nodiscard]] QString durationText() const;

    [[nodiscard]] QString stripFrameNumber() const; ///< the counter's text whatever is switched on; empty without a movie
    [[nodiscard]] QString stripFrameOfFrames() const; ///< that, the last frame's and the production's: "0039 / 0139   Prod 1039"
    [[nodiscard]] QString stripTimecode() const;    ///< the timecode's text whatever is switched on; empty without a movie
    /// Ticks under the position slider: one a frame up to 239 frames, and the slider snaps to them; none above.
    [[nodiscard]] qint64 tickCount() const;
    [[nodiscard]] float framesPerSecond() const; ///< the record's; before it was probed, the sample index's

    void setFrameCounterToOne(); ///< the frame on screen counts as 1 from now on, and the counter is shown

    void setOverlayInfoStatic();
    void setOverlayInfoDynamic();

Q_SIGNALS:
    void changed();

private:
    [[nodiscard]] QString counterText(qint64 frame) const;
    void setMovie(const std::shared_ptr<Movie>& movie);
    [[nodiscard]] QString timecodeWithPrefix() const;

    Player& player_;
    ReviewEdits& edits_;
    Preferences& preferences_;
    std::shared_ptr<Movie> movie_;
    std::optional<SmpteTime> start_;
    bool timecodeIsKnown_ = false;
    QString elapsed_, counter_, timecode_, frameRate_;
};

} // namespace daylark
