#pragma once

#include "viewer/display/ViewerPanels.h"

#include <QMap>
#include <QObject>
#include <QSet>

#include <functional>
#include <optional>

class QMainWindow;
class QWindow;

namespace daylark {

class ToolPanel;

/// The viewer's panels as windows: floating tool windows that stay above the viewer, hide and come back with
/// it and never take its keyboard unless something in them is typed into; each but the controls may be docked
/// at the viewer's sides as well, and the playlist is from the start. It does what `ViewerPanels` says; a
/// panel's close box goes there too, so that buttons and preferences follow. A panel that nobody has moved
/// opens where it covers neither another panel nor the controls strip. Owned by the viewer's window;
/// interface thread.
class ViewerPanelHost : public QObject, public PanelHost {
    Q_OBJECT
public:
    enum class Place { floating, docked }; ///< where a panel stands before a person has moved it
    ViewerPanelHost(QMainWindow& viewer, ViewerPanels& panels);
    ~ViewerPanelHost() override;

    /// Makes the panel's window about its content, which it owns, hidden. The title is also the window's.
    ToolPanel* addPanel(ViewerPanel panel, const QString& title, QWidget* content, Place place,
                        Qt::DockWidgetArea area = Qt::RightDockWidgetArea);
    [[nodiscard]] ToolPanel* window(ViewerPanel panel) const { return windows_.value(panel); }
    void hideAll(); ///< with the viewer; preferences stay as they are
    /// From whatever panel has it, unless a hand still presses there (the panel then gives it back itself).
    void bringKeyboardToViewer();
    void setFullScreen(bool on) { fullScreen_ = on; } ///< what `FullScreen` has made of the viewer
    void stop();    ///< the viewer goes: panels announce nothing any more

    /// What the playlist is in full screen: a list over the picture.
    struct MovieList {
        std::function<void(bool shown)> show;
        std::function<bool()> isShown;
    };
    void setMovieList(MovieList list) { movieList_ = std::move(list); }

    /// Where all panels stand, docked or not, as `QMainWindow` keeps it; restoring opens none.
    [[nodiscard]] QByteArray arrangement() const override;
    void restoreArrangement(const QByteArray& arrangement);

    [[nodiscard]] bool isPanelVisible(ViewerPanel panel) const override;
    void setPanelVisible(ViewerPanel panel, bool visible) override;
    [[nodiscard]] QRect panelFrame(ViewerPanel panel) const override;
    void setPanelFrame(ViewerPanel panel, const QRect& frame) override;
    [[nodiscard]] bool isPanelDocked(ViewerPanel panel) const override;
    void setPanelDocked(ViewerPanel panel, bool docked) override;
    void makeRoomFor(const std::vector<ViewerPanel>& panels) override;
    void restoreDocking(const QByteArray& arrangement) override;
    [[nodiscard]] bool isViewerMaximised() const override;
    void maximiseViewer() override;
    [[nodiscard]] QRect viewerFrame() const override;
    void setViewerFrame(const QRect& frame) override;
    [[nodiscard]] bool isFullScreen() const override;
    void hideCursorUntilMouseMoves() override;
    void closeColourPanel() override;

    /// The frame moved (and made smaller where it must be) so that it lies on a screen that is there; points.
    [[nodiscard]] static QRect broughtOntoAScreen(const QRect& frame);

Q_SIGNALS:
    void visibilityChanged(); ///< of any panel
    void cursorHideWanted();  ///< until the mouse moves
    void viewerFrameWanted(const QRect& frame); ///< exactly this, in points on the screen
    void colourPanelCloseWanted();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void keyboardMoved(const QWindow* to);
    void giveKeyboardToViewer();
    [[nodiscard]] bool isPlaced(ViewerPanel panel) const;
    void offerPlace(ViewerPanel panel);
    bool takeArrangement(const QByteArray& arrangement);
    void dock(ToolPanel* window);
    void widenFor(int width, const QRect& narrow);
    void giveWidthBack();
    [[nodiscard]] int columnsOf(const std::vector<ViewerPanel>& panels) const;
    [[nodiscard]] QRect offeredFrame(ViewerPanel panel, const QList<QRect>& taken) const;
    [[nodiscard]] QRect frameToBeOffered(ViewerPanel panel) const;
    [[nodiscard]] QList<QRect> framesBesides(const ToolPanel* panel) const;
    [[nodiscard]] QRect freeFrame(const QList<QSize>& sizes, Qt::Corner corner, const QList<QRect>& taken) const;
    [[nodiscard]] QRect controlsFrame(const QSize& size) const;
    [[nodiscard]] QRect pictureFrame() const;
    [[nodiscard]] QRect openPicture() const;

    QMainWindow& viewer_;
    ViewerPanels& panels_;
    QMap<ViewerPanel, ToolPanel*> windows_;
    MovieList movieList_;
    bool fullScreen_ = false;
    QSet<ViewerPanel> placed_;         ///< by a layout, or left there before the viewer was closed
    QMap<ViewerPanel, QRect> offered_; ///< where a panel was put that nobody had placed
    /// The viewer before and after it was widened for docked panels.
    struct Lent {
        QRect narrow, wide;
    };
    std::optional<Lent> lent_;
};

} // namespace daylark
