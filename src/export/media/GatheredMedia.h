#pragma once

#include "base/jobs/CancelFlag.h"
#include "model/Movie.h"

#include <QString>

#include <functional>
#include <vector>

namespace daylark {

/// A movie's file that is to be copied into a folder.
struct GatherSource {
    FileReference file;
    QString name; ///< of the copy: the record's file name
};
[[nodiscard]] std::vector<GatherSource> gatherSources(const std::vector<std::shared_ptr<Movie>>& movies, bool networkMode);

/// How gathering is followed and ended early; both are called on the copying thread.
struct GatherWatch {
    const CancelFlag* cancelled = nullptr;                         ///< null: nobody ends it
    std::function<void(qint64 done, qint64 total)> bytes = {}; ///< often; total: of all files that are to be copied
    std::function<void(size_t files)> fileDone = {};             ///< so many are dealt with, copied or not
};

struct GatherReport {
    struct NotCopied {
        QString path, reason;
        size_t source = 0; ///< which one
    };
    std::vector<QString> copied;    ///< where they came from
    std::vector<NotCopied> skipped; ///< the folder has one of that name, or there is nothing to read
    std::vector<NotCopied> failed;
    qint64 copiedBytes = 0;
};

/// Copies files side by side into one folder, in their order. What stands there is never overwritten, what can't be copied is
/// passed over; nothing half stands under its final name. Worker threads.
[[nodiscard]] GatherReport gatherMedia(const std::vector<GatherSource>& sources, const QString& folder,
                                       const GatherWatch& watch = {});

} // namespace daylark
