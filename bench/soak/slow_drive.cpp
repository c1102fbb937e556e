// A library to be preloaded into the program. It simulates a drive that does not answer: file calls below the
// folder $ORVALEN_SLOW_FOLDER block as long as the file $ORVALEN_SLOW_SWITCH exists. The first letter of that
// file selects the calls: "a" all, "r" only reads of bytes, "t" only calls outside the main thread.

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

namespace {

enum class Kind { path, bytes };

bool isBelow(const char* path) {
    static const char* const folder = std::getenv("ORVALEN_SLOW_FOLDER");
    return folder != nullptr && path != nullptr && std::strncmp(path, folder, std::strlen(folder)) == 0;
}

/// Returns the first letter of the switch file, or 0 if the file is missing or empty. Uses system calls,
/// because open() and read() are the functions below.
char switchLetter() {
    static const char* const place = std::getenv("ORVALEN_SLOW_SWITCH");
    const long file = place == nullptr ? -1 : ::syscall(SYS_openat, AT_FDCWD, place, O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return 0;
    char letter = 0;
    ::syscall(SYS_read, file, &letter, 1);
    ::syscall(SYS_close, file);
    return letter;
}

bool isSlow(Kind kind) {
    switch (switchLetter()) {
    case 'a':
        return true;
    case 'r':
        return kind == Kind::bytes;
    case 't':
        return ::syscall(SYS_gettid) != ::getpid();
    default:
        return false;
    }
}

void wait(Kind kind) {
    while (isSlow(kind)) {
        const timespec moment{0, 20'000'000};
        ::nanosleep(&moment, nullptr);
    }
}

void wait(const char* path) {
    if (isBelow(path))
        wait(Kind::path);
}

void wait(int file) {
    char path[4096];
    char link[64];
    std::snprintf(link, sizeof link, "/proc/self/fd/%d", file);
    const ssize_t length = ::syscall(SYS_readlink, link, path, sizeof path - 1);
    if (length <= 0)
        return;
    path[length] = '\0';
    if (isBelow(path))
        wait(Kind::bytes);
}

template <typename Function>
Function next(Function, const char* name) {
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

} // namespace

extern "C" {

#define SLOW_PATH(result, name, parameters, arguments)                                                       \
    result name parameters {                                                                                 \
        static const auto real = next(static_cast<result(*) parameters>(nullptr), #name);                    \
        wait(path);                                                                                          \
        return real arguments;                                                                               \
    }
#define SLOW_OPEN(name, parameters, arguments)                                                               \
    int name parameters {                                                                                    \
        va_list list;                                                                                        \
        va_start(list, flags);                                                                               \
        const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(list, mode_t) : 0;                               \
        va_end(list);                                                                                        \
        wait(path);                                                                                          \
        return static_cast<int>(::syscall arguments);                                                        \
    }

SLOW_PATH(int, stat, (const char* path, struct stat* status), (path, status))
SLOW_PATH(int, stat64, (const char* path, struct stat64* status), (path, status))
SLOW_PATH(int, lstat, (const char* path, struct stat* status), (path, status))
SLOW_PATH(int, lstat64, (const char* path, struct stat64* status), (path, status))
SLOW_PATH(int, fstatat, (int folder, const char* path, struct stat* status, int flags),
          (folder, path, status, flags))
SLOW_PATH(int, fstatat64, (int folder, const char* path, struct stat64* status, int flags),
          (folder, path, status, flags))
SLOW_PATH(int, statx, (int folder, const char* path, int flags, unsigned mask, struct statx* status),
          (folder, path, flags, mask, status))
SLOW_PATH(int, access, (const char* path, int mode), (path, mode))
SLOW_PATH(int, faccessat, (int folder, const char* path, int mode, int flags), (folder, path, mode, flags))
SLOW_PATH(DIR*, opendir, (const char* path), (path))
SLOW_OPEN(open, (const char* path, int flags, ...), (SYS_openat, AT_FDCWD, path, flags, mode))
SLOW_OPEN(open64, (const char* path, int flags, ...), (SYS_openat, AT_FDCWD, path, flags, mode))
SLOW_OPEN(openat, (int folder, const char* path, int flags, ...), (SYS_openat, folder, path, flags, mode))
SLOW_OPEN(openat64, (int folder, const char* path, int flags, ...), (SYS_openat, folder, path, flags, mode))

ssize_t read(int file, void* bytes, size_t length) {
    wait(file);
    return ::syscall(SYS_read, file, bytes, length);
}

ssize_t pread(int file, void* bytes, size_t length, off_t offset) {
    wait(file);
    return ::syscall(SYS_pread64, file, bytes, length, offset);
}

ssize_t pread64(int file, void* bytes, size_t length, off64_t offset) {
    return pread(file, bytes, length, offset);
}

} // extern "C"
