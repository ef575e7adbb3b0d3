/* Preloaded into a program under test: whoever asks the system about a path that holds STUCK_FOLDER never hears of it again, as
 * with a share whose server is gone. STUCK_MARK: a file that is made when somebody has asked.
 */
#define _GNU_SOURCE
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <stdarg.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/types.h>
#include <unistd.h>

static void ask(const char* path) {
    const char* folder = getenv("STUCK_FOLDER");
    if (!folder || !path || !strstr(path, folder)) return;
    const char* mark = getenv("STUCK_MARK");
    const int file = mark ? (int)syscall(SYS_openat, AT_FDCWD, mark, O_CREAT | O_WRONLY | O_CLOEXEC, 0600) : -1;
    if (file >= 0) syscall(SYS_close, file);
    for (;;)
        pause();
}

#define NEXT(name) __typeof__(&name) next = (__typeof__(&name))dlsym(RTLD_NEXT, #name)
#define ASKED(type, name, parameters, arguments)                                                                         \
    type name parameters {                                                                                               \
        NEXT(name);                                                                                                      \
        ask(path);                                                                                                       \
        return next arguments;                                                                                           \
    }

ASKED(int, stat, (const char* path, struct stat* found), (path, found))
ASKED(int, lstat, (const char* path, struct stat* found), (path, found))
ASKED(int, stat64, (const char* path, struct stat64* found), (path, found))
ASKED(int, lstat64, (const char* path, struct stat64* found), (path, found))
ASKED(int, fstatat, (int folder, const char* path, struct stat* found, int flags), (folder, path, found, flags))
ASKED(int, fstatat64, (int folder, const char* path, struct stat64* found, int flags), (folder, path, found, flags))
ASKED(int, statx, (int folder, const char* path, int flags, unsigned mask, struct statx* found),
      (folder, path, flags, mask, found))
ASKED(int, access, (const char* path, int mode), (path, mode))
ASKED(int, faccessat, (int folder, const char* path, int mode, int flags), (folder, path, mode, flags))
ASKED(ssize_t, readlink, (const char* path, char* target, size_t size), (path, target, size))
ASKED(char*, realpath, (const char* path, char* resolved), (path, resolved))
ASKED(DIR*, opendir, (const char* path), (path))

#define OPEN(name)                                                                                                       \
    int name(const char* path, int flags, ...) {                                                                         \
        NEXT(name);                                                                                                      \
        va_list more;                                                                                                    \
        va_start(more, flags);                                                                                           \
        const mode_t mode = flags & (O_CREAT | __O_TMPFILE) ? (mode_t)va_arg(more, int) : 0;                             \
        va_end(more);                                                                                                    \
        ask(path);                                                                                                       \
        return next(path, flags, mode);                                                                                  \
    }
OPEN(open)
OPEN(open64)
