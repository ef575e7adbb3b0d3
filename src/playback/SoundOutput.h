#pragma once

#include "media/SampleIndex.h"

#include <QString>

#include <memory>
#include <optional>

namespace daylark {

/// What makes a movie's sound heard while the player plays forwards at its natural rate. A run of sound
/// begins with `play` and ends with `stop`; each flushes what was left of the one before. While it is heard
/// it is the player's clock. Where there is no device or no sound it never answers, and the player goes by
/// its own clock. Owned by whoever builds the player and outlives it; interface thread; no call waits.
class SoundOutput {
public:
    virtual ~SoundOutput() = default;
    /// The movie whose sound the next runs play; null: none. Ends the run under way.
    virtual void setMovie(const QString& path, std::shared_ptr<const SampleIndex> pictures) = 0;
    virtual void play(double seconds) = 0; ///< from this moment of the movie on
    virtual void stop() = 0;
    virtual void setVolume(float volume) = 0; ///< 0 to 1, heard at once
    /// The moment of the movie that is heard now, seconds; the beginning of the run while the sound is about
    /// to start. None while there is nothing to go by.
    [[nodiscard]] virtual std::optional<double> position() const = 0;
};

} // namespace daylark
