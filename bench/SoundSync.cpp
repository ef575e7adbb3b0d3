// How well sound and picture keep together, measured at the ears: plays a movie of flashes and beeps through
// the machine's sound output and records what a PulseAudio monitor hears meanwhile.
//
//     SoundSync MOVIE RATE[,RATE...] SECONDS [MONITOR]      (a RATE for SECONDS each, changed in the run)
//
// MOVIE is made where there is none. A line a beep: seconds of the movie, milliseconds by which the beep came
// after the picture; then median, 95 %, worst and drift over each rate.
#include "support/MovieMaker.h"
#include "playback/sound/DeviceSound.h"
#include "playback/run/Player.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QPainter>
#include <QProcess>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <thread>
#include <vector>

using namespace daylark;

namespace {

constexpr int framesASecond = 24, recordedRate = 48000;

double nowSeconds() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double>(now).count();
}

bool makeFlashes(const QString& path, int seconds) {
    MovieSpec spec;
    spec.path = path;
    spec.frames = seconds * framesASecond;
    spec.groupSize = framesASecond;
    spec.encoderOptions = {{QStringLiteral("preset"), QStringLiteral("ultrafast")}};
    spec.sound = true;
    spec.barCode = false;
    spec.paint = [&](QPainter& painter, int number) {
        painter.fillRect(QRect(QPoint(), spec.size), (number - 1) % framesASecond ? Qt::black : Qt::white);
    };
    return bool(makeMovie(spec));
}

/// Reads the recorder's samples as they come and notes when loud stretches begin. A sample was heard at the
/// earliest moment that any sample's arrival allows: pipes only ever delay.
class Recorder {
public:
    explicit Recorder(const QString& monitor) {
        process_.setProgram(QStringLiteral("parec"));
        process_.setArguments({QStringLiteral("--device=") + monitor, QStringLiteral("--format=float32le"),
                               QStringLiteral("--rate=%1").arg(recordedRate), QStringLiteral("--channels=1"),
                               QStringLiteral("--latency-msec=5"), QStringLiteral("--raw")});
        process_.start();
        QObject::connect(&process_, &QProcess::readyReadStandardOutput, [this] { take(); });
    }
    ~Recorder() {
        process_.kill();
        process_.waitForFinished();
    }
    /// In seconds of the monotonic clock.
    std::vector<double> beeps() const {
        std::vector<double> times;
        for (const qint64 sample : beeps_)
            times.push_back(originOf(sample) + double(sample) / recordedRate);
        return times;
    }

private:
    struct Arrival {
        qint64 sample;
        double origin; ///< the recording's beginning if that sample had not been delayed
    };
    void take() {
        const double now = nowSeconds();
        const QByteArray bytes = process_.readAllStandardOutput();
        for (qsizetype at = 0; at + 4 <= bytes.size(); at += 4, ++count_) {
            float value = 0;
            memcpy(&value, bytes.constData() + at, 4);
            if (std::abs(value) < 0.12f) continue;
            if (count_ - loud_ > recordedRate / 100) {
                if (count_ - loud_ > recordedRate / 5) beeps_.push_back(count_);
            }
            loud_ = count_;
        }
        arrivals_.push_back({count_, now - double(count_) / recordedRate});
    }
    /// The least delay within ten seconds around, so that a drift between the clocks shows as none of the
    /// player's.
    double originOf(qint64 sample) const {
        double origin = 1e300;
        for (const Arrival& arrival : arrivals_)
            if (std::abs(arrival.sample - sample) < 5 * recordedRate)
                origin = std::min(origin, arrival.origin);
        return origin;
    }
    QProcess process_;
    qint64 count_ = 0, loud_ = -recordedRate;
    std::vector<qint64> beeps_;
    std::vector<Arrival> arrivals_;
};

struct Flash {
    int second; ///< of the movie
    double time;
    float rate;
};

