#include "review/ListChanges.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace daylark {

namespace {

using Count = std::unordered_map<RecordId, qsizetype>;

Count countOf(const RecordIds& ids) {
    Count count;
    for (const RecordId id : ids)
        ++count[id];
    return count;
}

/// Those of `ids` that `others` doesn't hold, as often as it doesn't.
RecordIds without(const RecordIds& ids, Count others) {
    RecordIds rest;
    for (const RecordId id : ids) {
        const auto found = others.find(id);
        if (found != others.end() && found->second > 0)
            --found->second;
        else
            rest.push_back(id);
    }
    return rest;
}

bool standsThere(const RecordIds& list, const Change& change, const RecordIds& before) {
    const auto at = size_t(std::max<qint64>(0, change.at));
    return at + before.size() <= list.size() &&
           std::equal(before.begin(), before.end(), list.begin() + qsizetype(at));
}

/// The places of the records that stay take them in the order of `after`.
void reorder(RecordIds& list, const RecordIds& after, const std::unordered_set<RecordId>& staying) {
    std::vector<size_t> places;
    std::unordered_set<RecordId> present;
    for (size_t place = 0; place < list.size(); ++place)
        if (staying.contains(list[place])) {
            places.push_back(place);
            present.insert(list[place]);
        }
    RecordIds order;
    for (const RecordId id : after)
        if (present.contains(id)) order.push_back(id);
    if (order.size() != places.size()) return; // something stands there more than once
    for (size_t i = 0; i < places.size(); ++i)
        list[places[i]] = order[i];
}

} // namespace

std::optional<Change> spanBetween(const RecordIds& before, bool nilBefore, const RecordIds& after,
                                  bool nilAfter) {
    if (before == after && nilBefore == nilAfter) return std::nullopt;
    const auto [firstBefore, firstAfter] =
        std::mismatch(before.begin(), before.end(), after.begin(), after.end());
    const auto start = firstBefore - before.begin();
    qsizetype tail = 0;
    const qsizetype most = qsizetype(std::min(before.size(), after.size())) - start;
    while (tail < most && before[before.size() - 1 - size_t(tail)] == after[after.size() - 1 - size_t(tail)])
        ++tail;
    Change change;
    change.at = start;
    if (!nilBefore) change.before = listOfRecordIds({firstBefore, before.end() - tail});
    if (!nilAfter) change.after = listOfRecordIds({firstAfter, after.end() - tail});
    return change;
}

RecordIds listAfter(const RecordIds& list, const Change& change) {
    const RecordIds before = recordIdsOf(change.before), after = recordIdsOf(change.after);
    RecordIds result = list;
    const auto at = qsizetype(std::clamp<qint64>(change.at, 0, qint64(list.size())));
    if (standsThere(list, change, before)) {
        result.erase(result.begin() + at, result.begin() + at + qsizetype(before.size()));
        result.insert(result.begin() + at, after.begin(), after.end());
        return result;
    }
    for (const RecordId gone : without(before, countOf(after)))
        if (const auto found = std::find(result.begin(), result.end(), gone); found != result.end())
            result.erase(found);
    const RecordIds coming = without(after, countOf(before));
    const Count comingCount = countOf(coming);
    std::unordered_set<RecordId> staying;
    for (const RecordId id : after)
        if (!comingCount.contains(id)) staying.insert(id);
    reorder(result, after, staying);
    for (size_t i = 0; i < after.size(); ++i) {
        if (!comingCount.contains(after[i])) continue;
        auto place = result.begin() + std::min(at, qsizetype(result.size()));
        if (i > 0)
            if (const auto neighbour = std::find(result.begin(), result.end(), after[i - 1]);
                neighbour != result.end())
                place = neighbour + 1;
        result.insert(place, after[i]);
    }
    return result;
}

} // namespace daylark
