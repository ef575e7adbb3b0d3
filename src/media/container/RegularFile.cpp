#include "media/container/RegularFile.h"

#include "base/jobs/Patience.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace daylark {

namespace {

/// The first byte too: a share may know its names by heart and still not answer.
Result<RegularFile> lookAt(const QByteArray& path) {
    struct stat status {};
    if (path.contains('\0') || ::stat(path.constData(), &status) != 0) return Error{QStringLiteral("no such file")};
    if (!S_ISREG(status.st_mode)) return Error{QStringLiteral("not a file")};
    if (status.st_size == 0) return Error{QStringLiteral("the file is empty")};
    // Should a pipe have come in its place meanwhile, opening it waits for nobody.
    const int file = ::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (file < 0) return Error{QStringLiteral("opening: %1").arg(qt_error_string())};
    char first = 0;
    const bool isReadable = ::pread(file, &first, 1, 0) == 1;
    const int reason = errno;
    ::close(file);
    if (!isReadable) return Error{QStringLiteral("reading: %1").arg(qt_error_string(reason))};
    const auto& time = status.st_mtim;
    return RegularFile{qint64(status.st_size), qint64(time.tv_sec) * 1000 + time.tv_nsec / 1'000'000};
}

} // namespace

Result<RegularFile> RegularFile::at(const QString& path, const CancelFlag* cancel) {
    auto answer = askWithPatience<Result<RegularFile>>([name = QFile::encodeName(path)] { return lookAt(name); },
                                                       fileSystemPatience, cancel);
    if (answer) return *std::move(answer);
    if (cancel && cancel->load()) return Error{QStringLiteral("cancelled")};
    return Error{QStringLiteral("the disk or share does not answer")};
}

} // namespace daylark
