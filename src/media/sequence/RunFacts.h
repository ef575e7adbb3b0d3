#pragma once

#include "base/jobs/CancelFlag.h"
#include "model/Timecode.h"
#include "model/runs/MovieRun.h"

#include <QStringList>

#include <optional>

namespace daylark {

/// The timecode of a run's first frame, as its pictures' headers have it. None where they say none. Worker threads.
[[nodiscard]] std::optional<SmpteTime> timecodeOfRun(const RunAddress& address, const CancelFlag* cancel = nullptr);
/// What of its pictures can be shown beside their colours: layers, then single channels. Empty where none can be read.
/// Worker threads.
[[nodiscard]] QStringList layersOfRun(const RunAddress& address, const CancelFlag* cancel = nullptr);

} // namespace daylark
