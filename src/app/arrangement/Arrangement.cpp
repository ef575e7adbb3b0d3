#include "app/arrangement/Arrangement.h"

#include "app/arrangement/Columns.h"

#include <utility>

namespace daylark {

Arrangement::Changed Arrangement::show(const Movies& contents, OwnOrder ownOrder) {
    const bool own = sortField_ == QLatin1String("sortOrder") && sortAscending_;
    sorted_ = own && ownOrder == OwnOrder::by_number ? inOwnOrder(contents) : contents;
    if (!own) sortMoviesByField(sorted_, sortField_, sortAscending_);
    return filterAgain();
}

Arrangement::Changed Arrangement::filterAgain() {
    Movies arranged;
    if (filter_) {
        for (const auto& movie : sorted_)
            if (filter_(*movie)) arranged.push_back(movie);
    } else {
        arranged = sorted_;
    }
    if (arranged == movies_) return {};
    Rows rows = rowsElsewhere(movies_, selected_, arranged);
    const Changed changed{true, rows != selected_};
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
