#include "commands/viewer/ViewerCommands.h"
#include "commands/viewer/ViewerKeyboard.h"
#include "model/StatusCodes.h"
#include "viewer/FakePanelHost.h"
#include "viewer/ViewerFixture.h"

#include <QKeyEvent>
#include <QTemporaryDir>

namespace daylark {
namespace {

class ViewerCommandsTest : public ViewerFixture {
protected:
    ViewerCommandsTest() {
        controller.panels().setHost(&host);
        const auto note = [this](const char* what) { return [this, what] { done << QLatin1String(what); }; };
        ViewerWindowActions window;
        window.toggleFullScreen = note("toggleFullScreen");
        window.isFullScreen = [this] { return host.fullScreen; };
        window.leave = note("leave");
        window.bringForward = note("bringForward");
        window.close = note("close");
        window.goToSelectedBookmark = note("goTo");
        window.deleteSelectedBookmark = note("delete");
        window.editBookmarkText = note("edit");
        window.loopBookmark = note("loop");
        window.writeNotes = note("writeNotes");
        window.showKeys = note("showKeys");
        window.goToFrame = note("goToFrame");
        window.makeThumbnail = [this](const QString& choice) { done << choice; };
        fullScreen = &bindViewerCommands(commands, controller, window).fullScreen;
    }
    void press(int key, Qt::KeyboardModifiers modifiers = {}, bool repeat = false) {
        keyboard.press(QKeyEvent(QEvent::KeyPress, key, modifiers, {}, repeat));
    }
    void setFullScreen(bool on) {
        host.fullScreen = on;
        fullScreen->look();
    }
    [[nodiscard]] bool enabled(const char* id) const { return commands.isEnabled(QLatin1String(id)); }
    [[nodiscard]] bool checked(const char* id) const { return commands.isChecked(QLatin1String(id)); }

