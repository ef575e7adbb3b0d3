#pragma once

#include "annotate/StrokeLayer.h"

#include <QObject>
#include <QPointF>

class QMouseEvent;
class QPainter;
class QTabletEvent;

namespace daylark {

class MoviePlayerController;
class PictureView;

/// What lies on the picture and what the pointer does there: the mask's bars, the drawings of the bookmarks
/// that cover the frame, the stroke under the pen, the hand that moves a zoomed picture. It watches the
/// picture view's mouse and tablet events; strokes take the movie's pixels from them, so they stay on the
/// same detail at any size, zoom or mirroring. A click without a tool goes on to the viewer. Owned by the
/// viewer's window; interface thread.
class DrawingOverlay : public QObject {
    Q_OBJECT
public:
    DrawingOverlay(MoviePlayerController& controller, PictureView& picture);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    enum class Phase { down, move, up };
    [[nodiscard]] PictureMapping mapping() const;
    bool pointer(Phase phase, const QPointF& at);
    bool draw(Phase phase, const QPointF& at);
    bool pan(Phase phase, const QPointF& at);
    void paint(QPainter& painter);
    void drawingChanged();
    void refreshStrokes();
    void refreshAll();
    void showGeometry();
    void showCursor();

    MoviePlayerController& controller_;
    PictureView& picture_;
    StrokeLayer layer_;
    struct Shown {
        bool drawings = false;
        QString background;
        bool operator==(const Shown&) const = default;
    };
    Shown shown_;            ///< when the strokes changed last
    bool penIsDown_ = false; ///< a tablet's, whose events are not to come a second time as the mouse's
    bool dragging_ = false;
    QPointF dragOrigin_, startingPoint_; ///< of the hand: area points; the view's lower left corner
};

} // namespace daylark
