#include "preferences/Preferences.h"
#include "preferences/StartupCorrections.h"

#include <QSignalSpy>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <limits>

#include <set>

namespace daylark {
namespace {

using namespace Qt::StringLiterals;

TEST(Preferences, WhatOlderVersionsStoredIsCorrectedInTheGivenOrder) {
    struct Case {
        QString key, stored, after;
    };
    const std::vector<Case> cases{
        {u"loadFrame"_s, u"Ganged To Previous"_s, u"First Frame"_s}, // by way of "Current Frame"
        {u"loadFrame"_s, u"Middle Frame"_s, u"First Frame"_s},
        {u"loadFrame"_s, u"Second Frame"_s, u"Second Frame"_s},
        {u"loadFrame"_s, QString(), u"Last Visited Frame"_s},
        {u"snapshotFilenameFormat"_s, u"filename.####.ext"_s, u"filename.frameNumber.ext"_s},
        {u"snapshotFilenameFormat"_s, u"####.filename.ext"_s, u"filename.frameNumber.ext"_s},
        {u"snapshotFilenameFormat"_s, u"frameNumber.filename.ext"_s, u"frameNumber.filename.ext"_s},
    };
    for (const Case& c : cases) {
        Preferences preferences;
        if (!c.stored.isNull()) preferences.find(c.key)->store(c.stored);
        correctAtStart(preferences);
        EXPECT_EQ(preferences.find(c.key)->text(), c.after) << c.stored.toStdString();
    }
}

TEST(Preferences, AStartForcesItsValuesAndLeavesTheOthersToTheUser) {
    Preferences preferences;
    preferences.repeatType.set(RepeatMode::oneShot);
    preferences.rateMultiplier.set(4);
    for (auto* grade : {&preferences.exposure, &preferences.contrast, &preferences.saturation,
                        &preferences.gamma, &preferences.brightness, &preferences.redChannel})
        grade->set(0.25);
    preferences.trimHandles.set(true);
    preferences.mirrorX.set(true);
    preferences.mirrorY.set(true);
    preferences.displayDrawings.set(false);
    preferences.hideMainWindowWhenPlayerLaunches.set(false);
    preferences.viewDualNotes.set(false);
    preferences.handleHead.set(3);
    preferences.defaultHandleHead.set(12);
    preferences.autoSwitchToDrawingMode.set(false);
    correctAtStart(preferences);
    EXPECT_EQ(preferences.repeatType(), RepeatMode::loopMovie);
    EXPECT_EQ(preferences.rateMultiplier(), 1.0);
    EXPECT_EQ(preferences.exposure(), 0.0);
    for (const auto* grade : {&preferences.contrast, &preferences.saturation, &preferences.gamma})
        EXPECT_EQ((*grade)(), 1.0) << qPrintable(grade->key());
    EXPECT_EQ(preferences.brightness(), 0.25);
    EXPECT_EQ(preferences.redChannel(), 0.25);
    EXPECT_FALSE(preferences.trimHandles() || preferences.mirrorX() || preferences.mirrorY());
    EXPECT_TRUE(preferences.displayDrawings() && preferences.hideMainWindowWhenPlayerLaunches() &&
                preferences.viewDualNotes());
    EXPECT_EQ(preferences.handleHead(), 12);
    EXPECT_EQ(preferences.handleTail(), 8);
    EXPECT_FALSE(preferences.autoSwitchToDrawingMode());

    // Without default handles the user's own stay.
    Preferences own;
    own.applyDefaultHandles.set(false);
    own.handleHead.set(3);
    correctAtStart(own);
    EXPECT_EQ(own.handleHead(), 3);
}

TEST(Preferences, ResetForgetsWhatIsStoredAndTheDefaultsApply) {
    Preferences preferences;
    correctAtStart(preferences);
    preferences.statusNames[0].set(u"Final"_s);
    preferences.brushColour.set(QColor(Qt::red));
    preferences.sessionPath.set(u"/a.dls"_s);
    preferences.store().set(u"of a later version"_s, 1);
    preferences.resetAll();
    EXPECT_TRUE(preferences.store().storedKeys().isEmpty());
    EXPECT_EQ(preferences.statusName(u"901"_s), u"Approved"_s);
    EXPECT_EQ(preferences.brushColour(), QColor(255, 255, 0));
    EXPECT_TRUE(preferences.sessionPath().isNull());
}

TEST(Preferences, AWordThatIsNoneOfTheAllowedStaysStoredAndReadsAsItsKindSays) {
    Preferences preferences;
    preferences.repeatType.store(u"Loop movie"_s);
    EXPECT_EQ(preferences.repeatType(), RepeatMode::none);
    EXPECT_EQ(preferences.repeatType.text(), u"Loop movie"_s);
    preferences.timecodeDisplayType.store(u"fixed"_s);
    EXPECT_EQ(preferences.timecodeDisplayType(), TimecodePlace::floating);
    preferences.snapshotFilenameFormat.store(u"frameNumber.filename.ext"_s);
    EXPECT_EQ(preferences.snapshotFilenameFormat(), SnapshotNameFormat::snapshotNumberFirst);
    EXPECT_EQ(preferences.drawingBackgroundColour(), DrawingBackground::picture) << "nothing stored";

    preferences.repeatType.set(RepeatMode::pingPong);
    EXPECT_EQ(preferences.repeatType.text(), u"Ping-Pong"_s);
    EXPECT_TRUE(wordOf(StartFrame::none).isNull());
    for (const QString& word : allWords<SnapshotScale>())
        EXPECT_EQ(wordOf(valueOfWord<SnapshotScale>(word)), word);
}

TEST(Preferences, StoredValuesOfOtherTypesReadAsNumberObjectsDo) {
    Preferences preferences;
    preferences.handleHead.store(-2.7);
    EXPECT_EQ(preferences.handleHead(), -2);
    for (const double stored : {1e30, 2147483648.0, -2147483649.0}) {
        preferences.handleHead.store(stored);
        EXPECT_EQ(preferences.handleHead(), 0) << stored;
    }
    for (const int ends : {std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        preferences.handleHead.store(double(ends));
        EXPECT_EQ(preferences.handleHead(), ends);
    }
    preferences.showMask.store(u"YES"_s);
    EXPECT_TRUE(preferences.showMask());
    preferences.showMask.store(u"NO"_s);
    EXPECT_FALSE(preferences.showMask());
    preferences.showMask.store(2);
    EXPECT_TRUE(preferences.showMask());
    EXPECT_EQ(preferences.movieMaskRatio(), 2.35) << "its default is a text";
    preferences.brushColour.store(u"#102030"_s);
    EXPECT_EQ(preferences.brushColour(), QColor(16, 32, 48));
    EXPECT_EQ(preferences.cacheSizeMegabytes(), 0);

    preferences.overrideForThisRun(u"volume"_s, u"0.25"_s);
    preferences.overrideForThisRun(u"allowImageFiles"_s, u"1"_s);
    EXPECT_EQ(preferences.volume(), 0.25f);
    EXPECT_TRUE(preferences.allowImageFiles());
    EXPECT_FALSE(preferences.volume.isStored());
}

TEST(Preferences, AnItemTellsOfItsOwnChangesOnly) {
    Preferences preferences;
    QSignalSpy mask(&preferences.showMask, &PreferenceItem::changed);
    QSignalSpy approved(&preferences.statusNames[0], &PreferenceItem::changed);
    preferences.showMask.set(false); // as it was
    preferences.statusNames[1].set(u"Nearly"_s);
    EXPECT_EQ(mask.count() + approved.count(), 0);
    preferences.showMask.flip();
    EXPECT_TRUE(preferences.showMask());
    preferences.showMask.reset();
    EXPECT_EQ(mask.count(), 2);
    preferences.statusNames[0].set(u"Final"_s);
    EXPECT_EQ(approved.count(), 1);
}

TEST(Preferences, WhatOtherVersionsStoreIsKeptBesideOnesOwn) {
    QTemporaryDir folder;
    const QString file = folder.filePath(u"preferences.ini"_s);
    {
        UserDefaults other(file);
        other.set(u"of a later version"_s, u"kept"_s);
        other.set(u"favouriteWidth2"_s, 640);
    }
    {
        Preferences preferences(file);
        correctAtStart(preferences);
        EXPECT_EQ(preferences.panelLayout2.viewerWidth(), 640);
        preferences.panelLayout2.notes.height.set(480);
        preferences.libraryWindowColumns.set(QByteArray("\0\xff\1", 3));
        preferences.statusNames[6].set(u"Not today"_s);
    }
    const UserDefaults read(file);
    EXPECT_EQ(read.value(u"of a later version"_s), u"kept"_s);
    EXPECT_EQ(read.value(u"notesWindow_favouriteHeight2"_s), 480);
    EXPECT_EQ(read.value(u"907"_s), u"Not today"_s);
    EXPECT_EQ(read.value(u"libraryWindow_columns"_s), QByteArray("\0\xff\1", 3));
}

TEST(Preferences, EveryKeyHasTheTypeAndDefaultThatStoresElsewhereKnow) {
    Preferences preferences;
    const std::vector<std::pair<const char*, QVariant>> some{
        {"handleHead", 9},
        {"loadFrame", u"Last Visited Frame"_s},
        {"movieMaskRatio", u"2.35"_s},
        {"movieMaskOpacity", 0.75f},
        {"rateMultiplier", 1.0},
        {"brightness", 1.0},
        {"snapshotFilenameFormat", u"filename.frameNumber.ext"_s},
        {"brushColour", QColor(255, 255, 0)},
        {"Session Title", u"Untitled Session"_s},
        {"905", u"Send To Editorial"_s},
        {"hideMainWindowWhenPlayerLaunches", true},
        {"eraserWidth", 40.0f},
        {"notesExportFormat", u"CSV (Comma Separated Values)"_s},
        {"compressionQuality", 0.9f}};
    for (const auto& [key, standard] : some) {
        ASSERT_TRUE(preferences.find(QLatin1String(key))) << key;
        EXPECT_EQ(preferences.store().value(QLatin1String(key)), standard) << key;
        EXPECT_EQ(preferences.store().value(QLatin1String(key)).typeId(), standard.typeId()) << key;
    }
    for (const char* key : {"Session Path", "viewDualNotes", "openWithLaunchesViewer", "favouriteWidth",
                            "panelsToRestore", "rateMultplier"})
        EXPECT_FALSE(preferences.store().value(QLatin1String(key)).isValid()) << key << " is only stored";
}

} // namespace
} // namespace daylark
