#pragma once

#include "model/Movie.h"

#include <memory>
#include <vector>

namespace daylark {

using ItemRows = std::vector<qsizetype>; ///< ascending, from 0
using ItemList = std::vector<std::shared_ptr<Movie>>;

/// Ascending, each once, only those that a list of that size has.
[[nodiscard]] ItemRows existingRows(ItemRows rows, size_t size);

/// The rows at which the same items stand in another list: where a record stands several times, its n-th
/// place there is the n-th place here, and its last where it stands less often. Items that are gone have
/// none. Any thread.
[[nodiscard]] ItemRows rowsElsewhere(const ItemList& from, const ItemRows& rows, const ItemList& to);

/// A playlist's items in its own order: by "sortOrder". A number cannot tell the places of a record that stands there
/// several times apart: where all others stand in the order of their numbers, the list as it is says where they are.
[[nodiscard]] ItemList inOwnOrder(ItemList items);

} // namespace daylark
