#include "media/decode/FrameReader.h"

#include "support/MovieMaker.h"
#include "media/container/Av.h"
#include "media/index/SampleTables.h"

#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <thread>

namespace daylark {
namespace {

/// One movie a codec, made once and shared by the benchmarks of this file.
QString benchMovie(bool proRes) {
    static const QTemporaryDir folder;
    MovieSpec spec;
    spec.path = folder.filePath(proRes ? QStringLiteral("prores.mov") : QStringLiteral("h264.mov"));
    spec.size = QSize(1920, 1080);
    spec.frames = proRes ? 96 : 480;
    spec.groupSize = 240;
    if (proRes) {
        spec.encoder = QStringLiteral("prores_ks");
        spec.pixelFormat = QStringLiteral("yuv422p10le");
    }
    if (!QFile::exists(spec.path)) (void)bool(makeMovie(spec));
    return spec.path;
}

void openMovie(benchmark::State& state) {
    const QString path = benchMovie(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(FrameReader::open(path));
}

/// Twenty minutes in a container that has to be read through: the first opening, and one by a later run of the
/// program, which takes the table from the cache folder.
void openLong(benchmark::State& state, const char* extension) {
    static const QTemporaryDir folder;
    MovieSpec spec;
    spec.path = folder.filePath(QStringLiteral("long.") + QLatin1String(extension));
    if (QLatin1String(extension) == QLatin1String("mpg")) spec.encoder = QStringLiteral("mpeg2video");
    spec.size = QSize(320, 180);
    spec.frames = 20 * 60 * spec.rateNum;
    spec.groupSize = 2 * spec.rateNum;
    if (!QFile::exists(spec.path)) (void)bool(makeMovie(spec));
    const bool again = state.range(0);
    const QString cache = again ? folder.filePath(QStringLiteral("cache")) : QString();
    if (again) { // an earlier run
        SampleTables tables(cache);
        benchmark::DoNotOptimize(FrameReader::open(spec.path, nullptr, &tables));
    }
    for (auto _ : state) {
        SampleTables tables(cache);
        const auto reader = FrameReader::open(spec.path, nullptr, &tables);
        if (!reader) return state.SkipWithError("not opened");
        benchmark::DoNotOptimize((*reader)->read(0));
    }
}

void readInOrder(benchmark::State& state) {
    const auto reader = FrameReader::open(benchMovie(state.range(0)));
    qint64 frames = 0;
    for (auto _ : state)
        for (qint64 n = 0; n < (*reader)->index().count(); ++n, ++frames)
            benchmark::DoNotOptimize((*reader)->read(n));
    state.SetItemsProcessed(frames);
}

/// The yardstick of `readInOrder`: the codec library alone, with as many threads.
void decodeAlone(benchmark::State& state) {
    qint64 frames = 0;
    for (auto _ : state) {
        av::FormatPtr format;
        AVFormatContext* opened = nullptr;
        if (avformat_open_input(&opened, benchMovie(state.range(0)).toUtf8().constData(), nullptr, nullptr) <
            0)
            return state.SkipWithError("no movie");
        format.reset(opened);
        avformat_find_stream_info(opened, nullptr);
        const AVCodecParameters* parameters = opened->streams[0]->codecpar;
        const AVCodec* decoder = avcodec_find_decoder(parameters->codec_id);
        const av::CodecPtr codec(avcodec_alloc_context3(decoder));
        avcodec_parameters_to_context(codec.get(), parameters);
        codec->thread_count = int(std::thread::hardware_concurrency());
        avcodec_open2(codec.get(), decoder, nullptr);
        const av::PacketPtr packet(av_packet_alloc());
        const av::FramePtr frame(av_frame_alloc());
        for (bool atEnd = false; !atEnd; av_packet_unref(packet.get())) {
            atEnd = av_read_frame(opened, packet.get()) < 0;
            if (!atEnd && packet->stream_index != 0) continue;
            avcodec_send_packet(codec.get(), atEnd ? nullptr : packet.get());
            while (avcodec_receive_frame(codec.get(), frame.get()) >= 0)
                ++frames;
        }
    }
    state.SetItemsProcessed(frames);
}

BENCHMARK(openMovie)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(openLong, mkv, "mkv")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(openLong, ts, "ts")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(openLong, mpg, "mpg")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(readInOrder)->Arg(0)->Arg(1)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(decodeAlone)->Arg(0)->Arg(1)->UseRealTime()->Unit(benchmark::kMillisecond);

} // namespace
} // namespace daylark

BENCHMARK_MAIN();
