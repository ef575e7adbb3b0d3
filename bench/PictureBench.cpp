// The software renderer on pictures as decoders give them, each beside libswscale's bilinear conversion of
// the same picture to the same size (no grade): milliseconds, and the ratio of the two in the same run. One
// thread.
#include "BenchTimes.h"

#include "picture/PictureRenderer.h"

#include "annotate/GradeArithmetic.h"
#include "media/decode/VideoFrameData.h"

#include <cstdio>
#include <random>

namespace daylark {
namespace {

VideoFrame noisyFrame(AVPixelFormat format, QSize size) {
    auto data = std::make_shared<VideoFrame::Data>();
    data->frame.reset(av_frame_alloc());
    AVFrame& frame = *data->frame;
    frame.format = format;
    frame.width = size.width();
    frame.height = size.height();
    frame.colorspace = AVCOL_SPC_BT709;
    frame.chroma_location = AVCHROMA_LOC_LEFT;
    if (av_frame_get_buffer(&frame, 0) < 0) std::abort();
    std::mt19937 random(1);
    const int mask = (1 << av_pix_fmt_desc_get(format)->comp[0].depth) - 1;
    for (int plane = 0; plane < 3 && frame.data[plane]; ++plane)
        for (int i = 0;
             i < frame.linesize[plane] / 2 *
                     (plane ? AV_CEIL_RSHIFT(frame.height, av_pix_fmt_desc_get(format)->log2_chroma_h)
                            : frame.height);
             ++i)
            reinterpret_cast<quint16*>(frame.data[plane])[i] =
                quint16(mask > 255 ? random() & quint32(mask) : random());
    return VideoFrame(data);
}

double yardstick(const VideoFrame& frame, QSize size, bool deep) {
    const AVFrame& source = *frame.data()->frame;
    const av::ScalerPtr scaler(
        sws_getContext(source.width, source.height, AVPixelFormat(source.format), size.width(), size.height(),
                       deep ? AV_PIX_FMT_RGBA64 : AV_PIX_FMT_BGRA, SWS_BILINEAR, nullptr, nullptr, nullptr));
    return bench::medianMilliseconds([&] {
        QImage image(size, deep ? QImage::Format_RGBX64 : QImage::Format_RGB32);
        uint8_t* target[] = {image.bits(), nullptr, nullptr, nullptr};
        const int stride[] = {int(image.bytesPerLine()), 0, 0, 0};
        sws_scale(scaler.get(), source.data, source.linesize, 0, source.height, target, stride);
    });
}

void compare(const char* name, const VideoFrame& frame, QSize size) {
    Grade grade;
    grade.exposure = 0.3;
    grade.saturation = 1.2;
    Grade curved = grade;
    curved.gamma = 1.2;
    const double scaler = yardstick(frame, size, false);
    const auto measure = [&](const char* what, const PictureRequest& request, double beside) {
        const double time = bench::medianMilliseconds([&] { (void)renderPicture(frame, request); });
        std::printf("%-26s to %4d x %4d  %-16s %7.2f ms   scaler %7.2f ms   ratio %5.2f\n", name,
                    size.width(), size.height(), what, time, beside, time / beside);
    };
    PictureRequest request;
    request.size = size;
    measure("neutral", request, scaler);
    request.colour = colourTransformOf(grade);
    measure("grade", request, scaler);
    request.colour = colourTransformOf(curved);
    measure("grade with gamma", request, scaler);
    request.colour = {};
    request.deep = true;
    measure("deep", request, yardstick(frame, size, true));
}

} // namespace
} // namespace daylark

int main() {
    using namespace daylark;
    const QSize hd(1920, 1080), uhd(3840, 2160), small(1280, 720);
    struct Case {
        const char* name;
        AVPixelFormat format;
        QSize source, target;
    };
    for (const Case& c : {Case{"1920 x 1080 yuv420p", AV_PIX_FMT_YUV420P, hd, hd},
                          Case{"1920 x 1080 yuv420p", AV_PIX_FMT_YUV420P, hd, small},
                          Case{"1920 x 1080 yuv420p", AV_PIX_FMT_YUV420P, hd, QSize(100, 56)},
                          Case{"1920 x 1080 yuv420p", AV_PIX_FMT_YUV420P, hd, QSize(2560, 1440)},
                          Case{"1920 x 1080 yuv422p10", AV_PIX_FMT_YUV422P10, hd, hd},
                          Case{"1920 x 1080 yuv422p10", AV_PIX_FMT_YUV422P10, hd, small},
                          Case{"1920 x 1080 yuv444p12", AV_PIX_FMT_YUV444P12, hd, hd},
                          Case{"1920 x 1080 rgb24", AV_PIX_FMT_RGB24, hd, hd},
                          Case{"3840 x 2160 yuv420p", AV_PIX_FMT_YUV420P, uhd, small},
                          Case{"3840 x 2160 yuv422p10", AV_PIX_FMT_YUV422P10, uhd, small},
                          Case{"3840 x 2160 yuv420p", AV_PIX_FMT_YUV420P, uhd, uhd}})
        compare(c.name, noisyFrame(c.format, c.source), c.target);
    return 0;
}
