#pragma once

#include "model/Movie.h"
#include "model/Timecode.h"

#include <QObject>
#include <QString>

#include <memory>
#include <optional>

namespace daylark {

class Player;
class UserDefaults;

/// Where the viewer is, in the forms that people read: frame number from 1, elapsed time, frame counter, timecode, duration,
/// rate. Recomputed with every picture shown. Interface thread.
class TimeDisplay : public QObject {
    Q_OBJECT
public:
    TimeDisplay(Player& player, UserDefaults& defaults, QObject* parent = nullptr);

    void setMovie(const std::shared_ptr<Movie>& movie);
    void setTimeCodeData(const std::optional<SmpteTime>& start); ///< the timecode track's start; none: counted from zero

    [[nodiscard]] qint64 currentFrameNumber() const; ///< from 1, by the sample index
    [[nodiscard]] double sliderTime() const;         ///< ticks of the movie's clock
    [[nodiscard]] double sliderMaximum() const;      ///< ticks: start of the last frame
    [[nodiscard]] QString computeTimecodeFromFrameNumber(qint64 frame) const;
    [[nodiscard]] QString currentTimeForDisplay() const { return elapsed_; }
    [[nodiscard]] QString currentFrameNumberForDisplay() const { return counter_; } ///< by counterStartFrame
    [[nodiscard]] QString currentTimeCodeForDisplay() const { return timecode_; }
    [[nodiscard]] QString approxFrameRate() const { return frameRate_; }
    [[nodiscard]] QString durationText() const;

    void setOverlayInfoStatic();
    void setOverlayInfoDynamic();

Q_SIGNALS:
    void changed();

private:
    Player& player_;
    UserDefaults& defaults_;
    std::shared_ptr<Movie> movie_;
    std::optional<SmpteTime> start_;
    QString elapsed_, counter_, timecode_, frameRate_;
};

} // namespace daylark
