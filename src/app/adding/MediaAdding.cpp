#include "app/adding/MediaAdding.h"

#include "app/adding/MediaWalk.h"
#include "app/files/FileStates.h"
#include "app/files/Thumbnails.h"
#include "app/playlists/Library.h"
#include "app/program/ProgressBoard.h"
#include "app/sessions/SessionFiles.h"
#include "app/sessions/SessionMigration.h"
#include "base/jobs/ReportPace.h"
#include "base/jobs/WorkQueue.h"
#include "media/facts/MediaTypes.h"
#include "model/bundle/BundleReading.h"
#include "platform/FailedWrites.h"
#include "platform/Panels.h"
#include "preferences/Preferences.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <deque>
#include <limits>
#include <optional>

namespace daylark {

namespace {

QString lastPathComponent(const QString& path) {
    return path.section(QLatin1Char('/'), -1, -1, QString::SectionSkipEmpty);
}

/// How many there are is known at the end only.
ProgressBoard::Texts textsFor(qint64 found) {
    return {MediaAdding::tr("Adding Media Files..."),
            found > 0 ? MediaAdding::tr("%n found", nullptr, int(found)) : QString(),
            ProgressBoard::Count::untold};
}

bool isSessionPath(const QString& path) {
    return QFileInfo(path).suffix() == QLatin1String("dls");
}

} // namespace

/// What was asked for; a value for the worker.
struct MediaAdding::Request {
    enum class Kind { files, folders, playlists, bundles, dropOnPlaylists, dropOnMovies, desktop };
    /// A bundle that a person drops or opens by itself is wanted; the folder operations pass bundles over.
    [[nodiscard]] bool takesBundles() const { return kind >= Kind::bundles; }
    Kind kind = Kind::files;
    QStringList paths;
    std::weak_ptr<Playlist> target; ///< the playlist selected when it was asked for
    bool hadTarget = false;
    MediaWanted wanted = {};
};

/// Items that go into one playlist in one step.
struct MediaAdding::Group {
    std::vector<FoundMedia> media;
    bool ownPlaylist = false;    ///< a new playlist of their own
    QString playlistName;        ///< of a new playlist; null: the default name
    bool mayMakePlaylist = true; ///< when there is none that could take them
    bool fromDesktop = false;
    QString sessionPath;                   ///< instead of items: a session to import
    std::optional<SessionContents> bundle; ///< instead of items: the session that a bundle holds
    Movies records;                        ///< items that come with their reviews
    QString unwritten, reason;             ///< instead of items: a bundle's movie that has no place on the disk
    std::weak_ptr<Playlist> target;
    bool hadTarget = false;
};

/// Looks through the disk, one request at a time. The queue of requests is the interface thread's.
class MediaAdding::Worker {
public:
    using Deliver = std::function<void(Group)>;

    static void look(const Request& request, const WalkWatch& watch, const Deliver& deliver);

