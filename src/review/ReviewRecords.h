#pragma once

#include "model/Playlist.h"
#include "review/Change.h"

#include <memory>
#include <unordered_map>
#include <vector>

namespace daylark {

/// The records of a session and the numbers that they go by, and the carrying out of changes on them. The
/// session's playlists stand here, in display order. A number is handed out when a session is taken over or
/// when a record is first met; it is never used again. The same changes carried out on an equal copy with the
/// same numbers give an equal copy.
///
/// Records are written only here and in `ReviewStore`. Owned by the store, or by whoever follows a store on a
/// copy of its own; one thread.
class ReviewRecords {
public:
    using Playlists = std::vector<std::shared_ptr<Playlist>>;
    enum class Keep {
        what_is_used,  ///< a record that nobody holds any more is forgotten
        everything_met ///< of a copy that follows changes: what left may come back
    };
    explicit ReviewRecords(Keep keep = Keep::what_is_used)
        : keep_(keep) {}

    [[nodiscard]] const Playlists& playlists() const { return playlists_; }
    /// Takes another session over: its records get numbers, the given ones by position (`idsByPosition` of the
    /// session that this one is a copy of), new ones where there are none.
    void adopt(Playlists playlists, const std::vector<RecordId>& ids = {});
    /// The session's own field beside its playlists: a path or a name; empty: none.
    [[nodiscard]] const QString& colourConfiguration() const { return colourConfiguration_; }
    void adoptColourConfiguration(const QString& configuration) { colourConfiguration_ = configuration; }
    /// The numbers of all records in the order in which they stand: each playlist, its items, each item's
    /// bookmarks; a record that stands in several places at its first. Time grows with the session.
    [[nodiscard]] std::vector<RecordId> idsByPosition() const;

    /// The number of a record; one that was never met gets one.
    RecordId idOf(const std::shared_ptr<Archivable>& record);
    [[nodiscard]] RecordId knownId(const Archivable* record) const; ///< `noRecord` for one never met
    [[nodiscard]] std::shared_ptr<Archivable> record(RecordId id) const; ///< null when it is gone
    template<class Record>
    [[nodiscard]] std::shared_ptr<Record> find(RecordId id) const {
        return std::dynamic_pointer_cast<Record>(record(id));
    }
    /// The item that a bookmark was last in; null when unknown.
    [[nodiscard]] std::shared_ptr<Movie> ownerOf(RecordId bookmark) const;

    /// Carries out a change that fits, as announced by a store. What names an unknown record is passed over.
    void apply(const Change& change);
    /// The change that does here what `change` did or would have done elsewhere: `before` is what stands here
    /// now; records of a list are found by what they are, not where they stood. Empty when nothing is to do.
    [[nodiscard]] std::optional<Change> fitted(const Change& change) const;
    /// What announces a whole record (a playlist without its items' own contents, which are announced before).
    [[nodiscard]] Change wholeRecordChange(const std::shared_ptr<Archivable>& record);

    /// A record's list of other records by numbers; nil for a nil list.
    [[nodiscard]] Value listOf(RecordId id, const QString& field) const;
    [[nodiscard]] static bool isList(const QString& field);

private:
    struct Entry {
        std::weak_ptr<Archivable> record;
        RecordId owner = noRecord;
    };
    RecordId enter(const std::shared_ptr<Archivable>& record, RecordId id);
    void enterBookmarks(const Movie& movie, RecordId owner);
    void applyWholeRecord(const Change& change);
    void applyToList(const Change& change);
    void forgetGone();

    const Keep keep_;
    Playlists playlists_;
    QString colourConfiguration_;
    std::unordered_map<RecordId, Entry> entries_;
    std::unordered_map<const Archivable*, RecordId> ids_;
    std::unordered_map<RecordId, std::shared_ptr<Archivable>> kept_; ///< with `everything_met`
    RecordId next_ = sessionRecord + 1;
    size_t tidyAt_ = 1024;
};

} // namespace daylark
