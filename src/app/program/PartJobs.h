#pragma once

#include "app/program/ProgressBoard.h"
#include "base/jobs/WorkQueue.h"

#include <map>

namespace daylark {

/// The long jobs of one part: told on the board, done one after the other on a thread of their own. The part owns it as its last
/// member, so that jobs under way are given up and waited for before anything that they use goes. Interface thread, the flags
/// excepted.
class PartJobs {
public:
    using Flag = std::shared_ptr<const CancelFlag>;
    struct Job {
        int id = 0;
        Flag cancelled; ///< read by the worker
    };

    explicit PartJobs(ProgressBoard& board)
        : board_(board) {}
    ~PartJobs();
    PartJobs(const PartJobs&) = delete;
    PartJobs& operator=(const PartJobs&) = delete;

    /// Told in the progress window too.
    [[nodiscard]] Job begin(const ProgressBoard::Texts& texts);
    void run(std::function<void()> work) { work_.run(std::move(work)); }
    bool end(int id); ///< true when a person cancelled it

    [[nodiscard]] bool isBusy() const { return !flags_.empty(); }
    [[nodiscard]] ProgressBoard& board() { return board_; }

private:
    ProgressBoard& board_;
    std::map<int, std::shared_ptr<CancelFlag>> flags_;
    WorkQueue work_; ///< its destructor waits
};

} // namespace daylark
