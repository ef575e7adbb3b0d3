#include "tool/bench/PlaybackBenches.h"

#include "playback/read/DecodeThread.h"
#include "playback/read/FrameCache.h"
#include "preferences/Preferences.h"
#include "tool/ToolContext.h"
#include "tool/MediaArgument.h"

#include <CLI/CLI.hpp>

#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <random>
#include <vector>

namespace daylark::tool {
namespace {

/// Small, so that nearly all of the movie is read as the later part of a long one is: into memory that the
/// cache gives up.
constexpr int usualDecodeMiB = 256;

struct BenchArguments {
    std::string file, from = "last";
    int count = 0, cache = 0;
    unsigned seed = 1;
    bool fresh = false, backward = false;
};

double millisecondsOf(const QElapsedTimer& timer) {
    return double(timer.nsecsElapsed()) / 1e6;
}

/// The player's reading without its clock: the decode thread and the cache it fills, asked as the player
/// asks.
class Reading {
public:
    Reading()
        : cache_(FrameCache::defaultBudget())
        , decoder_(
              cache_, [this](const DecodeThread::Opening& opening) { opened(opening); }, [this] { look(); }) {
    }

    /// The milliseconds it took; the reason when it cannot be opened.
    Result<double> open(const QString& path) {
        QElapsedTimer timer;
        timer.start();
        cache_.reset(++generation_);
        decoder_.open(generation_, path);
        std::unique_lock lock(mutex_);
        answered_.wait(lock, [this] { return opening_.generation == generation_; });
        if (!opening_.index) return Error{opening_.reason};
        if (opening_.index->count() == 0) return Error{QStringLiteral("no picture")};
        return millisecondsOf(timer);
    }
    [[nodiscard]] qint64 frames() const { return opening_.index->count(); }
    /// Forgets the pictures; the decoder stands where it stood.
    void forgetPictures() { cache_.reset(generation_); }
    /// The milliseconds from the demand until the frame's picture is ready to draw.
    double ready(qint64 frame, int direction) {
        QElapsedTimer timer;
        timer.start();
        cache_.setTravel({frame, direction, {}});
        decoder_.want(generation_, {.target = frame, .direction = direction});
        std::unique_lock lock(mutex_);
        answered_.wait(lock, [&] { return cache_.contains(frame); });
        return millisecondsOf(timer);
    }

private:
    void opened(const DecodeThread::Opening& opening) {
        const std::lock_guard lock(mutex_);
        opening_ = opening;
        answered_.notify_one();
    }
    void look() {
        const std::lock_guard lock(mutex_); // so that no answer falls between a look and the wait
        answered_.notify_one();
    }

