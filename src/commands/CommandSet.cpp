#include "commands/CommandSet.h"

#include "preferences/Preferences.h"

#include <utility>

namespace daylark {

CommandSet::CommandSet(const CommandTable& table, const Preferences& preferences, QObject* parent)
    : QObject(parent)
    , table_(table) {
    for (const Command& command : table)
        commands_[command.id] = {&command, commandText(command, preferences),
                                 commandName(command, preferences), command.icon};
    for (const Preference<QString>& name : preferences.statusNames)
        connect(&name, &PreferenceItem::changed, this, [this, &preferences, status = name.key()] {
            for (auto& [id, bound] : commands_) {
                if (bound.command->status != status) continue;
                bound.text = commandText(*bound.command, preferences);
                bound.name = commandName(*bound.command, preferences);
                Q_EMIT looksChanged(id);
            }
        });
}

Condition& CommandSet::when(std::function<bool()> ask) {
    return *new Condition(std::move(ask), this);
}

void CommandSet::bind(const QString& id, std::function<void()> run, const Condition* enabled,
                      const Condition* checked) {
    Bound& bound = at(id);
    Q_ASSERT_X(!bound.run, "CommandSet::bind", qPrintable(id));
    bound.run = std::move(run);
    bound.enabled = enabled;
    bound.checked = checked;
    for (const Condition* condition : {enabled, checked})
        if (condition) connect(condition, &Condition::changed, this, [this, id] { Q_EMIT stateChanged(id); });
}

void CommandSet::bindKey(const QString& id, const Condition& counts) {
    at(id).byKey = &counts;
}

void CommandSet::setText(const QString& id, const QString& text) {
    Bound& bound = at(id);
    if (bound.text == text) return;
    bound.text = text;
    bound.name = withoutMnemonic(text);
    Q_EMIT looksChanged(id);
}

void CommandSet::setIcon(const QString& id, const QString& icon) {
    Bound& bound = at(id);
    if (bound.icon == icon) return;
    bound.icon = icon;
    Q_EMIT looksChanged(id);
}

bool CommandSet::isBound(const QString& id) const {
    return bool(at(id).run);
}

bool CommandSet::isEnabled(const QString& id) const {
    const Bound& bound = at(id);
    return isBound(id) && (!bound.enabled || bound.enabled->holds());
}

bool CommandSet::isChecked(const QString& id) const {
    const Bound& bound = at(id);
    return bound.checked && bound.checked->holds();
}

void CommandSet::run(const QString& id) {
    if (!isEnabled(id)) return;
    const auto run = at(id).run; // what it does may end the set
    run();
}

void CommandSet::runByKey(const QString& id, bool autoRepeat) {
    const Bound& bound = at(id);
    if ((autoRepeat && !(bound.command->traits & Command::repeats)) || (bound.byKey && !bound.byKey->holds()))
        return;
    run(id);
}

const CommandSet::Bound& CommandSet::at(const QString& id) const {
    const auto found = commands_.find(id);
    Q_ASSERT_X(found != commands_.end(), "CommandSet::at", qPrintable(id));
    return found->second;
}

CommandSet::Bound& CommandSet::at(const QString& id) {
    return const_cast<Bound&>(std::as_const(*this).at(id));
}

} // namespace daylark
