#pragma once

#include "support/TruthTable.h"

#include <random>

namespace daylark::truth {

/// Draws an odd but valid file: codec, container, rate, group, B-frames, times (where they begin, whether they
/// are even, have gaps, wrap), edit list, turns and mirrors, pixel aspect, fields, sound and timecode beside
/// it, fragments, joins. The name says all that was drawn.
[[nodiscard]] Clip randomClip(std::mt19937& random);

/// What the codec library itself gives of a file, frame by frame in its own order, with one thread: the number
/// drawn into each picture, -1 where none can be read.
[[nodiscard]] std::vector<int> picturesOfLibrary(const QString& path);

} // namespace daylark::truth
