#include "base/jobs/WorkQueue.h"

#ifdef Q_OS_LINUX
#include <sys/resource.h>
#endif

namespace daylark {

namespace {

/// Scheduling priorities mean nothing to ordinary threads here; the nice value of the calling thread does.
void yieldToOthers() {
#ifdef Q_OS_LINUX
    static thread_local bool done = false;
    if (!done) done = setpriority(PRIO_PROCESS, 0, 10) == 0;
#endif
}

} // namespace

WorkQueue::WorkQueue(int threads, Pace pace)
    : pace_(pace) {
    pool_.setMaxThreadCount(threads);
    pool_.setExpiryTimeout(-1);
}

void WorkQueue::run(std::function<void()> job) {
    pool_.start([job = std::move(job), pace = pace_] {
        if (pace == Pace::background) yieldToOthers();
        job();
    });
}

} // namespace daylark
