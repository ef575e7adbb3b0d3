#pragma once

#include "model/Movie.h"

#include <QObject>
#include <QString>

#include <memory>

namespace daylark {

class Alerts;
class CurrentMovie;
class Player;
class Transport;
class Preferences;
template<class T>
class Preference;

/// The frames that playback keeps to: the movie without its handles while "trimHandles" is on, or one
/// bookmark. Handles are frame counts in the preferences, the same for every movie. With "exactLoops" the player itself
/// keeps to the range, and what runs outside is brought in at once; without, a range is held by a look once a second, so a
/// run may leave it for as long. Handle range and bookmark loop never run together: the
/// one that comes ends the other. Handles that leave no frame switch trimming off and say so. Interface
/// thread.
///
///     handleHead   firstFrameForLoop            lastFrameForLoop   handleTail
///     |-----------|#########################################|-----------------|
///     1                                                             frame count
class PlaybackRange : public QObject {
    Q_OBJECT
public:
    PlaybackRange(CurrentMovie& current, Player& player, Transport& transport, Preferences& preferences,
                  Alerts& alerts, QObject* parent = nullptr);

    void markInPoint();  ///< the frame on screen becomes the first of the range; trimming on
    void markOutPoint(); ///< the frame on screen becomes the last of the range; trimming on
    void resetHandles(); ///< back to the default handles; trimming stays as it is
    void toggleTrimHandles();
    /// The preferences onto the movie; also when anybody else changes handles that apply, or trimming.
    void setPlaybackRange();
    void applyToMovieShown(); ///< the same, with a movie that has just come
    /// A sheet of the viewer was closed; the button as `Alerts` numbers them.
    void alertDidEnd(int returnCode, const QString& contextInfo);
    /// The look once a second: brings a run back that left the range, or is a frame before its end.
    void holdRange();

    // For the loop over one bookmark. The bookmark's own state is its owner's to keep.
    enum class Bars { shown, hidden };
    /// Puts a loop over these frames (from 1, inclusive) in force and switches trimming off.
    void loopRange(qint64 first, qint64 last, Bars bars = Bars::shown);
    void moveRange(qint64 first, qint64 last); ///< the loop in force gets other frames; trimming off
    void endLoop();                            ///< no range in force, both bars hidden
    [[nodiscard]] bool isLooping() const { return loopMovie_; }
    [[nodiscard]] qint64 firstFrameForLoop() const { return firstFrameForLoop_; }
    [[nodiscard]] qint64 lastFrameForLoop() const { return lastFrameForLoop_; }

    /// What both range bars show.
    struct BarState {
        qint64 rangeStart = 0, rangeEnd = 0; ///< frames from 1, inclusive
        qint64 maxValue = 0;                 ///< the movie's frame count
        bool shown = false;
        bool operator==(const BarState&) const = default;
    };
    [[nodiscard]] const BarState& bars() const { return bars_; }

Q_SIGNALS:
    void changed();                ///< loop or bars
    /// They leave no frame of the movie that has come, and trimming is off: to be said in passing, since nobody has just
    /// asked for anything.
    void handlesTooLong(const QString& message);
    void bookmarkLoopsOffNeeded(); ///< a handle range is about to be applied

private:
    /// No range is in force until the next `setPlaybackRange`.
    void setMovie(const std::shared_ptr<Movie>& movie);
    enum class Occasion { asked, movieShown };
    void apply(Occasion occasion);
    void warnOfLongHandles(Occasion occasion);
    void setBars(const BarState& bars);
    template<class T>
    void store(Preference<T>& preference, const T& value);
    [[nodiscard]] qint64 frameCount() const;
    [[nodiscard]] bool isExact() const; ///< a range is in force, and the player's to keep
    void handToPlayer();
    void bringIn(); ///< a run outside the range

    Player& player_;
    Transport& transport_;
    Preferences& preferences_;
    Alerts& alerts_;
    std::shared_ptr<Movie> movie_;
    bool loopMovie_ = false;
    qint64 firstFrameForLoop_ = 0, lastFrameForLoop_ = 0;
    BarState bars_;
    int storing_ = 0; ///< the preferences that change are set here
};

} // namespace daylark
