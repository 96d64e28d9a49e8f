#include "analysis/recordings/markers.h"

#include <rfUtils/trace/traceRssiBuffer.h>
#include <algorithm>
#include <cmath>
#include <cstddef>

#include "analysis/recordings/bins.h"
#include "analysis/support/inputError.h"
#include "analysis/support/numbers.h"

namespace rfu {

namespace {

auto bandAt(const FrequencyAxis& axis, double frequency) {
    return std::find_if(axis.bands.begin(), axis.bands.end(),
                        [frequency](const FrequencyAxis::Band& b) {
                            return b.low <= frequency && frequency <= b.high;
                        });
}

/// @return nothing outside the bands
std::optional<int> nearestPoint(const FrequencyAxis& axis, double frequency) {
    const auto band = bandAt(axis, frequency);
    if (band == axis.bands.end()) {
        return std::nullopt;
    }
    const auto pointsOf = [&](auto b) {
        return axis.points.begin() + static_cast<std::ptrdiff_t>(b == axis.bands.end()
                                                                     ? axis.points.size()
                                                                     : b->firstPoint);
    };
    const auto nearest =
        std::min_element(pointsOf(band), pointsOf(band + 1), [frequency](double a, double b) {
            return std::abs(a - frequency) < std::abs(b - frequency);
        });
    return static_cast<int>(nearest - axis.points.begin());
}

int pointOf(const MarkerRequest& request, const FrequencyAxis& axis, std::size_t points,
            const QString& file) {
    const auto fail = [&](const std::string& what) {
        return InputError(file, "marker " + request.name + ": " + what);
    };
    if (request.point) {
        if (static_cast<std::size_t>(*request.point) >= points) {
            throw fail("the points of the recording are 0 to " + std::to_string(points - 1) +
                       (!axis.points.empty() && parseInteger(request.name)
                            ? "; a frequency has a unit: " + std::to_string(*request.point) + "MHz"
                            : ""));
        }
        return *request.point;
    }
    if (axis.points.empty()) {
        throw fail("the recording holds no frequencies; name a point, 0 to " +
                   std::to_string(points - 1));
    }
    const auto nearest = nearestPoint(axis, *request.frequency);
    if (!nearest) {
        throw fail("the recording reaches " + describe(axis.bands));
    }
    return *nearest;
}

}  // namespace

bool isAlsoFrequency(const MarkerRequest& request, const FrequencyAxis& axis) {
    return request.point && bandAt(axis, *request.point) != axis.bands.end();
}

std::vector<Marker> placeMarkers(const std::vector<MarkerRequest>& requests,
                                 const FrequencyAxis& axis, std::size_t points,
                                 const QString& file) {
    std::vector<Marker> markers;
    markers.reserve(requests.size());
    for (const MarkerRequest& request : requests) {
        markers.push_back({request.name, pointOf(request, axis, points, file)});
    }
    return markers;
}

std::vector<Marker> moveMarkers(const std::vector<MarkerRequest>& requests,
                                const std::vector<Marker>& placed, const FrequencyAxis& axis,
                                const std::vector<std::size_t>& former, const QString& file) {
    std::vector<Marker> markers = placeMarkers(requests, axis, former.size(), file);
    for (std::size_t i = 0; i < requests.size(); ++i) {
        if (requests[i].point) {
            const auto point =
                std::find(former.begin(), former.end(), static_cast<std::size_t>(placed[i].point));
            markers[i].point = static_cast<int>(point - former.begin());
        }
    }
    return markers;
}

}  // namespace rfu
