#pragma once

#include <QSemaphore>
#include <QThread>
#include <QThreadPool>

#include <algorithm>
#include <atomic>
#include <memory>

namespace daylark {

/// Has idle cores help with the pieces from 0 to before `count`, and returns when all are done. What they have
/// no hands for is done by the caller, who waits for nothing but pieces under way. `work` is called with a
/// piece's number, from several threads at once. Any thread.
template<class Work>
void shareOut(int count, Work work) {
    struct Shared {
        std::atomic<int> next{0};
        QSemaphore done;
    };
    const auto shared = std::make_shared<Shared>();
    const auto take = [shared, count, work] {
        for (int piece = shared->next++; piece < count; piece = shared->next++) {
            work(piece);
            shared->done.release();
        }
    };
    for (int helper = 1; helper < std::min(count, QThread::idealThreadCount()); ++helper)
        if (!QThreadPool::globalInstance()->tryStart(take)) break;
    take();
    shared->done.acquire(count);
}

} // namespace daylark
