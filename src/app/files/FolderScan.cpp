#include "app/files/FolderScan.h"

#include "media/facts/MediaTypes.h"
#include "platform/FileBookmark.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>

#include <algorithm>

namespace daylark {

namespace {

FolderScan::State stateOf(const QFileInfo& file) {
    return {file.size(), file.lastModified()};
}

/// Items whose file is there no more may be one of the new files under its old bookmark.
void followRenames(FolderScan& scan, const std::vector<FolderScan::Known>& known, const QSet<qsizetype>& gone) {
    QHash<QString, size_t> newFiles;
    for (size_t at = 0; at < scan.files.size(); ++at)
        if (scan.files[at].known < 0) newFiles.insert(scan.files[at].path, at);
    if (newFiles.isEmpty()) return;
    for (const qsizetype item : gone) {
        const FolderScan::Known& before = known[size_t(item)];
        if (before.bookmarkData.isEmpty()) continue;
        const Result<QString> now = resolveFileBookmark(before.bookmarkData, before.path);
        if (!now) continue;
        const auto file = newFiles.constFind(QDir::cleanPath(*now));
        if (file != newFiles.constEnd() && scan.files[*file].known < 0) scan.files[*file].known = item;
    }
}

} // namespace

FolderOrder::FolderOrder()
    : collator_(QLocale(QLocale::English)) {
    collator_.setNumericMode(true);
    collator_.setCaseSensitivity(Qt::CaseInsensitive);
}

bool FolderOrder::operator()(const QString& path, const QString& other) const {
    const auto name = [](const QString& whole) {
        return QStringView(whole).mid(whole.lastIndexOf(QLatin1Char('/')) + 1);
    };
    const int order = collator_.compare(name(path), name(other));
    return order != 0 ? order < 0 : path < other;
}

FolderScan scanFolder(const QString& folder, const std::vector<FolderScan::Known>& known, const MediaWanted& wanted,
                      const WalkWatch& watch) {
    FolderScan scan;
    const QFileInfo root(folder);
    if (!root.isDir() || !root.isReadable()) return scan;
    QHash<QString, qsizetype> items;
    QSet<qsizetype> gone;
    for (size_t item = 0; item < known.size(); ++item) {
        items.insert(known[item].path, qsizetype(item));
        gone.insert(qsizetype(item));
    }
    QSet<QString> folders{QDir::cleanPath(folder)};
    FolderRuns runs;
    for (const QString& path : filesUnderFolder(folder, {watch.cancelled, watch.found, &scan.leftOut})) {
        if (watch.isCancelled()) return {};
        folders.insert(path.left(path.lastIndexOf(QLatin1Char('/'))));
        const MediaType type = mediaTypeOfPath(path);
        if (const NamedRun* run = type == MediaType::image && wanted.runs ? runs.runOf(path) : nullptr) {
            const QString above = path.left(path.lastIndexOf(QLatin1Char('/')) + 1),
                          first = above + run->run.nameOf(run->run.first);
            if (first != path) continue; // one item, where its first picture stands
            MovieRun movie;
            movie.run = run->run;
            const qsizetype item = items.value(first, -1);
            gone.remove(item);
            scan.files.push_back({first, {qint64(run->numbers.size()), QFileInfo(above).lastModified()}, {}, item, movie});
            continue;
        }
        if (type == MediaType::other || (type == MediaType::image && !wanted.images)) continue;
        const QFileInfo file(path);
        if (!file.isFile()) continue;
        const qsizetype item = items.value(path, -1);
        gone.remove(item);
        scan.files.push_back({path, stateOf(file), {}, item});
    }
    followRenames(scan, known, gone);
    for (FolderScan::File& file : scan.files)
        if (file.known < 0 || known[size_t(file.known)].path != file.path)
            file.bookmarkData = createFileBookmark(file.path);
    std::sort(scan.files.begin(), scan.files.end(),
              [order = FolderOrder()](const auto& a, const auto& b) { return order(a.path, b.path); });
    scan.folders = folders.values();
    scan.folders.sort();
    scan.isReadable = !watch.isCancelled();
    return scan;
}

} // namespace daylark
