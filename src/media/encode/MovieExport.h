#pragma once

#include "base/Result.h"
#include "media/encode/ExportWatch.h"
#include "media/sound/MovieSound.h"

#include <QString>

namespace daylark {

class SampleTables;

/// Writes a movie as a file of its own with the sound that it is heard with, whole or not at all (an older file of that name
/// is replaced); gives its size in bytes. Pictures, and sound of its own, are copied as they are coded; timecode, colours,
/// rotation and edit list stay. QuickTime and MP4 files keep everything but what is not referred to any more. An added sound
/// begins with the first picture, ends with the movie at the latest, and is kept as it was recorded where such a movie can hold
/// that. The name's extension says which kind of file; one that says nothing, the movie's own. `tables` may be null. Errors: not
/// readable, not writable, a kind of file that can't hold this; "cancelled". Worker threads.
[[nodiscard]] Result<qint64> saveMovieWithSound(const QString& movie, const MovieSound& sound, const QString& path,
                                                SampleTables* tables = nullptr, const ExportWatch& watch = {});

} // namespace daylark
