#include "tool/bench/DragBench.h"

#include "playback/run/PlaybackClock.h"
#include "playback/run/Player.h"
#include "tool/bench/BenchSupport.h"
#include "tool/ToolContext.h"
#include "tool/MediaArgument.h"

#include <CLI/CLI.hpp>

#include <QJsonObject>

#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>

namespace daylark::tool {
namespace {

struct DragArguments {
    std::string file;
    double seconds = 3, sweep = 3;
    int count = 0, cache = 0;
    bool whole = false, group = false;
};

/// The stretch of the movie that the hand goes to and fro over; frames from 0.
struct Stretch {
    qint64 first = 0, last = 0;
};

/// What the drags of one kind came to, one value a drag or, of distances, one an event.
struct Tallies {
    std::vector<double> rates, gaps, distances, rests, jumps, blindShares;
    qint64 notNearer = 0;

    [[nodiscard]] QJsonObject figures() const {
        return {{QStringLiteral("picturesPerSecond"), quantile(rates, 0.5)},
                {QStringLiteral("fewestPicturesPerSecond"), quantile(rates, 0)},
                {QStringLiteral("notNearer"), notNearer},
                {QStringLiteral("meanDistanceFrames"), meanOf(distances)},
                {QStringLiteral("p95DistanceFrames"), quantile(distances, 0.95)},
                {QStringLiteral("longestGapMs"), quantile(gaps, 1)},
                {QStringLiteral("fifthsOfASecondWithout"), meanOf(blindShares)},
                {QStringLiteral("restMedianMs"), quantile(rests, 0.5)},
                {QStringLiteral("restMaxMs"), quantile(rests, 1)},
                {QStringLiteral("freshJumpMedianMs"), quantile(jumps, 0.5)}};
    }
};

/// What is shown while one drag lasts.
class Follower {
public:
    explicit Follower(Player& player)
        : player_(player)
        , shown_(player.currentFrame()) {
        timer_.start();
        connection_ = QObject::connect(&player, &Player::frameShown, &player,
                                       [this](const VideoFrame&, qint64 number) { look(number); });
    }
    ~Follower() { QObject::disconnect(connection_); }
    Follower(const Follower&) = delete;
    Follower& operator=(const Follower&) = delete;

    [[nodiscard]] double elapsedMs() const { return msOf(timer_); }
    void noteDistance(std::vector<double>& distances) const {
        distances.push_back(double(std::abs(shown_ - player_.currentFrame())));
    }
    void tellTo(Tallies& tallies) {
        const double end = elapsedMs();
        moments_.push_back(end);
        tallies.rates.push_back(double(moments_.size() - 1) / (end / 1000));
        double longest = 0, last = 0;
        std::vector<bool> followed(size_t(end / fifthMs));
        for (const double moment : moments_) {
            longest = std::max(longest, moment - last);
            last = moment;
            if (const auto fifth = size_t(moment / fifthMs); fifth < followed.size() && moment < end)
                followed[fifth] = true;
        }
        tallies.gaps.push_back(longest);
        tallies.notNearer += notNearer_;
        if (!followed.empty())
            tallies.blindShares.push_back(double(std::count(followed.begin(), followed.end(), false)) /
                                          double(followed.size()));
    }

private:
    static constexpr double fifthMs = 200;
    void look(qint64 number) {
        const qint64 hand = player_.currentFrame();
        notNearer_ += std::abs(number - hand) >= std::abs(shown_ - hand);
        shown_ = number;
        moments_.push_back(elapsedMs());
    }

