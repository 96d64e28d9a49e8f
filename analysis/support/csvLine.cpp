#include "analysis/support/csvLine.h"

namespace rfu {

bool isBlankOrComment(std::string_view line) {
    const std::string_view text = trimmed(line);
    return text.empty() || text.front() == '#';
}

bool looksLikeName(std::string_view field) {
    const std::string_view text = field.substr(!field.empty() && field.front() == '"' ? 1 : 0);
    const char first = text.empty() ? '\0' : text.front();
    return (first >= 'a' && first <= 'z') || (first >= 'A' && first <= 'Z');
}

}  // namespace rfu
