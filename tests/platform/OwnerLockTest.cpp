#include "platform/lock/OwnerLock.h"

#include "support/ChildProcess.h"

#include <QDir>
#include <QFile>
#include <QSysInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace daylark {
namespace {

using namespace Qt::StringLiterals;

class OwnerLockTest : public ::testing::Test {
protected:
    void write(const QByteArray& owner) const {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(owner) == owner.size());
    }
    [[nodiscard]] QByteArray owner() const {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    QTemporaryDir folder;
    const QString path = folder.filePath(u"session.owner"_s);
};

TEST_F(OwnerLockTest, OneAtATimeAndFreeAfterwards) {
    {
        const OwnerLock::Taken first = OwnerLock::take(path);
        ASSERT_TRUE(first.lock);
        EXPECT_EQ(QFile::permissions(path) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
        const OwnerLock::Taken second = OwnerLock::take(path);
        EXPECT_FALSE(second.lock);
        EXPECT_EQ(second.holder, QSysInfo::machineHostName());
    }
    EXPECT_FALSE(QFile::exists(path));
    EXPECT_TRUE(OwnerLock::take(path).lock);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 0) << "nothing is left beside it";
}

TEST_F(OwnerLockTest, ADeadOwnerIsKnownByHostProcessAndBeginning) {
    test::ChildProcess killed([this] {
        const OwnerLock::Taken taken = OwnerLock::take(path);
        ::_exit(taken.lock ? 0 : 1); // without the destructor
        return 0;
    });
    ASSERT_EQ(killed.wait(), 0);
    const QByteArray dead = owner();
    ASSERT_FALSE(dead.isEmpty());
    {
        const OwnerLock::Taken taken = OwnerLock::take(path);
        EXPECT_TRUE(taken.lock) << "its process is gone";
        // Our own number, but from another time: the number was given again.
        QByteArray earlier = owner();
        QList<QByteArray> lines = earlier.split('\n');
        lines[3] = "1";
        write(lines.join('\n'));
    }
    EXPECT_TRUE(OwnerLock::take(path).lock);
    write("half a name"); // its writer was killed
    EXPECT_TRUE(OwnerLock::take(path).lock);
}

TEST_F(OwnerLockTest, OneOnAnotherHostCountsAsAlive) {
    const QByteArray far = "some-other-host\nboot\n1\n1\n";
    write(far);
    const OwnerLock::Taken taken = OwnerLock::take(path);
    EXPECT_FALSE(taken.lock);
    EXPECT_EQ(taken.holder, u"some-other-host"_s);
    EXPECT_EQ(owner(), far) << "left as it was";
}

TEST_F(OwnerLockTest, WhereNoFileCanBeMadeNobodyHoldsIt) {
    const OwnerLock::Taken taken = OwnerLock::take(folder.filePath(u"gone/session.owner"_s));
    EXPECT_FALSE(taken.lock);
    EXPECT_TRUE(taken.holder.isEmpty());
}

} // namespace
} // namespace daylark
