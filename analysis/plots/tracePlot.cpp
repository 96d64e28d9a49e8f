#include "analysis/plots/tracePlot.h"

#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

#include "analysis/plots/axis.h"
#include "analysis/plots/decimation.h"

namespace rfu {

namespace {

constexpr QSize kSize(1280, 680);
constexpr double kLeft = 84.0;
constexpr double kRight = 28.0;
constexpr double kTop = 74.0;
constexpr double kBottom = 62.0;
constexpr double kLabelRow = 20.0;
constexpr double kTick = 5.0;
constexpr double kDotRadius = 3.0;
constexpr int kLevelDigits = 7;   // have room at the left
constexpr int kPlaceDigits = 12;  // have room between two ticks
// A pixel column with more points shows their range instead.
constexpr std::size_t kMaxPointsPerColumn = 2;

const QColor kPaper(0xfa, 0xfb, 0xfc);
const QColor kInk(0x2b, 0x33, 0x3d);
const QColor kFaint(0x6b, 0x75, 0x80);
const QColor kGrid(0xe2, 0xe6, 0xea);
const QColor kFrame(0xa9, 0xb2, 0xbb);
const QColor kMaximum(0xc8, 0x55, 0x3d);
const QColor kAverage(0x1f, 0x4e, 0x79);
const QColor kMinimum(0x4f, 0x9d, 0x8f);
const QColor kBand(0x1f, 0x4e, 0x79, 26);
const QColor kMark(0x7a, 0x3e, 0x9d);

QString text(const std::string& utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<int>(utf8.size()));
}

/// The middle of a pixel, where a thin upright or level line stays sharp.
double sharp(double position) {
    return std::floor(position) + 0.5;
}

QFont fontOf(int pixels, bool bold = false) {
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(pixels);
    font.setBold(bold);
    return font;
}

Axis levelAxis(const TracePlot& plot) {
    double low = std::numeric_limits<double>::infinity();
    double high = -low;
    for (const auto* curve : {&plot.maximum, &plot.minimum}) {
        for (const double level : *curve) {
            if (std::isfinite(level)) {
                low = std::min(low, level);
                high = std::max(high, level);
            }
        }
    }
    if (low > high) {  // nothing was measured
        low = 0.0;
        high = 1.0;
    }
    return {low, high, Axis::Ends::Rounded, kLevelDigits};
}

Axis placeAxis(const TracePlot& plot) {
    return {plot.places.front(), plot.end, Axis::Ends::Exact, kPlaceDigits,
            plot.isCounted ? 1.0 : 0.0};
}

class Drawing {
public:
    Drawing(QPainter& painter, const TracePlot& plot)
        : painter_(painter), plot_(plot), places_(placeAxis(plot)), levels_(levelAxis(plot)) {
        for (const double place : plot.places) {
            x_.push_back(kLeft + places_.position(place) * (kSize.width() - kLeft - kRight));
        }
        columns_ = groupByColumn(x_.data(), x_.size());
        arrangeLabels();
        const double top = kTop + kLabelRow * static_cast<double>(labelRows_.size());
        area_ = QRectF(kLeft, top, kSize.width() - kLeft - kRight, kSize.height() - top - kBottom);
    }

    void run() {
        title();
        legend();
        axes();
        painter_.save();
        painter_.setClipRect(
            area_.adjusted(-kDotRadius - 1, -kDotRadius - 1, kDotRadius + 1, kDotRadius + 1));
        band();
        curve(plot_.minimum, kMinimum, 1.2);
        curve(plot_.maximum, kMaximum, 1.2);
        curve(plot_.average, kAverage, 1.8);
        painter_.restore();
        for (std::size_t i = 0; i < plot_.marks.size(); ++i) {
            mark(i);
        }
        markLabels();
    }

private:
    double y(double level) const {
        return area_.bottom() - levels_.position(level) * area_.height();
    }

    void title() {
        painter_.setPen(kInk);
        painter_.setFont(fontOf(19, true));
        const QRectF line(kLeft, 14, kSize.width() - kLeft - kRight, 28);
        const QFontMetricsF metrics(painter_.font());
        painter_.drawText(line, Qt::AlignLeft | Qt::AlignVCenter,
                          metrics.elidedText(text(plot_.title), Qt::ElideMiddle, line.width()));
    }

