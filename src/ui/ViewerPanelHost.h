#pragma once

#include "viewer/ViewerPanels.h"

#include <QMap>
#include <QObject>

class QDockWidget;
class QMainWindow;

namespace daylark {

/// The viewer's panels as windows: floating tool windows that stay above the viewer, hide and come back with
/// it and never take its keyboard; each may be docked at the viewer's sides as well. It does what
/// `ViewerPanels` says; a panel's close box goes there too, so that buttons and preferences follow. Owned by
/// the viewer's window; interface thread.
class ViewerPanelHost : public QObject, public PanelHost {
    Q_OBJECT
public:
    enum class Place { floating, docked }; ///< where a panel stands before a person has moved it
    ViewerPanelHost(QMainWindow& viewer, ViewerPanels& panels);
    ~ViewerPanelHost() override;

    /// Makes the panel's window about its content, which it owns, hidden. The title is also the window's.
    QDockWidget* addPanel(ViewerPanel panel, const QString& title, QWidget* content, Place place,
                          Qt::DockWidgetArea area = Qt::RightDockWidgetArea);
    [[nodiscard]] QDockWidget* window(ViewerPanel panel) const { return windows_.value(panel); }
    void hideAll(); ///< with the viewer; preferences stay as they are
    void stop();    ///< the viewer goes: panels announce nothing any more

    [[nodiscard]] bool isPanelVisible(ViewerPanel panel) const override;
    void setPanelVisible(ViewerPanel panel, bool visible) override;
    [[nodiscard]] QRect panelFrame(ViewerPanel panel) const override;
    void setPanelFrame(ViewerPanel panel, const QRect& frame) override;
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
    void colourPanelCloseWanted();

private:
    void placeBesideViewer(QDockWidget* window);

    QMainWindow& viewer_;
    ViewerPanels& panels_;
    QMap<ViewerPanel, QDockWidget*> windows_;
    QMap<ViewerPanel, bool> placed_; ///< floating panels that have been put somewhere
};

} // namespace daylark
