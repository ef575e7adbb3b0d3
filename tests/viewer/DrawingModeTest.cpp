#include "viewer/FakePanelHost.h"
#include "viewer/ViewerFixture.h"

namespace daylark {
namespace {

class DrawingModeTest : public ViewerFixture {
protected:
    DrawingModeTest() {
        controller.panels().setHost(&host);
        preferences.eraserOpacity.set(0.5f);
        preferences.autoSwitchToDrawingMode.set(false);
    }
    void choose(const char* title) { drawing.chooseInteractiveTool({QLatin1String(title)}); }
    void drawLine(double y) {
        drawing.strokeBegan({10, y});
        drawing.strokeMoved({50, y});
        drawing.strokeEnded({90, y});
    }
    size_t strokesOf(size_t bookmark) const {
        return controller.currentMovie()->bookmarkStore.at(bookmark)->drawings.strokesArray.size();
    }

    FakePanelHost host;
    DrawingMode& drawing = controller.drawing();
};

TEST_F(DrawingModeTest, ToolsTakeTheirOwnWidthAndTheActiveOnePressedAgainPutsItselfDown) {
    choose("Draw");
    EXPECT_TRUE(drawing.isDrawMode() && drawing.brushToolButton());
    EXPECT_EQ(drawing.currentWidth(), 10);
    choose("Erase");
    EXPECT_TRUE(drawing.isDrawMode() && drawing.eraserToolButton() && !drawing.brushToolButton());
    EXPECT_EQ(drawing.currentWidth(), 40);
    drawing.setToolWidth(30);
    EXPECT_EQ(preferences.eraserWidth(), 30);
    EXPECT_EQ(preferences.brushWidth(), 10);
    choose("Scroll");
    EXPECT_TRUE(drawing.isScrollMode() && !drawing.eraserToolButton());
    choose("Scroll");
    EXPECT_EQ(drawing.interactiveMode(), QStringLiteral("off"));
    // With no tool in hand the brush is taken up at its own width.
    drawing.setToolWidth(77);
    EXPECT_EQ(drawing.currentWidth(), 10);
    EXPECT_TRUE(drawing.brushToolButton());
    choose("Draw");
    EXPECT_EQ(drawing.interactiveMode(), QStringLiteral("off"));
    drawing.toggleDrawingMode(); // the panel is hidden
    EXPECT_EQ(drawing.interactiveMode(), QStringLiteral("off"));
    controller.panels().toggle(ViewerPanel::drawing);
    drawing.toggleDrawingMode();
    EXPECT_TRUE(drawing.brushToolButton());
    drawing.toggleDrawingMode();
    EXPECT_TRUE(drawing.eraserToolButton());
    controller.panels().toggle(ViewerPanel::drawing);
    EXPECT_EQ(drawing.interactiveMode(), QStringLiteral("off"));
}

TEST_F(DrawingModeTest, AStrokeStopsTheMovieAndMakesABookmarkWhereNoneIs) {
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
    EXPECT_EQ(drawing.canvas().currentStrokesDictionary().strokesArray.size(), 2u);
    EXPECT_FALSE(controller.currentMovie()->drawingIcon.isNil());
}

TEST_F(DrawingModeTest, UndoTakesBackStrokesRemovalsAndTheBookmarkThatAStrokeMade) {
    showFrames(24);
    choose("Draw");
    drawLine(20);
    drawLine(40);
    drawLine(60);
    drawing.removeLatestStroke();
    EXPECT_EQ(strokesOf(0), 2u);
    drawing.deleteCurrentDrawings();
    EXPECT_EQ(strokesOf(0), 0u);
    for (const size_t strokes : {2, 3, 2, 1}) {
        drawing.undo();
        EXPECT_EQ(strokesOf(0), strokes);
        EXPECT_EQ(drawing.canvas().currentStrokesDictionary().strokesArray.size(), strokes);
    }
    drawing.undo();
    EXPECT_TRUE(controller.currentMovie()->bookmarkStore.empty());
    EXPECT_FALSE(drawing.canUndo());
    for (int step = 0; step < 3; ++step)
        drawing.redo();
    EXPECT_EQ(strokesOf(0), 3u);
    drawLine(80);
    EXPECT_FALSE(drawing.canRedo()); // a new stroke forgets what was undone
    EXPECT_EQ(strokesOf(0), 4u);
}

TEST_F(DrawingModeTest, UndoIsKeptForEachMovieAndMindsWhatHasHappenedToTheBookmarks) {
    const auto first = record(bench::movie({.frames = 24, .group = 12}));
    const auto other = record(bench::movie({.frames = 48, .group = 12}));
    show({first, other});
    choose("Draw");
    drawLine(20);
    drawLine(40);
    goTo(9);
    ASSERT_TRUE(settled());
    bookmarks.loadActiveBookmarks();
    drawLine(60);
    ASSERT_EQ(first->bookmarkStore.size(), 2u);

    controller.transport().displayNextMovie();
    ASSERT_TRUE(settled());
    EXPECT_FALSE(drawing.canUndo());
    drawing.undo();
    EXPECT_EQ(first->bookmarkStore.size(), 2u);
    choose("Draw"); // laid down with the movie before
    drawLine(10);
    ASSERT_EQ(other->bookmarkStore.size(), 1u);

    controller.transport().displayPreviousMovie();
    ASSERT_TRUE(settled());
    ASSERT_TRUE(drawing.canUndo());
    // Written on: undo takes the drawing, the words stay.
    const auto written = first->bookmarkStore[1];
    edits.editBookmark(first, written,
                       [](Bookmark& b) { b.overlayString = QStringLiteral("mind the boom"); });
    drawing.undo();
    ASSERT_EQ(first->bookmarkStore.size(), 2u);
    EXPECT_FALSE(written->hasDrawings());
    drawing.redo();
    EXPECT_EQ(written->drawings.strokesArray.size(), 1u);
    drawing.undo();
    // Gone: nothing to take back there, and it does not come back either.
    edits.removeBookmarks(first, {first->bookmarkStore[0]});
    drawing.undo();
    EXPECT_EQ(first->bookmarkStore.size(), 1u);
    drawing.undo();
    EXPECT_FALSE(drawing.canUndo());
    while (drawing.canRedo())
        drawing.redo();
    EXPECT_EQ(other->bookmarkStore.size(), 1u);
    controller.close();
    EXPECT_FALSE(drawing.canUndo());
    drawing.undo();
    drawing.redo();
}

TEST_F(DrawingModeTest, BookmarksThatShareAFrameAllGetTheStrokeWhichIsShownOnce) {
    showFrames(24);
    const auto movie = controller.currentMovie();
    const auto one = std::make_shared<Bookmark>(1, 5, 24.0F), two = std::make_shared<Bookmark>(1, 9, 24.0F);
    edits.addBookmarks(movie, {one, two});
    bookmarks.loadActiveBookmarks();
    choose("Draw");
    for (int stroke = 1; stroke <= 4; ++stroke) {
        drawLine(stroke * 20);
        bookmarks.loadActiveBookmarks();
        EXPECT_EQ(one->drawings.strokesArray.size(), size_t(stroke));
        EXPECT_EQ(two->drawings, one->drawings);
        EXPECT_EQ(drawing.canvas().currentStrokesDictionary().strokesArray.size(), size_t(stroke));
    }
    drawing.undo();
    EXPECT_EQ(one->drawings.strokesArray.size(), 3u);
    EXPECT_EQ(two->drawings.strokesArray.size(), 3u);
    // A drawing changed elsewhere in between is left alone.
    edits.editBookmark(movie, two, [](Bookmark& bookmark) { bookmark.removeDrawingFromBookmark(); });
    drawing.redo();
    EXPECT_EQ(one->drawings.strokesArray.size(), 4u);
    EXPECT_FALSE(two->hasDrawings());
}

TEST_F(DrawingModeTest, RemovingAllAsksFirst) {
    showFrames(24);
    choose("Draw");
    drawLine(20);
    alerts.answers = {Alerts::secondButton, Alerts::firstButton};
    drawing.deleteAllDrawingsFromMovie();
    EXPECT_EQ(strokesOf(0), 1u);
    EXPECT_EQ(alerts.shown.back().message, QStringLiteral("Remove All Drawings From Movie?"));
    drawing.deleteAllDrawingsFromMovie();
    EXPECT_EQ(strokesOf(0), 0u);
    EXPECT_EQ(drawing.canvas().currentStrokesDictionary().strokesArray.size(), 0u);
}

TEST_F(DrawingModeTest, DrawingsShowAsTheirOptionSays) {
    showFrames(24);
    preferences.displayDrawingsOptions.set(DrawingsShown::onlyWhenPaused);
    transport.playMovieForwards();
    EXPECT_FALSE(drawing.drawingsAreShown());
    transport.pauseMovie();
    EXPECT_TRUE(drawing.drawingsAreShown());
    preferences.displayDrawingsOptions.set(DrawingsShown::withDrawingTools);
    EXPECT_FALSE(drawing.drawingsAreShown());
    controller.panels().toggle(ViewerPanel::drawing);
    EXPECT_TRUE(drawing.drawingsAreShown());
}

} // namespace
} // namespace daylark
