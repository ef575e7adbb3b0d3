#pragma once

#include "media/container/MediaFile.h"
#include "media/container/SampleIndex.h"

namespace daylark {

/// Puts the samples (presentation order, `pts` set) on the movie's clock: sets `ticks`, `timeScale`, `step`
/// and `endTicks`. A rate is taken for constant only when every sample's time agrees with it within what the
/// container can express; what the container claims is no more than a first guess. A last frame that stands still for longer
/// has no place on such a clock. Internal to media/.
enum class LastFrame { asOthers, stands };
void setClock(SampleIndex& index, const AVStream& stream, qint64 lastDuration, LastFrame last = LastFrame::asOthers);

} // namespace daylark
