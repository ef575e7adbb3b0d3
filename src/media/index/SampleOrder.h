#pragma once

#include "media/container/MediaFile.h"
#include "media/index/RawSample.h"

#include <vector>

namespace daylark {

/// From samples in file order to the order in which they are shown: where a container says less than all, or
/// something else than it means. Internal to media/; every function may open the file anew and decode from
/// its beginning; fails when cancelled.

/// Recordings joined end to end begin their times anew; the second is shown after the first, not between its
/// pictures. A restart shows in the decoding times: presentation times go back by any reordering, too.
void joinRestarts(const MediaFile& file, std::vector<RawSample>& samples);
/// Where a program stream has several pictures in one packet, the demuxer may give one the time of the next: it runs ahead and
/// comes back later. Puts what lies between on the even steps that all others have.
void evenOutRunsAhead(const MediaFile& file, std::vector<RawSample>& samples);
/// Gives every sample a presentation time. Where only decoding times are there, or pass for presentation
/// times though the codec reorders, the decoder tells the order.
[[nodiscard]] Result<void> completeTimes(const MediaFile& file, std::vector<RawSample>& samples);
/// Pictures before the first key frame, in file order or on the screen, are shown only if the decoder can
/// make them.
[[nodiscard]] Result<void> dropUndecodableStart(const MediaFile& file, std::vector<RawSample>& samples);
/// The places of the samples that are pictures of their own and shown, in the order of their times; of
/// several with one time in the order in which the decoder gives them.
[[nodiscard]] Result<std::vector<qint32>> orderOfShown(const MediaFile& file,
                                                       const std::vector<RawSample>& samples);

} // namespace daylark
