/* Preloaded into a program under test: the n-th of its writes, syncs, renames or openings for writing in one folder fails.
 *
 *     FAIL_CALL    write, sync, rename or open
 *     FAIL_ERROR   the number of the error
 *     FAIL_AT      which of them, from 1
 *     FAIL_FOLDER  part of the path
 *     FAIL_MARK    a file that is made when one has failed
 */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <stdarg.h>
#include <stdatomic.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/syscall.h>
#include <sys/types.h>
#include <unistd.h>

static atomic_int seen;

static int fails(const char* call, const char* path) {
    const char* wanted = getenv("FAIL_CALL");
    const char* folder = getenv("FAIL_FOLDER");
    if (!wanted || !folder || strcmp(wanted, call) != 0 || !path || !strstr(path, folder)) return 0;
    if (atomic_fetch_add(&seen, 1) + 1 != atoi(getenv("FAIL_AT"))) return 0;
    const char* mark = getenv("FAIL_MARK");
    if (mark) {
        const int file = (int)syscall(SYS_openat, AT_FDCWD, mark, O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
        if (file >= 0) syscall(SYS_close, file);
    }
    errno = atoi(getenv("FAIL_ERROR"));
    return 1;
}

static int failsOn(const char* call, int file) {
    char link[64], path[4096];
    snprintf(link, sizeof link, "/proc/self/fd/%d", file);
    const ssize_t length = syscall(SYS_readlink, link, path, sizeof path - 1);
    if (length <= 0) return 0;
    path[length] = 0;
    return fails(call, path);
}

#define NEXT(name) __typeof__(&name) next = (__typeof__(&name))dlsym(RTLD_NEXT, #name)

ssize_t write(int file, const void* bytes, size_t size) {
    NEXT(write);
    return failsOn("write", file) ? -1 : next(file, bytes, size);
}
ssize_t pwrite(int file, const void* bytes, size_t size, off_t at) {
    NEXT(pwrite);
    return failsOn("write", file) ? -1 : next(file, bytes, size, at);
}
ssize_t pwrite64(int file, const void* bytes, size_t size, off64_t at) {
    NEXT(pwrite64);
    return failsOn("write", file) ? -1 : next(file, bytes, size, at);
}
int fsync(int file) {
    NEXT(fsync);
    return failsOn("sync", file) ? -1 : next(file);
}
int fdatasync(int file) {
    NEXT(fdatasync);
    return failsOn("sync", file) ? -1 : next(file);
}
int rename(const char* from, const char* to) {
    NEXT(rename);
    return fails("rename", to) ? -1 : next(from, to);
}
int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) {
    NEXT(renameat2);
    return fails("rename", to) ? -1 : next(fromFolder, from, toFolder, to, flags);
}
int linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags) {
    NEXT(linkat);
    return fails("rename", to) ? -1 : next(fromFolder, from, toFolder, to, flags);
}

static mode_t modeOf(int flags, va_list more) {
    return flags & (O_CREAT | __O_TMPFILE) ? (mode_t)va_arg(more, int) : 0;
}
#define OPEN(name)                                                                                                       \
    int name(const char* path, int flags, ...) {                                                                         \
        NEXT(name);                                                                                                      \
        va_list more;                                                                                                    \
        va_start(more, flags);                                                                                           \
        const mode_t mode = modeOf(flags, more);                                                                         \
        va_end(more);                                                                                                    \
        if ((flags & O_ACCMODE) != O_RDONLY && fails("open", path)) return -1;                                           \
        return next(path, flags, mode);                                                                                  \
    }
OPEN(open)
OPEN(open64)
