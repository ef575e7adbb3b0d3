#pragma once

#include "media/container/SampleIndex.h"

#include <vector>

namespace daylark {

/// What becomes of a run of pictures that is opened anew because some of them have come, gone or been made again. Pure; any
/// thread. Frames from 0.

/// Those whose pictures were read before and are no longer right: the changed ones themselves, and those that stand in for one
/// that is missing now, or was then.
[[nodiscard]] std::vector<qint64> framesToReadAnew(const SampleIndex& before, const SampleIndex& after,
                                                   std::vector<qint64> changed);
/// Every frame that was there stands where it stood, and there is no other.
[[nodiscard]] bool hasSameTimes(const SampleIndex& before, const SampleIndex& after);

} // namespace daylark
