#include "app/links/LinkedFiles.h"

#include "media/facts/MediaTypes.h"
#include "media/sequence/RunFiles.h"
#include "platform/FileBookmark.h"

#include <QFileInfo>

namespace daylark {

namespace {

constexpr qsizetype longestPath = 4096; ///< the system's own limit, in bytes

bool isMedia(const QString& path) {
    return mediaTypeOfPath(path) != MediaType::other;
}

bool isReadableFile(const QString& path) {
    if (!path.startsWith(QLatin1Char('/')) || path.size() > longestPath || path.contains(QChar(u'\0'))) return false;
    const QFileInfo file(path);
    return file.isFile() && file.isReadable();
}

/// The path without its doubled slashes, which links from elsewhere bring along.
QString withSingleSlashes(QString path) {
    while (path.contains(QLatin1String("//")))
        path.replace(QLatin1String("//"), QLatin1String("/"));
    return path;
}

/// How many pieces from `first` on are the name of one file that is there; then `path` is that file. 0: none.
qsizetype piecesOfOneFile(const QStringList& pieces, qsizetype first, QString& path) {
    QString joined = withSingleSlashes(pieces[first]);
    for (qsizetype at = first;; joined += QLatin1Char(',') + pieces[at]) {
        if (isMedia(joined) && isReadableFile(joined)) {
            path = joined;
            return at - first + 1;
        }
        if (++at == pieces.size() || pieces[at].startsWith(QLatin1Char('/')) || joined.size() > longestPath) return 0;
    }
}

/// A run by its pattern, as links to runs have it: "/shots/sh010.1001-1100@@@@.exr".
std::optional<RunAddress> runOf(const QString& path) {
    const QString tidy = withSingleSlashes(path);
    if (!tidy.startsWith(QLatin1Char('/')) || tidy.size() > longestPath || tidy.contains(QChar(u'\0'))) return std::nullopt;
    const std::optional<RunPattern> pattern = runPatternOf(tidy.mid(tidy.lastIndexOf(QLatin1Char('/')) + 1));
    if (!pattern || !pattern->hasRange) return std::nullopt;
    const Result<RunAddress> run = runMeantBy(tidy);
    return run && RunFiles::look(*run) ? std::optional(*run) : std::nullopt;
}

} // namespace

LinkedFiles lookForLinkedFiles(const QStringList& paths, const WalkWatch& watch) {
    LinkedFiles files;
    for (qsizetype at = 0; at < paths.size(); ++at) {
        if (watch.isCancelled()) return files;
        QString path;
        if (const qsizetype pieces = piecesOfOneFile(paths, at, path); pieces > 0) {
            files.found.push_back({path, createFileBookmark(path)});
            at += pieces - 1;
            if (watch.found) watch.found(qint64(files.found.size()));
        } else if (const auto run = runOf(paths[at])) {
            const QString first = run->pathOf(run->movie.run.first);
            files.found.push_back({first, createFileBookmark(first), run->movie});
            if (watch.found) watch.found(qint64(files.found.size()));
        } else if (isMedia(paths[at])) {
            files.missing.append(paths[at]);
        }
    }
    return files;
}

LinkedFiles lookForFilesOf(const ReviewLink& link, const WalkWatch& watch) {
    LinkedFiles files = lookForLinkedFiles(link.paths, watch);
    if (files.missing.isEmpty() || link.ownPaths.isEmpty()) return files;
    LinkedFiles own = lookForLinkedFiles(link.ownPaths, watch);
    return own.missing.isEmpty() && !own.found.empty() ? own : files;
}

} // namespace daylark
