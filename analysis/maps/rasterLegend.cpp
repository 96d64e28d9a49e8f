#include "analysis/maps/rasterLegend.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QStringList>
#include <algorithm>
#include <vector>

#include "analysis/maps/colorRanges.h"
#include "analysis/plots/style.h"
#include "analysis/support/singles.h"

namespace rfu {

namespace {

constexpr int kLegendMargin = 12;
constexpr int kLegendRow = 22;
constexpr QSize kSwatch(48, 14);
constexpr int kSwatchGap = 8;
constexpr int kLegendText = 13;

struct LegendRow {
    QImage swatch;
    QString label;
};

QString labelOf(const ColorRange& range) {
    const auto text = [](double value) { return qtText(textOf(static_cast<float>(value))); };
    return range.low == range.high ? text(range.low)
                                   : text(range.low) + QStringLiteral(" to ") + text(range.high);
}

/// From the colour of the low end at the left to that of the high end at the right.
QImage swatchOf(const ColorRange& range) {
    QImage swatch(kSwatch, QImage::Format_ARGB32);
    for (int x = 0; x < swatch.width(); ++x) {
        const double value =
            range.low + (range.high - range.low) * x / static_cast<double>(swatch.width() - 1);
        for (int y = 0; y < swatch.height(); ++y) {
            swatch.setPixel(x, y, range.color(value));
        }
    }
    return swatch;
}

std::vector<LegendRow> rowsOf(const Raster& raster) {
    std::vector<LegendRow> rows;
    for (const ColorRange& range : colorRangesOf(raster)) {
        rows.push_back({swatchOf(range), labelOf(range)});
    }
    const long long cells = static_cast<long long>(raster.map->nCols) * raster.map->nRows;
    if (statisticsOf(raster).measured < cells) {
        QImage clear(kSwatch, QImage::Format_ARGB32);
        clear.fill(Qt::transparent);
        rows.push_back({clear, QStringLiteral("not measured")});
    }
    return rows;
}

}  // namespace

QImage addLegend(const QImage& map, const Raster& raster) {
    const std::vector<LegendRow> rows = rowsOf(raster);
    const QFontMetricsF metrics(fontOf(kLegendText));
    double textWidth = 0.0;
    for (const LegendRow& row : rows) {
        textWidth = std::max(textWidth, metrics.horizontalAdvance(row.label));
    }
    const int width =
        2 * kLegendMargin + kSwatch.width() + kSwatchGap + static_cast<int>(textWidth) + 1;
    const int height = 2 * kLegendMargin + kLegendRow * static_cast<int>(rows.size());

    QImage picture(map.width() + width, std::max(map.height(), height), QImage::Format_ARGB32);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(0, 0, map);
    painter.fillRect(map.width(), 0, width, picture.height(), kPaper);
    painter.setFont(fontOf(kLegendText));
    int top = kLegendMargin;
    for (const LegendRow& row : rows) {
        const QRect swatch(
            QPoint(map.width() + kLegendMargin, top + (kLegendRow - kSwatch.height()) / 2),
            kSwatch);
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.drawImage(swatch.topLeft(), row.swatch);
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
        painter.setPen(kFrame);
        painter.drawRect(swatch.adjusted(-1, -1, 0, 0));
        painter.setPen(kInk);
        painter.drawText(QRectF(swatch.right() + 1 + kSwatchGap, top, textWidth + 2, kLegendRow),
                         Qt::AlignLeft | Qt::AlignVCenter, row.label);
        top += kLegendRow;
    }
    return picture;
}

}  // namespace rfu
