#include "analysis/plots/profilePlot.h"

#include <QFontMetricsF>
#include <algorithm>
#include <cmath>
#include <utility>

#include "analysis/plots/axis.h"
#include "analysis/plots/curves.h"
#include "analysis/plots/style.h"

namespace rfu {

namespace {

constexpr double kMarkRow = 20.0;
constexpr int kZonePoints = 500;
constexpr int kHeightDigits = 7;
constexpr int kDistanceDigits = 10;
constexpr double kHalfTurn = 3.14159265358979323846;

const CurveStyle kGround = {"terrain with the Earth's bulge", QColor(0x6f, 0x5a, 0x3c), 1.6};
const CurveStyle kSight = {"line of sight", QColor(0xc8, 0x55, 0x3d), 1.6};
const CurveStyle kZone = {"first Fresnel zone", QColor(0x1f, 0x4e, 0x79), 1.2};
const CurveStyle kClear = {"0.6 of it", QColor(0x1f, 0x4e, 0x79), 1.2, Qt::DashLine};
const QColor kGroundFill(0xd9, 0xcd, 0xb8);
const QColor kZoneFill(0x1f, 0x4e, 0x79, 32);
const QColor kMast(0x2b, 0x33, 0x3d);
const QColor kLeast(0x7a, 0x3e, 0x9d);

/// The line of sight and the first Fresnel zone around it. The points lie closer together towards the
/// ends, where the radius changes fast.
struct Zone {
    explicit Zone(const ProfilePlot& plot) {
        const double length = plot.distances.back();
        for (int i = 0; i <= kZonePoints; ++i) {
            const double angle = kHalfTurn * i / kZonePoints;
            const double share = (1.0 - std::cos(angle)) / 2.0;
            const double sight = plot.startAntenna + (plot.endAntenna - plot.startAntenna) * share;
            const double radius = plot.fresnelRadius * std::sin(angle);
            distances.push_back(length * share);
            middle.push_back(sight);
            upper.push_back(sight + radius);
            lower.push_back(sight - radius);
            clear.push_back(sight - plot.clearRatio * radius);
        }
    }

    std::vector<double> distances;
    std::vector<double> middle;
    std::vector<double> upper;
    std::vector<double> lower;
    std::vector<double> clear;  // the lower edge of the part that has to be clear
};

ValueRange heightsOf(const ProfilePlot& plot, const Zone& zone) {
    double low = *std::min_element(zone.lower.begin(), zone.lower.end());
    double high = *std::max_element(zone.upper.begin(), zone.upper.end());
    for (const double height : plot.ground) {
        if (std::isfinite(height)) {
            low = std::min(low, height);
            high = std::max(high, height);
        }
    }
    return {low, high};
}

/// From the antenna down to the ground, where that was measured.
void drawMast(QPainter& painter, const PlotFrame& frame, double distance, double ground,
              double antenna) {
    const QPointF top(frame.x(distance), frame.y(antenna));
    painter.setPen(QPen(kMast, 2.0));
    if (std::isfinite(ground)) {
        painter.drawLine(top, QPointF(top.x(), frame.y(ground)));
    }
    painter.setBrush(kMast);
    painter.drawEllipse(top, 3.0, 3.0);
}

void drawMark(QPainter& painter, const PlotFrame& frame, const ProfilePlot::Mark& mark) {
    const double x = frame.x(mark.distance);
    painter.setPen(QPen(kLeast, 1.0, Qt::DashLine));
    painter.drawLine(QPointF(sharp(x), frame.area().top()),
                     QPointF(sharp(x), frame.area().bottom()));
    painter.setPen(QPen(kLeast, 3.0));
    painter.drawLine(QPointF(x, frame.y(mark.ground)), QPointF(x, frame.y(mark.lineOfSight)));
    painter.setFont(fontOf(13, true));
    const QString label = qtText(mark.label);
    const double width = QFontMetricsF(painter.font()).horizontalAdvance(label) + 4.0;
    const double left =
        std::clamp(x - width / 2.0, frame.area().left(),
                   std::max(frame.area().left(), frame.size().width() - 4.0 - width));
    painter.drawText(QRectF(left, frame.top(), width, kMarkRow), Qt::AlignCenter, label);
}

void paint(QPainter& painter, const ProfilePlot& plot) {
    const Zone zone(plot);
    PlotFrame frame({plot.size, std::nullopt}, {{0.0, plot.distances.back()}, kDistanceDigits},
                    {heightsOf(plot, zone), kHeightDigits}, {kGround, kSight, kZone, kClear});
    frame.leaveAbove(kMarkRow);
    frame.drawTitle(painter, qtText(plot.title));
    frame.drawLegend(painter);
    frame.drawAxes(painter, QStringLiteral("distance in m"), QStringLiteral("height in m"));

    const Curves ground(plot.distances, {}, frame);
    const Curves sight(zone.distances, {}, frame);
    std::vector<double> bottom(plot.ground);
    for (double& height : bottom) {
        height = std::isfinite(height) ? frame.lowest() : height;
    }
    ground.fillBetween(painter, plot.ground, bottom, kGroundFill);
    sight.fillBetween(painter, zone.upper, zone.lower, kZoneFill);
    ground.drawLine(painter, plot.ground, kGround);
    sight.drawLine(painter, zone.upper, kZone);
    sight.drawLine(painter, zone.lower, kZone);
    sight.drawLine(painter, zone.clear, kClear);
    sight.drawLine(painter, zone.middle, kSight);
    drawMast(painter, frame, 0.0, plot.ground.front(), plot.startAntenna);
    drawMast(painter, frame, plot.distances.back(), plot.ground.back(), plot.endAntenna);
    if (plot.mark) {
        drawMark(painter, frame, *plot.mark);
    }
}

}  // namespace

Drawing drawingOf(ProfilePlot plot) {
    Drawing drawing = {plot.size, plot.title, {}};
    drawing.paint = [plot = std::move(plot)](QPainter& painter) { paint(painter, plot); };
    return drawing;
}

}  // namespace rfu
