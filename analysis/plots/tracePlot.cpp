#include "analysis/plots/tracePlot.h"

#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <limits>

namespace rfu {

namespace {

constexpr QSize kSize(1280, 680);
constexpr double kLeft = 84.0;
constexpr double kRight = 28.0;
constexpr double kTop = 74.0;
constexpr double kBottom = 62.0;
constexpr double kLabelRow = 20.0;
constexpr double kTick = 5.0;
constexpr int kWantedTicks = 10;
constexpr double kDotRadius = 3.0;

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

/// The values along one axis, with the round numbers that are written beside it.
class Scale {
public:
    /// @param widen whether the ends move out to round numbers
    /// @param smallestStep from one round number to the next
    Scale(double low, double high, bool widen, double smallestStep = 0.0) : low_(low), high_(high) {
        if (!(high_ > low_)) {
            const double margin = std::max(std::abs(low_) * 0.01, 0.5);
            low_ -= margin;
            high_ += margin;
        }
        step_ = std::max(roundStep((high_ - low_) / kWantedTicks), smallestStep);
        if (widen) {
            low_ = std::floor(low_ / step_) * step_;
            high_ = std::ceil(high_ / step_) * step_;
        }
    }

    /// 0 at the low end, 1 at the high end.
    double part(double value) const { return (value - low_) / (high_ - low_); }

    std::vector<double> ticks() const {
        std::vector<double> result;
        // Rounding must not lose the tick at an end.
        const double slack = step_ * 1e-6;
        for (double i = std::ceil((low_ - slack) / step_); i * step_ <= high_ + slack; ++i) {
            result.push_back(i * step_);
        }
        return result;
    }

    QString label(double tick) const {
        // What is left of zero after a subtraction is no number to show.
        return QString::number(std::abs(tick) < step_ * 1e-6 ? 0.0 : tick, 'g', 7);
    }

private:
    /// The next of 1, 2, 5, 10, 20, ... that is not below a step.
    static double roundStep(double step) {
        const double decade = std::pow(10.0, std::floor(std::log10(step)));
        for (const double digit : {1.0, 2.0, 5.0}) {
            if (step <= digit * decade) {
                return digit * decade;
            }
        }
        return 10.0 * decade;
    }

    double low_;
    double high_;
    double step_;
};

Scale levelScale(const TracePlot& plot) {
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
    return low <= high ? Scale(low, high, true) : Scale(0.0, 1.0, true);
}

Scale placeScale(const TracePlot& plot) {
    return {plot.places.front(), plot.end, false, plot.isCounted ? 1.0 : 0.0};
}

class Drawing {
public:
    Drawing(QPainter& painter, const TracePlot& plot)
        : painter_(painter), plot_(plot), places_(placeScale(plot)), levels_(levelScale(plot)) {
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
    double x(std::size_t point) const {
        return kLeft + places_.part(plot_.places[point]) * (kSize.width() - kLeft - kRight);
    }
    double y(double level) const { return area_.bottom() - levels_.part(level) * area_.height(); }

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
        for (const double level : levels_.ticks()) {
            gridLine({area_.left(), sharp(y(level))}, {area_.right(), sharp(y(level))});
            painter_.drawText(QRectF(0, y(level) - 10, area_.left() - kTick - 5, 20),
                              Qt::AlignRight | Qt::AlignVCenter, levels_.label(level));
        }
        for (const double place : places_.ticks()) {
            const double at = area_.left() + places_.part(place) * area_.width();
            gridLine({sharp(at), area_.top()}, {sharp(at), area_.bottom()});
            painter_.drawText(QRectF(at - 60, area_.bottom() + kTick + 1, 120, 20),
                              Qt::AlignHCenter | Qt::AlignTop, places_.label(place));
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

    /// Calls use(first, end) with each run of points that were measured.
    template <typename Use>
    static void forEachRun(const std::vector<double>& levels, Use use) {
        for (std::size_t first = 0; first < levels.size();) {
            std::size_t end = first;
            while (end < levels.size() && std::isfinite(levels[end])) {
                ++end;
            }
            if (end > first) {
                use(first, end);
            }
            first = std::max(end, first + 1);
        }
    }

    void band() {
        painter_.setPen(Qt::NoPen);
        painter_.setBrush(kBand);
        forEachRun(plot_.maximum, [this](std::size_t first, std::size_t end) {
            QPolygonF outline;
            for (std::size_t i = first; i < end; ++i) {
                outline << QPointF(x(i), y(plot_.maximum[i]));
            }
            for (std::size_t i = end; i-- > first;) {
                outline << QPointF(x(i), y(plot_.minimum[i]));
            }
            painter_.drawPolygon(outline);
        });
    }

    void curve(const std::vector<double>& levels, const QColor& color, double width) {
        painter_.setPen(QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter_.setBrush(color);
        forEachRun(levels, [&](std::size_t first, std::size_t end) {
            QPolygonF line;
            for (std::size_t i = first; i < end; ++i) {
                line << QPointF(x(i), y(levels[i]));
            }
            if (line.size() == 1) {  // without neighbours, which a line needs
                painter_.drawEllipse(line.first(), kDotRadius, kDotRadius);
            } else {
                painter_.drawPolyline(line);
            }
        });
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
                std::min(std::max(kLeft, x(plot_.marks[i].point) - width / 2), highest);
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
        const double at = x(mark.point);
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
    Scale places_;
    Scale levels_;
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
