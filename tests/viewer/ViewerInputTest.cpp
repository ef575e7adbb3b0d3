#include "viewer/FakePanelHost.h"
#include "viewer/ViewerFixture.h"

namespace daylark {
namespace {

class ViewerInputTest : public ViewerFixture {
protected:
    ViewerInputTest() { controller.panels().setHost(&host); }
    void press(int key) { controller.input().keyDown(key); }

    FakePanelHost host;
};

TEST_F(ViewerInputTest, TransportKeysWorkByTheirPlace) {
    showFrames(48);
    press(ViewerInput::keySpace);
    EXPECT_TRUE(transport.movieIsPlayingForwards());
    press(ViewerInput::keyL);
    EXPECT_EQ(player.rate(), 3);
    press(ViewerInput::keyJ);
    EXPECT_TRUE(transport.movieIsPlayingBackwards());
    press(ViewerInput::keyK);
    EXPECT_FALSE(transport.isRunning());
    press(ViewerInput::keyPeriod);
    EXPECT_EQ(player.currentFrame(), 48);
    press(ViewerInput::keyComma);
    EXPECT_EQ(player.currentFrame(), 1);
    press(ViewerInput::keySemicolon);
    EXPECT_EQ(controller.currentMovie()->bookmarkStore.size(), 1u);
    press(12345);
    EXPECT_EQ(player.currentFrame(), 1);
}

TEST_F(ViewerInputTest, PanelKeysToggleAndFullScreenKeysWorkOnlyThere) {
    const std::map<int, ViewerPanel> keys{
        {ViewerInput::keyC, ViewerPanel::grading},   {ViewerInput::keyD, ViewerPanel::drawing},
        {ViewerInput::keyB, ViewerPanel::bookmarks}, {ViewerInput::keyO, ViewerPanel::options},
        {ViewerInput::keyN, ViewerPanel::notes},     {ViewerInput::keyP, ViewerPanel::playlistDrawer}};
    for (const auto& [key, panel] : keys) {
        press(key);
        EXPECT_TRUE(host.visible.contains(panel)) << key;
    }
    QSignalSpy left(&controller.input(), &ViewerInput::toggleFullScreen);
    press(ViewerInput::keyF);
    press(ViewerInput::keyEscape);
    EXPECT_FALSE(host.visible.contains(ViewerPanel::controls));
    EXPECT_EQ(left.count(), 0);
    host.fullScreen = true;
    press(ViewerInput::keyF);
    EXPECT_TRUE(host.visible.contains(ViewerPanel::controls));
    preferences.disableHotkeysInFullScreenMode.set(true);
    press(ViewerInput::keyH);
    EXPECT_FALSE(host.visible.empty());
    press(ViewerInput::keyEscape);
    EXPECT_EQ(left.count(), 1);
    host.fullScreen = false;
    press(ViewerInput::keyH);
    EXPECT_TRUE(host.visible.empty());
}

TEST_F(ViewerInputTest, BracketsChangeTheToolsWidthWithinItsLimitsWhileThePanelIsOpen) {
    DrawingTools& tools = controller.drawingTools();
    preferences.brushWidth.set(2.0);
    tools.chooseInteractiveTool({QStringLiteral("Draw")});
    press(ViewerInput::keyLeftBracket);
    EXPECT_EQ(tools.currentWidth(), 2);
    host.visible.insert(ViewerPanel::drawing);
    press(ViewerInput::keyLeftBracket);
    press(ViewerInput::keyLeftBracket);
    EXPECT_EQ(tools.currentWidth(), 1);
    tools.setToolWidth(99);
    press(ViewerInput::keyRightBracket);
    press(ViewerInput::keyRightBracket);
    EXPECT_EQ(tools.currentWidth(), 100);
    tools.setToolWidth(0);
    press(ViewerInput::keyRightBracket);
    EXPECT_EQ(tools.currentWidth(), 0);
}

TEST_F(ViewerInputTest, TheWheelStepsOneFrameAnEventWhateverItsSize) {
    showFrames(48);
    controller.input().scrollWheel(-0.01, false);
    controller.input().scrollWheel(-500, false);
    EXPECT_EQ(player.currentFrame(), 3);
    controller.input().scrollWheel(0, false);
    controller.input().scrollWheel(1, false);
    EXPECT_EQ(player.currentFrame(), 2);
    goTo(20);
    bookmarks.addBookmark();
    goTo(1);
    controller.input().scrollWheel(-1, true);
    EXPECT_EQ(player.currentFrame(), 20);
}

TEST_F(ViewerInputTest, ScreenEdgesAndClicksActInFullScreenUnlessSwitchedOff) {
    QSignalSpy list(&controller.input(), &ViewerInput::showMovieList);
    const auto enter = [this](const char* area) { controller.input().mouseEntered(QLatin1String(area)); };
    enter("movieListArea");
    enter("playbackArea");
    EXPECT_EQ(list.count(), 0);
    host.fullScreen = true;
    preferences.disableRightMouseZone.set(true);
    enter("movieListArea");
    EXPECT_EQ(list.count(), 0);
    preferences.disableRightMouseZone.set(false);
    enter("movieListArea");
    enter("playbackArea");
    enter("notesArea");
    EXPECT_EQ(list.count(), 1);
    EXPECT_EQ(preferences.restorePlaylistDrawer(), 1);
    EXPECT_TRUE(host.visible.contains(ViewerPanel::controls));
    controller.input().mouseDown();
    EXPECT_EQ(list.last().first().toBool(), false);
    EXPECT_FALSE(host.visible.contains(ViewerPanel::controls));
    EXPECT_GT(host.cursorHidden, 0);
    EXPECT_EQ(preferences.restorePlaylistDrawer(), 0);
}

} // namespace
} // namespace daylark
