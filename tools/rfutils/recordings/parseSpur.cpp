#include "recordings/parseSpur.h"

#include "analysis/support/numbers.h"

namespace rfu::command {

std::optional<Spur> parseSpur(std::string_view text) {
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos) {
        return std::nullopt;
    }
    const auto width = parseFrequency(text.substr(colon + 1));
    if (!width || *width <= 0.0) {
        return std::nullopt;
    }
    if (trimmed(text.substr(0, colon)) == "hops") {
        return Spur{std::nullopt, *width};
    }
    const auto frequency = parseFrequency(text.substr(0, colon));
    return frequency ? std::optional(Spur{frequency, *width}) : std::nullopt;
}

}  // namespace rfu::command
