#include "review/ListChanges.h"

#include <algorithm>
#include <cstdlib>
#include <unordered_map>

namespace daylark {

namespace {

using Count = std::unordered_map<RecordId, qsizetype>;

Count countOf(const RecordIds& ids) {
    Count count;
    for (const RecordId id : ids)
        ++count[id];
    return count;
}

/// Which of `ids` have a partner in `others`; of several equal ones the first.
std::vector<bool> alsoIn(const RecordIds& ids, const RecordIds& others) {
    Count left = countOf(others);
    std::vector<bool> also;
    also.reserve(ids.size());
    for (const RecordId id : ids) {
        const auto found = left.find(id);
        also.push_back(found != left.end() && found->second-- > 0);
    }
    return also;
}

/// A record may stand in a list several times: the place nearest to where it is expected; the end when it has none.
RecordIds::iterator nearest(RecordIds& list, RecordId id, qsizetype expected) {
    auto best = list.end();
    for (auto at = list.begin(); at != list.end(); ++at) {
        const auto distance = [&](auto place) { return std::abs((place - list.begin()) - expected); };
        if (*at == id && (best == list.end() || distance(at) < distance(best))) best = at;
    }
    return best;
}

bool standsThere(const RecordIds& list, const Change& change, const RecordIds& before) {
    const auto at = size_t(std::max<qint64>(0, change.at));
    return at + before.size() <= list.size() &&
           std::equal(before.begin(), before.end(), list.begin() + qsizetype(at));
}

/// The places of the records that stay take them in another order. Of a record that stands there several times it is the
/// place that lies as the span did, as far as one can tell.
void reorder(RecordIds& list, const RecordIds& stood, qsizetype at, const RecordIds& staying) {
    std::unordered_map<RecordId, std::vector<qsizetype>> places;
    for (size_t place = 0; place < list.size(); ++place)
        places[list[place]].push_back(qsizetype(place));
    std::vector<bool> claimed(list.size(), false);
    Count taken;
    qsizetype shift = at;
    for (size_t i = 0; i < stood.size(); ++i) {
        qsizetype best = -1;
        const qsizetype expected = shift + qsizetype(i);
        for (const qsizetype place : places[stood[i]])
            if (!claimed[size_t(place)] && (best < 0 || std::abs(place - expected) < std::abs(best - expected)))
                best = place;
        if (best < 0) continue;
        claimed[size_t(best)] = true;
        ++taken[stood[i]];
        shift = best - qsizetype(i);
    }
    auto next = staying.begin();
    for (size_t place = 0; place < list.size(); ++place) {
        if (!claimed[place]) continue;
        while (taken[*next]-- <= 0) // it stands there less often
            ++next;
        list[place] = *next++;
    }
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
    const std::vector<bool> stayed = alsoIn(before, after), wasThere = alsoIn(after, before);
    for (size_t i = before.size(); i-- > 0;)
        if (!stayed[i])
            if (const auto gone = nearest(result, before[i], at + qsizetype(i)); gone != result.end())
                result.erase(gone);
    RecordIds stood, staying;
    for (size_t i = 0; i < before.size(); ++i)
        if (stayed[i]) stood.push_back(before[i]);
    for (size_t i = 0; i < after.size(); ++i)
        if (wasThere[i]) staying.push_back(after[i]);
    reorder(result, stood, at, staying);
    for (size_t i = 0; i < after.size(); ++i) {
        if (wasThere[i]) continue;
        auto place = result.begin() + std::min(at, qsizetype(result.size()));
        if (i > 0)
            if (const auto neighbour = nearest(result, after[i - 1], at + qsizetype(i) - 1); neighbour != result.end())
                place = neighbour + 1;
        result.insert(place, after[i]);
    }
    return result;
}

} // namespace daylark
