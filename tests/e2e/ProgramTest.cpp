#include "support/MovieMaker.h"
#include "model/Session.h"
#include "platform/Desktop.h"
#include "review/journal/SessionRecovery.h"
#include "support/Places.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>

#include <csignal>

namespace {

using namespace daylark;

/// The real program in a home of its own, without a display.
class Program : public ::testing::Test {
protected:
    void SetUp() override {
        environment_ = QProcessEnvironment::systemEnvironment();
        environment_.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        environment_.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"),
                            QStringLiteral("unix:path=/nonexistent"));
        for (const char* place : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"}) {
            const QString folder = home_.filePath(QString::fromLatin1(place));
            QDir().mkpath(folder);
            QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
            environment_.insert(QString::fromLatin1(place), folder);
        }
        for (const char* name : {"a.mov", "b.mov"}) {
            MovieSpec spec;
            spec.path = home_.filePath(QString::fromLatin1(name));
            spec.frames = 12;
            ASSERT_TRUE(makeMovie(spec));
        }
    }
    void start(QProcess& process, const QStringList& arguments) {
        process.setProcessEnvironment(environment_);
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start(programFolder() + QStringLiteral("/daylark"), arguments);
        ASSERT_TRUE(process.waitForStarted());
    }
    [[nodiscard]] QString temporarySession() const {
        return home_.filePath(QStringLiteral("XDG_DATA_HOME/Daylark/")) + SystemPlaces::current().loginName +
               QStringLiteral("_daylarkSession.dls");
    }
    [[nodiscard]] QStringList itemsInTemporarySession() const {
        const Result<SessionContents> session = readSessionFile(temporarySession());
        return session ? itemsOf(*session) : QStringList();
    }
    static QStringList itemsOf(const SessionContents& session) {
        QStringList names;
        for (const auto& playlist : session.playlists)
            for (const auto& movie : playlist->movieList)
                names << movie->filenameString;
        return names;
    }
    static QByteArray contentOf(const QString& path) {
        QFile in(path);
        return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
    }
    /// What a start would find now: the temporary session and what the journal beside it says since.
    [[nodiscard]] QStringList itemsOnDisk() const {
        QString journal = temporarySession();
        journal.replace(journal.size() - 3, 3, QStringLiteral("journal"));
        const QByteArray session = contentOf(temporarySession());
        const Result<SessionContents> contents = decodeSession(session);
        const auto found = recoverSession(contents ? *contents : SessionContents(),
                                          sessionFingerprint(session), parseJournal(contentOf(journal)));
        return found ? itemsOf(found->contents) : QStringList();
    }
    [[nodiscard]] bool comesTo(const QStringList& items) const {
        QElapsedTimer waiting;
        waiting.start();
        while (itemsOnDisk() != items && !waiting.hasExpired(60000))
            QThread::msleep(20);
        return itemsOnDisk() == items;
    }
    [[nodiscard]] QString file(const char* name) const { return home_.filePath(QString::fromLatin1(name)); }

    QTemporaryDir home_;
    QProcessEnvironment environment_;
};

