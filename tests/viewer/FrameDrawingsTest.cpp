#include "viewer/FakePanelHost.h"
#include "viewer/ViewerFixture.h"

namespace daylark {
namespace {

class FrameDrawingsTest : public ViewerFixture {
protected:
    FrameDrawingsTest() {
        controller.panels().setHost(&host);
        preferences.eraserOpacity.set(0.5f);
        preferences.autoSwitchToDrawingMode.set(false);
    }
    void choose(const char* title) { tools.chooseInteractiveTool({QLatin1String(title)}); }
    void drawLine(double y) {
        drawings.strokeBegan({10, y});
        drawings.strokeMoved({50, y});
        drawings.strokeEnded({90, y});
    }
    size_t strokesOf(size_t bookmark) const {
        return controller.currentMovie()->bookmarkStore.at(bookmark)->drawings.strokes.size();
    }

    FakePanelHost host;
    DrawingTools& tools = controller.drawingTools();
    DrawingVisibility& visibility = controller.drawingVisibility();
    FrameDrawings& drawings = controller.drawings();
};

TEST_F(FrameDrawingsTest, ToolsTakeTheirOwnWidthAndTheActiveOnePressedAgainPutsItselfDown) {
    choose("Draw");
    EXPECT_TRUE(tools.isDrawMode() && tools.brushToolButton());
    EXPECT_EQ(tools.currentWidth(), 10);
    choose("Erase");
    EXPECT_TRUE(tools.isDrawMode() && tools.eraserToolButton() && !tools.brushToolButton());
    EXPECT_EQ(tools.currentWidth(), 40);
    tools.setToolWidth(30);
    EXPECT_EQ(preferences.eraserWidth(), 30);
    EXPECT_EQ(preferences.brushWidth(), 10);
    choose("Scroll");
    EXPECT_TRUE(tools.isScrollMode() && !tools.eraserToolButton());
    choose("Scroll");
    EXPECT_EQ(tools.interactiveMode(), QStringLiteral("off"));
    // With no tool in hand the brush is taken up at its own width.
    tools.setToolWidth(77);
    EXPECT_EQ(tools.currentWidth(), 10);
    EXPECT_TRUE(tools.brushToolButton());
    choose("Draw");
    EXPECT_EQ(tools.interactiveMode(), QStringLiteral("off"));
    tools.toggleDrawingMode(); // the panel is hidden
    EXPECT_EQ(tools.interactiveMode(), QStringLiteral("off"));
    controller.panels().toggle(ViewerPanel::drawing);
    tools.toggleDrawingMode();
    EXPECT_TRUE(tools.brushToolButton());
    tools.toggleDrawingMode();
    EXPECT_TRUE(tools.eraserToolButton());
    controller.panels().toggle(ViewerPanel::drawing);
    EXPECT_EQ(tools.interactiveMode(), QStringLiteral("off"));
}

TEST_F(FrameDrawingsTest, AStrokeStopsTheMovieAndMakesABookmarkWhereNoneIs) {
    showFrames(48);
    goTo(5);
    ASSERT_TRUE(settled());
    transport.playMovieForwards();
    drawLine(20); // no tool in hand: nothing
    EXPECT_TRUE(transport.isRunning());
    choose("Draw");
    drawLine(20);
    EXPECT_FALSE(transport.isRunning());
    ASSERT_EQ(controller.currentMovie()->bookmarkStore.size(), 1u);
    EXPECT_EQ(controller.currentMovie()->bookmarkStore.front()->firstFrame, player.currentFrame());
    EXPECT_EQ(strokesOf(0), 1u);
    drawLine(40);
    EXPECT_EQ(controller.currentMovie()->bookmarkStore.size(), 1u);
    EXPECT_EQ(strokesOf(0), 2u);
    EXPECT_EQ(drawings.canvas().shown().strokes.size(), 2u);
    EXPECT_FALSE(controller.currentMovie()->drawingIcon.isNil());
}

TEST_F(FrameDrawingsTest, TheLatestStrokesRemovalLeavesTheDrawingsListsBehind) {
    showFrames(24);
    choose("Draw");
    drawLine(20);
    drawings.removeLatestStroke();
    const Drawing& left = controller.currentMovie()->bookmarkStore.at(0)->drawings;
    EXPECT_FALSE(left.hasStrokes());
    EXPECT_TRUE(left.hasKeys);
    drawLine(20);
    drawings.deleteCurrentDrawings();
    EXPECT_FALSE(left.hasKeys);
}

TEST_F(FrameDrawingsTest, UndoTakesBackStrokesRemovalsAndTheBookmarkThatAStrokeMade) {
    showFrames(24);
    choose("Draw");
    drawLine(20);
    drawLine(40);
    drawLine(60);
    drawings.removeLatestStroke();
    EXPECT_EQ(strokesOf(0), 2u);
    drawings.deleteCurrentDrawings();
    EXPECT_EQ(strokesOf(0), 0u);
    for (const size_t strokes : {2, 3, 2, 1}) {
        history.undo();
        EXPECT_EQ(strokesOf(0), strokes);
        EXPECT_EQ(drawings.canvas().shown().strokes.size(), strokes);
    }
    history.undo();
    EXPECT_TRUE(controller.currentMovie()->bookmarkStore.empty());
    EXPECT_FALSE(history.canUndo());
    for (int step = 0; step < 3; ++step)
        history.redo();
    EXPECT_EQ(strokesOf(0), 3u);
    drawLine(80);
    EXPECT_FALSE(history.canRedo()); // a new stroke forgets what was undone
    EXPECT_EQ(strokesOf(0), 4u);
}

TEST_F(FrameDrawingsTest, OneHistoryOverAllMoviesShowsTheMovieAndFrameThatItChanges) {
    const auto first = record(bench::movie({.frames = 24, .group = 12}));
    const auto other = record(bench::movie({.frames = 48, .group = 12}));
    show({first, other});
    choose("Draw");
    drawLine(20);
    goTo(9);
    ASSERT_TRUE(settled());
    bookmarks.loadActiveBookmarks();
    drawLine(60);
    ASSERT_EQ(first->bookmarkStore.size(), 2u);
    const auto written = first->bookmarkStore[1];
    bookmarks.setOverlayString(written, QStringLiteral("mind the boom"));
    controller.transport().displayNextMovie();
    ASSERT_TRUE(settled());
    choose("Draw"); // laid down with the movie before
    drawLine(10);
    ASSERT_EQ(other->bookmarkStore.size(), 1u);

    history.undo();
    EXPECT_TRUE(other->bookmarkStore.empty());
    EXPECT_EQ(controller.currentMovie(), other);
    history.undo();
    EXPECT_TRUE(written->overlayString.isEmpty());
    ASSERT_TRUE(bench::waitUntil([&] { return controller.currentMovie() == first && settled(); }));
    EXPECT_EQ(time.currentFrameNumber(), 9);
    goTo(20);
    history.undo();
    EXPECT_EQ(first->bookmarkStore.size(), 1u);
    EXPECT_EQ(time.currentFrameNumber(), 9);
    history.undo();
    EXPECT_TRUE(first->bookmarkStore.empty());
    EXPECT_EQ(time.currentFrameNumber(), 1);
    while (history.canRedo())
        history.redo();
    EXPECT_EQ(written->overlayString, QStringLiteral("mind the boom"));
    EXPECT_EQ(other->bookmarkStore.size(), 1u);
    controller.close(); // the history is the session's, not the window's
    while (history.canUndo())
        history.undo();
    EXPECT_TRUE(first->bookmarkStore.empty() && other->bookmarkStore.empty());
}

TEST_F(FrameDrawingsTest, BookmarksThatShareAFrameAllGetTheStrokeWhichIsShownOnce) {
    showFrames(24);
    const auto movie = controller.currentMovie();
    const auto one = std::make_shared<Bookmark>(1, 5, 24.0F), two = std::make_shared<Bookmark>(1, 9, 24.0F);
    edits.addBookmarks(movie, {one, two});
    bookmarks.loadActiveBookmarks();
    choose("Draw");
    for (int stroke = 1; stroke <= 4; ++stroke) {
        drawLine(stroke * 20);
        bookmarks.loadActiveBookmarks();
        EXPECT_EQ(one->drawings.strokes.size(), size_t(stroke));
        EXPECT_EQ(two->drawings, one->drawings);
        EXPECT_EQ(drawings.canvas().shown().strokes.size(), size_t(stroke));
    }
    history.undo();
    EXPECT_EQ(one->drawings.strokes.size(), 3u);
    EXPECT_EQ(two->drawings.strokes.size(), 3u);
    history.redo();
    EXPECT_EQ(one->drawings.strokes.size(), 4u);
    EXPECT_EQ(two->drawings, one->drawings);
}

TEST_F(FrameDrawingsTest, RemovingAllAsksFirst) {
    showFrames(24);
    choose("Draw");
    drawLine(20);
    alerts.answers = {Alerts::secondButton, Alerts::firstButton};
    drawings.deleteAllDrawingsFromMovie();
    EXPECT_EQ(strokesOf(0), 1u);
    EXPECT_EQ(alerts.shown.back().message, QStringLiteral("Remove All Drawings From Movie?"));
    drawings.deleteAllDrawingsFromMovie();
    EXPECT_EQ(strokesOf(0), 0u);
    EXPECT_EQ(drawings.canvas().shown().strokes.size(), 0u);
}

TEST_F(FrameDrawingsTest, DrawingsShowAsTheirOptionSays) {
    showFrames(24);
    preferences.displayDrawingsOptions.set(DrawingsShown::onlyWhenPaused);
    transport.playMovieForwards();
    EXPECT_FALSE(visibility.drawingsAreShown());
    transport.pauseMovie();
    EXPECT_TRUE(visibility.drawingsAreShown());
    preferences.displayDrawingsOptions.set(DrawingsShown::withDrawingTools);
    EXPECT_FALSE(visibility.drawingsAreShown());
    controller.panels().toggle(ViewerPanel::drawing);
    EXPECT_TRUE(visibility.drawingsAreShown());
}

} // namespace
} // namespace daylark
