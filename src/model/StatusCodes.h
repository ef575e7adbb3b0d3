#pragma once

#include <QString>
#include <QStringList>

namespace daylark {

/// The review status of a movie: a code that sessions store ("900" none, "901" to "907"), shown by a name that the user may
/// change (the preference whose key is the code).
namespace status {
inline constexpr int none = 900, approved = 901, tempApproved = 902, cbbApproved = 903, notApproved = 904,
                     sendToEditorial = 905, forReview = 906, skip = 907;
[[nodiscard]] QStringList codes(); ///< "901" to "907", in order
/// The flag image's name of a code; empty for 900 and unknown codes.
[[nodiscard]] QString flagImageName(const QString& code);
} // namespace status

} // namespace daylark
