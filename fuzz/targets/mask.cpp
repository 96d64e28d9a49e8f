// The reader of masks behind `rfutils mask`. Holds for any bytes:
// - reading ends with a mask or an InputError that names the file;
// - frequencies are finite, not below 0, ascend, and none comes three times; limits are finite, those of a
//   linear unit above 0;
// - the points are those that a plain restatement reads from the lines;
// - a limit is there from its first to its last point and lies between those around it; at a step it is
//   the stricter one;
// - reading again gives the same.
#include "support/input.h"
#include "support/require.h"
#include "support/scratchFile.h"

#include "analysis/statistics/limitMask.h"
#include "analysis/support/inputError.h"

#include <cmath>
#include <cstdlib>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

using namespace rfu;
using namespace rfu::fuzz;

namespace {

std::optional<LimitMask> read(const QString& file, bool isLinear) {
    try {
        return readLimitMask(file, isLinear);
    } catch (const InputError& error) {
        REQUIRE(error.file() == file);
        return std::nullopt;
    }
}

void requireLine(const LimitLine& line, bool isLinear) {
    const std::vector<LimitLine::Point>& points = line.points();
    for (std::size_t i = 0; i < points.size(); ++i) {
        REQUIRE(std::isfinite(points[i].frequency) && points[i].frequency >= 0.0);
        REQUIRE(std::isfinite(points[i].level) && (!isLinear || points[i].level > 0.0));
        REQUIRE(i < 1 || points[i].frequency >= points[i - 1].frequency);
        REQUIRE(i < 2 || points[i].frequency > points[i - 2].frequency);
        const auto limit = line.at(points[i].frequency);
        REQUIRE(limit.has_value());
        REQUIRE(line.isUpper() ? *limit <= points[i].level : *limit >= points[i].level);
        if (i == 0) {
            continue;
        }
        const auto between = line.at((points[i - 1].frequency + points[i].frequency) / 2.0);
        REQUIRE(between.has_value());
        const double low = std::min(points[i - 1].level, points[i].level);
        const double high = std::max(points[i - 1].level, points[i].level);
        const double rounding = 1e-9 * std::max(std::abs(low), std::abs(high));
        REQUIRE(*between >= low - rounding && *between <= high + rounding);
    }
    if (!points.empty()) {
        REQUIRE(!line.at(std::nextafter(points.front().frequency, -1.0)).has_value());
        REQUIRE(!line.at(std::nextafter(points.back().frequency, 1e300)).has_value());
    }
}

bool isSame(const LimitLine& a, const LimitLine& b) {
    return std::equal(a.points().begin(), a.points().end(), b.points().begin(), b.points().end(),
                      [](const LimitLine::Point& x, const LimitLine::Point& y) {
                          return same(x.frequency, y.frequency) && same(x.level, y.level);
                      });
}

/// The limits of a column, from a file that was read without an error.
std::vector<double> levelsOf(std::string_view file, std::size_t column) {
    std::vector<double> levels;
    std::istringstream lines{std::string(file)};
    for (std::string line; std::getline(lines, line);) {
        if (line.find_first_of("0123456789") == std::string::npos) {
            continue;
        }
        std::size_t begin = 0;
        for (std::size_t i = 0; i < column && begin != std::string::npos; ++i) {
            const std::size_t comma = line.find(',', begin);
            begin = comma == std::string::npos ? comma : comma + 1;
        }
        const std::string field =
            begin == std::string::npos ? "" : line.substr(begin, line.find(',', begin) - begin);
        const std::size_t first = line.find_first_not_of(" \t\v\f\r\xEF\xBB\xBF");
        const char lead = line[first];
        const bool isData =
            (lead >= '0' && lead <= '9') || lead == '.' || lead == '+' || lead == '-';
        if (isData && field.find_first_of("0123456789") != std::string::npos) {
            levels.push_back(std::strtod(field.c_str(), nullptr));
        }
    }
    return levels;
}

void requireLevels(const LimitLine& line, const std::vector<double>& levels) {
    REQUIRE(line.points().size() == levels.size());
    for (std::size_t i = 0; i < levels.size(); ++i) {
        REQUIRE(line.points()[i].level == levels[i]);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static ScratchFile file("mask.csv");
    file.write(data, size);
    for (const bool isLinear : {false, true}) {
        const auto mask = read(file.path(), isLinear);
        const auto again = read(file.path(), isLinear);
        REQUIRE(mask.has_value() == again.has_value());
        if (!mask) {
            continue;
        }
        REQUIRE(isSame(mask->upper, again->upper) && isSame(mask->lower, again->lower));
        const std::string_view text(reinterpret_cast<const char*>(data), size);
        requireLevels(mask->upper, levelsOf(text, 1));
        requireLevels(mask->lower, levelsOf(text, 2));
        requireLine(mask->upper, isLinear);
        requireLine(mask->lower, isLinear);
    }
    return 0;
}
