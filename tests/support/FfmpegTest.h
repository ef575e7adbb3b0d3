#pragma once

#include "media/sound/MovieSound.h"
#include "platform/FileBookmark.h"

#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace daylark::test {

/// For tests whose media the ffmpeg program makes in a folder of their own, and reads back with ffprobe; skipped where it isn't
/// installed.
class FfmpegTest : public ::testing::Test {
protected:
    void SetUp() override {
        if (QStandardPaths::findExecutable(QStringLiteral("ffmpeg")).isEmpty()) GTEST_SKIP() << "no ffmpeg program";
    }
    static bool ffmpeg(const QStringList& arguments) {
        const QStringList always{QStringLiteral("-y"), QStringLiteral("-v"), QStringLiteral("error")};
        return QProcess::execute(QStringLiteral("ffmpeg"), always + arguments) == 0;
    }
    static QByteArray answerOf(const char* program, const QStringList& arguments) {
        QProcess process;
        process.start(QLatin1String(program), arguments);
        process.waitForFinished(60000);
        return process.readAllStandardOutput();
    }
    /// The file in place of a movie's own sound.
    static MovieSound added(const QString& path) { return {MovieSound::Kind::added, {}, createFileBookmark(path)}; }

    QTemporaryDir folder;
};

} // namespace daylark::test
