#include "export/media/GatheredMedia.h"

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
};

std::vector<Planned> planOf(const std::vector<GatherSource>& sources, const QString& folder, const GatherWatch& watch) {
    std::vector<Planned> plan;
    QSet<QString> taken;
    const QDir destination(folder);
    for (const GatherSource& source : sources) {
        if (watch.cancelled && *watch.cancelled) return plan;
        const FileCheck check = checkFile(source.file);
        Planned one{check.path, destination.filePath(source.name), {}, 0};
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
        case CopyOutcome::End::source_missing: report.skipped.push_back({one.from, outcome.reason, at}); break;
        case CopyOutcome::End::failed: report.failed.push_back({one.from, outcome.reason, at}); break;
        }
        done += one.bytes;
        tell(done);
        if (watch.fileDone) watch.fileDone(at + 1);
    }
    return report;
}

} // namespace daylark
