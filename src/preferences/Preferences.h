#pragma once

#include "platform/UserDefaults.h"
#include "preferences/PanelLayout.h"
#include "preferences/Preference.h"

#include <QHash>

#include <array>
#include <optional>

namespace daylark {

/// Every preference, each declared once: its stored spelling letter by letter, its type, its default. What
/// has no default is nothing until it is stored. The items stand over one store, which they register; stored
/// keys that no item knows are kept. Made by main or a test and passed down; interface thread. Writing
/// happens behind; what keeps it from the disk is said by `store().troubleChanged`.
class Preferences {
public:
    /// `file` is the store; an empty path keeps everything in memory.
    explicit Preferences(const QString& file = {});
    Preferences(const Preferences&) = delete;
    Preferences& operator=(const Preferences&) = delete;

    [[nodiscard]] PreferenceItem* find(const QString& key) const { return items_.value(key); } ///< null: none
    void overrideForThisRun(const QString& key,
                            const QString& text);          ///< never stored; read as the item's type
    void resetAll();                                       ///< removes every stored key and synchronises
    void synchronise();                                    ///< waits until the store's file holds everything
    [[nodiscard]] UserDefaults& store() { return store_; } ///< every stored key, known or not

    /// The status's name by its code ("901" to "907"); null for any other code.
    [[nodiscard]] QString statusName(const QString& code) const;
    /// What a production calls the first frame of items without a number of their own; none: what their timecode says.
    [[nodiscard]] std::optional<qint64> usualFirstFrameNumber() const;

private:
    friend class PreferenceItem;
    void adopt(PreferenceItem& item, const QVariant& standard);

