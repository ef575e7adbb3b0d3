#include "app/media/MediaGathering.h"

#include "app/playlists/Library.h"
#include "app/program/ProgressBoard.h"
#include "base/jobs/WorkQueue.h"
#include "platform/Alerts.h"
#include "platform/FailedWrites.h"
#include "platform/Panels.h"
#include "preferences/Preferences.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>

#include <map>

namespace daylark {

namespace {

constexpr qint64 gatheringReportMs = 100;
constexpr size_t largestToldOneByOne = 1000;

} // namespace

/// The gatherings by their jobs; the threads end first.
class MediaGathering::Worker {
public:
    std::map<int, std::shared_ptr<CancelFlag>> jobs;
    std::map<int, QString> bytes; ///< what is said of a job's bytes
    WorkQueue work;
};

MediaGathering::MediaGathering(const Surroundings& surroundings, QObject* parent)
    : QObject(parent)
    , surroundings_(surroundings)
    , worker_(std::make_unique<Worker>()) {}

MediaGathering::~MediaGathering() {
    for (const auto& [job, cancelled] : worker_->jobs)
        *cancelled = true;
}

bool MediaGathering::isBusy() const {
    return !worker_->jobs.empty();
}

void MediaGathering::gatherMediaFiles(const Sender& sender) {
    if (surroundings_.library.playlists().empty()) return;
    const QString& title = sender.title;
    if (title == QLatin1String("Gather Selected Media...") || title == QLatin1String("Gather Selected Media Files...")) {
        gatherSelectedFiles();
    } else if (title == QLatin1String("Gather Media In Selected Playlists...") ||
               title == QLatin1String("Gather Media In Playlist...")) {
        const QString folder = askForFolder();
        if (!folder.isEmpty()) copyPlaylistFilesToURL(folder);
    }
}

void MediaGathering::gatherSelectedFiles() {
    const QString folder = askForFolder();
    if (!folder.isEmpty()) copySelectedFilesToURL(folder);
}

QString MediaGathering::askForFolder() {
    OpenPanel panel;
    panel.title = tr("Copy Media To New Destination");
    panel.prompt = tr("Copy Media");
    panel.chooseFiles = false;
    panel.chooseFolders = true;
    const QStringList folders = surroundings_.panels.runOpen(panel);
    return folders.isEmpty() ? QString() : folders.front();
}

void MediaGathering::copySelectedFilesToURL(const QString& folder) {
    const bool networkMode = surroundings_.preferences.networkMode();
    copy(Scope::selected, gatherSources(surroundings_.library.selectedMovies(), networkMode), folder, false);
}

/// A movie of two playlists comes twice; its second copy finds the first one there.
void MediaGathering::copyPlaylistFilesToURL(const QString& folder) {
    Library& library = surroundings_.library;
    Library::Movies movies;
    for (const qsizetype row : library.selectedPlaylistRows()) {
        const Library::Movies items = library.itemsOf(*library.playlists()[size_t(row)]);
        movies.insert(movies.end(), items.begin(), items.end());
    }
    copy(Scope::playlists, gatherSources(movies, surroundings_.preferences.networkMode()), folder, false);
}

/// The first title has a colon and the others have none; of playlists the number goes on beyond the last file: both wanted.
void MediaGathering::say(int job, Scope scope, size_t done, size_t count) {
    const size_t number = scope == Scope::selected ? std::min(done + 1, count) : done + 1;
    const QString title = done == 0 ? tr("Gathering Media: File %1 of %2").arg(1).arg(count)
                                    : tr("Gathering Media File %1 of %2").arg(number).arg(count);
    surroundings_.progress.say(job, {title, worker_->bytes[job], ProgressBoard::Count::untold});
}

void MediaGathering::copy(Scope scope, const Sources& sources, const QString& folder, bool again) {
    ProgressBoard& progress = surroundings_.progress;
    const size_t count = sources.size();
    const int job = progress.begin({tr("Gathering Media: File %1 of %2").arg(1).arg(count), {}, ProgressBoard::Count::untold},
                                   0, true);
    const auto cancelled = progress.cancelFlag(job);
    worker_->jobs[job] = cancelled;
    worker_->work.run([this, job, scope, count, sources, folder, cancelled, again] {
        QElapsedTimer sinceReport;
        sinceReport.start();
        size_t filesDone = 0;
        GatherWatch watch{cancelled.get()};
        watch.bytes = [&](qint64 done, qint64 total) {
            if (done > 0 && done < total && sinceReport.elapsed() < gatheringReportMs) return;
            sinceReport.restart();
            WorkQueue::deliver(this, [this, job, scope, count, files = filesDone, done, total] {
                worker_->bytes[job] = ProgressBoard::bytesText(done, total);
                surroundings_.progress.advance(job, done, total);
                say(job, scope, files, count);
            });
        };
        watch.fileDone = [&](size_t files) {
            filesDone = files;
            // Files by the thousand that are all there already would be told faster than anybody can show it.
            if (count > largestToldOneByOne && files < count && sinceReport.elapsed() < gatheringReportMs) return;
            if (count > largestToldOneByOne) sinceReport.restart();
            WorkQueue::deliver(this, [this, job, scope, files, count] { say(job, scope, files, count); });
        };
        const auto report = std::make_shared<const GatherReport>(gatherMedia(sources, folder, watch));
        WorkQueue::deliver(this, [this, job, scope, sources, folder, report, again] {
            ended(job, scope, sources, folder, *report, again);
        });
    });
}

void MediaGathering::ended(int job, Scope scope, const Sources& sources, const QString& folder, const GatherReport& report,
                           bool again) {
    const bool cancelled = *worker_->jobs[job];
    worker_->jobs.erase(job);
    worker_->bytes.erase(job);
    surroundings_.progress.end(job);
    if (report.failed.empty()) {
        if (!cancelled) surroundings_.failedWrites.written(folder);
    } else {
        Sources left;
        for (const auto& one : report.failed)
            left.push_back(sources[one.source]);
        const auto& first = report.failed.front();
        const QString reason = report.failed.size() == 1
                                   ? tr("%1: %2").arg(left.front().name, first.reason)
                                   : tr("%1 and %2 more: %3").arg(left.front().name).arg(left.size() - 1).arg(first.reason);
        surroundings_.failedWrites.failed(tr("Media for"), folder, reason,
                                          [this, scope, left, folder] { copy(scope, left, folder, true); });
    }
    if (scope == Scope::selected || cancelled || again) return;
    Alert alert; // even when nothing could be copied; wanted
    alert.message = tr("Copy Complete");
    alert.buttons = QStringList{tr("Okay")};
    surroundings_.alerts.show(alert);
}

} // namespace daylark
