#pragma once

#include "commands/keys/KeyStroke.h"

#include <QString>

#include <vector>

namespace daylark {

class Preferences;

/// Where a key counts as a command's: in both windows, in the viewer with its panels, in the library's
/// window, or only while a list there has the focus.
enum class KeyScope { everywhere, viewer, library, lists, items, playlists };
/// A key pressed in the inner scope may mean a command of the outer one.
[[nodiscard]] bool isWithin(KeyScope inner, KeyScope outer);

/// One line of the table of commands: what it is called, its icon, where its keys count, and which they are
/// until a person chooses others. What it does and when it can be done is bound to the ID in a `CommandSet`.
/// Immutable.
struct Command {
    enum Trait : unsigned {
        none = 0,
        repeats = 1,      ///< goes on while its key is held
        anyModifiers = 2, ///< its key counts whatever modifiers are held, unless that is another command's
        toldByTitle = 4,  ///< `text` is what its action is told apart by: passed on as it stands, translated where it is shown
    };
    QString id;   ///< "session.save"; those of the viewer begin with "viewer."
    QString text; ///< the menu title, with mnemonic
    QString icon; ///< a named icon or empty
    std::vector<KeyStroke> keys = {};
    QString name = {}; ///< what it is called where it stands alone; empty: as in the menu
    unsigned traits = none;
    KeyScope scope = KeyScope::library;
    QString status = {}; ///< the status whose name is its title ("901"); that is "%1" in `name`
};

using CommandTable = std::vector<Command>;
/// Every command of a window, in the order of its menus. What both have stands in both alike.
[[nodiscard]] const CommandTable& historyTable(); ///< of both: undo and redo
[[nodiscard]] const CommandTable& libraryTable();
[[nodiscard]] const CommandTable& viewerTable();
[[nodiscard]] const Command* findCommand(const QString& id); ///< of either; null when there is none

[[nodiscard]] QString withoutMnemonic(const QString& menuTitle);
/// Its menu title, and what it is called where it stands alone, by the names that a person has given.
[[nodiscard]] QString commandText(const Command& command, const Preferences& preferences);
[[nodiscard]] QString commandName(const Command& command, const Preferences& preferences);

} // namespace daylark
