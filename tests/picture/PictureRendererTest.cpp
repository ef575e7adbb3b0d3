#include "picture/PictureRenderer.h"

#include "picture/PictureKernels.h"
#include "picture/PicturePlanes.h"
#include "media/decode/VideoFrameData.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <functional>
#include <random>
#include <vector>

extern "C" {
#include <libavutil/intfloat.h>
}

namespace daylark {
namespace {

/// What a decoder might give.
struct Stored {
    AVPixelFormat format = AV_PIX_FMT_YUV420P;
    QSize size{37, 27};
    AVColorSpace space = AVCOL_SPC_BT709;
    AVColorRange range = AVCOL_RANGE_UNSPECIFIED;
    AVChromaLocation chroma = AVCHROMA_LOC_UNSPECIFIED;
    Orientation orientation{};
    AVRational pixelAspect{1, 1};
};

const AVPixFmtDescriptor& describe(const AVFrame& frame) {
    return *av_pix_fmt_desc_get(AVPixelFormat(frame.format));
}

bool isChroma(const AVFrame& frame, int component) {
    return (component == 1 || component == 2) && !(describe(frame).flags & AV_PIX_FMT_FLAG_RGB) &&
           describe(frame).nb_components > 2;
}

QSize componentSize(const AVFrame& frame, int component) {
    const AVPixFmtDescriptor& format = describe(frame);
    if (!isChroma(frame, component)) return {frame.width, frame.height};
    return {AV_CEIL_RSHIFT(frame.width, format.log2_chroma_w),
            AV_CEIL_RSHIFT(frame.height, format.log2_chroma_h)};
}

std::shared_ptr<VideoFrame::Data> emptyFrame(const Stored& stored) {
    auto data = std::make_shared<VideoFrame::Data>();
    data->frame.reset(av_frame_alloc());
    AVFrame& frame = *data->frame;
    frame.format = stored.format;
    frame.width = stored.size.width();
    frame.height = stored.size.height();
    frame.colorspace = stored.space;
    frame.color_range = stored.range;
    frame.chroma_location = stored.chroma;
    data->orientation = stored.orientation;
    data->pixelAspect = stored.pixelAspect;
    if (av_frame_get_buffer(&frame, 0) < 0) std::abort();
    for (const AVBufferRef* buffer : frame.buf)
        if (buffer) std::memset(buffer->data, 0, buffer->size);
    return data;
}

/// Numbers by component and place, 0 to 2^depth - 1 (or the bits of a float), written by the codec library's
/// own rules.
void fillFrame(AVFrame& frame, const std::function<quint32(int component, int x, int y)>& number) {
    const AVPixFmtDescriptor& format = describe(frame);
    for (int c = 0; c < format.nb_components; ++c) {
        const QSize size = componentSize(frame, c);
        std::vector<quint32> row(static_cast<size_t>(size.width()));
        for (int y = 0; y < size.height(); ++y) {
            for (int x = 0; x < size.width(); ++x)
                row[size_t(x)] = number(c, x, y);
            av_write_image_line2(row.data(), frame.data, frame.linesize, &format, 0, y, c, size.width(), 4);
        }
    }
}

VideoFrame filled(const Stored& stored, const std::function<quint32(int, int, int)>& number) {
    const auto data = emptyFrame(stored);
    fillFrame(*data->frame, number);
    return VideoFrame(data);
}

/// Gentle waves with noise on them, over all codes: under black, over white, and colours that no screen has.
VideoFrame wavesWithNoise(const Stored& stored) {
    std::mt19937 random(unsigned(stored.format) + 1U);
    const AVPixFmtDescriptor& format = *av_pix_fmt_desc_get(stored.format);
    return filled(stored, [&](int c, int x, int y) {
        const double wave =
            0.5 + 0.4 * std::sin(x * 0.35 + c * 2.0 + y * 0.21) + (random() % 1000) * 0.0002 - 0.1;
        if (format.flags & AV_PIX_FMT_FLAG_FLOAT) return av_float2int(float(wave));
        const double white = std::pow(2.0, format.comp[c].depth) - 1;
        return quint32(std::lround(std::clamp(wave, 0.0, 1.0) * white));
    });
}

// --- The reference: slow and plain, in double precision. ---

/// A component's number as a fraction of its largest, the edge going on for ever.
double codeAt(const AVFrame& frame, int component, int x, int y) {
    const AVPixFmtDescriptor& format = describe(frame);
    const QSize size = componentSize(frame, component);
    quint32 number = 0;
    av_read_image_line2(&number, const_cast<const uint8_t**>(frame.data), frame.linesize, &format,
                        std::clamp(x, 0, size.width() - 1), std::clamp(y, 0, size.height() - 1), component, 1,
                        0, 4);
    if (format.flags & AV_PIX_FMT_FLAG_FLOAT) return std::clamp(double(av_int2float(number)), 0.0, 1.0);
    const double code = number / (std::pow(2.0, format.comp[component].depth) - 1);
    return frame.format == AV_PIX_FMT_MONOWHITE ? 1 - code : code;
}

struct Sampling {
    double x, y;         ///< luma samples
    double stepX, stepY; ///< luma samples a target pixel
};

QPointF chromaPlace(const AVFrame& frame) {
    switch (frame.chroma_location) {
    case AVCHROMA_LOC_CENTER:
        return {0.5, 0.5};
    case AVCHROMA_LOC_TOPLEFT:
        return {0, 0};
    case AVCHROMA_LOC_TOP:
        return {0.5, 0};
    case AVCHROMA_LOC_BOTTOMLEFT:
        return {0, 1};
    case AVCHROMA_LOC_BOTTOM:
        return {0.5, 1};
    case AVCHROMA_LOC_UNSPECIFIED:
        return frame.format == AV_PIX_FMT_YUVJ420P ? QPointF(0.5, 0.5) : QPointF(0, 0.5);
    default:
        return {0, 0.5};
    }
}

double sampledCode(const AVFrame& frame, int component, Sampling at) {
    if (isChroma(frame, component)) {
        const int ratioX = 1 << describe(frame).log2_chroma_w, ratioY = 1 << describe(frame).log2_chroma_h;
        const QPointF place = chromaPlace(frame);
        at.x = (at.x - place.x() * (ratioX - 1)) / ratioX;
        at.y = (at.y - place.y() * (ratioY - 1)) / ratioY;
        at.stepX /= ratioX;
        at.stepY /= ratioY;
    }
    const double reachX = std::max(1.0, at.stepX), reachY = std::max(1.0, at.stepY);
    double sum = 0, weights = 0;
    for (int y = int(std::floor(at.y - reachY)); y <= at.y + reachY; ++y)
        for (int x = int(std::floor(at.x - reachX)); x <= at.x + reachX; ++x) {
            const double weight = std::max(0.0, 1 - std::abs(x - at.x) / reachX) *
                                  std::max(0.0, 1 - std::abs(y - at.y) / reachY);
            if (weight <= 0) continue;
            sum += weight * codeAt(frame, component, x, y);
            weights += weight;
        }
    return sum / weights;
}

using Colour = std::array<double, 3>;

Colour rgbOf(const AVFrame& frame, const Sampling& at) {
    const AVPixFmtDescriptor& format = describe(frame);
    Colour codes{};
    const bool grey = format.nb_components <= 2;
    for (int c = 0; c < (grey ? 1 : 3); ++c)
        codes[size_t(c)] = sampledCode(frame, c, at);
    if (format.flags & AV_PIX_FMT_FLAG_RGB) return codes;
    const double white = std::pow(2.0, format.comp[0].depth) - 1,
                 unit = std::pow(2.0, format.comp[0].depth - 8);
    const bool full = frame.color_range == AVCOL_RANGE_JPEG || frame.format == AV_PIX_FMT_YUVJ420P ||
                      (grey && frame.color_range == AVCOL_RANGE_UNSPECIFIED);
    const double luma = full ? codes[0] : (codes[0] * white / unit - 16) / 219;
    if (grey) return {luma, luma, luma};
    const auto chroma = [&](double code) {
        return full ? (code * white - 128 * unit) / white : (code * white / unit - 128) / 224;
    };
    double red = 0.299, blue = 0.114;
    if (frame.colorspace == AVCOL_SPC_BT709) red = 0.2126, blue = 0.0722;
    if (frame.colorspace == AVCOL_SPC_BT2020_NCL) red = 0.2627, blue = 0.0593;
    if (frame.colorspace == AVCOL_SPC_SMPTE240M) red = 0.212, blue = 0.087;
    Colour rgb{luma + 2 * (1 - red) * chroma(codes[2]), 0, luma + 2 * (1 - blue) * chroma(codes[1])};
    rgb[1] = (luma - red * rgb[0] - blue * rgb[2]) / (1 - red - blue);
    return rgb;
}

Colour afterTransform(Colour rgb, const ColourTransform& transform) {
    if (transform.hasCurve())
        for (size_t i = 0; i < 3; ++i)
            rgb[i] = transform.scale * std::min(1048576.0, std::pow(std::max(0.0, transform.gain[i] * rgb[i]),
                                                                    transform.power));
    Colour out{};
    for (size_t i = 0; i < 3; ++i)
        out[i] = transform.map[i][0] * rgb[0] + transform.map[i][1] * rgb[1] + transform.map[i][2] * rgb[2] +
                 transform.map[i][3];
    return out;
}

/// What pixel (x, y) of the whole picture should be, black 0 to white 1.
Colour reference(const VideoFrame& video, const PictureRequest& request, int x, int y) {
    const AVFrame& frame = *video.data()->frame;
    if (!QRect(QPoint(), request.size).contains(x, y)) return {};
    double shownX = (x + 0.5) / request.size.width(), shownY = (y + 0.5) / request.size.height();
    if (request.mirrorLeftRight) shownX = 1 - shownX;
    if (request.mirrorUpsideDown) shownY = 1 - shownY;
    const auto [rotation, mirrored] = video.data()->orientation;
    if (mirrored) shownX = 1 - shownX;
    QPointF stored(shownX, shownY);
    if (rotation == 90) stored = {shownY, 1 - shownX};
    if (rotation == 180) stored = {1 - shownX, 1 - shownY};
    if (rotation == 270) stored = {1 - shownY, shownX};
    const QSize grid = rotation % 180 ? request.size.transposed() : request.size;
    const Sampling at{stored.x() * frame.width - 0.5, stored.y() * frame.height - 0.5,
                      double(frame.width) / grid.width(), double(frame.height) / grid.height()};
    Colour colour = afterTransform(rgbOf(frame, at), request.colour);
    const AVPixFmtDescriptor& format = describe(frame);
    const double alpha =
        format.flags & AV_PIX_FMT_FLAG_ALPHA ? sampledCode(frame, format.nb_components - 1, at) : 1;
    for (double& value : colour)
        value = std::clamp(value, 0.0, 1.0) * alpha;
    return colour;
}

Colour seenAt(const QImage& image, int x, int y) {
    if (image.format() == QImage::Format_RGB32) {
        const QRgb pixel = reinterpret_cast<const QRgb*>(image.constScanLine(y))[x];
        return {double(qRed(pixel)), double(qGreen(pixel)), double(qBlue(pixel))};
    }
    const QRgba64 pixel = reinterpret_cast<const QRgba64*>(image.constScanLine(y))[x];
    return {double(pixel.red()), double(pixel.green()), double(pixel.blue())};
}

/// The largest distance of a component from the exact number, in steps of the image.
double worstError(const VideoFrame& frame, PictureRequest request) {
    const QImage image = renderPicture(frame, request);
    if (request.size.isEmpty()) request.size = frame.displaySize();
    if (request.visible.isNull()) request.visible = QRect(QPoint(), request.size);
    EXPECT_EQ(image.size(), request.visible.size());
    EXPECT_EQ(image.format(), request.deep ? QImage::Format_RGBX64 : QImage::Format_RGB32);
    double worst = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const Colour exact = reference(frame, request, request.visible.x() + x, request.visible.y() + y);
            const Colour seen = seenAt(image, x, y);
            for (size_t c = 0; c < 3; ++c)
                worst = std::max(worst, std::abs(seen[c] - exact[c] * (request.deep ? 65535 : 255)));
        }
    return worst;
}

ColourTransform someGrade(bool curve) {
    ColourTransform colour;
    if (curve) {
        colour.gain = {1.2, 0.9, 1.05};
        colour.power = 1 / 1.8;
        colour.scale = 1.3;
    }
    colour.map = {{{1.4, -0.3, -0.05, -0.04}, {-0.1, 1.2, -0.05, -0.04}, {-0.1, -0.3, 1.5, 0.02}}};
    return colour;
}

PictureRequest ask(QSize size, QRect visible = {}, const ColourTransform& colour = {}) {
    PictureRequest request;
    request.size = size;
    request.visible = visible;
    request.colour = colour;
    return request;
}

PictureRequest mirrored(PictureRequest request, bool leftRight, bool upsideDown) {
    request.mirrorLeftRight = leftRight;
    request.mirrorUpsideDown = upsideDown;
    return request;
}

struct NamedRequest {
    const char* name;
    PictureRequest request;
};

std::vector<NamedRequest> requestsFor(const VideoFrame& frame) {
    const QSize shown = frame.displaySize();
    const auto scaled = [&](double factor) {
        return QSize(std::max(1, int(shown.width() * factor)), std::max(1, int(shown.height() * factor)));
    };
    const QSize huge = shown * 1000;
    std::vector<NamedRequest> requests{
        {"as stored", {}},
        {"a little smaller", ask(scaled(0.67))},
        {"much smaller", ask(QSize(6, 3))},
        {"larger", ask(scaled(1.7))},
        {"flatter", ask(QSize(shown.width() * 2, std::max(1, shown.height() / 2)))},
        {"zoomed deep in", ask(huge, QRect(huge.width() / 2 - 11, huge.height() / 3, 23, 17))},
        {"a part that reaches over the corner", ask(scaled(2.3), QRect(-5, -3, 20, 14))},
        {"mirrored", mirrored(ask(scaled(0.9)), true, false)},
        {"upside down part", mirrored(ask(shown, QRect(3, 2, 21, 13)), false, true)},
        {"graded", ask(shown, {}, someGrade(false))},
        {"graded with a curve", ask(scaled(1.3), {}, someGrade(true))},
    };
    for (const double factor : {1.0, 0.6}) {
        PictureRequest deep = ask(scaled(factor));
        deep.deep = true;
        requests.push_back({factor == 1 ? "deep as stored" : "deep and smaller", deep});
        deep.colour = someGrade(true);
        requests.push_back({"deep with a curve", deep});
    }
    return requests;
}

/// Rounding costs half a step; the rest is what single precision loses.
void expectTruth(const VideoFrame& frame, double& worst8, double& worst16) {
    for (const auto& [name, request] : requestsFor(frame)) {
        const double error = worstError(frame, request);
        EXPECT_LE(error, request.deep ? 4.0 : 0.52) << name;
        double& worst = request.deep ? worst16 : worst8;
        worst = std::max(worst, error);
    }
}

struct FormatClass {
    const char* name;
    std::vector<Stored> stored;
};

class PictureTruthTest : public ::testing::TestWithParam<FormatClass> {};

TEST_P(PictureTruthTest, PicturesEqualTheReference) {
    double worst8 = 0, worst16 = 0;
    for (const Stored& stored : GetParam().stored) {
        SCOPED_TRACE(av_get_pix_fmt_name(stored.format));
        const VideoFrame frame = wavesWithNoise(stored);
        ASSERT_FALSE(planesOf(frame).isNull());
        expectTruth(frame, worst8, worst16);
    }
    std::printf("worst distance from the exact number: %.3f of 255, %.2f of 65535\n", worst8, worst16);
}

std::vector<Stored> formats(std::initializer_list<AVPixelFormat> list) {
    std::vector<Stored> all;
    for (const AVPixelFormat format : list)
        all.push_back({format});
    return all;
}

std::vector<Stored> matrices() {
    std::vector<Stored> all;
    for (const AVColorSpace space : {AVCOL_SPC_SMPTE170M, AVCOL_SPC_BT709, AVCOL_SPC_BT2020_NCL,
                                     AVCOL_SPC_SMPTE240M, AVCOL_SPC_UNSPECIFIED})
        for (const AVColorRange range : {AVCOL_RANGE_MPEG, AVCOL_RANGE_JPEG})
            for (const AVPixelFormat format : {AV_PIX_FMT_YUV444P, AV_PIX_FMT_YUV420P10})
                all.push_back({format, QSize(20, 14), space, range});
    return all;
}

std::vector<Stored> chromaPlaces() {
    std::vector<Stored> all{{AV_PIX_FMT_YUVJ420P}};
    for (const AVChromaLocation place : {AVCHROMA_LOC_LEFT, AVCHROMA_LOC_CENTER, AVCHROMA_LOC_TOPLEFT,
                                         AVCHROMA_LOC_TOP, AVCHROMA_LOC_BOTTOMLEFT, AVCHROMA_LOC_BOTTOM})
        for (const AVPixelFormat format : {AV_PIX_FMT_YUV420P, AV_PIX_FMT_YUV422P10})
            all.push_back({format, QSize(34, 22), AVCOL_SPC_BT709, AVCOL_RANGE_MPEG, place});
    return all;
}

std::vector<Stored> turned() {
    std::vector<Stored> all;
    for (const Orientation orientation : {Orientation{90}, Orientation{180}, Orientation{270}, Orientation{0, true},
                                          Orientation{90, true}, Orientation{180, true}, Orientation{270, true}})
        for (const QSize size : {QSize(37, 27), QSize(1, 1), QSize(2, 9)})
            all.push_back({AV_PIX_FMT_YUV420P, size, AVCOL_SPC_BT709, AVCOL_RANGE_MPEG, AVCHROMA_LOC_LEFT,
                           orientation, AVRational{4, 3}});
    return all;
}

INSTANTIATE_TEST_SUITE_P(
    Formats, PictureTruthTest,
    ::testing::Values(
        FormatClass{"Planar8", formats({AV_PIX_FMT_YUV420P, AV_PIX_FMT_YUV422P, AV_PIX_FMT_YUV444P,
                                        AV_PIX_FMT_YUV440P, AV_PIX_FMT_YUV411P, AV_PIX_FMT_YUV410P})},
        FormatClass{"Deep10", formats({AV_PIX_FMT_YUV420P10LE, AV_PIX_FMT_YUV422P10LE, AV_PIX_FMT_YUV444P10LE,
                                       AV_PIX_FMT_YUV422P10BE})},
        FormatClass{"Deep12",
                    formats({AV_PIX_FMT_YUV420P12LE, AV_PIX_FMT_YUV422P12LE, AV_PIX_FMT_YUV444P12LE})},
        FormatClass{"Deep16",
                    formats({AV_PIX_FMT_YUV420P16LE, AV_PIX_FMT_YUV444P16LE, AV_PIX_FMT_YUV444P16BE})},
        FormatClass{"Rgb", formats({AV_PIX_FMT_GBRP, AV_PIX_FMT_GBRP10LE, AV_PIX_FMT_GBRP12BE,
                                    AV_PIX_FMT_GBRP16LE, AV_PIX_FMT_GBRPF32LE})},
        FormatClass{"Grey", formats({AV_PIX_FMT_GRAY8, AV_PIX_FMT_GRAY10LE, AV_PIX_FMT_GRAY16BE,
                                     AV_PIX_FMT_GRAYF32LE, AV_PIX_FMT_MONOWHITE, AV_PIX_FMT_MONOBLACK})},
        FormatClass{"Alpha", formats({AV_PIX_FMT_YUVA420P, AV_PIX_FMT_YUVA444P10LE, AV_PIX_FMT_YUVA444P12LE,
                                      AV_PIX_FMT_YUVA444P16BE, AV_PIX_FMT_GBRAP, AV_PIX_FMT_GBRAP16LE,
                                      AV_PIX_FMT_YA8, AV_PIX_FMT_YA16BE})},
        FormatClass{"PackedRgb", formats({AV_PIX_FMT_RGB24, AV_PIX_FMT_BGRA, AV_PIX_FMT_ARGB, AV_PIX_FMT_0RGB,
                                          AV_PIX_FMT_RGB48BE, AV_PIX_FMT_RGBA64BE, AV_PIX_FMT_RGBA64LE,
                                          AV_PIX_FMT_RGB555LE, AV_PIX_FMT_RGB565BE, AV_PIX_FMT_X2RGB10LE})},
        FormatClass{"PackedYuv",
                    formats({AV_PIX_FMT_NV12, AV_PIX_FMT_NV21, AV_PIX_FMT_P010LE, AV_PIX_FMT_YUYV422,
                             AV_PIX_FMT_UYVY422, AV_PIX_FMT_UYYVYY411, AV_PIX_FMT_AYUV64LE})},
        FormatClass{"MatricesAndRanges", matrices()}, FormatClass{"ChromaPlaces", chromaPlaces()},
        FormatClass{"Turned", turned()}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST(PictureRendererTest, PaletteGivesItsColours) {
    const Stored stored{AV_PIX_FMT_PAL8, QSize(16, 16)};
    const auto data = emptyFrame(stored);
    auto* palette = reinterpret_cast<quint32*>(data->frame->data[1]);
    for (quint32 i = 0; i < 256; ++i)
        palette[i] = 0xff000000U | i << 16 | (255 - i) << 8 | (i ^ 0x55U);
    palette[7] = 0x80ff0040U;
    for (int i = 0; i < 256; ++i)
        data->frame->data[0][i / 16 * data->frame->linesize[0] + i % 16] = uchar(i);
    const QImage image = renderPicture(VideoFrame(data), {});
    for (int i = 0; i < 256; ++i) {
        const QRgb wanted = i == 7 ? qRgb(128, 0, 32) : palette[i];
        EXPECT_EQ(image.pixel(i % 16, i / 16), wanted) << i;
    }
}

TEST(PictureRendererTest, OnePixelGridAtOneToOneIsUntouched) {
    const auto grid = [](int x, int y) { return (x + y) % 2 == 0; };
    const QSize size(64, 40);
    const VideoFrame rgb =
        filled({AV_PIX_FMT_GBRP, size}, [&](int, int x, int y) { return grid(x, y) ? 255U : 0U; });
    const VideoFrame yuv = filled({AV_PIX_FMT_YUV420P, size}, [&](int c, int x, int y) {
        return c ? 128U : grid(x, y) ? 235U : 16U;
    });
    for (const VideoFrame& frame : {rgb, yuv})
        for (const QRect& visible : {QRect(), QRect(7, 5, 30, 21)}) {
            const PictureRequest request = ask(size, visible);
            const QImage image = renderPicture(frame, request);
            for (int y = 0; y < image.height(); ++y)
                for (int x = 0; x < image.width(); ++x)
                    ASSERT_EQ(image.pixel(x, y),
                              grid(x + visible.x(), y + visible.y()) ? 0xffffffffU : 0xff000000U)
                        << x << " " << y;
        }
}

TEST(PictureRendererTest, ScalingNeitherRingsNorShifts) {
    const QSize size(96, 64);
    const auto ramp = [](int, int x, int y) { return quint32(4000 + 400 * x + 200 * y); };
    const VideoFrame slope = filled({AV_PIX_FMT_GRAY16LE, size}, ramp);
    const VideoFrame flat = filled({AV_PIX_FMT_GRAY16LE, size}, [](int, int, int) { return 30000U; });
    const VideoFrame edge =
        filled({AV_PIX_FMT_GRAY16LE, size}, [](int, int x, int) { return x < 48 ? 10000U : 50000U; });
    for (const QSize target :
         {QSize(192, 128), QSize(211, 71), QSize(64, 43), QSize(48, 32), QSize(31, 20)}) {
        PictureRequest request = ask(target);
        request.deep = true;
        const QImage slopeImage = renderPicture(slope, request), flatImage = renderPicture(flat, request),
                     edgeImage = renderPicture(edge, request);
        const double stepX = double(size.width()) / target.width(),
                     stepY = double(size.height()) / target.height();
        const int marginX = int(2 / stepX) + 3, marginY = int(2 / stepY) + 3;
        for (int y = marginY; y < target.height() - marginY; ++y) {
            double before = 0;
            for (int x = 0; x < target.width(); ++x) {
                EXPECT_NEAR(seenAt(flatImage, x, y)[0], 30000, 1);
                const double step = seenAt(edgeImage, x, y)[0];
                EXPECT_GE(step, std::max(9999.0, before - 1));
                EXPECT_LE(step, 50001);
                before = step;
                if (x < marginX || x >= target.width() - marginX) continue;
                const double exact = 4000 + 400 * ((x + 0.5) * stepX - 0.5) + 200 * ((y + 0.5) * stepY - 0.5);
                EXPECT_NEAR(seenAt(slopeImage, x, y)[0], exact, 50)
                    << target.width() << " " << x; // an eighth of a step
            }
        }
    }
}

TEST(PictureRendererTest, OddRequestsAreAnswered) {
    const VideoFrame frame = wavesWithNoise({AV_PIX_FMT_YUV420P, QSize(35, 21)});
    EXPECT_TRUE(renderPicture(VideoFrame(), {}).isNull());
    const QImage outside = renderPicture(frame, ask(QSize(70, 42), QRect(80, 0, 9, 7)));
    ASSERT_EQ(outside.size(), QSize(9, 7));
    for (int x = 0; x < 9; ++x)
        EXPECT_EQ(outside.pixel(x, 3), 0xff000000U);
    EXPECT_EQ(renderPicture(frame, ask(QSize(1, 1))).size(), QSize(1, 1));
    EXPECT_TRUE(renderPicture(frame, ask(QSize(1 << 30, 1 << 30))).isNull()); // no room for it
    const QSize far(2000000000, 1200000000);
    const PictureRequest zoomed = ask(far, QRect(far.width() - 8, far.height() - 8, 8, 8));
    EXPECT_LE(worstError(frame, zoomed), 0.52);
}

TEST(PictureRendererTest, InfiniteNumbersStayDefined) {
    const VideoFrame frame = wavesWithNoise({AV_PIX_FMT_YUV444P, QSize(40, 9)});
    PictureRequest request;
    request.colour.map[0] = {2, -1, -1, 0};
    for (const double power : {4096.0, -4096.0, -1.0, 1e-300}) {
        request.colour.power = power;
        request.colour.scale = power < 0 ? 1e-5 : 1;
        const QImage image = renderPicture(frame, request);
        for (int x = 0; x < image.width(); ++x) {
            PictureRequest sized = request;
            sized.size = image.size();
            const Colour exact = reference(frame, sized, x, 4), seen = seenAt(image, x, 4);
            for (size_t c = 1; c < 3; ++c)
                EXPECT_NEAR(seen[c], exact[c] * 255, 1) << power << " " << x;
        }
    }
}

TEST(PicturePlanesTest, PlanarFormatsAreNotCopied) {
    for (const AVPixelFormat format : {AV_PIX_FMT_YUV420P, AV_PIX_FMT_YUVJ422P, AV_PIX_FMT_YUV422P10LE,
                                       AV_PIX_FMT_YUVA444P12LE, AV_PIX_FMT_GRAY16LE, AV_PIX_FMT_GBRP10LE}) {
        const VideoFrame frame = wavesWithNoise({format});
        const PicturePlanes picture = planesOf(frame);
        const bool rgb = describe(*frame.data()->frame).flags & AV_PIX_FMT_FLAG_RGB;
        EXPECT_EQ(picture.planes[0].data, frame.data()->frame->data[rgb ? 2 : 0]);
        EXPECT_EQ(picture.planes[1].data, frame.data()->frame->data[rgb ? 0 : 1]);
        EXPECT_EQ(picture.hasAlpha(), format == AV_PIX_FMT_YUVA444P12LE);
    }
}

TEST(PicturePlanesTest, PlanesOutliveTheFrame) {
    PicturePlanes picture;
    std::weak_ptr<const VideoFrame::Data> data;
    {
        const auto made = emptyFrame({});
        data = made;
        picture = planesOf(VideoFrame(made));
    }
    EXPECT_FALSE(data.expired());
    picture = {};
    EXPECT_TRUE(data.expired());
}

/// What processors without wide registers run gives the same as what this one runs.
class PictureKernelsTest : public ::testing::Test {
protected:
    static constexpr int count = 203, room = 256;

    PictureKernelsTest() {
        std::mt19937 random(5);
        for (quint8& byte : bytes)
            byte = quint8(random());
        for (float& number : numbers)
            number = float(random() % 100000) / 80000 - 0.1F;
        for (float& weight : weights)
            weight = float(random() % 1000) / 1000;
        for (int& first : start)
            first = int(random() % 100);
    }

    /// `run` with either set, on a copy of the numbers.
    template<class Run>
    void expectAgreement(const char* what, double tolerance, const Run& run) const {
        std::vector<float> a(numbers.begin(), numbers.begin() + room * 8), b = a;
        run(plain, a.data()), run(own, b.data());
        for (size_t i = 0; i < a.size(); ++i)
            ASSERT_NEAR(a[i], b[i], tolerance * (1 + std::abs(double(a[i])))) << what << " " << i;
    }

    const PictureKernels &plain = plainPictureKernels(), &own = pictureKernels();
    const std::array<float, 12> matrix{90, -20, 10, 5, 0, 120, 3, -4, 7, 7, 70, 1};
    std::vector<quint8> bytes = std::vector<quint8>(8 * 2 * room);
    std::vector<float> numbers = std::vector<float>(8 * room * 8), weights = std::vector<float>(room * 8);
    std::vector<int> start = std::vector<int>(room);
};

TEST_F(PictureKernelsTest, PlainAndWideSamplingAgree) {
    const quint8* rows[8];
    for (size_t i = 0; i < 8; ++i)
        rows[i] = bytes.data() + i * 2 * room;
    for (int taps = 1; taps <= 8; ++taps) {
        expectAgreement("8 bit", 1e-6, [&](const PictureKernels& kernels, float* out) {
            kernels.blend8(rows, weights.data(), taps, out, count);
        });
        expectAgreement("16 bit", 1e-6, [&](const PictureKernels& kernels, float* out) {
            kernels.blend16(rows, weights.data(), taps, out, count);
        });
        expectAgreement("resample", 1e-6, [&](const PictureKernels& kernels, float* out) {
            kernels.resample(numbers.data(), start.data(), weights.data(), taps, out, count);
        });
    }
    expectAgreement("doubled", 1e-6, [&](const PictureKernels& kernels, float* out) {
        kernels.doubled(numbers.data(), numbers.data() + 1, weights.data(), out, count / 2);
    });
    expectAgreement("strip", 0, [&](const PictureKernels& kernels, float* out) {
        kernels.toStrip(numbers.data(), room, out, count);
    });
    for (const int step : {1, 2, 3, 4, 6}) {
        std::vector<quint8> a(room), b(room);
        plain.pick8(bytes.data(), step, a.data(), count), own.pick8(bytes.data(), step, b.data(), count);
        EXPECT_EQ(a, b);
    }
    std::vector<quint32> strip(room * 8), a(room * 8), b(room * 8);
    for (size_t i = 0; i < strip.size(); ++i)
        strip[i] = quint32(i);
    plain.fromStrip(strip.data(), a.data(), room, count), own.fromStrip(strip.data(), b.data(), room, count);
    EXPECT_EQ(a, b);
    EXPECT_EQ(a[size_t(3 * room + 7)], 7U * 8 + 3);
}

TEST_F(PictureKernelsTest, HalvesAndFloatsAreTheirNumbers) {
    // Every half there is, by the arithmetic of its parts.
    std::vector<quint16> halves(65536);
    std::vector<float> read(halves.size());
    for (size_t i = 0; i < halves.size(); ++i)
        halves[i] = quint16(i);
    const float one = 1;
    for (const PictureKernels* kernels : {&plain, &own}) {
        const auto* row = reinterpret_cast<const quint8*>(halves.data());
        kernels->blendHalf(&row, &one, 1, read.data(), int(halves.size()));
        for (size_t i = 0; i < halves.size(); ++i) {
            const int exponent = int(i >> 10 & 31), fraction = int(i & 1023);
            double value = exponent == 0    ? std::ldexp(fraction, -24)
                           : exponent == 31 ? (fraction ? 0 : 65536)
                                            : std::ldexp(1024 + fraction, exponent - 25);
            if (i & 0x8000) value = -value;
            ASSERT_EQ(double(read[i]), value) << i;
        }
    }
    const float huge = std::numeric_limits<float>::infinity();
    std::vector<float> odd{0.25F, -3, 1e20F, huge, -huge, std::nanf(""), 1e-40F, 8};
    const auto* rows = reinterpret_cast<const quint8*>(odd.data());
    const std::vector<float> wanted{0.25F, -3, 1e20F, PicturePlanes::largest, -PicturePlanes::largest, 0, 1e-40F, 8};
    for (const PictureKernels* kernels : {&plain, &own}) {
        std::vector<float> out(odd.size());
        kernels->blendReal(&rows, &one, 1, out.data(), int(odd.size()));
        EXPECT_EQ(out, wanted);
    }
}

TEST_F(PictureKernelsTest, PlainAndWideColourAgree) {
    expectAgreement("raise", 1e-6, [&](const PictureKernels& kernels, float* values) {
        kernels.raise(values, 0.45F, 20, 0, count);
    });
    expectAgreement("multiply", 1e-4, [&](const PictureKernels& kernels, float* values) {
        float* const channels[] = {values, values + room, values + 2 * room};
        kernels.multiply(channels, matrix.data(), count);
    });
    const float* const channels[] = {numbers.data(), numbers.data() + room, numbers.data() + 2 * room};
    const float* const alphas[] = {nullptr, numbers.data() + 3 * room};
    for (const float* alpha : alphas) {
        std::vector<quint32> a(room), b(room);
        plain.pack8(channels, alpha, 0.8F, matrix.data(), a.data(), count);
        own.pack8(channels, alpha, 0.8F, matrix.data(), b.data(), count);
        std::vector<quint64> deepA(room), deepB(room);
        plain.pack16(channels, alpha, 0.8F, matrix.data(), deepA.data(), count);
        own.pack16(channels, alpha, 0.8F, matrix.data(), deepB.data(), count);
        for (size_t i = 0; i < room; ++i) // fused multiplication may round a tie the other way
            for (int component = 0; component < 4; ++component) {
                ASSERT_NEAR(int(a[i] >> 8 * component & 255), int(b[i] >> 8 * component & 255), 1) << i;
                ASSERT_NEAR(int(deepA[i] >> 16 * component & 65535), int(deepB[i] >> 16 * component & 65535),
                            1)
                    << i;
            }
    }
}

} // namespace
} // namespace daylark
