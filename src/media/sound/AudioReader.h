#pragma once

#include "base/Result.h"
#include "media/decode/FrameReader.h"

#include <memory>

namespace daylark {

/// A movie's sound, decoded to interleaved stereo (left, right; -1 to 1, beyond it where a downmix is that
/// loud) at one rate and placed on the movie's own clock: sample 0 is the moment at which the first picture
/// is shown. It is the preferred sound track, else the first one; where that is mono, the mono tracks that go
/// with it: those that name their speakers are mixed, of others the first two are left and right. Any stretch
/// may be read; what lies before a track, behind it or in a gap is silence. One thread at a time. Fails to
/// open where there is no sound that can be decoded; damage in the middle is silence.
class AudioReader {
public:
    /// `pictures`: the movie's sample index, whose first sample sets the origin. `rate`: samples a second of
    /// what is read.
    [[nodiscard]] static Result<std::unique_ptr<AudioReader>>
    open(const QString& path, const SampleIndex& pictures, int rate, const CancelFlag* cancel = nullptr);
    /// The first sound track, and no other, of a file that is no part of the movie: sample 0 is where that
    /// file begins.
    [[nodiscard]] static Result<std::unique_ptr<AudioReader>> openAdded(const QString& path, int rate,
                                                                        const CancelFlag* cancel = nullptr);
    virtual ~AudioReader() = default;

    [[nodiscard]] virtual int rate() const = 0;
    /// Where the first of the tracks begins, in samples; negative when it begins before the first picture.
    [[nodiscard]] virtual qint64 start() const = 0;
    /// Writes `count` pairs from sample `position` on. Reading in order decodes once; any other position
    /// seeks, exactly. Fails only when cancelled.
    [[nodiscard]] virtual Result<void> read(qint64 position, float* pairs, qint64 count,
                                            const CancelFlag* cancel = nullptr) = 0;
};

} // namespace daylark
