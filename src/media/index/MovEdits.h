#pragma once

#include "media/container/MediaFile.h"
#include "media/index/RawSample.h"

#include <vector>

namespace daylark {

/// Where a QuickTime or MP4 edit list has several parts, the demuxer leaves gaps and overlaps between them as long
/// as its B-frames' delay. Puts the shown samples (presentation times set) where the list itself has them.
/// A part that is slower, or stands still, shows its pictures for longer; the demuxer knows no rates, so what it hands out
/// beyond them is hidden. Leaves them as they are where the list has one part at full rate or a faster one, or they don't fit
/// it. Internal to media/.
void placeByEdits(const MediaFile& file, std::vector<RawSample>& samples);

} // namespace daylark
