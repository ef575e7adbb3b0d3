#pragma once

#include <QKeySequence>
#include <QObject>
#include <QString>

#include <functional>
#include <map>

class QAction;
class QToolButton;
class QWidget;

namespace daylark {

/// The commands of one window: an ID with text, icon, shortcut, state and what it does. Menus, buttons,
/// context menus and keys bind to the command; what it does never touches a widget. Owned by its window;
/// interface thread.
class Commands : public QObject {
    Q_OBJECT
public:
    struct Command {
        QString id;   ///< "session.save"
        QString text; ///< the menu title, with mnemonic
        QString icon; ///< a named icon or empty
        QKeySequence shortcut;
        std::function<void()> run;
        std::function<bool()> enabled = {}; ///< asked by `refresh`; none: always
        std::function<bool()> checked = {}; ///< makes it checkable; asked by `refresh`
        QString hint = {};                  ///< the tooltip when it says more than the text
        QKeySequence alternative = {};      ///< a second shortcut
        QKeySequence hotkey = {}; ///< a key that the window itself takes, by its place; see `setHotkey`
    };
    explicit Commands(QWidget* window);

    QAction* add(Command command);                          ///< registers it and its shortcut with the window
    [[nodiscard]] QAction* action(const QString& id) const; ///< asserts that it exists
    [[nodiscard]] bool contains(const QString& id) const { return actions_.count(id) > 0; }
    /// The command's key is one that the window takes by itself: shown like a shortcut, but none. A shortcut
    /// of the same key goes.
    void setHotkey(const QString& id, Qt::Key key);
    void setAlternative(const QString& id, const QKeySequence& shortcut);
    [[nodiscard]] QString keysText(const QString& id) const; ///< all its keys, ", / Home"; empty: none
    /// A flat icon button bound to a command: tooltip "Text (Key)", accessible name, at least 24 x 24.
    [[nodiscard]] QToolButton* button(const QString& id, QWidget* parent) const;
    void refresh(); ///< asks every command for its state again
    [[nodiscard]] const std::map<QString, Command>& all() const { return commands_; }

private:
    void showKeys(const Command& command, QAction* action) const;

    QWidget* window_;
    std::map<QString, Command> commands_;
    std::map<QString, QAction*> actions_;
};

} // namespace daylark
