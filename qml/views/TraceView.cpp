#include "qml/views/TraceView.h"

#include <QQuickWindow>
#include <QSGImageNode>
#include <QSGRendererInterface>

#include <algorithm>
#include <cmath>
#include <mutex>
#include <utility>

#include "analysis/plots/decimation.h"
#include "analysis/plots/steadyRange.h"
#include "analysis/recordings/bins.h"
#include "analysis/units/unitNames.h"
#include "qml/support/files.h"
#include "qml/support/properties.h"

namespace rfu::qml {

namespace {

constexpr double kLowestLevel = -1000.0;  // dBm, that an axis may have
constexpr double kHighestLevel = 1000.0;
constexpr double kFewestDecibels = 1.0;  // on an axis

/// The nodes of a view, from back to front. A transform for the same reason as OverlayNode.
class TraceNode : public QSGTransformNode {
public:
    /// Behind the curves.
    void showPicture(QQuickWindow& window, const QImage& image, double ratio) {
        show(picture_, window, image, {0.0, 0.0}, ratio, nullptr);
    }

    void showCurves(QQuickWindow& window, const QImage& image, const QPointF& origin,
                    double ratio) {
        drop(bars_);
        show(curves_, window, image, origin, ratio, picture_);
    }

    void showBars(const std::vector<Bar>& bars, const QPointF& origin, double ratio) {
        drop(curves_);
        if (bars_ == nullptr) {
            bars_ = makeBarsNode();
            insertChildNodeAfter(bars_, picture_);
        }
        setBars(*bars_, bars, origin, ratio);
    }

    void showOverlay(QQuickWindow& window, const Overlay& overlay) {
        if (overlay_ == nullptr) {
            overlay_ = new OverlayNode;
            appendChildNode(overlay_);
        }
        overlay_->show(window, overlay);
    }

private:
    /// Shows an image in device pixels.
    void show(QSGImageNode*& node, QQuickWindow& window, const QImage& image, const QPointF& origin,
              double ratio, QSGNode* behind) {
        if (node == nullptr) {
            node = window.createImageNode();
            node->setOwnsTexture(true);
            node->setFiltering(QSGTexture::Nearest);
            behind == nullptr ? prependChildNode(node) : insertChildNodeAfter(node, behind);
        }
        const bool isOpaque = !image.hasAlphaChannel();
        node->setTexture(
            window.createTextureFromImage(image, isOpaque ? QQuickWindow::TextureIsOpaque
                                                          : QQuickWindow::TextureHasAlphaChannel));
        node->setSourceRect(image.rect());
        node->setRect(QRectF(origin, QSizeF(image.size()) / ratio));
    }

    template <typename Node>
    void drop(Node*& node) {
        if (node != nullptr) {
            removeChildNode(node);
            delete node;
            node = nullptr;
        }
    }

