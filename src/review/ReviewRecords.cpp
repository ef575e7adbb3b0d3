#include "review/ReviewRecords.h"

#include "review/ListChanges.h"
#include "review/RecordFields.h"

#include <algorithm>

namespace daylark {

namespace {

const QString objectKey = QStringLiteral("object"), idsKey = QStringLiteral("ids"),
              itemsKey = QStringLiteral("items");

/// A copy that shares no record with the original, so that it may be encoded elsewhere while the original
/// changes.
std::shared_ptr<Movie> detached(const Movie& movie) {
    auto copy = std::make_shared<Movie>(movie);
    for (auto& bookmark : copy->bookmarkStore)
        if (bookmark) bookmark = std::make_shared<Bookmark>(*bookmark);
    return copy;
}

std::shared_ptr<Playlist> withoutItems(const Playlist& playlist) {
    auto copy = std::make_shared<Playlist>(fields::withoutItems(playlist));
    copy->movieList.isNil = playlist.movieList.isNil;
    return copy;
}

template<class List>
void setNil(List& list, bool nil) {
    if constexpr (requires { list.isNil; }) list.isNil = nil;
}

} // namespace

bool ReviewRecords::isList(const QString& field) {
    return field == fields::playlists || field == fields::movieList || field == fields::bookmarkStore;
}

// Numbers.

RecordId ReviewRecords::enter(const std::shared_ptr<Archivable>& record, RecordId id) {
    if (!id) id = next_;
    next_ = std::max(next_, id + 1);
    entries_[id] = {record, noRecord};
    ids_[record.get()] = id;
    if (keep_ == Keep::everything_met) kept_[id] = record;
    if (entries_.size() >= tidyAt_) forgetGone();
    return id;
}

RecordId ReviewRecords::knownId(const Archivable* record) const {
    const auto found = ids_.find(record);
    if (found == ids_.end()) return noRecord;
    // Another record may stand where one that is gone stood.
    const auto entry = entries_.find(found->second);
    return entry != entries_.end() && entry->second.record.lock().get() == record ? found->second : noRecord;
}

RecordId ReviewRecords::idOf(const std::shared_ptr<Archivable>& record) {
    if (!record) return noRecord;
    if (const RecordId known = knownId(record.get())) return known;
    const RecordId id = enter(record, noRecord);
    if (const auto* movie = dynamic_cast<const Movie*>(record.get())) enterBookmarks(*movie, id);
    return id;
}

void ReviewRecords::enterBookmarks(const Movie& movie, RecordId owner) {
    for (const auto& bookmark : movie.bookmarkStore)
        if (bookmark) entries_[idOf(bookmark)].owner = owner;
}

std::shared_ptr<Archivable> ReviewRecords::record(RecordId id) const {
    const auto found = entries_.find(id);
    return found == entries_.end() ? nullptr : found->second.record.lock();
}

std::shared_ptr<Movie> ReviewRecords::ownerOf(RecordId bookmark) const {
    const auto found = entries_.find(bookmark);
    return found == entries_.end() ? nullptr : find<Movie>(found->second.owner);
}

/// Seldom enough not to be felt: the next time when there are twice as many.
void ReviewRecords::forgetGone() {
    for (auto entry = entries_.begin(); entry != entries_.end();)
        entry = entry->second.record.expired() ? entries_.erase(entry) : std::next(entry);
    for (auto id = ids_.begin(); id != ids_.end();)
        id = entries_.contains(id->second) ? std::next(id) : ids_.erase(id);
    tidyAt_ = std::max<size_t>(1024, entries_.size() * 2);
}

void ReviewRecords::adopt(Playlists playlists, const std::vector<RecordId>& ids) {
    playlists_ = std::move(playlists);
    size_t position = 0;
    const auto take = [&](const std::shared_ptr<Archivable>& record, RecordId owner) {
        RecordId id = record ? knownId(record.get()) : noRecord;
        const bool isNew = record && !id;
        if (isNew) {
            id = enter(record, position < ids.size() ? ids[position] : noRecord);
            entries_[id].owner = owner;
            ++position;
        }
        return std::pair(id, isNew);
    };
    if (!ids.empty()) {
        entries_.clear();
        ids_.clear();
        kept_.clear();
    }
    for (const auto& playlist : playlists_) {
        take(playlist, noRecord);
        if (!playlist) continue;
        for (const auto& movie : playlist->movieList) {
            const auto [id, isNew] = take(movie, noRecord);
            // An item that was known before may have come by bookmarks that nobody has met.
            if (isNew || (movie && ids.empty()))
                for (const auto& bookmark : movie->bookmarkStore)
                    take(bookmark, id);
        }
    }
}

std::vector<RecordId> ReviewRecords::idsByPosition() const {
    std::vector<RecordId> ids;
    std::unordered_map<RecordId, bool> seen;
    const auto add = [&](const Archivable* record) {
        const RecordId id = record ? knownId(record) : noRecord;
        const bool isNew = id && seen.emplace(id, true).second;
        if (isNew) ids.push_back(id);
        return isNew;
    };
    for (const auto& playlist : playlists_) {
        add(playlist.get());
        if (!playlist) continue;
        for (const auto& movie : playlist->movieList)
            if (add(movie.get()))
                for (const auto& bookmark : movie->bookmarkStore)
                    add(bookmark.get());
    }
    return ids;
}

// Carrying out.

namespace {

/// Calls `use` with the list that the field names, of a record or of the session.
template<class Playlists, class Use>
bool withList(Playlists& playlists, Archivable* record, RecordId id, const QString& field, Use use) {
    if (id == sessionRecord) {
        if (field != fields::playlists) return false;
        use(playlists);
        return true;
    }
    if (auto* movie = dynamic_cast<Movie*>(record); movie && field == fields::bookmarkStore) {
        use(movie->bookmarkStore);
        return true;
    }
    if (auto* playlist = dynamic_cast<Playlist*>(record); playlist && field == fields::movieList) {
        use(playlist->movieList);
        return true;
    }
    return false;
}

template<class List>
using RecordOf = typename List::value_type::element_type;

} // namespace

Value ReviewRecords::listOf(RecordId id, const QString& field) const {
    Value result;
    const auto holder = record(id);
    withList(playlists_, holder.get(), id, field, [&](const auto& list) {
        if (isNilList(list)) return;
        std::vector<RecordId> ids;
        ids.reserve(list.size());
        for (const auto& element : list)
            ids.push_back(knownId(element.get()));
        result = listOfRecordIds(ids);
    });
    return result;
}

void ReviewRecords::applyToList(const Change& change) {
    const auto holder = record(change.record);
    withList(playlists_, holder.get(), change.record, change.field, [&](auto& list) {
        using Element = RecordOf<std::remove_reference_t<decltype(list)>>;
        const size_t taken = recordIdsOf(change.before).size();
        const auto at = qsizetype(std::clamp<qint64>(change.at, 0, qint64(list.size())));
        const auto end = std::min(qsizetype(list.size()), at + qsizetype(taken));
        std::vector<std::shared_ptr<Element>> coming;
        for (const RecordId id : recordIdsOf(change.after)) {
            auto element = find<Element>(id);
            if (!element) continue;
            if constexpr (std::is_same_v<Element, Bookmark>) entries_[id].owner = change.record;
            coming.push_back(std::move(element));
        }
        list.erase(list.begin() + at, list.begin() + end);
        list.insert(list.begin() + at, coming.begin(), coming.end());
        setNil(list, change.after.isNil() && list.empty());
    });
}

void ReviewRecords::applyWholeRecord(const Change& change) {
    if (record(change.record)) return; // known: it is what the changes until now made of it
    const std::shared_ptr<Archivable> object = change.after[objectKey].object();
    if (!object) return;
    // The value stays as it is: others may be reading it.
    if (const auto movie = std::dynamic_pointer_cast<Movie>(object)) {
        const auto copy = detached(*movie);
        enter(copy, change.record);
        kept_.emplace(change.record, copy);
        const std::vector<RecordId> ids = recordIdsOf(change.after[idsKey]);
        for (size_t i = 0; i < copy->bookmarkStore.size() && i < ids.size(); ++i) {
            if (!ids[i] || record(ids[i])) continue;
            enter(copy->bookmarkStore[i], ids[i]);
            entries_[ids[i]].owner = change.record;
        }
    } else if (const auto bookmark = std::dynamic_pointer_cast<Bookmark>(object)) {
        const auto copy = std::make_shared<Bookmark>(*bookmark);
        enter(copy, change.record);
        kept_.emplace(change.record, copy);
    } else if (const auto playlist = std::dynamic_pointer_cast<Playlist>(object)) {
        const auto copy = withoutItems(*playlist);
        for (const RecordId id : recordIdsOf(change.after[itemsKey]))
            if (auto item = find<Movie>(id)) copy->movieList.push_back(std::move(item));
        enter(copy, change.record);
        kept_.emplace(change.record, copy);
    }
}

Change ReviewRecords::wholeRecordChange(const std::shared_ptr<Archivable>& record) {
    Change change;
    change.record = idOf(record);
    change.field = Change::wholeRecord;
    change.keeps.push_back(record);
    Value::Dictionary whole;
    if (const auto* movie = dynamic_cast<const Movie*>(record.get())) {
        std::vector<RecordId> ids;
        for (const auto& bookmark : movie->bookmarkStore)
            ids.push_back(idOf(bookmark));
        whole = {{objectKey, detached(*movie)}, {idsKey, listOfRecordIds(ids)}};
    } else if (const auto* bookmark = dynamic_cast<const Bookmark*>(record.get())) {
        whole = {{objectKey, std::make_shared<Bookmark>(*bookmark)}};
    } else if (const auto* playlist = dynamic_cast<const Playlist*>(record.get())) {
        std::vector<RecordId> ids;
        for (const auto& item : playlist->movieList)
            ids.push_back(idOf(item));
        whole = {{objectKey, withoutItems(*playlist)}, {itemsKey, listOfRecordIds(ids)}};
    }
    change.after = Value(std::move(whole));
    return change;
}

void ReviewRecords::apply(const Change& change) {
    if (change.isWholeRecord()) return applyWholeRecord(change);
    if (isList(change.field)) return applyToList(change);
    if (change.record == sessionRecord && change.field == fields::colourConfiguration)
        colourConfiguration_ = change.after.isString() ? change.after.string() : QString();
    const auto holder = record(change.record);
    if (auto* movie = dynamic_cast<Movie*>(holder.get()))
        fields::write(*movie, change.field, change.at, change.after);
    else if (auto* bookmark = dynamic_cast<Bookmark*>(holder.get()))
        fields::write(*bookmark, change.field, change.at, change.after);
    else if (auto* playlist = dynamic_cast<Playlist*>(holder.get()))
        fields::write(*playlist, change.field, change.at, change.after);
}

std::optional<Change> ReviewRecords::fitted(const Change& change) const {
    if (change.isWholeRecord()) return std::nullopt;
    const auto holder = record(change.record);
    if (!holder && change.record != sessionRecord) return std::nullopt;
    Change here = change;
    if (isList(change.field)) {
        const Value list = listOf(change.record, change.field);
        const RecordIds now = recordIdsOf(list), then = listAfter(now, change);
        auto span = spanBetween(now, list.isNil(), then, change.after.isNil() && then.empty());
        if (!span) return std::nullopt;
        here.at = span->at;
        here.before = span->before;
        here.after = span->after;
        return here;
    }
    if (change.record == sessionRecord && change.field == fields::colourConfiguration) here.before = colourConfiguration_;
    if (const auto* movie = dynamic_cast<const Movie*>(holder.get()))
        here.before = fields::read(*movie, change.field, change.at);
    else if (const auto* bookmark = dynamic_cast<const Bookmark*>(holder.get()))
        here.before = fields::read(*bookmark, change.field, change.at);
    else if (const auto* playlist = dynamic_cast<const Playlist*>(holder.get()))
        here.before = fields::read(*playlist, change.field, change.at);
    return here;
}

} // namespace daylark
