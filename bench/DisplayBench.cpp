// A picture of light through a film's output transform: the software renderer (planes, display, grade, 8 bits) beside the colour
// library alone on the same floats in memory, both on all cores: milliseconds, and the ratio of the two in the same run. Exact,
// and by the quick form that pictures of a run go through, which does without the library.
#include "picture/PictureRenderer.h"

#include "base/jobs/ShareOut.h"
#include "media/decode/VideoFrameData.h"
#include "picture/colour/ColourConfig.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <random>
#include <vector>

namespace daylark {
namespace {

VideoFrame lightFrame(QSize size) {
    auto data = std::make_shared<VideoFrame::Data>();
    data->frame.reset(av_frame_alloc());
    AVFrame& frame = *data->frame;
    frame.format = AV_PIX_FMT_GBRPF32LE;
    frame.width = size.width();
    frame.height = size.height();
    data->isSceneLinear = true;
    if (av_frame_get_buffer(&frame, 0) < 0) std::abort();
    std::mt19937 random(1);
    std::normal_distribution<float> stops(-2.5F, 2.5F);
    for (int plane = 0; plane < 3; ++plane)
        for (int i = 0; i < frame.linesize[plane] / 4 * frame.height; ++i)
            reinterpret_cast<float*>(frame.data[plane])[i] = std::exp2(stops(random));
    return VideoFrame(data);
}

double bestMilliseconds(const std::function<void()>& work) {
    using Clock = std::chrono::steady_clock;
    double best = 1e9;
    for (int i = 0; i < 7; ++i) {
        const auto start = Clock::now();
        work();
        best = std::min(best, std::chrono::duration<double, std::milli>(Clock::now() - start).count());
    }
    return best;
}

void compare(const DisplayProcessor& processor, const PictureRequest& request, const VideoFrame& frame, bool quickly) {
    const QSize size = request.size;
    PictureRequest ours = request;
    ours.quickly = quickly;
    const double rendered = bestMilliseconds([&] { (void)renderPicture(frame, ours); });
    std::mt19937 random(1);
    std::normal_distribution<float> stops(-2.5F, 2.5F);
    std::vector<float> light(size_t(size.width()) * size_t(size.height()) * 4);
    for (float& value : light)
        value = std::exp2(stops(random));
    const int pieces = size.height() / 60;
    double alone = 1e9;
    for (int i = 0; i < 5; ++i) {
        std::vector<float> rgba = light;
        const auto start = std::chrono::steady_clock::now();
        shareOut(pieces, [&](int piece) {
            const qsizetype pixels = qsizetype(size.width()) * 60;
            processor.apply(rgba.data() + piece * pixels * 4, pixels);
        });
        const auto taken = std::chrono::steady_clock::now() - start;
        alone = std::min(alone, std::chrono::duration<double, std::milli>(taken).count());
    }
    std::printf("%4d x %4d %-6s renderer %7.1f ms   library alone %7.1f ms   ratio %.2f\n", size.width(), size.height(),
                quickly ? "quick" : "exact", rendered, alone, rendered / alone);
}

void run() {
    const auto config = ColourConfig::own();
    const auto made = config->processor(
        {QStringLiteral("ACEScg"), QStringLiteral("sRGB"), QStringLiteral("ACES SDR Video"), {}});
    if (!made) return;
    const VideoFrame frame = lightFrame({1920, 1080});
    for (const QSize size : {QSize(1920, 1080), QSize(1280, 720)})
        for (const bool quickly : {false, true}) {
            PictureRequest request;
            request.size = size;
            request.display = *made;
            compare(**made, request, frame, quickly);
        }
}

} // namespace
} // namespace daylark

int main() {
    daylark::run();
}
