#pragma once

#include "media/container/Av.h"

namespace daylark {

/// A video sample in file order, as the demuxer gives it. Internal to media/. A plain value.
struct RawSample {
    qint64 pts = AV_NOPTS_VALUE, dts = AV_NOPTS_VALUE; ///< stream time base
    qint64 position = -1;                              ///< byte offset in the file
    qint64 duration = 0;                               ///< stream time base; 0 where nobody asks for it
    quint32 content = 0;                               ///< a check sum of the data; 0 unknown
    bool key = false, shown = true;
};

} // namespace daylark
