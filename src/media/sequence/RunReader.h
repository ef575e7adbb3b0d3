#pragma once

#include "media/decode/FrameReader.h"
#include "media/sequence/PictureFiles.h"
#include "media/sequence/RunFiles.h"

namespace daylark {

/// Opens a run of numbered pictures for reading: names and one header. Frame n is the picture with the n-th number, read from
/// its own file; several at a time where they are read in order, either way. A picture that isn't there, or isn't whole, is
/// stood in for as the address says, and is looked for anew whenever it is read. Errors: as `RunFiles::look`, as
/// `pictureFiles`, and none that can be read.
[[nodiscard]] Result<std::unique_ptr<FrameReader>> openRun(const RunAddress& address, const CancelFlag* cancel = nullptr);

/// How a run stands on a movie's clock.
[[nodiscard]] SampleIndex indexOf(const RunFiles& files, double statedRate);
/// Of the first picture that can be read.
[[nodiscard]] Result<PictureFacts> factsOf(const RunFiles& files, const PictureFiles& reader, const CancelFlag* cancel);

} // namespace daylark
