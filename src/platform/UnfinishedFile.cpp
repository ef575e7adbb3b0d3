#include "platform/UnfinishedFile.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <optional>
#include <utility>

namespace daylark {

namespace {

const QByteArray ending = QByteArrayLiteral(".unfinished");
constexpr qsizetype longestName = 255; ///< bytes of a file name
constexpr int mostNames = 1000;        ///< that many are written to one final name at once, at most

Error systemError(int error = errno) {
    return {qt_error_string(error)};
}

/// Shortened at the end of a character where the name and what is added would be too long.
QByteArray hiddenName(const QByteArray& name, const QByteArray& suffix) {
    qsizetype length = std::min(name.size(), longestName - 1 - suffix.size());
    while (length > 0 && length < name.size() && (quint8(name[length]) & 0xC0U) == 0x80U)
        --length;
    return '.' + name.left(length) + suffix;
}

bool isStillThere(int handle, const QByteArray& path) {
    struct stat opened {}, named {};
    return ::fstat(handle, &opened) == 0 && ::lstat(path.constData(), &named) == 0 && opened.st_dev == named.st_dev &&
           opened.st_ino == named.st_ino;
}

/// A name that nobody writes to: a lock tells a file in work from what a killed program left. Null: try another name.
std::optional<int> takeName(const QByteArray& path) {
    const int handle = ::open(path.constData(), O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0666);
    if (handle < 0) return std::nullopt;
    struct stat info {};
    int error = EWOULDBLOCK; // somebody else's
    if (::fstat(handle, &info) == 0 && S_ISREG(info.st_mode) && info.st_uid == ::geteuid() && info.st_nlink == 1) {
        if (::flock(handle, LOCK_EX | LOCK_NB) != 0)
            error = errno;
        else if (isStillThere(handle, path)) // else it got its final name just now
            error = ::ftruncate(handle, 0) == 0 ? 0 : errno;
    }
    if (error == 0) return handle;
    ::close(handle);
    errno = error;
    return std::nullopt;
}

/// Where there are no locks: a name that nobody has used.
std::optional<int> makeName(const QByteArray& path) {
    const int handle = ::open(path.constData(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666);
    return handle < 0 ? std::nullopt : std::optional(handle);
}

/// A rename that replaces nothing, on file systems that can't do so in one step, too.
int renameToNew(const QByteArray& from, const QByteArray& to) {
    if (::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0) return 0;
    if (errno != EINVAL && errno != ENOSYS) return -1;
    if (::link(from.constData(), to.constData()) == 0) return ::unlink(from.constData());
    if (errno == EEXIST) return -1;
    struct stat info {};
    if (::lstat(to.constData(), &info) == 0) {
        errno = EEXIST;
        return -1;
    }
    return ::rename(from.constData(), to.constData());
}

/// A name for a file that has none.
int linkTo(int handle, const QByteArray& path) {
    const QByteArray opened = "/proc/self/fd/" + QByteArray::number(handle);
    const int linked = ::linkat(AT_FDCWD, opened.constData(), AT_FDCWD, path.constData(), AT_SYMLINK_FOLLOW);
    return linked == 0 || errno != ENOENT ? linked : ::linkat(handle, "", AT_FDCWD, path.constData(), AT_EMPTY_PATH);
}

} // namespace

Result<UnfinishedFile> UnfinishedFile::beside(const QString& finalPath) {
    const QFileInfo file(finalPath);
    const QByteArray target = QFile::encodeName(file.absoluteFilePath());
    const QByteArray folder = QFile::encodeName(file.absolutePath()) + '/';
    const QByteArray name = QFile::encodeName(file.fileName());
    if (name.isEmpty()) return systemError(EINVAL);
    for (int number = 0; number < mostNames; ++number) {
        const QByteArray tail = number == 0 ? ending : '.' + QByteArray::number(number) + ending;
        const QByteArray temporary = folder + hiddenName(name, tail);
        if (const auto handle = takeName(temporary)) return UnfinishedFile(*handle, temporary, target);
        struct stat info {};
        if (errno == EWOULDBLOCK || errno == ELOOP) continue;
        // In a folder where nothing can be made it is the same with every name.
        if (errno == EACCES && ::lstat(temporary.constData(), &info) == 0) continue;
        if (errno != ENOLCK && errno != EOPNOTSUPP && errno != ENOSYS && errno != EINVAL) return systemError();
        const QByteArray unlocked =
            folder + hiddenName(name, '.' + QByteArray::number(qint64(::getpid())) + '-' + QByteArray::number(number) + ending);
        ::unlink(temporary.constData());
        if (const auto handle = makeName(unlocked)) return UnfinishedFile(*handle, unlocked, target);
        if (errno != EEXIST) return systemError();
    }
    return systemError(EEXIST);
}

Result<UnfinishedFile> UnfinishedFile::nameless(const QString& finalPath) {
    const QFileInfo file(finalPath);
    const QByteArray folder = QFile::encodeName(file.absolutePath());
    const int handle = ::open(folder.constData(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0666);
    if (handle < 0) return beside(finalPath); // which says why, if it isn't the file system
    return UnfinishedFile(handle, {}, QFile::encodeName(file.absoluteFilePath()));
}

UnfinishedFile::UnfinishedFile(int handle, QByteArray temporary, QByteArray target)
    : handle_(handle)
    , temporary_(std::move(temporary))
    , final_(std::move(target)) {}

UnfinishedFile::UnfinishedFile(UnfinishedFile&& other) noexcept
    : handle_(std::exchange(other.handle_, -1))
    , temporary_(std::exchange(other.temporary_, {}))
    , final_(std::exchange(other.final_, {}))
    , committed_(other.committed_) {}

UnfinishedFile& UnfinishedFile::operator=(UnfinishedFile&& other) noexcept {
    if (this == &other) return *this;
    discard();
    handle_ = std::exchange(other.handle_, -1);
    temporary_ = std::exchange(other.temporary_, {});
    final_ = std::exchange(other.final_, {});
    committed_ = other.committed_;
    return *this;
}

UnfinishedFile::~UnfinishedFile() {
    discard();
}

void UnfinishedFile::discard() {
    if (handle_ < 0) return;
    if (!temporary_.isEmpty()) ::unlink(temporary_.constData()); // before the lock goes with the handle
    ::close(std::exchange(handle_, -1));
    temporary_.clear();
}

QString UnfinishedFile::path() const {
    return QFile::decodeName(temporary_);
}

QString UnfinishedFile::finalPath() const {
    return QFile::decodeName(final_);
}

Result<void> UnfinishedFile::write(const QByteArray& bytes) {
    for (qsizetype done = 0; done < bytes.size();) {
        const ssize_t count = ::write(handle_, bytes.constData() + done, size_t(bytes.size() - done));
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return systemError();
        done += count;
    }
    return {};
}

Result<void> UnfinishedFile::commit(Existing existing) {
    if (handle_ < 0 || committed_) return systemError(EBADF);
    // A full disk may show only here, where blocks are really given out.
    if (::fsync(handle_) != 0) return systemError();
    if (giveName(existing) != 0) return systemError();
    committed_ = true;
    temporary_.clear();
    syncFolderOf(finalPath());
    return {};
}

/// 0, or errno is set.
int UnfinishedFile::giveName(Existing existing) {
    if (temporary_.isEmpty()) {
        if (linkTo(handle_, final_) == 0) return 0;
        if (errno != EEXIST || existing == Existing::keep) return -1;
        // Only a name can be put in the place of another.
        const qsizetype slash = final_.lastIndexOf('/') + 1;
        const QByteArray suffix = '.' + QByteArray::number(qint64(::getpid())) + '-' + QByteArray::number(handle_) + ending;
        const QByteArray name = final_.left(slash) + hiddenName(final_.mid(slash), suffix);
        if (linkTo(handle_, name) != 0) return -1;
        temporary_ = name;
    }
    return existing == Existing::replace ? ::rename(temporary_.constData(), final_.constData())
                                         : renameToNew(temporary_, final_);
}

void syncFolderOf(const QString& path) {
    const QByteArray folder = QFile::encodeName(QFileInfo(path).absolutePath());
    const int handle = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0) return;
    ::fsync(handle);
    ::close(handle);
}

} // namespace daylark
