#include "app/AppFixture.h"

#include "platform/FailedWrites.h"
#include "review/journal/JournalFile.h"
#include "support/FullDisk.h"

#include <sys/stat.h>

#include <optional>

namespace daylark::test {
namespace {

/// What a person is told when the disk takes nothing.
class FailedWritesTest : public AppFixture {
protected:
    [[nodiscard]] QStringList unwritten() const {
        QStringList list;
        for (const FailedWrites::Entry& entry : failedWrites.list())
            list << entry.what + u": "_s + QFileInfo(entry.path).fileName();
        return list;
    }
    [[nodiscard]] const FailedWrites::Entry* entryOf(const QString& what) const {
        for (const FailedWrites::Entry& entry : failedWrites.list())
            if (entry.what == what) return &entry;
        return nullptr;
    }
};

TEST_F(FailedWritesTest, EntriesStandByPathUntilWritten) {
    int changes = 0;
    QObject::connect(&failedWrites, &FailedWrites::changed, [&changes] { ++changes; });
    failedWrites.failed(u"Session"_s, u"/x/a.dls"_s, u"could not write /x/a.dls: No space left on device"_s);
    failedWrites.failed(u"Notes"_s, u"/x/b.csv"_s, u"gone"_s);
    failedWrites.failed(u"Session"_s, u"/x/a.dls"_s, u"could not write /x/a.dls: Input/output error"_s);
    ASSERT_EQ(unwritten(), (QStringList{u"Session: a.dls"_s, u"Notes: b.csv"_s}));
    EXPECT_EQ(failedWrites.list().front().reason, u"Input/output error"_s) << "the latest, without the path again";
    failedWrites.written(u"/x/other"_s);
    EXPECT_EQ(changes, 3);
    failedWrites.written(u"/x/a.dls"_s);
    EXPECT_EQ(unwritten(), QStringList{u"Notes: b.csv"_s});
}

TEST_F(FailedWritesTest, ASessionThatIsNotWrittenIsSaidToBeSoUntilItIs) {
    start();
    addPlaylist(u"Day 1"_s, {u"a.mov"_s});
    sessionFiles().setCurrentSessionPath(path(u"show.dls"_s));
    sessionFiles().saveSession();
    settleFiles();
    EXPECT_TRUE(failedWrites.list().empty());
    addPlaylist(u"Day 2"_s, {u"b.mov"_s});
    {
        const FullDisk full;
        sessionFiles().saveSession();
        settleFiles();
    }
    ASSERT_TRUE(entryOf(u"Session"_s)) << unwritten().join(u' ').toStdString();
    EXPECT_TRUE(sessionFiles().sessionIsModified()) << "it is not on the disk";
    EXPECT_FALSE(entryOf(u"Session"_s)->reason.isEmpty());
    EXPECT_FALSE(entryOf(u"Session"_s)->reason.contains(u"/"_s)) << "the reason alone";
    EXPECT_EQ(readSessionFile(path(u"show.dls"_s))->playlists.size(), 1U) << "the old one, whole";
    entryOf(u"Session"_s)->tryAgain();
    settleFiles();
    EXPECT_FALSE(entryOf(u"Session"_s));
    EXPECT_FALSE(sessionFiles().sessionIsModified());
    EXPECT_EQ(readSessionFile(path(u"show.dls"_s))->playlists.size(), 2U);
}

TEST_F(FailedWritesTest, SavedElsewhereItIsNotMissingAnyMore) {
    start();
    addPlaylist(u"Day 1"_s, {});
    sessionFiles().setCurrentSessionPath(path(u"full/show.dls"_s));
    ASSERT_TRUE(QDir(folder.path()).mkdir(u"full"_s));
    {
        const FullDisk full;
        sessionFiles().saveSession();
        settleFiles();
    }
    ASSERT_TRUE(entryOf(u"Session"_s));
    panels.saveAnswers.push_back(path(u"elsewhere.dls"_s));
    const auto saveAs = entryOf(u"Session"_s)->saveAs;
    saveAs();
    settleFiles();
    EXPECT_FALSE(entryOf(u"Session"_s)) << unwritten().join(u' ').toStdString();
    EXPECT_TRUE(QFile::exists(path(u"elsewhere.dls"_s)));
}

TEST_F(FailedWritesTest, AFolderThatIsGoneIsSaid) {
    start();
    addPlaylist(u"Day 1"_s, {});
    panels.saveAnswers.push_back(path(u"nowhere/show.dls"_s));
    sessionFiles().saveSessionAs();
    settleFiles();
    EXPECT_EQ(unwritten(), QStringList{u"Session: show.dls"_s});
}

TEST_F(FailedWritesTest, WhatTheProgramKeepsIsSaidTooAndTriedAgain) {
    start();
    {
        const FullDisk full;
        addPlaylist(u"Day 1"_s, {u"a.mov"_s});
        sessionFiles().saveTempSession();
        settleFiles();
        EXPECT_TRUE(waitUntil([this] { return entryOf(u"Changes"_s) && entryOf(u"Session of this run"_s); }))
            << unwritten().join(u' ').toStdString();
        EXPECT_FALSE(entryOf(u"Changes"_s)->tryAgain) << "it does so of itself";
    }
    EXPECT_TRUE(waitUntil([this] { return !entryOf(u"Changes"_s); })) << "there is room again";
    entryOf(u"Session of this run"_s)->tryAgain();
    EXPECT_TRUE(waitUntil([this] { return failedWrites.list().empty(); })) << unwritten().join(u' ').toStdString();
}

TEST_F(FailedWritesTest, AtTheEndTheRuntimeFolderIsTheLastPlace) {
    const QTemporaryDir runtime;
    for (const bool hasRuntime : {true, false}) {
        if (hasRuntime) runtimeFolder = runtime.path();
        else runtimeFolder.clear();
        start();
        addPlaylist(u"Day 1"_s, {u"a.mov"_s});
        QString said;
        {
            const FullDisk full;
            said = controller->applicationWillTerminate();
        }
        // No file grows anywhere here, so that neither place takes it: what is said must not be that all is well.
        EXPECT_TRUE(said.contains(u"could not be written anywhere"_s)) << said.toStdString();
        end();
    }
    runtimeFolder = runtime.path();
    start();
    addPlaylist(u"Day 2"_s, {});
    EXPECT_EQ(controller->applicationWillTerminate(), QString()) << "with room nothing is to be said";
    const Result<QString> rescued = sessionFiles().rescueTo(runtime.path() + u"/Daylark"_s);
    ASSERT_TRUE(rescued);
    EXPECT_TRUE(readSessionFile(*rescued));
    EXPECT_EQ(QFileInfo(*rescued).permissions() & 0x0077, 0) << "nobody else's";
}

TEST_F(FailedWritesTest, TheJournalHasItsRoomBeforeTheDiskIsFull) {
    start();
    addPlaylist(u"Day 1"_s, {u"a.mov"_s});
    ASSERT_TRUE(sessionFiles().temporarySession().finishWriting());
    const QString journal = path(u"mia_daylarkSession.journal"_s);
    struct stat status {};
    ASSERT_EQ(::stat(QFile::encodeName(journal).constData(), &status), 0);
    EXPECT_GE(qint64(status.st_blocks) * 512, qint64(status.st_size) + (512 << 10)) << "blocks behind its end";
    EXPECT_EQ(status.st_mode & 0777, 0600U);
    EXPECT_EQ(parseJournal([&] {
                  QFile file(journal);
                  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
              }()).soundBytes,
              status.st_size)
        << "which nobody reads";
}

} // namespace
} // namespace daylark::test
