#include "analysis/plots/curves.h"

#include <QPen>
#include <QPointF>
#include <QRectF>
#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

namespace rfu {

namespace {

constexpr double kDotRadius = 3.0;
// A pixel column with more points shows their range instead.
constexpr std::size_t kMaxPointsPerColumn = 2;
// Lines and areas are painted in pieces: the cost of a piece grows with the square of its points.
constexpr int kPointsOfPiece = 100;

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

// What lies above or below the plotting area is left out here, because SVG knows no clip.

/// The point at which a line that is not horizontal crosses a height.
QPointF reaching(const QPointF& from, const QPointF& to, double y) {
    const double part = (y - from.y()) / (to.y() - from.y());
    return {from.x() + part * (to.x() - from.x()), y};
}

/// An end of a line, moved along the line into the area.
QPointF endInside(const QPointF& end, const QPointF& other, const QRectF& area) {
    const double y = std::clamp(end.y(), area.top(), area.bottom());
    return y == end.y() ? end : reaching(end, other, y);
}

/// Adds the parts of a line within the area to the path. A path that is long enough is drawn, and a new
/// one begins.
void addInside(QPainter& painter, QPainterPath& path, const QPolygonF& line, const QRectF& area) {
    for (int i = 1; i < line.size(); ++i) {
        const QPointF& from = line[i - 1];
        const QPointF& to = line[i];
        if (std::max(from.y(), to.y()) < area.top() || std::min(from.y(), to.y()) > area.bottom()) {
            continue;
        }
        const QPointF begin = endInside(from, to, area);
        if (path.elementCount() == 0 || path.currentPosition() != begin) {
            path.moveTo(begin);
        }
        path.lineTo(endInside(to, from, area));
        if (path.elementCount() >= kPointsOfPiece) {
            painter.drawPath(path);
            const QPointF end = path.currentPosition();
            path = QPainterPath(end);
        }
    }
}

/// The line, with its parts above or below the area moved to the edge of the area.
QPolygonF movedInside(const QPolygonF& line, const QRectF& area) {
    QPolygonF moved;
    for (int i = 0; i < line.size(); ++i) {
        const QPointF& to = line[i];
        if (i > 0) {
            const QPointF& from = line[i - 1];
            const bool isFalling = from.y() < to.y();
            for (const double edge :
                 {isFalling ? area.top() : area.bottom(), isFalling ? area.bottom() : area.top()}) {
                if ((from.y() < edge) != (to.y() < edge)) {
                    moved << reaching(from, to, edge);
                }
            }
        }
        moved << QPointF(to.x(), std::clamp(to.y(), area.top(), area.bottom()));
    }
    return moved;
}

void drawArea(QPainter& painter, const QPolygonF& top, const QPolygonF& bottom,
              const QRectF& area) {
    QPolygonF outline = movedInside(top, area);
    const QPolygonF back = movedInside(bottom, area);
    std::reverse_copy(back.begin(), back.end(), std::back_inserter(outline));
    painter.drawPolygon(outline);
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

double Curves::y(double value) const {
    constexpr double kFar = 1e6;  // pixels: finite, and far enough to keep the slope of a line
    return std::clamp(frame_.y(value), -kFar, kFar);
}

void Curves::appendPoints(QPolygonF& line, const std::vector<double>& values,
                          std::size_t column) const {
    for (std::size_t i = columns_[column].begin; i < columns_[column].end; ++i) {
        if (std::isfinite(values[i])) {
            line << QPointF(x_[i], y(values[i]));
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
        QPolygonF top;
        QPolygonF bottom;
        for (std::size_t i = first; i < end; ++i) {
            if (isCrowded(maxima[i])) {
                top << QPointF(middleOf(i), y(maxima[i].maximum));
                bottom << QPointF(middleOf(i), y(minima[i].minimum));
            } else {
                appendPoints(top, upper, i);
                appendPoints(bottom, lower, i);
            }
            if (top.size() >= kPointsOfPiece) {
                drawArea(painter, top, bottom, frame_.area());
                top = QPolygonF() << top.last();
                bottom = QPolygonF() << bottom.last();
            }
        }
        drawArea(painter, top, bottom, frame_.area());
    });
}

void Curves::drawLine(QPainter& painter, const std::vector<double>& values,
                      const CurveStyle& style) const {
    const auto columns = decimate(values.data(), columns_, breaks_);
    painter.setPen(QPen(style.color, style.width, style.stroke, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    QPainterPath path;
    QPolygonF dots;
    forEachRun(columns, [&](std::size_t first, std::size_t end) {
        if (end - first == 1 && columns[first].minimum == columns[first].maximum) {
            QPolygonF points;  // only one, and a line needs two
            appendPoints(points, values, first);
            if (!points.isEmpty() && frame_.shows(columns[first].first)) {
                dots << points.first();
            }
        } else {
            drawRun(painter, path, values, columns, first, end);
        }
    });
    if (!path.isEmpty()) {
        painter.drawPath(path);
    }
    painter.setPen(QPen(style.color, style.width));
    painter.setBrush(style.color);
    for (const QPointF& dot : dots) {
        painter.drawEllipse(dot, kDotRadius, kDotRadius);
    }
}

/// Draws a line through the columns. A crowded column is a vertical stroke.
/// @param path collects what is not drawn yet
void Curves::drawRun(QPainter& painter, QPainterPath& path, const std::vector<double>& values,
                     const std::vector<ColumnValues>& columns, std::size_t first,
                     std::size_t end) const {
    QPolygonF line;
    for (std::size_t i = first; i < end; ++i) {
        if (!isCrowded(columns[i])) {
            appendPoints(line, values, i);
            continue;
        }
        const double x = middleOf(i);
        line << QPointF(x, y(columns[i].first));
        addInside(painter, path, line, frame_.area());
        QPolygonF range;
        range << QPointF(x, y(columns[i].minimum)) << QPointF(x, y(columns[i].maximum));
        addInside(painter, path, range, frame_.area());
        line = QPolygonF({QPointF(x, y(columns[i].last))});
    }
    addInside(painter, path, line, frame_.area());
}

}  // namespace rfu
