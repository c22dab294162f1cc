// A library to be preloaded: makes one call of a kind fail, the N-th since main began. SPANNORY_FAIL_CALL
// names the kind, as below, SPANNORY_FAIL_AT the number, counted from 1, SPANNORY_FAIL_FILE a file that is
// made when the call has failed.
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

// Read once, before anything can fail.
struct Wanted {
    const char* call = std::getenv("SPANNORY_FAIL_CALL");
    long at = std::getenv("SPANNORY_FAIL_AT") == nullptr ? 0 : std::atol(std::getenv("SPANNORY_FAIL_AT"));
    const char* mark = std::getenv("SPANNORY_FAIL_FILE");
};

std::atomic<const Wanted*> wanted{nullptr};

bool fails(const char* call, int error) {
    static std::atomic<long> calls{0};
    const Wanted* const asked = wanted;
    if (asked == nullptr || asked->call == nullptr || std::strcmp(asked->call, call) != 0 ||
        ++calls != asked->at) {
        return false;
    }
    if (asked->mark != nullptr) {
        const long mark = ::syscall(SYS_openat, AT_FDCWD, asked->mark, O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
        ::syscall(SYS_close, mark);
    }
    errno = error;
    return true;
}

// The next function of this name, which is the system's.
template <class Function>
Function* next(const char* name, Function* /*its type*/) {
    void* const found = ::dlsym(RTLD_NEXT, name);
    Function* function = nullptr;
    std::memcpy(&function, &found, sizeof function);
    return function;
}

using Main = int (*)(int, char**, char**);
Main programsMain = nullptr;

int watchedMain(int count, char** arguments, char** variables) {
    static const Wanted read;
    wanted = &read;
    return programsMain(count, arguments, variables);
}

} // namespace

// NOLINTBEGIN: the system's names and forms
extern "C" int __libc_start_main(Main main, int count, char** arguments, void (*begin)(), void (*end)(),
                                 void (*unload)(), void* stack) {
    static auto* const real = next("__libc_start_main", static_cast<decltype(&__libc_start_main)>(nullptr));
    programsMain = main;
    return real(watchedMain, count, arguments, begin, end, unload, stack);
}

#define FAILING(kind, error, failed, result, name, parameters, arguments)                                    \
    extern "C" result name parameters {                                                                      \
        static auto* const real = next(#name, static_cast<result(*) parameters>(nullptr));                   \
        return fails(kind, error) ? (failed) : real arguments;                                               \
    }

FAILING("write", ENOSPC, -1, ssize_t, write, (int file, const void* from, size_t count), (file, from, count))
FAILING("write", ENOSPC, -1, ssize_t, pwrite, (int file, const void* from, size_t count, off_t at),
        (file, from, count, at))
FAILING("write", ENOSPC, -1, ssize_t, pwrite64, (int file, const void* from, size_t count, off64_t at),
        (file, from, count, at))
FAILING("read", EIO, -1, ssize_t, read, (int file, void* to, size_t count), (file, to, count))
FAILING("read", EIO, -1, ssize_t, pread, (int file, void* to, size_t count, off_t at), (file, to, count, at))
FAILING("read", EIO, -1, ssize_t, pread64, (int file, void* to, size_t count, off64_t at),
        (file, to, count, at))
FAILING("sync", EIO, -1, int, fsync, (int file), (file))
FAILING("sync", EIO, -1, int, fdatasync, (int file), (file))
FAILING("rename", EIO, -1, int, rename, (const char* from, const char* to), (from, to))
FAILING("rename", EIO, -1, int, renameat, (int a, const char* from, int b, const char* to), (a, from, b, to))
FAILING("rename", EIO, -1, int, renameat2, (int a, const char* from, int b, const char* to, unsigned flags),
        (a, from, b, to, flags))
FAILING("stat", EIO, -1, int, fstatat, (int from, const char* path, struct stat* status, int flags),
        (from, path, status, flags))
FAILING("resize", EIO, -1, int, ftruncate, (int file, off_t size), (file, size))
FAILING("resize", EIO, -1, int, ftruncate64, (int file, off64_t size), (file, size))

#define FAILING_OPEN(name, before, arguments)                                                                \
    extern "C" int name(before const char* path, int flags, ...) {                                           \
        static auto* const real = next(#name, static_cast<int (*)(before const char*, int, ...)>(nullptr));  \
        va_list rest;                                                                                        \
        va_start(rest, flags);                                                                               \
        const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(rest, mode_t) : 0;                 \
        va_end(rest);                                                                                        \
        return fails("open", EMFILE) ? -1 : real arguments;                                                  \
    }

#define COMMA ,
FAILING_OPEN(open, , (path, flags, mode))
FAILING_OPEN(open64, , (path, flags, mode))
FAILING_OPEN(openat, int folder COMMA, (folder, path, flags, mode))
FAILING_OPEN(openat64, int folder COMMA, (folder, path, flags, mode))

extern "C" void* __libc_malloc(size_t size);
extern "C" void* malloc(size_t size) {
    return fails("malloc", ENOMEM) ? nullptr : __libc_malloc(size);
}
// NOLINTEND
