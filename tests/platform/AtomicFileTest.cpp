#include "platform/AtomicFile.h"

#include "support/ChildProcess.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>

namespace daylark {
namespace {

using namespace Qt::StringLiterals;

class AtomicFileTest : public ::testing::Test {
protected:
    [[nodiscard]] QByteArray content() const {
        QFile file(path_);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    [[nodiscard]] QStringList files() const {
        return QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden);
    }

    QTemporaryDir folder_;
    const QString path_ = folder_.filePath(u"a session.dls"_s);
};

TEST_F(AtomicFileTest, ReplacesTheContentAndKeepsPermissionsAndLinks) {
    ASSERT_TRUE(writeFileAtomically(path_, "old and longer"));
    ASSERT_EQ(::chmod(qPrintable(path_), 0640), 0);
    const QString link = folder_.filePath(u"link"_s);
    ASSERT_TRUE(QFile::link(path_, link));
    ASSERT_TRUE(writeFileAtomically(link, "new"));
    EXPECT_EQ(content(), "new");
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    struct stat info {};
    ASSERT_EQ(::stat(qPrintable(path_), &info), 0);
    EXPECT_EQ(info.st_mode & 0777U, 0640U);
}

TEST_F(AtomicFileTest, FullDiskLeavesTheOldFileAndNothingElse) {
    ASSERT_TRUE(writeFileAtomically(path_, "old"));
    const int status = test::ChildProcess([this] {
                           std::signal(SIGXFSZ, SIG_IGN);
                           const rlimit limit{100000, 100000};
                           ::setrlimit(RLIMIT_FSIZE, &limit);
                           return writeFileAtomically(path_, QByteArray(1000000, 'x')) ? 1 : 0;
                       }).wait();
    EXPECT_EQ(status, 0);
    EXPECT_EQ(content(), "old");
    EXPECT_EQ(files(), QStringList{u"a session.dls"_s});
}

TEST_F(AtomicFileTest, ReadOnlyFolderLeavesTheOldFile) {
    ASSERT_TRUE(writeFileAtomically(path_, "old"));
    ::chmod(qPrintable(path_), 0666); // the file may be written, the folder not: no writing in place then
    ::chmod(qPrintable(folder_.path()), 0555);
    const int status =
        test::runWithoutRootRights([this] { return writeFileAtomically(path_, "new") ? 1 : 0; });
    ::chmod(qPrintable(folder_.path()), 0755);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(content(), "old");
    EXPECT_FALSE(writeFileAtomically(folder_.filePath(u"no/folder/x"_s), "new"));
}

} // namespace
} // namespace daylark
