#pragma once

#include "annotate/DrawingCanvas.h"
#include "media/decode/VideoFrame.h"
#include "model/ColourTransform.h"
#include "picture/PictureRenderer.h"
#include "picture/scene/DisplayGeometry.h"
#include "picture/scene/ReadOuts.h"

#include <QImage>
#include <QSize>

#include <memory>
#include <optional>

namespace daylark {

/// What lies behind drawings: the picture, or a colour in its place.
enum class SceneBackground { picture, black, white };

/// Everything that is shown on the player area, from below to above: the picture with its grade, a background
/// in its place, the mask, the drawings, the read-outs. Window, full screen, snapshots and the headless tool
/// all draw one. A value; any thread, as long as nobody draws on the canvas meanwhile.
struct Scene {
    VideoFrame frame; ///< null: no picture
    std::shared_ptr<const DisplayProcessor> display; ///< null: the picture's numbers are a display's already
    ColourTransform colour;                          ///< the grade, on what the display gets
    DisplayGeometry geometry; ///< of the area in points
    bool mirrorLeftRight = false, mirrorUpsideDown = false;
    SceneBackground background = SceneBackground::picture;
    std::optional<double> maskRatio; ///< none: no mask
    double maskOpacity = 1;
    std::shared_ptr<const DrawingCanvas> drawing; ///< none: not shown
    QSizeF movieSize;                             ///< pixels that the drawing's points count in
    ReadOuts readOuts;

    [[nodiscard]] bool hasStrokes() const;
    /// From the area's points to the movie's pixels, for strokes.
    [[nodiscard]] PictureMapping mapping() const;
};

/// The picture's place in an image of the area, in its pixels, and how its visible part is to be made.
struct ScenePlacement {
    QRect whole, visible;
    PictureRequest request; ///< an empty size: nothing of a picture is seen
};
/// Fitted, the picture is centred on whole pixels; otherwise it lies where the geometry has it.
[[nodiscard]] ScenePlacement placementOf(const Scene& scene, QSize pixels);

/// The same with an area that the picture fills: no bars beside it and nothing of it outside. As it is without a picture.
[[nodiscard]] Scene filledByPicture(const Scene& scene);

/// The same with a drawing of its own, for another thread: whoever draws on goes on elsewhere.
[[nodiscard]] Scene detached(const Scene& scene);

/// The whole scene in an image of this many pixels, by the software renderer; the area is stretched onto it.
/// `pixelRatio`: the screen's, where the image is to be pixel for pixel what is on screen (the rounded sizes
/// give another); 0: by the sizes.
[[nodiscard]] QImage renderScene(const Scene& scene, QSize pixels, double pixelRatio = 0);

} // namespace daylark
