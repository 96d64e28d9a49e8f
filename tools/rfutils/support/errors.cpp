#include "support/errors.h"

#include <algorithm>
#include <cstdio>

namespace rfu::command {

void printError(const std::string& message) {
    std::string line = "rfutils: " + message;
    // A file name or a value may hold anything; the message stays one line.
    std::replace_if(
        line.begin(), line.end(),
        [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }, '?');
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
}

void printNote(const std::string& what) {
    printError("note: " + what);
}

}  // namespace rfu::command
