#include "readFaults.h"

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <utility>

#include <dlfcn.h>
#include <fcntl.h>

namespace {

thread_local ReadFaults* active = nullptr;

/// The intercepted function of the next library.
template <typename Function>
Function next(const char* name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

int systemOpen(const char* path, int flags, mode_t mode) {
    static const auto open = next<int (*)(const char*, int, ...)>("open");
    return open(path, flags, mode);
}

ssize_t systemRead(int descriptor, void* bytes, std::size_t size) {
    static const auto read = next<ssize_t (*)(int, void*, std::size_t)>("read");
    return read(descriptor, bytes, size);
}

/// Lets the callbacks use files.
class Unwatched {
public:
    Unwatched() : watcher_(std::exchange(active, nullptr)) {}
    ~Unwatched() { active = watcher_; }
    Unwatched(const Unwatched&) = delete;
    Unwatched& operator=(const Unwatched&) = delete;

private:
    ReadFaults* watcher_;
};

/// Runs the callback before a call.
/// @return whether the call is to fail, with errno set
bool fails(const std::function<int(int)>& before, int number) {
    int error = 0;
    if (before) {
        const Unwatched unwatched;
        error = before(number);
    }
    if (error != 0) {
        errno = error;
    }
    return error != 0;
}

}  // namespace

ReadFaults::ReadFaults() {
    active = this;
}

ReadFaults::~ReadFaults() {
    active = nullptr;
}

int ReadFaults::open(const char* path, int flags, mode_t mode) {
    return fails(beforeOpen, ++opens_) ? -1 : systemOpen(path, flags, mode);
}

ssize_t ReadFaults::read(int descriptor, void* bytes, std::size_t size) {
    return fails(beforeRead, ++reads_) ? -1
                                       : systemRead(descriptor, bytes, std::min(size, maxBytes));
}

// Defines the symbols open and read under other names, which do not clash with the declarations of
// the system's headers.

extern "C" {

__attribute__((used, visibility("default"))) int watchedOpen(const char* path, int flags,
                                                             ...) __asm__("open");
__attribute__((used, visibility("default"))) ssize_t watchedRead(int descriptor, void* bytes,
                                                                 std::size_t size) __asm__("read");

int watchedOpen(const char* path, int flags, ...) {
    mode_t mode = 0;
    if ((flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE) {
        va_list rest;
        va_start(rest, flags);
        mode = va_arg(rest, mode_t);
        va_end(rest);
    }
    return active != nullptr ? active->open(path, flags, mode) : systemOpen(path, flags, mode);
}

ssize_t watchedRead(int descriptor, void* bytes, std::size_t size) {
    return active != nullptr ? active->read(descriptor, bytes, size)
                             : systemRead(descriptor, bytes, size);
}

}  // extern "C"