    FrameCache cache_;
    quint64 generation_ = 0;
    std::mutex mutex_;
    std::condition_variable answered_;
    DecodeThread::Opening opening_;
    DecodeThread decoder_; // last: its thread ends before what it uses
};

QJsonObject figuresOf(std::vector<double> times, qint64 frames) {
    std::sort(times.begin(), times.end());
    const size_t last = times.size() - 1;
    return {{QStringLiteral("frames"), frames},
            {QStringLiteral("medianMs"), times[times.size() / 2]},
            {QStringLiteral("p95Ms"), times[std::min(last, times.size() * 95 / 100)]},
            {QStringLiteral("maxMs"), times.back()}};
}

void benchDecode(ToolContext& context, const BenchArguments& arguments) {
    const std::optional<QString> media = mediaArgument(context, arguments.file);
    if (!media) return;
    const QString path = *media;
    QElapsedTimer timer;
    timer.start();
    const auto reader = FrameReader::open(path);
    if (!reader) return context.fail(path, reader.error().text);
    const double openMs = millisecondsOf(timer);
    FrameCache cache(qint64(arguments.cache) << 20);
    cache.reset(1);
    const qint64 frames = (*reader)->index().count();
    for (qint64 n = 0; n < frames; ++n) {
        const Result<VideoFrame> picture = (*reader)->read(n);
        if (!picture) return context.fail(path, picture.error().text);
        cache.setTravel({n, 1, {}});
        cache.put(1, n, *picture);
    }
    const double seconds = millisecondsOf(timer) / 1000;
    context.print(QJsonDocument(QJsonObject{{QStringLiteral("frames"), frames},
                                            {QStringLiteral("seconds"), seconds},
                                            {QStringLiteral("fps"), double(frames) / seconds},
                                            {QStringLiteral("openMs"), openMs}}));
}

void benchSeek(ToolContext& context, const BenchArguments& arguments) {
    const std::optional<QString> media = mediaArgument(context, arguments.file);
    if (!media) return;
    const QString path = *media;
    Reading reading;
    const auto opened = reading.open(path);
    if (!opened) return context.fail(path, opened.error().text);
    const double firstPictureMs = *opened + reading.ready(0, 1);
    std::mt19937 random(arguments.seed);
    std::vector<double> times;
    QJsonArray targets; // from 1
    for (int i = 0; i < arguments.count; ++i) {
        const qint64 frame = qint64(random() % quint64(reading.frames()));
        targets.append(frame + 1);
        if (arguments.fresh) {
            if (const auto done = reading.open(path); !done) return context.fail(path, done.error().text);
        } else {
            reading.forgetPictures();
        }
        times.push_back(reading.ready(frame, 1));
    }
    QJsonObject figures = figuresOf(std::move(times), reading.frames());
    figures[QStringLiteral("targets")] = targets;
    figures[QStringLiteral("openMs")] = *opened;
    figures[QStringLiteral("firstPictureMs")] = firstPictureMs;
    context.print(QJsonDocument(figures));
}

void benchStep(ToolContext& context, const BenchArguments& arguments) {
    const std::optional<QString> media = mediaArgument(context, arguments.file);
    if (!media) return;
    const QString path = *media;
    Reading reading;
    if (const auto done = reading.open(path); !done) return context.fail(path, done.error().text);
    bool isNumber = false;
    const qint64 number = QString::fromStdString(arguments.from).toLongLong(&isNumber);
    const qint64 last = reading.frames() - 1;
    qint64 frame = isNumber ? std::clamp<qint64>(number - 1, 0, last) : last;
    const int direction = arguments.backward ? -1 : 1;
    QJsonObject figures{{QStringLiteral("jumpMs"), reading.ready(frame, 1)}};
    std::vector<double> times;
    for (int i = 0; i < arguments.count; ++i) {
        frame += direction;
        if (frame < 0 || frame > last) break;
        times.push_back(reading.ready(frame, direction));
    }
    if (times.empty()) return context.fail(path, QStringLiteral("no frame to step to"));
    const QJsonObject steps = figuresOf(std::move(times), reading.frames());
    for (auto field = steps.begin(); field != steps.end(); ++field)
        figures[field.key()] = field.value();
    context.print(QJsonDocument(figures));
}

} // namespace

void addPlaybackBenches(CLI::App& bench, ToolContext& context) {
    const auto arguments = std::make_shared<BenchArguments>();
    CLI::App* decode =
        bench.add_subcommand("decode", "The whole movie through the player's reader and cache");
    decode->footer("Example: daylark-tool bench decode A001.mov --cache 4096");
    decode->add_option("FILE", arguments->file)->required();
    decode
        ->add_option("--cache", arguments->cache,
                     "what decoded pictures may take, in MiB; where the whole movie fits, each picture is read into new memory")
        ->default_val(usualDecodeMiB)
        ->check(CLI::Range(1, 1 << 20));
    decode->callback([=, &context] { benchDecode(context, *arguments); });

    const auto jumps = std::make_shared<BenchArguments>();
    CLI::App* seek = bench.add_subcommand("seek", "Jumps to random frames, the cache emptied before each");
    seek->footer("Example: daylark-tool bench seek A001.mov --count 40 --seed 1");
    seek->add_option("FILE", jumps->file)->required();
    seek->add_option("--count", jumps->count, "jumps")->default_val(40)->check(CLI::Range(1, 100000));
    seek->add_option("--seed", jumps->seed, "of the frame numbers")->default_val(1);
    seek->add_flag("--fresh", jumps->fresh,
                   "opens the movie anew before each, so that no decoder stands near");
    seek->callback([=, &context] { benchSeek(context, *jumps); });

    const auto steps = std::make_shared<BenchArguments>();
    CLI::App* step =
        bench.add_subcommand("step", "Single steps, each asked for when the one before is shown");
    step->footer("Example: daylark-tool bench step A001.mov --from last --backward");
    step->add_option("FILE", steps->file)->required();
    step->add_option("--count", steps->count, "steps")->default_val(60)->check(CLI::Range(1, 100000));
    step->add_option("--from", steps->from, "last, or a frame number from 1")->default_val("last");
    step->add_flag("--backward", steps->backward, "backwards");
    step->callback([=, &context] { benchStep(context, *steps); });
}

} // namespace daylark::tool
