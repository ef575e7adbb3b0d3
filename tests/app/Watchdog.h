#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <algorithm>
#include <ctime>
#include <iostream>

namespace daylark::test {

/// The longest single turn of the interface thread's event loop: as the clock on the wall has it, and in the
/// thread's own processor time, which other programs on the machine do not lengthen.
class Watchdog {
public:
    Watchdog() {
        restart();
        QObject::connect(&timer_, &QTimer::timeout, [this] {
            longestWall_ = std::max(longestWall_, wall_.nsecsElapsed());
            longestOwn_ = std::max(longestOwn_, ownTime() - own_);
            restart();
        });
        timer_.start(0);
    }
    void print(const char* what) const {
        std::cout << "longest turn of the event loop " << what << ": " << double(longestWall_) / 1e6
                  << " ms, of it " << double(longestOwn_) / 1e6 << " ms its own work\n";
    }

private:
    static qint64 ownTime() {
        timespec time{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return qint64(time.tv_sec) * 1000000000 + time.tv_nsec;
    }
    void restart() {
        wall_.start();
        own_ = ownTime();
    }

    QTimer timer_;
    QElapsedTimer wall_;
    qint64 own_ = 0, longestWall_ = 0, longestOwn_ = 0;
};

} // namespace daylark::test
