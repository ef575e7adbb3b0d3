#pragma once

#include "media/container/MediaFile.h"
#include "media/index/RawSample.h"

#include <vector>

namespace daylark {

/// All video samples of an MXF file whose pictures stand for themselves, from its index tables, without
/// reading through the media. Empty unless the header, the tables and the demuxer agree: as many edit units
/// as the header's duration, each within the essence and none behind it, one picture in each that is looked
/// at (the ends, the longest ones, in which one might be hidden, and some in between), and the packets read
/// in some of these places are those. Internal to media/; leaves the file at an unspecified position.
[[nodiscard]] std::vector<RawSample> readMxfHeader(const MediaFile& file);

} // namespace daylark
