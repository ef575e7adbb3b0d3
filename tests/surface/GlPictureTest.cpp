#include "support/MadeFrame.h"

#include "media/decode/VideoFrameData.h"
#include "picture/PicturePlanes.h"
#include "picture/PictureRenderer.h"
#include "picture/colour/ColourConfig.h"
#include "picture/gl/GlPictureContext.h"
#include "picture/gl/GlPictureRenderer.h"

#include <QElapsedTimer>
#include <QFloat16>

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include <gtest/gtest.h>

namespace daylark {

namespace {

template<class Function>
Function glFunction(const char* name) {
    return reinterpret_cast<Function>(GlPictureContext::resolver()(name));
}

/// Draws into an image, on the graphics device where there is one.
class GlBench {
public:
    GlBench() {
        auto context = GlPictureContext::create(GlPictureContext::Where::device);
        if (!context) {
            problem = context.error().text;
            return;
        }
        context_ = std::move(*context);
        auto renderer = GlPictureRenderer::create(GlPictureContext::resolver());
        if (renderer)
            renderer_ = std::move(*renderer);
        else
            problem = renderer.error().text;
    }

    [[nodiscard]] QImage render(const VideoFrame& frame, const PictureRequest& request) {
        const QRect visible = request.visible.isNull() ? QRect({}, request.size) : request.visible;
        // Not in the framebuffer's corner, so that a place counted from the wrong side is seen.
        const QSize target = visible.size() + QSize(5, 9);
        const QPoint at(2, 3);
        GLuint texture = 0, buffer = 0;
        glFunction<void (*)(GLsizei, GLuint*)>("glGenTextures")(1, &texture);
        glFunction<void (*)(GLenum, GLuint)>("glBindTexture")(GL_TEXTURE_2D, texture);
        glFunction<void (*)(GLenum, GLint, GLint, GLsizei, GLsizei, GLint, GLenum, GLenum, const void*)>(
            "glTexImage2D")(GL_TEXTURE_2D, 0, GL_RGBA8, target.width(), target.height(), 0, GL_RGBA,
                            GL_UNSIGNED_BYTE, nullptr);
        glFunction<void (*)(GLsizei, GLuint*)>("glGenFramebuffers")(1, &buffer);
        glFunction<void (*)(GLenum, GLuint)>("glBindFramebuffer")(GL_FRAMEBUFFER, buffer);
        glFunction<void (*)(GLenum, GLenum, GLenum, GLuint, GLint)>("glFramebufferTexture2D")(
            GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, texture, 0);
        const Result<void> drawn = renderer_->draw(planesOf(frame), request, target, at);
        EXPECT_TRUE(drawn);
        QImage image(target, QImage::Format_RGBX8888);
        glFunction<void (*)(GLint, GLint, GLsizei, GLsizei, GLenum, GLenum, void*)>("glReadPixels")(
            0, 0, target.width(), target.height(), GL_RGBA, GL_UNSIGNED_BYTE, image.bits());
        EXPECT_EQ(glFunction<GLenum (*)()>("glGetError")(), GLenum(GL_NO_ERROR));
        glFunction<void (*)(GLsizei, const GLuint*)>("glDeleteFramebuffers")(1, &buffer);
        glFunction<void (*)(GLsizei, const GLuint*)>("glDeleteTextures")(1, &texture);
        return image.mirrored().copy(QRect(at, visible.size())).convertToFormat(QImage::Format_RGB32);
    }

    QString problem;

private:
    std::unique_ptr<GlPictureContext> context_;
    std::unique_ptr<GlPictureRenderer> renderer_;
};

int worstDifference(const QImage& a, const QImage& b) {
    if (a.size() != b.size() || a.isNull()) return 256;
    int worst = 0;
    for (int y = 0; y < a.height(); ++y) {
        const uchar* left = a.constScanLine(y);
        const uchar* right = b.constScanLine(y);
        for (int x = 0; x < a.width() * 4; ++x)
            if (x % 4 != 3) worst = std::max(worst, std::abs(int(left[x]) - int(right[x])));
    }
    return worst;
}

ColourTransform strongGrade() {
    ColourTransform colour;
    colour.gain = {1.2, 0.9, 0.7};
    colour.power = 0.6;
    colour.scale = 1.4;
    colour.map = {{{1.3, -0.2, -0.1, 0.05}, {-0.1, 1.2, -0.1, -0.02}, {-0.3, -0.2, 1.5, 0.1}}};
    return colour;
}

class GlPictureTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() { bench = new GlBench; }
    static void TearDownTestSuite() { delete std::exchange(bench, nullptr); }
    void SetUp() override { ASSERT_TRUE(bench->problem.isEmpty()) << bench->problem.toStdString(); }

