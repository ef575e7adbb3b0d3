#include "ui/preferences/KeyField.h"

#include "ui/common/Theme.h"

#include <QKeyEvent>

namespace daylark {

KeyField::KeyField(QWidget* parent)
    : PlainLabel(parent) {
    setFocusPolicy(Qt::ClickFocus);
    setAlignment(Qt::AlignCenter);
    setWordWrap(true);
    setMinimumHeight(28);
    setStyleSheet(
        QStringLiteral("QLabel { background: %1; border: 1px solid %2; border-radius: 4px; padding: 4px; }")
            .arg(theme::window.name(), theme::focus.name()));
}

bool KeyField::event(QEvent* event) {
    if (event->type() == QEvent::FocusOut && isVisible()) Q_EMIT left();
    if (event->type() == QEvent::ShortcutOverride) {
        event->accept(); // no shortcut of the window's
        return true;
    }
    if (event->type() != QEvent::KeyPress) return PlainLabel::event(event);
    event->accept();
    const auto& key = *static_cast<QKeyEvent*>(event);
    const KeyStroke stroke = KeyStroke::of(key);
    if (key.isAutoRepeat() || stroke.isEmpty()) return true;
    if (stroke == KeyStroke(Qt::Key_Escape))
        Q_EMIT cancelled();
    else
        Q_EMIT pressed(stroke);
    return true;
}

} // namespace daylark