    QTemporaryDir folder;
    FakePanelHost host;
    QStringList done;
    CommandSet commands{viewerTable(), preferences};
    KeyMap keys{preferences};
    ViewerKeyboard keyboard{commands, keys, controller};
    Condition* fullScreen = nullptr;
};

TEST_F(ViewerCommandsTest, EveryCommandDoesSomething) {
    for (const Command& command : viewerTable())
        EXPECT_TRUE(commands.isBound(command.id)) << qPrintable(command.id);
}

TEST_F(ViewerCommandsTest, TransportKeysWork) {
    showFrames(48);
    press(Qt::Key_Space);
    EXPECT_TRUE(transport.movieIsPlayingForwards());
    EXPECT_EQ(commands.icon(QStringLiteral("viewer.playPause")), QStringLiteral("pause"));
    press(Qt::Key_L);
    EXPECT_EQ(player.rate(), 3);
    press(Qt::Key_J);
    EXPECT_TRUE(transport.movieIsPlayingBackwards());
    press(Qt::Key_K);
    EXPECT_FALSE(transport.isRunning());
    EXPECT_EQ(commands.icon(QStringLiteral("viewer.playPause")), QStringLiteral("play"));
    press(Qt::Key_Period);
    EXPECT_EQ(player.currentFrame(), 48);
    press(Qt::Key_Comma);
    EXPECT_EQ(player.currentFrame(), 1);
    press(Qt::Key_Semicolon);
    EXPECT_EQ(controller.currentMovie()->bookmarkStore.size(), 1u);
    press(Qt::Key_Semicolon, Qt::ControlModifier); // modifiers are not looked at
    EXPECT_EQ(controller.currentMovie()->bookmarkStore.size(), 2u);
    press(Qt::Key_I, Qt::ControlModifier); // where they are
    press(Qt::Key_Y);
    EXPECT_EQ(player.currentFrame(), 1);
    QSignalSpy volume(&controller.input(), &ViewerInput::hideVolume);
    press(Qt::Key_Y);
    EXPECT_EQ(volume.count(), 1) << "whatever the key";
}

TEST_F(ViewerCommandsTest, PanelKeysToggleAndFullScreenKeysWorkOnlyThere) {
    const std::map<int, ViewerPanel> panelKeys{
        {Qt::Key_C, ViewerPanel::grading},   {Qt::Key_D, ViewerPanel::drawing},
        {Qt::Key_B, ViewerPanel::bookmarks}, {Qt::Key_O, ViewerPanel::options},
        {Qt::Key_N, ViewerPanel::notes},     {Qt::Key_P, ViewerPanel::playlistDrawer}};
    for (const auto& [key, panel] : panelKeys) {
        press(key);
        EXPECT_TRUE(host.visible.contains(panel)) << key;
        press(key, {}, true);
        EXPECT_TRUE(host.visible.contains(panel)) << "held down it doesn't flicker";
    }
    EXPECT_TRUE(checked("viewer.notes"));
    press(Qt::Key_F);
    EXPECT_FALSE(host.visible.contains(ViewerPanel::controls));
    setFullScreen(true);
    press(Qt::Key_F);
    EXPECT_TRUE(host.visible.contains(ViewerPanel::controls));
    EXPECT_EQ(commands.icon(QStringLiteral("viewer.fullScreen")), QStringLiteral("leaveFullScreen"));
    preferences.disableHotkeysInFullScreenMode.set(true);
    for (const int key : {int(Qt::Key_H), int(Qt::Key_Space), int(Qt::Key_Right)})
        press(key);
    press(Qt::Key_H, Qt::ControlModifier); // no shortcut, so the same key
    EXPECT_FALSE(host.visible.empty());
    EXPECT_TRUE(done.isEmpty());
    press(Qt::Key_Escape);
    press(Qt::Key_F11);
    EXPECT_EQ(done, (QStringList{QStringLiteral("leave"), QStringLiteral("toggleFullScreen")}));
    setFullScreen(false);
    press(Qt::Key_H);
    EXPECT_TRUE(host.visible.empty());
    EXPECT_FALSE(checked("viewer.notes"));
}

TEST_F(ViewerCommandsTest, BracketsChangeTheToolsWidthWithinItsLimitsWhileThePanelIsOpen) {
    DrawingTools& drawing = controller.drawingTools();
    preferences.brushWidth.set(2);
    drawing.chooseInteractiveTool({QStringLiteral("Draw")});
    press(Qt::Key_BracketLeft);
    press(Qt::Key_T);
    EXPECT_EQ(drawing.currentWidth(), 2);
    EXPECT_FALSE(drawing.eraserToolButton());
    EXPECT_FALSE(enabled("viewer.narrowerTool"));
    controller.panels().show(ViewerPanel::drawing, true);
    drawing.setToolWidth(2);
    press(Qt::Key_BracketLeft);
    press(Qt::Key_BracketLeft);
    EXPECT_EQ(drawing.currentWidth(), 1);
    drawing.setToolWidth(98);
    press(Qt::Key_BracketRight);
    press(Qt::Key_BracketRight, {}, true);
    press(Qt::Key_BracketRight, {}, true);
    EXPECT_EQ(drawing.currentWidth(), 100);
    for (const double outside : {0.0, -3.0, 101.0}) {
        drawing.setToolWidth(outside);
        press(Qt::Key_BracketRight);
        if (outside < 1) press(Qt::Key_BracketLeft);
        EXPECT_EQ(drawing.currentWidth(), outside);
    }
    press(Qt::Key_T);
    EXPECT_TRUE(drawing.eraserToolButton());
}

TEST_F(ViewerCommandsTest, StateFollowsThePartsWithoutBeingAskedFor) {
    EXPECT_FALSE(enabled("viewer.playPause"));
    EXPECT_FALSE(enabled("viewer.nextMovie"));
    const auto first = record(bench::movie({.frames = 24, .group = 12}));
    const auto second = record(bench::movie({.frames = 48, .group = 12}));
    show({first, second});
    EXPECT_TRUE(enabled("viewer.playPause"));
    EXPECT_TRUE(enabled("viewer.nextMovie"));
    EXPECT_FALSE(enabled("viewer.previousMovie"));
    edits.setFlag({second}, 907); // to be skipped
    EXPECT_FALSE(enabled("viewer.nextMovie"));
    edits.setFlag({second}, 901);
    EXPECT_TRUE(enabled("viewer.nextMovie"));
    EXPECT_TRUE(checked("viewer.flag.900"));
    commands.run(QStringLiteral("viewer.flag.904"));
    EXPECT_TRUE(checked("viewer.flag.904"));
    EXPECT_FALSE(checked("viewer.flag.900"));
    EXPECT_EQ(first->flagString, QStringLiteral("904"));

    EXPECT_FALSE(enabled("viewer.deleteActiveBookmarks"));
    EXPECT_FALSE(enabled("viewer.nextBookmark"));
    bookmarks.addBookmark();
    EXPECT_TRUE(enabled("viewer.deleteActiveBookmarks"));
    EXPECT_TRUE(enabled("viewer.nextBookmark"));
    EXPECT_FALSE(enabled("viewer.pasteBookmarks"));
    commands.run(QStringLiteral("viewer.copyAllBookmarks"));
    EXPECT_TRUE(enabled("viewer.pasteBookmarks"));
    commands.run(QStringLiteral("viewer.nextMovie"));
    ASSERT_TRUE(settled());
    EXPECT_TRUE(enabled("viewer.previousMovie"));
    EXPECT_FALSE(enabled("viewer.nextMovie"));
    EXPECT_FALSE(enabled("viewer.nextBookmark"));
    EXPECT_TRUE(checked("viewer.flag.901"));

    EXPECT_FALSE(checked("viewer.mask"));
    commands.run(QStringLiteral("viewer.mask"));
    EXPECT_TRUE(checked("viewer.mask"));
    EXPECT_EQ(commands.text(QStringLiteral("viewer.mask")), QStringLiteral("Hide Mask"));
    commands.run(QStringLiteral("viewer.mask.1.85"));
    EXPECT_TRUE(checked("viewer.mask.1.85") && !checked("viewer.mask.2.35"));
    commands.run(QStringLiteral("viewer.pixelAspect.2:1"));
    EXPECT_TRUE(checked("viewer.pixelAspect.2:1") && !checked("viewer.pixelAspect.1:1"));
    commands.run(QStringLiteral("viewer.flop"));
    EXPECT_TRUE(checked("viewer.flop") && !checked("viewer.flip"));
    commands.run(QStringLiteral("viewer.counter"));
    EXPECT_TRUE(preferences.displayFrameCounter() && checked("viewer.counter"));
    preferences.trimHandles.set(true);
    EXPECT_TRUE(checked("viewer.trimHandles"));
    controller.close();
    EXPECT_FALSE(enabled("viewer.playPause"));
}

// With what each command can be done: a movie with a (s)ound and one (q)uiet, one that is (m)issing, a still (i)mage, one
// that was (r)eviewed, (n)othing at all. Those that aren't named can always be.
TEST_F(ViewerCommandsTest, WhatHasNothingToActOnIsOff) {
    constexpr const char* playable = "sqir";
    std::map<QString, QString> offered{{u"edit.undo"_qs, u""_qs}, {u"edit.redo"_qs, u""_qs}};
    const auto set = [&offered](const char* on, std::initializer_list<const char*> ids) {
        for (const char* id : ids)
            offered[QStringLiteral("viewer.") + QLatin1String(id)] = QLatin1String(on);
    };
    set(playable, {"playPause",  "playForwards", "playBackwards", "pause",       "stepForward",  "stepBackward",
                   "firstFrame", "lastFrame",    "goToFrame",     "markIn",      "markOut",      "trimHandles",
                   "resetHandles", "counterToOne", "takeSnapshot", "fit",        "actualPixels", "zoomIn",
                   "zoomOut",    "windowActual", "windowHalf",    "windowThird", "addBookmark",  "loopBookmark",
                   "linkAudio"});
    set("sqmir", {"copyPath", "copyFilename", "copyTimecode", "writeNotes", "editBookmarkText", "toggleGrade", "copyGrade"});
    for (int tag = status::none; tag <= status::skip; ++tag)
        offered[viewerCommand::flag(tag)] = u"sqmir"_qs;
    for (const char* choice : viewerCommand::thumbnailChoices)
        offered[viewerCommand::thumbnail(choice)] = QLatin1String(playable);
    set("sqir", {"reveal"});
    set("sr", {"saveAudio", "removeAudio"});
    set("sqr", {"saveMovie"});
    set("r", {"nextBookmark", "previousBookmark", "goToBookmark", "deleteBookmark", "invertMutedBookmarks",
              "muteAllBookmarks", "unmuteAllBookmarks", "copyUnmutedBookmarks", "copyAllBookmarks", "pasteBookmarks",
              "deleteAllBookmarks", "deleteActiveBookmarks", "removeLatestStroke", "deleteDrawings", "deleteAllDrawings",
              "pasteGrade", "gradeAll", "resetGrade"});
    set("", {"revertAudio", "previousMovie", "nextMovie", "bookmarkFromRange", "windowFavourite", "toggleDrawing",
             "narrowerTool", "widerTool", "dockPanels", "floatPanels", "nextScope", "lookBrighter", "lookDarker",
             "lookHigherGamma", "lookLowerGamma", "lookAsItIs"});

    const auto expectOffered = [&](QChar state) {
        QStringList wrong;
        for (const Command& command : viewerTable()) {
            const auto found = offered.find(command.id);
            const bool expected = found == offered.end() || found->second.contains(state);
            if (commands.isEnabled(command.id) != expected) wrong << command.id;
        }
        EXPECT_TRUE(wrong.isEmpty()) << state.toLatin1() << ": " << qPrintable(wrong.join(u' '));
    };
    const auto heardOf = [](QSignalSpy& known) { // once the file was looked into
        return bench::waitUntil([&] { return known.count() > 2; });
    };
    expectOffered(u'n');
    MovieSpec spec;
    spec.path = folder.filePath(u"heard.mov"_qs);
    spec.frames = 24;
    spec.sound = true;
    ASSERT_TRUE(makeMovie(spec));
    QSignalSpy known(&controller.audio(), &MovieAudio::soundKnown);
    show({record(spec.path)});
    ASSERT_TRUE(heardOf(known));
    expectOffered(u's');
    known.clear();
    show({record(bench::movie({.frames = 24, .group = 12}))});
    ASSERT_TRUE(heardOf(known));
    expectOffered(u'q');
    const QString still = folder.filePath(u"still.png"_qs);
    QImage picture(64, 36, QImage::Format_RGB32);
    picture.fill(Qt::gray);
    ASSERT_TRUE(picture.save(still));
    show({record(still)});
    expectOffered(u'i');
    const auto missing = record(folder.filePath(u"gone.mov"_qs));
    missing->creatingThumbnailText = fileNotFoundText;
    controller.open({missing}, 0);
    ASSERT_TRUE(bench::waitUntil([this] { return !controller.isPlayable(); }));
    expectOffered(u'm');

    known.clear();
    show({record(spec.path)});
    ASSERT_TRUE(heardOf(known));
    const auto drawnOn = std::make_shared<Bookmark>(1, 4, 24.0F);
    drawnOn->drawings.strokes = {{.points = {{1, 1}, {9, 9}}}};
    edits.addBookmarks(controller.currentMovie(), {drawnOn});
    bookmarks.loadActiveBookmarks();
    commands.run(u"viewer.copyAllBookmarks"_qs);
    controller.grade().setValue(ViewerGrade::exposure, 1);
    commands.run(u"viewer.copyGrade"_qs);
    history.clear();
    expectOffered(u'r');
    edits.store().modify(controller.currentMovie(), {u"Mute"_qs}, [](Movie& movie) { movie.removeOriginalMovieAudio(); });
    EXPECT_FALSE(enabled("viewer.saveAudio") || enabled("viewer.removeAudio"));
    EXPECT_TRUE(enabled("viewer.revertAudio"));
    controller.close();
}

TEST_F(ViewerCommandsTest, HistoryIsOfferedAsFarAsItGoesAndSaysWhat) {
    showFrames(24);
    EXPECT_FALSE(enabled("edit.undo") || enabled("edit.redo"));
    commands.run(QStringLiteral("viewer.flag.904"));
    ASSERT_TRUE(enabled("edit.undo"));
    EXPECT_EQ(commands.name(QStringLiteral("edit.undo")), edits.history().undoText());
    EXPECT_NE(commands.name(QStringLiteral("edit.undo")), QStringLiteral("Undo"));
    commands.run(QStringLiteral("edit.undo"));
    EXPECT_TRUE(checked("viewer.flag.900"));
    EXPECT_TRUE(enabled("edit.redo") && !enabled("edit.undo"));
    commands.run(QStringLiteral("edit.redo"));
    EXPECT_TRUE(checked("viewer.flag.904"));
}

TEST_F(ViewerCommandsTest, ChosenKeyIsTheCommandsAtOnceAndTheOldOneNothing) {
    showFrames(48);
    keys.assign(QStringLiteral("viewer.lastFrame"), {Qt::Key_Y});
    press(Qt::Key_Period);
    EXPECT_EQ(player.currentFrame(), 1);
    press(Qt::Key_Y, Qt::ShiftModifier);
    EXPECT_EQ(player.currentFrame(), 48);
    keys.assign(QStringLiteral("viewer.firstFrame"), {Qt::SHIFT | Qt::Key_Y});
    press(Qt::Key_Y, Qt::ShiftModifier); // now another command's
    EXPECT_EQ(player.currentFrame(), 1);
    keys.assign(QStringLiteral("viewer.leave"), {Qt::Key_Q});
    preferences.disableHotkeysInFullScreenMode.set(true);
    setFullScreen(true);
    press(Qt::Key_Escape);
    EXPECT_TRUE(done.isEmpty());
    press(Qt::Key_Q); // whatever key leaves full screen does
    EXPECT_EQ(done, QStringList{QStringLiteral("leave")});
}

} // namespace
} // namespace daylark
