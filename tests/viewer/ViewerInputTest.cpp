#include "viewer/FakePanelHost.h"
#include "viewer/ViewerFixture.h"

namespace daylark {
namespace {

class ViewerInputTest : public ViewerFixture {
protected:
    ViewerInputTest() { controller.panels().setHost(&host); }

    FakePanelHost host;
};

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
