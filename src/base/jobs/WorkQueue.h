#pragma once

#include <QObject>
#include <QThreadPool>

#include <functional>
#include <memory>
#include <utility>

namespace daylark {

/// Threads that carry one part's slow work, and the way back: jobs get values and answer with `deliver`,
/// which runs on the receiver's thread and never after the receiver is gone. With one thread the jobs run in
/// the order given. Owned by the part, whose destructor ends it first (it waits for the jobs); `run` by any thread,
/// `wait` and `forgetWaiting` by the one that owns it.
class WorkQueue {
public:
    enum class Pace { normal, background }; ///< background threads yield to playback and to the interface

    explicit WorkQueue(int threads = 1, Pace pace = Pace::normal);
    ~WorkQueue() { wait(); }

    void run(std::function<void()> job);
    void wait() { pool_.waitForDone(); }
    void forgetWaiting() { pool_.clear(); } ///< jobs that have not begun are dropped

    /// Runs `answer` on the receiver's thread, after whatever was delivered before it.
    template<class Answer>
    static void deliver(QObject* receiver, Answer&& answer) {
        QMetaObject::invokeMethod(receiver, std::forward<Answer>(answer), Qt::QueuedConnection);
    }

private:
    QThreadPool pool_;
    Pace pace_;
};

} // namespace daylark
