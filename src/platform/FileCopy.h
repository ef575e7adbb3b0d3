#pragma once

#include "base/jobs/CancelFlag.h"
#include "platform/UnfinishedFile.h"

#include <QString>

#include <functional>

namespace daylark {

/// How a copy is followed and ended early.
struct CopyWatch {
    const CancelFlag* cancelled = nullptr;             ///< null: nobody ends it
    std::function<void(qint64 bytes)> progress = {}; ///< bytes of this file so far, often; on the copying thread
};

/// How a copy ended.
struct CopyOutcome {
    enum class End {
        copied,
        destination_exists, ///< it stays as it is
        source_missing,
        cancelled,
        failed
    };
    End end = End::failed;
    qint64 bytes = 0; ///< the copied file's size; 0 unless it was copied
    QString reason;   ///< in the system's words, without a path; null when copied or cancelled
    explicit operator bool() const { return end == End::copied; }
};

/// Bytes inside a file.
struct FilePart {
    qint64 offset = 0, length = 0;
};

/// Copies one file's content, times and permissions; a link is followed. Whole or not at all: the copy is made beside the
/// final name (`UnfinishedFile`), and a file that changes while it is read is no copy. The blocks are shared where the file
/// system can, else copied by the kernel, else read and written; holes stay holes. Worker threads.
[[nodiscard]] CopyOutcome copyFile(const QString& from, const QString& to, UnfinishedFile::Existing existing,
                                   const CopyWatch& watch = {});

/// As above, of the bytes of a file that begin at `offset` (a movie that lies in another file). Errors, too, when the file
/// holds fewer.
[[nodiscard]] CopyOutcome copyPartOfFile(const QString& from, FilePart part, const QString& to,
                                         UnfinishedFile::Existing existing, const CopyWatch& watch = {});

} // namespace daylark