TEST_F(Program, SecondStartHandsItsFileOverAndASignalEndsTheFirstWithEverythingKept) {
    QProcess first;
    start(first, {file("a.mov")});
    // The second start hands over once the first one listens; before that it would be the first itself.
    QElapsedTimer waiting;
    waiting.start();
    const QDir runtime(file("XDG_RUNTIME_DIR"));
    while (runtime.entryList({QStringLiteral("daylark-*")}, QDir::System).isEmpty() &&
           !waiting.hasExpired(20000))
        first.waitForFinished(50);
    QProcess second;
    start(second, {file("b.mov")});
    ASSERT_TRUE(second.waitForFinished(20000)) << "the second copy did not hand over";
    EXPECT_EQ(second.exitCode(), 0);
    EXPECT_EQ(first.state(), QProcess::Running);
    const QStringList both{QStringLiteral("a.mov"), QStringLiteral("b.mov")};
    EXPECT_TRUE(comesTo(both)); // in the journal as soon as it has been added
    ::kill(pid_t(first.processId()), SIGTERM);
    ASSERT_TRUE(first.waitForFinished(20000));
    EXPECT_EQ(first.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(first.exitCode(), 0);
    EXPECT_EQ(itemsInTemporarySession(), both);
}

TEST_F(Program, LinksOfTheFirstStartAndOfALaterOneAreOpenedByTheFirst) {
    QProcess first; // the link waits there for the end of its start
    start(first, {QStringLiteral("daylark://link") + file("a.mov"),
                  QStringLiteral("daylark://addplaylist/Mail") + file("b.mov")});
    const QStringList both{QStringLiteral("a.mov"), QStringLiteral("b.mov")};
    ASSERT_TRUE(comesTo(both));
    QProcess second;
    start(second, {QStringLiteral("daylark://link") + file("b.mov") + QStringLiteral(","), file("gone.mov")});
    ASSERT_TRUE(second.waitForFinished(20000));
    EXPECT_EQ(second.exitCode(), 0);
    EXPECT_TRUE(comesTo({QStringLiteral("a.mov"), QStringLiteral("b.mov"), QStringLiteral("b.mov")}));
    ::kill(pid_t(first.processId()), SIGTERM);
    ASSERT_TRUE(first.waitForFinished(20000));
    const Result<SessionContents> session = readSessionFile(temporarySession());
    ASSERT_TRUE(session);
    QStringList playlists;
    for (const auto& playlist : session->playlists)
        playlists << playlist->name + QString::number(playlist->movieList.size());
    EXPECT_EQ(playlists, (QStringList{QStringLiteral("Media From Link2"), QStringLiteral("Mail1")}));
}

TEST_F(Program, WhatIsNotThereIsOneLineAndNoStart) {
    QProcess program;
    program.setProcessEnvironment(environment_);
    program.start(programFolder() + QStringLiteral("/daylark"), {file("gone.mov"), QStringLiteral("away")});
    ASSERT_TRUE(program.waitForFinished(20000)) << "a window that shows nothing of what was asked for";
    EXPECT_EQ(program.exitCode(), 1);
    EXPECT_EQ(program.readAllStandardError(),
              "daylark: " + file("gone.mov").toUtf8() +
                  ": no such file or folder\ndaylark: away: no such file or folder\n");
    EXPECT_FALSE(QFile::exists(temporarySession()));
}

TEST_F(Program, AKilledOneHasItsEditsBackAtTheNextStart) {
    QProcess first;
    start(first, {file("a.mov"), file("b.mov")});
    const QStringList both{QStringLiteral("a.mov"), QStringLiteral("b.mov")};
    ASSERT_TRUE(comesTo(both));
    EXPECT_TRUE(itemsInTemporarySession().isEmpty()) << "nobody closed anything yet";
    first.kill();
    ASSERT_TRUE(first.waitForFinished(20000));
    QProcess second;
    start(second, {file("b.mov")});
    ASSERT_TRUE(comesTo(both + QStringList{QStringLiteral("b.mov")})) << "it went on from there";
    second.kill();
    ASSERT_TRUE(second.waitForFinished(20000));
    QProcess third;
    start(third, {file("a.mov")});
    const QStringList four = both + QStringList{QStringLiteral("b.mov"), QStringLiteral("a.mov")};
    ASSERT_TRUE(comesTo(four));
    ::kill(pid_t(third.processId()), SIGTERM);
    ASSERT_TRUE(third.waitForFinished(20000));
    EXPECT_EQ(itemsInTemporarySession(), four);
}

/// A server is gone, and whoever asks about its files never comes back: all else goes on, the end too.
TEST_F(Program, AShareThatNeverAnswersKeepsNobodyWaiting) {
    auto list = std::make_shared<Playlist>();
    for (const char* name : {"gone/share/1.mov", "gone/share/2.mov", "a.mov", "gone/share/3.mov"})
        list->movieList.push_back(std::make_shared<Movie>(file(name)));
    SessionContents contents;
    contents.playlists = {list};
    contents.hasPlaylists = true;
    QDir().mkpath(QFileInfo(temporarySession()).path());
    ASSERT_TRUE(writeSessionFile(temporarySession(), encodeSession(contents)));
    environment_.insert(QStringLiteral("LD_PRELOAD"), programFolder() + QStringLiteral("/libstuck_folder.so"));
    environment_.insert(QStringLiteral("STUCK_FOLDER"), QStringLiteral("/gone/share"));
    environment_.insert(QStringLiteral("STUCK_MARK"), file("asked"));
    QProcess program;
    start(program, {});
    QElapsedTimer waiting;
    waiting.start();
    while (!QFile::exists(file("asked")) && !waiting.hasExpired(20000))
        QThread::msleep(20);
    ASSERT_TRUE(QFile::exists(file("asked"))) << "nobody has asked yet";
    const QStringList four{QStringLiteral("1.mov"), QStringLiteral("2.mov"), QStringLiteral("a.mov"), QStringLiteral("3.mov")};
    QProcess later; // taken, looked at and added by the first
    start(later, {file("b.mov")});
    ASSERT_TRUE(later.waitForFinished(20000));
    EXPECT_TRUE(comesTo(four + QStringList{QStringLiteral("b.mov")}));
    ::kill(pid_t(program.processId()), SIGTERM);
    ASSERT_TRUE(program.waitForFinished(30000)) << "the end waits for the share";
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program.exitCode(), 0);
    EXPECT_EQ(itemsInTemporarySession(), four + QStringList{QStringLiteral("b.mov")});
}

TEST_F(Program, UnreadablePreviousSessionIsKeptAside) {
    QDir().mkpath(QFileInfo(temporarySession()).path());
    QFile broken(temporarySession());
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
    broken.write("half a file");
    broken.close();
    QProcess program;
    start(program, {});
    program.waitForFinished(2500);
    ::kill(pid_t(program.processId()), SIGTERM);
    ASSERT_TRUE(program.waitForFinished(20000));
    EXPECT_EQ(program.exitCode(), 0);
    bool kept = false;
    const QDir folder(QFileInfo(temporarySession()).path());
    for (const QString& name : folder.entryList(QDir::Files)) {
        QFile candidate(folder.filePath(name));
        kept = kept || (candidate.open(QIODevice::ReadOnly) && candidate.readAll() == "half a file");
    }
    EXPECT_TRUE(kept);
    EXPECT_TRUE(readSessionFile(temporarySession()));
}

} // namespace
