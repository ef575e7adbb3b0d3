#pragma once

#include "base/Result.h"
#include "base/jobs/CancelFlag.h"
#include "media/container/SampleIndex.h"
#include "media/decode/VideoFrame.h"

#include <QString>

#include <functional>
#include <memory>

namespace daylark {

class SampleTables;

/// An open movie, read picture by picture. Frame n is exactly the n-th sample shown; a damaged sample gives
/// the nearest earlier good picture and the numbering stays. One thread at a time; the destructor may wait
/// for the decoder's threads.
class FrameReader {
public:
    /// Opens the file and builds its sample index, or takes it from `tables`; or a run of pictures, by its
    /// `RunAddress`. Errors: no such file, no format, no video. `cancel` and `tables` may be null.
    [[nodiscard]] static Result<std::unique_ptr<FrameReader>>
    open(const QString& path, const CancelFlag* cancel = nullptr, SampleTables* tables = nullptr);
    virtual ~FrameReader() = default;

    [[nodiscard]] virtual const SampleIndex& index() const = 0;
    [[nodiscard]] virtual QString decoderName() const = 0; ///< for people: which decoder works here, and how
    /// Frame n (from 0). Reading in order decodes each sample once; any other n seeks to the key frame before
    /// it.
    [[nodiscard]] virtual Result<VideoFrame> read(qint64 n, const CancelFlag* cancel = nullptr) = 0;
    /// As `read`, and every picture decoded on the way from the key frame is handed to `passed` (frame
    /// number, picture): what a cache wants when it steps backwards.
    [[nodiscard]] virtual Result<VideoFrame>
    readThrough(qint64 n, const std::function<void(qint64, const VideoFrame&)>& passed,
                const CancelFlag* cancel = nullptr) = 0;
    /// Bytes of all pictures that this movie's decoders made and somebody still holds (they themselves, a
    /// cache, a screen), and of the memory kept for the next ones. Any thread.
    [[nodiscard]] virtual qint64 pictureBytes() const = 0;
    /// About how much may stand in decoders beside the one used last; those beyond it are closed.
    virtual void limitDecoders(qint64 bytes) = 0;
    /// The key frame at or before n, in presentation order.
    [[nodiscard]] virtual qint64 keyFrameBefore(qint64 n) const = 0;
};

} // namespace daylark
