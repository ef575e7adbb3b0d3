#include "picture/scene/ScenePixel.h"

#include "picture/PixelProbe.h"

#include <algorithm>

namespace daylark {

std::optional<QPoint> pixelUnder(const Scene& scene, QSize pixels, QPointF at) {
    const ScenePlacement placement = placementOf(scene, pixels);
    const QRectF whole(placement.whole), seen(placement.visible);
    const bool isOnIt = at.x() >= seen.left() && at.x() < seen.right() && at.y() >= seen.top() && at.y() < seen.bottom();
    if (seen.isEmpty() || !isOnIt) return std::nullopt;
    const QSize picture = uprightSize(scene.frame);
    const auto along = [](double from, double length, int count, bool mirrored) {
        const int counted = std::clamp(int(from / length * count), 0, count - 1);
        return mirrored ? count - 1 - counted : counted;
    };
    return QPoint(along(at.x() - whole.left(), whole.width(), picture.width(), scene.mirrorLeftRight),
                  along(at.y() - whole.top(), whole.height(), picture.height(), scene.mirrorUpsideDown));
}

} // namespace daylark
