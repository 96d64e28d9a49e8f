#pragma once

#include <QColor>
#include <QImage>
#include <QString>
#include <QTimer>
#include <QUrl>
#include <QVariantList>

#include <array>
#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

#include "analysis/plots/columnSpans.h"
#include "analysis/plots/unitScale.h"
#include "analysis/statistics/limitMask.h"
#include "qml/support/backgroundRead.h"
#include "qml/views/SpectrumItem.h"
#include "qml/views/bars.h"
#include "qml/views/overlayNode.h"
#include "qml/views/plotLabels.h"

namespace rfu::qml {

/// The levels of a trace over frequency: the newest trace, the holds and the average, with a limit line or a mask.
///
///     TraceView {
///         trace: sweeps
///         unit: "dBuV/m"
///         gain: 2
///         limit: -40
///         onVerdictChanged: light.color = verdict === TraceView.Fail ? "red" : "green"
///     }
///
/// A pixel column with several points shows their range, so that no peak is missed. What was not measured, and the steps
/// between bands, are gaps. A point stands where its bin begins, as in recordings. All levels of the properties are in
/// dBm; the axis has round numbers of `unit`, on a logarithmic axis where that is linear. A field unit takes the
/// frequency of each point, as `rfutils trace` does, and the axis is right for all of them.
class TraceView : public SpectrumItem {
    Q_OBJECT
    /// The unit of the axis, one of RfUnits::levelUnits and RfUnits::fieldUnits; "dBm" at first. Any other, and a
    /// field unit without frequencies, gives "dBm".
    Q_PROPERTY(QString unit MEMBER unit_ NOTIFY unitChanged)
    /// The antenna's gain in dBi, for field units. 0 at first.
    Q_PROPERTY(double gain MEMBER gain_ NOTIFY gainChanged)
    /// The unit that the axis has now.
    Q_PROPERTY(QString shownUnit READ shownUnit NOTIFY shownUnitChanged)
    /// The level at the lower edge of the plot, in dBm; in a field unit that at the highest frequency of the trace.
    /// NaN, as at first, chooses a range that shows all levels and changes in steps of 10 dB.
    Q_PROPERTY(double minLevel MEMBER minLevel_ NOTIFY minLevelChanged)
    /// The level at the upper edge, otherwise as `minLevel`.
    Q_PROPERTY(double maxLevel MEMBER maxLevel_ NOTIFY maxLevelChanged)
    /// The level at the lower edge now, in dBm.
    Q_PROPERTY(double shownMinLevel READ shownMinLevel NOTIFY shownLevelsChanged)
    /// The level at the upper edge now, in dBm.
    Q_PROPERTY(double shownMaxLevel READ shownMaxLevel NOTIFY shownLevelsChanged)

    /// Whether the newest trace is drawn. True at first.
    Q_PROPERTY(bool showNewest MEMBER showsNewest_ NOTIFY showNewestChanged)
    /// Whether the maximum hold is drawn. False at first.
    Q_PROPERTY(bool showMaximum MEMBER showsMaximum_ NOTIFY showMaximumChanged)
    /// Whether the minimum hold is drawn. False at first.
    Q_PROPERTY(bool showMinimum MEMBER showsMinimum_ NOTIFY showMinimumChanged)
    /// Whether the average is drawn. False at first.
    Q_PROPERTY(bool showAverage MEMBER showsAverage_ NOTIFY showAverageChanged)
    /// Whether the area between maximum and minimum hold is filled. False at first.
    Q_PROPERTY(bool showFill MEMBER showsFill_ NOTIFY showFillChanged)
    /// How thick lines are, in logical pixels; 1 at first.
    Q_PROPERTY(double lineWidth MEMBER lineWidth_ NOTIFY lineWidthChanged)
    /// Of the newest trace; blue at first.
    Q_PROPERTY(QColor newestColor MEMBER newestColor_ NOTIFY newestColorChanged)
    /// Of the maximum hold; red at first.
    Q_PROPERTY(QColor maximumColor MEMBER maximumColor_ NOTIFY maximumColorChanged)
    /// Of the minimum hold; green at first.
    Q_PROPERTY(QColor minimumColor MEMBER minimumColor_ NOTIFY minimumColorChanged)
    /// Of the average; violet at first.
    Q_PROPERTY(QColor averageColor MEMBER averageColor_ NOTIFY averageColorChanged)
    /// Of the area between the holds; translucent blue at first.
    Q_PROPERTY(QColor fillColor MEMBER fillColor_ NOTIFY fillColorChanged)
    /// Of limit and mask; dark red at first.
    Q_PROPERTY(QColor limitColor MEMBER limitColor_ NOTIFY limitColorChanged)