    void legend() {
        struct Entry {
            const char* name;
            QColor color;
            double width;
        };
        const Entry entries[] = {
            {"maximum", kMaximum, 1.2}, {"average", kAverage, 1.8}, {"minimum", kMinimum, 1.2}};
        painter_.setFont(fontOf(13));
        const QFontMetricsF metrics(painter_.font());
        double left = kLeft;
        for (const Entry& entry : entries) {
            painter_.setPen(QPen(entry.color, entry.width + 1.0));
            painter_.drawLine(QPointF(left, 56), QPointF(left + 26, 56));
            painter_.setPen(kInk);
            const QString name = QString::fromUtf8(entry.name);
            painter_.drawText(QPointF(left + 33, 56 + metrics.capHeight() / 2), name);
            left += 33 + metrics.horizontalAdvance(name) + 28;
        }
    }

    void axes() {
        painter_.fillRect(area_, Qt::white);
        painter_.setFont(fontOf(13));
        const QFontMetricsF metrics(painter_.font());
        for (const double level : levels_.ticks()) {
            gridLine({area_.left(), sharp(y(level))}, {area_.right(), sharp(y(level))});
            painter_.drawText(QRectF(0, y(level) - 10, area_.left() - kTick - 5, 20),
                              Qt::AlignRight | Qt::AlignVCenter, levels_.label(level));
        }
        for (const double place : places_.ticks()) {
            const double at = area_.left() + places_.position(place) * area_.width();
            gridLine({sharp(at), area_.top()}, {sharp(at), area_.bottom()});
            const QString label = places_.label(place);
            const double mostRight = kSize.width() - 4 - metrics.horizontalAdvance(label) / 2;
            painter_.drawText(
                QRectF(std::min(at, mostRight) - 60, area_.bottom() + kTick + 1, 120, 20),
                Qt::AlignHCenter | Qt::AlignTop, label);
        }
        painter_.setPen(QPen(kFrame, 1));
        painter_.setBrush(Qt::NoBrush);
        painter_.drawRect(area_);

        painter_.setPen(kInk);
        painter_.drawText(QRectF(area_.left(), kSize.height() - 32, area_.width(), 22),
                          Qt::AlignCenter, text(plot_.placeName));
        painter_.save();
        painter_.translate(20, area_.center().y());
        painter_.rotate(-90);
        painter_.drawText(QRectF(-area_.height() / 2, -11, area_.height(), 22), Qt::AlignCenter,
                          QStringLiteral("level in ") + text(plot_.levelUnit));
        painter_.restore();
    }

    void gridLine(QPointF from, QPointF to) {
        painter_.setPen(QPen(kGrid, 1));
        painter_.drawLine(from, to);
        painter_.setPen(kFaint);
    }

    static bool isCrowded(const ColumnValues& column) {
        return column.measured > kMaxPointsPerColumn;
    }
    double middleOf(std::size_t column) const { return columns_[column].column + 0.5; }

    void appendPoints(QPolygonF& line, const std::vector<double>& levels,
                      std::size_t column) const {
        for (std::size_t i = columns_[column].begin; i < columns_[column].end; ++i) {
            if (std::isfinite(levels[i])) {
                line << QPointF(x_[i], y(levels[i]));
            }
        }
    }

    /// Calls use(first, end) with each run of columns that a line joins.
    template <typename Use>
    static void forEachRun(const std::vector<ColumnValues>& columns, Use use) {
        for (std::size_t first = 0; first < columns.size();) {
            std::size_t end = first + 1;
            while (end < columns.size() && columns[end].isJoined) {
                ++end;
            }
            use(first, end);
            first = end;
        }
    }

