#pragma once

#include "base/jobs/CancelFlag.h"
#include "model/Movie.h"

#include <QString>

#include <set>

namespace daylark {

/// Looks for one file after the other, on shares that may be gone: one that doesn't answer is waited for once, and what lies
/// there is not found; the next run of looks may find it. Owned by the run; its worker thread.
class PatientFileCheck {
public:
    [[nodiscard]] FileCheck operator()(const FileReference& file, const CancelFlag* cancelled);

private:
    std::set<QString> silent_; ///< shares that did not answer
};

} // namespace daylark
