#pragma once

#include <QApplication>
#include <QCursor>
#include <QEvent>
#include <QMenu>
#include <QToolButton>

namespace daylark {

/// Gives a button the list that it opens, at once or by the arrow beside it. Nobody tells a button of a pointer that leaves while
/// its list is open, so it is looked for when the list has closed: else the button stays bright until the pointer comes again.
inline void letOpen(QToolButton& button, QMenu* list,
                    QToolButton::ToolButtonPopupMode how = QToolButton::InstantPopup) {
    button.setMenu(list);
    button.setPopupMode(how);
    const auto lookForPointer = [&button] {
        if (!button.underMouse() || QApplication::widgetAt(QCursor::pos()) == &button) return;
        button.setAttribute(Qt::WA_UnderMouse, false);
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(&button, &leave);
        button.update();
    };
    QObject::connect(list, &QMenu::aboutToHide, &button, lookForPointer, Qt::QueuedConnection);
}

} // namespace daylark
