#include "commands/keys/KeyStroke.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QKeySequence>

#include <algorithm>

namespace daylark {

namespace {

/// A key of the ANSI keyboard: its code, the kernel's code for its place, what it prints plain and with
/// Shift.
struct AnsiKey {
    int code;
    quint32 place;
    Qt::Key plain, shifted;
};

constexpr AnsiKey letter(int code, quint32 place, Qt::Key key) {
    return {code, place, key, key};
}

constexpr AnsiKey ansiKeys[] = {letter(0, 30, Qt::Key_A),
                                letter(1, 31, Qt::Key_S),
                                letter(2, 32, Qt::Key_D),
                                letter(3, 33, Qt::Key_F),
                                letter(4, 35, Qt::Key_H),
                                letter(5, 34, Qt::Key_G),
                                letter(6, 44, Qt::Key_Z),
                                letter(7, 45, Qt::Key_X),
                                letter(8, 46, Qt::Key_C),
                                letter(9, 47, Qt::Key_V),
                                letter(11, 48, Qt::Key_B),
                                letter(12, 16, Qt::Key_Q),
                                letter(13, 17, Qt::Key_W),
                                letter(14, 18, Qt::Key_E),
                                letter(15, 19, Qt::Key_R),
                                letter(16, 21, Qt::Key_Y),
                                letter(17, 20, Qt::Key_T),
                                letter(31, 24, Qt::Key_O),
                                letter(32, 22, Qt::Key_U),
                                letter(34, 23, Qt::Key_I),
                                letter(35, 25, Qt::Key_P),
                                letter(37, 38, Qt::Key_L),
                                letter(38, 36, Qt::Key_J),
                                letter(40, 37, Qt::Key_K),
                                letter(45, 49, Qt::Key_N),
                                letter(46, 50, Qt::Key_M),
                                letter(49, 57, Qt::Key_Space),
                                letter(53, 1, Qt::Key_Escape),
                                {18, 2, Qt::Key_1, Qt::Key_Exclam},
                                {19, 3, Qt::Key_2, Qt::Key_At},
                                {20, 4, Qt::Key_3, Qt::Key_NumberSign},
                                {21, 5, Qt::Key_4, Qt::Key_Dollar},
                                {23, 6, Qt::Key_5, Qt::Key_Percent},
                                {22, 7, Qt::Key_6, Qt::Key_AsciiCircum},
                                {26, 8, Qt::Key_7, Qt::Key_Ampersand},
                                {28, 9, Qt::Key_8, Qt::Key_Asterisk},
                                {25, 10, Qt::Key_9, Qt::Key_ParenLeft},
                                {29, 11, Qt::Key_0, Qt::Key_ParenRight},
                                {27, 12, Qt::Key_Minus, Qt::Key_Underscore},
                                {24, 13, Qt::Key_Equal, Qt::Key_Plus},
                                {30, 27, Qt::Key_BracketRight, Qt::Key_BraceRight},
                                {33, 26, Qt::Key_BracketLeft, Qt::Key_BraceLeft},
                                {39, 40, Qt::Key_Apostrophe, Qt::Key_QuoteDbl},
                                {41, 39, Qt::Key_Semicolon, Qt::Key_Colon},
                                {42, 43, Qt::Key_Backslash, Qt::Key_Bar},
                                {43, 51, Qt::Key_Comma, Qt::Key_Less},
                                {44, 53, Qt::Key_Slash, Qt::Key_Question},
                                {47, 52, Qt::Key_Period, Qt::Key_Greater},
                                {50, 41, Qt::Key_QuoteLeft, Qt::Key_AsciiTilde}};

constexpr Qt::KeyboardModifiers commandModifiers = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;

/// Both window systems number keys eight above the kernel; others don't tell places.
quint32 scanCodeOf(const QKeyEvent& event) {
    constexpr quint32 firstKeycode = 8;
    const QString platform = QGuiApplication::platformName();
    const bool tells = platform == QLatin1String("xcb") || platform.startsWith(QLatin1String("wayland"));
    return tells && event.nativeScanCode() > firstKeycode ? event.nativeScanCode() - firstKeycode : 0;
}

bool isModifier(int key) {
    return (key >= Qt::Key_Shift && key <= Qt::Key_ScrollLock) ||
           (key >= Qt::Key_Super_L && key <= Qt::Key_Hyper_R) || key == Qt::Key_AltGr ||
           key == Qt::Key_Multi_key || (key >= Qt::Key_Dead_Grave && key <= Qt::Key_Dead_Longsolidusoverlay);
}

/// Special keys lie above everything that writes.
bool writes(int key) {
    return key > 0 && key < Qt::Key_Escape;
}

/// The key by its place, where it has one there; else what it prints. A figure of the number pad is another
/// key than the same one above the letters.
QKeyCombination placed(const QKeyEvent& event, Qt::KeyboardModifiers modifiers) {
    const int key = event.key();
    if (const auto code = keyPlaces::codeOf(scanCodeOf(event), key))
        return QKeyCombination(modifiers, keyPlaces::ansiKey(*code));
    const bool onPad = event.modifiers() & Qt::KeypadModifier && writes(key);
    return QKeyCombination(onPad ? modifiers | Qt::KeypadModifier : modifiers, Qt::Key(key));
}

} // namespace

std::optional<int> keyPlaces::codeOf(quint32 scanCode, int key) {
    const auto found = std::find_if(std::begin(ansiKeys), std::end(ansiKeys), [&](const AnsiKey& at) {
        return scanCode ? at.place == scanCode : at.plain == key || at.shifted == key;
    });
    return found != std::end(ansiKeys) ? std::optional(found->code) : std::nullopt;
}

Qt::Key keyPlaces::ansiKey(int keyCode) {
    const auto found = std::find_if(std::begin(ansiKeys), std::end(ansiKeys),
                                    [&](const AnsiKey& key) { return key.code == keyCode; });
    return found != std::end(ansiKeys) ? found->plain : Qt::Key_unknown;
}

KeyStroke KeyStroke::of(const QKeyEvent& event) {
    const int key = event.key();
    if (key == 0 || key == Qt::Key_unknown || isModifier(key)) return {};
    const Qt::KeyboardModifiers modifiers = event.modifiers() & (commandModifiers | Qt::ShiftModifier);
    if (key == Qt::Key_Backtab) return QKeyCombination(modifiers | Qt::ShiftModifier, Qt::Key_Tab);
    if (modifiers & commandModifiers) return QKeyCombination(modifiers, Qt::Key(key));
    return placed(event, modifiers);
}

KeyStroke KeyStroke::withoutModifiers(const QKeyEvent& event) {
    return of(event).isEmpty() ? KeyStroke() : KeyStroke(placed(event, Qt::NoModifier));
}

KeyStroke KeyStroke::fromText(const QString& text) {
    const auto sequence = QKeySequence::fromString(text, QKeySequence::PortableText);
    if (sequence.count() != 1 || isModifier(sequence[0].key()) || sequence[0].key() < Qt::Key_Space) return {};
    return sequence[0];
}

QString KeyStroke::text() const {
    return isEmpty() ? QString() : QKeySequence(keys_).toString(QKeySequence::PortableText);
}

QString KeyStroke::label() const {
    return isEmpty() ? QString() : QKeySequence(keys_).toString(QKeySequence::NativeText);
}

bool KeyStroke::hasCommandModifier() const {
    return keys_.keyboardModifiers() & commandModifiers;
}

bool KeyStroke::types() const {
    return !hasCommandModifier() && writes(keys_.key());
}

int KeyStroke::canonical() const {
    if (hasCommandModifier() && keys_.keyboardModifiers() & Qt::ShiftModifier)
        for (const AnsiKey& at : ansiKeys)
            if (at.shifted != at.plain && (keys_.key() == at.plain || keys_.key() == at.shifted))
                return QKeyCombination(keys_.keyboardModifiers() & ~Qt::ShiftModifier, at.shifted)
                    .toCombined();
    return keys_.toCombined();
}

} // namespace daylark
