#include "trace/markerOptions.h"

#include <rfUtils/trace/traceRssiBuffer.h>

#include "analysis/support/inputError.h"
#include "analysis/support/numbers.h"
#include "support/errors.h"

namespace rfu::command {

std::vector<MarkerRequest> parseMarkers(const QStringList& names) {
    if (names.size() > static_cast<int>(traceRssiBuffer::kMarkers)) {
        throw usageError("at most " + std::to_string(traceRssiBuffer::kMarkers) +
                         " markers are possible");
    }
    std::vector<MarkerRequest> requests;
    for (const QString& name : names) {
        MarkerRequest request{name.trimmed().toStdString(), std::nullopt, std::nullopt};
        request.point = parseInteger(request.name);
        if (!request.point) {
            request.frequency = parseFrequency(request.name);
        }
        if (!(request.point && *request.point >= 0) && !request.frequency) {
            throw usageError("--marker " + quoted(request.name) +
                             ": a frequency such as 88.1MHz or the number of a point is expected");
        }
        requests.push_back(std::move(request));
    }
    return requests;
}

}  // namespace rfu::command
