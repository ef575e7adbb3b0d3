#include "export/relink/MediaSearch.h"

#include "export/relink/PatientFileCheck.h"
#include "platform/FileBookmark.h"

#include <QDir>
#include <QSet>

namespace daylark {

namespace {

/// The items that are looked for, by their place in what was handed over.
std::vector<size_t> soughtAmong(const std::vector<SoughtMedia>& items, const MediaSearch& search,
                                const IndexWatch& watch, MediaSearchResult& result) {
    std::vector<size_t> sought;
    PatientFileCheck check;
    for (size_t at = 0; at < items.size(); ++at) {
        if (watch.cancelled && *watch.cancelled) return {};
        const SoughtMedia& media = items[at];
        if (search.sought == MediaSearch::Sought::missing && !result.checks.contains(media.item))
            result.checks.insert(media.item, check(media.file, watch.cancelled));
        if (search.sought == MediaSearch::Sought::all || !result.checks[media.item].found) sought.push_back(at);
    }
    return sought;
}

/// Where the file of an item lies.
struct Places {
    QString path;    ///< what it is linked to; null: nowhere
    QStringList all; ///< and where that might have been as well, itself last
};

Places placesOf(const SoughtMedia& media, const FolderIndex& index) {
    if (!media.file.run) {
        QStringList all = index.allPaths(media.filename);
        return {all.isEmpty() ? QString() : all.last(), all};
    }
    const FrameRun& run = media.file.run->run;
    Places places;
    for (const QString& folder : index.foldersOf(run)) {
        places.path = QDir(folder).filePath(run.nameOf(run.first));
        places.all << QDir(folder).filePath(run.text());
    }
    return places;
}

/// What an item is linked to when the answers go by turn: see `MediaSearch::Answers`.
std::vector<std::pair<qsizetype, QString>> linksByTurn(const std::vector<SoughtMedia>& items, const std::vector<size_t>& sought,
                                                       const QStringList& answers) {
    std::vector<std::pair<qsizetype, QString>> links;
    QSet<qsizetype> linked;
    qsizetype turn = 0;
    for (const size_t at : sought) {
        if (turn == answers.size()) break;
        if (linked.contains(items[at].item)) continue;
        const QString& path = answers[turn++];
        if (path.isNull()) continue;
        links.emplace_back(items[at].item, path);
        linked.insert(items[at].item);
    }
    return links;
}

} // namespace

std::optional<MediaSearchResult> searchMedia(const std::vector<SoughtMedia>& items, const MediaSearch& search,
                                             const IndexWatch& watch) {
    const FolderIndex index = FolderIndex::ofFolder(search.root, watch);
    MediaSearchResult result;
    const std::vector<size_t> sought = soughtAmong(items, search, watch, result);
    result.sought = qint64(sought.size());
    QStringList answers;
    QHash<QString, QStringList> alternatives;
    for (const size_t at : sought) {
        if (watch.cancelled && *watch.cancelled) return std::nullopt;
        const Places places = placesOf(items[at], index);
        answers << places.path;
        alternatives.insert(places.path, places.all);
    }
    std::vector<std::pair<qsizetype, QString>> links;
    if (search.answers == MediaSearch::Answers::byTurn) {
        links = linksByTurn(items, sought, answers);
    } else {
        for (size_t at = 0; at < sought.size(); ++at)
            if (!answers[qsizetype(at)].isNull()) links.emplace_back(items[sought[at]].item, answers[qsizetype(at)]);
    }
    QHash<QString, QByteArray> bookmarks;
    for (const auto& [item, path] : links) {
        if (watch.cancelled && *watch.cancelled) return std::nullopt;
        if (!bookmarks.contains(path)) {
            bookmarks.insert(path, createFileBookmark(path));
            if (const QStringList& all = alternatives[path]; all.size() > 1) result.choices.push_back(all);
        }
        const QByteArray& bookmark = bookmarks[path]; // bytes of its own for each: an archive tells shared ones from equal
        result.links.push_back({item, path, QByteArray(bookmark.constData(), bookmark.size()), {}});
    }
    if (watch.cancelled && *watch.cancelled) return std::nullopt;
    return result;
}

} // namespace daylark
