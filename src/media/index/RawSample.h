#pragma once

#include "media/container/Av.h"

namespace daylark {

inline constexpr qint64 unknownTime = AV_NOPTS_VALUE;

/// A video sample in file order, as the demuxer gives it. Internal to media/. A plain value.
struct RawSample {
    qint64 pts = AV_NOPTS_VALUE, dts = AV_NOPTS_VALUE; ///< stream time base
    qint64 position = -1;                              ///< byte offset in the file
    qint64 duration = 0;                               ///< stream time base; 0 where nobody asks for it
    quint32 content = 0;                               ///< a check sum of the data; 0 unknown
    bool key = false, shown = true;
    bool still = false;       ///< an edit list has it stand for longer than a picture
    bool secondField = false; ///< completes the picture of the sample before
    quint16 description = 0;  ///< of `RawSamples`
};

/// All of them, and what the decoder has to be told before those whose description is not 0.
struct RawSamples {
    std::vector<RawSample> samples;
    std::vector<QByteArray> descriptions; ///< description n (from 1) stands at n - 1; 0 is the stream's own
    bool readThrough = false;             ///< no table said all, the whole file was read
};

} // namespace daylark
