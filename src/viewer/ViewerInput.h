#pragma once

#include <QObject>
#include <QPointF>
#include <QString>

namespace daylark {

class Transport;
class Preferences;
class ViewerBookmarks;
class ViewerGeometry;
class ViewerPanels;

/// What wheel, clicks and the screen's edges do in the viewer, and what every key does besides its command.
/// Owned by the viewer's controller; interface thread.
class ViewerInput : public QObject {
    Q_OBJECT
public:
    struct Surroundings {
        Preferences& preferences;
        Transport& transport;
        ViewerBookmarks& bookmarks;
        ViewerPanels& panels;
        ViewerGeometry& geometry;
    };
    explicit ViewerInput(const Surroundings& surroundings, QObject* parent = nullptr);

    void keyPressed(); ///< any key, whatever it means: the volume slider goes
    /// One event, one step: below zero forwards, above zero backwards, of a frame or (Command held) to a
    /// bookmark.
    void scrollWheel(double deltaY, bool command);
    /// With Shift: zooms about the point of the area (y upwards), a notch of 120 by a fifth; where that is not wanted
    /// ("wheelZoomsWithShift"), it steps as without.
    void zoomWheel(double deltaY, const QPointF& at);
    void mouseDown();                            ///< a click on the picture
    void mouseEntered(const QString& namedArea); ///< "movieListArea", "notesArea", "playbackArea"
    void mouseExited() {}                        ///< wanted

Q_SIGNALS:
    void hideVolume(); ///< the volume slider goes, with a fade
    void hidePopUps(); ///< volume slider, drawing and playback pop-ups go, with a fade
    void showMovieList(bool show); ///< over the picture in full screen

private:
    void movieList(bool show);

    Surroundings around_;
};

} // namespace daylark
