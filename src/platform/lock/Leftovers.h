#pragma once

#include <QString>

namespace daylark {

/// Removes what copies of the program left beside this file that were killed while writing it: its name with six letters
/// more, and ours alone to read. Only under a lock that keeps others from writing it now. Worker threads.
void removeLeftoversOf(const QString& path);

} // namespace daylark
