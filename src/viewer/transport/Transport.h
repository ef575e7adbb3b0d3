#pragma once

#include "model/Movie.h"
#include "platform/Sender.h"
#include "viewer/transport/StartPosition.h"

#include <QObject>

#include <memory>

namespace daylark {

class CurrentMovie;
class Player;
class Preferences;
class ViewerList;

/// Play, pause, step, first, last, next and previous movie, repeat modes, speed and volume of the viewer. At most one of the
/// two direction flags is set; both clear means paused. Interface thread.
class Transport : public QObject {
    Q_OBJECT
public:
    Transport(CurrentMovie& current, Player& player, ViewerList& list, Preferences& preferences,
              QObject* parent = nullptr);

    void playPauseMovie();
    void pauseMovie();
    void playMovieForwards();  ///< again while playing forwards: faster, rate = multiplier x (rate + 2)
    void playMovieBackwards();
    void jumpToNextFrame();    ///< while playing: only stops; on the last frame: wraps to the first
    void jumpToPreviousFrame();
    void jumpToFirstFrame();   ///< and last: a run ends there
    void jumpToLastFrame();
    void displayNextMovie();
    void displayPreviousMovie();
    void setRateMultiplier(const Sender& sender);
    void setRepeatMode(const Sender& sender);
    void setQTAttributes(); ///< loops and volume onto the player
    void setVolume(float volume);
    [[nodiscard]] float volume() const;
    /// The slider's position in ticks of the movie's clock: pauses and shows the frame in whose middle it lands.
    void setSliderTime(double sliderValue);

    [[nodiscard]] bool movieIsPlayingForwards() const { return forwards_; }
    [[nodiscard]] bool movieIsPlayingBackwards() const { return backwards_; }
    [[nodiscard]] bool isRunning() const { return forwards_ || backwards_; }

    /// Lands the fraction of a frame into the frame (from 1): where bookmarks and start positions put the playhead.
    void goToFrame(qint64 frame, double fraction);

    void applyStartPosition(const StartPosition::Previous& previous); ///< by the preference "loadFrame"
    void resumeAfterMovieChange(); ///< a run carries over in its direction; a one-frame movie pauses
    void reset();                  ///< both flags clear, rate 0

    /// The end of a run for a player that plays single items. Whole for all modes; the viewer's own player
    /// tells its ends otherwise and comes here for "One Shot" and "Ping-Pong" alone.
    void playerItemDidReachEnd();
    [[nodiscard]] bool movieReachedEnd() const { return movieReachedEnd_; }

Q_SIGNALS:
    void stateChanged();    ///< direction flags or rate
    void volumeChanged(float volume); ///< whoever sets the preference
    void runCommanded();    ///< play was pressed, either way
    void soughtBySlider();  ///< a hand chose the position
    void actionDone();      ///< after every transport action: texts, active bookmarks and drawings are to be refreshed

private:
    void setMovie(const std::shared_ptr<Movie>& movie);
    void movieDidEnd();
    void runAtMultiplier(int direction);
    void goToFirstFrame();
    void goToLastFrame();
    void wrapToFirstMovie();
    void run(int direction);
    [[nodiscard]] bool isOneFrame() const;
    [[nodiscard]] qint64 movieFrameCount() const; ///< the sample index's when open, else the record's

    CurrentMovie& current_;
    Player& player_;
    ViewerList& list_;
    Preferences& preferences_;
    std::shared_ptr<Movie> movie_;
    bool forwards_ = false, backwards_ = false;
    bool movieReachedEnd_ = false;  ///< set when a one-shot run, or a single item's in a list, ends
    MediaTime startTime_, endTime_; ///< of a single item's loop; nothing sets them, both are zero: wanted
    bool startAtFirstFrame_ = false; ///< the movie being opened starts there, whatever "loadFrame" says
};

} // namespace daylark
