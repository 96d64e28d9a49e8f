#include "support/output.h"

#include <cerrno>
#include <cstring>

#include "support/errors.h"
#include "support/progressLine.h"

#include <unistd.h>

namespace rfu::command {

void Output::close() {
    const std::string ending = endings_.back();
    endings_.pop_back();
    write(ending);
}

void Output::closeAll() {
    while (!endings_.empty()) {
        close();
    }
}

void Output::flush() {
    if (held_.empty()) {
        return;
    }
    clearProgressLine();
    std::string_view left = held_;
    while (!left.empty()) {
        const ssize_t written = ::write(STDOUT_FILENO, left.data(), left.size());
        if (written >= 0) {
            left.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno != EINTR) {
            throw Failure{std::string("standard output: ") + std::strerror(errno)};
        }
    }
    held_.clear();
}

Output& standardOutput() {
    static Output output;
    return output;
}

}  // namespace rfu::command
