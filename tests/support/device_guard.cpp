// Preloaded into every test and its child processes: aborts one that opens a device not created by a test. The
// machine's serial ports, terminals, disks and displays belong to others.

#include <array>
#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

namespace {

// a preloaded library must not allocate: the program's allocator may be inside an open
using path_text = std::array<char, PATH_MAX>;

bool is_allowed_device(std::string_view device) {
    for (const std::string_view name : {"/dev/null", "/dev/zero", "/dev/full", "/dev/random", "/dev/urandom",
                                        "/dev/ptmx", "/dev/pts/ptmx", "/dev/shm"})
        if (device == name) return true;
    return device.starts_with("/dev/pts/") || device.starts_with("/dev/shm/") || device.starts_with("/dev/mqueue/");
}

[[noreturn]] void refuse(const char* path, const char* device) {
    std::fprintf(stderr,
                 "device guard: this test or a program that it started opens %s (%s). Tests open only devices that "
                 "they have made.\n",
                 path, device);
    std::abort();
}

/// The absolute path of a device, or an empty text if it is not a device.
void find_device(int directory, const char* path, path_text& device) {
    path_text whole{};
    if (path[0] != '/' && directory != AT_FDCWD) {
        path_text link{};
        std::snprintf(link.data(), link.size(), "/proc/self/fd/%d", directory);
        const ssize_t length = ::readlink(link.data(), whole.data(), whole.size() / 2);
        if (length <= 0) return;
        std::snprintf(whole.data() + length, whole.size() - static_cast<std::size_t>(length), "/%s", path);
    } else {
        std::snprintf(whole.data(), whole.size(), "%s", path);
    }
    const std::string_view asked = whole.data();
    // the standard streams that the test inherited
    if (asked.starts_with("/dev/std") || asked.starts_with("/dev/fd") || asked.starts_with("/proc/")) return;
    if (::realpath(whole.data(), device.data()) == nullptr) {
        // a device missing on this machine may exist on another
        device = asked.starts_with("/dev/") ? whole : path_text{};
    }
}

/// False: the open fails with errno set.
bool may_open(int directory, const char* path) {
    if (path == nullptr) return true;
    const int error_before = errno;
    path_text device{};
    find_device(directory, path, device);
    errno = error_before;
    const std::string_view name = device.data();
    if (!name.starts_with("/dev/") || is_allowed_device(name)) return true;
    if (name == "/dev/tty") {
        // shells try it by themselves; a test has no controlling terminal
        errno = ENXIO;
        return false;
    }
    refuse(path, device.data());
}

template <class Function>
Function next(const char* name) {
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

using open_function = int (*)(const char*, int, ...);
using openat_function = int (*)(int, const char*, int, ...);
using open_2_function = int (*)(const char*, int);
using openat_2_function = int (*)(int, const char*, int);
using fopen_function = std::FILE* (*)(const char*, const char*);
using freopen_function = std::FILE* (*)(const char*, const char*, std::FILE*);

mode_t mode_of(int flags, std::va_list rest) {
    const bool has_mode = (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
    return has_mode ? va_arg(rest, mode_t) : 0;
}

int guarded_open(const char* function, const char* path, int flags, mode_t mode) {
    return may_open(AT_FDCWD, path) ? next<open_function>(function)(path, flags, mode) : -1;
}

int guarded_openat(const char* function, int directory, const char* path, int flags, mode_t mode) {
    return may_open(directory, path) ? next<openat_function>(function)(directory, path, flags, mode) : -1;
}

} // namespace

// the C library's names for these
extern "C" {

int open(const char* path, int flags, ...) {
    std::va_list rest;
    va_start(rest, flags);
    const mode_t mode = mode_of(flags, rest);
    va_end(rest);
    return guarded_open("open", path, flags, mode);
}

int open64(const char* path, int flags, ...) {
    std::va_list rest;
    va_start(rest, flags);
    const mode_t mode = mode_of(flags, rest);
    va_end(rest);
    return guarded_open("open64", path, flags, mode);
}

int openat(int directory, const char* path, int flags, ...) {
    std::va_list rest;
    va_start(rest, flags);
    const mode_t mode = mode_of(flags, rest);
    va_end(rest);
    return guarded_openat("openat", directory, path, flags, mode);
}

int openat64(int directory, const char* path, int flags, ...) {
    std::va_list rest;
    va_start(rest, flags);
    const mode_t mode = mode_of(flags, rest);
    va_end(rest);
    return guarded_openat("openat64", directory, path, flags, mode);
}

int __open_2(const char* path, int flags) {
    return may_open(AT_FDCWD, path) ? next<open_2_function>("__open_2")(path, flags) : -1;
}

int __open64_2(const char* path, int flags) {
    return may_open(AT_FDCWD, path) ? next<open_2_function>("__open64_2")(path, flags) : -1;
}

int __openat_2(int directory, const char* path, int flags) {
    return may_open(directory, path) ? next<openat_2_function>("__openat_2")(directory, path, flags) : -1;
}

int __openat64_2(int directory, const char* path, int flags) {
    return may_open(directory, path) ? next<openat_2_function>("__openat64_2")(directory, path, flags) : -1;
}

int creat(const char* path, mode_t mode) { return guarded_open("open", path, O_CREAT | O_WRONLY | O_TRUNC, mode); }

std::FILE* fopen(const char* path, const char* mode) {
    return may_open(AT_FDCWD, path) ? next<fopen_function>("fopen")(path, mode) : nullptr;
}

std::FILE* fopen64(const char* path, const char* mode) {
    return may_open(AT_FDCWD, path) ? next<fopen_function>("fopen64")(path, mode) : nullptr;
}

std::FILE* freopen(const char* path, const char* mode, std::FILE* stream) {
    return may_open(AT_FDCWD, path) ? next<freopen_function>("freopen")(path, mode, stream) : nullptr;
}

std::FILE* freopen64(const char* path, const char* mode, std::FILE* stream) {
    return may_open(AT_FDCWD, path) ? next<freopen_function>("freopen64")(path, mode, stream) : nullptr;
}
}
