#pragma once

#include "model/Movie.h"

#include <QString>

#include <memory>
#include <vector>

namespace daylark {

/// Sorts items by a field that the library shows, steadily: items that are equal in it stay in the order
/// given. Texts are compared without regard to case; icons by whether they are there; sizes, rates and
/// durations by their numbers. An empty or unknown field leaves the order as it is. Interface thread.
void sortMoviesByField(std::vector<std::shared_ptr<Movie>>& movies, const QString& field, bool ascending);

} // namespace daylark
