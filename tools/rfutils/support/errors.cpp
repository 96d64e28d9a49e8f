#include "support/errors.h"

#include <cstdio>

#include "support/progressLine.h"
#include "support/text.h"

namespace rfu::command {

void printError(const std::string& message) {
    clearProgressLine();
    const std::string line = "rfutils: " + printable(message) + '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
}

void printNote(const std::string& what) {
    printError("note: " + what);
}

}  // namespace rfu::command
