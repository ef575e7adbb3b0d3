#include "ui/commands/ViewerKeys.h"

#include "playback/run/Player.h"
#include "preferences/Preferences.h"
#include "ui/commands/Commands.h"
#include "ui/commands/KeyCodes.h"
#include "viewer/MoviePlayerController.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QCoreApplication>
#include <QDockWidget>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QSlider>
#include <QTextEdit>

#include <algorithm>

namespace daylark {

namespace {

struct HotkeyCommand {
    int keyCode;
    const char* command;
};

/// What each hotkey is called in menus, tooltips and on the page of keys.
constexpr HotkeyCommand hotkeyCommands[] = {{ViewerInput::keySpace, "viewer.playPause"},
                                            {ViewerInput::keyJ, "viewer.playBackwards"},
                                            {ViewerInput::keyK, "viewer.pause"},
                                            {ViewerInput::keyL, "viewer.playForwards"},
                                            {ViewerInput::keyComma, "viewer.firstFrame"},
                                            {ViewerInput::keyPeriod, "viewer.lastFrame"},
                                            {ViewerInput::keySemicolon, "viewer.addBookmark"},
                                            {ViewerInput::keyA, "viewer.toggleGrade"},
                                            {ViewerInput::keyC, "viewer.gradeTools"},
                                            {ViewerInput::keyO, "viewer.options"},
                                            {ViewerInput::keyP, "viewer.playlistDrawer"},
                                            {ViewerInput::keyN, "viewer.notes"},
                                            {ViewerInput::keyD, "viewer.drawingTools"},
                                            {ViewerInput::keyB, "viewer.bookmarks"},
                                            {ViewerInput::keyS, "viewer.showAllPanels"},
                                            {ViewerInput::keyH, "viewer.hideAllPanels"},
                                            {ViewerInput::keyF, "viewer.controls"},
                                            {ViewerInput::keyT, "viewer.toggleDrawing"},
                                            {ViewerInput::keyLeftBracket, "viewer.narrowerTool"},
                                            {ViewerInput::keyRightBracket, "viewer.widerTool"},
                                            {ViewerInput::keyEscape, "viewer.leave"}};

bool isHotkey(int keyCode) {
    if (keyCode == ViewerInput::keyQuote) return true; // brings the viewer forward, no command
    return std::any_of(std::begin(hotkeyCommands), std::end(hotkeyCommands),
                       [keyCode](const HotkeyCommand& key) { return key.keyCode == keyCode; });
}

bool isTextField(const QWidget* widget) {
    if (const auto* line = qobject_cast<const QLineEdit*>(widget)) return !line->isReadOnly();
    if (const auto* text = qobject_cast<const QTextEdit*>(widget)) return !text->isReadOnly();
    if (const auto* text = qobject_cast<const QPlainTextEdit*>(widget)) return !text->isReadOnly();
    if (const auto* box = qobject_cast<const QComboBox*>(widget)) return box->isEditable();
    return qobject_cast<const QAbstractSpinBox*>(widget) != nullptr;
}

/// A slider or list of values in a panel turns by the keys that the viewer's frames go by otherwise.
bool turnsItself(const QWidget* widget, const QWidget* viewer, int key) {
    switch (key) {
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        break;
    default:
        return false;
    }
    if (!qobject_cast<const QSlider*>(widget) && !qobject_cast<const QComboBox*>(widget)) return false;
    for (const QWidget* at = widget; at && at != viewer; at = at->parentWidget())
        if (at->isWindow() || qobject_cast<const QDockWidget*>(at)) return true;
    return false;
}

constexpr Qt::KeyboardModifiers commandModifiers = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;

} // namespace

void ViewerKeys::addCommands(Commands& commands, MoviePlayerController& controller) {
    const auto add = [&](const char* id, const char* text, const char* icon, int keyCode) {
        commands.add({QLatin1String(id),
                      QCoreApplication::translate("ViewerKeys", text),
                      QLatin1String(icon),
                      {},
                      [&controller, keyCode] { controller.input().keyDown(keyCode); },
                      [&controller] { return controller.panels().isVisible(ViewerPanel::drawing); }});
    };
    add("viewer.toggleDrawing", QT_TRANSLATE_NOOP("ViewerKeys", "Drawing Tool &On or Off"), "",
        ViewerInput::keyT);
    add("viewer.narrowerTool", QT_TRANSLATE_NOOP("ViewerKeys", "&Narrower Tool"), "",
        ViewerInput::keyLeftBracket);
    add("viewer.widerTool", QT_TRANSLATE_NOOP("ViewerKeys", "&Wider Tool"), "", ViewerInput::keyRightBracket);
}

ViewerKeys::ViewerKeys(QMainWindow& window, MoviePlayerController& controller, Commands& commands)
    : QObject(&window)
    , window_(window)
    , controller_(controller)
    , commands_(commands) {
    for (const HotkeyCommand& key : hotkeyCommands) {
        const QString id = QLatin1String(key.command);
        // Escape stays a shortcut as well: it leaves text fields, which keep their keys.
        if (key.keyCode != ViewerInput::keyEscape && commands_.contains(id))
            commands_.setHotkey(id, keyCodes::ansiKey(key.keyCode));
    }
    QCoreApplication::instance()->installEventFilter(this);
}

bool ViewerKeys::isOfViewer(const QWidget* widget) const {
    for (; widget; widget = widget->parentWidget()) {
        if (widget == &window_) return true;
        if (!widget->isWindow()) continue;
        const Qt::WindowType type = widget->windowType();
        if (type != Qt::Tool && type != Qt::Window) return false; // dialogs, menus
    }
    return false;
}

std::function<void()> ViewerKeys::actionOf(const QKeyEvent& event) const {
    const auto code = keyCodes::of(event);
    if (!code) return {};
    if (isHotkey(*code)) {
        // Held down, only the tool's width goes on.
        const bool repeats = *code == ViewerInput::keyLeftBracket || *code == ViewerInput::keyRightBracket;
        if (event.isAutoRepeat() && !repeats) return [] {};
        return [this, keyCode = *code] {
            controller_.input().keyDown(keyCode);
            commands_.refresh();
        };
    }
    if (event.modifiers() & commandModifiers) return {};
    // A single letter elsewhere among the shortcuts counts by its place as well.
    const QKeySequence sequence(event.modifiers() & Qt::ShiftModifier
                                    ? QKeyCombination(Qt::ShiftModifier, keyCodes::ansiKey(*code))
                                    : QKeyCombination(keyCodes::ansiKey(*code)));
    for (const auto& [id, command] : commands_.all()) {
        if (command.shortcut != sequence) continue;
        QAction* action = commands_.action(id);
        if (event.isAutoRepeat() && !action->autoRepeat()) return [] {};
        return [action] {
            if (action->isEnabled()) action->trigger();
        };
    }
    return {};
}

bool ViewerKeys::stepsFrames(const QKeyEvent& event) const {
    for (const char* id : {"viewer.stepForward", "viewer.stepBackward"})
        if (commands_.action(QLatin1String(id))->shortcuts().contains(QKeySequence(event.keyCombination())))
            return true;
    return false;
}

bool ViewerKeys::eventFilter(QObject* watched, QEvent* event) {
    const bool press = event->type() == QEvent::KeyPress;
    if (!press && event->type() != QEvent::ShortcutOverride) return false;
    auto* widget = qobject_cast<QWidget*>(watched);
    if (!widget || QApplication::activePopupWidget() || !isOfViewer(widget)) return false;
    if (isTextField(widget) || isTextField(QApplication::focusWidget()) || qobject_cast<QMenuBar*>(widget))
        return false;

    auto& key = *static_cast<QKeyEvent*>(event);
    const bool command = key.modifiers() & commandModifiers;
    if (command && (!press || qobject_cast<QAbstractItemView*>(widget))) return false; // shortcuts first
    const bool escape = keyCodes::of(key) == ViewerInput::keyEscape;
    const bool isFunctionKey = key.key() >= Qt::Key_F1 && key.key() <= Qt::Key_F35;
    if (!escape && !command && !isFunctionKey && controller_.panels().isFullScreen() &&
        controller_.preferences().disableHotkeysInFullScreenMode()) {
        event->accept();
        return true;
    }
    if (turnsItself(widget, &window_, key.key())) {
        if (!press) event->accept(); // no shortcut, but its own key
        return !press;
    }
    if (press && (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter)) {
        // Space plays, so this is the key that presses a button.
        auto* button = qobject_cast<QAbstractButton*>(widget);
        if (button) button->click();
        return button != nullptr;
    }
    // A held step key goes as fast as pictures come: nothing piles up, and what stands at its release has
    // been seen. What comes as a press was refused as a shortcut.
    if (key.isAutoRepeat() && stepsFrames(key) && (press || !controller_.player().pictureIsCurrent())) {
        event->accept();
        return true;
    }
    const auto action = actionOf(key);
    if (!action) return false;
    event->accept();
    if (press) {
        const auto code = keyCodes::of(key);
        action();
        Q_EMIT pressed(*code);
    }
    return true;
}

} // namespace daylark