    /// An upper limit at all frequencies, in dBm. NaN, as at first, for none.
    Q_PROPERTY(double limit MEMBER limit_ NOTIFY limitChanged)
    /// Limits over frequency: a CSV file with lines of frequency, upper limit, lower limit, as `rfutils mask` reads it. It
    /// is read on another thread; empty, as at first, for none.
    Q_PROPERTY(QUrl mask READ mask WRITE setMask NOTIFY maskChanged)
    /// The unit of the limits in the file; "dBm" at first. Any that `unit` takes.
    Q_PROPERTY(QString maskUnit READ maskUnit WRITE setMaskUnit NOTIFY maskUnitChanged)
    /// How far the reading of the mask is.
    Q_PROPERTY(Status status READ status NOTIFY statusChanged)
    /// Why the mask could not be read, in a line that names the file; else empty.
    Q_PROPERTY(QString errorString READ errorString NOTIFY errorStringChanged)
    /// What is judged of each point; TraceModel.Maximum at first.
    Q_PROPERTY(rfu::qml::TraceModel::Series judged MEMBER judged_ NOTIFY judgedChanged)
    /// Whether the points keep to limit and mask.
    Q_PROPERTY(Verdict verdict READ verdict NOTIFY verdictChanged)
    /// The runs of neighbouring points beyond the limits, by frequency; first those of the mask. Each has `from` and
    /// `to`, the first and the last frequency of the run, `frequency` of the point farthest beyond, its `level` and its
    /// `limit` in dBm, its `margin` in dB, below 0, and `upper`, whether it is an upper limit. Without frequencies
    /// numbers of points.
    Q_PROPERTY(QVariantList violations READ violations NOTIFY violationsChanged)

    /// The level of the newest trace at the cursor, in dBm: the highest of the points in its pixel, or that of the nearest
    /// point. NaN where it was not measured.
    Q_PROPERTY(double cursorLevel READ cursorLevel NOTIFY cursorLevelChanged)

public:
    /// How far the reading of the mask is.
    enum Status {
        Null,     ///< there is no file to read
        Ready,    ///< it has been read
        Loading,  ///< it is being read
        Error     ///< it cannot be read, see `errorString`
    };
    Q_ENUM(Status)

    /// Whether all points keep to the limits.
    enum Verdict {
        None,  ///< no point has both a level and a limit
        Pass,  ///< all that do keep to it
        Fail   ///< some do not
    };
    Q_ENUM(Verdict)

    /// A view without trace.
    TraceView();

    /// @param y          from the upper edge of the view
    /// @param frequency  in MHz, for field units; without it that at the end of the trace
    /// @return the level there in dBm; NaN beside the plot
    Q_INVOKABLE double levelAt(double y,
                               double frequency = std::numeric_limits<double>::quiet_NaN()) const;
    /// @param level      in dBm
    /// @param frequency  in MHz, for field units; without it that at the end of the trace
    /// @return its place from the upper edge of the view, which may be beside the plot; NaN where there is no room
    Q_INVOKABLE double yOf(double level,
                           double frequency = std::numeric_limits<double>::quiet_NaN()) const;

    /// @cond notify signals
Q_SIGNALS:
    void unitChanged();
    void gainChanged();
    void shownUnitChanged();
    void minLevelChanged();
    void maxLevelChanged();
    void shownLevelsChanged();
    void showNewestChanged();
    void showMaximumChanged();
    void showMinimumChanged();
    void showAverageChanged();
    void showFillChanged();
    void lineWidthChanged();
    void newestColorChanged();
    void maximumColorChanged();
    void minimumColorChanged();
    void averageColorChanged();
    void fillColorChanged();
    void limitColorChanged();
    void limitChanged();
    void maskChanged();
    void maskUnitChanged();
    void statusChanged();
    void errorStringChanged();
    void judgedChanged();
    void verdictChanged();
    void violationsChanged();
    void cursorLevelChanged();
    /// @endcond

protected:
    /// @cond for the base
    void refresh() override;
    void noteOverlay() override;
    void noteCleared() override;
    double levelAtPoint(const QPointF& point) const override;
    void updatePolish() override;
    QSGNode* updatePaintNode(QSGNode* old, UpdatePaintNodeData* data) override;
    /// @endcond

private:
    static constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
    static constexpr std::size_t kSeries = 4;

