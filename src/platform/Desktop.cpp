#include "platform/Desktop.h"

#include "platform/AtomicFile.h"

#include <QFile>
#include <QStandardPaths>

#include <pwd.h>
#include <sys/stat.h>
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

/// As the session gave it, not a stand-in in a folder that others write to.
QString trustedRuntimeFolder() {
    const QByteArray path = qgetenv("XDG_RUNTIME_DIR");
    struct stat status {};
    const bool isOurs = path.startsWith('/') && ::stat(path.constData(), &status) == 0 && S_ISDIR(status.st_mode) &&
                        status.st_uid == ::getuid() && (status.st_mode & 0077) == 0;
    return isOurs ? QFile::decodeName(path) : QString();
}

} // namespace

SystemPlaces SystemPlaces::current() {
    SystemPlaces places;
    places.loginName = loginNameOfUser();
    const QString dataFolder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    places.applicationSupport = dataFolder + QStringLiteral("/Daylark");
    makePrivateFolder(places.applicationSupport);
    const QString cacheFolder = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
    if (!cacheFolder.isEmpty()) places.cache = cacheFolder + QStringLiteral("/Daylark");
    places.runtime = trustedRuntimeFolder();
    return places;
}

} // namespace daylark
