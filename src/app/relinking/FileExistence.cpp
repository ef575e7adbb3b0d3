#include "app/relinking/FileExistence.h"

#include "app/playlists/Library.h"
#include "export/relink/PatientFileCheck.h"

#include <unordered_set>
#include <utility>

namespace daylark {

namespace {

/// Five blanks, unlike `fileNotFoundText`; wanted.
const QString notFoundInSelectedPlaylist = QStringLiteral("File Not     Found");

struct Look {
    std::weak_ptr<Movie> movie;
    QString path;
    std::optional<MovieRun> run; ///< there as long as one of its pictures is
    bool exists = false;
};

} // namespace

FileExistence::FileExistence(Library& library, QObject* parent)
    : QObject(parent)
    , library_(library)
    , cancelled_(std::make_shared<CancelFlag>(false)) {}

FileExistence::~FileExistence() {
    *cancelled_ = true;
}

bool FileExistence::isMarkedMissing(const Movie& movie) {
    return movie.creatingThumbnailText == fileNotFoundText || movie.creatingThumbnailText == notFoundInSelectedPlaylist;
}

void FileExistence::checkFilesExistForAllPlaylists() {
    Movies movies;
    std::unordered_set<const Movie*> seen;
    for (const auto& playlist : library_.playlists())
        for (const auto& movie : playlist->movieList)
            if (seen.insert(movie.get()).second) movies.push_back(movie);
    check(movies, fileNotFoundText);
}

void FileExistence::checkFilesExistForSelectedPlaylists() {
    const auto playlist = library_.selectedPlaylist();
    if (playlist) check(library_.itemsOf(*playlist), notFoundInSelectedPlaylist);
}

void FileExistence::check(const Movies& movies, const QString& notFound) {
    if (movies.empty()) return;
    std::vector<Look> looks;
    for (const auto& movie : movies)
        looks.push_back({movie, movie->filepathString, movie->frameRun});
    ++checking_;
    work_.run([this, looks = std::move(looks), notFound, cancelled = cancelled_]() mutable {
        PatientFileCheck exists;
        for (Look& look : looks)
            look.exists = exists({look.path, {}, true, look.run}, cancelled.get()).found; // by its path, not by its bookmark
        if (*cancelled) return;
        WorkQueue::deliver(this, [this, looks = std::move(looks), notFound] {
            --checking_;
            for (const Look& look : looks) {
                const auto movie = look.movie.lock();
                if (!movie || (look.exists && movie->thumbnail.isNil())) continue;
                const QString text = look.exists ? QStringLiteral("") : notFound;
                if (movie->creatingThumbnailText == text) continue;
                library_.store().modify(movie, {{}, EditKind::background},
                                        [&text](Movie& item) { item.creatingThumbnailText = text; });
            }
        });
    });
}

} // namespace daylark
