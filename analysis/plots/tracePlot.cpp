#include "analysis/plots/tracePlot.h"

#include <QColor>
#include <QFontMetricsF>
#include <QPainter>
#include <QPen>
#include <QPointF>
#include <QPolygonF>
#include <QRectF>
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

#include "analysis/plots/axis.h"
#include "analysis/plots/curves.h"
#include "analysis/plots/plotFrame.h"
#include "analysis/plots/style.h"

namespace rfu {

namespace {

constexpr QSize kSize(1280, 680);
constexpr double kLabelRow = 20.0;

const CurveStyle kMaximum = {"maximum", QColor(0xc8, 0x55, 0x3d), 1.2};
const CurveStyle kAverage = {"average", QColor(0x1f, 0x4e, 0x79), 1.8};
const CurveStyle kMinimum = {"minimum", QColor(0x4f, 0x9d, 0x8f), 1.2};
const CurveStyle kLimit = {"limit", kInk, 1.6, Qt::DashLine};
const QColor kBand(0x1f, 0x4e, 0x79, 26);
const QColor kMark(0x7a, 0x3e, 0x9d);

/// Where a line is at a place between two of its points.
QPointF between(const QPointF& from, const QPointF& to, double place) {
    const double part = (place - from.x()) / (to.x() - from.x());
    return {place, from.y() + part * (to.y() - from.y())};
}

/// The part of a line between two places.
QPolygonF cut(const std::vector<QPointF>& line, double low, double high) {
    QPolygonF part;
    for (std::size_t i = 0; i < line.size(); ++i) {
        for (const double end : {low, high}) {
            if (i > 0 && line[i - 1].x() < end && line[i].x() > end) {
                part += between(line[i - 1], line[i], end);
            }
        }
        if (line[i].x() >= low && line[i].x() <= high) {
            part += line[i];
        }
    }
    return part;
}

Axis levelAxis(const TracePlot& plot) {
    double low = std::numeric_limits<double>::infinity();
    double high = -low;
    const auto include = [&](double level) {
        if (std::isfinite(level)) {
            low = std::min(low, level);
            high = std::max(high, level);
        }
    };
    for (const auto* curve : {&plot.maximum, &plot.minimum}) {
        for (const double level : *curve) {
            include(level);
        }
    }
    for (const auto& limit : plot.limits) {
        for (const QPointF& point : cut(limit, plot.places.front(), plot.end)) {
            include(point.y());
        }
    }
    if (low > high) {  // nothing was measured
        low = 0.0;
        high = 1.0;
    }
    return {low, high, Axis::Ends::Rounded, Axis::kLevelDigits};
}

Axis placeAxis(const TracePlot& plot) {
    return {plot.places.front(), plot.end, Axis::Ends::Exact, Axis::kPlaceDigits,
            plot.isCounted ? 1.0 : 0.0};
}

class Drawing {
public:
    Drawing(QPainter& painter, const TracePlot& plot)
        : painter_(painter), plot_(plot), frame_(kSize, placeAxis(plot), levelAxis(plot)) {
        arrangeLabels();
        frame_.leaveAbove(kLabelRow * static_cast<double>(labelRows_.size()));
    }

    void run() {
        frame_.drawTitle(painter_, qtText(plot_.title));
        std::vector<CurveStyle> legend = {kMaximum, kAverage, kMinimum};
        if (!plot_.limits.empty()) {
            legend.push_back(kLimit);
        }
        frame_.drawLegend(painter_, legend);
        frame_.drawAxes(painter_, qtText(plot_.placeName),
                        QStringLiteral("level in ") + qtText(plot_.levelUnit));
        const Curves curves(plot_.places, plot_.breaks, frame_);
        painter_.save();
        curves.clip(painter_);
        curves.fillBetween(painter_, plot_.maximum, plot_.minimum, kBand);
        curves.drawLine(painter_, plot_.minimum, kMinimum);
        curves.drawLine(painter_, plot_.maximum, kMaximum);
        curves.drawLine(painter_, plot_.average, kAverage);
        for (const auto& limit : plot_.limits) {
            drawLimit(limit);
        }
        painter_.restore();
        for (std::size_t i = 0; i < plot_.marks.size(); ++i) {
            mark(i);
        }
        markLabels();
    }

private:
    double xOf(std::size_t point) const { return frame_.x(plot_.places[point]); }

