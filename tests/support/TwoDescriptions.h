#pragma once

#include "base/Result.h"

#include <QString>

namespace daylark::truth {

/// Puts the pictures of two mov files (of one codec, size and constant rate) into one track of a third, those of
/// the second behind those of the first; each keeps its own sample description. Headers stand behind the
/// pictures.
[[nodiscard]] Result<void> joinWithTwoDescriptions(const QString& first, const QString& second,
                                                   const QString& joined);

} // namespace daylark::truth
