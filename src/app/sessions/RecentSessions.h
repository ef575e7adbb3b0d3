#pragma once

#include <QStringList>

namespace daylark {

class Preferences;

/// The session files that were used last, the newest first, as a preference keeps them. Files are not looked at: one that is
/// gone is told of when it is asked for. Interface thread.
namespace recentSessions {
inline constexpr qsizetype most = 10;

[[nodiscard]] QStringList paths(const Preferences& preferences);
void note(Preferences& preferences, const QString& path); ///< it is the newest now
void clear(Preferences& preferences);
} // namespace recentSessions

} // namespace daylark
