#include "support/progressLine.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>

namespace rfu::command {

namespace {

std::size_t shownColumns = 0;

/// Writes over the line that is shown; the cursor ends up at the end of the text.
void replaceLine(const std::string& text) {
    const std::size_t rest = shownColumns - std::min(shownColumns, text.size());
    const std::string line = '\r' + text + std::string(rest, ' ') + std::string(rest, '\b');
    std::fwrite(line.data(), 1, line.size(), stderr);
    std::fflush(stderr);
    shownColumns = text.size();
}

}  // namespace

void showProgressLine(const std::string& text) {
    replaceLine(text);
}

void clearProgressLine() {
    if (shownColumns > 0) {
        replaceLine("");
    }
}

}  // namespace rfu::command