    static int difference(const VideoFrame& frame, const PictureRequest& request) {
        return worstDifference(bench->render(frame, request), renderPicture(frame, request));
    }
    static GlBench* bench;
};
GlBench* GlPictureTest::bench = nullptr;

TEST_F(GlPictureTest, EveryFormatIsWithinOneStepOfTheSoftwareRenderer) {
    const std::vector<QByteArray> formats{
        "yuv420p",     "yuvj420p",    "nv12",        "yuv422p",     "uyvy422",      "yuv444p",
        "yuv410p",     "yuv411p",     "yuv440p",     "yuv420p10le", "p010le",       "yuv422p10be",
        "yuv422p12le", "yuv444p12le", "yuv444p16le", "yuva420p",    "yuva444p10le", "yuva444p16le",
        "gbrp",        "gbrp10le",    "gbrap12le",   "gbrp16le",    "rgb24",        "bgra",
        "rgb48be",     "rgba64le",    "gray",        "gray10le",    "gray16le",     "ya8",
        "rgb565le",    "x2rgb10le"};
    PictureRequest smaller, larger, graded;
    smaller.size = {60, 37};
    larger.size = {211, 130};
    larger.mirrorLeftRight = true;
    graded.size = {91, 67};
    graded.colour = strongGrade();
    for (const QByteArray& format : formats) {
        FrameWish wish{format, {91, 67}};
        const VideoFrame frame = madeFrame(wish);
        ASSERT_FALSE(frame.isNull()) << format.constData();
        int worst = 0;
        for (const PictureRequest& request : {smaller, larger, graded})
            worst = std::max(worst, difference(frame, request));
        EXPECT_LE(worst, 1) << format.constData();
        RecordProperty(format.constData(), worst);
    }
}

/// Numbers below black, far above white, and none at all.
VideoFrame floatFrame(bool isHalf, bool grey) {
    auto data = std::make_shared<VideoFrame::Data>();
    data->isHalf = isHalf;
    data->frame.reset(av_frame_alloc());
    AVFrame& frame = *data->frame;
    frame.format = isHalf ? (grey ? AV_PIX_FMT_GRAY16 : AV_PIX_FMT_GBRP16) : grey ? AV_PIX_FMT_GRAYF32 : AV_PIX_FMT_GBRPF32;
    frame.width = 61;
    frame.height = 47;
    frame.color_range = AVCOL_RANGE_JPEG;
    if (av_frame_get_buffer(&frame, 0) < 0) return {};
    for (int plane = 0; plane < (grey ? 1 : 3); ++plane)
        for (int y = 0; y < frame.height; ++y)
            for (int x = 0; x < frame.width; ++x) {
                uchar* at = frame.data[plane] + y * frame.linesize[plane] + qsizetype(x) * (isHalf ? 2 : 4);
                const qfloat16 half(x == 7 ? qInf() : x == 23 ? -qInf() : x == 40 ? qQNaN() : -0.5 + (x + y * plane) * 0.03);
                const float real = float(half);
                isHalf ? std::memcpy(at, &half, 2) : std::memcpy(at, &real, 4);
            }
    return VideoFrame(std::move(data));
}

TEST_F(GlPictureTest, HalvesAndFloatsAreWithinOneStepOfTheSoftwareRenderer) {
    for (const bool isHalf : {true, false})
        for (const bool grey : {true, false}) {
            const VideoFrame frame = floatFrame(isHalf, grey);
            PictureRequest same, graded;
            same.size = {61, 47};
            graded.size = {61, 47};
            graded.colour = strongGrade();
            graded.colour.scale = 0.2; // what was beyond white comes below it
            EXPECT_LE(difference(frame, same), 1) << isHalf << grey;
            EXPECT_LE(difference(frame, graded), 1) << isHalf << grey;
        }
}

TEST_F(GlPictureTest, EveryMatrixRangeAndChromaPositionIsWithinOneStep) {
    PictureRequest request;
    request.size = {140, 90};
    for (const int space : {1, 4, 5, 7, 8, 9, 0})
        for (const bool full : {false, true})
            for (const int location : {0, 1, 2, 3, 4, 5, 6}) {
                const VideoFrame frame = madeFrame({"yuv420p10le", {70, 46}, 0, full, space, location});
                EXPECT_LE(difference(frame, request), 1) << space << ' ' << full << ' ' << location;
            }
}

TEST_F(GlPictureTest, RotatedMirroredAndZoomedPicturesAreWithinOneStep) {
    for (const int rotation : {0, 90, 180, 270})
        for (const int mirror : {0, 1, 2, 3})
            for (const QRect& visible :
                 {QRect(), QRect(0, 0, 1, 1), QRect(37, 20, 50, 41), QRect(119, 99, 1, 1)}) {
                PictureRequest request;
                request.size = {120, 100};
                request.visible = visible;
                request.mirrorLeftRight = mirror & 1;
                request.mirrorUpsideDown = mirror & 2;
                for (const bool stored : {false, true}) {
                    const VideoFrame frame =
                        madeFrame({"yuv422p10le", {101, 67}, rotation, false, 1, 0, stored});
                    EXPECT_LE(difference(frame, request), 1)
                        << rotation << ' ' << stored << ' ' << mirror << ' ' << visible.x();
                }
            }
    // A part of a picture magnified beyond any screen, and a large one made tiny.
    PictureRequest vast;
    vast.size = {4000000, 2500000};
    vast.visible = {2654321, 1234567, 90, 70};
    for (const bool mirrored : {false, true}) {
        vast.mirrorLeftRight = mirrored;
        EXPECT_LE(difference(madeFrame({"yuv420p", {1921, 1079}}), vast), 1) << mirrored;
    }
    PictureRequest tiny;
    tiny.size = {40, 23};
    EXPECT_LE(difference(madeFrame({"yuv420p", {1920, 1080}}), tiny), 1);
}

TEST_F(GlPictureTest, GradesIncludingSenselessOnesAreWithinOneStep) {
    const VideoFrame frame = madeFrame({"yuv444p10le", {64, 48}});
    PictureRequest request;
    request.size = {64, 48};
    for (const double power : {0.1, 0.45, 1.0, 2.2, 10.0, 0.0, -1.0, 4000.0})
        for (const double scale : {0.0, 0.25, 1.0, 4.0}) {
            request.colour = strongGrade();
            request.colour.power = power;
            request.colour.scale = scale;
            EXPECT_LE(difference(frame, request), 1) << power << ' ' << scale;
        }
    request.colour = {};
    request.colour.map = {{{0, 0, 1, 0}, {-1, 0, 0, 1}, {0.5, 0.5, 0, -2}}};
    EXPECT_LE(difference(frame, request), 1) << "a map without a curve";
    request.colour = {};
    request.colour.gain = {0, 1, 3};
    EXPECT_LE(difference(frame, request), 1) << "a curve without a map";
}

TEST_F(GlPictureTest, PicturesOfAnotherSizeAndDepthInTheSameRendererAreTheirOwn) {
    PictureRequest request;
    request.size = {80, 60};
    const VideoFrame large = madeFrame({"yuv420p", {160, 120}}),
                     deep = madeFrame({"yuv420p10le", {160, 120}}), small = madeFrame({"yuva420p", {40, 30}});
    for (const VideoFrame& frame : {large, deep, small, large, small, deep})
        EXPECT_LE(difference(frame, request), 1);
}

TEST_F(GlPictureTest, OneToOneIsUntouched) {
    const QSize size(64, 64);
    const VideoFrame frame = madeFrame({"gbrp", size});
    const PicturePlanes planes = planesOf(frame);
    PictureRequest request;
    request.size = size;
    const QImage image = bench->render(frame, request);
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x) {
            const QColor colour = image.pixelColor(x, y);
            ASSERT_EQ(colour.green(), planes.planes[1].data[y * planes.planes[1].stride + x])
                << x << ' ' << y;
            ASSERT_EQ(colour.red(), planes.planes[0].data[y * planes.planes[0].stride + x]) << x << ' ' << y;
        }
}

