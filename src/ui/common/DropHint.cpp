#include "ui/common/DropHint.h"

#include "ui/common/Theme.h"

#include <QAbstractItemView>
#include <QEvent>
#include <QPainter>

namespace daylark {

DropHint::DropHint(const QString& text, QAbstractItemView* view)
    : QWidget(view->viewport())
    , text_(text) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    setAccessibleName(text);
    view->viewport()->installEventFilter(this);
    setGeometry(view->viewport()->rect());
}

void DropHint::setText(const QString& text) {
    if (text == text_) return;
    text_ = text;
    setAccessibleName(text);
    update();
}

void DropHint::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRect middle = rect().adjusted(12, 0, -12, 0);
    QRect icon(0, 0, 32, 32);
    const QRect lines = painter.boundingRect(middle, Qt::AlignCenter | Qt::TextWordWrap, text_);
    icon.moveCenter({middle.center().x(), middle.center().y() - lines.height() / 2 - 16});
    painter.setOpacity(0.5);
    theme::icon(QStringLiteral("drop")).paint(&painter, icon);
    painter.setOpacity(1.0);
    painter.setPen(theme::dimText);
    painter.drawText(middle.translated(0, 16), Qt::AlignCenter | Qt::TextWordWrap, text_);
}

bool DropHint::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize && watched == parent())
        setGeometry(static_cast<QWidget*>(watched)->rect());
    return QWidget::eventFilter(watched, event);
}

} // namespace daylark
