#pragma once

#include <QImage>
#include <QPoint>

namespace daylark {

/// Something laid over the picture: premultiplied pixels, and where their upper left lies in the area (device
/// pixels).
struct PictureLayer {
    QImage image; ///< Format_ARGB32_Premultiplied; the same image again costs no new upload
    QPoint at;
};

} // namespace daylark
