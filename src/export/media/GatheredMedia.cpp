#include "export/media/GatheredMedia.h"

#include "media/sequence/RunFiles.h"
#include "platform/FileCopy.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QSet>

namespace daylark {

namespace {

struct GatheredMedia {
    Q_DECLARE_TR_FUNCTIONS(GatheredMedia)
};

/// One source, looked at before the first copy.
struct Planned {
    QString from, to;
    QString obstacle; ///< null: to be copied
    qint64 bytes = 0; ///< that the copy will have
    size_t source = 0;
};

/// A run is all its pictures, those that are there, under their own names.
std::vector<GatherSource> picturesOf(const GatherSource& source) {
    if (!source.file.run) return {source};
    const FileCheck check = checkFile(source.file);
    const auto address = RunAddress::of(mediaAddress(check.path, source.file.run));
    const Result<RunFiles> files = address ? RunFiles::look(*address) : Error{};
    if (!files) return {source};
    std::vector<GatherSource> pictures;
    for (const qint64 number : files->numbers)
        pictures.push_back({{files->address.pathOf(number), {}, true}, files->address.movie.run.nameOf(number)});
    return pictures;
}

std::vector<Planned> planOf(const std::vector<GatherSource>& sources, const QString& folder, const GatherWatch& watch) {
    std::vector<Planned> plan;
    QSet<QString> taken;
    const QDir destination(folder);
    std::vector<std::pair<size_t, GatherSource>> files;
    for (size_t at = 0; at < sources.size(); ++at)
        for (GatherSource& each : picturesOf(sources[at]))
            files.emplace_back(at, std::move(each));
    for (const auto& [number, source] : files) {
        if (watch.cancelled && *watch.cancelled) return plan;
        const FileCheck check = checkFile(source.file);
        Planned one{check.path, destination.filePath(source.name), {}, 0, number};
        const QFileInfo file(check.path);
        const bool isName = !source.name.isEmpty() && source.name != QLatin1String(".") && source.name != QLatin1String("..") &&
                            !source.name.contains(QLatin1Char('/'));
        if (!isName) // a stranger's record must not write elsewhere
            one.obstacle = GatheredMedia::tr("it has no file name");
        else if (!check.found)
            one.obstacle = GatheredMedia::tr("there is no such file");
        else if (!file.isReadable())
            one.obstacle = GatheredMedia::tr("it can not be read");
        else if (!taken.contains(one.to) && !QFileInfo::exists(one.to))
            one.bytes = file.size(); // the others will find their name taken
        taken.insert(one.to);
        plan.push_back(std::move(one));
    }
    return plan;
}

} // namespace

std::vector<GatherSource> gatherSources(const std::vector<std::shared_ptr<Movie>>& movies, bool networkMode) {
    std::vector<GatherSource> sources;
    sources.reserve(movies.size());
    for (const auto& movie : movies)
        sources.push_back({movie->fileReference(networkMode), movie->filenameString});
    return sources;
}

GatherReport gatherMedia(const std::vector<GatherSource>& sources, const QString& folder, const GatherWatch& watch) {
    GatherReport report;
    const std::vector<Planned> plan = planOf(sources, folder, watch);
    qint64 done = 0, total = 0;
    for (const Planned& one : plan)
        total += one.bytes;
    const auto tell = [&watch, total](qint64 bytes) {
        if (watch.bytes) watch.bytes(bytes, total);
    };
    tell(0);
    for (size_t at = 0; at < plan.size(); ++at) {
        if (watch.cancelled && *watch.cancelled) return report;
        const Planned& one = plan[at];
        CopyOutcome outcome{CopyOutcome::End::source_missing, 0, one.obstacle};
        if (one.obstacle.isNull())
            outcome = copyFile(one.from, one.to, UnfinishedFile::Existing::keep,
                               {watch.cancelled, [&](qint64 bytes) { tell(done + std::min(bytes, one.bytes)); }});
        switch (outcome.end) {
        case CopyOutcome::End::copied:
            report.copied.push_back(one.from);
            report.copiedBytes += outcome.bytes;
            break;
        case CopyOutcome::End::cancelled: return report;
        case CopyOutcome::End::destination_exists:
        case CopyOutcome::End::source_missing: report.skipped.push_back({one.from, outcome.reason, one.source}); break;
        case CopyOutcome::End::failed: report.failed.push_back({one.from, outcome.reason, one.source}); break;
        }
        done += one.bytes;
        tell(done);
        if (watch.fileDone) watch.fileDone(one.source + 1);
    }
    return report;
}

} // namespace daylark
