#pragma once

#include <rfUtils/geo/veltaGEO.h>

#include <QImage>
#include <QPainter>

#include <cmath>
#include <cstdio>
#include <memory>

constexpr int kPixelsPerCell = 40;

/// The colour of a height between the two ends of its entry in the colour table.
inline QColor colourOf(const veltaGEO& map, float height) {
    for (int i = 0; i < map.colorCount; ++i) {
        if (height >= map.lowValue[i] && height <= map.highValue[i]) {
            const float share = (height - map.lowValue[i]) / (map.highValue[i] - map.lowValue[i]);
            const auto between = [share](int low, int high) {
                return low + static_cast<int>(std::lround(share * static_cast<float>(high - low)));
            };
            return {between(map.lowRed[i], map.highRed[i]),
                    between(map.lowGreen[i], map.highGreen[i]),
                    between(map.lowBlue[i], map.highBlue[i])};
        }
    }
    return Qt::black;
}

/// The place of a control point in the picture; ASC grids begin at the lower-left corner.
inline QPoint pixelOf(const veltaGEO& map, const veltaGEO::ControlPoint& point) {
    const float top = map.originY + static_cast<float>(map.nRows) * map.cellSize;
    const float column = (point.x - map.originX) / map.cellSize;
    const float row = (top - point.y) / map.cellSize;
    return {static_cast<int>(std::lround(column * kPixelsPerCell)),
            static_cast<int>(std::lround(row * kPixelsPerCell))};
}

/// Draws a map with a cross at each control point.
inline bool drawMap(const QString& grid, const QString& georeference, const QString& picture) {
    const auto map = std::make_unique<veltaGEO>();  // 16 MiB, too large for the stack
    if (!map->loadASCFile(grid) || !map->loadTabFile(georeference)) {
        std::fprintf(stderr, "%s\n", qPrintable(map->errMsg));
        return false;
    }
    QImage cells(map->nCols, map->nRows, QImage::Format_RGB32);
    for (int row = 0; row < map->nRows; ++row) {
        for (int column = 0; column < map->nCols; ++column) {
            cells.setPixelColor(column, row, colourOf(*map, map->grid[row][column]));
        }
    }
    QImage image = cells.scaled(cells.size() * kPixelsPerCell, Qt::IgnoreAspectRatio,
                                Qt::SmoothTransformation);
    QPainter painter(&image);
    painter.setPen(QPen(Qt::red, 3));
    for (const veltaGEO::ControlPoint& point : map->controlPoint) {
        const QPoint centre = pixelOf(*map, point);
        painter.drawLine(centre - QPoint(10, 0), centre + QPoint(10, 0));
        painter.drawLine(centre - QPoint(0, 10), centre + QPoint(0, 10));
        std::printf("%.2f east, %.2f north: column %d, row %d\n", static_cast<double>(point.x),
                    static_cast<double>(point.y), centre.x(), centre.y());
    }
    painter.end();
    return image.save(picture);
}
