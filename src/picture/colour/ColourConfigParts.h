#pragma once

#include "base/Result.h"
#include "picture/colour/ColourLibrary.h"

#include <QStringList>

namespace daylark {

/// Goes through every space, view, look and named transform of a configuration that may be a stranger's, before the library puts
/// any of them together: which files of tables they name, as far as these are there. An error where parts refer to themselves,
/// directly or by others, or to so many others that putting them together would take no end: the library would follow them until
/// nothing is left of the stack. Internal to picture/colour.
[[nodiscard]] Result<QStringList> tableFilesOfParts(const ocio::Config& config);

} // namespace daylark
