#include "model/Session.h"

#include "support/RecordSamples.h"
#include "support/ChildProcess.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <csignal>
#include <random>
#include <sys/resource.h>
#include <sys/stat.h>

namespace daylark {
namespace {

using namespace Qt::StringLiterals;

class SessionFileTest : public ::testing::Test {
protected:
    [[nodiscard]] QByteArray content() const {
        QFile file(path_);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    /// A session told from others by its playlist's name, large enough to be caught in the middle of writing.
    static QByteArray session(const QString& name, int movies) {
        const auto playlist = test::samplePlaylist({});
        playlist->name = name;
        for (int i = 0; i < movies; ++i)
            playlist->movieList.push_back(test::sampleMovie());
        return encodeSession(test::sessionOf({playlist}));
    }

    QTemporaryDir folder_;
    const QString path_ = folder_.filePath(u"review.dls"_s);
};

TEST_F(SessionFileTest, SurvivesTwoHundredKillsInTheMiddleOfSaves) {
    const QByteArray sessions[] = {session(u"old"_s, 300), session(u"new"_s, 500)};
    ASSERT_TRUE(writeSessionFile(path_, sessions[0]));
    std::mt19937 random(3);
    std::uniform_int_distribution<int> saves(0, 2), microseconds(0, 4000);
    int kinds[2] = {0, 0};
    for (int kill = 0; kill < 200; ++kill) {
        int pipe[2]; // says when a save is done
        ASSERT_EQ(::pipe(pipe), 0);
        test::ChildProcess child([&] {
            for (int i = kill;; ++i)
                if (!writeSessionFile(path_, sessions[i % 2]) || ::write(pipe[1], "s", 1) != 1) return 1;
        });
        ::close(pipe[1]);
        char said = 0;
        for (int left = saves(random); left > 0; --left)
            ASSERT_EQ(::read(pipe[0], &said, 1), 1);
        ::usleep(useconds_t(microseconds(random)));
        child.kill();
        ::close(pipe[0]);
        const QByteArray left = content();
        ASSERT_TRUE(left == sessions[0] || left == sessions[1]) << "kill " << kill;
        ++kinds[left == sessions[1]];
    }
    EXPECT_GT(kinds[0], 0);
    EXPECT_GT(kinds[1], 0);
    const auto read = readSessionFile(path_);
    ASSERT_TRUE(read);
    EXPECT_TRUE(read->playlists.at(0)->name == u"old"_s || read->playlists.at(0)->name == u"new"_s);
}

TEST_F(SessionFileTest, FullDiskAndReadOnlyFolderLeaveTheOldSession) {
    const QByteArray old = session(u"old"_s, 1), larger = session(u"new"_s, 200);
    ASSERT_TRUE(writeSessionFile(path_, old));
    const int full = test::ChildProcess([&] {
                         std::signal(SIGXFSZ, SIG_IGN);
                         const rlimit limit{rlim_t(old.size() * 2), rlim_t(old.size() * 2)};
                         ::setrlimit(RLIMIT_FSIZE, &limit);
                         return writeSessionFile(path_, larger) ? 1 : 0;
                     }).wait();
    EXPECT_EQ(full, 0);
    EXPECT_EQ(content(), old);
    ::chmod(qPrintable(path_), 0666);
    ::chmod(qPrintable(folder_.path()), 0555);
    const int readOnly = test::runWithoutRootRights([&] { return writeSessionFile(path_, larger) ? 1 : 0; });
    ::chmod(qPrintable(folder_.path()), 0755);
    EXPECT_EQ(readOnly, 0);
    EXPECT_EQ(content(), old);
    EXPECT_FALSE(writeSessionFile(path_, {})) << "nothing is no session";
    EXPECT_EQ(content(), old);
}

TEST_F(SessionFileTest, UnreadableFilesAreErrorsAndAreSetAsideNotOverwritten) {
    EXPECT_FALSE(readSessionFile(path_));
    EXPECT_FALSE(readSessionFile(folder_.path()));
    ASSERT_EQ(::mkfifo(qPrintable(folder_.filePath(u"pipe.dls"_s)), 0600), 0);
    EXPECT_FALSE(readSessionFile(folder_.filePath(u"pipe.dls"_s)));

    QSet<QString> places;
    for (const char* damage : {"first", "second", "third"}) { // within one second
        QFile file(path_);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(damage);
        file.close();
        ASSERT_FALSE(readSessionFile(path_));
        const Result<QString> aside = setFileAside(path_);
        ASSERT_TRUE(aside);
        EXPECT_FALSE(QFile::exists(path_));
        EXPECT_TRUE(QFileInfo(*aside).fileName().startsWith(u"review (unreadable 20"_s))
            << qPrintable(*aside);
        EXPECT_TRUE(aside->endsWith(u".dls"_s));
        QFile kept(*aside);
        ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
        EXPECT_EQ(kept.readAll(), damage);
        places.insert(*aside);
    }
    EXPECT_EQ(places.size(), 3);
    EXPECT_FALSE(setFileAside(path_)) << "nothing there";
}

TEST_F(SessionFileTest, CutOffSessionIsAnError) {
    const QByteArray whole = session(u"old"_s, 2);
    for (const qsizetype length : {whole.size() - 1, whole.size() / 2, qsizetype(9)}) {
        QFile file(path_);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(whole.left(length));
        file.close();
        EXPECT_FALSE(readSessionFile(path_)) << length;
    }
}

} // namespace
} // namespace daylark
