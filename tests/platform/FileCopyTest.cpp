#include "platform/FileCopy.h"

#include "support/ChildProcess.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>

namespace daylark {
namespace {

using namespace Qt::StringLiterals;
using Existing = UnfinishedFile::Existing;
using End = CopyOutcome::End;

class FileCopyTest : public ::testing::Test {
protected:
    void write(const QString& path, const QByteArray& bytes) const {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }
    [[nodiscard]] static QByteArray content(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    [[nodiscard]] QStringList files() const {
        return QDir(to_.path()).entryList(QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot);
    }
    static struct stat stateOf(const QString& path) {
        struct stat state {};
        ::stat(qPrintable(path), &state);
        return state;
    }
    /// A disk with so much room left, for whatever `work` writes.
    static int withRoomFor(rlim_t bytes, const std::function<bool()>& work) {
        return test::ChildProcess([&] {
                   std::signal(SIGXFSZ, SIG_IGN);
                   const rlimit limit{bytes, bytes};
                   ::setrlimit(RLIMIT_FSIZE, &limit);
                   return work() ? 0 : 1;
               }).wait();
    }
    static QByteArray pattern(qsizetype size) {
        QByteArray bytes(size, Qt::Uninitialized);
        quint32 state = 1;
        for (char& byte : bytes)
            byte = char((state = state * 1664525U + 1013904223U) >> 24U);
        return bytes;
    }

    QTemporaryDir from_, to_;
    const QString name_ = u"A0 Ünïcode – shot.mov"_s, source_ = from_.filePath(name_), copy_ = to_.filePath(name_);
};

TEST_F(FileCopyTest, KeepsContentTimesAndPermissionsAndTellsItsBytes) {
    for (const qsizetype size : {qsizetype(0), qsizetype(1), qsizetype(40 << 20)}) {
        write(source_, pattern(size));
        const timespec times[2] = {{1000000000, 5}, {1234567890, 123456789}};
        ASSERT_EQ(::utimensat(AT_FDCWD, qPrintable(source_), times, 0), 0);
        ASSERT_EQ(::chmod(qPrintable(source_), 0440), 0);
        std::vector<qint64> told;
        const CopyOutcome outcome = copyFile(source_, copy_, Existing::replace, {nullptr, [&told](qint64 bytes) {
                                                                                    told.push_back(bytes);
                                                                                }});
        ASSERT_TRUE(outcome) << qPrintable(outcome.reason);
        EXPECT_EQ(outcome.bytes, size);
        EXPECT_TRUE(content(copy_) == pattern(size));
        EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
        EXPECT_EQ(told.back(), size);
        EXPECT_EQ(stateOf(copy_).st_mtim.tv_sec, 1234567890);
        EXPECT_EQ(stateOf(copy_).st_mtim.tv_nsec, 123456789);
        EXPECT_EQ(stateOf(copy_).st_mode & 0777U, 0440U);
        EXPECT_EQ(files().size(), 1);
        ASSERT_EQ(::chmod(qPrintable(source_), 0640), 0);
    }
}

TEST_F(FileCopyTest, HolesStayHolesAndTheirBytesAreThere) {
    constexpr off_t size = off_t(3) << 30;
    const int file = ::open(qPrintable(source_), O_CREAT | O_RDWR, 0644);
    ASSERT_EQ(::ftruncate(file, size), 0);
    ASSERT_EQ(::pwrite(file, "middle", 6, 1 << 30), 6);
    ::close(file);
    if (stateOf(source_).st_blocks * 512 > (1 << 28)) GTEST_SKIP() << "this file system has no holes";
    ASSERT_TRUE(copyFile(source_, copy_, Existing::keep));
    EXPECT_EQ(stateOf(copy_).st_size, size);
    EXPECT_LT(stateOf(copy_).st_blocks * 512, 1 << 28);
    QFile copied(copy_);
    ASSERT_TRUE(copied.open(QIODevice::ReadOnly) && copied.seek((1 << 30) - 2));
    EXPECT_EQ(copied.read(10), QByteArray("\0\0middle\0\0", 10));
}

TEST_F(FileCopyTest, WhatStandsThereStaysOrIsReplacedWhole) {
    write(source_, "new");
    write(copy_, "old");
    EXPECT_EQ(copyFile(source_, copy_, Existing::keep).end, End::destination_exists);
    EXPECT_EQ(content(copy_), "old");
    EXPECT_TRUE(copyFile(source_, copy_, Existing::replace));
    EXPECT_EQ(content(copy_), "new");
    EXPECT_TRUE(copyFile(copy_, copy_, Existing::replace)); // onto itself
    EXPECT_EQ(content(copy_), "new");
    // A link that leads nowhere has the name, too.
    const QString link = to_.filePath(u"link"_s);
    ASSERT_TRUE(QFile::link(to_.filePath(u"nowhere"_s), link));
    EXPECT_EQ(copyFile(source_, link, Existing::keep).end, End::destination_exists);
    // A folder is never replaced.
    const QString folder = to_.filePath(u"folder"_s);
    ASSERT_TRUE(QDir().mkdir(folder));
    EXPECT_EQ(copyFile(source_, folder, Existing::replace).end, End::failed);
    EXPECT_TRUE(QFileInfo(folder).isDir());
    EXPECT_EQ(files(), (QStringList{u"A0 Ünïcode – shot.mov"_s, u"folder"_s, u"link"_s}));
}

TEST_F(FileCopyTest, WhatIsNoFileIsNoCopy) {
    EXPECT_EQ(copyFile(source_, copy_, Existing::keep).end, End::source_missing);
    EXPECT_EQ(copyFile(from_.path(), copy_, Existing::keep).end, End::failed);
    ASSERT_EQ(::mkfifo(qPrintable(source_), 0600), 0);
    EXPECT_EQ(copyFile(source_, copy_, Existing::keep).end, End::failed); // and doesn't wait for a writer
    ASSERT_TRUE(QFile::remove(source_));
    write(source_, "x");
    const CopyOutcome outcome = copyFile(source_, to_.filePath(u"no folder/x"_s), Existing::keep);
    EXPECT_EQ(outcome.end, End::failed);
    EXPECT_FALSE(outcome.reason.isEmpty());
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(FileCopyTest, CancelledOrOutOfRoomLeavesNothing) {
    write(source_, pattern(40 << 20));
    CancelFlag cancelled = false;
    const CopyWatch cancelling{&cancelled, [&cancelled](qint64) { cancelled = true; }};
    const CopyOutcome outcome = copyFile(source_, copy_, Existing::keep, cancelling);
    EXPECT_TRUE(outcome.end == End::cancelled || outcome.bytes == 40 << 20); // shared blocks are there at once
    ASSERT_TRUE(!outcome || QFile::remove(copy_));
    EXPECT_TRUE(files().isEmpty());
    write(copy_, "old");
    const int status = withRoomFor(1 << 20, [this] {
        const CopyOutcome full = copyFile(source_, copy_, Existing::replace);
        return full.end == End::failed && !full.reason.isEmpty();
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(content(copy_), "old");
    EXPECT_EQ(files().size(), 1);
}

TEST_F(FileCopyTest, KilledAtAnyMomentTheFinalNameIsWholeAndTheNextCopyClearsAway) {
    const QByteArray bytes = pattern(64 << 20);
    write(source_, bytes);
    for (int delay = 0; delay < 12; ++delay) {
        QFile::remove(copy_);
        {
            test::ChildProcess copying([this] { return copyFile(source_, copy_, Existing::keep) ? 0 : 1; });
            std::this_thread::sleep_for(std::chrono::milliseconds(3 * delay));
            copying.kill();
        }
        EXPECT_TRUE(!QFile::exists(copy_) || content(copy_) == bytes) << "after " << 3 * delay << " ms";
        for (const QString& name : files())
            EXPECT_TRUE(name == QFileInfo(copy_).fileName() || name.startsWith(u'.')) << qPrintable(name);
    }
    ASSERT_TRUE(copyFile(source_, copy_, Existing::replace));
    EXPECT_TRUE(content(copy_) == bytes);
    // What was killed under a hidden name is taken over by the next one.
    test::ChildProcess([this] {
        Result<UnfinishedFile> left = UnfinishedFile::beside(copy_);
        ::raise(left && left->write("half") ? SIGKILL : SIGTERM);
        return 0;
    }).wait();
    EXPECT_EQ(files().size(), 2);
    {
        Result<UnfinishedFile> next = UnfinishedFile::beside(copy_);
        EXPECT_TRUE(next && next->write("whole") && next->commit(Existing::replace));
    }
    EXPECT_EQ(files(), QStringList{QFileInfo(copy_).fileName()});
    EXPECT_EQ(content(copy_), "whole");
}

TEST_F(FileCopyTest, AFileWithoutANameGetsOneWholeOrReplacesOne) {
    const auto made = [this](Existing existing, const QByteArray& bytes) {
        Result<UnfinishedFile> file = UnfinishedFile::nameless(copy_);
        return file && file->write(bytes) && file->commit(existing) && !file->commit(existing);
    };
    EXPECT_TRUE(made(Existing::keep, "one"));
    EXPECT_FALSE(made(Existing::keep, "two"));
    EXPECT_EQ(content(copy_), "one");
    EXPECT_TRUE(made(Existing::replace, "three"));
    EXPECT_EQ(content(copy_), "three");
    EXPECT_EQ(files(), QStringList{name_});
    EXPECT_FALSE(UnfinishedFile::nameless(to_.filePath(u"no folder/x"_s)));
}

TEST_F(FileCopyTest, FilesInWorkForOneNameDontDisturbEachOther) {
    const QString name(120, u'ü'); // as long as a name can be, in bytes
    Result<UnfinishedFile> first = UnfinishedFile::beside(to_.filePath(name));
    Result<UnfinishedFile> second = UnfinishedFile::beside(to_.filePath(name));
    ASSERT_TRUE(first && second);
    EXPECT_NE(first->path(), second->path());
    ASSERT_TRUE(first->write("first") && second->write("second"));
    EXPECT_TRUE(first->commit(Existing::keep));
    EXPECT_FALSE(second->commit(Existing::keep));
    EXPECT_EQ(content(to_.filePath(name)), "first");
    EXPECT_TRUE(second->commit(Existing::replace));
    EXPECT_EQ(content(to_.filePath(name)), "second");
    // Whoever puts a link or a file of theirs under the hidden name has it left alone.
    write(from_.filePath(u"theirs"_s), "theirs");
    ASSERT_TRUE(QFile::link(from_.filePath(u"theirs"_s), to_.filePath(u".x.unfinished"_s)));
    {
        Result<UnfinishedFile> third = UnfinishedFile::beside(to_.filePath(u"x"_s));
        ASSERT_TRUE(third && third->write("x"));
    }
    EXPECT_EQ(content(from_.filePath(u"theirs"_s)), "theirs");
    EXPECT_EQ(files().size(), 2); // the link and the file that was finished
}

TEST_F(FileCopyTest, FolderWithoutRightsSaysSo) {
    write(source_, "x");
    ASSERT_TRUE(QFile::setPermissions(from_.path(), QFile::Permissions(0x7777)) &&
                QFile::setPermissions(source_, QFile::Permissions(0x7777)));
    ASSERT_EQ(::chmod(qPrintable(to_.path()), 0555), 0);
    EXPECT_EQ(test::runWithoutRootRights([this] {
                  const CopyOutcome outcome = copyFile(source_, copy_, Existing::keep);
                  return outcome.end == End::failed && !outcome.reason.isEmpty() ? 0 : 1;
              }),
              0);
    EXPECT_TRUE(files().isEmpty());
}

} // namespace
} // namespace daylark
