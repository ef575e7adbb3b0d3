#include "media/FrameReader.h"

#include "demo/MovieMaker.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <chrono>
#include <random>
#include <thread>

namespace daylark {
namespace {

struct Format {
    const char* name;
    const char* extension;
    const char* encoder;
    const char* pixelFormat;
    int rateNum, rateDen, group, bFrames;
    std::map<QString, QString> options = {};
    int frames = 72;
};

std::ostream& operator<<(std::ostream& out, const Format& format) {
    return out << format.name;
}

const Format formats[] = {
    {"H264Mov24", "mov", "libx264", "yuv420p", 24, 1, 12, 2},
    {"H264Mp4Film", "mp4", "libx264", "yuv420p", 24000, 1001, 30, 3},
    {"H264LongGroup", "mov", "libx264", "yuv420p", 25, 1, 240, 2, {}, 300},
    {"H264OpenGroups",
     "mp4",
     "libx264",
     "yuv420p",
     25,
     1,
     10,
     3,
     {{u"x264-params"_qs, u"open-gop=1:scenecut=0"_qs}}},
    {"H264Pyramid",
     "mkv",
     "libx264",
     "yuv420p",
     30000,
     1001,
     24,
     7,
     {{u"x264-params"_qs, u"b-adapt=0:b-pyramid=normal"_qs}}},
    {"H264TenBit", "mov", "libx264", "yuv422p10le", 24, 1, 12, 2},
    {"H264Transport", "ts", "libx264", "yuv420p", 25, 1, 12, 2},
    {"H264TransportOpen",
     "m2ts",
     "libx264",
     "yuv420p",
     24000,
     1001,
     12,
     3,
     {{u"x264-params"_qs, u"open-gop=1"_qs}}},
    {"H264Avi", "avi", "libx264", "yuv420p", 25, 1, 12, 2},
    {"H264Flash", "flv", "libx264", "yuv420p", 30, 1, 12, 2},
    {"H264IntraRefresh", "mp4", "libx264", "yuv420p", 25, 1, 20, 0, {{u"intra-refresh"_qs, u"1"_qs}}},
    {"HevcMp4",
     "mp4",
     "libx265",
     "yuv420p",
     24,
     1,
     12,
     3,
     {{u"preset"_qs, u"ultrafast"_qs}, {u"x265-params"_qs, u"log-level=none:open-gop=1"_qs}}},
    {"Vp9Webm",
     "webm",
     "libvpx-vp9",
     "yuv420p",
     24,
     1,
     16,
     0,
     {{u"deadline"_qs, u"realtime"_qs}, {u"cpu-used"_qs, u"8"_qs}}},
    {"Vp8Webm",
     "webm",
     "libvpx",
     "yuv420p",
     30,
     1,
     16,
     0,
     {{u"auto-alt-ref"_qs, u"1"_qs}, {u"lag-in-frames"_qs, u"12"_qs}, {u"cpu-used"_qs, u"8"_qs}}},
    {"ProRes422", "mov", "prores_ks", "yuv422p10le", 24000, 1001, 1, 0},
    {"ProRes4444", "mov", "prores_ks", "yuva444p10le", 24, 1, 1, 0, {{u"profile"_qs, u"4444"_qs}}},
    {"DnxhrMov", "mov", "dnxhd", "yuv422p", 25, 1, 1, 0, {{u"profile"_qs, u"dnxhr_sq"_qs}}, 30},
    {"DnxhrMxf", "mxf", "dnxhd", "yuv422p", 25, 1, 1, 0, {{u"profile"_qs, u"dnxhr_sq"_qs}}, 30},
    {"MotionJpegMov", "mov", "mjpeg", "yuvj420p", 24, 1, 1, 0},
    {"MotionJpegAvi", "avi", "mjpeg", "yuvj420p", 24000, 1001, 1, 0},
    {"PngMov", "mov", "png", "rgb24", 24, 1, 1, 0},
    {"Mpeg4Mov", "mov", "mpeg4", "yuv420p", 25, 1, 12, 2},
    {"Mpeg4Avi", "avi", "mpeg4", "yuv420p", 25, 1, 12, 2},
    {"Mpeg2Program", "mpg", "mpeg2video", "yuv420p", 25, 1, 12, 2},
    {"Mpeg2Transport", "ts", "mpeg2video", "yuv420p", 30000, 1001, 15, 2},
    {"Mpeg2Mxf", "mxf", "mpeg2video", "yuv420p", 25, 1, 12, 2},
    {"Mpeg1Program", "mpg", "mpeg1video", "yuv420p", 25, 1, 12, 2},
    {"AnimatedGif", "gif", "gif", "rgb8", 25, 1, 1, 0, {}, 20},
    {"WindowsMedia", "wmv", "wmv2", "yuv420p", 25, 1, 12, 0},
    {"Theora", "ogv", "libtheora", "yuv420p", 24, 1, 12, 0},
};

class FrameTruthTest : public ::testing::TestWithParam<Format> {
protected:
    static MovieSpec specOf(const Format& format, const QString& path) {
        MovieSpec spec;
        spec.path = path;
        spec.encoder = QString::fromLatin1(format.encoder);
        spec.pixelFormat = QString::fromLatin1(format.pixelFormat);
        spec.size = QSize(256, 144);
        spec.rateNum = format.rateNum;
        spec.rateDen = format.rateDen;
        spec.groupSize = format.group;
        spec.bFrames = format.bFrames;
        spec.frames = format.frames;
        spec.encoderOptions = format.options;
        return spec;
    }
};

int pictureNumber(const Result<VideoFrame>& frame) {
    return frame ? readBarCode(renderFrame(*frame)).value_or(-1) : -2;
}

TEST_P(FrameTruthTest, EveryFrameAndEveryJumpShowsItsOwnPicture) {
    const QTemporaryDir folder;
    const MovieSpec spec =
        specOf(GetParam(), folder.filePath(QStringLiteral("movie.") + QLatin1String(GetParam().extension)));
    const Result<void> made = makeMovie(spec);
    ASSERT_TRUE(made) << made.error().text.toStdString();
    const auto reader = FrameReader::open(spec.path);
    ASSERT_TRUE(reader) << reader.error().text.toStdString();
    const SampleIndex& index = (*reader)->index();
    ASSERT_EQ(index.count(), spec.frames);
    EXPECT_EQ(qint64(index.timeScale) * spec.rateDen, qint64(index.step) * spec.rateNum);
    EXPECT_EQ(index.samples.back().ticks, qint64(index.step) * (spec.frames - 1));
    EXPECT_EQ(index.endTicks, qint64(index.step) * spec.frames);
    for (qint64 n = 0; n < index.count(); ++n)
        ASSERT_EQ(pictureNumber((*reader)->read(n)), n + 1) << "forwards";
    std::mt19937 random(7);
    for (int jump = 0; jump < 60; ++jump) {
        const qint64 n = random() % quint64(index.count());
        ASSERT_EQ(pictureNumber((*reader)->read(n)), n + 1) << "jump " << jump;
    }
    for (qint64 n = index.count() - 1; n >= index.count() - 14; --n)
        ASSERT_EQ(pictureNumber((*reader)->read(n)), n + 1) << "backwards";
}

/// Whatever a read was doing when it was given up, the next ones show their own pictures.
TEST(FrameReaderTest, ReadsGivenUpAtAnyMomentLeaveLaterOnesExact) {
    const QTemporaryDir folder;
    for (const char* extension : {"mov", "mkv", "ts"}) {
        MovieSpec spec;
        spec.path = folder.filePath(QStringLiteral("movie.") + QLatin1String(extension));
        spec.size = QSize(256, 144);
        spec.frames = 120;
        spec.groupSize = 40;
        ASSERT_TRUE(makeMovie(spec));
        const auto reader = FrameReader::open(spec.path);
        ASSERT_TRUE(reader);
        std::mt19937 random(11);
        int givenUp = 0;
        for (int round = 0; round < 60; ++round) {
            CancelFlag cancel = false;
            const auto pause = std::chrono::microseconds(random() % 6000);
            std::thread hand([&] {
                std::this_thread::sleep_for(pause);
                cancel = true;
            });
            const qint64 n = random() % quint64(spec.frames - 1);
            givenUp += !(*reader)->read(n, &cancel);
            hand.join();
            const qint64 next = round % 2 ? qint64(random() % quint64(spec.frames)) : n + 1;
            ASSERT_EQ(pictureNumber((*reader)->read(next)), next + 1) << extension << " round " << round;
            ASSERT_EQ(pictureNumber((*reader)->read(n)), n + 1) << extension << " round " << round;
        }
        EXPECT_GT(givenUp, 0);
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, FrameTruthTest, ::testing::ValuesIn(formats),
                         [](const auto& tested) { return std::string(tested.param.name); });

} // namespace
} // namespace daylark
