#include "platform/FileBookmark.h"

#include <gtest/gtest.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace daylark {
namespace {

using namespace Qt::StringLiterals;

class FileBookmarkTest : public ::testing::Test {
protected:
    FileBookmarkTest() {
        for (const QString& name : {u"day1"_s, u"day2"_s, u"day2/deep"_s})
            QDir(folder_.path()).mkpath(name);
        write(clip_, "picture");
        bookmark_ = createFileBookmark(clip_);
    }
    [[nodiscard]] QString at(const QString& name) const { return folder_.filePath(name); }
    static void write(const QString& path, const QByteArray& bytes) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    static void setTime(const QString& path, const QDateTime& time) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(file.setFileTime(time, QFileDevice::FileModificationTime));
    }
    /// Null when nothing was found.
    static QString resolved(const QByteArray& data, const QString& stored) {
        const Result<QString> path = resolveFileBookmark(data, stored);
        return path ? *path : QString();
    }

    QTemporaryDir folder_;
    const QString clip_ = at(u"day1/A001 ü.mov"_s);
    QByteArray bookmark_;
};

TEST_F(FileBookmarkTest, FindsTheFileWhereItWasRenamedOrMovedToASiblingFolder) {
    EXPECT_EQ(resolved(bookmark_, clip_), clip_);
    const QString renamed = at(u"day1/B.mov"_s), moved = at(u"day2/C.mov"_s), far = at(u"day2/deep/C.mov"_s);
    ASSERT_TRUE(QFile::rename(clip_, renamed));
    EXPECT_EQ(resolved(bookmark_, clip_), renamed);
    ASSERT_TRUE(QFile::rename(renamed, moved));
    EXPECT_EQ(resolved(bookmark_, clip_), moved);
    ASSERT_TRUE(QFile::rename(moved, far));
    EXPECT_EQ(resolved(bookmark_, clip_), QString()) << "deeper down is out of reach";
    EXPECT_EQ(resolved(bookmark_, moved), QString()) << "and not a sibling of where it was last";
    EXPECT_EQ(resolved(bookmark_, at(u"day2/deep/before.mov"_s)), far)
        << "but the stored path's folder is looked into";
}

TEST_F(FileBookmarkTest, FileReplacedInPlaceIsTakenForTheMarkedOne) {
    ASSERT_TRUE(QFile::rename(clip_, at(u"day1/old.mov"_s)));
    write(clip_, "a newer render");
    EXPECT_EQ(resolved(bookmark_, clip_), clip_);
    // Known to have moved on, the marked file itself wins over a stranger at its first place.
    EXPECT_EQ(resolved(bookmark_, at(u"day1/old.mov"_s)), at(u"day1/old.mov"_s));
}

TEST_F(FileBookmarkTest, InodeAloneIsNoIdentity) {
    const QString renamed = at(u"day1/B.mov"_s);
    ASSERT_TRUE(QFile::rename(clip_, renamed));
    setTime(renamed, QDateTime::currentDateTime().addDays(-1));
    EXPECT_EQ(resolved(bookmark_, clip_), renamed) << "touched, same size";
    write(renamed, "something else entirely"); // same inode, other size and time
    setTime(renamed, QDateTime::currentDateTime().addDays(-2));
    EXPECT_EQ(resolved(bookmark_, clip_), QString());
}

TEST_F(FileBookmarkTest, OnAnotherDeviceSizeAndTimeMustBothBeTheSame) {
    const QDateTime time(QDate(2026, 3, 1), QTime(9, 0)); // to be set again to the nanosecond
    setTime(clip_, time);
    bookmark_ = createFileBookmark(clip_);
    QByteArray remounted = bookmark_; // as after a reboot that numbers the disks anew
    const qsizetype device = 4 + 2 + 4 + clip_.toUtf8().size();
    remounted[device + 7] = char(remounted[device + 7] ^ 1);
    const QString renamed = at(u"day1/B.mov"_s);
    ASSERT_TRUE(QFile::rename(clip_, renamed));
    EXPECT_EQ(resolved(remounted, clip_), renamed);
    setTime(renamed, time.addDays(-1));
    EXPECT_EQ(resolved(remounted, clip_), QString()) << "another time";
    EXPECT_EQ(resolved(bookmark_, clip_), renamed);
    write(renamed, "longer than it was");
    setTime(renamed, time);
    EXPECT_EQ(resolved(remounted, clip_), QString()) << "another size";
    EXPECT_EQ(resolved(bookmark_, clip_), renamed);
}

TEST_F(FileBookmarkTest, SizeAndTimeAloneAreNoIdentity) {
    const QString copy = at(u"day1/copy.mov"_s);
    ASSERT_TRUE(QFile::copy(clip_, copy));
    for (const QString& file : {clip_, copy})
        setTime(file, QDateTime(QDate(2026, 3, 1), QTime(9, 0)));
    bookmark_ = createFileBookmark(clip_);
    ASSERT_TRUE(QFile::remove(clip_));
    EXPECT_EQ(resolved(bookmark_, clip_), QString());
}

TEST_F(FileBookmarkTest, ForeignCutOrDamagedDataFallsBackToTheStoredPath) {
    const QString other = at(u"day2/other.mov"_s);
    write(other, "other");
    EXPECT_EQ(resolved({}, other), other);
    EXPECT_EQ(resolved("book\0\0\0\0mark", other), other);
    for (qsizetype length = 0; length < bookmark_.size(); ++length)
        EXPECT_EQ(resolved(bookmark_.left(length), other), other) << "cut to " << length;
    QByteArray relative = bookmark_;
    relative.replace(folder_.path().toUtf8().left(4), "./.."); // no absolute path any more
    EXPECT_EQ(resolved(relative, other), other);
    EXPECT_EQ(resolved({}, at(u"none.mov"_s)), QString());
    EXPECT_EQ(resolved({}, {}), QString());
}

TEST_F(FileBookmarkTest, BookmarkOfAnotherMachineFallsBackToTheStoredPathOnlyAtLast) {
    const QString stored = at(u"day2/copy.mov"_s);
    ASSERT_TRUE(QFile::remove(clip_));
    write(stored, "copied from elsewhere");
    EXPECT_EQ(resolved(bookmark_, stored), stored);
    ASSERT_TRUE(QFile::remove(stored));
    EXPECT_EQ(resolved(bookmark_, stored), QString());
}

TEST_F(FileBookmarkTest, NoFileGivesNoBookmark) {
    EXPECT_TRUE(createFileBookmark(at(u"none.mov"_s)).isNull());
    EXPECT_TRUE(createFileBookmark({}).isNull());
}

} // namespace
} // namespace daylark
