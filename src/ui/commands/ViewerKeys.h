#pragma once

#include <QObject>

#include <functional>

class QKeyEvent;
class QMainWindow;
class QWidget;

namespace daylark {

class Commands;
class MoviePlayerController;

/// Brings the keys of the viewer's window and of every panel about it to the viewer, by their place on the
/// keyboard. A text field being edited keeps its keys, dialogs and menus keep theirs, shortcuts with Ctrl,
/// Alt or Meta stay shortcuts. It watches the whole program's key events, and consumes those that it brings.
/// It also sees to it that menus and tooltips name these keys. Owned by the viewer's window; interface
/// thread.
class ViewerKeys : public QObject {
    Q_OBJECT
public:
    ViewerKeys(QMainWindow& window, MoviePlayerController& controller, Commands& commands);

    /// The hotkeys that have no menu item of their own elsewhere, as commands; before the menus are made.
    static void addCommands(Commands& commands, MoviePlayerController& controller);

Q_SIGNALS:
    void pressed(int keyCode); ///< the key has done what it does

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] bool isOfViewer(const QWidget* widget) const;
    [[nodiscard]] bool stepsFrames(const QKeyEvent& event) const;
    [[nodiscard]] std::function<void()> actionOf(const QKeyEvent& event) const; ///< none: not a key of ours

    QMainWindow& window_;
    MoviePlayerController& controller_;
    Commands& commands_;
};

} // namespace daylark