    /// What is shown of the trace; levels in dBm, NaN where they were not measured.
    struct Shown {
        std::uint64_t generation = 0;
        bool hasFrequencies = false;
        FrequencyAxis axis;          // without frequencies the points are their numbers
        std::vector<double> places;  // of the points, ascending
        std::array<std::vector<double>, kSeries> levels;  // by TraceModel::Series
    };
    /// The points on the plot and one on each side of it.
    struct Visible {
        std::size_t first = 0;
        std::vector<double> x;              // in device pixels from the left edge of the plot
        std::vector<ColumnPoints> columns;  // of x
        std::vector<std::size_t> breaks;    // in x
    };
    /// Unit, antenna gain and axis of a scale.
    struct ScaleKey {
        const Unit* unit = nullptr;
        double gain = 0.0;
        std::uint64_t generation = 0;
    };
    /// How the points of the trace are shown in a unit.
    struct PointScale {
        ScaleKey key;
        UnitScale common;

        /// In dB, to the scale that all points share.
        double offsetAt(double frequency) const;
        double offsetOf(std::size_t point) const {
            return common.offsets.empty() ? 0.0 : common.offsets[point];
        }
    };
    /// A violation by frequencies; level in dBm.
    struct Found {
        double from;
        double to;
        double frequency;
        double level;
        double margin;  // dB
        bool isUpper;

        bool operator==(const Found& other) const {
            return from == other.from && to == other.to && frequency == other.frequency &&
                   level == other.level && margin == other.margin && isUpper == other.isUpper;
        }
    };

    QString shownUnit() const { return shownUnit_; }
    double shownMinLevel() const { return levels_.low; }
    double shownMaxLevel() const { return levels_.high; }
    QUrl mask() const { return maskFile_; }
    void setMask(const QUrl& file);
    QString maskUnit() const { return maskUnit_; }
    void setMaskUnit(const QString& unit);
    Status status() const { return status_; }
    QString errorString() const { return error_; }
    Verdict verdict() const { return verdict_; }
    QVariantList violations() const;
    double cursorLevel() const { return cursorLevel_; }

    void readMask();
    void holdMask(std::shared_ptr<const LimitMask> mask);
    void finishMask(Status status, const QString& error);

    bool isShown(TraceModel::Series series) const;
    const std::vector<double>& levelsOf(TraceModel::Series series) const;
    void readTrace();
    void chooseScale();
    void arrange(PointScale& scale, const QString& unit) const;
    void chooseLevels();
    void judge();
    void judge(std::vector<Found>& found, std::size_t& judged, const LimitMask& limits,
               const PointScale* scale) const;

    void settleSoon();
    void settle();
    void draw();
    PlotFace faceNow() const;
    void findVisible(const QRect& plot);
    void appendCurves(const QRect& plot);
    void appendLimits(const QRect& plot);
    void appendLine(const std::vector<ColumnRange>& ranges, int rows, const QColor& color);
    std::vector<ColumnRange> rangesOf(TraceModel::Series series, const QRect& plot) const;
    /// @param level in dBm at a frequency
    template <typename Level>
    std::vector<ColumnRange> rangesOfLine(const QRect& plot, Level level) const;
    double row(double level, const QRect& plot) const;
    int stroke() const;
    bool needsImage() const;
    void paintCurves(const QSize& size);

    double levelAtCursor() const;
    Overlay overlayNow() const;

    QString unit_ = QStringLiteral("dBm");
    double gain_ = 0.0;
    double minLevel_ = kNone;
    double maxLevel_ = kNone;
    bool showsNewest_ = true;
    bool showsMaximum_ = false;
    bool showsMinimum_ = false;
    bool showsAverage_ = false;
    bool showsFill_ = false;
    double lineWidth_ = 1.0;
    QColor newestColor_;
    QColor maximumColor_;
    QColor minimumColor_;
    QColor averageColor_;
    QColor fillColor_;
    QColor limitColor_;
    double limit_ = kNone;
    TraceModel::Series judged_ = TraceModel::Maximum;
    QUrl maskFile_;
    QString maskUnit_ = QStringLiteral("dBm");
    Status status_ = Null;
    QString error_;
    std::shared_ptr<const LimitMask> mask_;  // null for none
    BackgroundRead<LimitMask> reading_;

    bool isStale_ = true;  // more than the overlay
    QTimer settling_;      // runs until settle()
    bool isDrawn_ = false;
    Shown shown_;
    PointScale scale_;
    PointScale maskScale_;
    QString shownUnit_ = QStringLiteral("dBm");
    std::optional<LevelRange> automatic_;
    LevelRange levels_ = {-100.0, 0.0};  // at the edges of the plot
    Verdict verdict_ = None;
    std::vector<Found> found_;
    double cursorLevel_ = kNone;

    // For updatePaintNode()
    Visible visible_;
    PlotFace face_;
    QImage picture_;  // of the face
    bool isPictureNew_ = false;
    std::vector<Bar> bars_;
    bool areBarsNew_ = false;
    std::array<QImage, 2> curves_;  // the bars where geometry is not drawn, in turns
    std::size_t curvesNow_ = 0;
    Overlay overlay_;
};

}  // namespace rfu::qml