    /// Labels stand above the plot, in a further row where they would touch. None reaches out to
    /// the left, where the topmost level stands.
    void arrangeLabels() {
        const QFontMetricsF metrics(fontOf(13, true));
        std::vector<std::size_t> order(plot_.marks.size());
        for (std::size_t i = 0; i < order.size(); ++i) {
            order[i] = i;
        }
        std::stable_sort(order.begin(), order.end(), [this](std::size_t a, std::size_t b) {
            return plot_.marks[a].point < plot_.marks[b].point;
        });
        labels_.resize(plot_.marks.size());
        for (const std::size_t i : order) {
            const double width = metrics.horizontalAdvance(qtText(plot_.marks[i].label)) + 4.0;
            const double highest = kSize.width() - 4.0 - width;
            const double left = std::min(
                std::max(frame_.area().left(), xOf(plot_.marks[i].point) - width / 2), highest);
            std::size_t row = 0;
            while (row < labelRows_.size() && labelRows_[row] + 8.0 > left) {
                ++row;
            }
            if (row == labelRows_.size()) {
                labelRows_.push_back(0.0);
            }
            labelRows_[row] = left + width;
            labels_[i] = QRectF(left, PlotFrame::kTop + kLabelRow * static_cast<double>(row), width,
                                kLabelRow);
        }
    }

    void drawLimit(const std::vector<QPointF>& limit) {
        QPolygonF line = cut(limit, plot_.places.front(), plot_.end);
        for (QPointF& point : line) {
            point = QPointF(frame_.x(point.x()), frame_.y(point.y()));
        }
        painter_.setPen(QPen(kLimit.color, kLimit.width, kLimit.stroke));
        painter_.setBrush(Qt::NoBrush);
        painter_.drawPolyline(line);
    }

    void mark(std::size_t index) {
        const TracePlot::Mark& mark = plot_.marks[index];
        const double at = xOf(mark.point);
        painter_.setPen(QPen(kMark, 1, Qt::DashLine));
        painter_.drawLine(QPointF(sharp(at), labels_[index].bottom()),
                          QPointF(sharp(at), frame_.area().bottom()));
        const double level = plot_.maximum[mark.point];
        if (std::isfinite(level)) {
            const QPointF tip(at, frame_.y(level) - 2);
            painter_.setPen(QPen(Qt::white, 1));
            painter_.setBrush(kMark);
            painter_.drawPolygon(QPolygonF({tip, tip + QPointF(-6, -10), tip + QPointF(6, -10)}));
        }
    }

    /// On top of the lines, which may lead through a lower row.
    void markLabels() {
        painter_.setFont(fontOf(13, true));
        for (std::size_t i = 0; i < plot_.marks.size(); ++i) {
            painter_.fillRect(labels_[i].adjusted(0, 3, 0, -3), kPaper);
            painter_.setPen(kMark);
            painter_.drawText(labels_[i], Qt::AlignCenter, qtText(plot_.marks[i].label));
        }
    }

    QPainter& painter_;
    const TracePlot& plot_;
    PlotFrame frame_;
    std::vector<QRectF> labels_;     // in the order of the marks
    std::vector<double> labelRows_;  // where the last label of each row ends
};

}  // namespace

QImage draw(const TracePlot& plot) {
    QImage image(kSize, QImage::Format_RGB32);
    image.fill(kPaper);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);
    Drawing(painter, plot).run();
    return image;
}

}  // namespace rfu
