#include "app/media/MediaReveal.h"

#include "app/playlists/Library.h"
#include "base/jobs/WorkQueue.h"
#include "platform/Desktop.h"
#include "preferences/Preferences.h"

namespace daylark {

class MediaReveal::Worker {
public:
    WorkQueue work;
};

MediaReveal::MediaReveal(Library& library, Preferences& preferences, FileBrowser& browser, QObject* parent)
    : QObject(parent)
    , library_(library)
    , preferences_(preferences)
    , browser_(browser)
    , worker_(std::make_unique<Worker>()) {}

MediaReveal::~MediaReveal() = default;

void MediaReveal::revealInFinder() {
    std::vector<FileReference> files;
    for (const auto& movie : library_.selectedMovies())
        if (movie->creatingThumbnailText.isEmpty()) files.push_back(movie->fileReference(preferences_.networkMode()));
    if (files.empty()) return;
    worker_->work.run([this, files = std::move(files)] {
        QStringList paths;
        for (const FileReference& file : files)
            if (const FileCheck check = checkFile(file); !check.path.isEmpty() && !paths.contains(check.path))
                paths << check.path;
        WorkQueue::deliver(this, [this, paths] {
            if (!paths.isEmpty()) browser_.reveal(paths);
        });
    });
}

} // namespace daylark
