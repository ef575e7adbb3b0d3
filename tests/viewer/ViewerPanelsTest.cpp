#include "viewer/display/ViewerPanels.h"

#include "platform/Alerts.h"
#include "preferences/Preferences.h"
#include "viewer/FakePanelHost.h"

#include <gtest/gtest.h>

namespace daylark {
namespace {

class ViewerPanelsTest : public ::testing::Test {
protected:
    ViewerPanelsTest() { panels.setHost(&host); }
    int stored(const char* key) { return preferences.store().value(QLatin1String(key)).toInt(); }
    void restore(int layout) {
        panels.restoreSavedPanelLayout({QStringLiteral("Restore Panel Layout %1").arg(layout)});
    }

    Preferences preferences;
    ScriptedAlerts alerts;
    FakePanelHost host;
    ViewerPanels panels{preferences, alerts};
};

TEST_F(ViewerPanelsTest, TogglesMirrorWhatIsOpenInTheirPreferences) {
    panels.toggle(ViewerPanel::notes);
    EXPECT_TRUE(panels.isVisible(ViewerPanel::notes));
    EXPECT_EQ(stored("restoreNotesWindow"), 1);
    panels.toggle(ViewerPanel::notes);
    EXPECT_FALSE(panels.isVisible(ViewerPanel::notes));
    EXPECT_EQ(stored("restoreNotesWindow"), 0);
    panels.showAllPanels();
    EXPECT_EQ(host.visible.size(), 6u); // the floating controls only in full screen
    host.fullScreen = true;
    panels.showAllPanels();
    EXPECT_EQ(host.visible.size(), 7u);
    panels.hideAllPanels();
    EXPECT_TRUE(host.visible.empty());
    EXPECT_EQ(host.colourPanelClosed, 1);
    EXPECT_GT(host.cursorHidden, 0);
    for (const char* key : {"restoreGradingWindow", "restoreDrawingWindow", "restoreBookmarkWindow",
                            "restoreOptionsWindow", "restorePlaylistDrawer"})
        EXPECT_EQ(stored(key), 0) << key;
}

TEST_F(ViewerPanelsTest, ALayoutComesBackWhereItStoodAndClosesNothing) {
    panels.toggle(ViewerPanel::grading);
    panels.toggle(ViewerPanel::playlistDrawer);
    alerts.answers = {Alerts::secondButton};
    panels.bookmarkCurrentViewerSize();
    EXPECT_EQ(preferences.store().value(QStringLiteral("panelsToRestore2")).toStringList(),
              QStringList({QStringLiteral("gradingWindow"), QStringLiteral("playlistDrawer")}));
    EXPECT_EQ(stored("notesWindow_favouriteHeight2"), 500);
    EXPECT_FALSE(preferences.store().hasStoredValue(QStringLiteral("favouriteWidth")));

    const FakePanelHost saved = host;
    panels.hideAllPanels();
    panels.toggle(ViewerPanel::options);
    host.viewer = {0, 0, 640, 480};
    for (auto& [panel, frame] : host.frames)
        frame = {1, 1, 111, 112};
    restore(2);
    EXPECT_EQ(host.viewer, saved.viewer);
    EXPECT_EQ(host.frames[ViewerPanel::notes], saved.frames.at(ViewerPanel::notes));
    EXPECT_EQ(host.frames[ViewerPanel::grading], QRect(10, 20, 111, 112)); // moved, its size as it was
    EXPECT_EQ(host.visible, (std::set<ViewerPanel>{ViewerPanel::grading, ViewerPanel::playlistDrawer,
                                                   ViewerPanel::options}));
    EXPECT_EQ(stored("restoreGradingWindow"), 1);
}

TEST_F(ViewerPanelsTest, SavingInFullScreenKeepsTheViewersEarlierFrame) {
    alerts.answers = {Alerts::secondButton, Alerts::secondButton, Alerts::thirdButton};
    panels.bookmarkCurrentViewerSize();
    host.fullScreen = true;
    host.viewer = {0, 0, 1920, 1080};
    panels.toggle(ViewerPanel::notes);
    panels.bookmarkCurrentViewerSize();
    EXPECT_EQ(stored("favouriteWidth2"), 1280);
    EXPECT_EQ(preferences.store().value(QStringLiteral("panelsToRestore2")).toStringList().size(), 1);
    panels.toggle(ViewerPanel::notes);
    panels.bookmarkCurrentViewerSize(); // cancelled
    EXPECT_EQ(preferences.store().value(QStringLiteral("panelsToRestore2")).toStringList().size(), 1);
}

TEST_F(ViewerPanelsTest, AMissingLayoutIsSaidAndAnEmptyOneOpensNothing) {
    alerts.answers = {1000, Alerts::firstButton};
    restore(2);
    ASSERT_EQ(alerts.shown.size(), 1u);
    EXPECT_EQ(alerts.shown[0].message, QStringLiteral("No saved layout"));
    EXPECT_TRUE(alerts.shown[0].informativeText.contains(QStringLiteral("Save Panels Layout")));
    panels.bookmarkCurrentViewerSize();
    host.viewer = {};
    restore(1);
    EXPECT_EQ(alerts.shown.size(), 2u); // the question only
    EXPECT_EQ(host.viewer, QRect(100, 110, 1280, 776));
    EXPECT_TRUE(host.visible.empty());
}

TEST_F(ViewerPanelsTest, WhatWasOpenComesBackWhenThatIsWanted) {
    preferences.restoreGradingWindow.set(1);
    preferences.restorePreviousWindows.set(false);
    panels.restoreOpenPanels();
    EXPECT_TRUE(host.visible.empty());
    preferences.restorePreviousWindows.set(true);
    panels.restoreOpenPanels();
    EXPECT_EQ(host.visible, std::set<ViewerPanel>{ViewerPanel::grading});
}

} // namespace
} // namespace daylark
