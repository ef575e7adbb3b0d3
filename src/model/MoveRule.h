#pragma once

#include <QtGlobal>

#include <algorithm>
#include <utility>
#include <vector>

namespace daylark {

/// The order that a drag of rows onto a gap between rows gives. Rows are walked from the highest to the
/// lowest; what stands above the gap moves the gap up, what stands below is found further down by as many as
/// were already taken from there. `rows` ascend; rows that don't exist are left out; `dropRow` is the row
/// that the gap stands before.
///
///     rows 1 and 3 of 0 1 2 3 4 onto row 0:   1 3 0 2 4
template<class T>
void moveRows(std::vector<T>& list, const std::vector<qsizetype>& rows, qsizetype dropRow) {
    const qsizetype size = qsizetype(list.size());
    qsizetype gap = std::clamp<qsizetype>(dropRow, 0, size);
    qsizetype takenBelow = 0;
    for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
        if (*row < 0 || *row >= size) continue;
        const qsizetype from = *row < gap ? *row : *row + takenBelow;
        if (*row < gap)
            --gap;
        else
            ++takenBelow;
        T element = std::move(list[size_t(from)]);
        list.erase(list.begin() + from);
        list.insert(list.begin() + gap, std::move(element));
    }
}

} // namespace daylark
