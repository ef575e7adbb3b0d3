#include "app/adding/MediaWalk.h"

#include "media/facts/MediaTypes.h"
#include "model/bundle/BundleReading.h"
#include "platform/FileBookmark.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace daylark {

namespace {

void collectFiles(const QString& folder, const WalkWatch& watch, QStringList& files) {
    QFileInfoList entries = QDir(folder).entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::NoSort);
    std::sort(entries.begin(), entries.end(),
              [](const QFileInfo& a, const QFileInfo& b) { return a.fileName() < b.fileName(); });
    for (const QFileInfo& entry : entries) {
        if (watch.isCancelled()) return;
        if (!entry.isDir())
            files.append(entry.filePath());
        else if (!entry.isSymLink()) // a linked folder could lead in a circle
            collectFiles(entry.filePath(), watch, files);
    }
}

} // namespace

QStringList filesUnderFolder(const QString& folder, const WalkWatch& watch) {
    QStringList files;
    if (!isBundlePath(folder)) collectFiles(QDir::cleanPath(folder), watch, files);
    return files;
}

std::vector<FoundMedia> mediaAmong(const QStringList& paths, bool allowImageFiles, const WalkWatch& watch) {
    std::vector<FoundMedia> media;
    for (const QString& path : paths) {
        if (watch.isCancelled()) return media;
        const MediaType type = mediaTypeOfPath(path);
        if (type == MediaType::other || (type == MediaType::image && !allowImageFiles)) continue;
        // A folder, a pipe or a device may be named like a movie.
        if (const QFileInfo file(path); file.exists() && !file.isFile()) continue;
        media.push_back({path, createFileBookmark(path)});
        if (watch.found) watch.found(qint64(media.size()));
    }
    return media;
}

} // namespace daylark
