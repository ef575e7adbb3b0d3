#include "ui/desktop/TerminationSignals.h"

#include <QSocketNotifier>

#include <csignal>
#include <sys/signalfd.h>
#include <unistd.h>

namespace daylark {

namespace {

sigset_t endingSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int number : {SIGTERM, SIGINT, SIGHUP})
        sigaddset(&signals, number);
    return signals;
}

} // namespace

void TerminationSignals::holdBack() {
    const sigset_t signals = endingSignals();
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

TerminationSignals::TerminationSignals(QObject* parent)
    : QObject(parent) {
    const sigset_t signals = endingSignals();
    descriptor_ = signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
    if (descriptor_ < 0) return;
    notifier_ = new QSocketNotifier(descriptor_, QSocketNotifier::Read, this);
    connect(notifier_, &QSocketNotifier::activated, this, [this] {
        signalfd_siginfo info;
        bool any = false;
        while (read(descriptor_, &info, sizeof info) == ssize_t(sizeof info))
            any = true;
        if (any) Q_EMIT received();
    });
}

TerminationSignals::~TerminationSignals() {
    delete notifier_;
    if (descriptor_ >= 0) close(descriptor_);
}

} // namespace daylark
