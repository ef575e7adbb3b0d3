#include "picture/scene/ScenePainter.h"

#include <QPainter>

#include <cmath>

namespace daylark {

namespace {

constexpr int stepMs = 20;

QSize pointsOf(const Scene& scene) {
    return scene.geometry.area().toSize();
}

} // namespace

void ScenePainter::paintOverlay(QPainter& painter, const Scene& scene, double ratio) {
    const QRectF whole(QPointF(0, 0), scene.geometry.area());
    if (scene.background != SceneBackground::picture)
        painter.fillRect(whole, scene.background == SceneBackground::black ? Qt::black : Qt::white);
    if (const auto bars = scene.maskRatio ? scene.geometry.maskBars(*scene.maskRatio) : std::nullopt) {
        const QColor black(0, 0, 0, int(std::lround(scene.maskOpacity * 255)));
        for (const QRectF& bar : {bars->top, bars->bottom})
            if (!bar.isEmpty()) painter.fillRect(scene.geometry.toTopLeft(bar), black);
    }
    if (!scene.hasStrokes()) return;
    // Stepwise it goes on by itself; many parts may be painted meanwhile.
    if (!isBehind() || !strokes_.standsAt(scene.mapping(), pointsOf(scene), ratio))
        static_cast<void>(updateStrokes(scene, ratio));
    strokes_.paint(painter, painter.hasClipping() ? painter.clipBoundingRect() : whole);
}

QRectF ScenePainter::updateStrokes(const Scene& scene, double ratio) {
    if (!scene.drawing) return {};
    const QDeadlineTimer until(pace_ == Pace::whole ? QDeadlineTimer(QDeadlineTimer::Forever) : QDeadlineTimer(stepMs));
    return strokes_.update(*scene.drawing, scene.mapping(), pointsOf(scene), ratio, until);
}

std::vector<PictureLayer> ScenePainter::readOuts(const Scene& scene, double ratio) {
    plates_.setTexts(scene.readOuts, pointsOf(scene));
    return plates_.layers(ratio);
}

void ScenePainter::paintReadOuts(QPainter& painter, const Scene& scene, double ratio) {
    plates_.setTexts(scene.readOuts, pointsOf(scene));
    plates_.paint(painter, ratio);
}

} // namespace daylark
