#include "analysis/plots/waterfall.h"

#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "analysis/plots/style.h"
#include "analysis/recordings/timeStamp.h"

namespace rfu {

namespace {

constexpr int kLeftRoom = 100;
constexpr int kTopRoom = 66;
constexpr int kBottomRoom = 58;
constexpr int kBeforeBar = 16;
constexpr int kBarWidth = 16;
constexpr int kLevelLabels = 64;   // columns right of the bar
constexpr int kLinearLabels = 96;  // the same with prefix and unit
// Rows held for each pixel of the height, so that merged rows are still less than a pixel high.
constexpr std::size_t kRowsPerPixel = 4;
constexpr double kPixelRounding = 1e-6;  // of a pixel

int pixelOf(double position) {
    return static_cast<int>(std::floor(position + kPixelRounding));
}

int bottomOf(const QRect& rectangle) {
    return rectangle.y() + rectangle.height();
}

QRect areaOf(QSize size, bool isLinear) {
    const int right = kBeforeBar + kBarWidth + (isLinear ? kLinearLabels : kLevelLabels);
    return {kLeftRoom, kTopRoom, size.width() - kLeftRoom - right,
            size.height() - kTopRoom - kBottomRoom};
}

/// A thin frame just outside the pixels.
void drawFrame(QPainter& painter, const QRect& pixels) {
    painter.setPen(QPen(kFrame, 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRectF(pixels).adjusted(-0.5, -0.5, 0.5, 0.5));
}

void drawTick(QPainter& painter, QPointF from, QPointF to) {
    painter.setPen(QPen(kFrame, 1));
    painter.drawLine(from, to);
    painter.setPen(kInk);
}

void drawPlaces(QPainter& painter, const WaterfallLayout& layout) {
    const double bottom = bottomOf(layout.area);
    const QFontMetricsF metrics(painter.font());
    for (const BandPanel& panel : layout.panels) {
        drawFrame(painter, QRect(panel.left, layout.area.top(), panel.right - panel.left,
                                 layout.area.height()));
    }
    for (const PlaceTick& tick : layout.places) {
        const double x = sharp(tick.at);
        drawTick(painter, {x, bottom}, {x, bottom + kTickLength});
        const double half = metrics.horizontalAdvance(tick.label) / 2 + 1;
        painter.drawText(QRectF(x - half, bottom + kTickLength + 1, 2 * half, 20),
                         Qt::AlignHCenter | Qt::AlignTop, tick.label);
    }
    painter.drawText(QRectF(layout.area.left(), bottom + 28, layout.area.width(), 22),
                     Qt::AlignCenter, layout.placeName);
}

void drawRows(QPainter& painter, const WaterfallLayout& layout) {
    const double left = layout.area.left();
    for (const TimeTick& tick : layout.rows) {
        const double y = sharp(tick.at);
        drawTick(painter, {left - kTickLength, y}, {left, y});
        const QRectF label(20, y - 10, left - kTickLength - 5 - 20, 20);
        painter.drawText(label, Qt::AlignRight | Qt::AlignVCenter | Qt::TextDontClip, tick.label);
        painter.drawText(label.translated(0, -16),
                         Qt::AlignRight | Qt::AlignVCenter | Qt::TextDontClip, tick.date);
    }
    painter.save();
    painter.translate(16, layout.area.center().y());
    painter.rotate(-90);
    painter.drawText(QRectF(-layout.area.height() / 2.0, -11, layout.area.height(), 22),
                     Qt::AlignCenter, layout.rowName);
    painter.restore();
}

void drawBar(QPainter& painter, const WaterfallLayout& layout, const Palette& palette,
             const QString& unit) {
    const QRect& bar = layout.bar;
    for (int y = 0; y < bar.height(); ++y) {
        const int entry = (bar.height() - 1 - y) * Palette::kEntries / bar.height();
        painter.fillRect(QRect(bar.left(), bar.top() + y, bar.width(), 1),
                         QColor(palette.color(entry)));
    }
    drawFrame(painter, bar);
    const double right = bar.left() + bar.width();
    for (const LevelTick& tick : layout.levels) {
        const double y = std::min(sharp(layout.barY(tick.level)), bottomOf(bar) - 0.5);
        drawTick(painter, {right, y}, {right + kTickLength, y});
        painter.drawText(QRectF(right + kTickLength + 4, y - 10, kLinearLabels, 20),
                         Qt::AlignLeft | Qt::AlignVCenter, tick.label);
    }
    painter.setPen(kInk);
    painter.drawText(QRectF(bar.left(), bar.top() - 24, kBarWidth + kLinearLabels, 20),
                     Qt::AlignLeft | Qt::AlignVCenter, unit);
}

}  // namespace

double WaterfallLayout::barY(double level) const {
    return bottomOf(bar) - (level - range.low) / (range.high - range.low) * bar.height();
}

Waterfall::Waterfall(WaterfallOptions options, const FrequencyAxis& axis, std::size_t points)
    : options_(std::move(options)),
      area_(areaOf(options_.size, options_.scale.isLinear())),
      panels_(axis, points, area_.left(), area_.left() + area_.width()),
      hasFrequencies_(!axis.points.empty()),
      rows_(WaterfallRows::make(options_.reduction, panels_.columns(),
                                kRowsPerPixel * static_cast<std::size_t>(area_.height()))),
      packed_(points) {}

void Waterfall::add(const Sweep& sweep) {
    packLevels(sweep.levels.data(), options_.colors.offsetsOrNull(), packed_.size(),
               packed_.data());
    histogram_.add(packed_.data(), packed_.size());
    hasTimes_ = !sweep.time.empty();
    const std::int64_t time = hasTimes_ ? microsecondsOf(sweep.time) : 0;
    rows_->add(isTrueToScale() ? time : sweeps_, time, packed_.data());
    ++sweeps_;
}

/// From where to where each row extends.
std::vector<Waterfall::RowSpan> Waterfall::rowSpans() const {
    std::vector<RowSpan> spans;
    double behind = static_cast<double>(sweeps_);
    if (isTrueToScale()) {
        // Where the clock was set back, a row begins where the one before ends.
        std::int64_t shift = -rows_->times().front();
        std::int64_t end = 0;
        for (const TimeSpan& time : spansOf(rows_->times())) {
            shift += std::max<std::int64_t>(end - (time.begin + shift), 0);
            end = time.end + shift;
            spans.push_back({static_cast<double>(time.begin + shift), static_cast<double>(end)});
        }
        behind = static_cast<double>(end);
    } else {
        for (std::size_t i = 0; i < rows_->size(); ++i) {
            const auto key = static_cast<double>(rows_->keys()[i]);
            spans.push_back({key, behind});
            if (i > 0) {
                spans[i - 1].bottom = key;
            }
        }
    }
    for (RowSpan& span : spans) {
        span.top = area_.top() + span.top / behind * area_.height();
        span.bottom = area_.top() + span.bottom / behind * area_.height();
    }
    return spans;
}

std::vector<TimeTick> Waterfall::rowTicks() const {
    if (!hasTimes_) {
        std::vector<TimeTick> ticks;
        const auto sweeps = static_cast<double>(sweeps_);
        const Axis axis(1.0, sweeps + 1.0, Axis::Ends::Exact, Axis::kPlaceDigits, 1.0,
                        verticalTicks(area_.height()));
        for (const double sweep : axis.ticks()) {
            if (sweep <= sweeps) {
                ticks.push_back(
                    {area_.top() + axis.position(sweep) * area_.height(), axis.label(sweep), {}});
            }
        }
        return ticks;
    }
    const std::vector<RowSpan> rows = rowSpans();
    const std::vector<TimeSpan> times = spansOf(rows_->times());
    std::vector<TimeStretch> stretches;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        // An axis to scale has the same scale within gaps.
        const bool goesOn = isTrueToScale() && i > 0 && times[i].begin >= times[i - 1].end;
        if (goesOn) {
            stretches.back().time.end = times[i].end;
            stretches.back().bottom = rows[i].bottom;
        } else {
            stretches.push_back({times[i], rows[i].top, rows[i].bottom});
        }
    }
    return timeTicks(stretches);
}

WaterfallLayout Waterfall::layout() const {
    WaterfallLayout layout;
    layout.area = area_;
    layout.panels = panels_.panels();
    layout.places = panels_.ticks();
    layout.placeName =
        hasFrequencies_ ? QStringLiteral("frequency in MHz") : QStringLiteral("point");
    layout.rows = rowTicks();
    layout.rowName = hasTimes_ ? QString() : QStringLiteral("sweep");
    layout.bar =
        QRect(area_.left() + area_.width() + kBeforeBar, area_.top(), kBarWidth, area_.height());
    layout.range = range();
    layout.levels = levelTicks(options_.scale, layout.range, verticalTicks(area_.height()));
    return layout;
}

/// Colours the panels. @return whether some of it stays transparent
bool Waterfall::paintCells(QImage& image) const {
    const LevelColors colors(*options_.colors.palette, range());
    const std::vector<RowSpan> spans = rowSpans();
    const int bottom = bottomOf(area_);
    const auto topOf = [&](std::size_t row) {
        return std::min(pixelOf(spans[row].top), bottom - 1);
    };
    const auto endOf = [&](std::size_t row) {
        return std::max(pixelOf(spans[row].bottom), topOf(row) + 1);
    };
    bool isTransparent = false;
    std::vector<QRgb> line(static_cast<std::size_t>(image.width()));
    std::size_t begin = 0;  // the rows that a pixel shows
    std::size_t end = 0;
    for (int y = area_.top(); y < bottom; ++y) {
        const auto before = std::make_pair(begin, end);
        while (begin < spans.size() && endOf(begin) <= y) {
            ++begin;
        }
        end = std::max(begin, end);
        while (end < spans.size() && topOf(end) <= y) {
            ++end;
        }
        if (before != std::make_pair(begin, end) || y == area_.top()) {
            fillLine(rows_->reduced(begin, end), colors, line);
        }
        auto* const pixels = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (const BandPanel& panel : panels_.panels()) {
            std::copy(line.begin() + panel.left, line.begin() + panel.right, pixels + panel.left);
            isTransparent =
                isTransparent || std::any_of(line.begin() + panel.left, line.begin() + panel.right,
                                             [](QRgb color) { return qAlpha(color) == 0; });
        }
    }
    return isTransparent;
}

void Waterfall::fillLine(const std::vector<PackedLevel>& levels, const LevelColors& colors,
                         std::vector<QRgb>& line) const {
    for (std::size_t i = 0; i < levels.size(); ++i) {
        std::fill(line.begin() + panels_.columns()[i].column, line.begin() + panels_.endOf(i),
                  colors.color(levels[i]));
    }
}

QImage Waterfall::draw(const std::string& title) const {
    QImage image(options_.size, QImage::Format_ARGB32);
    image.fill(kPaper);
    {
        const WaterfallLayout shown = layout();
        QPainter painter(&image);
        painter.setRenderHint(QPainter::TextAntialiasing);
        drawTitle(painter, QRectF(area_.left(), 14, options_.size.width() - area_.left() - 12, 28),
                  qtText(title));
        painter.setFont(fontOf(13));
        drawPlaces(painter, shown);
        drawRows(painter, shown);
        drawBar(painter, shown, *options_.colors.palette,
                QString::fromStdString(options_.scale.unit));
    }
    // Without transparent pixels the file is smaller, and written faster.
    if (!paintCells(image)) {
        image.reinterpretAsFormat(QImage::Format_RGB32);
    }
    return image;
}

}  // namespace rfu
