#pragma once

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace daylark {

/// A folder of files that a test reads whole, changes and writes anew.
class ChangedFilesTest : public ::testing::Test {
protected:
    static QByteArray contents(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    /// The path of the new file.
    QString written(const QByteArray& bytes, const QString& name) const {
        const QString path = folder.filePath(name);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        return path;
    }

    QTemporaryDir folder;
};

} // namespace daylark
