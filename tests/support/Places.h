#pragma once

#include <QString>

namespace daylark {

/// Where the tests find what was not made by themselves: the checkout, the built programs, and the folders of files made
/// elsewhere, which may not exist.
[[nodiscard]] QString sourceFolder();
[[nodiscard]] QString programFolder();
[[nodiscard]] QString foreignArchiveFolder();
[[nodiscard]] QString foreignTimecodeFolder();

} // namespace daylark
