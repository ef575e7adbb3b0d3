#include "ui/commands/LibraryKeys.h"

#include "ui/commands/Commands.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QKeyEvent>

namespace daylark {

LibraryKeys::LibraryKeys(QWidget& window, const Commands& commands, const QWidget& playlists,
                         const QWidget& items)
    : WindowKeys(window)
    , commands_(commands)
    , playlists_(playlists)
    , items_(items) {}

bool LibraryKeys::isOurs(const QWidget& widget) const {
    return widget.window() == &window_;
}

bool LibraryKeys::takes(QWidget& widget, QKeyEvent& event, bool press) {
    const KeyStroke stroke = KeyStroke::of(event);
    KeyScope pressedIn = KeyScope::library;
    if (qobject_cast<QAbstractItemView*>(&widget))
        pressedIn = playlists_.isAncestorOf(&widget) || &widget == &playlists_ ? KeyScope::playlists
                    : items_.isAncestorOf(&widget)                             ? KeyScope::items
                                                                               : KeyScope::library;
    // A button is pressed by these.
    if (qobject_cast<QAbstractButton*>(&widget) &&
        (event.key() == Qt::Key_Space || event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter))
        return false;
    const QString id = commands_.keys().commandAt(stroke, pressedIn);
    if (id.isEmpty()) return false;
    const KeyScope scope = commands_.set().command(id).scope;
    if (!isWithin(scope, KeyScope::lists) && !stroke.types()) return false; // a shortcut
    if (press) commands_.set().runByKey(id, event.isAutoRepeat());
    return true;
}

} // namespace daylark
