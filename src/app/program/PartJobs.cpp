#include "app/program/PartJobs.h"

namespace daylark {

PartJobs::~PartJobs() {
    for (const auto& [id, cancelled] : flags_)
        *cancelled = true;
}

PartJobs::Job PartJobs::begin(const ProgressBoard::Texts& texts) {
    const int id = board_.begin(texts, 0, true);
    const auto cancelled = board_.cancelFlag(id);
    flags_.emplace(id, cancelled);
    return {id, cancelled};
}

bool PartJobs::end(int id) {
    board_.end(id);
    const auto job = flags_.extract(id);
    return !job.empty() && *job.mapped();
}

} // namespace daylark
