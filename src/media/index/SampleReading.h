#pragma once

#include "media/container/MediaFile.h"
#include "media/index/RawSample.h"

#include <functional>

namespace daylark {

/// All video samples of a file in file order: from what the container's tables say, where they say all, else
/// by reading through. The file must be as it was opened, and is left at an unspecified position. Internal to
/// media/. Fails when cancelled.
[[nodiscard]] Result<RawSamples> readSamples(const MediaFile& file);

/// Of the ends of the data and its length: tells samples apart without touching all of a large one.
[[nodiscard]] quint32 contentOf(const AVPacket& packet);
/// What the codec library says of the stream's codec (AV_CODEC_PROP_...).
[[nodiscard]] unsigned codecProperties(const AVStream& stream);

/// Gives a frame as decoded to `visit` with its sample's place in file order; false ends the walk. Starts
/// where the file stands, which must be its beginning.
[[nodiscard]] Result<void> decodeFromStart(const MediaFile& file, int reorderDepth,
                                           const std::function<bool(qint64 place)>& visit);

} // namespace daylark
