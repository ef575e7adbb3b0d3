#include "app/program/ProgressBoard.h"

#include <algorithm>

namespace daylark {

namespace {

template<class Jobs>
auto jobWithId(Jobs& jobs, int id) {
    return std::find_if(jobs.begin(), jobs.end(), [id](const auto& job) { return job.id == id; });
}

} // namespace

int ProgressBoard::begin(const QString& title, qint64 total, bool window) {
    const int id = nextId_++;
    jobs_.push_back({id, title, 0, total, window, std::make_shared<std::atomic<bool>>(false)});
    Q_EMIT changed();
    return id;
}

void ProgressBoard::advance(int id, qint64 done, qint64 total) {
    const auto job = jobWithId(jobs_, id);
    if (job == jobs_.end() || (job->done == done && job->total == total)) return;
    job->done = done;
    job->total = total;
    Q_EMIT changed();
}

void ProgressBoard::end(int id) {
    const auto job = jobWithId(jobs_, id);
    if (job == jobs_.end()) return;
    jobs_.erase(job);
    Q_EMIT changed();
}

void ProgressBoard::cancel(int id) {
    const auto job = jobWithId(jobs_, id);
    if (job == jobs_.end() || job->cancelled->exchange(true)) return;
    Q_EMIT changed();
}

std::shared_ptr<std::atomic<bool>> ProgressBoard::cancelFlag(int id) const {
    const auto job = jobWithId(jobs_, id);
    return job == jobs_.end() ? nullptr : job->cancelled;
}

} // namespace daylark
