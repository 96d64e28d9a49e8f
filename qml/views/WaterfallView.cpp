#include "qml/views/WaterfallView.h"

#include <rfUtils/detail/saturate.h>

#include <QQuickWindow>

#include <algorithm>
#include <cmath>
#include <mutex>

#include "analysis/plots/timeAxis.h"
#include "analysis/plots/viewColumns.h"
#include "analysis/recordings/sweepSpans.h"
#include "analysis/recordings/timeStamp.h"
#include "qml/support/properties.h"

namespace rfu::qml {

namespace {

constexpr int kHighestRow = 64;          // pixels
constexpr double kMostLevel = 1000.0;    // dBm, of the ends of a range
constexpr double kLabelDistance = 50.0;  // pixels between numbers of rows
constexpr int kMicrosecondDigits = 6;

const Palette& paletteNamed(const QString& name) {
    const Palette* const found = findPalette(name.toStdString());
    return found == nullptr ? kPalettes[0] : *found;
}

/// An end of a range that a page wants.
double endOfRange(double level) {
    return std::isfinite(level) ? std::clamp(level, -kMostLevel, kMostLevel)
                                : std::numeric_limits<double>::quiet_NaN();
}

double dBmOf(PackedLevel level) {
    return level == kNotMeasured ? std::numeric_limits<double>::quiet_NaN() : unpacked(level);
}

int toCount(std::uint64_t count) {
    return static_cast<int>(std::min<std::uint64_t>(count, std::numeric_limits<int>::max()));
}

/// The smallest of 1, 2, 5, 10, 20, ... that is not below a number of rows.
int roundStep(double rows) {
    int power = 1;
    while (true) {
        for (const int factor : {1, 2, 5}) {
            if (factor * power >= rows) {
                return factor * power;
            }
        }
        power *= 10;
    }
}

}  // namespace

WaterfallView::WaterfallView() : palette_(QString::fromLatin1(kPalettes[0].name)) {}

QStringList WaterfallView::palettes() {
    QStringList names;
    for (const Palette& palette : kPalettes) {
        names.append(QString::fromLatin1(palette.name));
    }
    return names;
}

void WaterfallView::setPalette(const QString& palette) {
    if (assign(palette_, palette)) {
        isColoured_ = false;
        refresh();
        Q_EMIT paletteChanged();
    }
}

void WaterfallView::setMinLevel(double level) {
    if (assign(minLevel_, endOfRange(level))) {
        newRows_ = rowsBeforeRange_;
        chooseRange();
        refresh();
        Q_EMIT minLevelChanged();
    }
}

void WaterfallView::setMaxLevel(double level) {
    if (assign(maxLevel_, endOfRange(level))) {
        newRows_ = rowsBeforeRange_;
        chooseRange();
        refresh();
        Q_EMIT maxLevelChanged();
    }
}

void WaterfallView::autoRange() {
    takeRows();
    const LevelHistogram levels = strips_.histogram();
    if (levels.measured() > 0) {
        const LevelRange usual = usualRange(levels);
        setMinLevel(std::floor(usual.low));
        setMaxLevel(std::ceil(usual.high));
    }
}

void WaterfallView::setPaused(bool isPaused) {
    if (assign(isPaused_, isPaused)) {
        Q_EMIT pausedChanged();
        if (!isPaused_) {
            moveTo(0);
        }
    }
}

void WaterfallView::setScroll(int scroll) {
    newRows_ = rowsBeforeRange_;
    moveTo(std::clamp(scroll, 0, std::max(toCount(counts_.kept) - 1, 0)));
}

/// Shows the rows up to one that has so many newer ones.
void WaterfallView::moveTo(int scroll) {
    end_ = counts_.rows - static_cast<std::uint64_t>(scroll);
    refresh();
    if (assign(scroll_, scroll)) {
        Q_EMIT scrollChanged();
    }
}

void WaterfallView::setRowHeight(int height) {
    if (assign(rowHeight_, std::clamp(height, 1, kHighestRow))) {
        refresh();
        Q_EMIT rowHeightChanged();
    }
}

// Places ---------------------------------------------------------------------------------------------

/// Whole pixels, so that no row looks higher than another.
int WaterfallView::deviceRowHeight() const {
    return std::max(detail::toInt32(std::round(rowHeight_ * pixelRatio())), 1);
}

/// The lowest one may be cut.
int WaterfallView::rowsOfPlot() const {
    const int height = deviceRowHeight();
    return (devicePlot().height() + height - 1) / height;
}

/// Rows that the trace keeps no longer are shown only if they are to stay.
WaterfallView::Rows WaterfallView::shownRows() const {
    const auto rows = static_cast<std::uint64_t>(rowsOfPlot());
    const std::uint64_t oldest = isHeld() ? 0 : counts_.rows - counts_.kept;
    return {std::max(end_ - std::min(end_, rows), std::min(oldest, end_)), end_};
}

std::optional<std::uint64_t> WaterfallView::rowThere(double y) const {
    const QRectF area = plot();
    if (!(y >= area.top() && y < area.bottom())) {
        return std::nullopt;
    }
    const auto below =
        static_cast<std::uint64_t>((y - area.top()) * pixelRatio() / deviceRowHeight());
    const Rows rows = shownRows();
    const bool isShown = below < rows.end - rows.first && strips_.hasRow(rows.end - 1 - below);
    return isShown ? std::optional(rows.end - 1 - below) : std::nullopt;
}

int WaterfallView::rowAt(double y) const {
    const auto row = rowThere(y);
    return row ? toCount(counts_.rows - 1 - *row) : -1;
}

QString WaterfallView::timeAt(double y) const {
    const auto row = rowThere(y);
    return row ? timeOf(*row) : QString();
}

QString WaterfallView::timeOf(std::uint64_t row) const {
    const std::int64_t time = strips_.time(row);
    if (time == TraceHistory::kNoTime) {
        return {};
    }
    int decimals = kMicrosecondDigits;
    for (std::int64_t rest = time; decimals > 0 && rest % 10 == 0; rest /= 10) {
        --decimals;
    }
    return QString::fromStdString(dateText(time) + " " + timeText(time, decimals));
}

double WaterfallView::levelAt(double x, double y) const {
    const QRectF area = plot();
    const auto row = rowThere(y);
    if (!row || !(x >= area.left() && x < area.right())) {
        return kNone;
    }
    return dBmOf(strips_.level(*row, static_cast<int>((x - area.left()) * pixelRatio())));
}

// Rows -----------------------------------------------------------------------------------------------

void WaterfallView::noteTraces() {
    look();
}

void WaterfallView::noteCleared() {
    look();
}

/// Learns what the history holds now.
void WaterfallView::look() {
    TraceModel* const model = trace();
    Counts now;
    if (model != nullptr) {
        const auto shared = model->shared();
        const std::lock_guard lock(shared->mutex);
        const TraceHistory& history = shared->history;
        now = {history.generation(), history.count(), history.size(), history.points()};
    }
    // A trace that has more points keeps its rows.
    const bool hasGrown = now.points > counts_.points && now.rows >= counts_.rows;
    const bool isOther = model != lookedAt_ || (now.generation != counts_.generation && !hasGrown);
    const std::uint64_t rowsBefore = isOther ? 0 : counts_.rows;
    const bool hadRows = counts_.rows > 0;
    counts_ = now;
    lookedAt_ = model;
    if (isOther) {
        restart(hadRows);
    }
    newRows_ += now.rows - std::min(now.rows, rowsBefore);
    moveTo(isHeld() ? toCount(counts_.rows - end_) : 0);
}

void WaterfallView::restart(bool hadRows) {
    reduction_ = {};
    strips_.clear();
    steady_.reset();
    rowsBeforeRange_ = 1;
    newRows_ = 0;
    end_ = counts_.rows;
    if (hadRows) {
        setPaused(false);
        moveTo(0);
    }
}

void WaterfallView::takeRows() {
    TraceModel* const model = trace();
    const ValueRange& shown = zoom()->shown();
    if (model == nullptr || devicePlot().isEmpty() || !(shown.low < shown.high)) {
        strips_.clear();
        return;
    }
    const auto shared = model->shared();
    const std::lock_guard lock(shared->mutex);
    // Else the next look() is still to come.
    if (shared->history.generation() == counts_.generation) {
        reduceRows(shared->history);
    }
}

void WaterfallView::reduceRows(const TraceHistory& history) {
    const ValueRange& shown = zoom()->shown();
    const int width = devicePlot().width();
    if (reduction_.generation != counts_.generation || reduction_.shown.low != shown.low ||
        reduction_.shown.high != shown.high || reduction_.width != width) {
        reduction_ = {counts_.generation, shown, width};
        strips_.setColumns(columnsOfView(history.axis(), history.points(), shown, width), width);
        newRows_ = rowsBeforeRange_;
    }
    const Rows rows = shownRows();
    if (rows.first == rows.end) {
        strips_.clear();
        return;
    }
    strips_.keepOnly(rows.first, rows.end - 1);
    const std::uint64_t oldest = history.count() - history.size();
    for (std::uint64_t row = std::max(rows.first, oldest);
         row < std::min(rows.end, history.count()); ++row) {
        if (!strips_.hasRow(row)) {
            const auto kept = static_cast<std::size_t>(row - oldest);
            history.copyRow(kept, row_);
            strips_.setRow(row, history.time(kept), row_.data());
        }
    }
}

// Colours --------------------------------------------------------------------------------------------

/// The levels are looked at when their number has doubled, and later for each strip: the colours of the rows
/// before change as seldom as possible.
void WaterfallView::chooseRange() {
    const bool isAutomatic = std::isnan(minLevel_) || std::isnan(maxLevel_);
    if (isAutomatic && newRows_ >= rowsBeforeRange_) {
        const LevelHistogram levels = strips_.histogram();
        newRows_ = 0;
        if (levels.measured() > 0) {
            steady_ = steadyColors(steady_, usualRange(levels));
            rowsBeforeRange_ =
                std::min<std::uint64_t>(2 * rowsBeforeRange_, WaterfallStrips::kRowsOfStrip);
        }
    }
    const LevelRange automatic = steady_.value_or(LevelRange{kNone, kNone});
    const bool isLowest = assign(range_.low, std::isnan(minLevel_) ? automatic.low : minLevel_);
    const bool isHighest = assign(range_.high, std::isnan(maxLevel_) ? automatic.high : maxLevel_);
    if (isLowest || isHighest) {
        isColoured_ = false;
    }
    if (isLowest) {
        Q_EMIT lowestLevelChanged();
    }
    if (isHighest) {
        Q_EMIT highestLevelChanged();
    }
}

const LevelColors& WaterfallView::colors() {
    if (!isColoured_ && !std::isnan(range_.low) && !std::isnan(range_.high)) {
        isColoured_ = true;
        strips_.setColors(paletteNamed(palette_), range_);
    }
    return strips_.colors();
}

QColor WaterfallView::levelColor(double level) {
    PackedLevel packed = kNotMeasured;
    packLevels(&level, nullptr, 1, &packed);
    return QColor::fromRgba(colors().color(packed));
}

// Labels and cursor ----------------------------------------------------------------------------------

std::vector<RowLabel> WaterfallView::timeLabels() const {
    const Rows rows = shownRows();
    const double bottom = plot().bottom();
    const double height = deviceRowHeight() / pixelRatio();
    std::vector<std::int64_t> times;
    std::vector<double> bottoms;  // of the rows
    for (std::uint64_t row = rows.first; row < rows.end; ++row) {
        if (strips_.hasRow(row)) {
            times.push_back(strips_.time(row));
            bottoms.push_back(plot().top() + static_cast<double>(rows.end - row) * height);
        }
    }
    if (times.empty() || std::count(times.begin(), times.end(), TraceHistory::kNoTime) > 0) {
        return {};
    }
    // Upwards, as time goes.
    std::vector<TimeStretch> stretches;
    const std::vector<TimeSpan> spans = spansOf(times);
    for (std::size_t i = 0; i < spans.size(); ++i) {
        stretches.push_back({spans[i], bottom - bottoms[i], bottom - bottoms[i] + height});
    }
    std::vector<RowLabel> labels;
    for (const TimeTick& tick : timeTicks(stretches)) {
        labels.push_back({bottom - tick.at, tick.label, tick.date});
    }
    return labels;
}

/// How many rows are newer, where there are no times.
std::vector<RowLabel> WaterfallView::numberLabels() const {
    const double height = deviceRowHeight() / pixelRatio();
    const auto step = static_cast<std::uint64_t>(roundStep(kLabelDistance / height));
    const Rows rows = shownRows();
    std::vector<RowLabel> labels;
    for (std::uint64_t row = rows.end; row > rows.first; --row) {
        const std::uint64_t newer = counts_.rows - row;
        if (newer % step == 0 && strips_.hasRow(row - 1)) {
            labels.push_back({plot().top() + static_cast<double>(rows.end - row) * height,
                              QString::number(newer),
                              {}});
        }
    }
    return labels;
}

void WaterfallView::writeLabels() {
    std::vector<RowLabel> labels = timeLabels();
    if (labels.empty()) {
        labels = numberLabels();
    }
    labels_.show(labels, {font(), textColor(), {plot().left(), height()}, pixelRatio()});
}

std::vector<WaterfallNode::Line> WaterfallView::lines() const {
    std::vector<WaterfallNode::Line> lines;
    const QRectF area = plot();
    const double width = std::max(std::round(pixelRatio()), 1.0) / pixelRatio();
    const auto add = [&](double frequency, const QColor& color) {
        const double x = std::floor(xOf(frequency) * pixelRatio()) / pixelRatio();
        if (x >= area.left() && x < area.right()) {
            lines.push_back({{x, area.top(), width, area.height()}, color});
        }
    };
    for (const ShownMarker& marker : shownMarkers()) {
        add(marker.frequency, markerColor());
    }
    add(zoom()->cursor(), cursorColor());
    return lines;
}

void WaterfallView::moveCursor(const std::optional<QPointF>& point) {
    pointer_ = point && plot().contains(*point) ? point : std::nullopt;
    tellCursor();
}

void WaterfallView::tellCursor() {
    const bool isTime = assign(cursorTime_, pointer_ ? timeAt(pointer_->y()) : QString());
    if (assign(cursorLevel_, pointer_ ? levelAt(pointer_->x(), pointer_->y()) : kNone)) {
        Q_EMIT cursorLevelChanged();
    }
    if (isTime) {
        Q_EMIT cursorTimeChanged();
    }
}

// Frames ---------------------------------------------------------------------------------------------

void WaterfallView::updatePolish() {
    takeRows();
    chooseRange();
    colors();
    writeLabels();
    tellCursor();
}

std::vector<WaterfallNode::Strip> WaterfallView::placedStrips() const {
    std::vector<WaterfallNode::Strip> placed;
    const Rows rows = shownRows();
    const QRectF area = plot();
    const double height = deviceRowHeight() / pixelRatio();
    for (const std::uint64_t strip : strips_.strips()) {
        const std::uint64_t first = strip * WaterfallStrips::kRowsOfStrip;
        const std::uint64_t begin = std::max(rows.first, first);
        const std::uint64_t end = std::min(rows.end, first + WaterfallStrips::kRowsOfStrip);
        if (begin < end) {
            const double top = area.top() + static_cast<double>(rows.end - end) * height;
            const double bottom =
                std::min(top + static_cast<double>(end - begin) * height, area.bottom());
            placed.push_back({strip,
                              strips_.revision(strip),
                              {area.left(), top, area.width(), bottom - top},
                              {0.0, static_cast<double>(WaterfallStrips::lineOf(end - 1)),
                               static_cast<double>(strips_.width()), (bottom - top) / height}});
        }
    }
    return placed;
}

QSGNode* WaterfallView::updatePaintNode(QSGNode* node, UpdatePaintNodeData*) {
    auto* const shown =
        node == nullptr ? new WaterfallNode(*window()) : static_cast<WaterfallNode*>(node);
    shown->showBackground(boundingRect(), backgroundColor());
    shown->showStrips(placedStrips(),
                      [this](std::uint64_t strip) { return strips_.picture(strip); });
    shown->showLines(lines());
    shown->showLabels(labels_.picture(), labels_.revision());
    return shown;
}

// Input ----------------------------------------------------------------------------------------------

void WaterfallView::mousePressEvent(QMouseEvent* event) {
    SpectrumItem::mousePressEvent(event);
    moveCursor(qt::mousePoint(*event));
}

void WaterfallView::mouseMoveEvent(QMouseEvent* event) {
    SpectrumItem::mouseMoveEvent(event);
    moveCursor(qt::mousePoint(*event));
}

void WaterfallView::hoverEnterEvent(QHoverEvent* event) {
    SpectrumItem::hoverEnterEvent(event);
    moveCursor(qt::hoverPoint(*event));
}

void WaterfallView::hoverMoveEvent(QHoverEvent* event) {
    SpectrumItem::hoverMoveEvent(event);
    moveCursor(qt::hoverPoint(*event));
}

void WaterfallView::hoverLeaveEvent(QHoverEvent* event) {
    SpectrumItem::hoverLeaveEvent(event);
    moveCursor(std::nullopt);
}

void WaterfallView::keyPressEvent(QKeyEvent* event) {
    const int page = std::max(rowsOfPlot() - 1, 1);
    if (isInteractive() && event->key() == Qt::Key_PageDown) {
        setScroll(scroll_ + std::min(page, std::numeric_limits<int>::max() - scroll_));
    } else if (isInteractive() && event->key() == Qt::Key_PageUp) {
        setScroll(scroll_ - page);
    } else {
        SpectrumItem::keyPressEvent(event);
    }
}

}  // namespace rfu::qml
