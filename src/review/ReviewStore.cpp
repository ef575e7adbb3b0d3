#include "review/ReviewStore.h"

#include "review/ListChanges.h"
#include "review/RecordFields.h"

#include <QCoreApplication>

#include <algorithm>
#include <unordered_set>

namespace daylark {

namespace {

template<class List>
RecordIds idsOf(ReviewRecords& records, const List& list) {
    RecordIds ids;
    ids.reserve(list.size());
    for (const auto& record : list)
        ids.push_back(records.idOf(record));
    return ids;
}

} // namespace

QString titleForItems(const QString& what, size_t items) {
    const QString said = QCoreApplication::translate("Words", what.toUtf8().constData());
    return items == 1 ? said : QCoreApplication::translate("UndoHistory", "%1 of %2 Items").arg(said).arg(items);
}

void ReviewStore::replaceSession(ReviewRecords::Playlists playlists, const QString& colourConfiguration) {
    records_.adopt(std::move(playlists));
    records_.adoptColourConfiguration(colourConfiguration);
    Q_EMIT sessionReplaced();
}

// Groups and announcing.

void ReviewStore::begin(const EditInfo& info) {
    if (depth_++ == 0) current_ = {info, {}};
}

void ReviewStore::end() {
    if (--depth_ > 0) return;
    if (!current_.changes.empty()) waiting_.push_back(std::exchange(current_, {}));
    announce();
}

void ReviewStore::announce() {
    if (announcing_) return;
    announcing_ = true;
    while (!waiting_.empty()) {
        const Edit edit = std::move(waiting_.front());
        waiting_.pop_front();
        for (const Change& change : edit.changes)
            Q_EMIT changed(change);
        Q_EMIT applied(edit);
    }
    announcing_ = false;
}

void ReviewStore::add(Change change) {
    change.mergeKey = current_.info.mergeKey;
    current_.changes.push_back(std::move(change));
}

void ReviewStore::addAll(Changes changes) {
    for (Change& change : changes)
        add(std::move(change));
}

// Fields.

bool ReviewStore::modify(const std::shared_ptr<Movie>& movie, const EditInfo& info,
                         const std::function<void(Movie&)>& edit) {
    if (!movie) return false;
    const Group group(*this, info);
    const Movie before = *movie;
    edit(*movie);
    Changes changes = fields::differences(records_.idOf(movie), before, *movie);
    const bool differs = !changes.empty();
    addAll(std::move(changes));
    return differs;
}

bool ReviewStore::modify(const std::shared_ptr<Movie>& movie, const std::shared_ptr<Bookmark>& bookmark,
                         const EditInfo& info, const std::function<void(Bookmark&)>& edit) {
    if (!bookmark) return false;
    const Group group(*this, info);
    if (movie) records_.idOf(movie); // so that the bookmark is known as this movie's
    const Bookmark before = *bookmark;
    edit(*bookmark);
    Changes changes = fields::differences(records_.idOf(bookmark), before, *bookmark);
    const bool differs = !changes.empty();
    addAll(std::move(changes));
    return differs;
}

bool ReviewStore::modify(const std::shared_ptr<Playlist>& playlist, const EditInfo& info,
                         const std::function<void(Playlist&)>& edit) {
    if (!playlist) return false;
    const Group group(*this, info);
    const Playlist before = fields::withoutItems(*playlist);
    edit(*playlist);
    Changes changes = fields::differences(records_.idOf(playlist), before, *playlist);
    const bool differs = !changes.empty();
    addAll(std::move(changes));
    return differs;
}

bool ReviewStore::setSortOrder(const std::shared_ptr<Movie>& movie, const EditInfo& info, qint64 sortOrder) {
    if (!movie || movie->sortOrder == sortOrder) return false;
    const Group group(*this, info);
    Change change;
    change.record = records_.idOf(movie);
    change.field = QStringLiteral("sortOrder");
    change.before = Value(std::exchange(movie->sortOrder, sortOrder));
    change.after = Value(sortOrder);
    add(std::move(change));
    return true;
}

void ReviewStore::setColourConfiguration(const QString& configuration, const EditInfo& info) {
    if (configuration == records_.colourConfiguration()) return;
    const Group group(*this, info);
    Change change;
    change.record = sessionRecord;
    change.field = fields::colourConfiguration;
    change.before = Value(records_.colourConfiguration());
    change.after = Value(configuration);
    records_.apply(change);
    add(std::move(change));
}

// Lists.

/// Whoever comes into a list is announced whole before: a listener may not have met it, or may have forgotten.
void ReviewStore::announceNewRecords(const Change& change) {
    const RecordIds known = recordIdsOf(change.before);
    const std::unordered_set<RecordId> before(known.begin(), known.end());
    for (const RecordId id : recordIdsOf(change.after)) {
        if (before.contains(id)) continue;
        const auto record = records_.record(id);
        if (!record) continue;
        if (const auto* playlist = dynamic_cast<const Playlist*>(record.get()))
            for (const auto& movie : playlist->movieList)
                add(records_.wholeRecordChange(movie));
        add(records_.wholeRecordChange(record));
    }
}

void ReviewStore::insertPlaylists(qsizetype at, const ReviewRecords::Playlists& playlists,
                                  const EditInfo& info) {
    if (playlists.empty()) return;
    const Group group(*this, info);
    Change change;
    change.record = sessionRecord;
    change.field = fields::playlists;
    change.at = std::clamp<qsizetype>(at, 0, qsizetype(records_.playlists().size()));
    change.before = listOfRecordIds({});
    change.after = listOfRecordIds(idsOf(records_, playlists));
    change.keeps.assign(playlists.begin(), playlists.end());
    announceNewRecords(change);
    records_.apply(change);
    add(std::move(change));
}

void ReviewStore::insertMovies(const std::shared_ptr<Playlist>& playlist, qsizetype at,
                               const std::vector<std::shared_ptr<Movie>>& movies, const EditInfo& info) {
    if (!playlist || movies.empty()) return;
    const Group group(*this, info);
    Change change;
    change.record = records_.idOf(playlist);
    change.field = fields::movieList;
    change.at = std::clamp<qsizetype>(at, 0, qsizetype(playlist->movieList.size()));
    if (!playlist->movieList.isNil) change.before = listOfRecordIds({});
    change.after = listOfRecordIds(idsOf(records_, movies));
    change.keeps.assign(movies.begin(), movies.end());
    announceNewRecords(change);
    records_.apply(change);
    add(std::move(change));
}

template<class List>
bool ReviewStore::setList(RecordId id, const QString& field, List& list, const List& wanted) {
    auto span = spanBetween(idsOf(records_, list), isNilList(list), idsOf(records_, wanted),
                            isNilList(wanted));
    if (!span) return false;
    span->record = id;
    span->field = field;
    for (const Value* part : {&span->before, &span->after})
        for (const RecordId named : recordIdsOf(*part))
            span->keeps.push_back(records_.record(named));
    announceNewRecords(*span);
    records_.apply(*span);
    add(std::move(*span));
    return true;
}

void ReviewStore::setPlaylists(const ReviewRecords::Playlists& playlists, const EditInfo& info) {
    const Group group(*this, info);
    ReviewRecords::Playlists now = records_.playlists();
    setList(sessionRecord, fields::playlists, now, playlists);
}

void ReviewStore::setMovies(const std::shared_ptr<Playlist>& playlist, const ObjectList<Movie>& list,
                            const EditInfo& info) {
    if (!playlist) return;
    const Group group(*this, info);
    setList(records_.idOf(playlist), fields::movieList, playlist->movieList, list);
}

void ReviewStore::setBookmarks(const std::shared_ptr<Movie>& movie, const ObjectList<Bookmark>& list,
                               const EditInfo& info) {
    if (!movie) return;
    const Group group(*this, info);
    setList(records_.idOf(movie), fields::bookmarkStore, movie->bookmarkStore, list);
}

// Again.

void ReviewStore::applyAgain(const Changes& changes, const EditInfo& info) {
    EditInfo again = info;
    again.kind = EditKind::again;
    const Group group(*this, again);
    for (const Change& change : changes) {
        auto here = records_.fitted(change);
        if (!here) continue;
        if (ReviewRecords::isList(here->field)) announceNewRecords(*here);
        records_.apply(*here);
        add(std::move(*here));
    }
}

} // namespace daylark
