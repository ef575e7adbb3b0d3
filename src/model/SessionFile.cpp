// Sessions on the disk.
#include "model/Session.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace daylark {

Result<SessionContents> readSessionFile(const QString& path) {
    if (!QFileInfo(path).isFile()) // a pipe would never end
        return Error{QStringLiteral("%1 is no file").arg(path)};
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return Error{QStringLiteral("could not read %1: %2").arg(path, file.errorString())};
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return Error{QStringLiteral("could not read %1: %2").arg(path, file.errorString())};
    Result<SessionContents> contents = decodeSession(bytes);
    if (!contents) return Error{QStringLiteral("%1 is no session: %2").arg(path, contents.error().text)};
    return contents;
}

Result<void> writeSessionFile(const QString& path, const QByteArray& bytes, Readers readers) {
    if (bytes.isEmpty()) return Error{QStringLiteral("nothing to write to %1").arg(path)};
    return writeFileAtomically(path, bytes, readers);
}

Result<QString> setFileAside(const QString& path) {
    const QFileInfo info(path);
    const QString stamp = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH.mm.ss"));
    const QString suffix = info.suffix().isEmpty() ? QString() : u'.' + info.suffix();
    const QString base = info.suffix().isEmpty() ? info.fileName() : info.completeBaseName();
    constexpr int mostTries = 100; // several within one second
    for (int number = 1; number <= mostTries; ++number) {
        const QString again = number == 1 ? QString() : QStringLiteral(" %1").arg(number);
        const QString name = QStringLiteral("%1 (unreadable %2)%3%4").arg(base, stamp, again, suffix);
        const QString aside = info.dir().filePath(name);
        if (QFileInfo::exists(aside)) continue;
        QFile file(path);
        if (file.rename(aside)) // never over another file
            return aside;
        return Error{QStringLiteral("could not set %1 aside: %2").arg(path, file.errorString())};
    }
    return Error{QStringLiteral("could not set %1 aside").arg(path)};
}

} // namespace daylark
