#include "commands/library/LibraryCommands.h"
#include "commands/viewer/ViewerCommands.h"
#include "platform/NamedImages.h"
#include "preferences/Preferences.h"

#include <gtest/gtest.h>

#include <set>

namespace daylark {
namespace {

std::set<QString> inMenus(const std::vector<Menu>& menus) {
    std::set<QString> ids;
    for (const Menu& menu : menus) {
        const auto all = menu.commands();
        ids.insert(all.begin(), all.end());
    }
    return ids;
}

void expectWhole(const CommandTable& table, const std::vector<Menu>& menus) {
    const Preferences preferences;
    const std::set<QString> reached = inMenus(menus);
    std::set<QString> ids, names;
    for (const Command& command : table) {
        SCOPED_TRACE(qPrintable(command.id));
        EXPECT_TRUE(ids.insert(command.id).second);
        EXPECT_FALSE(commandText(command, preferences).isEmpty());
        const QString name = commandName(command, preferences);
        EXPECT_TRUE(names.insert(name).second) << "it could not be told from another: " << qPrintable(name);
        EXPECT_FALSE(name.contains(u'&') || name.contains(u'%'));
        EXPECT_TRUE(command.icon.isEmpty() || hasNamedImage(command.icon)) << qPrintable(command.icon);
        EXPECT_TRUE(reached.contains(command.id)) << "no menu has it";
    }
    for (const QString& id : reached)
        EXPECT_TRUE(ids.contains(id)) << qPrintable(id);
}

TEST(CommandTable, EveryCommandIsCalledSomethingOfItsOwnAndStandsInAMenu) {
    expectWhole(libraryTable(), libraryMenus());
    expectWhole(viewerTable(), viewerMenus());
    for (const bool on : {false, true})
        for (const auto& menu : {playlistMenu(on), itemMenu(on)})
            for (const QString& id : menu.commands())
                EXPECT_TRUE(findCommand(id)) << qPrintable(id);
}

TEST(CommandTable, FlagsAreCalledAsThePreferencesCallThem) {
    Preferences preferences;
    preferences.statusNames[3].set(QStringLiteral("Redo & Resend"));
    const Command& flag = *findCommand(QStringLiteral("viewer.flag.904"));
    EXPECT_EQ(commandText(flag, preferences), QStringLiteral("Redo && Resend"));
    EXPECT_EQ(commandName(flag, preferences), QStringLiteral("Flag: Redo & Resend"));
    EXPECT_EQ(findCommand(QStringLiteral("viewer.nothing")), nullptr);
}

TEST(CommandSet, RunsWhatIsEnabledAndAnnouncesStateOnceAConditionTurns) {
    const CommandTable table{
        {QStringLiteral("a.held"), QStringLiteral("&Held"), {}, {}, {}, Command::repeats},
        {QStringLiteral("a.once"), QStringLiteral("Once"), {}}};
    Preferences preferences;
    CommandSet commands(table, preferences);
    bool can = false;
    int held = 0, once = 0, told = 0;
    Condition& condition =
        commands.when([&] { return can; }).follows(preferences.volume, &PreferenceItem::changed);
    commands.bind(
        QStringLiteral("a.held"), [&] { ++held; }, &condition);
    commands.bind(
        QStringLiteral("a.once"), [&] { ++once; }, nullptr, &condition);
    QObject::connect(&commands, &CommandSet::stateChanged, [&] { ++told; });
    commands.run(QStringLiteral("a.held"));
    EXPECT_EQ(held, 0);
    can = true;
    EXPECT_FALSE(commands.isEnabled(QStringLiteral("a.held"))) << "nothing is asked without a signal";
    preferences.volume.set(0.25f);
    EXPECT_EQ(told, 2);
    preferences.volume.set(0.5f);
    EXPECT_EQ(told, 2) << "it holds as before";
    EXPECT_TRUE(commands.isChecked(QStringLiteral("a.once")));
    for (const bool repeat : {false, true, true}) {
        commands.runByKey(QStringLiteral("a.held"), repeat);
        commands.runByKey(QStringLiteral("a.once"), repeat);
    }
    EXPECT_EQ(held, 3);
    EXPECT_EQ(once, 1);
    bool counts = false;
    Condition& key = commands.when([&] { return counts; });
    commands.bindKey(QStringLiteral("a.once"), key);
    commands.runByKey(QStringLiteral("a.once"));
    EXPECT_EQ(once, 1);
    commands.run(QStringLiteral("a.once"));
    EXPECT_EQ(once, 2) << "a menu doesn't ask";
}

} // namespace
} // namespace daylark