    UserDefaults store_;
    UserDefaults::Table table_;
    QHash<QString, PreferenceItem*> items_;

public:
    // With a default, in the order of registration.
    Preference<int> handleHead{*this, "handleHead", 9}; ///< frames
    Preference<int> handleTail{*this, "handleTail", 8};
    Preference<bool> trimHandles{*this, "trimHandles", false};
    Preference<int> defaultHandleHead{*this, "defaultHandleHead", 9};
    Preference<int> defaultHandleTail{*this, "defaultHandleTail", 8};
    Preference<bool> applyDefaultHandles{*this, "applyDefaultHandles", true};
    Preference<bool> displayTimecode{*this, "displayTimecode", false};
    Preference<bool> displayFrameCounter{*this, "displayFrameCounter", false};
    Preference<bool> displayFilename{*this, "displayFilename", false};
    Preference<RepeatMode> repeatType{*this, "repeatType", RepeatMode::loopMovie};
    Preference<StartFrame> loadFrame{*this, "loadFrame", StartFrame::lastVisited};
    Preference<int> initialTabItem{*this, "initialTabItem", 1}; ///< 1: tiles, 0: list, 2: as it was left
    Preference<int> counterStartFrame{*this, "counterStartFrame", 1};
    Preference<ThumbnailFrame> thumbnailFrame{*this, "thumbnailFrame", ThumbnailFrame::middle};
    Preference<double> movieMaskRatio{*this, "movieMaskRatio", "2.35"};
    Preference<bool> showMask{*this, "showMask", false};
    Preference<float> movieMaskOpacity{*this, "movieMaskOpacity", 0.75f};
    Preference<float> volume{*this, "volume", 0.5f};
    Preference<double> rateMultiplier{*this, "rateMultiplier", 1.0};
    Preference<SnapshotFormat> snapshotFileFormat{*this, "snapshotFileFormat", SnapshotFormat::jpeg};
    Preference<SnapshotScale> snapshotImageScale{*this, "snapshotImageScale", SnapshotScale::sameAsWindow};
    Preference<SnapshotNameSource> snapshotNameSource{*this, "snapshotNameSource",
                                                      SnapshotNameSource::sameAsSource};
    Preference<SnapshotNameFormat> snapshotFilenameFormat{*this, "snapshotFilenameFormat",
                                                          SnapshotNameFormat::frameNumberLast};
    Preference<QString> snapshotName{*this, "snapshotName", "snapshot"};
    Preference<QString> notes1Title{*this, "notes1Title", "Notes 1"};
    Preference<QString> notes2Title{*this, "notes2Title", "Notes 2"};
    Preference<FindInput> findInputScope{*this, "findInputScope", FindInput::filepathsAndNames};
    Preference<FindSearch> findSearchScope{*this, "findSearchScope", FindSearch::allPlaylists};
    Preference<bool> loadPreviousSessionOnStartup{*this, "loadPreviousSessionOnStartup", true};
    Preference<bool> mirrorX{*this, "mirrorX", false}; ///< upside down
    Preference<bool> mirrorY{*this, "mirrorY", false}; ///< left to right
    Preference<int> snapshotWidth{*this, "snapshotWidth", 256};
    Preference<double> exposure{*this, "exposure", 0.0};
    Preference<double> contrast{*this, "contrast", 1.0};
    Preference<double> saturation{*this, "saturation", 1.0};
    Preference<double> gamma{*this, "gamma", 1.0};
    Preference<double> brightness{*this, "brightness",
                                  1.0}; // not the neutral 0; sessions elsewhere read it so
    Preference<double> redChannel{*this, "redChannel", 1.0};
    Preference<double> greenChannel{*this, "greenChannel", 1.0};
    Preference<double> blueChannel{*this, "blueChannel", 1.0};
    Preference<bool> hideMainWindowWhenPlayerLaunches{*this, "hideMainWindowWhenPlayerLaunches", true};
    Preference<bool> constrainViewerToMovieProportions{*this, "constrainViewerToMovieProportions", true};
    Preference<bool> restorePreviousWindows{*this, "restorePreviousWindows", true};
    Preference<DrawingsShown> displayDrawingsOptions{*this, "displayDrawingsOptions", DrawingsShown::always};
    Preference<bool> showDropText{*this, "showDropText", true};
    Preference<bool> displayDrawings{*this, "displayDrawings", true};
    Preference<QColor> brushColour{*this, "brushColour", QColor(255, 255, 0)};
    Preference<QColor> onscreenTextColour{*this, "onscreenTextColour", QColor(255, 255, 0)};
    Preference<float> brushWidth{*this, "brushWidth", 10.0f}; ///< movie pixels
    Preference<float> brushOpacity{*this, "brushOpacity", 1.0f};
    Preference<float> eraserWidth{*this, "eraserWidth", 40.0f};
    Preference<float> eraserOpacity{*this, "eraserOpacity", 1.0f};
    Preference<int> restoreOptionsWindow{*this, "restoreOptionsWindow", 0}; ///< 1: open, as the next five
    Preference<int> restoreNotesWindow{*this, "restoreNotesWindow", 0};
    Preference<int> restoreGradingWindow{*this, "restoreGradingWindow", 0};
    Preference<int> restorePlaylistDrawer{*this, "restorePlaylistDrawer", 0};
    Preference<int> restoreDrawingWindow{*this, "restoreDrawingWindow", 0};
    Preference<int> restoreBookmarkWindow{*this, "restoreBookmarkWindow", 0};
    Preference<bool> disableHotkeysInFullScreenMode{*this, "disableHotkeysInFullScreenMode", false};
    Preference<bool> disableLowerMouseZone{*this, "disableLowerMouseZone", false};
    Preference<bool> disableRightMouseZone{*this, "disableRightMouseZone", false};
    Preference<float> compressionQuality{*this, "compressionQuality", 0.9f}; ///< 0 to 1
    Preference<QString> sessionTitle{*this, "Session Title", "Untitled Session"};
    Preference<int> playlistViewWidth{*this, "playlistViewWidth", 250};
    Preference<bool> displayBookmarkText{*this, "displayBookmarkText", true};
    Preference<int> bookmarkDuration{*this, "bookmarkDuration", 1}; ///< frames
    std::array<Preference<QString>, 7> statusNames{{{*this, "901", "Approved"},
                                                    {*this, "902", "Temp Approved"},
                                                    {*this, "903", "CBB Approved"},
                                                    {*this, "904", "Not Approved"},
                                                    {*this, "905", "Send To Editorial"},
                                                    {*this, "906", "For Review"},
                                                    {*this, "907", "Skip"}}}; ///< in the order of their codes
    Preference<bool> networkMode{*this, "networkMode", true};
    Preference<bool> allowImageFiles{*this, "allowImageFiles", false};
    Preference<bool> autoSwitchToDrawingMode{*this, "autoSwitchToDrawingMode", true};
    Preference<TimecodePlace> timecodeDisplayType{*this, "timecodeDisplayType", TimecodePlace::fixed};
    /// The title of one of the export's formats, which tells what titles there are.
    Preference<QString> notesExportFormat{*this, "notesExportFormat", "CSV (Comma Separated Values)"};
    Preference<bool> printBookmarksInNotes{*this, "printBookmarksInNotes", true};
    Preference<bool> hideFileExtensionInNotes{*this, "hideFileExtensionInNotes", true};
    Preference<RendererChoice> pictureRenderer{*this, "pictureRenderer", RendererChoice::automatic};
    Preference<bool> displayPlaybackStatistics{*this, "displayPlaybackStatistics", false};
    Preference<bool> exactLoops{*this, "exactLoops", true}; ///< a range turns at its last frame, not near it
    Preference<bool> wheelZoomsWithShift{*this, "wheelZoomsWithShift", true}; ///< at the pointer; else it steps
    Preference<bool> panelsReturnFromFullScreen{*this, "panelsReturnFromFullScreen", true};
    Preference<bool> layoutsKeepDocking{*this, "layoutsKeepDocking", true};   ///< and a maximised window
    Preference<bool> dockWherePanelsCover{*this, "dockWherePanelsCover", true}; ///< when all are shown
    Preference<bool> longHandlesInPassing{*this, "longHandlesInPassing", true}; ///< else always an alert
    Preference<bool> dimCommonBeginnings{*this, "dimCommonBeginnings", true}; ///< what a list's names all begin with
    Preference<bool> displayFileExtensions{*this, "displayFileExtensions", true}; ///< in the names of items
    Preference<bool> sharpThumbnails{*this, "sharpThumbnails", true}; ///< at the size that they are shown in
    Preference<bool> tellOfManyChanges{*this, "tellOfManyChanges", true}; ///< a passing line with "Undo"
    Preference<bool> startAtLastReviewed{*this, "startAtLastReviewed", true}; ///< else at the first item
    Preference<bool> runsBecomeMovies{*this, "runsBecomeMovies", true}; ///< numbered pictures; else each is an image
    Preference<double> runFrameRate{*this, "runFrameRate", 24.0};       ///< where the pictures say none
    Preference<MissingPictures> missingPictures{*this, "missingPictures", MissingPictures::hold};
    Preference<int> otherFirstFrameNumber{*this, "otherFirstFrameNumber", 101}; ///< where `firstFrameNumber` says so
    Preference<bool> displayPixelReadOut{*this, "displayPixelReadOut", false}; ///< the numbers under the pointer
    Preference<ScopeKind> scopeKind{*this, "scopeKind", ScopeKind::waveform};

