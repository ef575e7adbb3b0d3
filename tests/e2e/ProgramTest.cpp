#include "demo/MovieMaker.h"
#include "model/Session.h"
#include "platform/Desktop.h"
#include "support/Places.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>

#include <csignal>

namespace {

using namespace daylark;

/// The real program in a home of its own, without a display.
class Program : public ::testing::Test {
protected:
    void SetUp() override {
        environment_ = QProcessEnvironment::systemEnvironment();
        environment_.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
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
        QStringList names;
        const Result<SessionContents> session = readSessionFile(temporarySession());
        if (session)
            for (const auto& playlist : session->playlists)
                for (const auto& movie : playlist->movieList)
                    names << movie->filenameString;
        return names;
    }
    [[nodiscard]] QString file(const char* name) const { return home_.filePath(QString::fromLatin1(name)); }

private:
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
    // The session keeps itself a few seconds after the last change: what is on the disk has been added.
    const QStringList both{QStringLiteral("a.mov"), QStringLiteral("b.mov")};
    waiting.restart();
    while (itemsInTemporarySession() != both && !waiting.hasExpired(60000))
        first.waitForFinished(200);
    ::kill(pid_t(first.processId()), SIGTERM);
    ASSERT_TRUE(first.waitForFinished(20000));
    EXPECT_EQ(first.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(first.exitCode(), 0);
    EXPECT_EQ(itemsInTemporarySession(), both);
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
