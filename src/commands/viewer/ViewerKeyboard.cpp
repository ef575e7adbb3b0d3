#include "commands/viewer/ViewerKeyboard.h"

#include "playback/run/Player.h"
#include "preferences/Preferences.h"
#include "viewer/MoviePlayerController.h"

#include <QKeyEvent>

namespace daylark {

QString ViewerKeyboard::commandFor(const QKeyEvent& event) const {
    const QString exact = keys_.commandAt(KeyStroke::of(event), KeyScope::viewer);
    if (!exact.isEmpty()) return exact;
    const QString any = keys_.commandAt(KeyStroke::withoutModifiers(event), KeyScope::viewer);
    return !any.isEmpty() && commands_.command(any).traits & Command::anyModifiers ? any : QString();
}

bool ViewerKeyboard::isOff(const QKeyEvent& event) const {
    if (!controller_.panels().isFullScreen() || !controller_.preferences().disableHotkeysInFullScreenMode())
        return false;
    if (commandFor(event) == QLatin1String("viewer.leave")) return false;
    const KeyStroke stroke = KeyStroke::of(event);
    const bool isFunctionKey = event.key() >= Qt::Key_F1 && event.key() <= Qt::Key_F35;
    return !isFunctionKey &&
           (!stroke.hasCommandModifier() || keys_.commandAt(stroke, KeyScope::viewer).isEmpty());
}

bool ViewerKeyboard::waitsForPicture(const QKeyEvent& event) const {
    if (!event.isAutoRepeat() || controller_.player().pictureIsCurrent()) return false;
    const QString id = commandFor(event);
    return id == QLatin1String("viewer.stepForward") || id == QLatin1String("viewer.stepBackward");
}

void ViewerKeyboard::press(const QKeyEvent& event) {
    controller_.input().keyPressed();
    if (isOff(event) || waitsForPicture(event)) return;
    if (const QString id = commandFor(event); !id.isEmpty()) commands_.runByKey(id, event.isAutoRepeat());
}

} // namespace daylark
