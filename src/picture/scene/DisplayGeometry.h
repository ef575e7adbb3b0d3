#pragma once

#include <QPointF>
#include <QRectF>
#include <QSize>
#include <QSizeF>
#include <QString>

#include <optional>

namespace daylark {

/// A mask that can be chosen: the title that stands in menus and tells the actions apart, and the width over
/// the height.
struct MaskRatio {
    const char* title;
    double ratio;
};
inline constexpr MaskRatio maskRatios[] = {{"1.66", 1.66}, {"1.78", 1.78}, {"1.85", 1.85}, {"2.0", 2.0},
                                           {"2.35", 2.35}, {"2.39", 2.39}, {"2.40", 2.4}};

/// Where the picture, the mask and the window lie: arithmetic only, no window. Points on the player area,
/// whose origin is its lower left corner, y upwards (`toTopLeft` gives what widgets want).
///
///     +---------------- player area ----------------+
///     |        +------- view ---------------+       |
///     |        | bar |    picture     | bar |       |     the picture keeps its aspect inside the view;
///     |        +----------------------------+       |     fitted, the view is the whole area
///     +---------------------------------------------+
///
/// The mask lies on the view. Zooming has no limit. A plain value;
/// any thread.
class DisplayGeometry {
public:
    void setArea(
        const QSizeF& size); ///< fitted, the view follows; zoomed, it keeps its size about the same centre
    void setMovie(int width, int height, float aspectRatio); ///< pixels; aspect width / height. 0: no movie

    void fit();
    void actualPixels();
    void zoomIn();                          ///< each side times 1.2 about the view's centre
    void zoomOut();                         ///< each side divided by 1.2
    void zoomAbout(const QPointF& point, double factor); ///< the point of the area stays where it is
    void moveViewTo(const QPointF& origin); ///< the hand tool; moved, it is not fitted any more

    [[nodiscard]] bool knowsMovie() const { return aspect_ > 0; }
    [[nodiscard]] bool isFitted() const { return fitted_; }
    [[nodiscard]] QSizeF area() const { return area_; }
    [[nodiscard]] QRectF view() const { return view_; } ///< x, y of the lower left corner, y upwards
    [[nodiscard]] QRectF picture() const;               ///< inside the view, by the movie's aspect
    [[nodiscard]] double viewerScaleX() const;          ///< view width / area width; 1 without an area
    [[nodiscard]] QRectF
    toTopLeft(const QRectF& rect) const; ///< the same rectangle with y downwards from the area's top

    struct MaskBars {
        QRectF top, bottom; ///< on the area, y upwards
    };
    /// The bars of a mask of this ratio; none when the picture is wider than the mask already.
    [[nodiscard]] std::optional<MaskBars> maskBars(double maskRatio) const;

    /// A window (controls strip included) as the size commands want it; the place stays where none is given.
    struct WindowFrame {
        QSize size;
        std::optional<QPoint> origin; ///< lower left on the screen
    };
    /// By the command's title: "1:1 (Actual Size)", "1:2 (Half Size)", "1:3 (Third Size)"; none for another
    /// or without a movie.
    [[nodiscard]] std::optional<WindowFrame> windowFrame(const QString& title) const;
    [[nodiscard]] int constrainedHeight(int windowWidth) const; ///< while a person drags the window's edge
    [[nodiscard]] QSize constrainedWindow() const;              ///< about the present area

    bool operator==(const DisplayGeometry&) const = default;

    static constexpr int controlsHeight = 56;
    static constexpr int narrowestWindow = 440;

private:
    void scaleView(double factor);
    void resizeView(const QSizeF& size, bool wholePoints);

    QSizeF area_;
    QRectF view_;
    bool fitted_ = true;
    int width_ = 0, height_ = 0;
    float aspect_ = 0;
};

} // namespace daylark
