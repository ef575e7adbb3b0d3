#pragma once

#include "model/Drawing.h"

#include <QPointF>
#include <QRectF>
#include <QSize>

namespace daylark {

/// From the player area to the movie's own pixels and back, so that a drawing stays on the same detail
/// whatever the window's size, the zoom or the mirroring. Area points have y downwards from the top left;
/// movie points have their origin at the lower left, y upwards, as drawings are stored. A plain value.
struct PictureMapping {
    QRectF picture;       ///< where the whole picture lies on the area
    QSizeF movie;         ///< pixels
    bool mirrorX = false; ///< the preference of that name: upside down
    bool mirrorY = false; ///< the preference of that name: left and right exchanged

    [[nodiscard]] bool isValid() const {
        return picture.width() > 0 && picture.height() > 0 && !movie.isEmpty();
    }
    [[nodiscard]] QPointF toMovie(const QPointF& area) const;
    [[nodiscard]] QPointF toArea(const QPointF& movie) const;
    [[nodiscard]] double scale() const {
        return movie.width() > 0 ? picture.width() / movie.width() : 1;
    } ///< points a movie pixel
    bool operator==(const PictureMapping&) const = default;
};

/// A stroke is stored on every bookmark that covers its frame. Where they are shown together it is shown
/// once, or each stroke drawn there would double all.
[[nodiscard]] Drawing eachStrokeOnce(const Drawing& drawing);

/// The strokes being shown and the one being drawn. Records polylines in the movie's pixels; knows no widget
/// and paints nothing (see `StrokeLayer`). Owned by the viewer's drawing mode; interface thread.
class DrawingCanvas {
public:
    enum Brush { eraser = 0, brush = 1 };

    void setStrokes(const Drawing& drawing); ///< shows another drawing; ends a stroke in progress
    /// Takes the lines away, and nothing is shown. Their colours, widths, opacities and brush types stay in the
    /// drawing's other lists until other strokes are set: what is drawn before that comes behind them.
    void clearViewOfStrokes();
    [[nodiscard]] const Drawing& shown() const { return strokes_; }
    /// The five lists; the other four may be longer than the strokes'.
    [[nodiscard]] Value currentStrokesDictionary() const;

    // One stroke. Points are the movie's pixels.
    void beginStroke(const QPointF& point, Brush type, const QColor& colour, double width, double opacity);
    void continueStroke(const QPointF& point);
    void endStroke(const QPointF& point);
    [[nodiscard]] bool isDrawing() const { return drawing_; }
    /// How many strokes stand finished: all but the one in progress.
    [[nodiscard]] size_t finishedCount() const { return strokes_.strokes.size() - (drawing_ ? 1 : 0); }

private:
    Drawing strokes_;
    std::vector<Stroke> lineless_; ///< what the other lists hold beyond the lines
    bool drawing_ = false;
};

} // namespace daylark
