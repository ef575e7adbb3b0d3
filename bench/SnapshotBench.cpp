// How long the interface thread is held while a session of 10,000 movies is written: the snapshot, beside
// what a worker then does with it (the yardstick) and the reading of the same bytes.
#include "model/Session.h"

#include <benchmark/benchmark.h>

#include <QColor>
#include <QImage>

using namespace daylark;

namespace {

constexpr int movieCount = 10000;

Image benchThumbnail(int number) {
    QImage picture(150, 84, QImage::Format_RGB32);
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            picture.setPixel(x, y, qRgb((x / 8 + number) & 255, y / 4, 90));
    return Image::fromQImage(picture);
}

std::shared_ptr<Bookmark> benchBookmark(int number) {
    auto bookmark = std::make_shared<Bookmark>(1 + number % 50, 24, 24.0F);
    bookmark->computeTimecodeWithOffset();
    bookmark->overlayString = QStringLiteral("bookmark %1").arg(number);
    for (int stroke = 0; number % 10 == 0 && stroke < 3; ++stroke) {
        Stroke made{{}, 1, Qt::yellow, 10, 1};
        for (int point = 0; point < 40; ++point)
            made.points.emplace_back(point * 3.25, number % 1000 + point);
        bookmark->drawings.strokes.push_back(made);
    }
    return bookmark;
}

const SessionContents& benchSession() {
    static const SessionContents contents = [] {
        auto playlist = std::make_shared<Playlist>();
        for (int i = 0; i < movieCount; ++i) {
            auto movie =
                std::make_shared<Movie>(QStringLiteral("/dailies/day/A%1.mov").arg(i), QByteArray(90, 'b'));
            movie->thumbnail = benchThumbnail(i);
            movie->notes = AttributedString(QStringLiteral("note %1").arg(i));
            movie->setFlag(900 + i % 8);
            movie->bookmarkStore = {benchBookmark(2 * i), benchBookmark(2 * i + 1)};
            playlist->movieList.push_back(movie);
        }
        SessionContents made;
        made.playlists = {playlist};
        return made;
    }();
    return contents;
}

void snapshot(benchmark::State& state) {
    const SessionContents& session = benchSession(); // made before the clock runs
    for (auto _ : state) {
        auto copy = std::make_unique<SessionContents>(snapshotOf(session));
        state.PauseTiming(); // the worker throws it away
        copy.reset();
        state.ResumeTiming();
    }
}

void encode(benchmark::State& state) {
    const SessionContents& session = benchSession();
    for (auto _ : state)
        benchmark::DoNotOptimize(encodeSession(session));
}

void decode(benchmark::State& state) {
    const QByteArray bytes = encodeSession(benchSession());
    state.counters["MB"] = double(bytes.size()) / 1e6;
    for (auto _ : state)
        benchmark::DoNotOptimize(decodeSession(bytes));
}

BENCHMARK(snapshot)->Unit(benchmark::kMillisecond)->MinTime(1);
BENCHMARK(encode)->Unit(benchmark::kMillisecond);
BENCHMARK(decode)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
