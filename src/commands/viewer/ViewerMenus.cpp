#include "commands/viewer/ViewerCommands.h"
#include "model/StatusCodes.h"
#include "picture/scene/DisplayGeometry.h"

#include <QCoreApplication>

namespace daylark {

namespace {

struct ViewerMenus {
    Q_DECLARE_TR_FUNCTIONS(ViewerMenus)
public:
    static std::vector<Menu> bar();

private:
    static Menu movie();
    static Menu bookmarks();
    static Menu picture();
};

Menu ViewerMenus::movie() {
    Menu flags{tr("&Flag")}, thumbnails{tr("&Thumbnail")};
    for (int tag = status::none; tag <= status::skip; ++tag)
        flags.entries.push_back(viewerCommand::flag(tag));
    for (const char* choice : viewerCommand::thumbnailChoices)
        thumbnails.entries.push_back(viewerCommand::thumbnail(choice));
    return {tr("&Movie"),
            {"viewer.previousMovie", "viewer.nextMovie", Menu::line, flags, thumbnails, Menu::line,
             "viewer.writeNotes", Menu::line, "viewer.takeSnapshot", Menu::line, "viewer.reveal", Menu::line, "viewer.close"}};
}

Menu ViewerMenus::bookmarks() {
    Menu menu{tr("&Bookmarks"),
              {"viewer.addBookmark", "viewer.bookmarkFromRange", "viewer.editBookmarkText", "viewer.loopBookmark",
               "viewer.goToBookmark",
               "viewer.deleteBookmark", Menu::line, "viewer.previousBookmark", "viewer.nextBookmark",
               Menu::line}};
    menu.entries.insert(menu.entries.end(), std::begin(viewerCommand::muting),
                        std::end(viewerCommand::muting));
    menu.entries.push_back(Menu::line);
    menu.entries.insert(menu.entries.end(), std::begin(viewerCommand::copying),
                        std::end(viewerCommand::copying));
    for (const char* id :
         {"viewer.pasteBookmarks", Menu::line, "viewer.deleteActiveBookmarks", "viewer.deleteAllBookmarks"})
        menu.entries.push_back(id);
    return menu;
}

Menu ViewerMenus::picture() {
    Menu menu{tr("P&icture")}, ratios{tr("Mask &Ratio")}, aspects{tr("Pixel &Aspect")};
    for (const auto& [ratio, value] : maskRatios)
        ratios.entries.push_back(viewerCommand::maskRatio(ratio));
    for (const auto& [title, value] : viewerCommand::pixelAspects)
        aspects.entries.push_back(viewerCommand::pixelAspect(title));
    menu.entries.insert(menu.entries.end(), std::begin(viewerCommand::zooms), std::end(viewerCommand::zooms));
    menu.entries.push_back(Menu::line);
    menu.entries.insert(menu.entries.end(), std::begin(viewerCommand::mirrors),
                        std::end(viewerCommand::mirrors));
    for (const char* id : {Menu::line, "viewer.mask"})
        menu.entries.push_back(id);
    menu.entries.push_back(ratios);
    menu.entries.push_back(aspects);
    for (const char* id : {Menu::line, "viewer.colour", "viewer.lookBrighter", "viewer.lookDarker", "viewer.lookHigherGamma",
                           "viewer.lookLowerGamma", "viewer.lookAsItIs"})
        menu.entries.push_back(id);
    return menu;
}

std::vector<Menu> ViewerMenus::bar() {
    return {
        {tr("&Edit"),
         {"edit.undo", "edit.redo", Menu::line, "viewer.copyPath", "viewer.copyFilename",
          "viewer.copyTimecode"}},
        {tr("&Playback"),
         {"viewer.playPause", "viewer.playForwards", "viewer.playBackwards", "viewer.pause", Menu::line,
          "viewer.stepForward", "viewer.stepBackward", "viewer.firstFrame", "viewer.lastFrame",
          "viewer.goToFrame", Menu::line}},
        movie(),
        {tr("A&udio"),
         {"viewer.linkAudio", "viewer.revertAudio", "viewer.removeAudio", Menu::line, "viewer.saveAudio", "viewer.saveMovie"}},
        {tr("&Range"),
         {"viewer.markIn", "viewer.markOut", Menu::line, "viewer.trimHandles", "viewer.resetHandles", Menu::line,
          "viewer.bookmarkFromRange"}},
        bookmarks(),
        {tr("&Drawing"),
         {"viewer.drawingTools", "viewer.toggleDrawing", "viewer.narrowerTool", "viewer.widerTool",
          Menu::line, "viewer.removeLatestStroke", "viewer.deleteDrawings", "viewer.deleteAllDrawings"}},
        {tr("&Grade"),
         {"viewer.gradeTools", "viewer.toggleGrade", Menu::line, "viewer.copyGrade", "viewer.pasteGrade",
          "viewer.gradeAll", Menu::line, "viewer.resetGrade"}},
        picture(),
        {tr("&View"),
         {"viewer.counter", "viewer.counterToOne", "viewer.timecode", "viewer.filename",
          "viewer.bookmarkText", Menu::line, "viewer.pixelReadOut", "viewer.statistics", Menu::line,
          "viewer.fullScreen", "viewer.leave"}},
        {tr("Pa&nels"),
         {"viewer.notes", "viewer.bookmarks", "viewer.drawingTools", "viewer.gradeTools", "viewer.colour",
          "viewer.scopes", "viewer.nextScope", "viewer.options", "viewer.playlistDrawer", "viewer.controls", Menu::line,
          "viewer.showAllPanels", "viewer.hideAllPanels", Menu::line, "viewer.dockPanels", "viewer.floatPanels", Menu::line,
          "viewer.savePanelLayout", "viewer.restorePanelLayout1",
          "viewer.restorePanelLayout2"}},
        {tr("&Window"),
         {"viewer.bringForward", Menu::line, "viewer.windowActual", "viewer.windowHalf", "viewer.windowThird",
          "viewer.windowFavourite", Menu::line, "viewer.constrain"}},
        {tr("&Help"), {"viewer.keys"}}};
}

} // namespace

std::vector<Menu> viewerMenus() {
    return ViewerMenus::bar();
}

} // namespace daylark
