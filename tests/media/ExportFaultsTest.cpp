#include "media/encode/MovieExport.h"
#include "media/encode/SoundExport.h"

#include "support/FfmpegTest.h"
#include "support/SmallDisk.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>

#include <chrono>
#include <thread>

namespace daylark {
namespace {

constexpr auto older = "what stood there before";

/// Sound and movies that are saved by a process which is killed, or onto a disk that is full: what stood under the name stays
/// until all of the new file can take its place.
class ExportFaultsTest : public test::FfmpegTest {
protected:
    using Save = std::function<bool(const QString& path)>;
    struct Case {
        const char* name;
        Save save;
    };

    void SetUp() override {
        FfmpegTest::SetUp();
        if (IsSkipped()) return;
        QDir(folder.path()).mkdir(u"out"_qs);
        sound = made("sound.wav", {}, {u"-c:a"_qs, u"pcm_s24le"_qs, u"-ac"_qs, u"6"_qs});
        quickTime = made("movie.mov", pictures, {u"-c:v"_qs, u"rawvideo"_qs, u"-c:a"_qs, u"pcm_s24le"_qs});
        other = made("movie.avi", pictures, {u"-c:v"_qs, u"rawvideo"_qs, u"-c:a"_qs, u"pcm_s16le"_qs});
        const auto movie = [](const QString& from, const MovieSound& heard) {
            return [=](const QString& path) { return bool(saveMovieWithSound(from, heard, path)); };
        };
        cases = {{"saved.wav", [this](const QString& path) { return bool(saveSoundAsWave(quickTime, {}, path)); }},
                 {"saved.mov", movie(quickTime, {})},
                 {"added.mov", movie(quickTime, added(sound))},
                 {"saved.avi", movie(other, {})},
                 {"added.avi", movie(other, added(sound))}};
    }
    QString made(const char* name, const QStringList& picture, const QStringList& coding) {
        const QString path = folder.filePath(QLatin1String(name));
        EXPECT_TRUE(ffmpeg(picture + QStringList{u"-f"_qs, u"lavfi"_qs, u"-i"_qs, u"anoisesrc=r=96000:d=6:seed=5"_qs} + coding +
                           QStringList{path}));
        return path;
    }
    [[nodiscard]] QString out(const QString& name) const { return folder.filePath(u"out/"_qs + name); }
    static QByteArray bytesOf(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("can't be read");
    }
    static void putOlder(const QString& path) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(older) > 0);
    }
    [[nodiscard]] QStringList outNames(QDir::Filters filters = QDir::Files | QDir::Hidden) const {
        return QDir(out({})).entryList(filters);
    }

    const QStringList pictures{u"-f"_qs, u"lavfi"_qs, u"-i"_qs, u"testsrc2=s=480x270:r=25:d=6,format=uyvy422"_qs};
    QString sound, quickTime, other;
    std::vector<Case> cases;
};

TEST_F(ExportFaultsTest, KilledAtAnyMomentItIsTheOlderFileOrAllOfTheNew) {
    const QByteArray sources = bytesOf(quickTime) + bytesOf(other) + bytesOf(sound);
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        const QString path = out(QLatin1String(each.name));
        QElapsedTimer whole;
        whole.start();
        ASSERT_TRUE(each.save(path));
        const auto time = std::chrono::microseconds(whole.nsecsElapsed() / 1000);
        const QByteArray complete = bytesOf(path);
        ASSERT_GT(complete.size(), 1 << 20);
        constexpr int moments = 7;
        for (int moment = 0; moment < moments; ++moment) {
            putOlder(path);
            {
                test::ChildProcess saving([&] { return each.save(path) ? 0 : 1; });
                std::this_thread::sleep_for(time * (moment + 1) / moments);
            } // killed
            const QByteArray found = bytesOf(path);
            EXPECT_TRUE(found == older || found == complete) << found.size() << " of " << complete.size() << " bytes";
            EXPECT_EQ(outNames(QDir::Files), QStringList{QLatin1String(each.name)}) << "nothing else that a person sees";
        }
        EXPECT_TRUE(each.save(path)) << "what was left doesn't stand in the way";
        EXPECT_EQ(bytesOf(path), complete);
        EXPECT_EQ(outNames(), QStringList{QLatin1String(each.name)}) << "and is gone";
        QFile::remove(path);
    }
    EXPECT_TRUE(bytesOf(quickTime) + bytesOf(other) + bytesOf(sound) == sources);
}

TEST_F(ExportFaultsTest, OnAFullDiskTheOlderFileStaysAlone) {
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        const QString path = out(QLatin1String(each.name));
        for (const qint64 room : {1 << 16, 1 << 19, 3 << 19}) {
            const auto answer = test::runOnSmallDisk(out({}), room, [&] {
                putOlder(path);
                EXPECT_FALSE(each.save(path));
                EXPECT_EQ(bytesOf(path), older);
                EXPECT_EQ(outNames(), QStringList{QLatin1String(each.name)});
                return HasFailure() ? 1 : 0;
            });
            if (!answer) GTEST_SKIP() << "no disk can be made here";
            EXPECT_EQ(*answer, 0) << room << " bytes";
        }
    }
}

} // namespace
} // namespace daylark
