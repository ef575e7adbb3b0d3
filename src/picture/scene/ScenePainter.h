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
    /// `stepwise`: drawings that take longer than a moment come in several updates (`isBehind`), for a window that stays
    /// alive meanwhile.
    enum class Pace { whole, stepwise };
    explicit ScenePainter(Pace pace = Pace::whole)
        : pace_(pace) {}

    /// Background, mask and drawings, in the area's points; of what the painter is clipped to only that.
    /// `ratio`: the painter's pixels a point.
    void paintOverlay(QPainter& painter, const Scene& scene, double ratio);
    void strokesChanged() { strokes_.strokesChanged(); } ///< they may be others than those painted
    /// Brings the drawing up to its canvas; where it changed, in the area's points (empty: nowhere).
    [[nodiscard]] QRectF updateStrokes(const Scene& scene, double ratio);
    [[nodiscard]] bool isBehind() const { return strokes_.isBehind(); } ///< `updateStrokes` has more to do

    [[nodiscard]] std::vector<PictureLayer> readOuts(const Scene& scene, double ratio);
    void paintReadOuts(QPainter& painter, const Scene& scene, double ratio); ///< `painter` paints in points

private:
    Pace pace_;
    StrokeLayer strokes_;
    ReadOutPlates plates_;
};

} // namespace daylark
