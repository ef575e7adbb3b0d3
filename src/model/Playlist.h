#pragma once

#include "archive/Archivable.h"
#include "model/Movie.h"

#include <QString>
#include <QUrl>

#include <optional>

namespace daylark {

/// A named, ordered list of movies, or a divider line between lists. Owned by the session; interface thread.
class Playlist : public Archivable {
public:
    Playlist();

    QString name = QStringLiteral("Untitled Playlist");
    QString itemCount = QStringLiteral(""); ///< not archived; null until the library refreshes a decoded list
    QUrl directoryPath;
    ObjectList<Movie> movieList;
    std::optional<Number> isDivider = Number(false);
    QString playlistType = QStringLiteral("playlist"); ///< "playlist", "smartlist" or "divider"; null in older archives
    qint64 status = 0; ///< 0 none missing, 1 some, 2 all
    bool hasBeenVisited = false; ///< not archived

    [[nodiscard]] qint64 count() const { return qint64(movieList.size()); }
    void updateCount();
    /// The missing-media state for so many missing movies of this list.
    [[nodiscard]] qint64 statusForMissing(qint64 missing) const;

    [[nodiscard]] const char* archiveClassName() const override { return "Playlist"; }
    void encodeWithCoder(Encoder& coder) const override; ///< six keys in their order
    void initWithCoder(const Decoder& coder) override;
};

} // namespace daylark
