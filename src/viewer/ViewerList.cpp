#include "viewer/ViewerList.h"

#include "model/StatusCodes.h"

#include <algorithm>

namespace daylark {

namespace {

bool isPassedOver(const Movie& movie) {
    return movie.creatingThumbnailText == fileNotFoundText ||
           movie.flagString == QString::number(status::skip);
}

} // namespace

void ViewerList::setMovies(std::vector<std::shared_ptr<Movie>> movies, qsizetype selectionIndex) {
    const std::shared_ptr<Movie> before = selectedMovie();
    movies_ = std::move(movies);
    selection_ = movies_.empty() ? -1 : std::clamp<qsizetype>(selectionIndex, 0, count() - 1);
    Q_EMIT moviesChanged();
    if (selectedMovie() != before) Q_EMIT selectionChanged(selection_);
}

void ViewerList::setSelectionIndex(qsizetype index) {
    if (index < 0 || index >= count() || index == selection_) return;
    selection_ = index;
    Q_EMIT selectionChanged(index);
}

std::shared_ptr<Movie> ViewerList::selectedMovie() const {
    return selection_ >= 0 && selection_ < count() ? movies_[size_t(selection_)] : nullptr;
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
