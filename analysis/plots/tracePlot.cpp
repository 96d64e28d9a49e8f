#include "analysis/plots/tracePlot.h"

#include <QColor>
#include <QFontMetricsF>
#include <QPen>
#include <QPointF>
#include <QPolygonF>
#include <QRectF>
#include <algorithm>
#include <cmath>
#include <utility>

#include "analysis/plots/axis.h"
#include "analysis/plots/curves.h"
#include "analysis/plots/style.h"

namespace rfu {

namespace {

constexpr double kLabelRow = 20.0;

const CurveStyle kMaximum = {"maximum", QColor(0xc8, 0x55, 0x3d), 1.2};
const CurveStyle kAverage = {"average", QColor(0x1f, 0x4e, 0x79), 1.8};
const CurveStyle kMinimum = {"minimum", QColor(0x4f, 0x9d, 0x8f), 1.2};
const CurveStyle kLimit = {"limit", kInk, 1.6, Qt::DashLine};
const CurveStyle kMask = {"mask", QColor(0xb8, 0x86, 0x0b), 2.0};
const QColor kBand(0x1f, 0x4e, 0x79, 26);
const QColor kMark(0x7a, 0x3e, 0x9d);

/// The part of a line from one place to another.
TracePlot::Line cut(const TracePlot::Line& line, double low, double high) {
    TracePlot::Line part;
    const auto add = [&part](double place, double level) {
        part.places.push_back(place);
        part.levels.push_back(level);
    };
    for (std::size_t i = 0; i < line.places.size(); ++i) {
        for (const double end : {low, high}) {
            if (i > 0 && line.places[i - 1] < end && line.places[i] > end) {
                const double share =
                    (end - line.places[i - 1]) / (line.places[i] - line.places[i - 1]);
                add(end, line.levels[i - 1] + share * (line.levels[i] - line.levels[i - 1]));
            }
        }
        if (line.places[i] >= low && line.places[i] <= high) {
            add(line.places[i], line.levels[i]);
        }
    }
    return part;
}

/// The parts of lines that the horizontal axis shows.
std::vector<TracePlot::Line> shownOf(const std::vector<TracePlot::Line>& lines,
                                     const TracePlot& plot) {
    std::vector<TracePlot::Line> shown;
    shown.reserve(lines.size());
    for (const TracePlot::Line& line : lines) {
        shown.push_back(cut(line, plot.places.front(), plot.end));
    }
    return shown;
}

class TraceDrawing {
public:
    TraceDrawing(QPainter& painter, const TracePlot& plot)
        : painter_(painter),
          plot_(plot),
          limits_(shownOf(plot.limits, plot)),
          mask_(shownOf(plot.mask, plot)),
          frame_(plot.shape, places(), levels(), legend()) {
        arrangeLabels();
        frame_.leaveAbove(kLabelRow * static_cast<double>(labelRows_.size()));
    }

    void run() {
        frame_.drawTitle(painter_, qtText(plot_.title));
        frame_.drawLegend(painter_);
        frame_.drawAxes(painter_, qtText(plot_.placeName),
                        QStringLiteral("level in ") + qtText(plot_.levelUnit));
        const Curves curves(plot_.places, plot_.breaks, frame_);
        curves.fillBetween(painter_, plot_.maximum, plot_.minimum, kBand);
        curves.drawLine(painter_, plot_.minimum, kMinimum);
        curves.drawLine(painter_, plot_.maximum, kMaximum);
        curves.drawLine(painter_, plot_.average, kAverage);
        drawLines(mask_, kMask);
        drawLines(limits_, kLimit);
        for (std::size_t i = 0; i < plot_.marks.size(); ++i) {
            mark(i);
        }
        markLabels();
    }

private:
    AxisRange places() const {
        return {{plot_.places.front(), plot_.end}, Axis::kPlaceDigits, plot_.isCounted ? 1.0 : 0.0};
    }

    AxisRange levels() const {
        std::vector<const std::vector<double>*> series = {&plot_.maximum, &plot_.minimum};
        for (const auto* lines : {&limits_, &mask_}) {
            for (const TracePlot::Line& line : *lines) {
                series.push_back(&line.levels);
            }
        }
        return {rangeOf(series), Axis::kLevelDigits};
    }

    std::vector<CurveStyle> legend() const {
        std::vector<CurveStyle> styles = {kMaximum, kAverage, kMinimum};
        if (!mask_.empty()) {
            styles.push_back(kMask);
        }
        if (!limits_.empty()) {
            styles.push_back(kLimit);
        }
        return styles;
    }

    void drawLines(const std::vector<TracePlot::Line>& lines, const CurveStyle& style) {
        for (const TracePlot::Line& line : lines) {
            Curves(line.places, {}, frame_).drawLine(painter_, line.levels, style);
        }
    }

    double xOf(std::size_t point) const { return frame_.x(plot_.places[point]); }

    /// Puts the labels of the marks above the plot, in several rows where they would touch. None
    /// extends left of the plot, where the levels are labelled.
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
            const double highest = frame_.size().width() - 4.0 - width;
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
            labels_[i] =
                QRectF(left, frame_.top() + kLabelRow * static_cast<double>(row), width, kLabelRow);
        }
    }

    void mark(std::size_t index) {
        const TracePlot::Mark& mark = plot_.marks[index];
        const double at = xOf(mark.point);
        painter_.setPen(QPen(kMark, 1, Qt::DashLine));
        painter_.drawLine(QPointF(sharp(at), labels_[index].bottom()),
                          QPointF(sharp(at), frame_.area().bottom()));
        const double level = plot_.maximum[mark.point];
        if (frame_.shows(level)) {
            const QPointF tip(at, frame_.y(level) - 2);
            painter_.setPen(QPen(Qt::white, 1));
            painter_.setBrush(kMark);
            painter_.drawPolygon(QPolygonF({tip, tip + QPointF(-6, -10), tip + QPointF(6, -10)}));
        }
    }

    /// Drawn over the lines of the marks, which may cross a lower row of labels.
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
    std::vector<TracePlot::Line> limits_;
    std::vector<TracePlot::Line> mask_;
    PlotFrame frame_;
    std::vector<QRectF> labels_;     // in the order of the marks
    std::vector<double> labelRows_;  // where the last label of each row ends
};

}  // namespace

Drawing drawingOf(TracePlot plot) {
    Drawing drawing = {plot.shape.size, plot.title, {}};
    drawing.paint = [plot = std::move(plot)](QPainter& painter) {
        TraceDrawing(painter, plot).run();
    };
    return drawing;
}

}  // namespace rfu
