#include "picture/scene/Scene.h"

#include "picture/scene/ScenePainter.h"

#include <QPainter>

#include <cmath>

namespace daylark {

namespace {

QRect pixelRect(const QRectF& rect, double scaleX, double scaleY) {
    const QSize size(int(std::lround(rect.width() * scaleX)), int(std::lround(rect.height() * scaleY)));
    return {QPoint(int(std::lround(rect.x() * scaleX)), int(std::lround(rect.y() * scaleY))),
            size.expandedTo({1, 1})};
}

} // namespace

bool Scene::hasStrokes() const {
    return drawing && drawing->shown().hasStrokes();
}

PictureMapping Scene::mapping() const {
    return {geometry.toTopLeft(geometry.picture()), movieSize, mirrorUpsideDown, mirrorLeftRight};
}

ScenePlacement placementOf(const Scene& scene, QSize pixels) {
    ScenePlacement placement;
    const QSize picture = scene.frame.isNull() ? QSize() : scene.frame.displaySize();
    const QSizeF area = scene.geometry.area();
    if (picture.isEmpty() || area.isEmpty() || pixels.isEmpty()) return placement;
    if (scene.geometry.isFitted()) {
        const QSize fitted = picture.scaled(pixels, Qt::KeepAspectRatio).expandedTo({1, 1});
        placement.whole = {{(pixels.width() - fitted.width()) / 2, (pixels.height() - fitted.height()) / 2},
                           fitted};
    } else {
        const QRectF place = scene.geometry.toTopLeft(scene.geometry.picture());
        if (place.isEmpty()) return placement;
        placement.whole = pixelRect(place, pixels.width() / area.width(), pixels.height() / area.height());
    }
    placement.visible = placement.whole & QRect({}, pixels);
    placement.request = {placement.visible.isEmpty() ? QSize() : placement.whole.size(),
                         placement.visible.translated(-placement.whole.topLeft()),
                         scene.mirrorLeftRight,
                         scene.mirrorUpsideDown,
                         scene.colour,
                         false,
                         scene.display,
                         false};
    return placement;
}

Scene filledByPicture(const Scene& scene) {
    Scene filled = scene;
    const QSizeF picture = scene.frame.isNull() ? QSizeF() : QSizeF(scene.frame.displaySize());
    if (picture.isEmpty() || scene.geometry.area().isEmpty()) return filled;
    // As large in points as it is when it fits, so that texts keep their size beside it.
    filled.geometry.setArea(picture.scaled(scene.geometry.area(), Qt::KeepAspectRatio));
    filled.geometry.fit();
    return filled;
}

Scene detached(const Scene& scene) {
    Scene own = scene;
    if (own.drawing) own.drawing = std::make_shared<const DrawingCanvas>(*own.drawing);
    return own;
}

QImage renderScene(const Scene& scene, QSize pixels, double pixelRatio) {
    QImage image(pixels, QImage::Format_RGB32);
    if (image.isNull()) return image;
    image.fill(Qt::black);
    QPainter painter(&image);
    const ScenePlacement placement = placementOf(scene, pixels);
    if (!placement.request.size.isEmpty())
        painter.drawImage(placement.visible.topLeft(), renderPicture(scene.frame, placement.request));
    const QSizeF area = scene.geometry.area();
    if (area.isEmpty()) return image;
    const double ratio = pixelRatio > 0 ? pixelRatio : pixels.width() / area.width();
    painter.scale(ratio, pixelRatio > 0 ? pixelRatio : pixels.height() / area.height());
    ScenePainter above;
    above.paintOverlay(painter, scene, ratio);
    above.paintReadOuts(painter, scene, ratio);
    return image;
}

} // namespace daylark
