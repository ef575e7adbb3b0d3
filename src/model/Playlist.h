#pragma once

#include "archive/Archivable.h"
#include "model/Movie.h"
#include "model/SmartRules.h"

#include <QString>
#include <QUrl>

#include <optional>

namespace daylark {

/// What `playlistType` says.
namespace playlistType {
inline constexpr QLatin1String list{"playlist"}, smart{"smartlist"}, folder{"folderlist"}, divider{"divider"};
} // namespace playlistType

/// A named, ordered list of movies, or a divider line between lists. Owned by the session; interface thread.
class Playlist : public Archivable {
public:
    Playlist();

    QString name = QStringLiteral("Untitled Playlist");
    QString itemCount = QStringLiteral(""); ///< not archived; null until the library refreshes a decoded list
    QUrl directoryPath;
    ObjectList<Movie> movieList;
    std::optional<Number> isDivider = Number(false);
    QString playlistType = QStringLiteral("playlist"); ///< see `playlistType`; null in older archives
    SmartRules smartRules; ///< of a smartlist; archived beside the other keys where there are any
    qint64 status = 0; ///< 0 none missing, 1 some, 2 all
    bool hasBeenVisited = false; ///< not archived

    [[nodiscard]] bool isType(QLatin1String type) const { return playlistType == type; }
    /// Its items are the answer to its rules, not a list of its own.
    [[nodiscard]] bool asksRules() const { return isType(daylark::playlistType::smart) && !smartRules.isEmpty(); }
    /// A person puts items in, takes them out and gives them their order.
    [[nodiscard]] bool takesItems() const {
        return !isType(daylark::playlistType::smart) && !isType(daylark::playlistType::folder) &&
               !isType(daylark::playlistType::divider);
    }
    [[nodiscard]] qint64 count() const { return qint64(movieList.size()); }
    void updateCount();
    /// The missing-media state for so many missing movies of this list.
    [[nodiscard]] qint64 statusForMissing(qint64 missing) const;

    [[nodiscard]] const char* archiveClassName() const override { return "Playlist"; }
    void encodeWithCoder(Encoder& coder) const override; ///< six keys in their order, then the rules
    void initWithCoder(const Decoder& coder) override;
};

} // namespace daylark
