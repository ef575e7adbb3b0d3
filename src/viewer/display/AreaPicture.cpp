#include "viewer/display/AreaPicture.h"

#include "annotate/StrokeLayer.h"
#include "picture/PictureRenderer.h"

#include <QPainter>

#include <cmath>

namespace daylark {

void paintMask(QPainter& painter, const DisplayGeometry& geometry, const DisplayGeometry::MaskBars& bars,
               double opacity) {
    const QColor black(0, 0, 0, int(std::lround(opacity * 255)));
    for (const QRectF& bar : {bars.top, bars.bottom})
        if (!bar.isEmpty()) painter.fillRect(geometry.toTopLeft(bar), black);
}

PictureMapping strokeMapping(const DisplayGeometry& geometry, const QSizeF& movieSize, bool mirrorLeftRight,
                             bool mirrorUpsideDown) {
    return {geometry.toTopLeft(geometry.picture()), movieSize, mirrorUpsideDown, mirrorLeftRight};
}

QImage renderAreaPicture(const AreaPicture& area, const QSize& pixels) {
    QImage image(pixels, QImage::Format_RGB32);
    if (image.isNull()) return image;
    image.fill(Qt::black);
    const QSizeF points = area.geometry.area();
    if (points.isEmpty()) return image;
    const double scaleX = pixels.width() / points.width(), scaleY = pixels.height() / points.height();
    const QRectF picture = area.geometry.toTopLeft(area.geometry.picture());
    const QRect whole = QRectF(picture.x() * scaleX, picture.y() * scaleY, picture.width() * scaleX,
                               picture.height() * scaleY)
                            .toRect();
    const QRect seen = whole & image.rect();
    QPainter painter(&image);
    if (!area.frame.isNull() && !seen.isEmpty()) {
        PictureRequest request;
        request.size = whole.size();
        request.visible = seen.translated(-whole.topLeft());
        request.mirrorLeftRight = area.mirrorLeftRight;
        request.mirrorUpsideDown = area.mirrorUpsideDown;
        request.colour = area.colour;
        painter.drawImage(seen.topLeft(), renderPicture(area.frame, request));
    }
    painter.scale(scaleX, scaleY);
    if (area.mask) paintMask(painter, area.geometry, *area.mask, area.maskOpacity);
    painter.end();
    if (!area.strokes.hasStrokes()) return image;

    QImage layer(pixels, QImage::Format_ARGB32_Premultiplied); // erasers clear the layer, not the picture
    layer.fill(Qt::transparent);
    QPainter strokes(&layer);
    strokes.scale(scaleX, scaleY);
    paintStrokes(strokes, area.strokes,
                 strokeMapping(area.geometry, area.movieSize, area.mirrorLeftRight, area.mirrorUpsideDown));
    strokes.end();
    QPainter(&image).drawImage(0, 0, layer);
    return image;
}

} // namespace daylark
