#pragma once

#include <QAbstractEventDispatcher>

#include <algorithm>
#include <ctime>
#include <utility>

namespace daylark::test {

/// The interface thread's longest turn, by its own processor time: what other programs take does not count.
class BusyWatch {
public:
    BusyWatch() {
        dispatcher_ = QAbstractEventDispatcher::instance();
        awake_ = QObject::connect(dispatcher_, &QAbstractEventDispatcher::awake, [this] { turn(); });
        asleep_ = QObject::connect(dispatcher_, &QAbstractEventDispatcher::aboutToBlock, [this] { turn(); });
        since_ = now();
    }
    ~BusyWatch() {
        QObject::disconnect(awake_);
        QObject::disconnect(asleep_);
    }
    BusyWatch(const BusyWatch&) = delete;
    BusyWatch& operator=(const BusyWatch&) = delete;
    /// What was done without the loop is a turn too.
    double longestMs() {
        turn();
        return longest_;
    }

private:
    static double now() {
        timespec time{};
        ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
    }
    void turn() {
        const double at = now();
        longest_ = std::max(longest_, at - std::exchange(since_, at));
    }
    QAbstractEventDispatcher* dispatcher_;
    QMetaObject::Connection awake_, asleep_;
    double since_ = 0, longest_ = 0;
};

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || !defined(NDEBUG)
inline constexpr double mostBusyMs = 1000; // checks of the build, not of a person
#else
inline constexpr double mostBusyMs = 100;
#endif

/// What a turn may take. A slow or crowded machine adds to processor time as well: where the same thing with nothing special in
/// it takes more than half of `mostBusyMs` just now, so much more is allowed.
inline double allowedMs(double most, double plainMs) {
    return most * std::max(1.0, 2 * plainMs / mostBusyMs);
}

} // namespace daylark::test
