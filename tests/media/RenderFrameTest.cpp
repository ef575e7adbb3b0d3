#include "media/decode/FrameReader.h"

#include "media/container/MediaFile.h"
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

/// Puts the pictures of one file beside those of another, as its alpha.
bool joinAsAlpha(const QString& colour, const QString& alpha, const QString& joined) {
    const Result<MediaFile> pictures = MediaFile::open(colour, nullptr), beside = MediaFile::open(alpha, nullptr);
    AVFormatContext* output = nullptr;
    if (!pictures || !beside || avformat_alloc_output_context2(&output, nullptr, nullptr, joined.toUtf8().constData()) < 0)
        return false;
    AVStream* stream = avformat_new_stream(output, nullptr);
    avcodec_parameters_copy(stream->codecpar, pictures->video()->codecpar);
    stream->time_base = pictures->video()->time_base;
    bool good = avio_open(&output->pb, output->url, AVIO_FLAG_WRITE) >= 0 && avformat_write_header(output, nullptr) >= 0;
    const av::PacketPtr packet(av_packet_alloc()), its(av_packet_alloc());
    while (good && pictures->readPacket(packet.get()) >= 0 && beside->readPacket(its.get()) >= 0) {
        constexpr size_t head = 8; // which addition it is: the first
        uint8_t* data = av_packet_new_side_data(packet.get(), AV_PKT_DATA_MATROSKA_BLOCKADDITIONAL, head + size_t(its->size));
        std::fill_n(data, head, uint8_t(0));
        data[head - 1] = 1;
        std::copy_n(its->data, its->size, data + head);
        packet->stream_index = 0;
        av_packet_rescale_ts(packet.get(), pictures->video()->time_base, stream->time_base);
        good = av_interleaved_write_frame(output, packet.get()) >= 0;
    }
    good = good && av_write_trailer(output) >= 0;
    avio_closep(&output->pb);
    avformat_free_context(output);
    return good;
}

TEST(AlphaBesideThePictureTest, OfAv1LiesOverBlackToo) {
    const QTemporaryDir folder;
    MovieSpec spec;
    spec.encoder = QStringLiteral("libsvtav1");
    spec.encoderOptions = {{QStringLiteral("preset"), QStringLiteral("12")}, {QStringLiteral("crf"), QStringLiteral("10")}};
    spec.size = QSize(240, 120);
    spec.frames = 20;
    spec.groupSize = 8;
    spec.bFrames = 0;
    spec.barCode = false;
    const auto painted = [&](const QString& name, const std::function<int(int)>& grey) {
        spec.path = folder.filePath(name);
        spec.paint = [&spec, grey](QPainter& painter, int number) {
            const int level = grey(number);
            painter.fillRect(QRect(QPoint(), spec.size), QColor(level, level, level));
        };
        return bool(makeMovie(spec));
    };
    // What is painted is coded from 16 to 235; alpha is the coded number itself.
    const auto levelOf = [](int alpha) { return (alpha - 16) * 255 / 219; };
    ASSERT_TRUE(painted(QStringLiteral("colour.webm"), [](int) { return 200; }));
    ASSERT_TRUE(painted(QStringLiteral("alpha.webm"), [&](int number) { return levelOf(number < 10 ? 128 : 64); }));
    const QString path = folder.filePath(QStringLiteral("both.webm"));
    ASSERT_TRUE(joinAsAlpha(folder.filePath(QStringLiteral("colour.webm")), folder.filePath(QStringLiteral("alpha.webm")), path));
    const auto reader = FrameReader::open(path);
    ASSERT_TRUE(reader);
    ASSERT_EQ((*reader)->index().count(), 20);
    for (const int n : {0, 1, 2, 17, 6, 19, 12}) {
        const Result<VideoFrame> frame = (*reader)->read(n);
        ASSERT_TRUE(frame);
        EXPECT_NEAR(renderFrame(*frame).pixelColor(120, 90).green(), n + 1 < 10 ? 100 : 50, 6) << n;
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
