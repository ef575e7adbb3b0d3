#include "tool/bench/BenchSupport.h"

#include "playback/run/Player.h"
#include "tool/ToolContext.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QTimer>

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace daylark::tool {

double msOf(const QElapsedTimer& timer) {
    return double(timer.nsecsElapsed()) / 1e6;
}

void runFor(double milliseconds) {
    QEventLoop loop;
    QTimer::singleShot(std::max(0, int(std::lround(milliseconds))), Qt::PreciseTimer, &loop,
                       &QEventLoop::quit);
    loop.exec();
}

bool awaited(const std::function<bool()>& condition, double limitMs) {
    QElapsedTimer timer;
    timer.start();
    QTimer alarm; // wakes the loop where nothing else does
    alarm.start(5);
    while (!condition()) {
        if (msOf(timer) > limitMs) return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
    return true;
}

bool shownFirst(ToolContext& context, Player& player, const QString& path) {
    QString reason;
    bool failed = false;
    const auto connection = QObject::connect(&player, &Player::openFailed, &player, [&](const QString& text) {
        failed = true;
        reason = text;
    });
    player.open(path);
    const bool answered = awaited([&] { return failed || player.pictureIsCurrent(); });
    QObject::disconnect(connection);
    if (answered && !failed) return true;
    context.fail(path, failed ? reason : QStringLiteral("no picture came"));
    return false;
}

double processorSeconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& time) { return double(time.tv_sec) + double(time.tv_usec) / 1e6; };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

double peakResidentMiB() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return double(usage.ru_maxrss) / 1024;
}

double residentMiB() {
    QFile pages(QStringLiteral("/proc/self/statm"));
    if (!pages.open(QIODevice::ReadOnly)) return 0;
    const QList<QByteArray> fields = pages.readAll().split(' ');
    return fields.size() < 2 ? 0 : fields[1].toDouble() * double(sysconf(_SC_PAGESIZE)) / (1024 * 1024);
}

double quantile(std::vector<double> values, double part) {
    if (values.empty()) return 0;
    std::sort(values.begin(), values.end());
    return values[std::min(values.size() - 1, size_t(double(values.size()) * part))];
}

double meanOf(const std::vector<double>& values) {
    return values.empty() ? 0 : std::accumulate(values.begin(), values.end(), 0.0) / double(values.size());
}

} // namespace daylark::tool
