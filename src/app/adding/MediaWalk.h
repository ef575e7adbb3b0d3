#pragma once

#include "base/FolderEntries.h"
#include "base/jobs/CancelFlag.h"
#include "model/runs/MovieRun.h"
#include "model/runs/RunNames.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>

#include <functional>
#include <map>
#include <optional>
#include <vector>

namespace daylark {

/// A file that is to become an item.
struct FoundMedia {
    QString path;
    QByteArray bookmarkData;
    std::optional<MovieRun> run = {}; ///< it is a run of pictures, and the path its first one's
};

/// What a person's preferences take for media besides movies.
struct MediaWanted {
    bool images = false; ///< each by itself
    bool runs = false;   ///< runs of numbered pictures, each as one movie
};

/// What a look through files and folders reports on its way, and what may end it. Worker threads.
struct WalkWatch {
    const CancelFlag* cancelled = nullptr; ///< may be null
    std::function<void(qint64 found)> found;      ///< so many media files until now; may be empty
    LeftOutNames* leftOut = nullptr; ///< takes media and folders whose names are no texts; may be null
    [[nodiscard]] bool isCancelled() const { return cancelled && *cancelled; }
};

/// Every file under a folder, depth first, sorted by path within each folder; hidden entries are skipped,
/// linked folders are not descended into. A folder that is itself a bundle ("*.dlm", a folder on the disk) or cannot
/// be read gives nothing; of a bundle inside it the media are files like others. Names that are no texts are left out.
[[nodiscard]] QStringList filesUnderFolder(const QString& folder, const WalkWatch& watch);

/// A file or folder that can't be opened under the text that its path came as is counted as left out: then true.
[[nodiscard]] bool leavesOut(const QString& path, const WalkWatch& watch);

/// Those of the paths that pass the type test, in their order, with their bookmark data made. A picture of a run stands for the
/// whole run, which comes once, where its first path stands; a name with marks in it ("sh010.####.exr") for the run that it
/// means.
[[nodiscard]] std::vector<FoundMedia> mediaAmong(const QStringList& paths, const MediaWanted& wanted, const WalkWatch& watch);

/// Which runs the pictures of folders belong to; asks the disk about each folder once. Worker threads.
class FolderRuns {
public:
    /// Null: it belongs to none.
    [[nodiscard]] const NamedRun* runOf(const QString& path);

private:
    struct Folder {
        FolderNames names;
        QHash<QString, size_t> byName;
    };
    std::map<QString, Folder> folders_;
};

} // namespace daylark
