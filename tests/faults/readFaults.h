#pragma once

#include <cstddef>
#include <functional>
#include <limits>

#include <sys/types.h>

/// Stands between the program and the system's open() and read() while it lives: what it is told
/// happens exactly before one of these calls. Sees the calls of its own thread only; one at a time.
class ReadFaults {
public:
    ReadFaults();
    ~ReadFaults();
    ReadFaults(const ReadFaults&) = delete;
    ReadFaults& operator=(const ReadFaults&) = delete;

    /// Called before each open() and before each read(), with its number from 1; gives the error
    /// with which the call fails (an errno), 0 for none.
    std::function<int(int)> beforeOpen;
    std::function<int(int)> beforeRead;
    /// The most bytes that one read() gives.
    std::size_t mostBytes = std::numeric_limits<std::size_t>::max();

    /// How often read() was called.
    int reads() const { return reads_; }

    int open(const char* path, int flags, mode_t mode);
    ssize_t read(int descriptor, void* bytes, std::size_t size);

private:
    int opens_ = 0;
    int reads_ = 0;
};
