#pragma once

#include <QElapsedTimer>

namespace daylark {

/// Tells a worker when to say how far it is: ten times a second, which is all that anybody can read, however many files or bytes
/// go by. Made when the work begins, on whatever thread; used by one.
class ReportPace {
public:
    ReportPace() { sinceReport_.start(); }
    /// True when the next word is due; it is taken as said.
    [[nodiscard]] bool isDue() {
        if (sinceReport_.elapsed() < everyMs) return false;
        sinceReport_.restart();
        return true;
    }

private:
    static constexpr qint64 everyMs = 100;
    QElapsedTimer sinceReport_;
};

} // namespace daylark