    Player& player_;
    QElapsedTimer timer_;
    QMetaObject::Connection connection_;
    qint64 shown_ = 0, notNearer_ = 0;
    std::vector<double> moments_;
};

/// One drag over a movie just opened, and its rest; then a jump to the same place, the movie opened anew.
bool dragOnce(ToolContext& context, Player& player, const DragArguments& arguments, bool whole, int round,
              Tallies& tallies) {
    const std::optional<QString> media = mediaArgument(context, arguments.file);
    if (!media) return false;
    const QString path = *media;
    constexpr double eventMs = 8;
    player.close();
    if (!shownFirst(context, player, path)) return false;
    const SampleIndex& index = player.index();
    Stretch stretch{0, index.count() - 1};
    if (!whole) { // two seconds and a half, out of the middle of the movie's last group
        constexpr qint64 length = 60;
        qint64 key = stretch.last;
        while (key > 0 && !index.samples[size_t(key)].key)
            --key;
        if (stretch.last - key < length) key = 0; // each picture stands for itself
        const qint64 middle = (key + stretch.last) / 2;
        stretch = {std::max<qint64>(0, middle - length / 2), std::min(stretch.last, middle + length / 2)};
    }
    player.setDragging(true);
    qint64 frame = 0;
    {
        Follower follower(player);
        for (double next = 0; next < arguments.seconds * 1000; next += eventMs) {
            const double turns = next / (arguments.sweep * 1000) + 0.13 * round;
            const double part = 0.5 - 0.5 * std::cos(2 * std::numbers::pi * turns);
            frame = stretch.first + qint64(part * double(stretch.last - stretch.first));
            player.setCurrentTime(index.timeOf(frame));
            runFor(next + eventMs - follower.elapsedMs());
            follower.noteDistance(tallies.distances);
        }
        follower.tellTo(tallies);
    }
    QElapsedTimer timer;
    timer.start();
    if (!awaited([&] { return player.pictureIsCurrent(); })) return false;
    tallies.rests.push_back(msOf(timer));
    player.setDragging(false);
    player.close();
    if (!shownFirst(context, player, path)) return false;
    timer.restart();
    player.setCurrentTime(player.index().timeOf(frame));
    if (!awaited([&] { return player.pictureIsCurrent(); })) return false;
    tallies.jumps.push_back(msOf(timer));
    return true;
}

void benchDrag(ToolContext& context, const DragArguments& arguments) {
    MonotonicClock clock;
    Player player(clock, nullptr, qint64(arguments.cache) << 20);
    QJsonObject figures;
    for (const bool whole : {true, false}) {
        if (arguments.whole != arguments.group && whole != arguments.whole) continue;
        Tallies tallies;
        for (int round = 0; round < arguments.count; ++round)
            if (!dragOnce(context, player, arguments, whole, round, tallies)) return;
        figures[whole ? QStringLiteral("wholeMovie") : QStringLiteral("withinAGroup")] = tallies.figures();
    }
    context.print(QJsonDocument(figures));
}

} // namespace

void addDragBench(CLI::App& bench, ToolContext& context) {
    const auto arguments = std::make_shared<DragArguments>();
    CLI::App* drag = bench.add_subcommand(
        "drag",
        "A hand drags the position to and fro, an event every 8 ms, over the whole movie and over 60 frames "
        "within a group, the movie opened anew for each drag. It follows by picturesPerSecond: distinct "
        "pictures shown a second while the hand moves. notNearer counts those that were not nearer to the "
        "hand than the one before; the distances are frames between hand and picture, looked at with every "
        "event; restMs is from the last event to the exact picture, beside a jump to the same frame in the "
        "movie opened anew.");
    drag->footer("Example: daylark-tool bench drag A001.mov --seconds 4");
    drag->add_option("FILE", arguments->file)->required();
    drag->add_option("--seconds", arguments->seconds, "of each drag")
        ->default_val(3)
        ->check(CLI::Range(0.1, 600.0));
    drag->add_option("--sweep", arguments->sweep, "seconds there and back")
        ->default_val(3)
        ->check(CLI::Range(0.1, 600.0));
    drag->add_option("--count", arguments->count, "drags of each kind")
        ->default_val(5)
        ->check(CLI::Range(1, 1000));
    drag->add_option("--cache", arguments->cache, "what decoded pictures may take, in MiB; 0: as usual")
        ->default_val(0)
        ->check(CLI::Range(0, 1 << 20));
    drag->add_flag("--whole", arguments->whole, "over the whole movie only");
    drag->add_flag("--group", arguments->group, "within a group only");
    drag->callback([=, &context] { benchDrag(context, *arguments); });
}

} // namespace daylark::tool
