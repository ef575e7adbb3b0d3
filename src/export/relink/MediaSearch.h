#pragma once

#include "export/relink/FolderIndex.h"
#include "model/Movie.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace daylark {

/// One item that a search for media is about.
struct SoughtMedia {
    QString filename;
    FileReference file;
    qsizetype item = 0; ///< an item that stands in several lists is sought several times under one number
};

/// What a search answers for one item: where it is to be linked to, or nothing.
struct MediaLink {
    qsizetype item = 0;
    QString path;
    QByteArray bookmarkData;
    std::optional<MovieRun> run = {}; ///< what it is a run of from now on; none: it stays what it is, under another path
};

/// How a search goes about it.
struct MediaSearch {
    /// Which items are looked for.
    enum class Sought { missing, all };
    /// In which order answers come to items.
    enum class Answers {
        byItem,
        /// The answers are a list of their own, of which each item takes the next if it is still missing when its turn comes.
        /// So an item that was linked in its first list doesn't take its second answer; who comes next does, though that may
        /// be a file of another name: kept as it stands.
        byTurn
    };
    QString root;
    Sought sought = Sought::missing;
    Answers answers = Answers::byItem;
};

/// What came of it. A value.
struct MediaSearchResult {
    qint64 sought = 0;              ///< with those that stand in several lists counted in each
    std::vector<MediaLink> links;   ///< in the order in which they are to be made; an item may come twice
    QHash<qsizetype, FileCheck> checks; ///< of items whose file was looked at
    /// Names that several files bear, of those that were linked: all their paths, the one taken last. Of a run its folders, each
    /// with the run's text behind it.
    std::vector<QStringList> choices;
};

/// Looks for the files of items under a folder by their names alone: a run's by the names of all its pictures, so that one which
/// lost its first is found as well; its path is the first one's all the same. Nothing when cancelled. Worker threads.
[[nodiscard]] std::optional<MediaSearchResult> searchMedia(const std::vector<SoughtMedia>& items, const MediaSearch& search,
                                                           const IndexWatch& watch);

} // namespace daylark
