#pragma once

#include <QObject>
#include <QPointF>

namespace daylark {

class MoviePlayerController;
class PictureView;

/// What the pointer does on the picture: strokes with mouse and pen, the hand that moves the picture. It
/// watches the picture view's mouse and tablet events; strokes take the movie's pixels from them, so they
/// stay on the same detail at any size, zoom or mirroring. A click without a tool goes on to the viewer, and
/// one with a tool is told to it as well. It also tells the geometry how large the area is. Owned by the
/// picture view; interface thread.
class PicturePointer : public QObject {
    Q_OBJECT
public:
    PicturePointer(MoviePlayerController& controller, PictureView& picture);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    enum class Phase { down, move, up };
    bool pointer(Phase phase, const QPointF& at);
    bool draw(Phase phase, const QPointF& at);
    bool pan(Phase phase, const QPointF& at);
    void showCursor();

    MoviePlayerController& controller_;
    PictureView& picture_;
    bool penIsDown_ = false; ///< a tablet's, whose events are not to come a second time as the mouse's
    bool dragging_ = false;
    QPointF dragOrigin_, startingPoint_; ///< of the hand: area points; the view's lower left corner
};

} // namespace daylark
