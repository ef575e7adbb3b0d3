#include "commands/Command.h"
#include "commands/viewer/ViewerCommands.h"
#include "model/StatusCodes.h"
#include "picture/scene/DisplayGeometry.h"

#include <QCoreApplication>

namespace daylark {

namespace {

/// The lines without what all have in common.
struct Line {
    const char* name; ///< after "viewer."
    QString text;
    const char* icon = "";
    std::vector<KeyStroke> keys = {};
    QString standsAlone = {};
    unsigned traits = Command::none;
};

constexpr unsigned repeats = Command::repeats, any = Command::anyModifiers, none = Command::none, told = Command::toldByTitle;

struct ViewerTable {
    Q_DECLARE_TR_FUNCTIONS(ViewerTable)
public:
    static CommandTable make();

private:
    static void add(CommandTable& table, const std::vector<Line>& lines);
    static void addTransport(CommandTable& table);
    static void addMovie(CommandTable& table);
    static void addBookmarks(CommandTable& table);
    static void addDrawingAndGrade(CommandTable& table);
    static void addPicture(CommandTable& table);
    static void addView(CommandTable& table);
};

void ViewerTable::add(CommandTable& table, const std::vector<Line>& lines) {
    for (const Line& line : lines)
        table.push_back({QStringLiteral("viewer.%1").arg(QLatin1String(line.name)), line.text,
                         QString::fromLatin1(line.icon), line.keys, line.standsAlone, line.traits,
                         KeyScope::viewer});
}

void ViewerTable::addTransport(CommandTable& table) {
    // The second keys, with Ctrl or Alt, work while a note is being typed.
    add(table, {{"playPause", tr("&Play/Pause"), "play", {Qt::Key_Space, Qt::CTRL | Qt::Key_Space}, {}, any},
                {"playForwards", tr("Play &Forwards"), "fastForward", {Qt::Key_L, Qt::Key_Up}, {}, any},
                {"playBackwards", tr("Play &Backwards"), "fastBackward", {Qt::Key_J, Qt::Key_Down}, {}, any},
                {"pause", tr("P&ause"), "pause", {Qt::Key_K}, {}, any},
                {"stepForward", tr("&Next Frame"), "stepForward", {Qt::Key_Right, Qt::ALT | Qt::Key_Right}, {}, repeats},
                {"stepBackward", tr("P&revious Frame"), "stepBackward", {Qt::Key_Left, Qt::ALT | Qt::Key_Left}, {}, repeats},
                {"firstFrame", tr("F&irst Frame"), "firstFrame", {Qt::Key_Comma, Qt::Key_Home}, {}, any},
                {"lastFrame", tr("&Last Frame"), "lastFrame", {Qt::Key_Period, Qt::Key_End}, {}, any},
                {"goToFrame", tr("&Go to Frame..."), "", {Qt::Key_G}},
                {"markIn", tr("Mark &In"), "setIn", {Qt::Key_I}},
                {"markOut", tr("Mark &Out"), "setOut", {Qt::Key_U}},
                {"trimHandles", tr("&Trim Handles"), "handles", {Qt::Key_R}},
                {"resetHandles", tr("&Reset Handles"), "reset", {Qt::SHIFT | Qt::Key_R}}});
}

void ViewerTable::addMovie(CommandTable& table) {
    table.insert(table.end(), historyTable().begin(), historyTable().end());
    add(table, {{"copyPath", tr("&Copy Path"), "copy"},
                {"copyFilename", tr("Copy &Filename"), "copy"},
                {"copyTimecode", tr("Copy &Timecode")},
                {"previousMovie", tr("&Previous Movie"), "previousMovie", {Qt::Key_PageUp, Qt::CTRL | Qt::Key_PageUp}},
                {"nextMovie", tr("&Next Movie"), "nextMovie", {Qt::Key_PageDown, Qt::CTRL | Qt::Key_PageDown}},
                {"linkAudio", tr("&Link Audio File..."), "", {}, tr("Link Audio File...")},
                {"revertAudio", tr("&Revert to Original Audio")},
                {"removeAudio", tr("Re&move Audio")},
                {"saveAudio", tr("&Save Audio As...")},
                {"saveMovie", tr("Save Mo&vie As...")},
                {"reveal", tr("&Reveal in File Browser"), "reveal", {Qt::CTRL | Qt::Key_R}},
                {"writeNotes", tr("&Write Notes"), "notes", {Qt::CTRL | Qt::Key_N}},
                {"close", tr("&Close Viewer"), "close", {Qt::CTRL | Qt::Key_W}}});
    for (int tag = status::none; tag <= status::skip; ++tag) {
        const QString code = QString::number(tag);
        const bool isNone = tag == status::none;
        table.push_back({viewerCommand::flag(tag),
                         isNone ? tr("No Flag") : QString(),
                         isNone ? QStringLiteral("flag_None") : status::flagImageName(code),
                         {Qt::CTRL | Qt::Key(Qt::Key_0 + tag - status::none)},
                         isNone ? tr("No Flag") : tr("Flag: %1"),
                         none,
                         KeyScope::viewer,
                         isNone ? QString() : code});
    }
    for (const char* choice : viewerCommand::thumbnailChoices) {
        const QString shown = QCoreApplication::translate("Words", choice);
        table.push_back(
            {viewerCommand::thumbnail(choice),
             shown,
             {},
             {},
             choice == viewerCommand::thumbnailChoices[0] ? shown : tr("Thumbnail: %1").arg(shown),
             none,
             KeyScope::viewer});
    }
}

void ViewerTable::addBookmarks(CommandTable& table) {
    add(table,
        {{"addBookmark", tr("&Add Bookmark"), "addBookmark", {Qt::Key_Semicolon}, {}, any},
         {"bookmarkFromRange", tr("Bookmark from &Range"), "bookmarkRange", {Qt::SHIFT | Qt::Key_M}},
         {"editBookmarkText", tr("&Edit Bookmark Text"), "", {Qt::Key_F2}},
         {"loopBookmark", tr("&Loop Bookmark"), "loop", {Qt::CTRL | Qt::Key_L}},
         {"goToBookmark", tr("&Go to First Frame of Bookmark"), "goToFirst"},
         {"deleteBookmark", tr("Re&move Bookmark"), "remove"},
         {"previousBookmark",
          tr("&Previous Bookmark"),
          "chevronLeft",
          {Qt::CTRL | Qt::Key_Left},
          {},
          repeats},
         {"nextBookmark", tr("&Next Bookmark"), "chevronRight", {Qt::CTRL | Qt::Key_Right}, {}, repeats},
         {"invertMutedBookmarks", QStringLiteral("Invert Muted Bookmarks"), "mute", {}, {}, told},
         {"muteAllBookmarks", QStringLiteral("Mute All Bookmarks"), "mute", {}, {}, told},
         {"unmuteAllBookmarks", QStringLiteral("Unmute All Bookmarks"), "unmute", {}, {}, told},
         {"copyUnmutedBookmarks", QStringLiteral("Copy Unmuted Bookmarks"), "copy", {}, {}, told},
         {"copyAllBookmarks", QStringLiteral("Copy All Bookmarks"), "copy", {}, {}, told},
         {"pasteBookmarks", tr("Paste &Bookmarks"), "paste"},
         {"deleteActiveBookmarks", tr("Remove A&ctive Bookmarks"), "remove"},
         {"deleteAllBookmarks", tr("Remove A&ll Bookmarks..."), "trash"}});
}

void ViewerTable::addDrawingAndGrade(CommandTable& table) {
    add(table, {{"drawingTools", tr("&Drawing Tools"), "draw", {Qt::Key_D}, {}, any},
                {"toggleDrawing", tr("Drawing Tool &On or Off"), "", {Qt::Key_T}, {}, any},
                {"narrowerTool", tr("&Narrower Tool"), "", {Qt::Key_BracketLeft}, {}, any | repeats},
                {"widerTool", tr("&Wider Tool"), "", {Qt::Key_BracketRight}, {}, any | repeats},
                {"removeLatestStroke",
                 tr("Remove &Latest Stroke"),
                 "removeStroke",
                 {Qt::CTRL | Qt::Key_Backspace},
                 {},
                 repeats},
                {"deleteDrawings", tr("Remove &Current Drawings"), "remove"},
                {"deleteAllDrawings", tr("Remove &All Drawings From Movie..."), "trash"},
                {"gradeTools", tr("&Colour Correction"), "grade", {Qt::Key_C}, {}, any},
                {"toggleGrade", tr("&Show Grade"), "gradeOn", {Qt::Key_A}, {}, any},
                {"copyGrade", tr("C&opy Grade"), "copy"},
                {"pasteGrade", tr("&Paste Grade"), "paste"},
                {"gradeAll", tr("Paste Grade onto &All Movies"), "gradeAll"},
                {"resetGrade", tr("&Reset Grade"), "reset"},
                {"colour", tr("Colour &Management"), "", {Qt::Key_V}},
                {"pixelReadOut", tr("P&ixel Read-Out"), "", {Qt::Key_X}},
                {"scopes", tr("Scop&es"), "", {Qt::Key_W}},
                {"nextScope", tr("Ne&xt Scope"), "", {Qt::SHIFT | Qt::Key_W}},
                {"lookBrighter", tr("Look &Brighter"), "", {Qt::Key_Equal}, {}, repeats},
                {"lookDarker", tr("Look &Darker"), "", {Qt::Key_Minus}, {}, repeats},
                {"lookHigherGamma", tr("Look at Higher &Gamma"), "", {Qt::SHIFT | Qt::Key_Equal}, {}, repeats},
                {"lookLowerGamma", tr("Look at L&ower Gamma"), "", {Qt::SHIFT | Qt::Key_Minus}, {}, repeats},
                {"lookAsItIs", tr("Look at It as It &Is"), "", {Qt::Key_0}},
                {"takeSnapshot", tr("Take S&napshot..."), "snapshot", {Qt::CTRL | Qt::Key_T}}});
}

void ViewerTable::addPicture(CommandTable& table) {
    const auto title = [](const char* text) { return QString::fromLatin1(text); };
    add(table, {{"fit", title("Fit Image To Viewer"), "zoomFit", {Qt::CTRL | Qt::SHIFT | Qt::Key_F}, {}, told},
                {"actualPixels",
                 title("1:1 Pixels (Actual Size)"),
                 "zoomActual",
                 {Qt::CTRL | Qt::SHIFT | Qt::Key_1},
                 {},
                 told},
                {"zoomIn", title("Zoom In"), "zoomIn", {Qt::CTRL | Qt::Key_Plus}, {}, repeats | told},
                {"zoomOut", title("Zoom Out"), "zoomOut", {Qt::CTRL | Qt::Key_Minus}, {}, repeats | told},
                {"flop", title("Flop Display"), "flop", {}, {}, told},
                {"flip", title("Flip Display"), "flip", {}, {}, told},
                {"mask", tr("Show Mask"), "mask"}});
    const auto choice = [&](const QString& id, const char* text, const QString& name) {
        table.push_back({id, title(text), {}, {}, name.arg(title(text)), told, KeyScope::viewer});
    };
    for (const auto& [ratio, value] : maskRatios)
        choice(viewerCommand::maskRatio(ratio), ratio, tr("Mask Ratio: %1"));
    for (const auto& [aspect, value] : viewerCommand::pixelAspects)
        choice(viewerCommand::pixelAspect(aspect), aspect, tr("Pixel Aspect: %1"));
    add(table, {{"windowActual", title("1:1 (Actual Size)"), "", {}, tr("Window Size 1:1 (Actual Size)"), told},
                {"windowHalf", title("1:2 (Half Size)"), "", {}, tr("Window Size 1:2 (Half Size)"), told},
                {"windowThird", title("1:3 (Third Size)"), "", {}, tr("Window Size 1:3 (Third Size)"), told},
                {"windowFavourite", title("Favourite Viewer Size"), "", {}, {}, told},
                {"constrain", tr("Constrain Viewer To Movie Proportions")}});
}

void ViewerTable::addView(CommandTable& table) {
    add(table, {{"counter", tr("Frame &Counter on Picture")},
                {"counterToOne", tr("Set Frame Counter to &One")},
                {"timecode", tr("&Timecode on Picture")},
                {"filename", tr("File &Name on Picture")},
                {"bookmarkText", tr("Bookmark Te&xt on Picture")},
                {"statistics", tr("Playback &Statistics")},
                {"fullScreen", tr("&Full Screen"), "fullScreen", {Qt::Key_F11, Qt::CTRL | Qt::Key_F}},
                {"leave", tr("&Leave Text or Full Screen"), "", {Qt::Key_Escape}, {}, any},
                {"bringForward", tr("&Bring Viewer Forward"), "", {Qt::Key_Apostrophe}, {}, any},
                {"notes", tr("&Notes"), "notes", {Qt::Key_N}, {}, any},
                {"bookmarks", tr("&Bookmarks"), "bookmarks", {Qt::Key_B}, {}, any},
                {"options", tr("Viewer &Options"), "options", {Qt::Key_O}, {}, any},
                {"playlistDrawer", tr("&Playlist"), "playlistDrawer", {Qt::Key_P}, {}, any},
                {"controls", tr("Play&back Controls"), "", {Qt::Key_F}, {}, any},
                {"showAllPanels", tr("&Show All Panels"), "", {Qt::Key_S}, {}, any},
                {"hideAllPanels", tr("&Hide All Panels"), "", {Qt::Key_H}, {}, any},
                {"dockPanels", tr("&Dock Panels")},
                {"floatPanels", tr("Floa&t Panels")},
                {"savePanelLayout", tr("Sa&ve Panel Layout...")},
                {"restorePanelLayout1", tr("Restore Panel Layout &1"), "", {Qt::ALT | Qt::Key_1}},
                {"restorePanelLayout2", tr("Restore Panel Layout &2"), "", {Qt::ALT | Qt::Key_2}},
                {"keys", tr("&Keys..."), "help", {Qt::Key_F1}}});
}

CommandTable ViewerTable::make() {
    CommandTable table;
    addTransport(table);
    addMovie(table);
    addBookmarks(table);
    addDrawingAndGrade(table);
    addPicture(table);
    addView(table);
    return table;
}

} // namespace

const CommandTable& viewerTable() {
    static const CommandTable table = ViewerTable::make();
    return table;
}

} // namespace daylark
