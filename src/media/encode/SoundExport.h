#pragma once

#include "base/Result.h"
#include "media/encode/ExportWatch.h"
#include "media/sound/MovieSound.h"
#include "media/sound/SoundForm.h"

#include <QString>

namespace daylark {

class SampleTables;

/// What was written.
struct SavedSound {
    qint64 bytes = 0, frames = 0;
    SoundForm form;
};

/// Writes what is heard of a movie as a WAVE file, whole or not at all (an older file of that name is replaced): at the
/// sound's own rate, depth and channels, exactly as decoded, and as long as the movie. Of a file without pictures all of it.
/// `tables` may be null. Errors: no sound, not readable, not writable; "cancelled". Worker threads.
[[nodiscard]] Result<SavedSound> saveSoundAsWave(const QString& movie, const MovieSound& sound, const QString& path,
                                                 SampleTables* tables = nullptr, const ExportWatch& watch = {});

/// How many frames of sound at a rate go with the pictures.
[[nodiscard]] qint64 soundFramesOf(const struct SampleIndex& pictures, int rate);
/// Whether both names lead to one file.
[[nodiscard]] bool isSameFile(const QString& one, const QString& other);

} // namespace daylark
