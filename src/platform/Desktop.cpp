#include "platform/Desktop.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <pwd.h>
#include <unistd.h>

#include <vector>

namespace daylark {

namespace {

QString loginNameOfUser() {
    std::vector<char> buffer(16384);
    passwd entry{};
    passwd* found = nullptr;
    if (getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found) == 0 && found)
        return QFile::decodeName(found->pw_name);
    // A container may run a user that has no entry: the number still tells users apart.
    return QString::number(getuid());
}

} // namespace

SystemPlaces SystemPlaces::current() {
    SystemPlaces places;
    places.loginName = loginNameOfUser();
    const QString dataFolder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    places.applicationSupport = dataFolder + QStringLiteral("/Daylark");
    QDir().mkpath(places.applicationSupport);
    const QString cacheFolder = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
    if (!cacheFolder.isEmpty()) places.cache = cacheFolder + QStringLiteral("/Daylark");
    return places;
}

} // namespace daylark
