#include "media/FrameReader.h"

#include "demo/MovieMaker.h"

#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <random>

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

void readInOrder(benchmark::State& state) {
    const auto reader = FrameReader::open(benchMovie(state.range(0)));
    qint64 frames = 0;
    for (auto _ : state)
        for (qint64 n = 0; n < (*reader)->index().count(); ++n, ++frames)
            benchmark::DoNotOptimize((*reader)->read(n));
    state.SetItemsProcessed(frames);
}

void jump(benchmark::State& state) {
    const auto reader = FrameReader::open(benchMovie(state.range(0)));
    std::mt19937 random(1);
    for (auto _ : state)
        benchmark::DoNotOptimize((*reader)->read(random() % quint64((*reader)->index().count())));
}

void render(benchmark::State& state) {
    const auto reader = FrameReader::open(benchMovie(state.range(0)));
    const Result<VideoFrame> frame = (*reader)->read(0);
    const QSize size = state.range(1) ? QSize(int(state.range(1)), int(state.range(1)) * 9 / 16) : QSize();
    for (auto _ : state)
        benchmark::DoNotOptimize(renderFrame(*frame, size));
}

BENCHMARK(openMovie)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(readInOrder)->Arg(0)->Arg(1)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(jump)->Arg(0)->Arg(1)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(render)->Args({0, 0})->Args({0, 1280})->Args({0, 100})->Args({1, 0})->Args({1, 1280})->Unit(
    benchmark::kMillisecond);

} // namespace
} // namespace daylark

BENCHMARK_MAIN();
