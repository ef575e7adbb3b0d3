#include "app/adding/MediaWalk.h"

#include "media/facts/MediaTypes.h"
#include "media/sequence/RunFiles.h"
#include "model/bundle/BundleReading.h"
#include "platform/FileBookmark.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>

#include <algorithm>

namespace daylark {

namespace {

void collectFiles(const QString& folder, const WalkWatch& watch, QStringList& files) {
    struct Child {
        QString name;
        bool isFolder = false;
    };
    std::vector<Child> children;
    for (const FolderEntry& entry : entriesOf(folder)) {
        const bool isFolder = entry.kind == EntryKind::folder;
        if (!isFolder && entry.kind != EntryKind::file) continue; // a linked folder could lead in a circle
        if (const auto name = textOfName(entry.name))
            children.push_back({*name, isFolder});
        else if (watch.leftOut && (isFolder || mediaTypeOfPath(QString::fromUtf8(entry.name)) != MediaType::other))
            watch.leftOut->add(isFolder ? entry.name + '/' : entry.name);
    }
    std::sort(children.begin(), children.end(), [](const Child& a, const Child& b) { return a.name < b.name; });
    for (const Child& child : children) {
        if (watch.isCancelled()) return;
        const QString path = (folder.endsWith(u'/') ? folder : folder + u'/') + child.name;
        if (child.isFolder)
            collectFiles(path, watch, files);
        else
            files.append(path);
    }
}

} // namespace

QStringList filesUnderFolder(const QString& folder, const WalkWatch& watch) {
    QStringList files;
    if (!isBundlePath(folder)) collectFiles(QDir::cleanPath(folder), watch, files);
    return files;
}

bool leavesOut(const QString& path, const WalkWatch& watch) {
    const auto name = lostName(path);
    if (name && watch.leftOut) watch.leftOut->add(*name);
    return name.has_value();
}

const NamedRun* FolderRuns::runOf(const QString& path) {
    const qsizetype slash = path.lastIndexOf(QLatin1Char('/'));
    const QString folder = slash > 0 ? path.left(slash) : slash == 0 ? QStringLiteral("/") : QStringLiteral(".");
    const auto [entry, isNew] = folders_.try_emplace(folder);
    Folder& known = entry->second;
    if (isNew) {
        known.names = picturesTakenApart(fileNamesIn(folder));
        for (size_t at = 0; at < known.names.runs.size(); ++at)
            for (const qint64 number : known.names.runs[at].numbers)
                known.byName.insert(known.names.runs[at].run.nameOf(number), at);
    }
    const auto run = known.byName.constFind(path.mid(slash + 1));
    return run == known.byName.constEnd() ? nullptr : &known.names.runs[*run];
}

namespace {

/// The run that a picture, or a name with marks in it, stands for; and where it lies.
std::optional<RunAddress> runFor(const QString& path, FolderRuns& folders) {
    const QFileInfo file(path);
    if (const NamedRun* named = file.exists() ? folders.runOf(path) : nullptr) {
        RunAddress address;
        address.folder = path.left(std::max<qsizetype>(0, path.lastIndexOf(QLatin1Char('/'))));
        address.movie.run = named->run;
        return address;
    }
    if (file.exists() || !runPatternOf(file.fileName())) return std::nullopt;
    const Result<RunAddress> meant = runMeantBy(path);
    return meant && RunFiles::look(*meant) ? std::optional(*meant) : std::nullopt;
}

} // namespace

std::vector<FoundMedia> mediaAmong(const QStringList& paths, const MediaWanted& wanted, const WalkWatch& watch) {
    std::vector<FoundMedia> media;
    FolderRuns folders;
    QSet<QString> runs;
    const auto add = [&](FoundMedia one) {
        media.push_back(std::move(one));
        if (watch.found) watch.found(qint64(media.size()));
    };
    for (const QString& path : paths) {
        if (watch.isCancelled()) return media;
        const MediaType type = mediaTypeOfPath(path);
        const auto run = type == MediaType::image && wanted.runs ? runFor(path, folders) : std::nullopt;
        if (run) {
            const QString first = run->pathOf(run->movie.run.first);
            if (runs.contains(run->text())) continue;
            runs.insert(run->text());
            add({first, createFileBookmark(first), run->movie});
            continue;
        }
        if (type == MediaType::other || (type == MediaType::image && !wanted.images)) continue;
        // A folder, a pipe or a device may be named like a movie.
        if (const QFileInfo file(path); file.exists() && !file.isFile()) continue;
        add({path, createFileBookmark(path)});
    }
    return media;
}

} // namespace daylark
