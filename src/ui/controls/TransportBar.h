#pragma once

#include <QMap>
#include <QWidget>

class QMenu;
class QToolButton;

namespace daylark {

class PlainLabel;
class Commands;
class FlagPopUp;
class ViewChoiceButton;
class MoviePlayerController;
class VolumeButton;

/// The controls strip under the picture, 56 points: read-outs, transport buttons, rate, repeat mode, volume,
/// flag and what shows and hides. It renders the controller's state; the buttons are the window's commands.
/// Owned by the viewer window; interface thread.
class TransportBar : public QWidget {
    Q_OBJECT
public:
    TransportBar(MoviePlayerController& controller, Commands& commands, QWidget* parent = nullptr);

    void showTimes(); ///< elapsed, counter, timecode
    void showState(); ///< playing or not, rate
    void showRepeatType();
    void showFlag();
    [[nodiscard]] QString counterText() const;
    [[nodiscard]] QMenu* repeatMenu() const; ///< the six modes

private:
    [[nodiscard]] PlainLabel* readOut(const QString& name, const QString& accessibleName, const QString& widest);
    [[nodiscard]] QToolButton* repeatPopUp();
    [[nodiscard]] QToolButton* commandButton(const QString& id);
    void setRepeatType(const QString& title);
    void letItFold();

    MoviePlayerController& controller_;
    Commands& commands_;
    QMap<QString, QToolButton*> buttons_; ///< by command
    PlainLabel* elapsed_;
    PlainLabel* counter_;
    PlainLabel* timecode_;
    PlainLabel* rate_;
    QToolButton* repeat_;
    VolumeButton* volume_;
    FlagPopUp* flag_;
    ViewChoiceButton *display_ = nullptr, *view_ = nullptr;
};

} // namespace daylark
