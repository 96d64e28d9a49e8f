// Reading a file without a library.
#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <cstddef>
#include <string>

namespace rfu::bench {

/// Calls read(2) until the file ends or the buffer is full.
/// @return number of bytes
inline std::size_t readFile(const std::string& path, char* to, std::size_t size) {
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    std::size_t got = 0;
    for (ssize_t count = 1; got < size && count > 0;) {
        count = ::read(file, to + got, size - got);
        got += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    ::close(file);
    return got;
}

}  // namespace rfu::bench
