#pragma once

#include "base/Result.h"
#include "model/Grade.h"

#include <QString>

namespace daylark::tool {

/// A grade as commands take it: "exposure=1,gamma=2", by the records' names of the eight numbers; what is
/// left out is neutral, and so is an empty text. Errors: a name that is none, a number that cannot be read.
[[nodiscard]] Result<Grade> gradeArgument(const QString& text);

} // namespace daylark::tool