void report(float rate, const std::vector<std::pair<int, double>>& delays) {
    if (delays.empty()) return;
    std::vector<double> sorted, sizes;
    double meanX = 0, meanY = 0, xy = 0, xx = 0;
    for (const auto& [second, delay] : delays) {
        sorted.push_back(delay);
        sizes.push_back(std::abs(delay));
        meanX += second / double(delays.size());
        meanY += delay / double(delays.size());
    }
    for (const auto& [second, delay] : delays) {
        xy += (second - meanX) * (delay - meanY);
        xx += (second - meanX) * (second - meanX);
    }
    std::sort(sorted.begin(), sorted.end());
    std::sort(sizes.begin(), sizes.end());
    std::printf("rate %.2f: %zu beeps, median %+.1f ms, from %+.1f to %+.1f, 95 %% within %.1f, worst %.1f, "
                "drift %+.2f ms "
                "a minute\n",
                double(rate), sorted.size(), sorted[sorted.size() / 2], sorted.front(), sorted.back(),
                sizes[sizes.size() * 95 / 100], sizes.back(), xx > 0 ? xy / xx * 60 : 0.0);
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 4) {
        std::fputs("SoundSync MOVIE RATE[,RATE...] SECONDS [MONITOR]\n", stderr);
        return 2;
    }
    std::vector<float> rates;
    for (const QString& rate : arguments[2].split(u','))
        rates.push_back(rate.toFloat());
    const double seconds = arguments[3].toDouble();
    double movieSeconds = 2;
    for (const float rate : rates)
        movieSeconds += double(rate) * seconds;
    if (!QFileInfo::exists(arguments[1]) && !makeFlashes(arguments[1], int(movieSeconds))) return 1;

    Recorder recorder(arguments.value(4, QStringLiteral("@DEFAULT_MONITOR@")));
    DeviceSound sound;
    MonotonicClock clock;
    Player player(clock, nullptr, 0, &sound);
    player.setVolume(1);
    std::vector<Flash> flashes;
    size_t at = 0;
    QObject::connect(&player, &Player::frameShown, [&](const VideoFrame&, qint64 number) {
        if (player.rate() != 0 && (number - 1) % framesASecond == 0)
            flashes.push_back({int((number - 1) / framesASecond), nowSeconds(), rates[at]});
    });
    QTimer next;
    QObject::connect(&next, &QTimer::timeout, [&] {
        if (++at < rates.size()) {
            player.setRate(rates[at]);
        } else {
            --at;
            player.setRate(0);
            QTimer::singleShot(500, &application, &QCoreApplication::quit);
        }
    });
    QObject::connect(&player, &Player::openFailed, [&] { QCoreApplication::exit(1); });
    QObject::connect(&player, &Player::opened, [&] {
        QTimer::singleShot(3000, &player,
                           [&] { // a sink that slept may take two seconds to wake for the recorder
                               player.setRate(rates[0]);
                               next.start(int(seconds * 1000));
                           });
    });
    player.open(arguments[1]);
    if (const int code = QCoreApplication::exec(); code != 0) return code;

    const std::vector<double> beeps = recorder.beeps();
    for (const float rate : rates) {
        std::vector<std::pair<int, double>> delays;
        size_t silent = 0;
        for (const Flash& flash : flashes) {
            if (flash.rate != rate) continue;
            const auto nearest = std::min_element(beeps.begin(), beeps.end(), [&](double a, double b) {
                return std::abs(a - flash.time) < std::abs(b - flash.time);
            });
            if (nearest == beeps.end() || std::abs(*nearest - flash.time) > 0.24 / double(rate)) {
                ++silent;
                continue;
            }
            delays.emplace_back(flash.second, (*nearest - flash.time) * 1000);
            std::printf("%6d %+.1f\n", flash.second, delays.back().second);
        }
        report(rate, delays);
        if (silent > 0) std::printf("rate %.2f: %zu flashes without a beep\n", double(rate), silent);
    }
    return 0;
}
