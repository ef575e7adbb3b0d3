#pragma once

#include <QWidget>

class QPropertyAnimation;

namespace daylark {

class MoviePlayerController;
class PlaylistDrawer;

/// The viewer's list over the picture in full screen: slides in from the right edge and out again. The
/// keyboard stays with the viewer. Owned by the picture view that it lies on; interface thread.
class MovieListOverlay : public QWidget {
    Q_OBJECT
public:
    MovieListOverlay(MoviePlayerController& controller, QWidget& area);
    void setShown(bool shown); ///< slides
    [[nodiscard]] bool isShown() const { return shown_; }
    [[nodiscard]] PlaylistDrawer* list() const { return list_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override; ///< the list's end is no step of the picture
    void mousePressEvent(QMouseEvent* event) override;

private:
    [[nodiscard]] QPoint place(bool shown) const;

    PlaylistDrawer* list_;
    QPropertyAnimation* slide_;
    bool shown_ = false;
};

} // namespace daylark
