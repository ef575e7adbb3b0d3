#include "app/program/ProgressBoard.h"

#include <QLocale>

#include <algorithm>
#include <limits>

namespace daylark {

namespace {

template<class Jobs>
auto jobWithId(Jobs& jobs, int id) {
    return std::find_if(jobs.begin(), jobs.end(), [id](const auto& job) { return job.id == id; });
}

} // namespace

QString ProgressBoard::Job::line() const {
    if (texts.count == Count::untold || total <= 0) return texts.title;
    return tr("%1 %2 of %3").arg(texts.title).arg(done).arg(total);
}

ProgressBoard::Job::Bar ProgressBoard::Job::bar() const {
    const qint64 unit = total / (std::numeric_limits<int>::max() / 2) + 1;
    return {int(done / unit), int(total / unit)};
}

QString ProgressBoard::bytesText(qint64 done, qint64 total) {
    const QLocale locale;
    const auto text = [&locale](qint64 bytes) { return locale.formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat); };
    return tr("%1 of %2").arg(text(done), text(total));
}

int ProgressBoard::begin(const Texts& texts, qint64 total, bool window) {
    const int id = nextId_++;
    jobs_.push_back({id, texts, 0, total, window, std::make_shared<CancelFlag>(false)});
    Q_EMIT changed();
    return id;
}

void ProgressBoard::say(int id, const Texts& texts) {
    const auto job = jobWithId(jobs_, id);
    if (job == jobs_.end()) return;
    job->texts = texts;
    Q_EMIT changed();
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

std::shared_ptr<CancelFlag> ProgressBoard::cancelFlag(int id) const {
    const auto job = jobWithId(jobs_, id);
    return job == jobs_.end() ? nullptr : job->cancelled;
}

} // namespace daylark
