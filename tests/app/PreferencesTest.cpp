#include "app/program/PreferencesTable.h"

#include <QColor>

#include <gtest/gtest.h>

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
        UserDefaults defaults{QString()};
        if (!c.stored.isNull()) defaults.set(c.key, c.stored);
        preparePreferences(defaults);
        EXPECT_EQ(defaults.stringForKey(c.key), c.after) << c.stored.toStdString();
    }
}

TEST(Preferences, AStartForcesItsValuesAndLeavesTheOthersToTheUser) {
    UserDefaults defaults{QString()};
    defaults.set(u"repeatType"_s, u"One Shot"_s);
    defaults.set(u"rateMultiplier"_s, 4.0);
    defaults.set(u"exposure"_s, 2.0);
    defaults.set(u"brightness"_s, 0.25);
    defaults.set(u"redChannel"_s, 0.5);
    defaults.set(u"trimHandles"_s, true);
    defaults.set(u"viewDualNotes"_s, false);
    defaults.set(u"handleHead"_s, 3);
    defaults.set(u"defaultHandleHead"_s, 12);
    defaults.set(u"autoSwitchToDrawingMode"_s, false);
    preparePreferences(defaults);
    EXPECT_EQ(defaults.stringForKey(u"repeatType"_s), u"Loop Movie"_s);
    EXPECT_EQ(defaults.doubleForKey(u"rateMultiplier"_s), 1.0);
    EXPECT_EQ(defaults.doubleForKey(u"exposure"_s), 0.0);
    EXPECT_EQ(defaults.doubleForKey(u"brightness"_s), 0.25);
    EXPECT_EQ(defaults.doubleForKey(u"redChannel"_s), 0.5);
    EXPECT_FALSE(defaults.boolForKey(u"trimHandles"_s));
    EXPECT_TRUE(defaults.boolForKey(u"viewDualNotes"_s));
    EXPECT_EQ(defaults.integerForKey(u"handleHead"_s), 12);
    EXPECT_EQ(defaults.integerForKey(u"handleTail"_s), 8);
    EXPECT_FALSE(defaults.boolForKey(u"autoSwitchToDrawingMode"_s));

    // Without default handles the user's own stay.
    UserDefaults own{QString()};
    own.set(u"applyDefaultHandles"_s, false);
    own.set(u"handleHead"_s, 3);
    preparePreferences(own);
    EXPECT_EQ(own.integerForKey(u"handleHead"_s), 3);
}

TEST(Preferences, ResetForgetsWhatIsStoredAndTheTableApplies) {
    UserDefaults defaults{QString()};
    preparePreferences(defaults);
    defaults.set(u"901"_s, u"Final"_s);
    defaults.set(u"brushColour"_s, QColor(Qt::red));
    defaults.set(u"Session Path"_s, u"/a.dls"_s);
    resetPreferences(defaults);
    EXPECT_TRUE(defaults.storedKeys().isEmpty());
    EXPECT_EQ(defaults.stringForKey(u"901"_s), u"Approved"_s);
    EXPECT_EQ(defaults.colourForKey(u"brushColour"_s), QColor(255, 255, 0));
    EXPECT_TRUE(defaults.stringForKey(u"Session Path"_s).isNull());
}

TEST(Preferences, TheTableHasEveryKeyOnceAndNoneThatIsOnlyStored) {
    std::set<QString> keys;
    for (const auto& [key, value] : preferencesTable()) {
        EXPECT_TRUE(keys.insert(key).second) << key.toStdString();
        EXPECT_TRUE(value.isValid()) << key.toStdString();
    }
    EXPECT_EQ(keys.size(), 82u);
    for (const QString& key : {u"Session Path"_s, u"viewDualNotes"_s, u"openWithLaunchesViewer"_s,
                               u"autoSearchForMissingMedia"_s, u"autoSearchPath"_s})
        EXPECT_EQ(keys.count(key), 0u) << key.toStdString();
}

} // namespace
} // namespace daylark
