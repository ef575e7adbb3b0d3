#pragma once

#include "media/container/MediaFile.h"
#include "media/index/RawSample.h"

#include <vector>

namespace daylark {

/// What a container's tables say of its samples is tried out in some places before it is believed: these two
/// serve every container. Internal to media/.

/// Both ends of so many and some in between; the same ones each time. `count` > 0.
[[nodiscard]] std::vector<qint64> placesToCheck(qint64 count, size_t inBetween);
/// A seek to the sample's time brings its packet, of so many bytes; all but its duration is compared. Leaves
/// the file at an unspecified position.
[[nodiscard]] bool isFoundBySeeking(const MediaFile& file, const RawSample& sample, qint64 size);

} // namespace daylark
