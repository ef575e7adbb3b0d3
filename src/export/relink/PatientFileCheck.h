#pragma once

#include "base/jobs/Patience.h"
#include "model/Movie.h"

namespace daylark {

/// Looks for one file after the other; what lies on a share that doesn't answer is not found. As `PatientQuestions`.
class PatientFileCheck {
public:
    [[nodiscard]] FileCheck operator()(const FileReference& file, const CancelFlag* cancelled);

private:
    PatientQuestions questions_;
};

} // namespace daylark
