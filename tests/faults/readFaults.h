#pragma once

#include <cstddef>
#include <functional>
#include <limits>

#include <sys/types.h>

/// Intercepts open() and read() of its thread while it lives. At most one per thread.
class ReadFaults {
public:
    ReadFaults();
    ~ReadFaults();
    ReadFaults(const ReadFaults&) = delete;
    ReadFaults& operator=(const ReadFaults&) = delete;

    /// Called before each open() or read() with its number from 1; returns the errno with which the
    /// call is to fail, or 0.
    std::function<int(int)> beforeOpen;
    std::function<int(int)> beforeRead;
    /// Bytes that one read() gives at most.
    std::size_t maxBytes = std::numeric_limits<std::size_t>::max();

    /// Number of read() calls.
    int reads() const { return reads_; }

    int open(const char* path, int flags, mode_t mode);
    ssize_t read(int descriptor, void* bytes, std::size_t size);

private:
    int opens_ = 0;
    int reads_ = 0;
};
