#pragma once

#include "app/files/FolderScan.h"
#include "base/jobs/CancelFlag.h"
#include "base/jobs/WorkQueue.h"
#include "model/ItemPlaces.h"
#include "model/Playlist.h"

#include <QObject>
#include <QSet>
#include <QTimer>

#include <memory>
#include <unordered_map>

namespace daylark {

class FileStates;
class FolderWatch;
class Library;
class Preferences;
class Thumbnails;

/// Keeps folder lists in step with their folders: files that come, go, are renamed or grow, by what the system tells and by
/// a look from time to time. An item whose file vanished goes, unless it carries review work: then it stays as missing and
/// is the same item when the file comes back. A folder that cannot be read changes nothing. The disk is a worker's; what it
/// found is put on the records here. Interface thread.
class FolderLists : public QObject {
    Q_OBJECT
public:
    struct Surroundings {
        Library& library;
        Preferences& preferences;
        Thumbnails& thumbnails;
        FileStates& fileStates;
    };
    explicit FolderLists(const Surroundings& surroundings, QObject* parent = nullptr);
    ~FolderLists() override;

    void rescan(); ///< of all folder lists; while one runs it comes once more

Q_SIGNALS:
    void namesLeftOut(const LeftOutNames& names); ///< of one folder; not again while they stay the same

private:
    struct Job;
    struct Folder { ///< of one list
        QString path;
        QStringList folders;                   ///< to be watched
        QHash<QString, FolderScan::State> seen; ///< at the last look
        QSet<QString> growing;
        LeftOutNames leftOut = {};
    };
    void followPlaylists();
    void start(const std::shared_ptr<Playlist>& playlist);
    void apply(const Job& job, const FolderScan& scan);
    ItemList itemsFor(const Job& job, const FolderScan& scan, ItemList& arrived);
    void setItems(const std::shared_ptr<Playlist>& playlist, const ItemList& items, const ItemList& arrived);
    void probeWhatGrew(const FolderScan& scan, const ItemList& items, Folder& folder);
    void watchFolders();

    Surroundings surroundings_;
    std::unordered_map<const Playlist*, Folder> folders_;
    std::unique_ptr<FolderWatch> watch_;
    QTimer soon_, sometimes_;
    int scanning_ = 0;
    bool again_ = false;
    std::shared_ptr<CancelFlag> cancelled_;
    WorkQueue work_{1, WorkQueue::Pace::background};
};

} // namespace daylark
