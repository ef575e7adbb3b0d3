#include "platform/desktop/FolderIcon.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace daylark {
namespace {

using namespace Qt::StringLiterals;

/// The desktop's tool is a script that notes what it is told.
class FolderIconTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(QDir().mkpath(bundle_));
        QFile tool(folder_.filePath(u"gio"_s));
        ASSERT_TRUE(tool.open(QIODevice::WriteOnly));
        tool.write("#!/bin/sh\nfor word; do echo \"$word\"; done >> \"$(dirname \"$0\")/told\"\n");
        tool.close();
        ASSERT_TRUE(tool.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        qputenv("PATH", folder_.path().toUtf8() + ':' + path_);
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    }
    void TearDown() override {
        qputenv("PATH", path_);
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    }
    QByteArray content(const QString& path) const {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    QByteArray told() const { return content(folder_.filePath(u"told"_s)); }

    const QByteArray path_ = qgetenv("PATH");
    QTemporaryDir folder_;
    const QString bundle_ = folder_.filePath(u"a #1 ü.dlm"_s);
};

TEST_F(FolderIconTest, APictureTravelsInTheFolderAndIsToldToTheDesktop) {
    setFolderIcon(bundle_, "picture");
    EXPECT_EQ(content(bundle_ + u"/.icon.png"_s), "picture");
    EXPECT_EQ(content(bundle_ + u"/.directory"_s), "[Desktop Entry]\nIcon=./.icon.png\n");
    EXPECT_EQ(told(), "set\n" + bundle_.toUtf8() + "\nmetadata::custom-icon\nfile://" + folder_.path().toUtf8() +
                          "/a%20%231%20%C3%BC.dlm/.icon.png\n");
}

TEST_F(FolderIconTest, ANameLeavesTheFolderEmptyAndWithoutASessionNobodyIsTold) {
    setIconName(bundle_, u"bundle"_s);
    EXPECT_EQ(told(), "set\n" + bundle_.toUtf8() + "\nmetadata::custom-icon-name\nbundle\n");
    EXPECT_TRUE(QDir(bundle_).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
    ASSERT_TRUE(QFile::remove(folder_.filePath(u"told"_s)));
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    qputenv("XDG_RUNTIME_DIR", folder_.path().toUtf8());
    setIconName(bundle_, u"bundle"_s);
    EXPECT_TRUE(told().isNull());
}

} // namespace
} // namespace daylark
