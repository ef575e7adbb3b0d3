#pragma once

#include "media/decode/VideoFrame.h"

#include <QString>

namespace daylark {

/// A plain picture where there is none: black, or a slate with the missing picture's number,
/// its name and why it is missing. Null where there is no memory.
/// Any thread.
[[nodiscard]] VideoFrame blackPicture(QSize size);
[[nodiscard]] VideoFrame slatePicture(QSize size, qint64 number, const QString& name, const QString& reason);

} // namespace daylark
