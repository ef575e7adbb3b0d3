#pragma once

#include "base/Result.h"
#include "base/jobs/CancelFlag.h"
#include "model/Timecode.h"

#include <QString>

#include <optional>
#include <vector>

namespace daylark {

/// What a file says of itself beyond what an item's record keeps: read from its headers, for people. Values.
struct MediaFacts {
    struct Sound {
        QString codec;  ///< "PCM signed 24-bit", "AAC"
        QString layout; ///< "stereo", "5.1"; "3 channels" where it has no name
        int channels = 0;
        int rate = 0; ///< samples a second
        QString language; ///< as the file has it; empty: none
        bool operator==(const Sound&) const = default;
    };
    QString codec;       ///< of the pictures, with its profile: "ProRes 422 HQ"; empty: no pictures
    QString pixelFormat; ///< "yuv422p10le"
    QString colour;      ///< primaries, transfer, matrix and range as far as they are told: "bt709 · tv"
    std::vector<Sound> sounds;
    std::optional<SmpteTime> startTimecode;
};

/// Worker threads; waits on the disk, as long as opening a file may. Fails for what cannot be opened. `cancel` may be null.
[[nodiscard]] Result<MediaFacts> readMediaFacts(const QString& path, const CancelFlag* cancel = nullptr);

} // namespace daylark
