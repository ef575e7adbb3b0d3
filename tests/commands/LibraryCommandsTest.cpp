#include "commands/library/LibraryCommands.h"
#include "model/StatusCodes.h"
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
    EXPECT_TRUE(enabled("playlists.moveUp") && !enabled("playlists.moveDown")) << "the last one";
    library().selectPlaylists({0, 1});
    EXPECT_FALSE(enabled("session.addMedia"));
    library().selectPlaylists({});
    EXPECT_FALSE(enabled("playlists.rename"));
    EXPECT_TRUE(enabled("session.addMedia"));
}

// With what each command can be done: an empty library (e), a list without items (l), a (d)ivider, a list of which no item is
// selected (n), its first item (s), its last, which is (m)issing. Those that aren't named can always be.
TEST_F(LibraryCommandsTest, WhatHasNothingToActOnIsOff) {
    open();
    std::map<QString, QString> offered;
    const auto set = [&offered](const char* on, std::initializer_list<const char*> ids) {
        for (const char* id : ids)
            offered[QLatin1String(id)] = QLatin1String(on);
    };
    set("", {"edit.undo", "edit.redo", "session.clearRecent", "relink.now", "find.next", "find.previous", "find.copies",
             "find.instances", "playlists.editRules"});
    set("ldnsm", {"playlists.rename", "playlists.remove", "playlists.removeWithoutQuestion", "playlists.combineSelected",
                  "export.playlists", "session.clear", "export.reviewed"});
    set("lnsm", {"playlists.copyLink"});
    set("ld", {"playlists.moveUp"});
    set("lnsm", {"playlists.moveDown"});
    set("ldnsm", {"playlists.combineAll", "playlists.removeEmpty", "relink.session", "files.update", "files.checkAll",
                  "thumbnails.missing"});
    set("nsm", {"manifest.export", "relink.selected", "relink.forced", "files.checkSelected", "gather.playlists",
                "gather.playlist", "item.open", "edit.selectAll", "items.removeDuplicates", "view.bakeOrder",
                "view.removeSorting"});
    set("sm", {"item.copyPath", "item.copyFilename", "item.copyLink", "relink.movie", "gather.selected", "gather.selectedFiles",
               "export.movie", "export.movieFile"});
    set("s", {"item.reveal", "item.moveDown"});
    set("m", {"item.moveUp"});
    set("lnsm", {"items.remove"}); // of no item it says what is missing
    for (int tag = status::none; tag <= status::skip; ++tag)
        offered[libraryCommand::flag(tag)] = u"sm"_s;
    for (const char* frame : libraryCommand::thumbnailFrames) {
        offered[libraryCommand::thumbnailsOfSelected(frame)] = u"sm"_s;
        offered[libraryCommand::thumbnailsOfAll(frame)] = u"ldnsm"_s;
    }
    const auto expectOffered = [&](QChar situation) {
        QStringList wrong;
        for (const Command& command : libraryTable()) {
            const auto found = offered.find(command.id);
            const bool expected = found == offered.end() || found->second.contains(situation);
            if (commands->isEnabled(command.id) != expected) wrong << command.id;
        }
        EXPECT_TRUE(wrong.isEmpty()) << situation.toLatin1() << ": " << qPrintable(wrong.join(u' '));
    };
    expectOffered(u'e');
    addPlaylist(u"Day"_s, {u"1.mov"_s, u"2.mov"_s});
    addPlaylist(u"Empty"_s, {});
    controller->playlistEditing().addDivider();
    controller->edits().history().clear();
    library().selectPlaylists({1});
    expectOffered(u'l');
    library().selectPlaylists({2});
    expectOffered(u'd');
    library().selectPlaylists({0});
    library().selectMovies({});
    expectOffered(u'n');
    library().selectMovies({0});
    expectOffered(u's');
    controller->edits().refresh(library().arrangedMovies()[1],
                                [](Movie& movie) { movie.creatingThumbnailText = fileNotFoundText; });
    library().selectMovies({1});
    expectOffered(u'm');
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
