#include "ui/library/search/FilterControls.h"

#include "app/playlists/Library.h"
#include "commands/library/LibraryCommands.h"
#include "ui/commands/Commands.h"
#include "ui/common/ListOpener.h"
#include "ui/common/Theme.h"

#include <QCoreApplication>
#include <QAction>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QToolButton>

namespace daylark {

FilterControls::FilterControls(Library& library, const Commands& commands, QWidget* parent)
    : QWidget(parent)
    , library_(library)
    , button_(new QToolButton(this))
    , field_(new QLineEdit(this)) {
    auto* menu = new QMenu(button_);
    commands.fill(*menu, filterMenu());
    button_->setObjectName(QStringLiteral("moreFiltersButton"));
    letOpen(*button_, menu);
    button_->setIcon(theme::icon(QStringLiteral("filter")));
    button_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    button_->setAutoRaise(true);
    button_->setMinimumHeight(24);
    button_->setFocusPolicy(Qt::TabFocus);
    button_->setToolTip(tr("Which items are shown"));

    field_->setObjectName(QStringLiteral("movieSearchField"));
    field_->setPlaceholderText(tr("Search"));
    field_->setAccessibleName(tr("Search the items' paths"));
    field_->setToolTip(commands.action(QStringLiteral("filter.search"))->toolTip());
    field_->setClearButtonEnabled(true);
    field_->setMinimumWidth(120);
    field_->setMaximumWidth(320);
    field_->installEventFilter(this);

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    layout->addWidget(button_);
    layout->addWidget(field_, 4);
    layout->addStretch(1); // a field that is wide enough leaves its button where it is

    connect(field_, &QLineEdit::textChanged, this, [this](const QString& text) {
        if (text != library_.filter().text()) library_.setFilter(MovieFilter::withText(text));
    });
    connect(&library_, &Library::filterChanged, this, &FilterControls::follow);
    follow();
}

void FilterControls::follow() {
    const MovieFilter& filter = library_.filter();
    const QString title = QCoreApplication::translate("Words", filter.buttonTitle().toUtf8().constData());
    button_->setText(title);
    button_->setAccessibleName(tr("Filter: %1").arg(title));
    if (field_->text() != filter.text()) field_->setText(filter.text());
}

void FilterControls::goToField() {
    field_->setFocus(Qt::ShortcutFocusReason);
    field_->selectAll();
}

bool FilterControls::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    const bool leaves = key == Qt::Key_Escape || key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Down;
    if (!leaves) return QWidget::eventFilter(watched, event);
    if (key == Qt::Key_Escape) field_->clear();
    Q_EMIT left();
    return true;
}

} // namespace daylark
