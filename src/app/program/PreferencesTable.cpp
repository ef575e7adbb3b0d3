#include "app/program/PreferencesTable.h"

#include <QColor>
#include <QStringList>

namespace daylark {

namespace {

QString preferenceText(const char* text) {
    return QString::fromLatin1(text);
}

} // namespace

UserDefaults::Table preferencesTable() {
    const auto text = preferenceText;
    const QVariant yes(true), no(false);
    const QVariant yellow(QColor(255, 255, 0));
    const std::vector<std::pair<const char*, QVariant>> rows{
        {"handleHead", 9},
        {"handleTail", 8},
        {"trimHandles", no},
        {"defaultHandleHead", 9},
        {"defaultHandleTail", 8},
        {"applyDefaultHandles", yes},
        {"displayTimecode", no},
        {"displayFrameCounter", no},
        {"displayFilename", no},
        {"repeatType", text("Loop Movie")},
        {"loadFrame", text("Last Visited Frame")},
        {"initialTabItem", 1},
        {"counterStartFrame", 1},
        {"thumbnailFrame", text("Middle Frame")},
        {"movieMaskRatio", text("2.35")},
        {"showMask", no},
        {"movieMaskOpacity", 0.75f},
        {"volume", 0.5f},
        {"rateMultiplier", 1.0},
        {"snapshotFileFormat", text("JPEG")},
        {"snapshotImageScale", text("Same As Window")},
        {"snapshotNameSource", text("Same As Source")},
        {"snapshotFilenameFormat", text("filename.frameNumber.ext")},
        {"snapshotName", text("snapshot")},
        {"notes1Title", text("Notes 1")},
        {"notes2Title", text("Notes 2")},
        {"findInputScope", text("Search Filepaths & Names")},
        {"findSearchScope", text("All Playlists")},
        {"loadPreviousSessionOnStartup", yes},
        {"mirrorX", no},
        {"mirrorY", no},
        {"snapshotWidth", 256},
        {"exposure", 0.0},
        {"contrast", 1.0},
        {"saturation", 1.0},
        {"gamma", 1.0},
        {"brightness", 1.0}, // not the neutral 0; wanted
        {"redChannel", 1.0},
        {"greenChannel", 1.0},
        {"blueChannel", 1.0},
        {"hideMainWindowWhenPlayerLaunches", yes},
        {"constrainViewerToMovieProportions", yes},
        {"restorePreviousWindows", yes},
        {"displayDrawingsOptions", text("Always")},
        {"showDropText", yes},
        {"displayDrawings", yes},
        {"brushColour", yellow},
        {"onscreenTextColour", yellow},
        {"brushWidth", 10.0f},
        {"brushOpacity", 1.0f},
        {"eraserWidth", 40.0f},
        {"eraserOpacity", 1.0f},
        {"restoreOptionsWindow", 0},
        {"restoreNotesWindow", 0},
        {"restoreGradingWindow", 0},
        {"restorePlaylistDrawer", 0},
        {"restoreDrawingWindow", 0},
        {"restoreBookmarkWindow", 0},
        {"disableHotkeysInFullScreenMode", no},
        {"disableLowerMouseZone", no},
        {"disableRightMouseZone", no},
        {"compressionQuality", 0.9f},
        {"Session Title", text("Untitled Session")},
        {"playlistViewWidth", 250},
        {"displayBookmarkText", yes},
        {"bookmarkDuration", 1},
        {"901", text("Approved")},
        {"902", text("Temp Approved")},
        {"903", text("CBB Approved")},
        {"904", text("Not Approved")},
        {"905", text("Send To Editorial")},
        {"906", text("For Review")},
        {"907", text("Skip")},
        {"networkMode", yes},
        {"allowImageFiles", no},
        {"autoSwitchToDrawingMode", yes},
        {"timecodeDisplayType", text("Fixed")},
        {"notesExportFormat", text("CSV (Comma Separated Values)")},
        {"printBookmarksInNotes", yes},
        {"hideFileExtensionInNotes", yes},
        {"pictureRenderer", text("Automatic")},
        {"displayPlaybackStatistics", no},
    };
    UserDefaults::Table table;
    table.reserve(rows.size());
    for (const auto& [key, value] : rows)
        table.emplace_back(text(key), value);
    return table;
}

void preparePreferences(UserDefaults& defaults) {
    const auto text = preferenceText;

    // What older versions wrote, before anything is registered.
    const QString loadFrame = text("loadFrame");
    if (defaults.stringForKey(loadFrame) == text("Ganged To Previous"))
        defaults.set(loadFrame, text("Current Frame"));
    const QString format = text("snapshotFilenameFormat");
    const QString stored = defaults.stringForKey(format);
    // Both old formats become the same new one; wanted.
    if (stored == text("filename.####.ext") || stored == text("####.filename.ext"))
        defaults.set(format, text("filename.frameNumber.ext"));

    defaults.registerDefaults(preferencesTable());

    // After the correction above, which so ends up as "First Frame" too; wanted.
    const QStringList accepted{text("First Frame"), text("Second Frame"), text("Last Visited Frame")};
    if (!accepted.contains(defaults.stringForKey(loadFrame))) defaults.set(loadFrame, text("First Frame"));

    // What every start resets. Brightness and the three channels are left alone; wanted.
    const std::vector<std::pair<const char*, QVariant>> forced{
        {"hideMainWindowWhenPlayerLaunches", true},
        {"repeatType", text("Loop Movie")},
        {"viewDualNotes", true},
        {"rateMultiplier", 1.0},
        {"exposure", 0.0},
        {"contrast", 1.0},
        {"saturation", 1.0},
        {"gamma", 1.0},
        {"mirrorX", false},
        {"mirrorY", false},
        {"displayDrawings", true},
        {"trimHandles", false},
    };
    for (const auto& [key, value] : forced)
        defaults.set(text(key), value);

    if (defaults.boolForKey(text("applyDefaultHandles"))) {
        defaults.set(text("handleHead"), defaults.integerForKey(text("defaultHandleHead")));
        defaults.set(text("handleTail"), defaults.integerForKey(text("defaultHandleTail")));
    }
}

void resetPreferences(UserDefaults& defaults) {
    for (const QString& key : defaults.storedKeys())
        defaults.remove(key);
    defaults.synchronise();
}

} // namespace daylark
