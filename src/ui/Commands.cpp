#include "ui/Commands.h"

#include "ui/Theme.h"

#include <QAction>
#include <QToolButton>
#include <QWidget>

namespace daylark {

namespace {

QString withoutMnemonic(const QString& menuTitle) {
    QString plain;
    for (qsizetype at = 0; at < menuTitle.size(); ++at) {
        if (menuTitle[at] == QLatin1Char('&') && at + 1 < menuTitle.size())
            ++at; // "&&" stands for one ampersand
        plain += menuTitle[at];
    }
    return plain;
}

} // namespace

Commands::Commands(QWidget* window)
    : QObject(window)
    , window_(window) {}

QAction* Commands::add(Command command) {
    const QString id = command.id;
    Q_ASSERT_X(!actions_.contains(id), "Commands::add", qPrintable(id));
    const Command& kept = commands_.insert_or_assign(id, std::move(command)).first->second;

    auto* action = new QAction(theme::icon(kept.icon), kept.text, this);
    action->setObjectName(id);
    action->setShortcut(kept.shortcut);
    action->setCheckable(bool(kept.checked));
    const QString title = withoutMnemonic(kept.text);
    QString hint = kept.hint.isEmpty() ? title : kept.hint;
    if (!kept.shortcut.isEmpty())
        hint += QStringLiteral(" (%1)").arg(kept.shortcut.toString(QKeySequence::NativeText));
    action->setToolTip(hint);
    action->setStatusTip(QString());
    // Through the map, so that a command's function may add commands while it runs.
    connect(action, &QAction::triggered, this, [this, id] {
        const auto run = commands_.at(id).run;
        if (run) run();
        refresh();
    });
    window_->addAction(action);
    actions_[id] = action;
    return action;
}

QAction* Commands::action(const QString& id) const {
    const auto found = actions_.find(id);
    Q_ASSERT_X(found != actions_.end(), "Commands::action", qPrintable(id));
    return found->second;
}

QToolButton* Commands::button(const QString& id, QWidget* parent) const {
    QAction* command = action(id);
    auto* button = new QToolButton(parent);
    button->setDefaultAction(command);
    button->setAutoRaise(true);
    button->setIconSize({16, 16});
    button->setMinimumSize(24, 24);
    button->setFocusPolicy(Qt::TabFocus);
    button->setAccessibleName(withoutMnemonic(command->text()));
    button->setToolButtonStyle(command->icon().isNull() ? Qt::ToolButtonTextOnly : Qt::ToolButtonIconOnly);
    return button;
}

void Commands::refresh() {
    for (const auto& [id, command] : commands_) {
        QAction* target = actions_.at(id);
        if (command.enabled) target->setEnabled(command.enabled());
        if (command.checked) target->setChecked(command.checked());
    }
}

} // namespace daylark
