#include "platform/AtomicFile.h"

#include "platform/UnfinishedFile.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace daylark {

namespace {

Error atomicWriteError(const QString& path, const QString& reason) {
    return {QStringLiteral("could not write %1: %2").arg(path, reason)};
}

} // namespace

bool makePrivateFolder(const QString& path) {
    const QFileInfo folder(path);
    if (folder.isDir()) return true;
    const QString above = folder.absolutePath();
    if (above == folder.absoluteFilePath() || !makePrivateFolder(above)) return false;
    return ::mkdir(QFile::encodeName(folder.absoluteFilePath()).constData(), 0700) == 0 || QFileInfo(path).isDir();
}

Result<void> writeFileAtomically(const QString& path, const QByteArray& bytes, Readers readers) {
    // A device would be replaced by a file, and a pipe would never take it all.
    if (const QFileInfo info(path); info.exists() && !info.isFile())
        return atomicWriteError(path, QStringLiteral("it is no file"));
    QSaveFile file(path);
    file.setDirectWriteFallback(false);
    if (!file.open(QIODevice::WriteOnly)) return atomicWriteError(path, file.errorString());
    // Before the first byte is in it.
    if (readers == Readers::owner) file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    if (file.write(bytes) != bytes.size() || !file.flush()) {
        const QString reason = file.errorString();
        file.cancelWriting();
        return atomicWriteError(path, reason);
    }
    // A full disk may show only here, where blocks are really given out.
    if (::fsync(file.handle()) != 0) {
        const QString reason = qt_error_string();
        file.cancelWriting();
        return atomicWriteError(path, reason);
    }
    if (!file.commit()) return atomicWriteError(path, file.errorString());
    syncFolderOf(path);
    return {};
}

} // namespace daylark
