#include "ui/PanelTitle.h"

#include "ui/Theme.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

namespace daylark {

PanelTitle::PanelTitle(const QString& title, QAction* toggle, QWidget* parent)
    : QWidget(parent) {
    auto* name = new QLabel(title, this);
    name->setFont(theme::smallFont());
    name->setForegroundRole(QPalette::PlaceholderText);
    auto* close = new QToolButton(this);
    close->setAutoRaise(true);
    close->setIcon(theme::icon(QStringLiteral("close")));
    close->setIconSize({12, 12});
    close->setFixedSize(24, 24);
    close->setFocusPolicy(Qt::NoFocus);
    close->setToolTip(tr("Hide %1").arg(title));
    close->setAccessibleName(close->toolTip());
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(8, 0, 4, 0);
    layout->addWidget(name, 1);
    layout->addWidget(close);
    QObject::connect(close, &QToolButton::clicked, toggle, &QAction::trigger);
}

} // namespace daylark
