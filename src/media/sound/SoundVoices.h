#pragma once

#include "media/container/Av.h"
#include "media/sound/SoundTrack.h"

#include <optional>
#include <vector>

namespace daylark {

/// A sound stream that is heard, and what for. Internal to media/.
struct SoundVoice {
    const AVStream* stream = nullptr;
    quint64 speaker = 0; ///< AV_CH_…: the one that a mono track stands for; 0: its layout says
};

/// Which of a movie's tracks are heard: the preferred one, else the first; where that is mono, those that go with it. None
/// where there is no sound that can be decoded.
[[nodiscard]] std::vector<SoundVoice> heardVoices(const AVFormatContext* format);
/// The first sound stream of a file, and no other.
[[nodiscard]] std::vector<SoundVoice> firstVoice(const AVFormatContext* format);
/// How loud a speaker is on either side; none for one that isn't heard there.
[[nodiscard]] std::optional<SoundTrack::Place> placeOf(quint64 speaker);
/// Where a file begins, in seconds of its own time stamps.
[[nodiscard]] double beginningOf(const AVFormatContext* format);

} // namespace daylark
