#pragma once

#include "platform/Sender.h"

#include <QObject>
#include <QRect>
#include <QStringList>

#include <functional>
#include <vector>

namespace daylark {

class Alerts;
class Preferences;
struct PanelLayoutPreferences;
struct PanelPlacePreferences;
template<class T>
class Preference;

/// The panels about the viewer, in the order in which layouts list them; the floating controls are part of no
/// layout.
enum class ViewerPanel { grading, drawing, bookmarks, options, notes, playlistDrawer, colour, scopes, controls };

/// The windows that `ViewerPanels` moves; the viewer's window implements it. Frames in points on the screen.
/// Interface thread.
class PanelHost {
public:
    virtual ~PanelHost() = default;
    [[nodiscard]] virtual bool isPanelVisible(ViewerPanel panel) const = 0;
    virtual void
    setPanelVisible(ViewerPanel panel,
                    bool visible) = 0; ///< to the front; never takes the keyboard from the viewer
    [[nodiscard]] virtual QRect panelFrame(ViewerPanel panel) const = 0;
    virtual void setPanelFrame(ViewerPanel panel,
                               const QRect& frame) = 0; ///< brought back onto a screen where it lies off all
    [[nodiscard]] virtual bool isPanelDocked(ViewerPanel panel) const = 0; ///< open or not
    virtual void setPanelDocked(ViewerPanel panel, bool docked) = 0; ///< where there is room; floating: clear of the others
    /// Puts those to the viewer's sides that stand nowhere yet and would cover much of the picture together.
    virtual void makeRoomFor(const std::vector<ViewerPanel>& panels) = 0;
    [[nodiscard]] virtual QByteArray arrangement() const = 0; ///< which stand docked, and where: the toolkit's own bytes
    virtual void restoreDocking(const QByteArray& arrangement) = 0; ///< opens and closes nothing
    [[nodiscard]] virtual bool isViewerMaximised() const = 0;
    virtual void maximiseViewer() = 0;
    [[nodiscard]] virtual QRect viewerFrame() const = 0;
    virtual void setViewerFrame(const QRect& frame) = 0; ///< as above
    [[nodiscard]] virtual bool isFullScreen() const = 0;
    virtual void hideCursorUntilMouseMoves() = 0;
    virtual void closeColourPanel() = 0;
};

/// Which panels are open, where they stand, what of that is remembered: toggles, all at once, the two saved
/// layouts. The preferences "restore…Window" always mirror what is open. Widgets send their toggles here,
/// close boxes included. Owned by the viewer's controller; interface thread.
class ViewerPanels : public QObject {
    Q_OBJECT
public:
    ViewerPanels(Preferences& preferences, Alerts& alerts, QObject* parent = nullptr);
    void setHost(PanelHost* host) { host_ = host; } ///< until then everything is hidden and nothing happens

    [[nodiscard]] bool isVisible(ViewerPanel panel) const;
    [[nodiscard]] bool isFullScreen() const { return host_ && host_->isFullScreen(); }

    void toggle(ViewerPanel panel);             ///< what the panel's key, button, menu item or close box does
    void show(ViewerPanel panel, bool visible); ///< the same, to a state
    void showAllPanels();
    void hideAllPanels();
    void bookmarkCurrentViewerSize(); ///< asks where to, saves the layout
    void restoreSavedPanelLayout(const Sender& sender);
    /// The viewer's own frame as the first layout was saved with it; nothing where it is narrower (or none was saved).
    void restoreFavouriteFrame(int narrowest);
    void restoreOpenPanels(); ///< those that were open, when the viewer opens
    void hideCursorUntilMouseMoves();

    // Full screen puts the open panels away, with their buttons and preferences, and gives them back ("panelsReturnFrom-
    // FullScreen"), but for those that were closed there.
    void closeForFullScreen();
    void reopenAfterFullScreen();

    void dockPanels(); ///< every open one but the floating controls
    void floatPanels();
    [[nodiscard]] bool canDock(bool docked) const; ///< an open one stands otherwise

    [[nodiscard]] static QString layoutName(ViewerPanel panel); ///< "gradingWindow"
    [[nodiscard]] Preference<int>* restorePreference(ViewerPanel panel); ///< null for the controls

Q_SIGNALS:
    /// Drawing mode and buttons follow. `withAll`: as one of all, not by itself or by a layout.
    void panelToggled(daylark::ViewerPanel panel, bool visible, bool withAll);
    void toggled(); ///< one or many: the movie's icons are to be refreshed
    void visibilityChanged(); ///< the windows show or hide otherwise, by whatever hand; theirs to say

private:
    enum class Among { few, all };
    void place(ViewerPanel panel, bool visible, Among among = Among::few);
    [[nodiscard]] static QRect favouriteFrame(const PanelLayoutPreferences& layout);
    void saveLayout(PanelLayoutPreferences& layout);
    void saveFrame(ViewerPanel panel, PanelPlacePreferences& place, bool withSize);
    void restoreFrame(ViewerPanel panel, const PanelPlacePreferences& place, bool withSize);
    void restoreViewer(const PanelLayoutPreferences& layout);
    void setDocked(bool docked);

    Preferences& preferences_;
    Alerts& alerts_;
    PanelHost* host_ = nullptr;
    std::vector<ViewerPanel> putAway_; ///< for full screen
};

} // namespace daylark
