#include "ui/desktop/InterfaceWatchdog.h"

#include <algorithm>
#include <cstdio>

namespace daylark {

namespace {
constexpr int dueEveryMs = 5;
}

InterfaceWatchdog::InterfaceWatchdog(QObject* parent)
    : QObject(parent) {
    timer_.setTimerType(Qt::PreciseTimer);
    connect(&timer_, &QTimer::timeout, this, [this] {
        const double late = double(since_.nsecsElapsed()) / 1e6 - dueEveryMs;
        since_.start();
        longestMs_ = std::max(longestMs_, late);
    });
    timer_.start(dueEveryMs);
    since_.start();
}

InterfaceWatchdog::~InterfaceWatchdog() {
    if (qEnvironmentVariableIntValue("DAYLARK_WATCHDOG") == 1)
        std::fprintf(stderr, "interface thread: longest busy %.1f ms\n", longestMs_);
}

void InterfaceWatchdog::restart() {
    longestMs_ = 0;
    since_.start();
}

} // namespace daylark