    void band() {
        painter_.setPen(Qt::NoPen);
        painter_.setBrush(kBand);
        const auto maxima = decimate(plot_.maximum.data(), columns_, plot_.breaks);
        const auto minima = decimate(plot_.minimum.data(), columns_, plot_.breaks);
        forEachRun(maxima, [&](std::size_t first, std::size_t end) {
            QPolygonF upper;
            QPolygonF lower;
            for (std::size_t i = first; i < end; ++i) {
                if (isCrowded(maxima[i])) {
                    upper << QPointF(middleOf(i), y(maxima[i].maximum));
                    lower << QPointF(middleOf(i), y(minima[i].minimum));
                } else {
                    appendPoints(upper, plot_.maximum, i);
                    appendPoints(lower, plot_.minimum, i);
                }
            }
            std::reverse_copy(lower.begin(), lower.end(), std::back_inserter(upper));
            painter_.drawPolygon(upper);
        });
    }

    void curve(const std::vector<double>& levels, const QColor& color, double width) {
        painter_.setPen(QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter_.setBrush(color);
        const auto columns = decimate(levels.data(), columns_, plot_.breaks);
        QVector<QLineF> strokes;
        forEachRun(columns, [&](std::size_t first, std::size_t end) {
            if (end - first == 1 && columns[first].minimum == columns[first].maximum) {
                QPolygonF dot;  // without neighbours, which a line needs
                appendPoints(dot, levels, first);
                painter_.drawEllipse(dot.first(), kDotRadius, kDotRadius);
            } else {
                drawRun(levels, columns, first, end, strokes);
            }
        });
        painter_.setPen(QPen(color, width, Qt::SolidLine, Qt::SquareCap));
        painter_.drawLines(strokes);
    }

    /// Draws lines between the columns with few points and collects those of the crowded ones,
    /// which are drawn one by one: the cost of a long line grows with the square of its crossings.
    void drawRun(const std::vector<double>& levels, const std::vector<ColumnValues>& columns,
                 std::size_t first, std::size_t end, QVector<QLineF>& strokes) {
        QPolygonF line;
        for (std::size_t i = first; i < end; ++i) {
            if (!isCrowded(columns[i])) {
                appendPoints(line, levels, i);
                continue;
            }
            const double x = middleOf(i);
            line << QPointF(x, y(columns[i].first));
            if (line.size() == 2) {
                strokes << QLineF(line[0], line[1]);
            } else {
                painter_.drawPolyline(line);
            }
            strokes << QLineF(x, y(columns[i].minimum), x, y(columns[i].maximum));
            line = QPolygonF({QPointF(x, y(columns[i].last))});
        }
        painter_.drawPolyline(line);
    }

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
            const double width = metrics.horizontalAdvance(text(plot_.marks[i].label)) + 4.0;
            const double highest = kSize.width() - 4.0 - width;
            const double left =
                std::min(std::max(kLeft, x_[plot_.marks[i].point] - width / 2), highest);
            std::size_t row = 0;
            while (row < labelRows_.size() && labelRows_[row] + 8.0 > left) {
                ++row;
            }
            if (row == labelRows_.size()) {
                labelRows_.push_back(0.0);
            }
            labelRows_[row] = left + width;
            labels_[i] =
                QRectF(left, kTop + kLabelRow * static_cast<double>(row), width, kLabelRow);
        }
    }

    void mark(std::size_t index) {
        const TracePlot::Mark& mark = plot_.marks[index];
        const double at = x_[mark.point];
        painter_.setPen(QPen(kMark, 1, Qt::DashLine));
        painter_.drawLine(QPointF(sharp(at), labels_[index].bottom()),
                          QPointF(sharp(at), area_.bottom()));
        const double level = plot_.maximum[mark.point];
        if (std::isfinite(level)) {
            const QPointF tip(at, y(level) - 2);
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
            painter_.drawText(labels_[i], Qt::AlignCenter, text(plot_.marks[i].label));
        }
    }

    QPainter& painter_;
    const TracePlot& plot_;
    Axis places_;
    Axis levels_;
    std::vector<double> x_;  // of each point
    std::vector<ColumnPoints> columns_;
    std::vector<QRectF> labels_;     // in the order of the marks
    std::vector<double> labelRows_;  // where the last label of each row ends
    QRectF area_;
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
