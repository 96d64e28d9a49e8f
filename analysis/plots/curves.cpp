#include "analysis/plots/curves.h"

#include <QPen>
#include <QPointF>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

namespace rfu {

namespace {

constexpr double kDotRadius = 3.0;
// A pixel column with more points shows their range instead.
constexpr std::size_t kMaxPointsPerColumn = 2;

bool isCrowded(const ColumnValues& column) {
    return column.measured > kMaxPointsPerColumn;
}

/// Calls use(first, end) with each run of columns that a line joins.
template <typename Use>
void forEachRun(const std::vector<ColumnValues>& columns, Use use) {
    for (std::size_t first = 0; first < columns.size();) {
        std::size_t end = first + 1;
        while (end < columns.size() && columns[end].isJoined) {
            ++end;
        }
        use(first, end);
        first = end;
    }
}

}  // namespace

Curves::Curves(const std::vector<double>& places, std::vector<std::size_t> breaks,
               const PlotFrame& frame)
    : frame_(frame), breaks_(std::move(breaks)) {
    x_.reserve(places.size());
    for (const double place : places) {
        x_.push_back(frame_.x(place));
    }
    columns_ = groupByColumn(x_.data(), x_.size());
}

void Curves::clip(QPainter& painter) const {
    constexpr double kRoom = kDotRadius + 1;
    painter.setClipRect(frame_.area().adjusted(-kRoom, -kRoom, kRoom, kRoom));
}

void Curves::appendPoints(QPolygonF& line, const std::vector<double>& values,
                          std::size_t column) const {
    for (std::size_t i = columns_[column].begin; i < columns_[column].end; ++i) {
        if (std::isfinite(values[i])) {
            line << QPointF(x_[i], frame_.y(values[i]));
        }
    }
}

void Curves::fillBetween(QPainter& painter, const std::vector<double>& upper,
                         const std::vector<double>& lower, const QColor& color) const {
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    const auto maxima = decimate(upper.data(), columns_, breaks_);
    const auto minima = decimate(lower.data(), columns_, breaks_);
    forEachRun(maxima, [&](std::size_t first, std::size_t end) {
        QPolygonF outline;
        QPolygonF back;
        for (std::size_t i = first; i < end; ++i) {
            if (isCrowded(maxima[i])) {
                outline << QPointF(middleOf(i), frame_.y(maxima[i].maximum));
                back << QPointF(middleOf(i), frame_.y(minima[i].minimum));
            } else {
                appendPoints(outline, upper, i);
                appendPoints(back, lower, i);
            }
        }
        std::reverse_copy(back.begin(), back.end(), std::back_inserter(outline));
        painter.drawPolygon(outline);
    });
}

void Curves::drawLine(QPainter& painter, const std::vector<double>& values,
                      const CurveStyle& style) const {
    painter.setPen(QPen(style.color, style.width, style.stroke, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(style.color);
    const auto columns = decimate(values.data(), columns_, breaks_);
    QVector<QLineF> strokes;
    forEachRun(columns, [&](std::size_t first, std::size_t end) {
        if (end - first == 1 && columns[first].minimum == columns[first].maximum) {
            QPolygonF dot;  // without neighbours, which a line needs
            appendPoints(dot, values, first);
            painter.drawEllipse(dot.first(), kDotRadius, kDotRadius);
        } else {
            drawRun(painter, values, columns, first, end, strokes);
        }
    });
    painter.setPen(QPen(style.color, style.width, Qt::SolidLine, Qt::SquareCap));
    painter.drawLines(strokes);
}

/// Draws lines between the columns with few points and collects those of the crowded ones, which
/// are drawn one by one: the cost of a long line grows with the square of its crossings.
void Curves::drawRun(QPainter& painter, const std::vector<double>& values,
                     const std::vector<ColumnValues>& columns, std::size_t first, std::size_t end,
                     QVector<QLineF>& strokes) const {
    QPolygonF line;
    for (std::size_t i = first; i < end; ++i) {
        if (!isCrowded(columns[i])) {
            appendPoints(line, values, i);
            continue;
        }
        const double x = middleOf(i);
        line << QPointF(x, frame_.y(columns[i].first));
        if (line.size() == 2) {
            strokes << QLineF(line[0], line[1]);
        } else {
            painter.drawPolyline(line);
        }
        strokes << QLineF(x, frame_.y(columns[i].minimum), x, frame_.y(columns[i].maximum));
        line = QPolygonF({QPointF(x, frame_.y(columns[i].last))});
    }
    painter.drawPolyline(line);
}

}  // namespace rfu
