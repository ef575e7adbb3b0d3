#include "ui/commands/KeyCodes.h"

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
                                {30, 27, Qt::Key_BracketRight, Qt::Key_BraceRight},
                                {33, 26, Qt::Key_BracketLeft, Qt::Key_BraceLeft},
                                {39, 40, Qt::Key_Apostrophe, Qt::Key_QuoteDbl},
                                {41, 39, Qt::Key_Semicolon, Qt::Key_Colon},
                                {43, 51, Qt::Key_Comma, Qt::Key_Less},
                                {47, 52, Qt::Key_Period, Qt::Key_Greater}};

/// Both window systems number keys eight above the kernel.
std::optional<quint32> placeOf(const QKeyEvent& event) {
    constexpr quint32 firstKeycode = 8;
    const QString platform = QGuiApplication::platformName();
    const bool tells = platform == QLatin1String("xcb") || platform.startsWith(QLatin1String("wayland"));
    if (!tells || event.nativeScanCode() <= firstKeycode) return {};
    return event.nativeScanCode() - firstKeycode;
}

} // namespace

std::optional<int> keyCodes::of(const QKeyEvent& event) {
    const auto place = placeOf(event);
    const auto found = std::find_if(std::begin(ansiKeys), std::end(ansiKeys), [&](const AnsiKey& key) {
        return place ? key.place == *place : key.plain == event.key() || key.shifted == event.key();
    });
    return found != std::end(ansiKeys) ? std::optional(found->code) : std::nullopt;
}

Qt::Key keyCodes::ansiKey(int keyCode) {
    const auto found = std::find_if(std::begin(ansiKeys), std::end(ansiKeys),
                                    [&](const AnsiKey& key) { return key.code == keyCode; });
    return found != std::end(ansiKeys) ? found->plain : Qt::Key_unknown;
}

QString keyCodes::name(int keyCode) {
    return QKeySequence(ansiKey(keyCode)).toString(QKeySequence::NativeText);
}

} // namespace daylark
