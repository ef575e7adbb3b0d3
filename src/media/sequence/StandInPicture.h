#pragma once

#include "media/decode/VideoFrameData.h"

#include <QString>

namespace daylark {

/// What the pictures of a run have in common: how they are stored, and how that is to be shown.
struct PictureShape {
    QSize size;
    AVRational pixelAspect{1, 1};
    Orientation orientation;
};

/// A plain picture of that shape where there is none: black, or a slate with the missing picture's number,
/// its name and why it is missing. Null where there is no memory.
/// Any thread.
[[nodiscard]] VideoFrame blackPicture(const PictureShape& shape);
[[nodiscard]] VideoFrame slatePicture(const PictureShape& shape, qint64 number, const QString& name, const QString& reason);

} // namespace daylark