    QSGImageNode* picture_ = nullptr;
    QSGImageNode* curves_ = nullptr;
    QSGGeometryNode* bars_ = nullptr;
    OverlayNode* overlay_ = nullptr;
};

/// The range of all finite numbers, extended.
void extend(ValueRange& range, const std::vector<double>& levels,
            const std::vector<double>& offsets) {
    for (std::size_t i = 0; i < levels.size(); ++i) {
        const double level = offsets.empty() ? levels[i] : levels[i] + offsets[i];
        if (std::isfinite(level)) {
            range.low = std::fmin(range.low, level);
            range.high = std::fmax(range.high, level);
        }
    }
}

/// Without frequencies, the numbers of the points.
FrequencyAxis countedAxis(std::size_t points) {
    FrequencyAxis axis;
    for (std::size_t i = 0; i < points; ++i) {
        axis.points.push_back(static_cast<double>(i));
    }
    if (points > 0) {
        axis.bands.push_back({0, 0.0, static_cast<double>(points)});
    }
    return axis;
}

}  // namespace

double TraceView::PointScale::offsetAt(double frequency) const {
    // The correction of the antenna grows by 20 dB for each decade of the frequency.
    constexpr double kPerDecade = 20.0;
    return common.offsets.empty() || std::isnan(frequency)
               ? 0.0
               : kPerDecade * std::log10(frequency / common.antenna.center.value_or(frequency));
}

TraceView::TraceView()
    : newestColor_(0x1f, 0x6f, 0xc4),
      maximumColor_(0xc8, 0x3c, 0x2c),
      minimumColor_(0x2e, 0x8b, 0x57),
      averageColor_(0x8e, 0x4c, 0xb8),
      fillColor_(0x1f, 0x6f, 0xc4, 0x38),
      limitColor_(0x9c, 0x1c, 0x1c),
      reading_([this](std::shared_ptr<const LimitMask> mask, const QString& error) {
          if (mask == nullptr) {
              finishMask(Error, error);
          } else {
              holdMask(std::move(mask));
              finishMask(Ready, {});
          }
      }) {
    settling_.setSingleShot(true);
    settling_.setInterval(0);
    connect(&settling_, &QTimer::timeout, this, &TraceView::settle);
    for (const auto signal :
         {&TraceView::unitChanged, &TraceView::gainChanged, &TraceView::minLevelChanged,
          &TraceView::maxLevelChanged, &TraceView::showNewestChanged,
          &TraceView::showMaximumChanged, &TraceView::showMinimumChanged,
          &TraceView::showAverageChanged, &TraceView::showFillChanged, &TraceView::lineWidthChanged,
          &TraceView::newestColorChanged, &TraceView::maximumColorChanged,
          &TraceView::minimumColorChanged, &TraceView::averageColorChanged,
          &TraceView::fillColorChanged, &TraceView::limitColorChanged, &TraceView::limitChanged,
          &TraceView::judgedChanged}) {
        connect(this, signal, this, &TraceView::refresh);
    }
}

void TraceView::setMask(const QUrl& file) {
    if (assign(maskFile_, inPage(*this, file))) {
        readMask();
        Q_EMIT maskChanged();
    }
}

void TraceView::setMaskUnit(const QString& unit) {
    if (assign(maskUnit_, unit)) {
        readMask();
        Q_EMIT maskUnitChanged();
    }
}

void TraceView::readMask() {
    if (maskFile_.isEmpty()) {
        reading_.cancel();
        holdMask(nullptr);
        finishMask(Null, {});
        return;
    }
    reading_.start([file = maskFile_, name = maskUnit_](const std::atomic<bool>&) {
        const Unit* const unit = findUnit(name);
        if (unit == nullptr || !unit->canBeShown()) {
            throw InputError(QStringLiteral("maskUnit"),
                             rfu::quoted(name.toStdString()) + " is no unit for limits");
        }
        return readLimitMask(fileOf(file), unit->isLinear());
    });
    finishMask(Loading, {});
}

void TraceView::holdMask(std::shared_ptr<const LimitMask> mask) {
    mask_ = std::move(mask);
    refresh();
}

void TraceView::finishMask(Status status, const QString& error) {
    if (assign(error_, error)) {
        Q_EMIT errorStringChanged();
    }
    if (assign(status_, status)) {
        Q_EMIT statusChanged();
    }
}

double TraceView::levelAt(double y, double frequency) const {
    const QRectF area = plot();
    if (!(y >= area.top() && y <= area.bottom()) || area.isEmpty()) {
        return kNone;
    }
    const double part = (y - area.top()) / area.height();
    return levels_.high - part * (levels_.high - levels_.low) - scale_.offsetAt(frequency);
}

double TraceView::yOf(double level, double frequency) const {
    const QRectF area = plot();
    const double part =
        (levels_.high - level - scale_.offsetAt(frequency)) / (levels_.high - levels_.low);
    return area.isEmpty() ? kNone : area.top() + part * area.height();
}

double TraceView::levelAtPoint(const QPointF& point) const {
    return levelAt(point.y(), frequencyAlong(point.x()));
}

QVariantList TraceView::violations() const {
    QVariantList list;
    for (const Found& found : found_) {
        list.append(
            QVariantMap{{QStringLiteral("from"), found.from},
                        {QStringLiteral("to"), found.to},
                        {QStringLiteral("frequency"), found.frequency},
                        {QStringLiteral("level"), found.level},
                        {QStringLiteral("limit"),
                         found.isUpper ? found.level + found.margin : found.level - found.margin},
                        {QStringLiteral("margin"), found.margin},
                        {QStringLiteral("upper"), found.isUpper}});
    }
    return list;
}

void TraceView::refresh() {
    isStale_ = true;
    settleSoon();
    drawSoon();
}

void TraceView::noteOverlay() {
    settleSoon();
    drawSoon();
}

void TraceView::noteCleared() {
    automatic_.reset();
    shown_ = {};
    refresh();
}

/// Properties follow even where nothing is drawn, such as in a window that is not shown.
void TraceView::settleSoon() {
    if (isComponentComplete() && !settling_.isActive()) {
        settling_.start();
    }
}

/// Brings all properties up to date.
void TraceView::settle() {
    if (std::exchange(isStale_, false)) {
        isDrawn_ = false;
        readTrace();
        chooseScale();
        chooseLevels();
        judge();
        findVisible(devicePlot());
    }
    if (assign(cursorLevel_, levelAtCursor())) {
        Q_EMIT cursorLevelChanged();
    }
}

void TraceView::updatePolish() {
    settle();
    if (!std::exchange(isDrawn_, true)) {
        draw();
    }
    overlay_ = overlayNow();
}

bool TraceView::isShown(TraceModel::Series series) const {
    const bool isHold = series == TraceModel::Maximum || series == TraceModel::Minimum;
    const std::array<bool, kSeries> wanted = {showsNewest_, showsMaximum_, showsMinimum_,
                                              showsAverage_};
    return wanted[static_cast<std::size_t>(series)] || (isHold && showsFill_);
}

const std::vector<double>& TraceView::levelsOf(TraceModel::Series series) const {
    return shown_.levels[static_cast<std::size_t>(series)];
}

/// Copies what is shown of the trace, and as little as possible while its lock is held.
void TraceView::readTrace() {
    if (trace() == nullptr) {
        shown_ = {};
        return;
    }
    const auto isNeeded = [this](TraceModel::Series series) {
        const bool isJudged = judged_ == series && (mask_ != nullptr || !std::isnan(limit_));
        return isShown(series) || isJudged || series == TraceModel::Newest;
    };
    const auto shared = trace()->shared();
    const std::lock_guard lock(shared->mutex);
    const TraceHistory& history = shared->history;
    if (shown_.generation != history.generation() || shown_.places.size() != history.points()) {
        shown_.generation = history.generation();
        shown_.hasFrequencies = !history.axis().points.empty();
        shown_.axis = shown_.hasFrequencies ? history.axis() : countedAxis(history.points());
        shown_.places = shown_.axis.points;
        // The last bin of a hop may overlap the first of the next.
        for (std::size_t i = 1; i < shown_.places.size(); ++i) {
            shown_.places[i] = std::max(shown_.places[i], shown_.places[i - 1]);
        }
    }
    auto& [newest, maximum, minimum, average] = shown_.levels;
    newest = history.newest();
    if (isNeeded(TraceModel::Maximum)) {
        maximum = history.maximum();
    }
    if (isNeeded(TraceModel::Minimum)) {
        minimum = history.minimum();
    }
    if (isNeeded(TraceModel::Average)) {
        average = history.average();
    }
}

/// Finds the scale of a unit again unless it is the same.
void TraceView::arrange(PointScale& scale, const QString& name) const {
    const Unit* unit = findUnit(name);
    const bool hasField = shown_.hasFrequencies && shown_.axis.bands.back().high > 0.0;
    if (unit == nullptr || !unit->canBeShown() || !std::isfinite(gain_) ||
        (unit->needsAntenna() && !hasField)) {
        unit = findUnit(u"dBm");
    }
    const ScaleKey key = {unit, gain_, shown_.generation};
    if (scale.key.unit != key.unit || scale.key.gain != key.gain ||
        scale.key.generation != key.generation ||
        (unit->needsAntenna() && scale.common.offsets.size() != shown_.places.size())) {
        scale.key = key;
        scale.common = unitScaleOf(*unit, {std::nullopt, gain_},
                                   shown_.hasFrequencies ? shown_.axis : FrequencyAxis());
    }
}

void TraceView::chooseScale() {
    const Unit* const before = scale_.key.unit;
    arrange(scale_, unit_);
    if (before != scale_.key.unit) {
        automatic_.reset();
    }
    if (assign(shownUnit_, scale_.key.unit->name.toString())) {
        Q_EMIT shownUnitChanged();
    }
    if (mask_ != nullptr) {
        arrange(maskScale_, maskUnit_);
    }
}

void TraceView::chooseLevels() {
    ValueRange measured = {kNone, kNone};
    for (const TraceModel::Series series :
         {TraceModel::Newest, TraceModel::Maximum, TraceModel::Minimum, TraceModel::Average}) {
        if (isShown(series)) {
            extend(measured, levelsOf(series), scale_.common.offsets);
        }
    }
    if (!std::isnan(measured.low)) {
        const LevelScale& scale = scale_.common.scale;
        automatic_ = steadyRange(automatic_, measured, scale.isLinear() ? 0.0 : -scale.atZero);
    }
    LevelRange now = automatic_.value_or(LevelRange{-100.0, 0.0});
    now.low = std::clamp(std::isnan(minLevel_) ? now.low : minLevel_, kLowestLevel,
                         kHighestLevel - kFewestDecibels);
    now.high = std::clamp(std::isnan(maxLevel_) ? now.high : maxLevel_, now.low + kFewestDecibels,
                          kHighestLevel);
    const bool isOtherLow = assign(levels_.low, now.low);
    const bool isOtherHigh = assign(levels_.high, now.high);
    if (isOtherLow || isOtherHigh) {
        Q_EMIT shownLevelsChanged();
    }
}

/// @param scale of the unit of the limits; null for dBm
void TraceView::judge(std::vector<Found>& found, std::size_t& judged, const LimitMask& limits,
                      const PointScale* scale) const {
    std::vector<double> levels = levelsOf(judged_);
    double perDecade = 0.0;
    if (scale != nullptr) {
        perDecade = scale->common.scale.decibelsPerDecade;
        for (std::size_t i = 0; i < levels.size(); ++i) {
            levels[i] = scale->common.scale.shown(levels[i] + scale->offsetOf(i));
        }
    }
    const MaskResult result = rfu::judge(limits, shown_.axis, levels, perDecade);
    judged += result.judged;
    for (const Violation& violation : result.violations) {
        const std::vector<double>& points = shown_.axis.points;
        found.push_back({points[violation.first], points[violation.last], points[violation.worst],
                         levelsOf(judged_)[violation.worst], violation.margin, violation.isUpper});
    }
}

void TraceView::judge() {
    std::vector<Found> found;
    std::size_t judged = 0;
    if (mask_ != nullptr && shown_.hasFrequencies) {
        judge(found, judged, *mask_, &maskScale_);
    }
    if (!std::isnan(limit_) && !shown_.places.empty()) {
        LimitMask limits;
        limits.upper.add({shown_.axis.bands.front().low, limit_});
        limits.upper.add({shown_.axis.bands.back().high, limit_});
        judge(found, judged, limits, nullptr);
    }
    if (assign(found_, found)) {
        Q_EMIT violationsChanged();
    }
    if (assign(verdict_, judged == 0 ? None : found_.empty() ? Pass : Fail)) {
        Q_EMIT verdictChanged();
    }
}

void TraceView::draw() {
    const QRect plot = devicePlot();
    PlotFace face = faceNow();
    if (!(face == face_) || picture_.isNull()) {
        face_ = std::move(face);
        picture_ = plot.isEmpty() ? QImage() : pictureOf(face_);
        isPictureNew_ = true;
    }
    bars_.clear();
    if (!visible_.x.empty()) {
        appendCurves(plot);
        appendLimits(plot);
    }
    areBarsNew_ = true;
    if (needsImage()) {
        paintCurves(plot.size());
    }
}

PlotFace TraceView::faceNow() const {
    const double ratio = pixelRatio();
    const QSizeF size = QSizeF(width(), height()) * ratio;
    return {{font(), textColor(), gridColor(), backgroundColor(), ratio},
            QSize(static_cast<int>(std::ceil(size.width())),
                  static_cast<int>(std::ceil(size.height()))),
            plot(),
            zoom()->shown(),
            !shown_.hasFrequencies,
            levels_,
            scale_.common.scale};
}

void TraceView::findVisible(const QRect& plot) {
    visible_ = {};
    const ValueRange& range = zoom()->shown();
    if (plot.isEmpty() || std::isnan(range.low)) {
        return;
    }
    const std::vector<double>& places = shown_.places;
    const auto first = std::lower_bound(places.begin(), places.end(), range.low);
    const auto end = std::upper_bound(first, places.end(), range.high);
    const auto begin = first == places.begin() ? first : first - 1;
    const auto last = end == places.end() ? end : end + 1;
    visible_.first = static_cast<std::size_t>(begin - places.begin());
    const double perMegahertz = plot.width() / (range.high - range.low);
    for (auto place = begin; place != last; ++place) {
        visible_.x.push_back((*place - range.low) * perMegahertz);
    }
    visible_.columns = groupByColumn(visible_.x.data(), visible_.x.size());
    for (const std::size_t point : firstPointsOf(shown_.axis)) {
        if (point > visible_.first) {
            visible_.breaks.push_back(point - visible_.first);
        }
    }
}

void TraceView::appendCurves(const QRect& plot) {
    const int rows = plot.height();
    std::vector<ColumnRange> maximum;
    std::vector<ColumnRange> minimum;
    if (showsFill_ || showsMaximum_) {
        maximum = rangesOf(TraceModel::Maximum, plot);
    }
    if (showsFill_ || showsMinimum_) {
        minimum = rangesOf(TraceModel::Minimum, plot);
    }
    if (showsFill_) {
        std::vector<PixelSpan> spans;
        for (std::size_t i = 0; i < maximum.size(); ++i) {
            spans.push_back(fillBetween(maximum[i], minimum[i], rows));
        }
        appendBars(bars_, spans, qPremultiply(fillColor_.rgba()));
    }
    if (showsMinimum_) {
        appendLine(minimum, rows, minimumColor_);
    }
    if (showsMaximum_) {
        appendLine(maximum, rows, maximumColor_);
    }
    if (showsAverage_) {
        appendLine(rangesOf(TraceModel::Average, plot), rows, averageColor_);
    }
    if (showsNewest_) {
        appendLine(rangesOf(TraceModel::Newest, plot), rows, newestColor_);
    }
}

void TraceView::appendLimits(const QRect& plot) {
    if (mask_ != nullptr && shown_.hasFrequencies) {
        const LevelScale& scale = maskScale_.common.scale;
        for (const LimitLine* line : {&mask_->upper, &mask_->lower}) {
            const auto level = [&](double frequency) {
                const auto value = line->at(frequency);
                return value ? scale.dBm(*value) - maskScale_.offsetAt(frequency) : kNone;
            };
            appendLine(rangesOfLine(plot, level), plot.height(), limitColor_);
        }
    }
    if (!std::isnan(limit_)) {
        appendLine(rangesOfLine(plot, [this](double) { return limit_; }), plot.height(),
                   limitColor_);
    }
}

void TraceView::appendLine(const std::vector<ColumnRange>& ranges, int rows, const QColor& color) {
    std::vector<PixelSpan> spans;
    spans.reserve(ranges.size());
    for (const ColumnRange& range : ranges) {
        spans.push_back(strokeOf(range, rows, stroke()));
    }
    appendBars(bars_, spans, qPremultiply(color.rgba()));
}

std::vector<ColumnRange> TraceView::rangesOf(TraceModel::Series series, const QRect& plot) const {
    const std::vector<double>& levels = levelsOf(series);
    std::vector<double> y(visible_.x.size());
    for (std::size_t i = 0; i < y.size(); ++i) {
        const std::size_t point = visible_.first + i;
        y[i] = row(levels[point] + scale_.offsetOf(point), plot);
    }
    return columnRanges(visible_.x.data(), y.data(), visible_.columns, visible_.breaks,
                        plot.width(), stroke());
}

template <typename Level>
std::vector<ColumnRange> TraceView::rangesOfLine(const QRect& plot, Level level) const {
    const ValueRange& range = zoom()->shown();
    const auto columns = static_cast<std::size_t>(plot.width());
    std::vector<double> x(columns);
    std::vector<double> y(columns);
    for (std::size_t i = 0; i < columns; ++i) {
        x[i] = static_cast<double>(i) + 0.5;
        const double frequency = range.low + x[i] / plot.width() * (range.high - range.low);
        y[i] = row(level(frequency) + scale_.offsetAt(frequency), plot);
    }
    return columnRanges(x.data(), y.data(), groupByColumn(x.data(), columns), {}, plot.width(),
                        stroke());
}

/// @param level on the scale that all points share
/// @return its place from the upper edge of the plot, in device pixels
double TraceView::row(double level, const QRect& plot) const {
    return (levels_.high - level) / (levels_.high - levels_.low) * plot.height();
}

/// @return device pixels
int TraceView::stroke() const {
    constexpr double kThickest = 100.0;
    return static_cast<int>(std::lround(std::clamp(lineWidth_ * pixelRatio(), 1.0, kThickest)));
}

/// Whether the backend draws no geometry.
bool TraceView::needsImage() const {
    if (window() == nullptr) {
        return false;
    }
    const auto api = window()->rendererInterface()->graphicsApi();
    return api == QSGRendererInterface::Software || api == QSGRendererInterface::OpenVG;
}

/// Two images take turns, because the last one may still be shown.
void TraceView::paintCurves(const QSize& size) {
    curvesNow_ = 1 - curvesNow_;
    QImage& image = curves_[curvesNow_];
    if (image.size() != size) {
        image = QImage(size, QImage::Format_ARGB32_Premultiplied);
    }
    if (!image.isNull()) {
        image.fill(Qt::transparent);
        paintBars(image, bars_);
    }
}

double TraceView::levelAtCursor() const {
    const double cursor = zoom()->cursor();
    const QRect plot = devicePlot();
    if (plot.isEmpty() || !(cursor >= zoom()->low() && cursor <= zoom()->high())) {
        return kNone;
    }
    const std::vector<double>& levels = levelsOf(TraceModel::Newest);
    const double x = (cursor - zoom()->low()) / (zoom()->high() - zoom()->low()) * plot.width();
    const auto column = std::lower_bound(
        visible_.columns.begin(), visible_.columns.end(), static_cast<int>(x),
        [](const ColumnPoints& points, int wanted) { return points.column < wanted; });
    double level = kNone;
    if (column != visible_.columns.end() && column->column == static_cast<int>(x)) {
        for (std::size_t i = column->begin; i < column->end; ++i) {
            level = std::fmax(level, levels[visible_.first + i]);
        }
        return level;
    }
    const auto isInBand = [cursor](const FrequencyAxis::Band& band) {
        return cursor >= band.low && cursor <= band.high;
    };
    const auto& bands = shown_.axis.bands;
    if (std::none_of(bands.begin(), bands.end(), isInBand)) {
        return kNone;
    }
    const auto above = std::lower_bound(shown_.places.begin(), shown_.places.end(), cursor);
    const bool takesBelow =
        above == shown_.places.end() ||
        (above != shown_.places.begin() && cursor - *(above - 1) <= *above - cursor);
    return levels[static_cast<std::size_t>(above - shown_.places.begin()) - (takesBelow ? 1 : 0)];
}

Overlay TraceView::overlayNow() const {
    Overlay overlay;
    overlay.plot = plot();
    overlay.cursor = kNone;
    const double cursor = zoom()->cursor();
    if (cursor >= zoom()->low() && cursor <= zoom()->high()) {
        overlay.cursor = xOf(cursor);
    }
    overlay.cursorColor = cursorColor();
    for (const ShownMarker& marker : shownMarkers()) {
        overlay.markers.push_back(
            {marker.row, xOf(marker.frequency), yOf(marker.level, marker.frequency)});
    }
    overlay.markerColor = markerColor();
    overlay.font = font();
    overlay.ratio = pixelRatio();
    return overlay;
}

QSGNode* TraceView::updatePaintNode(QSGNode* old, UpdatePaintNodeData*) {
    auto* node = static_cast<TraceNode*>(old);
    const QImage& curves = curves_[curvesNow_];
    if (picture_.isNull() || (needsImage() && curves.isNull())) {
        delete node;
        return nullptr;
    }
    const bool isNew = node == nullptr;
    if (isNew) {
        node = new TraceNode;
    }
    const double ratio = face_.look.ratio;
    if (std::exchange(isPictureNew_, false) || isNew) {
        node->showPicture(*window(), picture_, ratio);
    }
    if (std::exchange(areBarsNew_, false) || isNew) {
        if (needsImage()) {
            node->showCurves(*window(), curves, face_.plot.topLeft(), ratio);
        } else {
            node->showBars(bars_, face_.plot.topLeft(), ratio);
        }
    }
    node->showOverlay(*window(), overlay_);
    return node;
}

}  // namespace rfu::qml
