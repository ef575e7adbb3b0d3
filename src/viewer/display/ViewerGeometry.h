#pragma once

#include "model/Movie.h"
#include "picture/scene/DisplayGeometry.h"
#include "platform/Sender.h"

#include <QObject>

#include <memory>

namespace daylark {

class CurrentMovie;
class DrawingTools;
class Preferences;
class ViewerPanels;

/// What the size, zoom, mirror and mask commands do, over the arithmetic of `DisplayGeometry`. The window and
/// the picture view render its state; mirroring, mask and constraint live in the preferences. Owned by the
/// viewer's controller; interface thread.
class ViewerGeometry : public QObject {
    Q_OBJECT
public:
    ViewerGeometry(CurrentMovie& current, Preferences& preferences, DrawingTools& tools, ViewerPanels& panels,
                   QObject* parent = nullptr);

    /// The size of the picture once it is known better than the record says it (pixels as shown).
    void setPictureSize(const QSize& pixels);
    void setArea(const QSizeF& size); ///< the player area was laid out, in points
    [[nodiscard]] const DisplayGeometry& geometry() const { return geometry_; }

    void scaleMovie(const Sender& sender); ///< "1:1 Pixels (Actual Size)", "Fit Image To Viewer", "Zoom In",
                                           ///< "Zoom Out" and their short forms
    void scaleMovieToFitViewer();
    /// By the wheel, the point of the area (y upwards) stays under the pointer; a pen in hand goes on drawing.
    void zoomAbout(const QPointF& point, double factor);
    void scaleWindow(
        const Sender& sender); ///< "1:1 (Actual Size)" … "Favourite Viewer Size"; nothing in full screen
    void setPixelAspectRatio(const Sender& sender);
    [[nodiscard]] float pixelAspectRatio() const { return mPixelAspectRatio_; } ///< as chosen in the menu; nothing reads it
    void mirrorMovie(const Sender& sender); ///< "Flop Display", "Flip Display"; any other applies anew
    void toggleMask();
    void resizeMaskElements(const Sender& sender); ///< a ratio's title, or a control's tag 201 to 204
    [[nodiscard]] QString maskMenuTitle() const;   ///< "Show Mask" or "Hide Mask"
    void panBy(const QPointF& origin);             ///< the hand tool: lower left corner of the view

    // The window
    /// While a person drags the window's edge: the height that goes with the width (window heights in
    /// points); unchanged without constraint.
    [[nodiscard]] QSize windowWillResize(const QSize& proposed) const;
    void setConstrainViewerProportions();
    void windowWillEnterFullScreen();
    void windowWillExitFullScreen();
    void windowDidExitFullScreen();

    [[nodiscard]] bool mirrorsLeftRight() const;           ///< the preference "mirrorY"
    [[nodiscard]] bool mirrorsUpsideDown() const;          ///< the preference "mirrorX"
    [[nodiscard]] std::optional<double> maskRatio() const; ///< none when hidden
    [[nodiscard]] double maskOpacity() const;

Q_SIGNALS:
    void changed(); ///< picture, mirroring, mask or pixel aspect are others
    /// The viewer's window is to be this large (with its strip), its upper left corner kept where no origin
    /// is given.
    void windowFrameWanted(const daylark::DisplayGeometry::WindowFrame& frame, bool animated);

private:
    void setMovie(const std::shared_ptr<Movie>& movie);

    Preferences& preferences_;
    DrawingTools& tools_;
    ViewerPanels& panels_;
    std::shared_ptr<Movie> movie_;
    DisplayGeometry geometry_;
    float mPixelAspectRatio_ = 1.0f;
    bool viewerWasConstrainedBeforeFullScreen_ = false;
    bool constrainWhenKnown_ = false; ///< the window, once the movie's proportions are known
};

} // namespace daylark
