#pragma once

#include "commands/Command.h"

#include <QObject>
#include <QStringList>

#include <map>

namespace daylark {

/// Which key means which command, and the other way round: the keys of the table of commands, changed by what
/// a person has chosen, which is one preference and holds only the commands whose keys differ. One key means
/// at most one command wherever it is pressed. Every window has a map of its own over the same preferences; a
/// change is there in all at once. What is stored and cannot be read counts as not chosen. Interface thread.
class KeyMap : public QObject {
    Q_OBJECT
public:
    using Strokes = std::vector<KeyStroke>;
    explicit KeyMap(Preferences& preferences, QObject* parent = nullptr);

    /// The command that the key means where it is pressed; the inner scope's before the outer's. Empty: none.
    [[nodiscard]] QString commandAt(const KeyStroke& stroke, KeyScope pressedIn) const;
    [[nodiscard]] const Strokes& keysOf(const QString& id) const;
    [[nodiscard]] QString label(const QString& id) const; ///< all its keys, ", / Home"; empty: none
    [[nodiscard]] static const Strokes& defaultsOf(const QString& id);
    [[nodiscard]] bool isChanged(const QString& id) const;
    [[nodiscard]] bool isChanged() const; ///< any

    /// The other commands that one of these keys means already, where both would be meant.
    [[nodiscard]] QStringList clashes(const Strokes& strokes, const QString& id) const;
    /// Gives the command these keys and no others, and takes them from every command that they clash with.
    void assign(const QString& id, const Strokes& strokes);
    void reset(const QString& id); ///< the same, with the keys of the table
    void resetAll();

Q_SIGNALS:
    void changed();

private:
    void read();
    void store();

    Preferences& preferences_;
    struct Entry {
        const Command* command = nullptr;
        Strokes strokes = {};
    };
    std::map<QString, Entry> keys_; ///< every command of the tables
};

} // namespace daylark
