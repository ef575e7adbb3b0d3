#include "viewer/review/ViewerList.h"

#include "model/MoveRule.h"
#include "model/StatusCodes.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace daylark {

namespace {

bool isPassedOver(const Movie& movie) {
    return movie.creatingThumbnailText == fileNotFoundText ||
           movie.flagString == QString::number(status::skip);
}

} // namespace

void ViewerList::setMovies(Movies movies, qsizetype selectionIndex) {
    const std::shared_ptr<Movie> before = selectedMovie();
    movies_ = std::move(movies);
    selection_ = movies_.empty() ? -1 : std::clamp<qsizetype>(selectionIndex, 0, count() - 1);
    rows_ = existingRows({selection_}, movies_.size());
    Q_EMIT moviesChanged();
    if (selectedMovie() != before) Q_EMIT selectionChanged(selection_);
    Q_EMIT selectedMoviesChanged();
}

bool ViewerList::follow(Movies movies) {
    const Rows shown = rowsElsewhere(movies_, existingRows({selection_}, movies_.size()), movies);
    if (shown.empty()) return false;
    rows_ = rowsElsewhere(movies_, rows_, movies);
    selection_ = shown.front();
    movies_ = std::move(movies);
    Q_EMIT moviesChanged();
    Q_EMIT selectedMoviesChanged();
    return true;
}

void ViewerList::setSelectionIndex(qsizetype index) {
    setSelectionIndexes({index});
}

void ViewerList::setSelectionIndexes(Rows rows) {
    rows = existingRows(std::move(rows), movies_.size());
    if (rows.empty() || rows == rows_) return;
    const bool other = rows.front() != selection_;
    selection_ = rows.front();
    rows_ = std::move(rows);
    if (other) Q_EMIT selectionChanged(selection_);
    Q_EMIT selectedMoviesChanged();
}

void ViewerList::moveMovies(const Rows& rows, qsizetype dropRow) {
    Rows order(movies_.size()); // what stood where
    std::iota(order.begin(), order.end(), 0);
    moveRows(order, existingRows(rows, movies_.size()), dropRow);
    if (std::is_sorted(order.begin(), order.end())) return;
    const Rows selectedBefore = std::exchange(rows_, {});
    const qsizetype shownBefore = selection_;
    Movies moved;
    moved.reserve(movies_.size());
    for (qsizetype row = 0; row < count(); ++row) {
        const qsizetype from = order[size_t(row)];
        moved.push_back(movies_[size_t(from)]);
        if (from == shownBefore) selection_ = row;
        if (std::binary_search(selectedBefore.begin(), selectedBefore.end(), from)) rows_.push_back(row);
    }
    movies_ = std::move(moved);
    Q_EMIT moviesChanged();
    Q_EMIT reordered();
}

std::shared_ptr<Movie> ViewerList::selectedMovie() const {
    return selection_ >= 0 && selection_ < count() ? movies_[size_t(selection_)] : nullptr;
}

ViewerList::Movies ViewerList::selectedMovies() const {
    Movies selected;
    selected.reserve(rows_.size());
    for (const qsizetype row : rows_)
        selected.push_back(movies_[size_t(row)]);
    return selected;
}

qsizetype ViewerList::findNextMovie() const {
    for (qsizetype at = selection_ + 1; at < count(); ++at)
        if (!isPassedOver(*movies_[size_t(at)])) return at;
    return -1;
}

qsizetype ViewerList::findPreviousMovie() const {
    for (qsizetype at = selection_ - 1; at >= 0; --at)
        if (!isPassedOver(*movies_[size_t(at)])) return at;
    return -1;
}

} // namespace daylark
