#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

namespace daylark {

/// Measures how long the interface thread was busy without a turn of its loop: a timer that is due every few
/// milliseconds and how late it came. Costs next to nothing; interface thread.
class InterfaceWatchdog : public QObject {
    Q_OBJECT
public:
    explicit InterfaceWatchdog(QObject* parent = nullptr);
    ~InterfaceWatchdog() override; ///< prints when DAYLARK_WATCHDOG=1

    void restart(); ///< forgets what it has seen

private:
    QTimer timer_;
    QElapsedTimer since_;
    double longestMs_ = 0;
};

} // namespace daylark
