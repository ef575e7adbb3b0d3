#pragma once

#include <QPoint>
#include <QString>
#include <QStringList>

#include <functional>

class QWidget;

namespace daylark::demo {

/// A person's hands on the display: real mouse and key events through the X server (xdotool), and eyes that
/// look at the screen. Every call returns when the server has taken the events; the program's own loop goes
/// on meanwhile.
class Robot {
public:
    void moveTo(QPoint global);
    void click(QPoint global, int times = 1);
    void click(const QWidget* widget, int times = 1); ///< in its middle
    void press(QPoint global);
    void release();
    void drag(QPoint from, QPoint to); ///< in small steps, as a hand does
    /// A drag that begins in this program, whose loop runs inside the drag until it ends: the whole of it is handed to the
    /// server at once. `held` ("ctrl") is pressed on the way and let go after the drop; may be empty.
    void carry(QPoint from, QPoint to, const QString& held = {});
    void key(const QString& name);     ///< "space", "Right", "ctrl+s"
    void type(const QString& text);
    /// Lets the program run until `done` or `milliseconds` are over; whether it was done.
    [[nodiscard]] bool waitFor(const std::function<bool()>& done, int milliseconds = 20000);
    void rest(int milliseconds);                  ///< lets the program run, for a picture of a settled screen
    [[nodiscard]] bool shot(const QString& path); ///< the whole screen, as a PNG

    [[nodiscard]] static QPoint middleOf(const QWidget* widget);

private:
    void xdotool(const QStringList& arguments);
};

} // namespace daylark::demo