    std::deque<Request> requests; ///< the first is under way
    int job = 0;
    std::shared_ptr<CancelFlag> cancelled;
    WorkQueue work;

private:
    static Group groupFor(const Request& request) {
        Group group;
        group.target = request.target;
        group.hadTarget = request.hadTarget;
        return group;
    }
    static void lookThroughFolders(const Request& request, const QStringList& folders, const WalkWatch& watch,
                                   const Deliver& deliver);
    static void lookIntoBundles(const Request& request, const QStringList& bundles, const WalkWatch& watch,
                                const Deliver& deliver);
    static void lookAtDesktopFile(const Request& request, const QString& path, const WalkWatch& watch,
                                  const Deliver& deliver);
};

/// A playlist for every folder, each delivered as soon as it is known.
void MediaAdding::Worker::lookThroughFolders(const Request& request, const QStringList& folders,
                                             const WalkWatch& watch, const Deliver& deliver) {
    for (const QString& folder : folders) {
        if (isBundlePath(folder)) continue; // bundles have a way in of their own
        Group group = groupFor(request);
        group.ownPlaylist = true;
        group.playlistName = lastPathComponent(folder);
        group.media = mediaAmong(filesUnderFolder(folder, watch), request.wanted, watch);
        if (watch.isCancelled()) return;
        deliver(std::move(group));
    }
}

void MediaAdding::Worker::lookIntoBundles(const Request& request, const QStringList& bundles,
                                          const WalkWatch& watch, const Deliver& deliver) {
    Group movies = groupFor(request);
    for (const QString& bundle : bundles) {
        if (watch.isCancelled()) return;
        QString unwritten;
        Result<BundleContents> contents = readBundle(bundle, {watch.cancelled}, unwritten);
        if (!unwritten.isNull()) {
            Group failed = groupFor(request);
            failed.unwritten = bundle;
            failed.reason = unwritten;
            deliver(std::move(failed));
        }
        if (!contents) continue;
        // The records go over whole: nothing is left on this side.
        if (contents->movie) movies.records.push_back(std::move(contents->movie));
        if (!contents->session) continue;
        Group group = groupFor(request);
        group.bundle = std::move(contents->session);
        deliver(std::move(group));
    }
    movies.ownPlaylist = request.kind == Request::Kind::dropOnPlaylists;
    movies.fromDesktop = request.kind == Request::Kind::desktop;
    if (!movies.records.empty()) deliver(std::move(movies));
}

void MediaAdding::Worker::lookAtDesktopFile(const Request& request, const QString& path,
                                            const WalkWatch& watch, const Deliver& deliver) {
    Group group = groupFor(request);
    if (mediaTypeOfPath(path) != MediaType::other) {
        group.fromDesktop = true;
        // Single images are not taken here, whatever the preference says.
        group.media = mediaAmong({path}, {false, request.wanted.runs}, watch);
        if (!group.media.empty()) deliver(std::move(group));
    } else if (isSessionPath(path)) {
        group.sessionPath = path;
        deliver(std::move(group));
    }
}

void MediaAdding::Worker::look(const Request& request, const WalkWatch& watch, const Deliver& deliver) {
    QStringList folders, files, bundles;
    for (const QString& path : request.paths) {
        if (leavesOut(path, watch)) continue;
        const QString bundle = request.takesBundles() ? bundleOfPath(path) : QString();
        if (!bundle.isNull())
            bundles.append(bundle);
        else
            (QFileInfo(path).isDir() ? folders : files).append(path);
    }
    lookIntoBundles(request, bundles, watch, deliver);
    const bool isLeftOut = watch.leftOut && watch.leftOut->count > 0;
    if ((!bundles.isEmpty() || isLeftOut) && folders.isEmpty() && files.isEmpty()) return;
    QStringList underFolders;
    Group group = groupFor(request);
    switch (request.kind) {
    case Request::Kind::files:
        group.media = mediaAmong(files, request.wanted, watch);
        group.mayMakePlaylist = !group.media.empty();
        break;
    case Request::Kind::dropOnMovies:
    case Request::Kind::folders:
        if (!folders.isEmpty()) group.playlistName = lastPathComponent(folders.front()); // of a list made for them
        for (const QString& folder : folders)
            underFolders += filesUnderFolder(folder, watch);
        if (request.kind == Request::Kind::dropOnMovies) underFolders += files;
        group.media = mediaAmong(underFolders, request.wanted, watch);
        group.mayMakePlaylist = !group.media.empty();
        break;
    case Request::Kind::playlists:
        lookThroughFolders(request, folders, watch, deliver);
        return;
    case Request::Kind::bundles:
        return;
    case Request::Kind::dropOnPlaylists:
        lookThroughFolders(request, folders, watch, deliver);
        group.media = mediaAmong(files, request.wanted, watch);
        if (group.media.empty()) return;
        group.ownPlaylist = true;
        break;
    case Request::Kind::desktop:
        lookThroughFolders(request, folders, watch, deliver);
        for (const QString& file : files)
            lookAtDesktopFile(request, file, watch, deliver);
        return;
    }
    if (!watch.isCancelled()) deliver(std::move(group));
}

MediaAdding::MediaAdding(const Surroundings& surroundings, QObject* parent)
    : QObject(parent)
    , surroundings_(surroundings)
    , worker_(std::make_unique<Worker>()) {}

MediaAdding::~MediaAdding() {
    if (worker_->cancelled) *worker_->cancelled = true;
}

bool MediaAdding::isBusy() const {
    return !worker_->requests.empty();
}

void MediaAdding::addMediaFilesToSelectedPlaylist(const QStringList& paths) {
    enqueue({Request::Kind::files, paths, {}, false, {}});
}

void MediaAdding::addMediaFoldersToSelectedPlaylist(const QStringList& folders) {
    enqueue({Request::Kind::folders, folders, {}, false, {}});
}

void MediaAdding::createPlaylistsWithFolders(const QStringList& folders) {
    enqueue({Request::Kind::playlists, folders, {}, false, {}});
}

void MediaAdding::addDLMFilesToSelectedPlaylist(const QStringList& bundles) {
    enqueue({Request::Kind::bundles, bundles, {}, false, {}});
}

void MediaAdding::addMediaFromOpenDialog() {
    if (surroundings_.library.selectedPlaylistRows().size() > 1) return;
    OpenPanel panel;
    panel.title = tr("Choose Media Files To Add");
    panel.prompt = tr("Add Media");
    panel.allowMultiple = true;
    panel.typesTitle = tr("Media Files");
    panel.allowedTypes = extensionsOf(MediaType::movie);
    if (surroundings_.preferences.allowImageFiles() || surroundings_.preferences.runsBecomeMovies())
        panel.allowedTypes += extensionsOf(MediaType::image);
    panel.runsAreOne = surroundings_.preferences.runsBecomeMovies();
    const QStringList paths = surroundings_.panels.runOpen(panel);
    if (!paths.isEmpty()) addMediaFilesToSelectedPlaylist(paths);
}

void MediaAdding::addFoldersFromOpenDialog() {
    if (surroundings_.library.selectedPlaylistRows().size() > 1) return;
    OpenPanel panel = OpenPanel::forFolders(tr("Choose Folders To Add"), tr("Add Folder"));
    panel.allowMultiple = true;
    const QStringList folders = surroundings_.panels.runOpen(panel);
    if (!folders.isEmpty()) addMediaFoldersToSelectedPlaylist(folders);
}

void MediaAdding::addBundlesFromOpenDialog() {
    const QString bundle = surroundings_.panels.chooseFolder(tr("Add Daylark Movies"), tr("Add"));
    if (!bundle.isEmpty()) addDLMFilesToSelectedPlaylist({bundle});
}

void MediaAdding::processFile(const QString& path) {
    openPaths({path});
}

void MediaAdding::openPaths(const QStringList& paths) {
    enqueue({Request::Kind::desktop, paths, {}, false, {}});
}

void MediaAdding::dropOnPlaylists(const QStringList& paths) {
    if (paths.isEmpty()) return;
    if (isSessionPath(paths.front()) && bundleOfPath(paths.front()).isNull())
        surroundings_.sessionFiles.dragSessionImport(paths.front());
    else
        enqueue({Request::Kind::dropOnPlaylists, paths, {}, false, {}});
}

void MediaAdding::dropOnMovies(const QStringList& paths) {
    if (paths.isEmpty()) return;
    if (isSessionPath(paths.front()) && bundleOfPath(paths.front()).isNull())
        surroundings_.sessionFiles.dragSessionImport(paths.front());
    else
        enqueue({Request::Kind::dropOnMovies, paths, {}, false, {}});
}

void MediaAdding::enqueue(Request request) {
    const auto selected = surroundings_.library.selectedPlaylist();
    request.hadTarget = selected && selected->takesItems();
    if (request.hadTarget) request.target = selected;
    request.wanted = {surroundings_.preferences.allowImageFiles(), surroundings_.preferences.runsBecomeMovies()};
    worker_->requests.push_back(std::move(request));
    if (worker_->requests.size() == 1) startNext();
}

void MediaAdding::startNext() {
    const int job = surroundings_.progress.begin(textsFor(0), 0, true);
    worker_->job = job;
    worker_->cancelled = surroundings_.progress.cancelFlag(job);
    worker_->work.run([this, request = worker_->requests.front(), job, cancelled = worker_->cancelled] {
        ReportPace pace;
        const auto report = [this, job, &pace](qint64 found) {
            if (!pace.isDue()) return;
            WorkQueue::deliver(this, [this, job, found] { surroundings_.progress.say(job, textsFor(found)); });
        };
        LeftOutNames leftOut;
        Worker::look(request, {cancelled.get(), report, &leftOut}, [this, cancelled](Group group) {
            WorkQueue::deliver(this, [this, cancelled, group = std::make_shared<Group>(std::move(group))] {
                if (!*cancelled) apply(*group); // a walk that was over when it was cancelled adds nothing either
            });
        });
        WorkQueue::deliver(this, [this, leftOut] { requestDone(leftOut); });
    });
}

void MediaAdding::requestDone(const LeftOutNames& leftOut) {
    surroundings_.progress.end(worker_->job);
    const bool isCancelled = *worker_->cancelled;
    worker_->cancelled.reset();
    worker_->requests.pop_front();
    if (!worker_->requests.empty()) startNext();
    if (leftOut.count > 0 && !isCancelled) Q_EMIT namesLeftOut(leftOut);
    Q_EMIT finished();
}

QString MediaAdding::textOf(const LeftOutNames& names) {
    return tr("%n left out, not named in UTF-8: %1", nullptr, int(std::min<qint64>(names.count, std::numeric_limits<int>::max())))
        .arg(names.list());
}

std::shared_ptr<Playlist> MediaAdding::targetOf(const Group& group) {
    Library& library = surroundings_.library;
    if (!group.ownPlaylist) {
        if (group.hadTarget)
            return group.target.lock(); // removed meanwhile: the items are not wanted any more
        const auto selected = library.selectedPlaylist();
        if (selected && selected->takesItems()) return selected;
        if (!group.mayMakePlaylist) return nullptr;
    }
    auto playlist = std::make_shared<Playlist>();
    if (!group.playlistName.isEmpty()) playlist->name = group.playlistName;
    library.appendPlaylist(playlist, true);
    return playlist;
}

MediaAdding::Movies MediaAdding::addItems(const std::shared_ptr<Playlist>& playlist, const Group& group) {
    Movies movies;
    movies.reserve(group.media.size() + group.records.size());
    // The first new item leaves a gap of one after the items shown, as in sessions made before.
    qint64 number = surroundings_.library.shownCount(playlist) + 1;
    for (const FoundMedia& media : group.media) {
        auto movie = std::make_shared<Movie>(media.path, media.bookmarkData);
        movie->frameRun = media.run;
        movie->sortOrder = number++;
        movies.push_back(std::move(movie));
    }
    for (const auto& movie : group.records) {
        movie->sortOrder = number++;
        movies.push_back(movie);
    }
    surroundings_.library.addMovies(playlist, movies);
    return movies;
}

void MediaAdding::addBundle(const SessionContents& contents) {
    Library& library = surroundings_.library;
    const ReviewStore::Group step(library.store(), {tr("Add Bundle")});
    const qsizetype first = qsizetype(library.playlists().size());
    withoutAnswers(contents.playlists);
    // Behind what is there: nobody loses a session by adding to it.
    for (const auto& playlist : contents.playlists)
        library.appendPlaylist(playlist, false);
    if (contents.lonePlaylist) library.appendPlaylist(contents.lonePlaylist, false);
    if (qsizetype(library.playlists().size()) == first) return;
    const qsizetype added = qsizetype(library.playlists().size()) - first;
    const qint64 selected = contents.lastSelectedPlaylistIndex.value_or(0);
    library.selectPlaylist(first + (selected >= 0 && selected < added ? qsizetype(selected) : 0));
    updatePlaylistsWithNewVariables(library);
    surroundings_.fileStates.updateAllFilePaths();
    library.selectMovies({0});
}

QString MediaAdding::titleOf(const Group& group) {
    const size_t count = group.media.size() + group.records.size();
    return count == 0 ? tr("Add Playlist") : count == 1 ? tr("Add Item") : tr("Add %1 Items").arg(count);
}

void MediaAdding::apply(const Group& group) {
    if (group.bundle) {
        addBundle(*group.bundle);
        return;
    }
    if (!group.unwritten.isNull()) {
        surroundings_.failedWrites.failed(tr("Movie of a bundle"), group.unwritten, group.reason,
                                          [this, path = group.unwritten] { addDLMFilesToSelectedPlaylist({path}); });
        return;
    }
    if (!group.sessionPath.isNull()) {
        surroundings_.sessionFiles.dragSessionImport(group.sessionPath);
        return;
    }
    Library& library = surroundings_.library;
    Movies movies;
    std::shared_ptr<Playlist> playlist;
    {
        const ReviewStore::Group step(library.store(), {titleOf(group)});
        playlist = targetOf(group);
        if (!playlist) return;
        movies = addItems(playlist, group);
    }
    if (playlist == library.selectedPlaylist()) {
        // The first of the list, or the one that was opened from the desktop.
        if (group.fromDesktop && !movies.empty())
            library.selectMovie(movies.front());
        else
            library.selectMovies({0});
    }
    surroundings_.thumbnails.probeAndThumbnail(movies);
    if (group.fromDesktop) Q_EMIT openedFromDesktop(surroundings_.preferences.openWithLaunchesViewer());
}

} // namespace daylark
