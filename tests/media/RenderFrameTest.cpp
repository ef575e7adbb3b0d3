#include "media/decode/FrameReader.h"

#include "support/MovieMaker.h"
#include "picture/PictureRenderer.h"

#include <QPainter>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace daylark {
namespace {

const QColor patches[] = {QColor(255, 0, 0),     QColor(0, 255, 0), QColor(0, 0, 255),
                          QColor(255, 255, 255), QColor(0, 0, 0),   QColor(120, 90, 200)};

struct Storage {
    const char* name;
    const char* extension;
    const char* encoder;
    const char* pixelFormat;
    QSize size;
    int tolerance;
    std::map<QString, QString> options = {};
};

const Storage storages[] = {
    {"StandardMatrix", "mov", "libx264", "yuv444p", {240, 120}, 4, {{u"qp"_qs, u"1"_qs}}},
    {"HighDefinitionMatrix", "mov", "libx264", "yuv420p", {960, 720}, 4, {{u"qp"_qs, u"1"_qs}}},
    {"TenBit", "mov", "prores_ks", "yuv422p10le", {240, 120}, 5},
    {"Rgb", "mov", "png", "rgb24", {240, 120}, 0},
    {"Alpha", "mov", "png", "rgba", {240, 120}, 0},
    {"FullRange", "avi", "mjpeg", "yuvj444p", {240, 120}, 8},
};

class RenderFrameTest : public ::testing::TestWithParam<Storage> {};

TEST_P(RenderFrameTest, ColoursComeBackAsPainted) {
    const Storage& storage = GetParam();
    const QTemporaryDir folder;
    MovieSpec spec;
    spec.path = folder.filePath(QStringLiteral("m.") + QLatin1String(storage.extension));
    spec.encoder = QString::fromLatin1(storage.encoder);
    spec.pixelFormat = QString::fromLatin1(storage.pixelFormat);
    spec.encoderOptions = storage.options;
    spec.size = storage.size;
    spec.frames = 2;
    spec.bFrames = 0;
    spec.barCode = false;
    spec.paint = [&](QPainter& painter, int) {
        for (int i = 0; i < 6; ++i)
            painter.fillRect(QRect(i * spec.size.width() / 6, 0, spec.size.width() / 6, spec.size.height()),
                             patches[i]);
    };
    const Result<void> made = makeMovie(spec);
    ASSERT_TRUE(made) << made.error().text.toStdString();
    const auto reader = FrameReader::open(spec.path);
    ASSERT_TRUE(reader);
    const Result<VideoFrame> frame = (*reader)->read(1);
    ASSERT_TRUE(frame);
    EXPECT_EQ(frame->displaySize(), spec.size);
    EXPECT_GE(frame->byteCount(), spec.size.width() * spec.size.height());
    for (const QSize size : {QSize(), QSize(121, 67), QSize(33, 20)})
        for (const bool deep : {false, true}) {
            const QImage picture = renderFrame(*frame, size, deep);
            ASSERT_EQ(picture.size(), size.isEmpty() ? spec.size : size);
            ASSERT_EQ(picture.format(), deep ? QImage::Format_RGBX64 : QImage::Format_RGB32);
            const int tolerance = storage.tolerance;
            for (int i = 0; i < 6; ++i) {
                const QColor seen =
                    picture.pixelColor((2 * i + 1) * picture.width() / 12, picture.height() / 2);
                EXPECT_NEAR(seen.red(), patches[i].red(), tolerance) << i << deep;
                EXPECT_NEAR(seen.green(), patches[i].green(), tolerance) << i << deep;
                EXPECT_NEAR(seen.blue(), patches[i].blue(), tolerance) << i << deep;
                EXPECT_EQ(seen.alpha(), 255);
            }
        }
}

INSTANTIATE_TEST_SUITE_P(Storages, RenderFrameTest, ::testing::ValuesIn(storages),
                         [](const auto& tested) { return std::string(tested.param.name); });

/// Matroska keeps it beside the picture, as a stream of its own.
TEST(AlphaBesideThePictureTest, LiesOverBlack) {
    const QTemporaryDir folder;
    MovieSpec spec;
    spec.path = folder.filePath(QStringLiteral("alpha.webm"));
    spec.encoder = QStringLiteral("libvpx-vp9");
    spec.encoderOptions = {{QStringLiteral("deadline"), QStringLiteral("realtime")},
                           {QStringLiteral("crf"), QStringLiteral("4")}};
    spec.pixelFormat = QStringLiteral("yuva420p");
    spec.size = QSize(240, 120);
    spec.frames = 20;
    spec.groupSize = 8;
    spec.bFrames = 0;
    spec.paint = [&](QPainter& painter, int number) {
        painter.fillRect(QRect(QPoint(), spec.size), QColor(200, 200, 200, number % 2 ? 128 : 255));
    };
    const Result<void> made = makeMovie(spec);
    ASSERT_TRUE(made) << made.error().text.toStdString();
    const auto reader = FrameReader::open(spec.path);
    ASSERT_TRUE(reader);
    for (const int n : {0, 1, 2, 3, 17, 6, 19, 12}) {
        const Result<VideoFrame> frame = (*reader)->read(n);
        ASSERT_TRUE(frame);
        EXPECT_NEAR(renderFrame(*frame).pixelColor(120, 90).green(), n % 2 ? 200 : 100, 6) << n;
    }
}

TEST(LinearPictureTest, IsShownThroughADisplaysTransferCurve) {
    if (QStandardPaths::findExecutable(u"ffmpeg"_qs).isEmpty()) GTEST_SKIP() << "no ffmpeg program";
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"half.exr"_qs);
    ASSERT_EQ(QProcess::execute(u"ffmpeg"_qs, {u"-v"_qs, u"error"_qs, u"-f"_qs, u"lavfi"_qs, u"-i"_qs,
                                               u"color=c=0x808080:s=64x48:d=0.04,format=gbrpf32le"_qs,
                                               u"-frames:v"_qs, u"1"_qs, path}),
              0);
    const auto reader = FrameReader::open(path);
    ASSERT_TRUE(reader);
    const Result<VideoFrame> frame = (*reader)->read(0);
    ASSERT_TRUE(frame);
    EXPECT_NEAR(renderFrame(*frame).pixelColor(30, 20).green(), 188, 1) << "half the light, as sRGB";
}

} // namespace
} // namespace daylark
