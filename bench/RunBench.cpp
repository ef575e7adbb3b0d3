// A run of 1080p pictures (half EXR by ZIP and by DWAA, 10-bit DPX) through the reader, and through decode thread and cache,
// beside the library alone: the same files, warm, as many threads, its own inner threads or one file a thread, whichever is
// quicker. Pictures a second and ratios of the same run; then a step inside the cache, and how long a run of 1,000 takes to
// open.
#include "media/sequence/RunReader.h"
#include "playback/read/DecodeThread.h"
#include "playback/read/FrameCache.h"
#include "playback/run/Player.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>

#include <OpenImageIO/imageio.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <condition_variable>
#include <cstdio>
#include <functional>
#include <mutex>
#include <random>
#include <thread>
#include <vector>

namespace daylark {
namespace {

using Clock = std::chrono::steady_clock;

struct Kind {
    const char *name, *extension, *compression;
    OIIO::TypeDesc numbers;
    int bits;
};

constexpr int width = 1920, height = 1080, frames = 24, rounds = 3;

double secondsOf(const std::function<void()>& work) {
    const auto start = Clock::now();
    work();
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/// Smooth parts, edges and grain, as pictures have them.
std::vector<float> madePicture(int number) {
    std::mt19937 random(unsigned(number) + 1);
    std::normal_distribution<float> spread(0, 0.01F);
    std::vector<float> grain(99991); // of no length that lines have
    std::generate(grain.begin(), grain.end(), [&] { return spread(random); });
    std::vector<float> pixels;
    pixels.reserve(size_t(width) * height * 3);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const float shade = 0.3F + 0.25F * std::sin(float(x + 9 * number) * 0.011F) * std::cos(float(y) * 0.017F);
            const float edge = ((x / 160 + y / 120 + number / 4) % 3 == 0) ? 1.6F : 1.0F;
            for (int channel = 0; channel < 3; ++channel)
                pixels.push_back(
                    std::max(0.0F, shade * edge * (0.7F + 0.2F * float(channel)) + grain[pixels.size() % grain.size()]));
        }
    return pixels;
}

bool isWritten(OIIO::ImageOutput* out, const std::string& path, const OIIO::ImageSpec& spec,
               const std::vector<float>& pixels) {
    return out && out->open(path, spec) && out->write_image(OIIO::TypeDesc::FLOAT, pixels.data()) && out->close();
}

RunAddress madeRun(const QString& folder, const Kind& kind) {
    RunAddress address;
    address.folder = folder;
    address.movie.run = {QString::fromLatin1(kind.name) + QLatin1Char('.'),
                         QLatin1Char('.') + QString::fromLatin1(kind.extension),
                         4,
                         false,
                         1001,
                         1000 + frames,
                         1};
    for (int frame = 0; frame < frames; ++frame) {
        OIIO::ImageSpec spec(width, height, 3, kind.numbers);
        if (*kind.compression) spec.attribute("compression", kind.compression);
        if (kind.bits) spec.attribute("oiio:BitsPerSample", kind.bits);
        const std::string path = QFile::encodeName(address.pathOf(1001 + frame)).toStdString();
        const auto out = OIIO::ImageOutput::create(path);
        const std::vector<float> pixels = madePicture(frame);
        if (!isWritten(out.get(), path, spec, pixels)) std::abort();
    }
    return address;
}

/// The library alone: pictures a second. Asked for the numbers as they stand in the file it is the quickest: named, even the
/// same ones take a way of their own.
double libraryAlone(const RunAddress& address, const Kind& kind, int threads) {
    const int bytes = kind.numbers.basesize() == 1 ? 1 : 2;
    std::atomic<int> next = 0;
    const auto read = [&] {
        std::vector<char> buffer(size_t(width) * height * 3 * size_t(bytes));
        for (int frame = next++; frame < frames; frame = next++) {
            const auto in = OIIO::ImageInput::open(QFile::encodeName(address.pathOf(1001 + frame)).toStdString());
            if (!in || !in->read_image(0, 0, 0, 3, OIIO::TypeDesc::UNKNOWN, buffer.data())) std::abort();
        }
    };
    const double seconds = secondsOf([&] {
        std::vector<std::thread> others;
        for (int i = 1; i < threads; ++i)
            others.emplace_back(read);
        read();
        for (std::thread& each : others)
            each.join();
    });
    return frames / seconds;
}

double throughReader(const RunAddress& address) {
    const auto reader = openRun(address);
    if (!reader) std::abort();
    const double seconds = secondsOf([&] {
        for (int frame = 0; frame < frames; ++frame)
            if (!(*reader)->read(frame)) std::abort();
    });
    return frames / seconds;
}

double throughCache(const RunAddress& address) {
    FrameCache cache(qint64(4) << 30);
    cache.reset(1);
    std::mutex mutex;
    std::condition_variable wake;
    bool isOpened = false;
    DecodeThread decoder(
        cache,
        [&](const DecodeThread::Opening&) {
            const std::lock_guard lock(mutex);
            isOpened = true;
            wake.notify_all();
        },
        [&] { wake.notify_all(); });
    decoder.open(1, address.text());
    std::unique_lock lock(mutex);
    wake.wait(lock, [&] { return isOpened; });
    const double seconds = secondsOf([&] {
        cache.setTravel({0, 1, {}});
        decoder.want(1, {.target = 0, .direction = 1, .playing = true});
        while (!cache.contains(frames - 1))
            wake.wait_for(lock, std::chrono::milliseconds(1));
    });
    return frames / seconds;
}

void compare(const RunAddress& address, const Kind& kind) {
    const int threads = std::max(1, QThread::idealThreadCount());
    double alone = 0, reader = 0, cache = 0;
    for (int round = 0; round < rounds; ++round) { // the first one warms the disk
        alone = std::max({alone, libraryAlone(address, kind, 1), libraryAlone(address, kind, threads)});
        reader = std::max(reader, throughReader(address));
        cache = std::max(cache, throughCache(address));
    }
    std::printf("%-10s library alone %6.1f a second   reader %6.1f (%.2f)   thread and cache %6.1f (%.2f)\n", kind.name, alone,
                reader, reader / alone, cache, cache / alone);
}

/// From the key to the picture, everything being there.
void step(const RunAddress& address) {
    MonotonicClock clock;
    Player player(clock, nullptr, qint64(4) << 30);
    bool isOpened = false;
    QObject::connect(&player, &Player::opened, [&isOpened] { isOpened = true; });
    player.open(address.text());
    const auto stand = [&player] {
        while (!player.pictureIsCurrent())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    };
    while (!isOpened)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    stand();
    for (int i = 1; i < frames; ++i) { // standing, it reads a few pictures ahead only: each is gone to once
        player.stepForward();
        stand();
    }
    player.gotoBeginning();
    stand();
    std::vector<double> milliseconds;
    for (int i = 0; i < 200; ++i) {
        const bool forwards = i / (frames - 1) % 2 == 0;
        milliseconds.push_back(1000 * secondsOf([&] {
            forwards ? player.stepForward() : player.stepBackward();
            while (!player.pictureIsCurrent())
                QCoreApplication::processEvents();
        }));
    }
    std::sort(milliseconds.begin(), milliseconds.end());
    std::printf("a step inside the cache: median %.3f ms, longest %.3f ms\n", milliseconds[100], milliseconds.back());
}

void openMany(const QString& folder) {
    constexpr int many = 1000;
    const Kind kind{"many", "exr", "zip", OIIO::TypeDesc::HALF, 0};
    RunAddress address;
    address.folder = folder;
    address.movie.run = {QStringLiteral("many."), QStringLiteral(".exr"), 4, false, 1001, 1000 + many, 1};
    OIIO::ImageSpec spec(width, height, 3, kind.numbers);
    const std::string first = QFile::encodeName(address.pathOf(1001)).toStdString();
    const auto out = OIIO::ImageOutput::create(first);
    if (!isWritten(out.get(), first, spec, madePicture(0))) std::abort();
    for (int frame = 1; frame < many; ++frame)
        QFile::link(address.pathOf(1001), address.pathOf(1001 + frame));
    double best = 1e9;
    for (int i = 0; i < 5; ++i)
        best = std::min(best, 1000 * secondsOf([&] {
            if (!openRun(address)) std::abort();
        }));
    std::printf("a run of %d pictures opens in %.1f ms\n", many, best);
}

void run() {
    const QTemporaryDir folder;
    const Kind kinds[] = {{"exr-zip", "exr", "zip", OIIO::TypeDesc::HALF, 0},
                          {"exr-dwaa", "exr", "dwaa:45", OIIO::TypeDesc::HALF, 0},
                          {"dpx-10", "dpx", "", OIIO::TypeDesc::UINT16, 10}};
    for (const Kind& kind : kinds) {
        const RunAddress address = madeRun(folder.path(), kind);
        compare(address, kind);
        if (&kind == kinds) step(address);
    }
    openMany(folder.path());
}

} // namespace
} // namespace daylark

int main(int argc, char** argv) {
    std::setvbuf(stdout, nullptr, _IOLBF, 0); // what is known stands there, however long the rest takes
    QCoreApplication application(argc, argv);
    daylark::run();
}
