#include "commands/library/LibraryCommands.h"
#include "app/AppFixture.h"

namespace daylark {
namespace {

using namespace Qt::StringLiterals;

class LibraryCommandsTest : public test::AppFixture {
protected:
    void open() {
        start();
        commands = std::make_unique<CommandSet>(libraryTable(), controller->preferences());
        const auto nothing = [] {};
        LibraryWindowActions window;
        window.selectAll = window.renamePlaylist = window.toggleInformation = window.showPlaylistOrder =
            nothing;
        window.goToPlaylists = window.goToItems = window.minimise = window.close = nothing;
        window.searchItems = window.editRules = nothing;
        window.showPreferences = window.showKeys = window.showAbout = nothing;
        window.showTiles = [this](bool on) {
            tiles = on;
            state->tilesShown.look();
        };
        window.enlargeTiles = [this](int by) { size += by; };
        window.tilesShown = [this] { return tiles; };
        window.informationShown = [] { return false; };
        state.emplace(bindLibraryCommands(*commands, *controller, window));
    }
    void TearDown() override {
        commands.reset();
        AppFixture::TearDown();
    }
    [[nodiscard]] bool enabled(const char* id) const { return commands->isEnabled(QLatin1String(id)); }
    [[nodiscard]] bool checked(const char* id) const { return commands->isChecked(QLatin1String(id)); }
    void run(const char* id) { commands->run(QLatin1String(id)); }

    std::unique_ptr<CommandSet> commands;
    std::optional<LibraryWindowState> state;
    bool tiles = true;
    int size = 100;
};

TEST_F(LibraryCommandsTest, EveryCommandDoesSomethingAndStateFollowsTheLibrary) {
    open();
    for (const Command& command : libraryTable())
        EXPECT_TRUE(commands->isBound(command.id)) << qPrintable(command.id);
    EXPECT_FALSE(enabled("playlists.remove"));
    EXPECT_FALSE(enabled("item.open"));
    addPlaylist(u"P"_s, {u"1.mov"_s, u"2.mov"_s});
    EXPECT_TRUE(enabled("playlists.remove"));
    EXPECT_TRUE(enabled("item.open"));
    EXPECT_FALSE(enabled("playlists.moveUp") || enabled("playlists.moveDown")) << "there is one alone";
    EXPECT_FALSE(enabled("item.flag.904"));
    run("items.remove");
    ASSERT_EQ(alerts.shown.size(), 1U);
    EXPECT_EQ(alerts.shown.back().message, u"Select a movie and try again"_s);
    library().selectMovies({1});
    EXPECT_TRUE(enabled("item.flag.904"));
    run("item.flag.904");
    EXPECT_EQ(library().arrangedMovies()[1]->flagString, u"904"_s);
    run("item.copyFilename");
    EXPECT_EQ(pasteboard.content, u"2.mov"_s);
    run("item.moveUp");
    EXPECT_EQ(shownNames(), (QStringList{u"2.mov"_s, u"1.mov"_s}));
    EXPECT_TRUE(checked("view.playlistOrder"));
    library().setSort(u"filenameString"_s, true);
    EXPECT_FALSE(checked("view.playlistOrder"));
    addPlaylist(u"Q"_s, {});
    EXPECT_FALSE(enabled("item.open"));
    EXPECT_TRUE(enabled("playlists.moveUp") && enabled("playlists.moveDown"));
    library().selectPlaylists({0, 1});
    EXPECT_FALSE(enabled("session.addMedia"));
    library().selectPlaylists({});
    EXPECT_FALSE(enabled("playlists.rename"));
    EXPECT_TRUE(enabled("session.addMedia"));
}

TEST_F(LibraryCommandsTest, TilesAndListAreOneChoice) {
    open();
    EXPECT_TRUE(checked("view.tiles") && !checked("view.list"));
    run("view.largerTiles");
    EXPECT_EQ(size, 150);
    run("view.list");
    EXPECT_TRUE(!checked("view.tiles") && checked("view.list"));
    run("view.smallerTiles");
    EXPECT_EQ(size, 150) << "a list has no tiles";
}

} // namespace
} // namespace daylark
