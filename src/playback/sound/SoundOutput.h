#pragma once

#include "media/container/SampleIndex.h"
#include "media/sound/MovieSound.h"

#include <QString>

#include <memory>
#include <optional>

namespace daylark {

/// The stretch that a run comes round in again and again, seconds of the movie; `until` 0: none.
struct SoundLap {
    double from = 0, until = 0;
    bool operator==(const SoundLap&) const = default;
};

/// What makes a movie's sound heard while the player plays forwards, up to twice its natural rate. A run of
/// sound begins with `play` and ends with `stop` or `fade`; each `play` flushes what was left of the run
/// before. While it is heard it is the player's clock. Where there is no device or no sound it doesn't
/// answer, and the player goes by its own clock. Owned by whoever builds the player and outlives it;
/// interface thread; no call waits.
class SoundOutput {
public:
    static constexpr float fastest = 2.0f; ///< rate; beyond it, and backwards, a run is silent

    enum class Start {
        waits, ///< the picture waits a little for its sound to begin
        joins  ///< the picture is in motion already; the sound comes in where it is by then
    };

    virtual ~SoundOutput() = default;
    /// The movie whose sound the next runs play; null: none. Ends the run under way.
    virtual void setMovie(const QString& path, std::shared_ptr<const SampleIndex> pictures,
                          const MovieSound& sound) = 0;
    /// From this moment of the movie on; 0 < rate <= fastest, at any of which the pitch is the natural one.
    virtual void play(double seconds, float rate, Start start) = 0;
    virtual void setRate(float rate) = 0; ///< of the run under way, which goes on without a break
    virtual void stop() = 0;              ///< falls silent at once
    virtual void fade() = 0;              ///< ends the run too; falls silent softly, the picture moves on
    /// Where a run that comes to `until` goes on from, to the sample, without a break; what is less than a second
    /// ahead may still go by the old answer.
    virtual void setLap(const SoundLap& lap) = 0;
    virtual void setVolume(float volume) = 0; ///< 0 to 1, heard at once
    /// The moment of the movie that is heard now, seconds, counted on beyond the end of its lap; the
    /// beginning of the run while the sound is about to start. None while there is nothing to go by.
    [[nodiscard]] virtual std::optional<double> position() const = 0;
};

} // namespace daylark
