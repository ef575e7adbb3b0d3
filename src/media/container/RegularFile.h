#pragma once

#include "base/Result.h"
#include "base/jobs/CancelFlag.h"

#include <QString>

namespace daylark {

/// What the file system says of a media file before anybody opens it. A pipe, a device, a socket or a folder is none,
/// whatever it is called: opening one could wait for ever, or do something. Worker threads.
struct RegularFile {
    qint64 size = 0;     ///< bytes, more than none
    qint64 modified = 0; ///< milliseconds since 1970

    /// Without opening it. Errors: none there, no file, empty, and a file system that does not answer within 5 s.
    [[nodiscard]] static Result<RegularFile> at(const QString& path, const CancelFlag* cancel = nullptr);
};

} // namespace daylark
