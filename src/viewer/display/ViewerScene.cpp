#include "viewer/display/ViewerScene.h"

#include "playback/run/Player.h"
#include "viewer/CurrentMovie.h"
#include "viewer/display/ViewerColour.h"
#include "viewer/display/ViewerGeometry.h"
#include "viewer/review/DrawingVisibility.h"
#include "viewer/review/FrameDrawings.h"
#include "viewer/review/ViewerGrade.h"

namespace daylark {

SceneBackground sceneBackgroundOf(DrawingBackground background) {
    switch (background) {
    case DrawingBackground::black:
        return SceneBackground::black;
    case DrawingBackground::white:
        return SceneBackground::white;
    default:
        return SceneBackground::picture;
    }
}

ViewerScene::ViewerScene(const Parts& parts, QObject* parent)
    : QObject(parent)
    , parts_(parts) {
    connect(&parts_.current, &CurrentMovie::changed, this, &ViewerScene::refreshPlace);
    connect(&parts_.player, &Player::frameShown, this, [this](const VideoFrame& frame) {
        scene_.frame = frame;
        refreshPlace();
    });
    connect(&parts_.grade, &ViewerGrade::transformChanged, this, [this] {
        scene_.colour = parts_.grade.transform();
        Q_EMIT changed();
    });
    connect(&parts_.colour, &ViewerColour::processorChanged, this, [this] {
        // The next picture's own, perhaps, told before the picture: never together with the one before it.
        const VideoFrame shown = parts_.player.shownFrame();
        if (!scene_.frame.isNull() && !shown.isNull()) scene_.frame = shown;
        scene_.display = parts_.colour.processor();
        Q_EMIT changed();
    });
    connect(&parts_.geometry, &ViewerGeometry::changed, this, &ViewerScene::refreshPlace);
    connect(&parts_.drawings, &FrameDrawings::strokeGrew, this, [this] {
        showDrawing();
        Q_EMIT strokesChanged(false);
    });
    connect(&parts_.drawings, &FrameDrawings::strokesChanged, this, [this] {
        showDrawing();
        Q_EMIT strokesChanged(true);
    });
    connect(&parts_.visibility, &DrawingVisibility::changed, this, &ViewerScene::showDrawing);
    scene_.colour = parts_.grade.transform();
    refreshPlace();
    showDrawing();
}

void ViewerScene::clear() {
    scene_.frame = {};
    Q_EMIT changed();
}

void ViewerScene::setReadOuts(const ReadOuts& readOuts) {
    if (readOuts == scene_.readOuts) return;
    scene_.readOuts = readOuts;
    Q_EMIT changed();
}

void ViewerScene::showDrawing() {
    const DrawingCanvas& canvas = parts_.drawings.canvas();
    const bool shown = parts_.visibility.drawingsAreShown();
    const auto background =
        sceneBackgroundOf(parts_.visibility.shownBackground(canvas.shown().hasStrokes()));
    if (shown == bool(scene_.drawing) && background == scene_.background) return;
    scene_.background = background;
    // Points to what is drawn on, which outlives this.
    scene_.drawing = shown ? std::shared_ptr<const DrawingCanvas>(std::shared_ptr<void>(), &canvas) : nullptr;
    Q_EMIT changed();
}

void ViewerScene::refreshPlace() {
    const ViewerGeometry& geometry = parts_.geometry;
    scene_.geometry = geometry.geometry();
    scene_.mirrorLeftRight = geometry.mirrorsLeftRight();
    scene_.mirrorUpsideDown = geometry.mirrorsUpsideDown();
    scene_.maskRatio = geometry.maskRatio();
    scene_.maskOpacity = geometry.maskOpacity();
    const Movie* movie = parts_.current.movie().get();
    scene_.movieSize = movie ? QSizeF(movie->mMovieWidth, movie->mMovieHeight) : QSizeF();
    if (movie && scene_.movieSize.isEmpty()) scene_.movieSize = parts_.player.shownFrame().displaySize();
    Q_EMIT changed();
}

} // namespace daylark
