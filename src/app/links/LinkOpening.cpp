#include "app/links/LinkOpening.h"

#include "app/files/Thumbnails.h"
#include "app/links/LinkedFiles.h"
#include "app/playlists/Library.h"
#include "app/program/ProgressBoard.h"
#include "base/jobs/WorkQueue.h"
#include "platform/Alerts.h"

#include <algorithm>
#include <deque>
#include <unordered_map>

namespace daylark {

namespace {

constexpr qsizetype namesInAlert = 5;
constexpr qsizetype longestNameInAlert = 200;

} // namespace

class LinkOpening::Worker {
public:
    std::deque<ReviewLink> links; ///< the first is being opened
    int job = 0;
    std::shared_ptr<CancelFlag> cancelled;
    /// By address, with the record itself to tell whether it is still that one.
    std::unordered_map<const Movie*, std::weak_ptr<Movie>> came;
    WorkQueue work;
};

LinkOpening::LinkOpening(const Surroundings& surroundings, QObject* parent)
    : QObject(parent)
    , surroundings_(surroundings)
    , worker_(std::make_unique<Worker>()) {}

LinkOpening::~LinkOpening() {
    if (worker_->cancelled) *worker_->cancelled = true;
}

bool LinkOpening::isBusy() const {
    return !worker_->links.empty();
}

bool LinkOpening::cameByLink(const Movie& movie) const {
    const auto found = worker_->came.find(&movie);
    return found != worker_->came.end() && !found->second.expired();
}

void LinkOpening::handleURLEvent(const QString& text) {
    const QStringList links = reviewLinksIn(text);
    const bool idle = worker_->links.empty();
    for (const QString& link : links)
        worker_->links.push_back(readReviewLink(link));
    if (links.isEmpty()) worker_->links.emplace_back(); // said to be none in its turn
    // Queued: who hands it over isn't kept waiting by an alert.
    if (idle) WorkQueue::deliver(this, [this] { startNext(); });
}

void LinkOpening::startNext() {
    const ReviewLink& link = worker_->links.front();
    if (link.command == ReviewLink::Command::none) {
        surroundings_.alerts.show({tr("An invalid URL was passed to Daylark"), {}, {tr("Okay")}});
        linkDone();
        return;
    }
    worker_->job = surroundings_.progress.begin({tr("Adding Media Files...")}, link.paths.size(), true);
    worker_->cancelled = surroundings_.progress.cancelFlag(worker_->job);
    worker_->work.run([this, link, cancelled = worker_->cancelled] {
        auto files = std::make_shared<LinkedFiles>(lookForFilesOf(link, {cancelled.get(), {}}));
        WorkQueue::deliver(this, [this, link, files, cancelled] { opened(link, *files, *cancelled); });
    });
}

void LinkOpening::opened(const ReviewLink& link, const LinkedFiles& files, bool cancelled) {
    surroundings_.progress.end(worker_->job);
    worker_->cancelled.reset();
    if (!cancelled) {
        add(link, files);
        tellMissing(files);
    }
    linkDone();
}

void LinkOpening::linkDone() {
    worker_->links.pop_front();
    if (!worker_->links.empty()) WorkQueue::deliver(this, [this] { startNext(); });
    Q_EMIT finished();
}

std::shared_ptr<Playlist> LinkOpening::targetOf(const ReviewLink& link) {
    Library& library = surroundings_.library;
    const auto& playlists = library.playlists();
    const auto there = std::find_if(playlists.begin(), playlists.end(), [&link](const auto& playlist) {
        return playlist->name == link.playlistName && playlist->takesItems();
    });
    if (link.command != ReviewLink::Command::addPlaylist && there != playlists.end()) {
        library.selectPlaylist(there - playlists.begin());
        return *there;
    }
    auto playlist = std::make_shared<Playlist>();
    playlist->name = link.playlistName;
    library.appendPlaylist(playlist, true);
    return playlist;
}

void LinkOpening::add(const ReviewLink& link, const LinkedFiles& files) {
    Library& library = surroundings_.library;
    if (!files.found.empty()) Q_EMIT mediaComes();
    Library::Movies movies, earlier;
    std::shared_ptr<Playlist> playlist;
    {
        const ReviewStore::Group step(library.store(), {tr("Open Link")});
        playlist = targetOf(link);
        earlier.assign(playlist->movieList.begin(), playlist->movieList.end());
        for (const FoundMedia& media : files.found) {
            auto movie = std::make_shared<Movie>(media.path, media.bookmarkData);
            movie->frameRun = media.run;
            movies.push_back(movie);
            movie->sortOrder = qint64(earlier.size() + movies.size()); // no gap here, unlike adding
            worker_->came[movie.get()] = movie;
        }
        library.addMovies(playlist, movies);
    }
    surroundings_.thumbnails.probeAndThumbnail(movies);
    surroundings_.thumbnails.updateThumbnailsInArray(earlier);
    if (files.missing.isEmpty() && !playlist->movieList.empty()) library.selectMovie(playlist->movieList.back());
}

void LinkOpening::tellMissing(const LinkedFiles& files) {
    if (files.missing.isEmpty()) return;
    QStringList names;
    for (const QString& path : files.missing.mid(0, namesInAlert))
        names << (path.size() > longestNameInAlert ? QChar(0x2026) + path.right(longestNameInAlert) : path);
    if (const qsizetype more = files.missing.size() - names.size(); more > 0)
        names << (more == 1 ? tr("and 1 more") : tr("and %1 more").arg(more));
    const QString message = !files.found.empty() ? tr("Some media files in this link weren't found")
                            : files.missing.size() == 1 ? tr("Can't resolve link")
                                                        : tr("Can't resolve linked files");
    surroundings_.alerts.show({message, tr("Not found on this machine:") + QLatin1Char('\n') + names.join(QLatin1Char('\n')),
                               {tr("Okay")}});
}

} // namespace daylark
