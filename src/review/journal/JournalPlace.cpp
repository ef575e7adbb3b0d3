#include "review/journal/JournalPlace.h"

#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cstdio>

namespace daylark {

namespace {

constexpr int mostPlaces = 16; // copies that run at the same time

QString journalPathOf(const QString& sessionPath, int number) {
    const QFileInfo session(sessionPath);
    const QString base = session.path() + u'/' + session.completeBaseName() + QStringLiteral(".journal");
    return number == 1 ? base : base + u'-' + QString::number(number);
}

/// The file, locked for this process; -1 when another one holds it or it cannot be made.
int lockedFile(const QString& path) {
    const int file = ::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (file >= 0 && ::flock(file, LOCK_EX | LOCK_NB) == 0) return file;
    if (file >= 0) ::close(file);
    return -1;
}

} // namespace

std::vector<JournalPlace> JournalPlace::claim(const QString& sessionPath) {
    std::vector<JournalPlace> places;
    for (int number = 1; number <= mostPlaces; ++number) {
        const QString path = journalPathOf(sessionPath, number);
        if (!places.empty() && !QFileInfo::exists(path)) continue;
        if (const int lock = lockedFile(path + QStringLiteral(".lock")); lock >= 0)
            places.push_back(JournalPlace(path, lock));
    }
    return places;
}

JournalPlace::~JournalPlace() {
    if (lock_ >= 0) ::close(lock_); // unlocks
}

void JournalPlace::keepBase(const QString& sessionPath) const {
    const QByteArray session = QFile::encodeName(sessionPath), base = QFile::encodeName(basePath()),
                     fresh = base + ".new";
    ::unlink(fresh.constData());
    if (::link(session.constData(), fresh.constData()) == 0)
        static_cast<void>(std::rename(fresh.constData(), base.constData()));
    else
        ::unlink(base.constData()); // an older one would be taken for it
    ::unlink(fresh.constData()); // renaming one name of a file over another of the same does nothing
}

void JournalPlace::removeFiles() const {
    QFile::remove(journalPath_);
    QFile::remove(basePath());
}

} // namespace daylark
