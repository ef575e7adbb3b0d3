#pragma once

#include "media/container/MediaFile.h"
#include "media/index/RawSample.h"

#include <vector>

namespace daylark {

/// All video samples of a QuickTime or MP4 file from the tables in its header, without reading through the
/// media. Empty unless that is certain to be what reading would give: one sample description of a codec whose
/// packets are handed out as they are stored, no fragments, the header's tables and the demuxer's index agree
/// sample by sample, and so do the packets read at both ends of the file. Internal to media/; leaves the file
/// at an unspecified position.
[[nodiscard]] std::vector<RawSample> readMovHeader(const MediaFile& file);

} // namespace daylark
