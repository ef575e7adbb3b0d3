#include "tool/bench/PlayBench.h"

#include "annotate/GradeArithmetic.h"
#include "model/runs/MovieRun.h"
#include "picture/PictureRenderer.h"
#include "playback/run/PlaybackClock.h"
#include "playback/run/Player.h"
#include "tool/bench/BenchSupport.h"
#include "tool/ColourArgument.h"
#include "tool/GradeArgument.h"
#include "tool/ToolContext.h"
#include "tool/MediaArgument.h"

#include <CLI/CLI.hpp>

#include <QElapsedTimer>
#include <QJsonObject>

#include <algorithm>
#include <cmath>

namespace daylark::tool {
namespace {

struct PlayArguments {
    std::string file, size, grade, layer;
    ColourArguments colour;
    std::vector<std::string> files;
    double seconds = 5, rate = 1;
    int count = 0;
    bool yardstick = false;
};

/// Each picture is rendered where it is shown, before the next one is looked for.
class Screen {
public:
    Screen(Player& player, const PictureRequest& request)
        : request_(request) {
        QObject::connect(&player, &Player::frameShown, &player,
                         [this](const VideoFrame& picture, qint64 number) { show(picture, number); });
    }
    void begin() {
        timer_.start();
        moments_.assign(1, 0);
        numbers_.clear();
    }
    /// As pictures of a run go through it.
    void setDisplay(const std::shared_ptr<const DisplayProcessor>& display) {
        request_.display = display;
        request_.quickly = true;
    }
    [[nodiscard]] const PictureRequest& request() const { return request_; }
    [[nodiscard]] double elapsedMs() const { return msOf(timer_); }
    [[nodiscard]] qint64 shown() const { return qint64(numbers_.size()); }
    [[nodiscard]] double longestGapMs() const {
        double longest = 0;
        for (size_t i = 1; i < moments_.size(); ++i)
            longest = std::max(longest, moments_[i] - moments_[i - 1]);
        return longest;
    }

private:
    void show(const VideoFrame& picture, qint64 number) {
        lastPicture_ = renderPicture(picture, request_);
        if (!timer_.isValid()) return;
        moments_.push_back(msOf(timer_));
        numbers_.push_back(number);
    }

