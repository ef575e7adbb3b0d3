#pragma once

#include <QObject>
#include <QPoint>
#include <QRect>

class QMainWindow;
class QMenu;
class QScreen;
class QWidget;

namespace daylark {

class MouseZones;
class MovieListOverlay;
class MoviePlayerController;
class PictureView;
class ViewerPanelHost;

/// The viewer on a whole screen, any of them: panels, menus and the controls strip go away and come back, the
/// edges answer to the mouse (list at the right, controls at the foot), the pointer hides until it moves.
/// Follows the window manager too, should that put the window into full screen or back. Owned by the viewer's
/// window; interface thread.
class FullScreen : public QObject {
    Q_OBJECT
public:
    FullScreen(QMainWindow& window, PictureView& picture, QWidget& strip, ViewerPanelHost& host,
               MoviePlayerController& controller);
    ~FullScreen() override;

    void toggle();
    void enter(QScreen* screen = nullptr); ///< null: the one that the window is on
    void leave();
    [[nodiscard]] QMenu* screensMenu() const { return screens_; } ///< every screen by its name
    [[nodiscard]] MovieListOverlay* movieList() const { return list_; }

Q_SIGNALS:
    void changed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void setOn(bool on);
    void entered();
    void left();
    void hideCursor();
    void showCursor();
    void fillScreensMenu();
    void fillScreen();

    QMainWindow& window_;
    PictureView& picture_;
    QWidget& strip_;
    ViewerPanelHost& host_;
    MoviePlayerController& controller_;
    MouseZones* zones_;
    MovieListOverlay* list_;
    QMenu* screens_;
    QRect before_; ///< the window's frame outside full screen
    bool on_ = false, cursorHidden_ = false;
    QPoint cursorAt_; ///< where it was hidden, on the screen
};

} // namespace daylark
