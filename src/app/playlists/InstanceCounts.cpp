#include "app/playlists/InstanceCounts.h"

#include "review/RecordFields.h"

#include <map>

namespace daylark {

InstanceCounts::InstanceCounts(ReviewStore& store, QObject* parent)
    : QObject(parent)
    , store_(store) {
    connect(&store_, &ReviewStore::applied, this, &InstanceCounts::look);
}

void InstanceCounts::look(const Edit& edit) {
    if (edit.info.kind != EditKind::again) return;
    const ReviewRecords& records = store_.records();
    std::map<std::shared_ptr<Movie>, qint32> places;
    const auto concern = [&places](const std::shared_ptr<Movie>& movie) {
        if (movie) places.try_emplace(movie, 0);
    };
    for (const Change& change : edit.changes) {
        if (change.field == QLatin1String("iCount")) concern(records.find<Movie>(change.record));
        if (!ReviewRecords::isList(change.field)) continue;
        for (const Value* list : {&change.before, &change.after})
            for (const RecordId id : recordIdsOf(*list)) {
                concern(records.find<Movie>(id));
                if (const auto playlist = records.find<Playlist>(id))
                    for (const auto& movie : playlist->movieList)
                        concern(movie);
            }
    }
    if (places.empty()) return;
    for (const auto& playlist : store_.playlists())
        for (const auto& movie : playlist->movieList)
            if (const auto concerned = places.find(movie); concerned != places.end()) ++concerned->second;
    for (const auto& [movie, count] : places) {
        if (count == 0 || movie->iCount == count - 1) continue;
        store_.modify(movie, {{}, EditKind::background}, [times = count](Movie& item) {
            item.iCount = times;
            item.removeICount(); // the icon with it
            if (item.iCount > 0 && item.instanceIcon.isNil()) {
                --item.iCount;
                item.addICount();
            }
        });
    }
}

} // namespace daylark
