#pragma once

#include "picture/scene/PictureLayer.h"

#include <QRectF>
#include <QSize>

#include <functional>
#include <vector>

class QPainter;

namespace daylark {

/// An overlay as large as the screen in squares, each an image of its own: where a pen has passed, only the
/// squares under it are painted and go to the graphics device again. A square with nothing on it is a null
/// image. Owned by the picture
/// view; one thread.
class OverlayTiles {
public:
    using Painter = std::function<void(QPainter&)>; ///< paints in the area's points
    void clear();                                   ///< nothing is kept
    void change(const QRectF& part); ///< there, in the area's points, it is to be painted again
    /// The squares from the upper left on, brought up to date. `pixels`: the area's size on the screen.
    [[nodiscard]] const std::vector<PictureLayer>& update(QSize pixels, double ratio, const Painter& painter);

    static constexpr int side = 256; ///< pixels

private:
    void paintTile(PictureLayer& tile, const QRect& place, const Painter& painter) const;

    std::vector<PictureLayer> tiles_;
    QSize pixels_;
    double ratio_ = 1;
    QRectF changed_;
};

} // namespace daylark
