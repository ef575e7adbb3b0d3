#pragma once

#include <QObject>
#include <QString>

namespace daylark {

class DrawingTools;
class Transport;
class Preferences;
class ViewerBookmarks;
class ViewerGrade;
class ViewerPanels;

/// What keys, wheel, clicks and the screen's edges do in the viewer. Keys are told apart by where they lie,
/// not by what the keyboard's language prints on them: by the key codes of an ANSI keyboard (`hotkey`). Owned
/// by the viewer's controller; interface thread.
class ViewerInput : public QObject {
    Q_OBJECT
public:
    struct Surroundings {
        Preferences& preferences;
        Transport& transport;
        ViewerBookmarks& bookmarks;
        DrawingTools& tools;
        ViewerGrade& grade;
        ViewerPanels& panels;
    };
    explicit ViewerInput(const Surroundings& surroundings, QObject* parent = nullptr);

    /// The hotkeys by key code; the letter is the key at that place.
    enum Hotkey {
        keyA = 0,
        keyS = 1,
        keyD = 2,
        keyF = 3,
        keyH = 4,
        keyC = 8,
        keyB = 11,
        keyT = 17,
        keyRightBracket = 30,
        keyO = 31,
        keyLeftBracket = 33,
        keyP = 35,
        keyL = 37,
        keyJ = 38,
        keyQuote = 39,
        keyK = 40,
        keySemicolon = 41,
        keyComma = 43,
        keyN = 45,
        keyPeriod = 47,
        keySpace = 49,
        keyEscape = 53
    };
    void keyDown(int keyCode); ///< any other code does nothing but hide the volume slider
    /// One event, one step: below zero forwards, above zero backwards, of a frame or (Command held) to a
    /// bookmark.
    void scrollWheel(double deltaY, bool command);
    void mouseDown();                            ///< a click on the picture
    void mouseEntered(const QString& namedArea); ///< "movieListArea", "notesArea", "playbackArea"
    void mouseExited() {}                        ///< wanted

Q_SIGNALS:
    void hideVolume(); ///< the volume slider goes, with a fade
    void hidePopUps(); ///< volume slider, drawing and playback pop-ups go, with a fade
    void toggleFullScreen();
    void showMovieList(bool show); ///< over the picture in full screen

private:
    void drawingPanelKey(int keyCode);
    void movieList(bool show);

    Surroundings around_;
};

} // namespace daylark
