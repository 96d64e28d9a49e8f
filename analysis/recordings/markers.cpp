#include "analysis/recordings/markers.h"

#include <rfUtils/trace/traceRssiBuffer.h>
#include <algorithm>
#include <cmath>

#include "analysis/support/inputError.h"
#include "analysis/support/numbers.h"

namespace rfu {

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
        return InputError(recording.file(), "marker " + request.name + ": " + what);
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

std::vector<Marker> placeMarkers(const std::vector<MarkerRequest>& requests,
                                 const SweepReader& recording, std::size_t points) {
    std::vector<Marker> markers;
    markers.reserve(requests.size());
    for (const MarkerRequest& request : requests) {
        markers.push_back({request.name, pointOf(request, recording, points)});
    }
    return markers;
}

}  // namespace rfu
