#pragma once

#include "picture/scene/DisplayGeometry.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

class QMainWindow;
class QWidget;

namespace daylark {

class ViewerGeometry;

/// The viewer's window made as large as the size commands want it, and kept in the movie's proportions while
/// a person drags its edges. Sizes are those of the player area: whatever strips and docked panels the window
/// has about it are added. A window is never put off the screens, nor its title. Owned by the viewer's window; interface
/// thread.
class ViewerSizing : public QObject {
    Q_OBJECT
public:
    ViewerSizing(QMainWindow& window, QWidget& area, ViewerGeometry& geometry);
    void takeWholeFrame(const QRect& frame); ///< the window's own, kept as it is whatever the movie's proportions

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void takeFrame(const DisplayGeometry::WindowFrame& frame, bool constrained);
    void keepProportions();
    void keepOnScreen();
    void setFrame(const QRect& frame);
    void resizeArea(const QSize& area, const std::optional<QPoint>& origin);

    QMainWindow& window_;
    QWidget& area_;
    ViewerGeometry& geometry_;
    QTimer settled_{this}; ///< the hand on the window's edge rests
    QSize whole_;    ///< the window's, as a whole frame gave it
    QSize refused_;  ///< the size from which the proportions were asked for last
    QElapsedTimer sinceAsked_;
    bool resizing_ = false;
    bool opening_ = false; ///< shown or given a frame, and nobody has looked where it came to stand
};

} // namespace daylark
