#include "analysis/maps/worldFile.h"

#include "analysis/maps/rasterFile.h"
#include "analysis/support/numbers.h"

namespace rfu {

std::string worldFileOf(const CellGrid& grid) {
    constexpr int kDecimals = 12;  // also those of a degree are enough
    std::string text;
    for (const double value : {grid.cellSize, 0.0, 0.0, -grid.cellSize,
                               grid.west + grid.cellSize / 2.0, grid.north - grid.cellSize / 2.0}) {
        text += fixedText(value, kDecimals) + '\n';
    }
    return text;
}

QString worldFileName(const QString& picture) {
    return withExtension(picture, "pgw");
}

}  // namespace rfu
