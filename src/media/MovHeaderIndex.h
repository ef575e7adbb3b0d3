#pragma once

#include "media/MediaFile.h"

#include <vector>

namespace daylark {

/// A video sample in file order, as the demuxer gives it.
struct RawSample {
    qint64 pts = AV_NOPTS_VALUE, dts = AV_NOPTS_VALUE; ///< stream time base
    qint64 position = -1;                              ///< byte offset in the file
    qint64 duration = 0;                               ///< stream time base; 0 where nobody asks for it
    quint32 content = 0;                               ///< a check sum of the data; 0 unknown
    bool key = false, shown = true;
};

/// All video samples of a QuickTime or MP4 file from the tables in its header, without reading through the
/// media. Empty unless that is certain to be what reading would give: one sample description of a codec whose
/// packets are handed out as they are stored, no fragments, the header's tables and the demuxer's index agree
/// sample by sample, and so do the packets read at both ends of the file. Internal to media/; leaves the file
/// at an unspecified position.
[[nodiscard]] std::vector<RawSample> readMovHeader(const MediaFile& file);

} // namespace daylark
