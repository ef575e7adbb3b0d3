#pragma once

#include "base/jobs/CancelFlag.h"

#include <QtGlobal>

#include <functional>

namespace daylark {

/// How the writing of a file is followed and ended early; both may be left out.
struct ExportWatch {
    const CancelFlag* cancelled = nullptr;
    std::function<void(qint64 done, qint64 total)> progress = {}; ///< in whatever the work counts; on the writing thread

    [[nodiscard]] bool isCancelled() const { return cancelled && cancelled->load(); }
    void tell(qint64 done, qint64 total) const {
        if (progress) progress(done, total);
    }
};

} // namespace daylark
