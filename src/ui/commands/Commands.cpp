#include "ui/commands/Commands.h"

#include "base/PlainText.h"
#include "ui/common/Theme.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QToolButton>
#include <QWidget>

#include <algorithm>

namespace daylark {

namespace {

bool isShortcut(const KeyStroke& stroke, const Command& command) {
    return !stroke.types() && !isWithin(command.scope, KeyScope::lists);
}

} // namespace

Commands::Commands(CommandSet& commands, const KeyMap& keys, QWidget* window)
    : QObject(window)
    , set_(commands)
    , keys_(keys) {
    for (const Command& command : commands.table())
        add(command, window);
    connect(&commands, &CommandSet::stateChanged, this, &Commands::showState);
    connect(&commands, &CommandSet::looksChanged, this, &Commands::showLooks);
    connect(&keys, &KeyMap::changed, this, [this] {
        for (const auto& [id, action] : actions_)
            showLooks(id);
    });
}

void Commands::add(const Command& command, QWidget* window) {
    auto* action = new QAction(this);
    action->setObjectName(command.id);
    action->setCheckable(set_.isCheckable(command.id));
    // An icon would stand where the tick does; of flags, it says more.
    if (action->isCheckable() && !command.icon.startsWith(QLatin1String("flag"))) action->setIconVisibleInMenu(false);
    action->setAutoRepeat(command.traits & Command::repeats);
    actions_[command.id] = action;
    showLooks(command.id);
    showState(command.id);
    connect(action, &QAction::triggered, this, [this, id = command.id] {
        set_.run(id);
        showState(id); // a click has turned a checkable action, whatever the command made of it
    });
    window->addAction(action);
}

void Commands::showLooks(const QString& id) const {
    QAction* action = actions_.at(id);
    const Command& command = set_.command(id);
    const QString label = keys_.label(id);
    QList<QKeySequence> shortcuts;
    bool all = true;
    for (const KeyStroke& stroke : keys_.keysOf(id)) {
        if (isShortcut(stroke, command))
            shortcuts << QKeySequence(stroke.keys());
        else
            all = false;
    }
    action->setShortcuts(shortcuts);
    action->setIcon(theme::icon(set_.icon(id)));
    // Menus show what follows a tab where they show shortcuts.
    action->setText(all ? set_.text(id) : set_.text(id) + u'\t' + keys_.keysOf(id).front().label());
    action->setIconText(set_.name(id));
    action->setToolTip(plain::toolTip(label.isEmpty() ? set_.name(id) : QStringLiteral("%1 (%2)").arg(set_.name(id), label)));
}

void Commands::showState(const QString& id) const {
    QAction* action = actions_.at(id);
    action->setEnabled(set_.isEnabled(id));
    if (action->isCheckable()) action->setChecked(set_.isChecked(id));
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
    button->setAccessibleName(set_.name(id));
    button->setToolButtonStyle(command->icon().isNull() ? Qt::ToolButtonTextOnly : Qt::ToolButtonIconOnly);
    return button;
}

void Commands::fill(QMenu& menu, const Menu& entries) const {
    for (const Menu::Entry& entry : entries.entries) {
        if (entry.isLine())
            menu.addSeparator();
        else if (!entry.command.isEmpty())
            menu.addAction(action(entry.command));
        else
            fill(*menu.addMenu(entry.below.front().title), entry.below.front());
    }
}

void Commands::fill(QMenuBar& bar, const std::vector<Menu>& menus) const {
    for (const Menu& menu : menus)
        fill(*bar.addMenu(menu.title), menu);
}

} // namespace daylark
