#include "commands/keys/KeyMap.h"
#include "preferences/Preferences.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

#include <set>

namespace daylark {
namespace {

using Strokes = KeyMap::Strokes;

class KeyMapTest : public ::testing::Test {
protected:
    [[nodiscard]] QString viewerAt(const KeyStroke& stroke) const {
        return keys.commandAt(stroke, KeyScope::viewer);
    }
    void stored(const char* text) { preferences.commandKeys.set(QLatin1String(text)); }

    Preferences preferences;
    KeyMap keys{preferences};
    const QString play = QStringLiteral("viewer.playPause"), pause = QStringLiteral("viewer.pause"),
                  bookmark = QStringLiteral("viewer.addBookmark");
};

/// The hotkeys as they are given out, by the key codes of an ANSI keyboard.
TEST_F(KeyMapTest, ViewersKeysLieWhereTheyBelong) {
    const std::vector<std::pair<int, const char*>> table{
        {49, "viewer.playPause"},    {38, "viewer.playBackwards"}, {40, "viewer.pause"},
        {37, "viewer.playForwards"}, {43, "viewer.firstFrame"},    {47, "viewer.lastFrame"},
        {33, "viewer.narrowerTool"}, {30, "viewer.widerTool"},     {0, "viewer.toggleGrade"},
        {8, "viewer.gradeTools"},    {31, "viewer.options"},       {35, "viewer.playlistDrawer"},
        {45, "viewer.notes"},        {2, "viewer.drawingTools"},   {17, "viewer.toggleDrawing"},
        {3, "viewer.controls"},      {11, "viewer.bookmarks"},     {1, "viewer.showAllPanels"},
        {4, "viewer.hideAllPanels"}, {53, "viewer.leave"},         {41, "viewer.addBookmark"},
        {39, "viewer.bringForward"}, {34, "viewer.markIn"},        {32, "viewer.markOut"},
        {15, "viewer.trimHandles"},  {5, "viewer.goToFrame"},      {9, "viewer.colour"},
        {24, "viewer.lookBrighter"}, {27, "viewer.lookDarker"},    {29, "viewer.lookAsItIs"},
        {7, "viewer.pixelReadOut"},  {13, "viewer.scopes"}};
    const std::set<int> beside{34, 32, 15, 5, 9, 24, 27, 29, 7, 13};
    std::set<int> given;
    for (const auto& [code, command] : table) {
        EXPECT_EQ(viewerAt(keyPlaces::ansiKey(code)), QLatin1String(command)) << code;
        given.insert(code);
    }
    for (int code = 0; code < 128; ++code)
        EXPECT_EQ(viewerAt(keyPlaces::ansiKey(code)).isEmpty(), !given.contains(code)) << code;
    // Those of the table count whatever modifiers are held; what came beside it does not.
    for (const auto& [code, command] : table) {
        const bool any = findCommand(QLatin1String(command))->traits & Command::anyModifiers;
        EXPECT_EQ(any, !beside.contains(code)) << command;
    }
}

TEST_F(KeyMapTest, OtherKeysOfBothWindowsMeanWhatMenusSay) {
    const std::vector<std::pair<KeyStroke, const char*>> viewer{
        {Qt::Key_Right, "viewer.stepForward"},
        {Qt::Key_Left, "viewer.stepBackward"},
        {Qt::Key_Up, "viewer.playForwards"},
        {Qt::Key_Down, "viewer.playBackwards"},
        {Qt::Key_Home, "viewer.firstFrame"},
        {Qt::Key_End, "viewer.lastFrame"},
        {Qt::Key_PageUp, "viewer.previousMovie"},
        {Qt::Key_PageDown, "viewer.nextMovie"},
        {Qt::SHIFT | Qt::Key_R, "viewer.resetHandles"},
        {Qt::Key_F11, "viewer.fullScreen"},
        {Qt::CTRL | Qt::Key_F, "viewer.fullScreen"},
        {Qt::CTRL | Qt::Key_Right, "viewer.nextBookmark"},
        {Qt::CTRL | Qt::Key_T, "viewer.takeSnapshot"},
        {Qt::CTRL | Qt::Key_0, "viewer.flag.900"},
        {Qt::CTRL | Qt::Key_7, "viewer.flag.907"}};
    for (const auto& [stroke, command] : viewer)
        EXPECT_EQ(viewerAt(stroke), QLatin1String(command)) << qPrintable(stroke.text());
    const std::vector<std::pair<KeyStroke, const char*>> library{
        {Qt::CTRL | Qt::Key_N, "session.newPlaylist"},  {Qt::CTRL | Qt::Key_O, "session.addMedia"},
        {Qt::CTRL | Qt::Key_S, "session.save"},         {Qt::CTRL | Qt::SHIFT | Qt::Key_S, "session.saveAs"},
        {Qt::CTRL | Qt::Key_C, "item.copyPath"},        {Qt::CTRL | Qt::Key_4, "item.flag.904"},
        {Qt::CTRL | Qt::Key_Equal, "view.largerTiles"}, {Qt::Key_F2, "playlists.rename"}};
    for (const auto& [stroke, command] : library)
        EXPECT_EQ(keys.commandAt(stroke, KeyScope::items), QLatin1String(command))
            << qPrintable(stroke.text());
    EXPECT_EQ(keys.commandAt(Qt::Key_Delete, KeyScope::items), QStringLiteral("items.remove"));
    EXPECT_EQ(keys.commandAt(Qt::Key_Backspace, KeyScope::playlists), QStringLiteral("playlists.remove"));
    EXPECT_EQ(keys.commandAt(Qt::Key_Space, KeyScope::playlists), QStringLiteral("item.open"));
    EXPECT_TRUE(keys.commandAt(Qt::Key_Space, KeyScope::library).isEmpty()) << "only in the lists";
    EXPECT_TRUE(keys.commandAt(Qt::Key_Delete, KeyScope::library).isEmpty());
    EXPECT_TRUE(viewerAt(Qt::CTRL | Qt::Key_S).isEmpty());
    for (const KeyScope scope : {KeyScope::viewer, KeyScope::library, KeyScope::items})
        EXPECT_EQ(keys.commandAt(Qt::CTRL | Qt::Key_Z, scope), QStringLiteral("edit.undo"));
    EXPECT_EQ(keys.clashes({Qt::Key_K}, QStringLiteral("edit.undo")), QStringList{pause})
        << "it counts in both windows";
    EXPECT_EQ(keys.keysOf(QStringLiteral("edit.redo")), Strokes{Qt::CTRL | Qt::SHIFT | Qt::Key_Z});
}

TEST_F(KeyMapTest, NoKeyOfTheTablesMeansTwoCommands) {
    for (const CommandTable* table : {&libraryTable(), &viewerTable()})
        for (const Command& command : *table) {
            EXPECT_TRUE(keys.clashes(command.keys, command.id).isEmpty()) << qPrintable(command.id);
            EXPECT_EQ(keys.keysOf(command.id), command.keys) << qPrintable(command.id);
        }
    EXPECT_FALSE(keys.isChanged());
}

TEST_F(KeyMapTest, AssignedKeyIsTakenFromItsCommandInEveryMapAtOnce) {
    KeyMap other(preferences);
    QSignalSpy told(&other, &KeyMap::changed);
    EXPECT_EQ(keys.clashes({Qt::Key_K}, bookmark), QStringList{pause});
    EXPECT_TRUE(keys.clashes({Qt::Key_K}, QStringLiteral("session.save")).isEmpty()) << "the other window's";
    EXPECT_EQ(keys.clashes({Qt::Key_Delete}, QStringLiteral("session.save")).size(), 2)
        << "both lists are in it";
    keys.assign(bookmark, {Qt::Key_K, Qt::Key_M});
    EXPECT_EQ(told.count(), 1);
    for (const KeyMap* map : {&keys, &other}) {
        EXPECT_EQ(map->commandAt(Qt::Key_K, KeyScope::viewer), bookmark);
        EXPECT_TRUE(map->commandAt(Qt::Key_Semicolon, KeyScope::viewer).isEmpty());
        EXPECT_TRUE(map->keysOf(pause).empty());
        EXPECT_EQ(map->label(bookmark), QStringLiteral("K / M"));
        EXPECT_TRUE(map->isChanged(pause) && map->isChanged(bookmark) && !map->isChanged(play));
    }
    keys.reset(pause); // takes its key back
    EXPECT_EQ(other.commandAt(Qt::Key_K, KeyScope::viewer), pause);
    EXPECT_EQ(other.keysOf(bookmark), Strokes{Qt::Key_M});
    keys.assign(play, {});
    EXPECT_TRUE(KeyMap(preferences).keysOf(play).empty()) << "no key is a choice as well";
    keys.resetAll();
    EXPECT_FALSE(keys.isChanged() || other.isChanged());
    EXPECT_FALSE(preferences.commandKeys.isStored());
}

TEST_F(KeyMapTest, OnlyWhatDiffersIsStored) {
    keys.assign(bookmark, {Qt::CTRL | Qt::Key_B});
    EXPECT_EQ(preferences.commandKeys(), QStringLiteral("{\"viewer.addBookmark\":[\"Ctrl+B\"]}"));
    keys.assign(bookmark, {Qt::Key_Semicolon});
    EXPECT_FALSE(preferences.commandKeys.isStored());
}

TEST_F(KeyMapTest, WhatIsStoredCrookedlyCountsAsNotChosen) {
    for (const char* text : {"", "{", "[]", "7", "{\"viewer.pause\":\"K\"}", "{\"viewer.pause\":[7,null]}",
                             "{\"viewer.pause\":[\"\"]}", "{\"viewer.gone\":[\"Space\"]}",
                             "{\"viewer.pause\":{\"a\":1}}", "\xff\xfe"}) {
        stored(text);
        EXPECT_EQ(viewerAt(Qt::Key_K), pause) << text;
        EXPECT_EQ(viewerAt(Qt::Key_Space), play) << text;
    }
    stored("{\"viewer.pause\":[\"nonsense\",\"X\",\"X\",5],\"viewer.gone\":[\"X\"]}");
    EXPECT_EQ(keys.keysOf(pause), Strokes{Qt::Key_X}) << "what can be read of it";
    EXPECT_TRUE(viewerAt(Qt::Key_K).isEmpty());
    // Two that chose the same key by hand: one has it.
    stored("{\"viewer.pause\":[\"X\"],\"viewer.addBookmark\":[\"X\"]}");
    EXPECT_EQ(keys.keysOf(pause).size() + keys.keysOf(bookmark).size(), 1U);
    // A chosen key goes before another command's own.
    stored("{\"viewer.addBookmark\":[\"Space\"]}");
    EXPECT_EQ(viewerAt(Qt::Key_Space), bookmark);
    EXPECT_EQ(keys.keysOf(play), Strokes{Qt::CTRL | Qt::Key_Space}) << "its second key stays";
    preferences.resetAll();
    EXPECT_EQ(viewerAt(Qt::Key_Space), play);
}

} // namespace
} // namespace daylark
