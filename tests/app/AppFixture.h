#pragma once

#include "app/PlaylistController.h"
#include "model/Session.h"
#include "platform/Alerts.h"
#include "platform/Panels.h"
#include "preferences/Preferences.h"
#include "support/PlayerBench.h"
#include "support/Replica.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace daylark::test {

using namespace Qt::StringLiterals;
using bench::waitUntil;

class NotedPasteboard : public Pasteboard {
public:
    void setText(const QString& text) override {
        content = text;
        html.clear();
    }
    void setRichText(const QString& rich, const QString& plain) override {
        content = plain;
        html = rich;
    }
    [[nodiscard]] QString text() const override { return content; }
    QString content, html;
};

class NotedBrowser : public FileBrowser {
public:
    void reveal(const QStringList& paths) override { revealed = paths; }
    QStringList revealed;
};

/// A whole library without a window, on real files; it can end and start again.
class AppFixture : public ::testing::Test {
protected:
    void TearDown() override { end(); }

    /// Whatever changed the records was announced.
    void end() {
        if (replica) {
            EXPECT_TRUE(replica->isTrue()) << replica->difference().toStdString();
        }
        replica.reset();
        controller.reset();
    }


    void start() {
        preferences = std::make_unique<Preferences>(path(u"preferences.ini"_s));
        player = std::make_unique<Player>(clock);
        controller = std::make_unique<PlaylistController>(PlaylistController::Surroundings{
            *preferences, alerts, panels, pasteboard, browser, {u"mia"_s, folder.path(), {}, runtimeFolder}, *player,
            failedWrites});
        if (followed) replica = std::make_unique<test::Replica>(controller->edits().store());
        bool started = false;
        QObject::connect(controller.get(), &PlaylistController::started, [&started] { started = true; });
        controller->awake();
        ASSERT_TRUE(waitUntil([&started] { return started; }));
    }
    void quit() {
        controller->applicationWillTerminate();
        end();
        player.reset();
        preferences.reset();
    }
    void crash() { // nothing is told, nothing is written by hand
        end();
        player.reset();
        preferences.reset();
    }

    [[nodiscard]] QString path(const QString& name) const { return QDir(folder.path()).filePath(name); }
    QString makeFile(const QString& name, const QByteArray& bytes = "no movie at all") const {
        const QString file = path(name);
        QDir().mkpath(QFileInfo(file).path());
        QFile out(file);
        EXPECT_TRUE(out.open(QIODevice::WriteOnly) && out.write(bytes) == bytes.size());
        return file;
    }
    [[nodiscard]] QString temporarySession() const { return path(u"mia_daylarkSession.dls"_s); }

    /// Adds a playlist of items that have no file.
    std::shared_ptr<Playlist> addPlaylist(const QString& name, const QStringList& files) {
        auto playlist = std::make_shared<Playlist>();
        playlist->name = name;
        library().appendPlaylist(playlist, true);
        Library::Movies movies;
        for (const QString& file : files) {
            movies.push_back(std::make_shared<Movie>(path(file)));
            movies.back()->sortOrder = qint64(movies.size());
        }
        library().addMovies(playlist, movies);
        return playlist;
    }
    void settleAdding() {
        ASSERT_TRUE(waitUntil([this] { return !controller->mediaAdding().isBusy(); }));
    }
    void settleThumbnails() {
        ASSERT_TRUE(waitUntil([this] { return controller->thumbnails().isIdle(); }));
    }
    /// Everything queued on the session worker is done and answered.
    void settleFiles() {
        sessionFiles().finishWriting();
        QCoreApplication::processEvents();
    }

    Library& library() { return controller->library(); }
    SessionFiles& sessionFiles() { return controller->sessionFiles(); }
    QStringList playlistNames() {
        QStringList names;
        for (const auto& playlist : library().playlists())
            names << playlist->name;
        return names;
    }
    QStringList shownNames() {
        QStringList names;
        for (const auto& movie : library().arrangedMovies())
            names << movie->filenameString;
        return names;
    }
    std::vector<qint64> shownNumbers() {
        std::vector<qint64> numbers;
        for (const auto& movie : library().arrangedMovies())
            numbers.push_back(movie->sortOrder);
        return numbers;
    }

    bool followed = true; ///< by a replica, which copies every session that is taken up
    QTemporaryDir folder;
    bench::HandClock clock;
    std::unique_ptr<Preferences> preferences;
    ScriptedAlerts alerts;
    ScriptedPanels panels;
    NotedPasteboard pasteboard;
    NotedBrowser browser;
    FailedWrites failedWrites;
    QString runtimeFolder;
    std::unique_ptr<Player> player;
    std::unique_ptr<PlaylistController> controller;
    std::unique_ptr<test::Replica> replica;
};

} // namespace daylark::test
