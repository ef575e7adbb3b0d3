#include "app/media/MediaGathering.h"

#include "app/playlists/Library.h"
#include "base/jobs/ReportPace.h"
#include "platform/Alerts.h"
#include "platform/FailedWrites.h"
#include "platform/Panels.h"
#include "preferences/Preferences.h"

#include <QDir>
#include <QFileInfo>

#include <set>

namespace daylark {

namespace {

constexpr size_t largestToldOneByOne = 1000;

} // namespace

MediaGathering::MediaGathering(const Surroundings& surroundings, QObject* parent)
    : QObject(parent)
    , surroundings_(surroundings)
    , jobs_(surroundings.progress) {}

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
    return surroundings_.panels.chooseFolder(tr("Copy Media To New Destination"), tr("Copy Media"));
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
    surroundings_.progress.say(job, {title, bytes_[job], ProgressBoard::Count::untold});
}

void MediaGathering::copy(Scope scope, const Sources& sources, const QString& folder, bool again) {
    const size_t count = sources.size();
    const auto [job, cancelled] =
        jobs_.begin({tr("Gathering Media: File %1 of %2").arg(1).arg(count), {}, ProgressBoard::Count::untold});
    jobs_.run([this, job = job, scope, count, sources, folder, cancelled = cancelled, again] {
        ReportPace pace;
        size_t filesDone = 0;
        GatherWatch watch{cancelled.get()};
        watch.bytes = [&](qint64 done, qint64 total) {
            if (done > 0 && done < total && !pace.isDue()) return;
            WorkQueue::deliver(this, [this, job, scope, count, files = filesDone, done, total] {
                bytes_[job] = ProgressBoard::bytesText(done, total);
                surroundings_.progress.advance(job, done, total);
                say(job, scope, files, count);
            });
        };
        watch.fileDone = [&](size_t files) {
            filesDone = files;
            // Files by the thousand that are all there already would be told faster than anybody can show it.
            if (count > largestToldOneByOne && files < count && !pace.isDue()) return;
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
    const bool cancelled = jobs_.end(job);
    bytes_.erase(job);
    if (report.failed.empty()) {
        if (!cancelled) surroundings_.failedWrites.written(folder);
    } else {
        std::set<size_t> items; // one of which several pictures failed is one to try again
        for (const auto& one : report.failed)
            items.insert(one.source);
        Sources left;
        for (const size_t item : items)
            left.push_back(sources[item]);
        const auto& first = report.failed.front();
        const Sources::value_type& item = sources[first.source];
        const QString name = item.file.run ? QFileInfo(first.path).fileName() : item.name; // of a run: the very picture
        const QString reason = report.failed.size() == 1
                                   ? tr("%1: %2").arg(name, first.reason)
                                   : tr("%1 and %2 more: %3").arg(name).arg(report.failed.size() - 1).arg(first.reason);
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
