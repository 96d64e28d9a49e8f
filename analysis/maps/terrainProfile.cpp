#include "analysis/maps/terrainProfile.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <utility>

#include "analysis/support/inputError.h"

namespace rfu {

namespace {

// In cells: places closer to each other than this are the same.
constexpr double kSameSample = 1e-3;
constexpr double kSameCentre = 1e-6;

/// A point in columns and rows of cell centres, within the outermost ones.
QPointF amongCentres(QPointF point, const CellGrid& grid) {
    return {std::clamp((point.x() - grid.west) / grid.cellSize - 0.5, 0.0, grid.columns - 1.0),
            std::clamp((grid.north - point.y()) / grid.cellSize - 0.5, 0.0, grid.rows - 1.0)};
}

/// The index of a cell centre, and the share of the way from it to the next one.
struct Step {
    int index;
    double part;
};

Step stepAt(double position) {
    const double nearest = std::round(position);
    if (std::abs(position - nearest) < kSameCentre) {
        return {static_cast<int>(nearest), 0.0};
    }
    return {static_cast<int>(std::floor(position)), position - std::floor(position)};
}

/// NaN where a cell that counts was not measured.
double heightAt(QPointF centres, const Raster& raster) {
    const Step column = stepAt(centres.x());
    const Step row = stepAt(centres.y());
    double height = 0.0;
    for (const int down : {0, 1}) {
        for (const int right : {0, 1}) {
            const double weight = (right == 1 ? column.part : 1.0 - column.part) *
                                  (down == 1 ? row.part : 1.0 - row.part);
            if (weight > 0.0) {
                const float value = raster.cell(column.index + right, row.index + down);
                height += raster.isMeasured(value) ? weight * static_cast<double>(value)
                                                   : std::numeric_limits<double>::quiet_NaN();
            }
        }
    }
    return height;
}

/// Adds the shares of the way from one position to another at which it passes whole numbers.
void addCrossings(std::vector<double>& shares, double from, double to) {
    if (from == to) {
        return;
    }
    const int last = static_cast<int>(std::floor(std::max(from, to)));
    for (int whole = static_cast<int>(std::ceil(std::min(from, to))); whole <= last; ++whole) {
        shares.push_back((whole - from) / (to - from));
    }
}

/// The shares of the line at which its samples lie.
std::vector<double> sharesOf(QPointF start, QPointF end, const CellGrid& grid) {
    const auto columns = [&](QPointF point) {
        return (point.x() - grid.west) / grid.cellSize - 0.5;
    };
    const auto rows = [&](QPointF point) { return (grid.north - point.y()) / grid.cellSize - 0.5; };
    std::vector<double> crossings;
    addCrossings(crossings, columns(start), columns(end));
    addCrossings(crossings, rows(start), rows(end));
    std::sort(crossings.begin(), crossings.end());
    const double gap =
        kSameSample * grid.cellSize / std::hypot(end.x() - start.x(), end.y() - start.y());
    std::vector<double> shares = {0.0};
    const auto add = [&shares](double share) {
        shares.push_back((shares.back() + share) / 2.0);
        shares.push_back(share);
    };
    for (const double crossing : crossings) {
        if (crossing - shares.back() > gap && 1.0 - crossing > gap) {
            add(crossing);
        }
    }
    add(1.0);
    return shares;
}

}  // namespace

TerrainProfile terrainBetween(QPointF start, QPointF end, const Raster& raster,
                              const CellGrid& grid, const QString& file) {
    requireCell(grid, start, file);
    requireCell(grid, end, file);
    const QPointF way = end - start;
    if (start.x() == end.x() && start.y() == end.y()) {
        throw InputError(file, "has no profile from a point to itself");
    }
    TerrainProfile profile;
    profile.length = std::hypot(way.x(), way.y());
    for (const double share : sharesOf(start, end, grid)) {
        profile.distances.push_back(share * profile.length);
        profile.heights.push_back(heightAt(amongCentres(start + share * way, grid), raster));
    }
    for (const auto& [height, point] :
         {std::pair(profile.heights.front(), start), std::pair(profile.heights.back(), end)}) {
        if (std::isnan(height)) {
            throw InputError(file, "has no height measured at " + pointText(point));
        }
    }
    return profile;
}

}  // namespace rfu
