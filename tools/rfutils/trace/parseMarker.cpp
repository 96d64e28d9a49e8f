#include "trace/parseMarker.h"

#include <string>

#include "analysis/support/numbers.h"

namespace rfu::command {

std::optional<MarkerRequest> parseMarker(std::string_view text) {
    MarkerRequest request{std::string(trimmed(text)), std::nullopt, std::nullopt};
    request.point = parseInteger(text);
    if (!request.point) {
        request.frequency = parseFrequency(text);
    }
    const bool isNamed = request.point ? *request.point >= 0 : request.frequency.has_value();
    return isNamed ? std::optional(request) : std::nullopt;
}

}  // namespace rfu::command
