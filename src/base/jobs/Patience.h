#pragma once

#include "base/jobs/CancelFlag.h"

#include <QString>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <thread>

namespace daylark {

/// How long a question to a file system may take: a share whose server is gone never answers, and nothing ends such a
/// wait.
constexpr std::chrono::seconds fileSystemPatience{5};

/// Asks on a thread of its own and waits for the answer at most so long, or until it is cancelled. Nothing means that
/// none came: the thread is left behind with what it was given, and its answer is dropped. `ask` therefore holds all that
/// it touches by value. Any thread but the interface's.
template<class Answer>
[[nodiscard]] std::optional<Answer> askWithPatience(std::function<Answer()> ask, std::chrono::milliseconds most,
                                                    const CancelFlag* cancel = nullptr) {
    struct Shared {
        std::mutex mutex;
        std::condition_variable answered;
        std::optional<Answer> answer;
    };
    const auto shared = std::make_shared<Shared>();
    std::thread([shared, ask = std::move(ask)] {
        Answer answer = ask();
        {
            const std::lock_guard lock(shared->mutex);
            shared->answer = std::move(answer);
        }
        shared->answered.notify_one();
    }).detach();
    constexpr std::chrono::milliseconds lookForCancel{50};
    const auto end = std::chrono::steady_clock::now() + most;
    std::unique_lock lock(shared->mutex);
    while (!shared->answer && std::chrono::steady_clock::now() < end && !(cancel && cancel->load()))
        shared->answered.wait_for(lock, lookForCancel);
    return std::move(shared->answer);
}

/// Questions about one file after the other, on shares that may be gone: one that doesn't answer is waited for once, and about
/// what lies there nothing is asked any more; the next run of questions may get its answers. Owned by the run; its thread.
class PatientQuestions {
public:
    template<class Answer>
    [[nodiscard]] std::optional<Answer> ask(const QString& path, std::function<Answer()> question,
                                            const CancelFlag* cancel = nullptr) {
        if (silent_.contains(shareOf(path))) return std::nullopt;
        std::optional<Answer> answer = askWithPatience<Answer>(std::move(question), fileSystemPatience, cancel);
        if (!answer && !(cancel && cancel->load())) silent_.insert(shareOf(path));
        return answer;
    }

private:
    /// Where a share could be mounted: the path's first two names.
    [[nodiscard]] static QString shareOf(const QString& path) { return path.section(QLatin1Char('/'), 0, 2); }

    std::set<QString> silent_; ///< shares that did not answer
};

} // namespace daylark
