#include "ui/library/search/FindPanel.h"

#include "app/PlaylistController.h"
#include "preferences/PreferenceWords.h"
#include "preferences/Preferences.h"
#include "ui/commands/Commands.h"
#include "ui/common/Binding.h"
#include "ui/common/PlainLabel.h"
#include "ui/common/Theme.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QToolButton>

namespace daylark {

FindPanel::FindPanel(PlaylistController& controller, const Commands& commands, QWidget* parent)
    : QWidget(parent)
    , controller_(controller)
    , field_(new QLineEdit(this))
    , status_(new PlainLabel(this)) {
    setObjectName(QStringLiteral("findPanel"));
    setAccessibleName(tr("Find"));
    makeLayout(commands);
    Find& find = controller_.find();
    field_->installEventFilter(this);
    connect(field_, &QLineEdit::textEdited, &find, &Find::setFindString);
    connect(&find, &Find::changed, this, &FindPanel::refresh);
    connect(&find, &Find::panelShown, this, &FindPanel::open);
    connect(&find, &Find::panelClosed, this, &FindPanel::shut);
    setVisible(find.panelIsShown());
    refresh();
}

void FindPanel::makeLayout(const Commands& commands) {
    field_->setObjectName(QStringLiteral("findField"));
    field_->setPlaceholderText(tr("Find in all playlists"));
    field_->setAccessibleName(tr("Find in all playlists"));
    field_->setMinimumWidth(140);
    auto* scope = new QComboBox(this);
    scope->setAccessibleName(tr("Find looks at"));
    binding::toChoice(scope, controller_.preferences().findInputScope, binding::wordChoices<FindInput>());
    status_->setFont(theme::smallFont());
    status_->setMinimumWidth(status_->fontMetrics().horizontalAdvance(QStringLiteral("No Matches Found")) + 8);

    auto* use = new QToolButton(this);
    use->setObjectName(QStringLiteral("foundPlaylistButton"));
    use->setIcon(theme::icon(QStringLiteral("addPlaylist")));
    use->setAutoRaise(true);
    use->setMinimumSize(24, 24);
    use->setFocusPolicy(Qt::TabFocus);
    use->setToolTip(tr("New playlist with copies of what is found; with Ctrl, Alt or Meta held: with instances"));
    use->setAccessibleName(tr("New playlist with what is found"));
    const QAction* copies = commands.action(QStringLiteral("find.copies"));
    use->setEnabled(copies->isEnabled());
    connect(copies, &QAction::changed, use, [use, copies] { use->setEnabled(copies->isEnabled()); });
    connect(use, &QToolButton::clicked, this, [&set = commands.set()] {
        const bool modified =
            QApplication::keyboardModifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
        set.run(modified ? QStringLiteral("find.instances") : QStringLiteral("find.copies"));
    });
    auto* close = new QToolButton(this);
    close->setIcon(theme::icon(QStringLiteral("close")));
    close->setAutoRaise(true);
    close->setMinimumSize(24, 24);
    close->setFocusPolicy(Qt::TabFocus);
    close->setToolTip(tr("Close (Esc)"));
    close->setAccessibleName(tr("Close the find panel"));
    connect(close, &QToolButton::clicked, &controller_.find(), &Find::closeFindPanel);

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(8, 4, 8, 4);
    layout->setSpacing(4);
    layout->addWidget(field_, 1);
    layout->addWidget(commands.button(QStringLiteral("find.previous"), this));
    layout->addWidget(commands.button(QStringLiteral("find.next"), this));
    layout->addWidget(status_);
    layout->addWidget(scope);
    layout->addWidget(use);
    layout->addWidget(close);
}

void FindPanel::refresh() {
    const Find& find = controller_.find();
    status_->setText(find.foundText());
    if (field_->text() != find.findString()) field_->setText(find.findString());
}

void FindPanel::open() {
    show();
    field_->setFocus(Qt::ShortcutFocusReason);
    field_->selectAll();
}

void FindPanel::shut() {
    const bool hadKeyboard = isAncestorOf(QApplication::focusWidget());
    hide();
    if (hadKeyboard) Q_EMIT left();
}

bool FindPanel::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
    const auto& pressed = *static_cast<const QKeyEvent*>(event);
    switch (pressed.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (pressed.modifiers() & Qt::ShiftModifier)
            controller_.find().selectPreviousFoundMovie();
        else
            controller_.find().selectNextFoundMovie();
        return true;
    case Qt::Key_Escape:
        controller_.find().closeFindPanel();
        return true;
    default:
        return QWidget::eventFilter(watched, event);
    }
}

} // namespace daylark
