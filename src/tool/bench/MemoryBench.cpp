#include "tool/bench/MemoryBench.h"

#include "playback/run/PlaybackClock.h"
#include "playback/run/Player.h"
#include "tool/bench/BenchSupport.h"
#include "tool/ToolContext.h"

#include <CLI/CLI.hpp>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>
#include <QTemporaryDir>

#include <algorithm>
#include <memory>
#include <random>

namespace daylark::tool {
namespace {

struct MemoryArguments {
    std::vector<std::string> files;
    int budget = 0, movies = 0, changes = 0;
    double seconds = 0;
};

constexpr double mebi = 1024 * 1024;

/// How far the process has grown, looked at often.
class Growth {
public:
    Growth()
        : before_(residentMiB()) {}
    void look() {
        const double now = residentMiB() - before_;
        most_ = std::max(most_, now);
        looks_.push_back(now);
    }
    void look(double milliseconds) {
        QElapsedTimer timer;
        timer.start();
        do {
            runFor(5);
            look();
        } while (msOf(timer) < milliseconds);
    }
    [[nodiscard]] QJsonObject takeFigures(const Player& player, double budget) {
        const PlayerStatistics statistics = player.statistics();
        const QJsonObject figures{{QStringLiteral("mostMiB"), most_},
                                  {QStringLiteral("medianMiB"), quantile(looks_, 0.5)},
                                  {QStringLiteral("mostToBudget"), most_ / budget},
                                  {QStringLiteral("countedMiB"), double(statistics.cacheBytes) / mebi}};
        most_ = 0;
        looks_.clear();
        return figures;
    }

private:
    double before_ = 0, most_ = 0;
    std::vector<double> looks_;
};

void benchMemory(ToolContext& context, const MemoryArguments& arguments) {
    const QString path = QString::fromStdString(arguments.files.front());
    MonotonicClock clock;
    QJsonObject figures{{QStringLiteral("budgetMiB"), arguments.budget}};
    Growth growth;
    Player player(clock, nullptr, qint64(arguments.budget) << 20);
    if (!shownFirst(context, player, path)) return;
    const double share = arguments.seconds * 1000 / 4;
    player.setLoops(true);
    for (const float rate : {1.0f, -1.0f}) {
        player.setRate(rate);
        growth.look(share);
        player.setRate(0);
        figures[rate > 0 ? QStringLiteral("playing") : QStringLiteral("playingBackwards")] =
            growth.takeFigures(player, arguments.budget);
    }
    std::mt19937 random(1);
    QElapsedTimer timer;
    for (timer.start(); msOf(timer) < share; growth.look()) {
        player.setCurrentTime(player.index().timeOf(qint64(random() % quint64(player.index().count()))));
        if (!awaited([&] { return player.pictureIsCurrent(); })) return;
    }
    figures[QStringLiteral("jumping")] = growth.takeFigures(player, arguments.budget);
    for (timer.start(); msOf(timer) < share; growth.look()) {
        player.stepBackward();
        if (!awaited([&] { return player.pictureIsCurrent(); })) return;
    }
    figures[QStringLiteral("stepping")] = growth.takeFigures(player, arguments.budget);
    player.close();
    runFor(500);
    growth.look();
    figures[QStringLiteral("closed")] = growth.takeFigures(player, arguments.budget);
    context.print(QJsonDocument(figures));
}

/// As many movies as wanted: the files over and over, each under names of its own.
QStringList listOf(const MemoryArguments& arguments, const QTemporaryDir& folder) {
    QStringList list;
    for (int number = 0; number < arguments.movies; ++number) {
        const QFileInfo file(
            QString::fromStdString(arguments.files[size_t(number) % arguments.files.size()]));
        list += folder.filePath(QStringLiteral("%1_%2").arg(number).arg(file.fileName()));
        QFile::link(file.absoluteFilePath(), list.back());
    }
    return list;
}

void benchList(ToolContext& context, const MemoryArguments& arguments) {
    const QTemporaryDir folder;
    const QStringList list = listOf(arguments, folder);
    MonotonicClock clock;
    Player player(clock, nullptr, qint64(arguments.budget) << 20);
    QJsonArray rows;
    std::vector<double> times;
    std::vector<int> milestones;
    for (const int milestone : {1, 20, 100, 200, 400})
        if (milestone < arguments.changes) milestones.push_back(milestone);
    milestones.push_back(arguments.changes);
    for (int change = 1; change <= arguments.changes; ++change) {
        const auto place = qsizetype(change - 1) % list.size();
        const auto beside = [&](qsizetype by) { return list[(place + by + list.size()) % list.size()]; };
        QElapsedTimer timer;
        timer.start();
        if (!shownFirst(context, player, list[place])) return;
        times.push_back(msOf(timer));
        player.setNeighbours({{beside(1), {}}, {beside(-1), {}}});
        player.setRate(1);
        runFor(arguments.seconds * 1000);
        if (std::find(milestones.begin(), milestones.end(), change) == milestones.end()) continue;
        const QDir descriptors(QStringLiteral("/proc/self/fd"));
        rows.append(QJsonObject{
            {QStringLiteral("changes"), change},
            {QStringLiteral("residentMiB"), residentMiB()},
            {QStringLiteral("countedMiB"), double(player.statistics().cacheBytes) / mebi},
            {QStringLiteral("openFiles"),
             qint64(descriptors.entryList(QDir::Files | QDir::System | QDir::NoDotAndDotDot).size())}});
    }
    player.setNeighbours({});
    player.close();
    runFor(500);
    context.print(QJsonDocument(QJsonObject{{QStringLiteral("movies"), qint64(list.size())},
                                            {QStringLiteral("memory"), rows},
                                            {QStringLiteral("closedResidentMiB"), residentMiB()},
                                            {QStringLiteral("medianMs"), quantile(times, 0.5)},
                                            {QStringLiteral("p95Ms"), quantile(times, 0.95)}}));
}

void addMemoryBench(CLI::App& bench, ToolContext& context) {
    const auto arguments = std::make_shared<MemoryArguments>();
    CLI::App* memory = bench.add_subcommand(
        "memory", "Plays both ways, jumps and steps, and looks how far the process grows beside the budget");
    memory->footer("Example: daylark-tool bench memory A001.mov --budget 512");
    memory->add_option("FILE", arguments->files)->required()->expected(1);
    memory->add_option("--budget", arguments->budget, "what decoded pictures may take, in MiB")
        ->default_val(512)
        ->check(CLI::Range(1, 1 << 20));
    memory->add_option("--seconds", arguments->seconds, "in all")
        ->default_val(20)
        ->check(CLI::Range(0.1, 86400.0));
    memory->callback([=, &context] { benchMemory(context, *arguments); });
}

void addListBench(CLI::App& bench, ToolContext& context) {
    const auto arguments = std::make_shared<MemoryArguments>();
    CLI::App* list = bench.add_subcommand(
        "list", "Plays its way through a long list and prints what the process holds after so many changes");
    list->footer("Example: daylark-tool bench list A001.mov A002.mov --movies 200 --changes 400");
    list->add_option("FILE", arguments->files, "stand in the list over and over")
        ->required()
        ->expected(1, -1);
    list->add_option("--movies", arguments->movies, "in the list")
        ->default_val(200)
        ->check(CLI::Range(2, 100000));
    list->add_option("--changes", arguments->changes, "from movie to movie")
        ->default_val(400)
        ->check(CLI::Range(1, 1000000));
    list->add_option("--seconds", arguments->seconds, "on each movie")
        ->default_val(0.3)
        ->check(CLI::Range(0.0, 600.0));
    list->add_option("--budget", arguments->budget, "what decoded pictures may take, in MiB; 0: as usual")
        ->default_val(0)
        ->check(CLI::Range(0, 1 << 20));
    list->callback([=, &context] { benchList(context, *arguments); });
}

} // namespace

void addMemoryBenches(CLI::App& bench, ToolContext& context) {
    addMemoryBench(bench, context);
    addListBench(bench, context);
}

} // namespace daylark::tool
