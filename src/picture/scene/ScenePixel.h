#pragma once

#include "picture/scene/Scene.h"

#include <QPoint>
#include <QPointF>

#include <optional>

namespace daylark {

/// Which pixel of the scene's picture lies at a point of the area (device pixels from the upper left, `pixels` in all):
/// counted in the upright picture from its upper left, whatever the zoom, the mirroring and the shape of its pixels. None
/// beside the picture.
[[nodiscard]] std::optional<QPoint> pixelUnder(const Scene& scene, QSize pixels, QPointF at);

} // namespace daylark