    // Stored only.
    Preference<QString> sessionPath{*this, "Session Path"};
    Preference<QString> commandKeys{*this, "commandKeys"}; ///< which keys a person has chosen; see `KeyMap`
    Preference<QString> language{*this, "language"}; ///< "de"; empty: the desktop's. From the next start on
    Preference<QString> recentSessions{*this, "recentSessions"};     ///< paths, a line each; the newest first
    Preference<QString> lastReviewedItem{*this, "lastReviewedItem"}; ///< the path of what the viewer showed last
    Preference<QString> colourConfiguration{*this, "colourConfiguration"}; ///< a file, or ours by name; empty: $OCIO, else ours
    Preference<QString> colourDisplay{*this, "colourDisplay"};             ///< by its name in the configuration
    Preference<QString> colourView{*this, "colourView"};
    Preference<QString> colourLook{*this, "colourLook"};
    Preference<FirstFrameNumber> firstFrameNumber{*this, "firstFrameNumber"}; ///< of items without one of their own
    Preference<int> restoreColourWindow{*this, "restoreColourWindow"};        ///< 1: open, as the next one
    Preference<int> restoreScopesWindow{*this, "restoreScopesWindow"};
    Preference<bool> viewDualNotes{*this, "viewDualNotes"};
    Preference<bool> openWithLaunchesViewer{*this, "openWithLaunchesViewer"};
    Preference<bool> playMovieWhenViewerLaunches{*this, "playMovieWhenViewerLaunches"};
    Preference<DrawingBackground> drawingBackgroundColour{*this, "drawingBackgroundColour"};
    Preference<int> cacheSizeMegabytes{*this, "cacheSizeMegabytes"}; ///< 0: by the machine
    Preference<bool> autoSearchForMissingMedia{*this, "autoSearchForMissingMedia"}; ///< after every look at the files
    Preference<QString> autoSearchPath{*this, "autoSearchPath"};                    ///< the folder that it looks through
    /// Spelt like this and read nowhere, so the real multiplier outlives the viewer's window; stores
    /// elsewhere hold it.
    Preference<double> rateMultiplierAtClose{*this, "rateMultplier"};
    PanelLayoutPreferences panelLayout1{*this, QString()}, panelLayout2{*this, QStringLiteral("2")};

    // How windows stood: the toolkit's own bytes, the viewer's as base64 text.
    Preference<QByteArray> libraryWindowGeometry{*this, "libraryWindow_geometry"};
    Preference<QByteArray> libraryWindowColumns{*this, "libraryWindow_columns"};
    Preference<int> libraryWindowTileSize{*this, "libraryWindow_tileSize"}; ///< per cent
    Preference<int> libraryWindowNameWidth{*this, "libraryWindow_nameWidth"}; ///< points; at least
    Preference<bool> libraryWindowShowsList{*this, "libraryWindow_showsList"}; ///< how it was left
    Preference<QString> viewerWindowGeometry{*this, "viewerWindow_geometry"};
    Preference<QString> viewerWindowPanels{*this, "viewerWindow_panels"};
    Preference<QString> timecodeWindowGeometry{*this, "timecodeWindow_geometry"};
    Preference<QString> viewerBookmarkTableColumns{*this, "viewerBookmarkTableColumns"};
};

} // namespace daylark
