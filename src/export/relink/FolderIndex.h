#pragma once

#include "base/jobs/CancelFlag.h"
#include "model/runs/FrameRun.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

namespace daylark {

/// How a look through folders is followed and ended early.
struct IndexWatch {
    const CancelFlag* cancelled = nullptr;           ///< null: nobody ends it
    std::function<void(qint64 files)> progress = {}; ///< files so far, once a folder; on the looking thread
};

/// Which file of a name lies where under a folder. Of several files with one name the one met last counts; the others are
/// known too. Names are compared letter by letter, as the file system spells them. A value, made by one look through the
/// folder; worker threads.
class FolderIndex {
public:
    /// All levels, depth first, by name within each folder; hidden entries are passed over, and so is what cannot be read.
    /// Linked folders come after everything else, each once, if nothing of it was looked through before; what was found
    /// without them counts. An empty index when cancelled, or when there is no such folder.
    [[nodiscard]] static FolderIndex ofFolder(const QString& folder, const IndexWatch& watch = {});

    [[nodiscard]] QString path(const QString& name) const; ///< null: none
    /// Every file of that name in the order met; the last is the one that counts.
    [[nodiscard]] QStringList allPaths(const QString& name) const;
    /// Every folder that has pictures of the run, whatever is missing there; the last is the one that counts: it has most of
    /// them, and of those with as many it was met last.
    [[nodiscard]] QStringList foldersOf(const FrameRun& run) const;
    [[nodiscard]] qint64 count() const { return qint64(files_.size()); } ///< files, those with equal names too

private:
    class Walk;
    struct File {
        qint32 folder = 0;
        qint32 earlier = -1; ///< of the same name; -1: none
    };
    [[nodiscard]] qint32 lastOf(const QString& name) const; ///< -1: none
    std::vector<std::string> folders_; ///< as the file system spells them
    std::vector<File> files_;
    std::unordered_map<std::string, qint32> last_; ///< by name: the file met last
};

} // namespace daylark
