#include "ui/commands/ViewerKeys.h"

#include "commands/viewer/ViewerKeyboard.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QDockWidget>
#include <QKeyEvent>
#include <QSlider>

namespace daylark {

namespace {

/// What lists of rows, sliders and lists of values go by is theirs: up and down wherever they are, the rest
/// in a panel.
bool turnsItself(const QWidget& widget, const QWidget& viewer, int key) {
    const bool upOrDown = key == Qt::Key_Up || key == Qt::Key_Down;
    const bool turns = upOrDown || key == Qt::Key_Left || key == Qt::Key_Right || key == Qt::Key_Home ||
                       key == Qt::Key_End || key == Qt::Key_PageUp || key == Qt::Key_PageDown;
    const bool isValue = qobject_cast<const QSlider*>(&widget) || qobject_cast<const QComboBox*>(&widget);
    if (upOrDown && (isValue || qobject_cast<const QAbstractItemView*>(&widget))) return true;
    if (!turns || !isValue) return false;
    for (const QWidget* at = &widget; at && at != &viewer; at = at->parentWidget())
        if (at->isWindow() || qobject_cast<const QDockWidget*>(at)) return true;
    return false;
}

} // namespace

ViewerKeys::ViewerKeys(QWidget& window, ViewerKeyboard& keyboard)
    : WindowKeys(window)
    , keyboard_(keyboard) {}

bool ViewerKeys::isOurs(const QWidget& widget) const {
    for (const QWidget* at = &widget; at; at = at->parentWidget()) {
        if (at == &window_) return true;
        if (!at->isWindow()) continue;
        const Qt::WindowType type = at->windowType();
        if (type != Qt::Tool && type != Qt::Window) return false; // dialogs, menus
    }
    return false;
}

bool ViewerKeys::takes(QWidget& widget, QKeyEvent& event, bool press) {
    // Shortcuts first, and what lists do with them.
    if (KeyStroke::of(event).hasCommandModifier() && (!press || qobject_cast<QAbstractItemView*>(&widget)))
        return false;
    if (keyboard_.isOff(event)) {
        if (press) keyboard_.press(event);
        return true;
    }
    if (turnsItself(widget, window_, event.key())) {
        if (!press) event.accept(); // no shortcut, but its own key
        return !press;
    }
    if (press && (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter)) {
        // Space plays, so this is the key that presses a button.
        if (auto* button = qobject_cast<QAbstractButton*>(&widget)) {
            button->click();
            return true;
        }
    }
    const bool means = !keyboard_.commandFor(event).isEmpty();
    if (press) keyboard_.press(event);
    return means;
}

} // namespace daylark
