#include "platform/lock/OwnerLock.h"

#include <QFile>
#include <QSysInfo>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>

namespace daylark {

namespace {

constexpr qint64 longest = 4096; // bytes of such a file

QByteArray contentOf(const QByteArray& path) {
    struct stat status {};
    if (::lstat(path.constData(), &status) != 0 || !S_ISREG(status.st_mode)) return {};
    QFile file(QFile::decodeName(path));
    return file.open(QIODevice::ReadOnly) ? file.read(longest) : QByteArray();
}

/// When a process began, in ticks since the machine did; empty when it is none of those that run.
QByteArray beginOf(qint64 process) {
    QFile file(QStringLiteral("/proc/%1/stat").arg(process));
    if (!file.open(QIODevice::ReadOnly)) return {};
    const QByteArray all = file.read(longest);
    // The second field is a name in brackets that may hold anything.
    return all.mid(all.lastIndexOf(')') + 2).split(' ').value(19);
}

QByteArray bootOf() {
    QFile file(QStringLiteral("/proc/sys/kernel/random/boot_id"));
    return file.open(QIODevice::ReadOnly) ? file.read(longest).trimmed() : QByteArray();
}

/// host, boot, process, begin: a line each.
QByteArray ourselves() {
    const qint64 process = ::getpid();
    return QSysInfo::machineHostName().toUtf8() + '\n' + bootOf() + '\n' + QByteArray::number(process) + '\n' +
           beginOf(process) + '\n';
}

bool isDead(const QByteArray& owner) {
    const QList<QByteArray> lines = owner.split('\n');
    if (lines.size() < 4) return true; // cut off: its writer was killed
    if (lines[0] != QSysInfo::machineHostName().toUtf8()) return false;
    return lines[1] != bootOf() || beginOf(lines[2].toLongLong()) != lines[3];
}

/// Puts our name there whole, and only where no name stands.
bool nameOurselves(const QByteArray& path) {
    const QByteArray fresh = path + '.' + QByteArray::number(::getpid());
    const int file = ::open(fresh.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (file < 0) return false;
    const QByteArray us = ourselves();
    const bool written = ::write(file, us.constData(), size_t(us.size())) == us.size();
    ::close(file);
    const bool named = written && ::link(fresh.constData(), path.constData()) == 0;
    ::unlink(fresh.constData());
    return named;
}

} // namespace

OwnerLock::Taken OwnerLock::take(const QString& path) {
    const QByteArray name = QFile::encodeName(path);
    for (int attempt = 0; attempt < 3; ++attempt) {
        if (nameOurselves(name)) return {OwnerLock(path), {}};
        const QByteArray owner = contentOf(name);
        if (!QFile::exists(path)) {
            if (attempt > 0) break; // no file can be made here
            continue;
        }
        if (!isDead(owner)) return {std::nullopt, QString::fromUtf8(owner.split('\n').value(0))};
        // Moved away before it is removed: of two that find it dead one gets it.
        const QByteArray dead = name + ".dead." + QByteArray::number(::getpid());
        if (std::rename(name.constData(), dead.constData()) != 0) continue;
        const bool wasIt = contentOf(dead) == owner;
        if (!wasIt) static_cast<void>(::link(dead.constData(), name.constData())); // somebody took it in between
        ::unlink(dead.constData());
    }
    return {};
}

OwnerLock::~OwnerLock() {
    if (!path_.isEmpty() && contentOf(QFile::encodeName(path_)) == ourselves()) QFile::remove(path_);
}

} // namespace daylark
