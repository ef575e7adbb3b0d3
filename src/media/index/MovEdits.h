#pragma once

#include "media/container/MediaFile.h"
#include "media/index/RawSample.h"

#include <vector>

namespace daylark {

/// Where a QuickTime or MP4 edit list has several parts, the demuxer leaves gaps and overlaps between them as long
/// as its B-frames' delay. Puts the shown samples (presentation times set) where the list itself has them.
/// Leaves them as they are where the list has one part, or they don't fit it. Internal to media/.
void placeByEdits(const MediaFile& file, std::vector<RawSample>& samples);

} // namespace daylark
