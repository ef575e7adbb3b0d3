#include "app/sessions/RecentSessions.h"

#include "preferences/Preferences.h"

namespace daylark {

QStringList recentSessions::paths(const Preferences& preferences) {
    return preferences.recentSessions().split(QLatin1Char('\n'), Qt::SkipEmptyParts).mid(0, most);
}

void recentSessions::note(Preferences& preferences, const QString& path) {
    if (path.isEmpty() || path.contains(QLatin1Char('\n'))) return; // a line each
    QStringList known = paths(preferences);
    if (!known.isEmpty() && known.front() == path) return;
    known.removeAll(path);
    known.prepend(path);
    preferences.recentSessions.set(known.mid(0, most).join(QLatin1Char('\n')));
}

void recentSessions::clear(Preferences& preferences) {
    preferences.recentSessions.reset();
}

} // namespace daylark
