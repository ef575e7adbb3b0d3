#include "ui/commands/WindowKeys.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QTextEdit>

namespace daylark {

namespace {

bool isTextField(const QWidget* widget) {
    if (const auto* line = qobject_cast<const QLineEdit*>(widget)) return !line->isReadOnly();
    if (const auto* text = qobject_cast<const QTextEdit*>(widget)) return !text->isReadOnly();
    if (const auto* text = qobject_cast<const QPlainTextEdit*>(widget)) return !text->isReadOnly();
    if (const auto* box = qobject_cast<const QComboBox*>(widget)) return box->isEditable();
    return qobject_cast<const QAbstractSpinBox*>(widget) != nullptr;
}

} // namespace

WindowKeys::WindowKeys(QWidget& window)
    : QObject(&window)
    , window_(window) {
    QCoreApplication::instance()->installEventFilter(this);
}

bool WindowKeys::eventFilter(QObject* watched, QEvent* event) {
    const bool press = event->type() == QEvent::KeyPress;
    if (!press && event->type() != QEvent::ShortcutOverride) return false;
    auto* widget = qobject_cast<QWidget*>(watched);
    if (!widget || QApplication::activePopupWidget() || !isOurs(*widget)) return false;
    if (isTextField(widget) || isTextField(QApplication::focusWidget()) || qobject_cast<QMenuBar*>(widget))
        return false;
    if (!takes(*widget, *static_cast<QKeyEvent*>(event), press)) return false;
    event->accept();
    return true;
}

} // namespace daylark
