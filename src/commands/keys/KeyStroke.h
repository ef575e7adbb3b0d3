#pragma once

#include <QString>
#include <Qt>

#include <optional>

class QKeyEvent;

namespace daylark {

/// The keys of an ANSI keyboard told apart by where they lie, by their key codes: the same place is the same
/// code whatever the keyboard's language prints there.
namespace keyPlaces {
/// The code at a place, by the number that the window system gives it, or, where it gives none (0), of the
/// key that prints this on an ANSI keyboard. None for keys that are neither letters, digits, signs nor
/// Escape.
[[nodiscard]] std::optional<int> codeOf(quint32 scanCode, int key);
[[nodiscard]] Qt::Key ansiKey(int keyCode); ///< what an ANSI keyboard prints there; `Key_unknown` for others
} // namespace keyPlaces

/// A key pressed together with modifiers: what a command is assigned to. Alone or with Shift it means a place
/// on the keyboard and is called by what an ANSI keyboard prints there; with Ctrl, Alt or Meta it means what
/// the key prints. A value.
class KeyStroke {
public:
    KeyStroke() = default;
    // Implicit, so that tables of keys read as such.
    KeyStroke(Qt::Key key)
        : KeyStroke(QKeyCombination(key)) {}
    KeyStroke(QKeyCombination keys)
        : keys_(keys) {}

    /// Empty for a modifier alone and for what no key sends.
    [[nodiscard]] static KeyStroke of(const QKeyEvent& event);
    /// The key alone, by its place, whatever modifiers are held.
    [[nodiscard]] static KeyStroke withoutModifiers(const QKeyEvent& event);
    [[nodiscard]] static KeyStroke fromText(const QString& text); ///< what `text` gave; empty when it is none

    [[nodiscard]] QString text() const;  ///< for storing: "Ctrl+Shift+N", the same in every language
    [[nodiscard]] QString label() const; ///< for people, as menus show it
    [[nodiscard]] QKeyCombination keys() const { return keys_; }
    [[nodiscard]] bool isEmpty() const { return keys_.key() == Qt::Key_unknown || keys_.key() == 0; }
    [[nodiscard]] bool hasCommandModifier() const; ///< Ctrl, Alt or Meta
    /// It writes something into a text field: a letter, digit, sign or blank, alone or with Shift.
    [[nodiscard]] bool types() const;

    /// "Ctrl+Shift+1" and "Ctrl+!" are one stroke.
    friend bool operator==(const KeyStroke& one, const KeyStroke& other) {
        return one.canonical() == other.canonical();
    }

private:
    [[nodiscard]] int canonical() const;

    QKeyCombination keys_ = QKeyCombination(Qt::Key_unknown);
};

} // namespace daylark
