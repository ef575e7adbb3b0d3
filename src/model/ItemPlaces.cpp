#include "model/ItemPlaces.h"

#include <algorithm>
#include <unordered_map>

namespace daylark {

namespace {

using Places = std::unordered_map<const Movie*, ItemRows>;

Places placesOf(const ItemList& items) {
    Places places;
    places.reserve(items.size());
    for (size_t row = 0; row < items.size(); ++row)
        places[items[row].get()].push_back(qsizetype(row));
    return places;
}

bool standsInOrderWithRepeats(const ItemList& list) {
    std::unordered_map<const Movie*, int> times;
    times.reserve(list.size());
    bool repeats = false;
    for (const auto& movie : list)
        repeats |= ++times[movie.get()] > 1;
    if (!repeats) return false;
    const Movie* before = nullptr;
    for (const auto& movie : list) {
        if (times[movie.get()] > 1) continue;
        if (before && before->sortOrder > movie->sortOrder) return false;
        before = movie.get();
    }
    return true;
}

} // namespace

ItemList inOwnOrder(ItemList items) {
    const auto byNumber = [](const auto& a, const auto& b) { return a->sortOrder < b->sortOrder; };
    if (!std::is_sorted(items.begin(), items.end(), byNumber) && !standsInOrderWithRepeats(items))
        std::stable_sort(items.begin(), items.end(), byNumber);
    return items;
}

ItemRows existingRows(ItemRows rows, size_t size) {
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    std::erase_if(rows, [size](qsizetype row) { return row < 0 || size_t(row) >= size; });
    return rows;
}

ItemRows rowsElsewhere(const ItemList& from, const ItemRows& rows, const ItemList& to) {
    if (rows.empty()) return {};
    const Places before = placesOf(from), after = placesOf(to);
    ItemRows found;
    for (const qsizetype row : rows) {
        const Movie* movie = from[size_t(row)].get();
        const auto now = after.find(movie);
        if (now == after.end()) continue;
        const ItemRows& were = before.at(movie);
        const auto which = size_t(std::lower_bound(were.begin(), were.end(), row) - were.begin());
        found.push_back(now->second[std::min(which, now->second.size() - 1)]);
    }
    return existingRows(std::move(found), to.size());
}

} // namespace daylark
