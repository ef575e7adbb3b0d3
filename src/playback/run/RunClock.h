#pragma once

#include "playback/run/PlaybackClock.h"
#include "playback/sound/SoundOutput.h"

#include <QString>

#include <memory>

namespace daylark {

/// Where a run of the player stands, in ticks of the movie's clock. The sound that is heard says it; it may
/// wait for its device, but the run never turns back. Without sound, and where it falls silent for good, the
/// clock given goes on from there. It also starts and ends the sound: forwards, up to its fastest rate. Owned
/// by the player; interface thread; nothing fails.
class RunClock {
public:
    /// `sound` may be null; both outlive this.
    RunClock(PlaybackClock& clock, SoundOutput* sound)
        : clock_(clock)
        , sound_(sound) {}
    ~RunClock() { leaveMovie(); }
    RunClock(const RunClock&) = delete;
    RunClock& operator=(const RunClock&) = delete;

    void expectMovie(const QString& path, const MovieSound& sound); ///< it is being opened
    void setMovie(std::shared_ptr<const SampleIndex> index);        ///< the one expected is there
    void leaveMovie();
    /// Another sound for the same movie; one that is heard is followed by the new one where the run stands.
    void setSound(const MovieSound& sound);
    /// Where runs come round, from now on; one under way keeps its place, its sound comes in anew.
    void setLap(const SoundLap& lap);
    void setVolume(float volume); ///< 0 to 1

    void placeAt(double ticks) { base_ = furthest_ = ticks; } ///< where the next run begins
    void start(float rate);                                   ///< from where it was placed, now
    void setRate(float rate);                                 ///< of the run under way; the same direction
    /// A run has come round to these ticks, whole laps of `passed` ticks; the sound goes on by itself.
    void comeRound(double ticks, double passed);
    void stop(); ///< the sound falls silent at once
    [[nodiscard]] double position();

private:
    void setBase(double ticks);
    void sound(SoundOutput::Start start);

    PlaybackClock& clock_;
    SoundOutput* const sound_;
    QString path_;
    std::shared_ptr<const SampleIndex> index_; ///< null: no movie
    MovieSound movieSound_;
    SoundLap lap_;
    float rate_ = 0;
    bool sounding_ = false; ///< the sound plays this run
    double passed_ = 0;     ///< ticks by which the sound of this run is ahead of the picture, whole rounds
    double furthest_ = 0;   ///< ticks that this run has come to while it has sound
    double base_ = 0;       ///< ticks where the run stood at baseTime_
    qint64 baseTime_ = 0;
};

} // namespace daylark
