#include "platform/FileCopy.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <vector>

namespace daylark {

namespace {

constexpr size_t kernelPiece = 16 << 20; ///< between two looks at the cancel flag
constexpr size_t readPiece = 1 << 20;
const QString changedMeanwhile = QStringLiteral("The file changed while it was copied");

class Handle {
public:
    explicit Handle(int handle)
        : handle_(handle) {}
    ~Handle() {
        if (handle_ >= 0) ::close(handle_);
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    operator int() const { return handle_; }

private:
    int handle_;
};

enum class Progress { done, cancelled, failed, differs };

/// Moves the bytes of one open file into another, empty one.
class ContentCopy {
public:
    ContentCopy(int from, int to, FilePart part, const CopyWatch& watch)
        : from_(from)
        , to_(to)
        , begin_(off_t(part.offset))
        , size_(off_t(part.length))
        , watch_(watch) {}

    /// Errors are left in errno.
    Progress run(bool wholeFile) {
        if (wholeFile && size_ > 0 && ::ioctl(to_, FICLONE, from_) == 0) {
            report(size_);
            return Progress::done;
        }
        ::posix_fadvise(from_, 0, 0, POSIX_FADV_SEQUENTIAL);
        for (off_t at = 0; at < size_;) {
            const Extent extent = dataFrom(at);
            for (at = extent.begin; at < extent.end;) {
                if (watch_.cancelled && *watch_.cancelled) return Progress::cancelled;
                const ssize_t count = copyPiece(at, size_t(extent.end - at));
                if (count < 0) return Progress::failed;
                if (count == 0) return Progress::differs; // it became shorter
                // Begun now, so that the sync at the end finds little left to do.
                ::sync_file_range(to_, at, count, SYNC_FILE_RANGE_WRITE);
                at += count;
                report(at);
            }
        }
        // A hole at the end is length only.
        if (::ftruncate(to_, size_) != 0) return Progress::failed;
        report(size_);
        return Progress::done;
    }

private:
    struct Extent {
        off_t begin = 0, end = 0;
    };

    void report(qint64 bytes) const {
        if (watch_.progress) watch_.progress(bytes);
    }

    /// The next run of data, counted as in the copy; where nothing tells of holes, all of the rest.
    Extent dataFrom(off_t at) const {
        const off_t begin = ::lseek(from_, begin_ + at, SEEK_DATA);
        if (begin < 0) return errno == ENXIO ? Extent{size_, size_} : Extent{at, size_};
        const off_t end = ::lseek(from_, begin, SEEK_HOLE);
        return {std::min(begin - begin_, size_), end < 0 ? size_ : std::min(end - begin_, size_)};
    }

    ssize_t copyPiece(off_t at, size_t length) {
        while (byKernel_) {
            off_t in = begin_ + at, out = at;
            const ssize_t count = ::copy_file_range(from_, &in, to_, &out, std::min(length, kernelPiece), 0);
            if (count > 0) return count;
            if (count < 0 && errno == EINTR) continue;
            if (count < 0 && (errno == ENOSPC || errno == EDQUOT || errno == EFBIG || errno == EIO)) return -1;
            byKernel_ = false; // not between these two, or a file system that says 0 of what it can't
        }
        buffer_.resize(readPiece);
        const ssize_t count = again([&] { return ::pread(from_, buffer_.data(), std::min(length, readPiece), begin_ + at); });
        for (ssize_t done = 0; done < count;) {
            const ssize_t written =
                again([&] { return ::pwrite(to_, buffer_.data() + done, size_t(count - done), at + done); });
            if (written < 0) return -1;
            done += written;
        }
        return count;
    }

    template<class Call>
    static ssize_t again(Call call) {
        ssize_t count = call();
        while (count < 0 && errno == EINTR)
            count = call();
        return count;
    }

    int from_, to_;
    off_t begin_, size_;
    const CopyWatch& watch_;
    bool byKernel_ = true;
    std::vector<char> buffer_;
};

CopyOutcome ended(CopyOutcome::End end, const QString& reason = {}) {
    return {end, 0, reason};
}

CopyOutcome failed(int error = errno) {
    return ended(error == EEXIST ? CopyOutcome::End::destination_exists : CopyOutcome::End::failed, qt_error_string(error));
}

bool isSameState(const struct stat& before, const struct stat& after) {
    return before.st_size == after.st_size && before.st_mtim.tv_sec == after.st_mtim.tv_sec &&
           before.st_mtim.tv_nsec == after.st_mtim.tv_nsec;
}

/// What the file system of the copy knows of them; others go on without.
void keepTimesAndPermissions(int to, const struct stat& source) {
    static_cast<void>(::fchmod(to, source.st_mode & 0777U));
    const timespec times[2] = {source.st_atim, source.st_mtim};
    static_cast<void>(::futimens(to, times));
}

/// `part`: null for the whole file.
CopyOutcome copy(const QString& from, const FilePart* part, const QString& to, UnfinishedFile::Existing existing,
                 const CopyWatch& watch) {
    using End = CopyOutcome::End;
    if (watch.cancelled && *watch.cancelled) return ended(End::cancelled);
    // What is no file (a pipe, a device) must not make us wait for somebody at its other end.
    const Handle source(::open(QFile::encodeName(from).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (source < 0)
        return errno == ENOENT || errno == ENOTDIR ? ended(End::source_missing, qt_error_string(errno)) : failed();
    struct stat before {}, after {}, there {};
    if (::fstat(source, &before) != 0) return failed();
    if (!S_ISREG(before.st_mode)) return failed(S_ISDIR(before.st_mode) ? EISDIR : EINVAL);
    const FilePart wanted = part ? *part : FilePart{0, before.st_size};
    if (wanted.offset < 0 || wanted.length < 0 || wanted.offset > before.st_size - wanted.length) return failed(EINVAL);
    if (existing == UnfinishedFile::Existing::keep && ::lstat(QFile::encodeName(to).constData(), &there) == 0)
        return failed(EEXIST);
    Result<UnfinishedFile> made = UnfinishedFile::nameless(to);
    if (!made) return ended(End::failed, made.error().text);
    switch (ContentCopy(source, made->handle(), wanted, watch).run(!part)) {
    case Progress::cancelled: return ended(End::cancelled);
    case Progress::failed: return failed();
    case Progress::differs: return ended(End::failed, changedMeanwhile);
    case Progress::done: break;
    }
    if (::fstat(source, &after) != 0 || !isSameState(before, after)) return ended(End::failed, changedMeanwhile);
    keepTimesAndPermissions(made->handle(), before);
    const Result<void> finished = made->commit(existing);
    if (finished) return {End::copied, wanted.length, {}};
    const bool exists = existing == UnfinishedFile::Existing::keep && ::lstat(QFile::encodeName(to).constData(), &there) == 0;
    return ended(exists ? End::destination_exists : End::failed, finished.error().text);
}

} // namespace

CopyOutcome copyFile(const QString& from, const QString& to, UnfinishedFile::Existing existing, const CopyWatch& watch) {
    return copy(from, nullptr, to, existing, watch);
}

CopyOutcome copyPartOfFile(const QString& from, FilePart part, const QString& to, UnfinishedFile::Existing existing,
                           const CopyWatch& watch) {
    return copy(from, &part, to, existing, watch);
}

} // namespace daylark
