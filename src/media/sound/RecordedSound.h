#pragma once

#include "base/Result.h"
#include "media/container/SampleIndex.h"
#include "media/sound/MovieSound.h"
#include "media/sound/SoundForm.h"
#include "base/jobs/CancelFlag.h"

#include <QString>

#include <memory>

namespace daylark {

class SampleTables;

/// A movie's sound as it was recorded: the tracks that `AudioReader` mixes for listening, with every channel as it stands in
/// the file, at its own rate and depth. Sample 0 is the moment at which the first picture is shown; what lies outside the
/// tracks and in gaps is silence. Mono tracks that go together become the channels of one sound. For what is written to files;
/// one thread at a time, a worker. Fails to open as `AudioReader` does.
class RecordedSound {
public:
    /// `pictures`: the movie's sample index; an empty one stands for a file of sound alone, which begins where it begins.
    [[nodiscard]] static Result<std::unique_ptr<RecordedSound>> open(const QString& path, const SampleIndex& pictures,
                                                                     const CancelFlag* cancel = nullptr);
    /// The first sound track of a file that is no part of the movie.
    [[nodiscard]] static Result<std::unique_ptr<RecordedSound>> openAdded(const QString& path,
                                                                          const CancelFlag* cancel = nullptr);
    /// What is heard of a movie; fails for one that was silenced. An added file is looked for by its bookmark.
    [[nodiscard]] static Result<std::unique_ptr<RecordedSound>> openHeard(const QString& path, const SampleIndex& pictures,
                                                                          const MovieSound& sound,
                                                                          const CancelFlag* cancel = nullptr);
    virtual ~RecordedSound() = default;

    [[nodiscard]] virtual const SoundForm& form() const = 0;
    /// All of it has been read; nothing but silence follows this position. Known once reading has come there.
    [[nodiscard]] virtual bool endsBefore(qint64 position) const = 0;
    /// Writes `count` frames (a sample a channel, -1 to 1, exactly as decoded) from `position` on. Fails only when cancelled.
    [[nodiscard]] virtual Result<void> read(qint64 position, double* frames, qint64 count,
                                            const CancelFlag* cancel = nullptr) = 0;
};

/// The pictures of a movie, in order; empty for a file of sound alone. `tables` may be null.
[[nodiscard]] Result<SampleIndex> picturesOf(const QString& path, const CancelFlag* cancel, SampleTables* tables);

} // namespace daylark
