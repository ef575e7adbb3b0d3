#pragma once

#include <QObject>

class QSocketNotifier;

namespace daylark {

/// SIGTERM, SIGINT and SIGHUP as an event in the loop, so that the program ends in its order. Made by main
/// before any thread starts, because threads inherit which signals are held back. Interface thread.
class TerminationSignals : public QObject {
    Q_OBJECT
public:
    static void holdBack(); ///< first thing in main
    explicit TerminationSignals(QObject* parent = nullptr);
    ~TerminationSignals() override;

Q_SIGNALS:
    void received();

private:
    int descriptor_ = -1;
    QSocketNotifier* notifier_ = nullptr;
};

} // namespace daylark
