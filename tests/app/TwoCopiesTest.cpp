#include "app/AppFixture.h"

#include "platform/FailedWrites.h"

#include <QSysInfo>

namespace daylark::test {
namespace {

/// Two copies of the program on one data folder, as with another login or another host on a shared home.
class TwoCopiesTest : public AppFixture {
protected:
    struct Copy {
        explicit Copy(TwoCopiesTest& first)
            : preferences(first.path(u"other.ini"_s))
            , controller({preferences, first.alerts, first.panels, first.pasteboard, first.browser,
                          {u"mia"_s, first.folder.path(), {}}, player, failedWrites}) {}
        [[nodiscard]] TemporarySession& session() { return controller.sessionFiles().temporarySession(); }
        [[nodiscard]] bool start() {
            controller.awake();
            return waitUntil([this] { return session().isLoaded(); });
        }
        void add(const QString& name) {
            auto playlist = std::make_shared<Playlist>();
            playlist->name = name;
            controller.library().appendPlaylist(playlist, true);
        }
        FailedWrites failedWrites;
        bench::HandClock clock;
        Preferences preferences;
        Player player{clock};
        PlaylistController controller;
    };
    QStringList namesIn(const QString& file) const {
        QStringList names;
        if (const Result<SessionContents> read = readSessionFile(path(file)))
            for (const auto& playlist : read->playlists)
                names << playlist->name;
        return names;
    }
};

TEST_F(TwoCopiesTest, TheSecondSaysSoAndNeitherWritesOverTheOther) {
    start();
    addPlaylist(u"Day 1"_s, {u"a.mov"_s});
    EXPECT_TRUE(sessionFiles().temporarySession().notice().isEmpty());
    {
        Copy second(*this);
        ASSERT_TRUE(second.start());
        EXPECT_TRUE(second.session().notice().contains(QSysInfo::machineHostName())) << second.session().notice().toStdString();
        EXPECT_TRUE(second.controller.library().playlists().empty()) << "a session of its own";
        second.add(u"Elsewhere"_s);
        quit(); // the first one ends meanwhile
        EXPECT_EQ(second.controller.applicationWillTerminate(), QString());
    }
    EXPECT_EQ(namesIn(u"mia_daylarkSession.dls"_s), QStringList{u"Day 1"_s}) << "the last writer wrote elsewhere";
    EXPECT_EQ(namesIn(u"mia_daylarkSession-2.dls"_s), QStringList{u"Elsewhere"_s});
    start();
    EXPECT_EQ(playlistNames(), QStringList{u"Day 1"_s});
    Copy again(*this);
    ASSERT_TRUE(again.start());
    ASSERT_EQ(again.controller.library().playlists().size(), 1U) << "a second copy finds the last second one's";
    EXPECT_EQ(again.controller.library().playlists().front()->name, u"Elsewhere"_s);
}

TEST_F(TwoCopiesTest, OneThatWasKilledOrRunsElsewhereIsToldApart) {
    start();
    addPlaylist(u"Day 1"_s, {});
    quit();
    const QString owner = u"mia_daylarkSession.owner"_s;
    EXPECT_FALSE(QFile::exists(path(owner)));
    makeFile(owner, QSysInfo::machineHostName().toUtf8() + "\nanother boot\n1\n1\n");
    start();
    EXPECT_TRUE(sessionFiles().temporarySession().notice().isEmpty()) << "its owner is dead";
    EXPECT_EQ(playlistNames(), QStringList{u"Day 1"_s});
    quit();
    makeFile(owner, "far-host\nboot\n1\n1\n");
    start();
    EXPECT_TRUE(sessionFiles().temporarySession().notice().contains(u"far-host"_s));
    EXPECT_TRUE(playlistNames().isEmpty());
}

TEST_F(TwoCopiesTest, WhatAKillLeftIsClearedAndOnlyThat) {
    const auto left = [this](const char* name, QFile::Permissions mode) {
        const QString file = makeFile(QLatin1String(name));
        EXPECT_TRUE(QFile::setPermissions(file, mode));
    };
    constexpr QFile::Permissions ours = QFile::ReadOwner | QFile::WriteOwner;
    for (const char* name : {"mia_daylarkSession.dls.AbCdEf", "mia_daylarkSession.journal.xyzXYZ"})
        left(name, ours);
    left("mia_daylarkSession.dls.backup1", ours);
    left("mia_daylarkSession.dls.shared", ours | QFile::ReadOther);
    left("other.dls.AbCdEf", ours);
    start();
    const QStringList rest = QDir(folder.path()).entryList({u"*.??????*"_s}, QDir::Files);
    for (const char* kept : {"mia_daylarkSession.dls.backup1", "mia_daylarkSession.dls.shared", "other.dls.AbCdEf"})
        EXPECT_TRUE(rest.contains(QLatin1String(kept))) << kept;
    for (const char* gone : {"mia_daylarkSession.dls.AbCdEf", "mia_daylarkSession.journal.xyzXYZ"})
        EXPECT_FALSE(rest.contains(QLatin1String(gone))) << gone;
}

} // namespace
} // namespace daylark::test
