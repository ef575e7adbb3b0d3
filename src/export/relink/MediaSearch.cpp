#include "export/relink/MediaSearch.h"

#include "export/relink/PatientFileCheck.h"
#include "platform/FileBookmark.h"

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
    for (const size_t at : sought)
        answers << index.path(items[at].filename);
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
            const QStringList all = index.allPaths(path.mid(path.lastIndexOf(QLatin1Char('/')) + 1));
            if (all.size() > 1) result.choices.push_back(all);
        }
        const QByteArray& bookmark = bookmarks[path]; // bytes of its own for each: an archive tells shared ones from equal
        result.links.push_back({item, path, QByteArray(bookmark.constData(), bookmark.size())});
    }
    if (watch.cancelled && *watch.cancelled) return std::nullopt;
    return result;
}

} // namespace daylark
