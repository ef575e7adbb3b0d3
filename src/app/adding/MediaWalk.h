#pragma once

#include "base/jobs/CancelFlag.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace daylark {

/// A file that is to become an item.
struct FoundMedia {
    QString path;
    QByteArray bookmarkData;
};

/// What a look through files and folders reports on its way, and what may end it. Worker threads.
struct WalkWatch {
    const CancelFlag* cancelled = nullptr; ///< may be null
    std::function<void(qint64 found)> found;      ///< so many media files until now; may be empty
    [[nodiscard]] bool isCancelled() const { return cancelled && *cancelled; }
};

/// Every file under a folder, depth first, sorted by path within each folder; hidden entries are skipped,
/// linked folders are not descended into. A folder that is itself a bundle ("*.dlm", a folder on the disk) or cannot
/// be read gives nothing; of a bundle inside it the media are files like others.
[[nodiscard]] QStringList filesUnderFolder(const QString& folder, const WalkWatch& watch);

/// Those of the paths that pass the type test, in their order, with their bookmark data made.
[[nodiscard]] std::vector<FoundMedia> mediaAmong(const QStringList& paths, bool allowImageFiles,
                                                 const WalkWatch& watch);

} // namespace daylark
