#include "platform/lock/Leftovers.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>
#include <unistd.h>

namespace daylark {

namespace {

bool isOursAlone(const QString& path) {
    struct stat status {};
    return ::lstat(QFile::encodeName(path).constData(), &status) == 0 && S_ISREG(status.st_mode) &&
           status.st_uid == ::getuid() && (status.st_mode & 0077) == 0;
}

} // namespace

void removeLeftoversOf(const QString& path) {
    const QFileInfo info(path);
    const QDir folder = info.dir();
    const QStringList leftovers =
        folder.entryList({info.fileName() + QStringLiteral(".[A-Za-z][A-Za-z][A-Za-z][A-Za-z][A-Za-z][A-Za-z]")}, QDir::Files);
    for (const QString& leftover : leftovers)
        if (isOursAlone(folder.filePath(leftover))) QFile::remove(folder.filePath(leftover));
}

} // namespace daylark
