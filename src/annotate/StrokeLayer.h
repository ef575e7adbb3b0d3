#pragma once

#include "annotate/DrawingCanvas.h"

#include <QDeadlineTimer>
#include <QImage>
#include <QRect>

#include <limits>
#include <optional>

class QPainter;

namespace daylark {

/// Paints strokes first to last onto a transparent layer: brushes blend at their opacity, erasers clear what
/// earlier strokes left (on the layer only, never the picture). The painter's coordinates are the player
/// area's points.
struct StrokeSelection {
    size_t first = 0, end = std::numeric_limits<size_t>::max(); ///< the strokes from `first` to before `end`
    QRectF part = {}; ///< those that touch this part of the area only; null: all
};
void paintStrokes(QPainter& layer, const Drawing& drawing, const PictureMapping& mapping,
                  const StrokeSelection& selection = {});

/// The drawing as an image over the player area, kept from one painting to the next: finished strokes are
/// painted once, the stroke in progress grows by its new points only, so that a pen is followed at every
/// event however many strokes stand. A picture that is moved moves the layer; a stroke taken back is painted
/// over where it was. A drawing that takes longer than it is given comes in several updates: new strokes as
/// they are painted, what is painted over once it is whole. Interface thread; large drawings are painted by the
/// thread pool as well.
class StrokeLayer {
public:
    /// Brings the layer up to the canvas, or as near as it comes in the time it is given (some strokes at
    /// least). What has to be painted anew on the screen, in area points (empty: nothing).
    [[nodiscard]] QRectF update(const DrawingCanvas& canvas, const PictureMapping& mapping, const QSize& area,
                                double devicePixelRatio, QDeadlineTimer until = QDeadlineTimer::Forever);
    [[nodiscard]] bool isBehind() const { return behind_; } ///< the last update left something for the next
    /// It has been painted for this place, whether it is behind or not.
    [[nodiscard]] bool standsAt(const PictureMapping& mapping, const QSize& area, double devicePixelRatio) const;
    void strokesChanged() { compare_ = true; } ///< the strokes may be others than those painted
    /// Draws the part of the layer that lies in `part` (area points) where it belongs.
    void paint(QPainter& painter, const QRectF& part) const;

private:
    /// A part that is painted over out of sight, in several updates.
    struct Remake {
        QImage image; ///< takes the place of `finished_`
        QRect pixels;
        size_t next = 0; ///< of the strokes painted
    };
    [[nodiscard]] QRectF place(const PictureMapping& mapping, const QSize& area, double devicePixelRatio);
    void moveBy(const QPoint& pixels);
    [[nodiscard]] QRectF takeBack(const DrawingCanvas& canvas);
    [[nodiscard]] QRectF goOnRemaking(const QDeadlineTimer& until);
    [[nodiscard]] QRectF finish(const DrawingCanvas& canvas, const QDeadlineTimer& until);
    [[nodiscard]] QRectF growStroke(const DrawingCanvas& canvas);
    [[nodiscard]] bool isSoonPainted(const QRect& pixels) const;
    [[nodiscard]] size_t endOfSome(size_t first, size_t end) const;
    void comeIn(const QRect& pixels);
    void remake(QRect pixels);
    void paintAnew(const QRect& pixels);
    void paintBands(QImage& image, const QRect& pixels, const StrokeSelection& selection, bool clear);
    void forgetGrowing();
    [[nodiscard]] QRect toPixels(const QRectF& part) const; ///< whole ones, on the layer

    QImage finished_; ///< premultiplied, device pixels
    QImage growing_;  ///< the stroke in progress, opaque; transparent elsewhere
    Drawing painted_; ///< the strokes in finished_, or those that are to be when the remake is done
    std::optional<Remake> remake_;
    bool behind_ = false;
    PictureMapping mapping_;
    double ratio_ = 1;
    size_t grownPoints_ = 0; ///< of the stroke in progress painted into growing_; 0: there is none
    QRectF grown_;           ///< where on growing_
    double growingOpacity_ = 1;
    bool growingErases_ = false;
    bool compare_ = false;
};

} // namespace daylark