    PictureRequest request_;
    QElapsedTimer timer_;
    std::vector<double> moments_;
    std::vector<qint64> numbers_;
    QImage lastPicture_;
};

QSize sizeOf(const std::string& text) {
    const QStringList parts = QString::fromStdString(text).toLower().split(QLatin1Char('x'));
    return parts.size() == 2 ? QSize(parts[0].toInt(), parts[1].toInt()) : QSize();
}

/// The last frame of the unbroken stretch that is ready from the current one on; from 1.
qint64 readyUntil(const Player& player) {
    for (const auto& [first, last] : player.readyRanges())
        if (first <= player.currentFrame() && player.currentFrame() <= last) return last;
    return player.currentFrame();
}

/// Processor seconds of decoding frames `first` to `last` and converting `shown` of them, and nothing else.
double yardstickSeconds(const QString& path, qint64 first, qint64 last, qint64 shown,
                        const PictureRequest& request) {
    auto reader = FrameReader::open(path);
    if (!reader) return 0;
    if (!(*reader)->read(first - 1)) return 0;
    const double before = processorSeconds();
    for (qint64 n = first; n < last; ++n)
        if (const auto picture = (*reader)->read(n); picture && n - first < shown)
            static_cast<void>(renderPicture(*picture, request));
    return processorSeconds() - before;
}

void benchPlay(ToolContext& context, const PlayArguments& arguments) {
    const std::optional<QString> media = mediaArgument(context, arguments.file, arguments.layer);
    if (!media) return;
    const QString path = *media;
    const Result<Grade> grade = gradeArgument(QString::fromStdString(arguments.grade));
    if (!grade) return context.fail(path, grade.error().text);
    PictureRequest request;
    request.size = sizeOf(arguments.size);
    request.colour = colourTransformOf(*grade);
    MonotonicClock clock;
    Player player(clock);
    Screen screen(player, request);
    if (!shownFirst(context, player, path)) return;
    const auto display = arguments.colour.processorFor(context, player.shownFrame(),
                                                       {pathOfAddress(path), {}, false, RunAddress::of(path).has_value()});
    if (!display) return;
    screen.setDisplay(*display);
    const double frameMs = 1000.0 * double(player.index().endTicks) / double(player.index().timeScale) /
                           double(player.index().count()) / std::abs(arguments.rate);
    if (!(frameMs > 0) || !std::isfinite(frameMs))
        return context.fail(path, QStringLiteral("nothing to play"));
    player.setLoops(true); // a movie shorter than the time plays on
    if (arguments.rate < 0) {
        player.setCurrentTime(player.duration());
        if (!awaited([&] { return player.pictureIsCurrent(); }))
            return context.fail(path, QStringLiteral("no picture came"));
    }
    QElapsedTimer start;
    start.start();
    player.setRate(float(arguments.rate));
    if (!awaited([&] { return player.isRolling(); }))
        return context.fail(path, QStringLiteral("the run did not begin"));
    const double startMs = msOf(start), processorBefore = processorSeconds();
    const qint64 readyAtFirst = readyUntil(player);
    screen.begin();
    const qint64 expected = std::llround(arguments.seconds * 1000 / frameMs);
    runFor((double(expected) + 0.5) * frameMs - screen.elapsedMs());
    const double processor = processorSeconds() - processorBefore;
    const qint64 shown = screen.shown(), readyAtLast = readyUntil(player);
    const double cacheMiB = double(player.statistics().cacheBytes) / (1024 * 1024),
                 peakMiB = peakResidentMiB();
    player.setRate(0);
    QJsonObject figures{{QStringLiteral("expected"), expected},
                        {QStringLiteral("shown"), shown},
                        {QStringLiteral("dropped"), std::max<qint64>(0, expected - shown)},
                        {QStringLiteral("longestGapMs"), screen.longestGapMs()},
                        {QStringLiteral("startMs"), startMs},
                        {QStringLiteral("cpuSeconds"), processor},
                        {QStringLiteral("cacheMiB"), cacheMiB},
                        {QStringLiteral("peakMemoryMiB"), peakMiB}};
    if (arguments.yardstick && arguments.rate > 0 && readyAtLast > readyAtFirst) {
        player.close();
        const double alone = yardstickSeconds(path, readyAtFirst, readyAtLast, shown, screen.request());
        figures[QStringLiteral("framesDecoded")] = readyAtLast - readyAtFirst;
        figures[QStringLiteral("yardstickCpuSeconds")] = alone;
        figures[QStringLiteral("cpuToYardstick")] = alone > 0 ? processor / alone : 0;
    }
    context.print(QJsonDocument(figures));
}

/// Goes through the movies in order and back; the next and the previous one were made ready while one stood.
void benchNext(ToolContext& context, const PlayArguments& arguments) {
    MonotonicClock clock;
    Player player(clock);
    const qsizetype count = qsizetype(arguments.files.size());
    std::vector<double> times;
    QStringList media;
    for (const std::string& file : arguments.files) {
        const std::optional<QString> one = mediaArgument(context, file);
        if (!one) return;
        media.append(*one);
    }
    const auto path = [&](qsizetype place) { return media[place]; };
    if (!shownFirst(context, player, path(0))) return;
    qsizetype place = 0;
    for (int change = 0; change < arguments.count; ++change) {
        const bool turn = (change / std::max<qsizetype>(1, count - 1)) % 2 != 0;
        std::vector<NeighbourMovie> neighbours;
        if (place + 1 < count) neighbours.push_back({path(place + 1), {}});
        if (place > 0) neighbours.push_back({path(place - 1), {}});
        player.setNeighbours(neighbours);
        runFor(arguments.seconds * 1000);
        place += turn ? -1 : 1;
        QElapsedTimer timer;
        timer.start();
        if (!shownFirst(context, player, path(place))) return;
        times.push_back(msOf(timer));
    }
    context.print(QJsonDocument(QJsonObject{{QStringLiteral("medianMs"), quantile(times, 0.5)},
                                            {QStringLiteral("p95Ms"), quantile(times, 0.95)},
                                            {QStringLiteral("maxMs"), quantile(times, 1)},
                                            {QStringLiteral("peakMemoryMiB"), peakResidentMiB()}}));
}

} // namespace

void addPlayBenches(CLI::App& bench, ToolContext& context) {
    const auto arguments = std::make_shared<PlayArguments>();
    CLI::App* play = bench.add_subcommand("play", "Plays in real time, each picture rendered in software");
    play->footer("Example: daylark-tool bench play A001.mov --seconds 10 --size 1280x720 --grade gamma=1.2");
    play->add_option("FILE", arguments->file)->required();
    play->add_option("--seconds", arguments->seconds, "how long")
        ->default_val(5)
        ->check(CLI::Range(0.1, 86400.0));
    play->add_option("--rate", arguments->rate, "negative: backwards")
        ->default_val(1)
        ->check([](const std::string& text) {
            return std::abs(std::atof(text.c_str())) >= 0.01 ? std::string() : std::string("a rate is not 0");
        });
    play->add_option("--size", arguments->size, "of the pictures, WxH; the movie's own where left out")
        ->check([](const std::string& text) {
            return sizeOf(text).isEmpty() ? std::string("a size is WIDTHxHEIGHT") : std::string();
        });
    play->add_option("--grade", arguments->grade, "exposure=1,gamma=2,...");
    play->add_option("--layer", arguments->layer, "of a run: a layer or a channel, as probe lists them");
    arguments->colour.addTo(*play);
    play->add_flag(
        "--yardstick", arguments->yardstick,
        "also measures decoding and converting the same frames alone (movies longer than the run)");
    play->callback([=, &context] { benchPlay(context, *arguments); });

    const auto changes = std::make_shared<PlayArguments>();
    CLI::App* next = bench.add_subcommand("next", "Goes from movie to movie of a list and back");
    next->footer("Example: daylark-tool bench next A001.mov A002.mov A003.mov");
    next->add_option("FILE", changes->files)->required()->expected(2, -1);
    next->add_option("--seconds", changes->seconds, "on each movie")
        ->default_val(1)
        ->check(CLI::Range(0.0, 600.0));
    next->add_option("--count", changes->count, "changes")->default_val(20)->check(CLI::Range(1, 100000));
    next->callback([=, &context] { benchNext(context, *changes); });
}

} // namespace daylark::tool
