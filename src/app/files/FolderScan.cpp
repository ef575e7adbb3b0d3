#include "app/files/FolderScan.h"

#include "media/facts/MediaTypes.h"
#include "platform/FileBookmark.h"

#include <QCollator>
#include <QDir>
#include <QFileInfo>
#include <QSet>

#include <algorithm>

namespace daylark {

namespace {

FolderScan::State stateOf(const QFileInfo& file) {
    return {file.size(), file.lastModified()};
}

/// By name as people count ("shot 9" before "shot 10"), wherever in the folder; equal ones by path.
void sortByName(std::vector<FolderScan::File>& files) {
    QCollator collator{QLocale(QLocale::English)};
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::vector<std::pair<QCollatorSortKey, FolderScan::File>> keyed;
    keyed.reserve(files.size());
    for (FolderScan::File& file : files)
        keyed.emplace_back(collator.sortKey(file.path.section(QLatin1Char('/'), -1)), std::move(file));
    std::sort(keyed.begin(), keyed.end(), [](const auto& a, const auto& b) {
        const int order = a.first.compare(b.first);
        return order != 0 ? order < 0 : a.second.path < b.second.path;
    });
    for (size_t at = 0; at < files.size(); ++at)
        files[at] = std::move(keyed[at].second);
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

FolderScan scanFolder(const QString& folder, const std::vector<FolderScan::Known>& known, bool allowImageFiles,
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
    for (const QString& path : filesUnderFolder(folder, watch)) {
        if (watch.isCancelled()) return {};
        folders.insert(path.left(path.lastIndexOf(QLatin1Char('/'))));
        const MediaType type = mediaTypeOfPath(path);
        if (type == MediaType::other || (type == MediaType::image && !allowImageFiles)) continue;
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
    sortByName(scan.files);
    scan.folders = folders.values();
    scan.folders.sort();
    scan.isReadable = !watch.isCancelled();
    return scan;
}

} // namespace daylark
