#pragma once

#include "annotate/StrokeLayer.h"
#include "picture/scene/PictureLayer.h"
#include "picture/scene/ReadOutPlates.h"
#include "picture/scene/Scene.h"

#include <vector>

class QPainter;

namespace daylark {

/// Paints what lies above a scene's picture, and keeps what it has painted: strokes that stand and texts that
/// stay cost nothing the next time. Both of the view's renderers and `renderScene` paint through it. Owned by
/// whoever shows a scene; one thread at a time.
class ScenePainter {
public:
    /// Background, mask and drawings, in the area's points; of what the painter is clipped to only that.
    /// `ratio`: the painter's pixels a point.
    void paintOverlay(QPainter& painter, const Scene& scene, double ratio);
    void strokesChanged() { strokes_.strokesChanged(); } ///< they may be others than those painted
    /// Brings the drawing up to its canvas; where it changed, in the area's points (empty: nowhere).
    [[nodiscard]] QRectF updateStrokes(const Scene& scene, double ratio);

    [[nodiscard]] std::vector<PictureLayer> readOuts(const Scene& scene, double ratio);
    void paintReadOuts(QPainter& painter, const Scene& scene, double ratio); ///< `painter` paints in points

private:
    StrokeLayer strokes_;
    ReadOutPlates plates_;
};

} // namespace daylark
