#include "app/files/FolderLists.h"

#include "app/arrangement/MovieFilter.h"
#include "app/files/FileStates.h"
#include "app/files/FolderWatch.h"
#include "app/files/Thumbnails.h"
#include "app/playlists/Library.h"
#include "media/facts/MovieTexts.h"
#include "preferences/Preferences.h"

#include <QElapsedTimer>

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace daylark {

namespace {

/// A copy that arrives tells many times; one look after a short while does for all.
constexpr int soonMs = 300;
/// Where the system tells nothing (network shares, files that grow).
constexpr int sometimesMs = 5000, longestMs = 120000;

/// What a person would miss: their work, and the item's other places.
bool mustStay(const Movie& movie) {
    return hasReviewWork(movie) || movie.iCount > 0;
}

QString pathOf(const Playlist& playlist) {
    return playlist.isType(playlistType::folder) && playlist.directoryPath.isLocalFile()
               ? playlist.directoryPath.toLocalFile()
               : QString();
}

} // namespace

/// One look at one list.
struct FolderLists::Job {
    std::weak_ptr<Playlist> playlist;
    QString path;
    std::vector<std::weak_ptr<Movie>> items; ///< by their place in `known`
    std::vector<FolderScan::Known> known;
};

FolderLists::FolderLists(const Surroundings& surroundings, QObject* parent)
    : QObject(parent)
    , surroundings_(surroundings)
    , watch_(std::make_unique<FolderWatch>())
    , cancelled_(std::make_shared<CancelFlag>(false)) {
    soon_.setSingleShot(true);
    soon_.setInterval(soonMs);
    sometimes_.setInterval(sometimesMs);
    connect(&soon_, &QTimer::timeout, this, &FolderLists::rescan);
    connect(&sometimes_, &QTimer::timeout, this, &FolderLists::rescan);
    connect(watch_.get(), &FolderWatch::changed, &soon_, qOverload<>(&QTimer::start));
    connect(&surroundings_.library, &Library::playlistsChanged, this, &FolderLists::followPlaylists);
    connect(&surroundings_.preferences.allowImageFiles, &PreferenceItem::changed, this, &FolderLists::rescan);
}

FolderLists::~FolderLists() {
    *cancelled_ = true;
}

void FolderLists::followPlaylists() {
    std::unordered_set<const Playlist*> there;
    bool another = false;
    for (const auto& playlist : surroundings_.library.playlists()) {
        const QString path = pathOf(*playlist);
        if (path.isEmpty()) continue;
        there.insert(playlist.get());
        Folder& folder = folders_[playlist.get()];
        another |= folder.path != path;
        if (folder.path != path) folder = {path, {}, {}, {}};
    }
    std::erase_if(folders_, [&there](const auto& known) { return !there.contains(known.first); });
    watchFolders();
    if (folders_.empty())
        sometimes_.stop();
    else if (!sometimes_.isActive())
        sometimes_.start();
    if (another) rescan();
}

void FolderLists::watchFolders() {
    QStringList all;
    for (const auto& [playlist, folder] : folders_)
        all += folder.folders.isEmpty() ? QStringList{folder.path} : folder.folders;
    watch_->watch(all);
}

void FolderLists::rescan() {
    if (scanning_ > 0) {
        again_ = true;
        return;
    }
    again_ = false;
    for (const auto& playlist : surroundings_.library.playlists())
        if (folders_.contains(playlist.get())) start(playlist);
}

void FolderLists::start(const std::shared_ptr<Playlist>& playlist) {
    auto job = std::make_shared<Job>();
    job->playlist = playlist;
    job->path = pathOf(*playlist);
    for (const auto& movie : playlist->movieList) {
        job->items.push_back(movie);
        job->known.push_back({movie->filepathString, movie->filepathBookmarkData});
    }
    ++scanning_;
    const MediaWanted wanted{surroundings_.preferences.allowImageFiles(), surroundings_.preferences.runsBecomeMovies()};
    work_.run([this, job, wanted, cancelled = cancelled_] {
        QElapsedTimer timer;
        timer.start();
        auto scan = std::make_shared<const FolderScan>(
            scanFolder(job->path, job->known, wanted, {cancelled.get(), {}}));
        WorkQueue::deliver(this, [this, job, scan, taken = timer.elapsed()] {
            --scanning_;
            // A large folder on a slow share is looked at less often.
            sometimes_.setInterval(int(std::clamp<qint64>(taken * 20, sometimesMs, longestMs)));
            apply(*job, *scan);
            if (scanning_ == 0 && again_) rescan();
        });
    });
}

namespace {

/// What somebody worked on stays in its place by name, whatever became of its file.
ItemList withItemsThatStay(const ObjectList<Movie>& before, ItemList items,
                           const std::unordered_set<const Movie*>& there) {
    const FolderOrder order;
    for (const auto& movie : before) {
        if (there.contains(movie.get()) || !mustStay(*movie)) continue;
        const auto place = std::find_if(items.begin(), items.end(), [&](const auto& item) {
            return order(movie->filepathString, item->filepathString);
        });
        items.insert(place, movie);
    }
    return items;
}

} // namespace

/// The list's items as the folder has them; the ones made for new files are told apart.
ItemList FolderLists::itemsFor(const Job& job, const FolderScan& scan, ItemList& arrived) {
    ReviewStore& store = surroundings_.library.store();
    ItemList items;
    std::unordered_set<const Movie*> there;
    for (const FolderScan::File& file : scan.files) {
        std::shared_ptr<Movie> movie = file.known < 0 ? nullptr : job.items[size_t(file.known)].lock();
        if (!movie) {
            movie = std::make_shared<Movie>(file.path, file.bookmarkData);
            movie->frameRun = file.run;
            arrived.push_back(movie);
        } else if (movie->filepathString != file.path && !file.bookmarkData.isEmpty()) {
            store.modify(movie, {}, [&file](Movie& item) { item.addVideoFile(file.path, file.bookmarkData); });
        }
        items.push_back(movie);
        there.insert(movie.get());
    }
    return withItemsThatStay(job.playlist.lock()->movieList, std::move(items), there);
}

void FolderLists::apply(const Job& job, const FolderScan& scan) {
    const auto playlist = job.playlist.lock();
    const auto known = folders_.find(playlist.get());
    if (!playlist || known == folders_.end() || known->second.path != job.path || !scan.isReadable) return;
    Folder& folder = known->second;
    if (folder.folders != scan.folders) {
        folder.folders = scan.folders;
        watchFolders();
    }
    if (std::exchange(folder.leftOut, scan.leftOut) != scan.leftOut && scan.leftOut.count > 0)
        Q_EMIT namesLeftOut(scan.leftOut);
    ItemList arrived;
    const ItemList before(playlist->movieList.begin(), playlist->movieList.end());
    ItemList items;
    {
        ReviewStore& store = surroundings_.library.store();
        const ReviewStore::Group step(store, {{}, EditKind::background});
        items = itemsFor(job, scan, arrived);
        if (items != before) setItems(playlist, items, arrived);
    }
    if (!arrived.empty()) surroundings_.thumbnails.probeAndThumbnail(arrived);
    const QHash<QString, FolderScan::State> seenBefore = folder.seen;
    probeWhatGrew(scan, items, folder);
    const bool otherFiles =
        seenBefore.size() != folder.seen.size() ||
        std::any_of(folder.seen.keyBegin(), folder.seen.keyEnd(),
                    [&seenBefore](const QString& path) { return !seenBefore.contains(path); });
    if (items != before || otherFiles) surroundings_.fileStates.updateAllFilePaths();
}

/// Numbers are for readers that go by them. An item that stands elsewhere too has its number from there.
void FolderLists::setItems(const std::shared_ptr<Playlist>& playlist, const ItemList& items, const ItemList& arrived) {
    ReviewStore& store = surroundings_.library.store();
    const std::unordered_set<std::shared_ptr<Movie>> isNew(arrived.begin(), arrived.end());
    for (size_t at = 0; at < items.size(); ++at) {
        if (isNew.contains(items[at]))
            items[at]->sortOrder = qint64(at) + 1;
        else if (items[at]->iCount == 0)
            store.setSortOrder(items[at], {}, qint64(at) + 1);
    }
    ObjectList<Movie> list;
    list.assign(items.begin(), items.end());
    store.setMovies(playlist, list, {});
}

/// A file that changed since the last look is read again once it has stood still for one. The first look has the size that
/// was last read to go by.
void FolderLists::probeWhatGrew(const FolderScan& scan, const ItemList& items, Folder& folder) {
    QHash<QString, std::shared_ptr<Movie>> byPath;
    for (const auto& movie : items)
        byPath.insert(movie->filepathString, movie);
    ItemList grown;
    QHash<QString, FolderScan::State> now;
    for (const FolderScan::File& file : scan.files) {
        now.insert(file.path, file.state);
        const auto movie = byPath.value(file.path);
        const auto last = folder.seen.constFind(file.path);
        const bool first = last == folder.seen.constEnd();
        const bool differs = first ? movie && !movie->fileSizeText.isEmpty() &&
                                         movie->fileSizeText != fileSizeTextOf(file.state.size)
                                   : *last != file.state;
        if (differs)
            folder.growing.insert(file.path);
        else if (!first && folder.growing.remove(file.path) && movie)
            grown.push_back(movie);
    }
    folder.seen = std::move(now);
    if (!grown.empty()) surroundings_.thumbnails.readAgain(grown);
}

} // namespace daylark
