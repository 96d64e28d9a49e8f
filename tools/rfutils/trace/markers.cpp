#include "trace/markers.h"

#include <rfUtils/trace/traceRssiBuffer.h>
#include <algorithm>
#include <cmath>

#include "support/errors.h"
#include "support/numbers.h"

namespace {

std::string megahertz(double frequency) {
    return std::string(ShortestText(frequency).view()) + " MHz";
}

int nearestPoint(const FrequencyAxis& axis, double frequency) {
    const auto nearest =
        std::min_element(axis.points.begin(), axis.points.end(), [frequency](double a, double b) {
            return std::abs(a - frequency) < std::abs(b - frequency);
        });
    return static_cast<int>(nearest - axis.points.begin());
}

int pointOf(const MarkerRequest& request, const SweepReader& recording, std::size_t points) {
    const auto fail = [&](const std::string& what) {
        return fileError(recording.file(), "marker " + request.name + ": " + what);
    };
    if (request.point) {
        if (static_cast<std::size_t>(*request.point) >= points) {
            throw fail("the points of the recording are 0 to " + std::to_string(points - 1) +
                       (recording.hasFrequencies()
                            ? "; a frequency has a unit: " + std::to_string(*request.point) + "MHz"
                            : ""));
        }
        return *request.point;
    }
    if (!recording.hasFrequencies()) {
        throw fail("the recording holds no frequencies; name a point, 0 to " +
                   std::to_string(points - 1));
    }
    const FrequencyAxis& axis = recording.axis();
    if (*request.frequency < axis.points.front() || *request.frequency > axis.end) {
        throw fail("the recording reaches from " + megahertz(axis.points.front()) + " to " +
                   megahertz(axis.end));
    }
    return nearestPoint(axis, *request.frequency);
}

}  // namespace

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

std::vector<Marker> placeMarkers(const std::vector<MarkerRequest>& requests,
                                 const SweepReader& recording, std::size_t points) {
    std::vector<Marker> markers;
    markers.reserve(requests.size());
    for (const MarkerRequest& request : requests) {
        markers.push_back({request.name, pointOf(request, recording, points)});
    }
    return markers;
}
