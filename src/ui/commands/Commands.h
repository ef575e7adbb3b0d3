#pragma once

#include "commands/CommandSet.h"
#include "commands/Menu.h"
#include "commands/keys/KeyMap.h"

#include <QObject>
#include <QString>

#include <map>

class QAction;
class QMenu;
class QMenuBar;
class QToolButton;
class QWidget;

namespace daylark {

/// A window's commands as actions for its menus and buttons, with their keys as the map has them now. Keys
/// that write something, and those of lists, are shown but are no shortcuts: the window takes them by their
/// place
/// (`ViewerKeys`, `LibraryKeys`), so that text fields keep what is typed. Owned by its window; interface
/// thread.
class Commands : public QObject {
    Q_OBJECT
public:
    Commands(CommandSet& commands, const KeyMap& keys, QWidget* window);

    [[nodiscard]] CommandSet& set() const { return set_; }
    [[nodiscard]] const KeyMap& keys() const { return keys_; }
    [[nodiscard]] QAction* action(const QString& id) const; ///< asserts that it exists
    /// A flat icon button bound to a command: tooltip "Name (Key)", accessible name, at least 24 x 24.
    [[nodiscard]] QToolButton* button(const QString& id, QWidget* parent) const;
    void fill(QMenu& menu, const Menu& entries) const;
    void fill(QMenuBar& bar, const std::vector<Menu>& menus) const;

private:
    void add(const Command& command, QWidget* window);
    void showLooks(const QString& id) const;
    void showState(const QString& id) const;

    CommandSet& set_;
    const KeyMap& keys_;
    std::map<QString, QAction*> actions_;
};

} // namespace daylark
