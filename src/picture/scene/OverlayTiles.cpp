#include "picture/scene/OverlayTiles.h"

#include <QPainter>

#include <algorithm>

namespace daylark {

namespace {

bool hasInk(const QImage& tile) {
    for (int y = 0; y < tile.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(tile.constScanLine(y));
        if (std::any_of(row, row + tile.width(), [](QRgb pixel) { return pixel != 0; })) return true;
    }
    return false;
}

} // namespace

void OverlayTiles::clear() {
    tiles_.clear();
    pixels_ = {};
}

void OverlayTiles::change(const QRectF& part) {
    changed_ |= part;
}

const std::vector<PictureLayer>& OverlayTiles::update(QSize pixels, double ratio, const Painter& painter) {
    QRect dirty = QRectF(changed_.topLeft() * ratio, changed_.size() * ratio).toAlignedRect();
    changed_ = {};
    const int columns = (pixels.width() + side - 1) / side, rows = (pixels.height() + side - 1) / side;
    if (pixels != pixels_ || ratio != ratio_) {
        tiles_.assign(size_t(columns) * size_t(rows), {});
        pixels_ = pixels;
        ratio_ = ratio;
        dirty = QRect(QPoint(), pixels);
    }
    dirty &= QRect(QPoint(), pixels);
    if (dirty.isEmpty()) return tiles_;
    for (int row = dirty.top() / side; row <= dirty.bottom() / side; ++row)
        for (int column = dirty.left() / side; column <= dirty.right() / side; ++column)
            paintTile(tiles_[size_t(row) * size_t(columns) + size_t(column)],
                      QRect(column * side, row * side, side, side) & QRect(QPoint(), pixels), painter);
    return tiles_;
}

void OverlayTiles::paintTile(PictureLayer& tile, const QRect& place, const Painter& painter) const {
    QImage image(place.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    image.setDevicePixelRatio(ratio_);
    QPainter onTile(&image);
    onTile.translate(-QPointF(place.topLeft()) / ratio_);
    onTile.setClipRect(QRectF(QPointF(place.topLeft()) / ratio_, QSizeF(place.size()) / ratio_));
    painter(onTile);
    onTile.end();
    tile = {hasInk(image) ? image : QImage(), place.topLeft()};
}

} // namespace daylark
