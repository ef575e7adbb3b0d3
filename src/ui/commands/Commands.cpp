#include "ui/commands/Commands.h"

#include "ui/common/Theme.h"

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
    action->setCheckable(bool(kept.checked));
    showKeys(kept, action);
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

void Commands::showKeys(const Command& command, QAction* action) const {
    QList<QKeySequence> shortcuts;
    for (const QKeySequence& keys : {command.shortcut, command.alternative})
        if (!keys.isEmpty()) shortcuts << keys;
    action->setShortcuts(shortcuts);
    const QString title = withoutMnemonic(command.text);
    // Menus show what follows a tab where they show shortcuts.
    if (!command.hotkey.isEmpty()) {
        action->setIconText(title);
        action->setText(command.text + u'\t' + command.hotkey.toString(QKeySequence::NativeText));
    }
    const QString hint = command.hint.isEmpty() ? title : command.hint, keys = keysText(command.id);
    action->setToolTip(keys.isEmpty() ? hint : QStringLiteral("%1 (%2)").arg(hint, keys));
}

void Commands::setHotkey(const QString& id, Qt::Key key) {
    Command& command = commands_.at(id);
    command.hotkey = key;
    if (command.shortcut == command.hotkey) command.shortcut = {};
    showKeys(command, action(id));
}

void Commands::setAlternative(const QString& id, const QKeySequence& shortcut) {
    Command& command = commands_.at(id);
    command.alternative = shortcut;
    showKeys(command, action(id));
}

QString Commands::keysText(const QString& id) const {
    const Command& command = commands_.at(id);
    QStringList keys;
    for (const QKeySequence& sequence : {command.hotkey, command.shortcut, command.alternative})
        if (!sequence.isEmpty()) keys << sequence.toString(QKeySequence::NativeText);
    return keys.join(QStringLiteral(" / "));
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
    button->setAccessibleName(withoutMnemonic(commands_.at(id).text));
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
