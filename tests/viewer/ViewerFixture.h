#pragma once

#include "platform/Alerts.h"
#include "platform/Desktop.h"
#include "platform/FailedWrites.h"
#include "platform/Panels.h"
#include "support/PlayerBench.h"
#include "support/PreparedPreferences.h"
#include "support/Replica.h"
#include "viewer/LibraryLink.h"
#include "viewer/MoviePlayerController.h"

#include <QFileInfo>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace daylark {

class RememberingPasteboard : public Pasteboard {
public:
    void setText(const QString& text) override { content = text; }
    void setRichText(const QString&, const QString& plain) override { content = plain; }
    [[nodiscard]] QString text() const override { return content; }
    QString content;
};

class RememberingBrowser : public FileBrowser {
public:
    void reveal(const QStringList& paths) override { revealed = paths; }
    QStringList revealed;
};

class RememberingLibrary : public LibraryLink {
public:
    void viewerShowsMovie(qsizetype index) override { shownIndexes.push_back(index); }
    void viewerReordered() override { calls << QStringLiteral("viewerReordered"); }
    void saveTempSession() override { calls << QStringLiteral("saveTempSession"); }
    void bringLibraryToFront() override { calls << QStringLiteral("bringLibraryToFront"); }
    Work workBegins(const QString& title, const QString& text) override {
        works << title + u": "_qs + text;
        return {int(works.size()), cancelled = std::make_shared<CancelFlag>(cancelNext)};
    }
    void workAdvances(int, qint64, qint64) override { ++advances; }
    void workEnds(int id) override { ended << id; }
    QStringList works;
    QList<int> ended;
    int advances = 0;
    bool cancelNext = false;
    std::shared_ptr<CancelFlag> cancelled;
    std::vector<qsizetype> shownIndexes;
    QStringList calls;
};

/// A viewer without a window, over a clock that the test turns.
class ViewerFixture : public ::testing::Test {
protected:
    explicit ViewerFixture(SoundOutput* sound = nullptr)
        : player(clock, nullptr, 0, sound) {
        controller.setLibrary(&library);
    }

    /// Whatever changed the records was announced.
    void TearDown() override { EXPECT_TRUE(replica.isTrue()) << replica.difference().toStdString(); }

    static std::shared_ptr<Movie> record(const QString& path) { return std::make_shared<Movie>(path); }

    /// Waits until the selected movie's picture stands.
    [[nodiscard]] bool settled() {
        return bench::waitUntil([this] { return player.isOpen() && player.pictureIsCurrent(); });
    }
    void show(const std::vector<std::shared_ptr<Movie>>& movies, qsizetype index = 0) {
        auto list = std::make_shared<Playlist>();
        list->movieList.assign(movies.begin(), movies.end());
        edits.store().replaceSession({list});
        controller.open(movies, index);
        ASSERT_TRUE(settled());
    }
    void showFrames(int frames) { show({record(bench::movie({.frames = frames, .group = 12}))}); }
    void goTo(qint64 frame) { player.setCurrentTime(player.index().timeOf(frame - 1)); }
    /// Lets the clock run far beyond the end of the run under way.
    void playOntoTheEnd() {
        ASSERT_TRUE(bench::waitUntil([this] { return player.isRolling(); }));
        clock.now += qint64(1000) * 1000 * 1000 * 1000;
        player.tick();
    }

    bench::HandClock clock;
    Player player;
    PreparedPreferences preferences;
    ScriptedAlerts alerts;
    ScriptedPanels panels;
    RememberingPasteboard pasteboard;
    RememberingBrowser browser;
    RememberingLibrary library;
    FailedWrites failedWrites;
    ReviewEdits edits;
    test::Replica replica{edits.store()};
    UndoHistory& history = edits.history();
    MoviePlayerController controller{{preferences, alerts, pasteboard, browser, edits, player, panels, failedWrites}};
    Transport& transport = controller.transport();
    TimeDisplay& time = controller.time();
    ViewerBookmarks& bookmarks = controller.bookmarks();
};

} // namespace daylark
