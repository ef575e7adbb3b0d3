#include "platform/AtomicFile.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <fcntl.h>
#include <unistd.h>

namespace daylark {

namespace {

Error atomicWriteError(const QString& path, const QString& reason) {
    return {QStringLiteral("could not write %1: %2").arg(path, reason)};
}

/// Makes the rename itself last through a power cut. Not every file system can; the file is whole either way.
void syncFolderOf(const QString& path) {
    const int folder = ::open(QFile::encodeName(QFileInfo(path).absolutePath()).constData(),
                              O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0) return;
    ::fsync(folder);
    ::close(folder);
}

} // namespace

Result<void> writeFileAtomically(const QString& path, const QByteArray& bytes) {
    QSaveFile file(path);
    file.setDirectWriteFallback(false);
    if (!file.open(QIODevice::WriteOnly)) return atomicWriteError(path, file.errorString());
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
