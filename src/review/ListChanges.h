#pragma once

#include "review/Change.h"

#include <optional>

namespace daylark {

/// How lists of records change, by numbers. Plain functions; any thread.

/// Whether a list is nil, which is told from an empty one; a list of a class without nil never is.
template<class List>
[[nodiscard]] bool isNilList(const List& list) {
    if constexpr (requires { list.isNil; })
        return list.isNil;
    else
        return false;
}

/// A list's numbers; no value for a nil list.
using RecordIds = std::vector<RecordId>;

/// The one span in which two lists differ, as a change without a record; empty when they are equal. A nil list
/// is told from an empty one.
[[nodiscard]] std::optional<Change> spanBetween(const RecordIds& before, bool nilBefore,
                                                const RecordIds& after, bool nilAfter);

/// What `change` gives on a list that may not be the one it was made for: what it takes out goes wherever it
/// stands, what it puts in comes behind its neighbour, what it reorders takes the places that it has.
[[nodiscard]] RecordIds listAfter(const RecordIds& list, const Change& change);

} // namespace daylark
