#include "support/MovieMaker.h"
#include "support/Places.h"

#include <gtest/gtest.h>

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

namespace daylark {
namespace {

class AudioTool : public ::testing::Test {
protected:
    int run(const QStringList& arguments) {
        QProcess process;
        process.start(programFolder() + u"/daylark-tool"_qs, arguments);
        process.waitForFinished(-1);
        said = QJsonDocument::fromJson(process.readAllStandardOutput()).object();
        complaint = process.readAllStandardError();
        return process.exitCode();
    }
    QString movie(const char* name, bool sound) const {
        MovieSpec spec;
        spec.path = folder.filePath(QLatin1String(name));
        spec.frames = 50;
        spec.rateNum = 25;
        spec.sound = sound;
        EXPECT_TRUE(makeMovie(spec));
        return spec.path;
    }
    QTemporaryDir folder;
    QJsonObject said;
    QByteArray complaint;
};

TEST_F(AudioTool, WritesTheMoviesSoundAndSaysWhatItIs) {
    const QString wave = folder.filePath(u"out.wav"_qs);
    ASSERT_EQ(run({u"audio"_qs, movie("heard.mov", true), wave}), 0) << complaint.constData();
    EXPECT_EQ(said[u"samples"].toInt(), 2 * 48000);
    EXPECT_EQ(said[u"rate"].toInt(), 48000);
    EXPECT_EQ(said[u"channels"].toInt(), 2);
    EXPECT_EQ(said[u"copiedBytes"].toInteger(), QFileInfo(wave).size());
    EXPECT_TRUE(said[u"failed"].isArray() && said[u"failed"].toArray().isEmpty());

    const QString silent = movie("silent.mov", false), other = folder.filePath(u"other.wav"_qs);
    EXPECT_EQ(run({u"audio"_qs, silent, other}), 1);
    EXPECT_EQ(said[u"failed"][0][u"path"].toString(), silent);
    EXPECT_FALSE(said[u"failed"][0][u"reason"].toString().isEmpty());
    EXPECT_EQ(complaint.count('\n'), 1);
    EXPECT_FALSE(QFileInfo::exists(other));
}

TEST_F(AudioTool, APortIsAskedForByOneProtocolAndItsNumber) {
    for (const QStringList& wrong : {QStringList{}, QStringList{u"--tcp"_qs, u"9000"_qs, u"--udp"_qs, u"9000"_qs},
                                     QStringList{u"--tcp"_qs, u"65536"_qs}, QStringList{u"--udp"_qs, u"0"_qs}})
        EXPECT_EQ(run(QStringList{u"portmap"_qs} + wrong), 2) << wrong.join(u' ').toStdString();
}

} // namespace
} // namespace daylark