TEST_F(GlPictureTest, EveryViewIsWithinOneStepOfTheColourLibraryOnTheProcessor) {
    const auto config = ColourConfig::own();
    ASSERT_TRUE(config);
    const VideoFrame deep = madeFrame({"gbrp16le", {91, 67}, 0, true}), grey = madeFrame({"gray10le", {40, 30}});
    PictureRequest request;
    request.size = {91, 67};
    for (const char* space : {"ACEScg", "ARRI LogC (EI 800)", "sRGB Texture"})
        for (const QString& display : config->displays())
            for (const QString& view : config->views(display)) {
                auto made = config->processor({QString::fromLatin1(space), display, view, {}});
                ASSERT_TRUE(made) << made.error().text.toStdString();
                request.display = *made;
                request.colour = display == u"Rec.709" ? strongGrade() : ColourTransform();
                EXPECT_LE(difference(deep, request), 1) << space << qPrintable(display + u' ' + view);
            }
    EXPECT_LE(difference(grey, request), 1);
    auto looking = config->processor({QStringLiteral("ACEScg"), QStringLiteral("sRGB"), QStringLiteral("ACES SDR Video"),
                                      QStringLiteral("Gamut Compression"), 2, 0.8});
    ASSERT_TRUE(looking);
    request.display = *looking;
    EXPECT_LE(difference(deep, request), 1);
    request.display = nullptr; // and back
    EXPECT_LE(difference(deep, request), 1);
}

} // namespace
} // namespace daylark
