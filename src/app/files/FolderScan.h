#pragma once

#include "app/adding/MediaWalk.h"

#include <QCollator>
#include <QDateTime>
#include <QHash>

#include <vector>

namespace daylark {

/// A look into a folder list's folder: which media are there, and which of the items known before are now under another
/// name. Values; worker threads.
struct FolderScan {
    struct Known { ///< an item of the list
        QString path;
        QByteArray bookmarkData;
    };
    struct State { ///< to tell whether a file grew
        qint64 size = 0;
        QDateTime modified;
        bool operator==(const State&) const = default;
    };
    struct File {
        QString path;
        State state;
        QByteArray bookmarkData; ///< of files that no item has yet
        qsizetype known = -1;    ///< the item that it is
        std::optional<MovieRun> run = {}; ///< a run of pictures, whose state is how many they are, and its folder's
    };
    bool isReadable = false; ///< else nothing is known of the folder: a share that is away has lost nothing
    std::vector<File> files; ///< by name
    QStringList folders;     ///< that were looked through, to be watched
    LeftOutNames leftOut;    ///< media and folders whose names are no texts
};

/// By name as people count ("shot 9" before "shot 10"), wherever in the folder; equal ones by path. One thread each.
class FolderOrder {
public:
    FolderOrder();
    [[nodiscard]] bool operator()(const QString& path, const QString& other) const;

private:
    QCollator collator_;
};

[[nodiscard]] FolderScan scanFolder(const QString& folder, const std::vector<FolderScan::Known>& known,
                                    const MediaWanted& wanted, const WalkWatch& watch);

} // namespace daylark
