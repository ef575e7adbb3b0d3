#pragma once

#include "media/container/MediaFile.h"
#include "media/index/RawSample.h"

#include <vector>

namespace daylark {

/// All video samples of an AVI file whose pictures stand for themselves, from its index, without reading
/// through the media. Empty unless nothing is missing there: the chunks of all streams that the index names
/// lie one after the other to the file's end, with nothing between them that holds a picture, and the packets
/// read in some places are those. Internal to media/; leaves the file at an unspecified position.
[[nodiscard]] std::vector<RawSample> readAviHeader(const MediaFile& file);

} // namespace daylark
