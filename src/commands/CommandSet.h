#pragma once

#include "commands/Command.h"
#include "commands/Condition.h"

#include <map>

namespace daylark {

/// The commands of one window at work: what each does, whether it can be done now, whether it is on. Menus,
/// buttons and keys are made of it and run its commands; none of them knows what a command does. Its state
/// follows the parts' signals by way of conditions. Owned by its window, over parts that outlive it;
/// interface thread.
class CommandSet : public QObject {
    Q_OBJECT
public:
    CommandSet(const CommandTable& table, const Preferences& preferences, QObject* parent = nullptr);

    /// Something that commands of this set are enabled or checked by.
    Condition& when(std::function<bool()> ask);
    /// What a command of the table does. Without `enabled` it can always be done; with `checked` it is on or
    /// off.
    void bind(const QString& id, std::function<void()> run, const Condition* enabled = nullptr,
              const Condition* checked = nullptr);
    /// A condition on the key alone; menus and buttons don't ask it.
    void bindKey(const QString& id, const Condition& counts);
    void setText(const QString& id, const QString& text); ///< the menu title, when it says what would be done
    void setIcon(const QString& id, const QString& icon);

    [[nodiscard]] const CommandTable& table() const { return table_; }
    [[nodiscard]] bool isBound(const QString& id) const;
    [[nodiscard]] const Command& command(const QString& id) const { return *at(id).command; }
    [[nodiscard]] QString text(const QString& id) const { return at(id).text; }
    [[nodiscard]] QString name(const QString& id) const { return at(id).name; } ///< where it stands alone
    [[nodiscard]] QString icon(const QString& id) const { return at(id).icon; }
    [[nodiscard]] bool isEnabled(const QString& id) const;
    [[nodiscard]] bool isCheckable(const QString& id) const { return at(id).checked != nullptr; }
    [[nodiscard]] bool isChecked(const QString& id) const;

    void run(const QString& id);                               ///< nothing while it is not enabled
    void runByKey(const QString& id, bool autoRepeat = false); ///< nothing, too, where its key doesn't count

Q_SIGNALS:
    void stateChanged(const QString& id); ///< enabled or checked
    void looksChanged(const QString& id); ///< text, name or icon

private:
    struct Bound {
        const Command* command = nullptr;
        QString text, name, icon;
        std::function<void()> run = {};
        const Condition* enabled = nullptr;
        const Condition* checked = nullptr;
        const Condition* byKey = nullptr;
    };
    [[nodiscard]] const Bound& at(const QString& id) const;
    [[nodiscard]] Bound& at(const QString& id);

    const CommandTable& table_;
    std::map<QString, Bound> commands_;
};

} // namespace daylark
