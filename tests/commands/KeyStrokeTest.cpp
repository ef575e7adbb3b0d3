#include "commands/keys/KeyStroke.h"

#include <QGuiApplication>
#include <QKeyEvent>

#include <gtest/gtest.h>

namespace daylark {
namespace {

KeyStroke pressed(int key, Qt::KeyboardModifiers modifiers = {}) {
    return KeyStroke::of(QKeyEvent(QEvent::KeyPress, key, modifiers));
}

TEST(KeyPlaces, AreTheSameWhateverTheLanguagePrintsThere) {
    EXPECT_EQ(keyPlaces::codeOf(30, Qt::Key_Q), 0) << "a French keyboard's Q lies where A is here";
    EXPECT_EQ(keyPlaces::codeOf(16, Qt::Key_A), 12);
    EXPECT_EQ(keyPlaces::codeOf(39, Qt::Key_M), 41) << "and its M at the semicolon";
    EXPECT_EQ(keyPlaces::codeOf(52, Qt::Key_Colon), 47);
    EXPECT_EQ(keyPlaces::codeOf(2, Qt::Key_Ampersand), 18) << "its digits need Shift";
    EXPECT_EQ(keyPlaces::codeOf(103, Qt::Key_A), std::nullopt) << "a key that has no place of these";
    EXPECT_EQ(keyPlaces::codeOf(0, Qt::Key_A), 0) << "no place told: what it prints";
    EXPECT_EQ(keyPlaces::codeOf(0, Qt::Key_Colon), 41);
    EXPECT_EQ(keyPlaces::codeOf(0, Qt::Key_Up), std::nullopt);
    EXPECT_EQ(keyPlaces::ansiKey(41), Qt::Key_Semicolon);
    EXPECT_EQ(keyPlaces::ansiKey(10), Qt::Key_unknown);
}

TEST(KeyStroke, OfAnEventIsThePlaceAloneOrWithShiftAndThePrintWithOthers) {
    EXPECT_EQ(pressed(Qt::Key_Colon, Qt::ShiftModifier), KeyStroke(Qt::SHIFT | Qt::Key_Semicolon));
    EXPECT_EQ(pressed(Qt::Key_L), KeyStroke(Qt::Key_L));
    EXPECT_EQ(pressed(Qt::Key_L, Qt::ControlModifier), KeyStroke(Qt::CTRL | Qt::Key_L));
    EXPECT_EQ(pressed(Qt::Key_Home, Qt::KeypadModifier), KeyStroke(Qt::Key_Home));
    EXPECT_EQ(pressed(Qt::Key_Backtab, Qt::ShiftModifier), KeyStroke(Qt::SHIFT | Qt::Key_Tab));
    for (const int key : {int(Qt::Key_Shift), int(Qt::Key_Control), int(Qt::Key_AltGr), int(Qt::Key_CapsLock),
                          int(Qt::Key_Super_L), int(Qt::Key_Dead_Acute), int(Qt::Key_unknown), 0})
        EXPECT_TRUE(pressed(key, Qt::ShiftModifier).isEmpty()) << key;
    const QKeyEvent held(QEvent::KeyPress, Qt::Key_Colon, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(KeyStroke::withoutModifiers(held), KeyStroke(Qt::Key_Semicolon));
}

TEST(KeyStroke, IsOneHoweverTheSignIsCome) {
    EXPECT_EQ(KeyStroke(Qt::CTRL | Qt::SHIFT | Qt::Key_1), KeyStroke(Qt::CTRL | Qt::Key_Exclam));
    EXPECT_EQ(pressed(Qt::Key_Plus, Qt::ControlModifier | Qt::ShiftModifier),
              KeyStroke(Qt::CTRL | Qt::Key_Plus));
    EXPECT_FALSE(KeyStroke(Qt::CTRL | Qt::SHIFT | Qt::Key_N) == KeyStroke(Qt::CTRL | Qt::Key_N));
    EXPECT_FALSE(KeyStroke(Qt::SHIFT | Qt::Key_R) == KeyStroke(Qt::Key_R));
}

TEST(KeyStroke, TextIsReadBackAndNothingElseIs) {
    for (const KeyStroke stroke :
         {KeyStroke(Qt::Key_Space), KeyStroke(Qt::Key_Semicolon), KeyStroke(Qt::Key_Comma),
          KeyStroke(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), KeyStroke(Qt::ALT | Qt::Key_Up),
          KeyStroke(Qt::CTRL | Qt::Key_Plus), KeyStroke(Qt::META | Qt::Key_F12)}) {
        EXPECT_FALSE(stroke.text().isEmpty());
        EXPECT_EQ(KeyStroke::fromText(stroke.text()), stroke) << qPrintable(stroke.text());
    }
    for (const char* text : {"", "nonsense", "Ctrl+", "Ctrl+K, Ctrl+C", "Shift+Shift", "\n"})
        EXPECT_TRUE(KeyStroke::fromText(QLatin1String(text)).isEmpty()) << text;
    EXPECT_TRUE(KeyStroke().text().isEmpty());
}

TEST(KeyStroke, TypesWhatATextFieldWouldWrite) {
    for (const KeyStroke stroke : {KeyStroke(Qt::Key_A), KeyStroke(Qt::Key_Space), KeyStroke(Qt::Key_7),
                                   KeyStroke(Qt::SHIFT | Qt::Key_R), KeyStroke(Qt::Key_AsciiTilde)})
        EXPECT_TRUE(stroke.types()) << qPrintable(stroke.text());
    for (const KeyStroke stroke :
         {KeyStroke(Qt::CTRL | Qt::Key_A), KeyStroke(Qt::Key_Escape), KeyStroke(Qt::Key_F1),
          KeyStroke(Qt::Key_Left), KeyStroke(Qt::ALT | Qt::Key_A)})
        EXPECT_FALSE(stroke.types()) << qPrintable(stroke.text());
}

} // namespace
} // namespace daylark
