#include "app/arrangement/Arrangement.h"

#include "app/arrangement/Columns.h"

#include <utility>

namespace daylark {

Arrangement::Changed Arrangement::show(const Movies& contents) {
    Movies arranged;
    arranged.reserve(contents.size());
    for (const auto& movie : contents)
        if (!filter_ || filter_(*movie)) arranged.push_back(movie);
    sortMoviesByField(arranged, sortField_, sortAscending_);
    Rows rows = rowsElsewhere(movies_, selected_, arranged);
    const Changed changed{arranged != movies_, rows != selected_};
    movies_ = std::move(arranged);
    selected_ = std::move(rows);
    return changed;
}

void Arrangement::setSort(const QString& field, bool ascending) {
    sortField_ = field;
    sortAscending_ = ascending;
}

Arrangement::Movies Arrangement::selectedMovies() const {
    Movies chosen;
    chosen.reserve(selected_.size());
    for (const qsizetype row : selected_)
        chosen.push_back(movies_[size_t(row)]);
    return chosen;
}

bool Arrangement::select(Rows rows) {
    rows = existingRows(std::move(rows), movies_.size());
    if (rows == selected_) return false;
    selected_ = std::move(rows);
    return true;
}

Arrangement::Rows Arrangement::rowsOf(const Movie& movie) const {
    Rows rows;
    for (size_t row = 0; row < movies_.size(); ++row)
        if (movies_[row].get() == &movie) rows.push_back(qsizetype(row));
    return rows;
}

} // namespace daylark
