#include "viewer/CurrentMovie.h"

namespace daylark {

void CurrentMovie::set(const std::shared_ptr<Movie>& movie) {
    movie_ = movie;
    state_ = movie ? State::opening : State::none;
    Q_EMIT changed();
}

} // namespace daylark
