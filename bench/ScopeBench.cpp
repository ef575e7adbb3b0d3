// What a scope of a picture at 1080 lines costs, each beside the renderer's making of the small picture that it is counted
// from: milliseconds, and their part of the time that a frame has at 24 a second. And what a look at the pixel under the
// pointer costs, in microseconds.
#include "BenchTimes.h"

#include "media/decode/VideoFrameData.h"
#include "picture/PictureRenderer.h"
#include "picture/PixelProbe.h"
#include "picture/colour/ColourConfig.h"
#include "picture/scopes/ScopeTrace.h"

#include <cstdio>
#include <cstring>
#include <random>

namespace daylark {
namespace {

VideoFrame noise(AVPixelFormat format) {
    auto data = std::make_shared<VideoFrame::Data>();
    data->frame.reset(av_frame_alloc());
    AVFrame& frame = *data->frame;
    frame.format = format;
    frame.width = 1920;
    frame.height = 1080;
    frame.colorspace = AVCOL_SPC_BT709;
    if (av_frame_get_buffer(&frame, 0) < 0) std::abort();
    const bool isReal = av_pix_fmt_desc_get(format)->flags & AV_PIX_FMT_FLAG_FLOAT;
    std::mt19937 random(1);
    for (const AVBufferRef* buffer : frame.buf) {
        if (!buffer) continue;
        for (size_t at = 0; at + 4 <= size_t(buffer->size); at += 4) {
            const float light = float(random() % 4096) / 1024;
            const quint32 bits = random();
            isReal ? std::memcpy(buffer->data + at, &light, 4) : std::memcpy(buffer->data + at, &bits, 4);
        }
    }
    data->isSceneLinear = isReal;
    return VideoFrame(data);
}

void measure(const char* name, const VideoFrame& frame, const std::shared_ptr<const DisplayProcessor>& display) {
    constexpr double frameTime = 1000.0 / 24;
    PictureRequest request;
    request.size = {480, 270};
    request.display = display;
    request.quickly = true;
    const QImage small = renderPicture(frame, request);
    const double made = bench::medianMilliseconds([&] { static_cast<void>(renderPicture(frame, request)); });
    std::printf("%-28s small picture %6.2f ms", name, made);
    const std::pair<const char*, QImage (*)(const QImage&)> scopes[] = {{"waveform", waveformTrace},
                                                                        {"parade", paradeTrace},
                                                                        {"vectorscope", vectorscopeTrace},
                                                                        {"histogram", histogramTrace}};
    for (const auto& [scope, trace] : scopes) {
        const double counted = bench::medianMilliseconds([&small, trace = trace] { static_cast<void>(trace(small)); });
        std::printf("  %s %5.2f ms (%2.0f %%)", scope, counted, (made + counted) / frameTime * 100);
    }
    const double looked = bench::medianMilliseconds([&] { static_cast<void>(pixelAt(frame, {700, 400}, {display, {}})); });
    std::printf("  a pixel %4.0f us\n", looked * 1000);
}

int measureAll() {
    measure("yuv422p10", noise(AV_PIX_FMT_YUV422P10), nullptr);
    measure("bgra", noise(AV_PIX_FMT_BGRA), nullptr);
    const auto config = ColourConfig::own();
    const auto display = config->processor(config->fitted({QStringLiteral("ACEScg"), {}, {}, {}}));
    if (!display) return 1;
    measure("float, ACES view", noise(AV_PIX_FMT_GBRPF32), *display);
    return 0;
}

} // namespace
} // namespace daylark

int main() {
    return daylark::measureAll();
}
