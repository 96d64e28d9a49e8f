#pragma once

#include <QColor>
#include <QPointF>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

#include "analysis/plots/waterfallStrips.h"
#include "analysis/statistics/traceHistory.h"
#include "qml/views/SpectrumItem.h"
#include "qml/views/rowLabels.h"
#include "qml/views/waterfallNode.h"

namespace rfu::qml {

/// The levels of the traces over frequency and time as colours, the newest trace on top.
///
///     TraceModel { id: sweeps }
///     WaterfallView { trace: sweeps; palette: "magma"; minLevel: -110; maxLevel: -30 }
///
/// A pixel shows the highest level of its points. Levels are kept and coloured when they are drawn, so that
/// palette and range may change afterwards. What was not measured, and what lies between two bands, is
/// transparent.
///
/// The rows that are shown stay where they are while the view is paused or scrolled back, until the trace
/// keeps them no longer and the frequencies change. Page Up and Page Down scroll, with the gestures of
/// SpectrumItem.
class WaterfallView : public SpectrumItem {
    Q_OBJECT
    /// The name of the palette, one of `palettes`; "viridis" at first. Any other name is coloured like that.
    Q_PROPERTY(QString palette READ palette WRITE setPalette NOTIFY paletteChanged)
    /// The palettes. Except for turbo, equal steps of the level look equally large.
    Q_PROPERTY(QStringList palettes READ palettes CONSTANT)
    /// The level of the palette's lowest colour, in dBm, clamped to -1000 and 1000. NaN, as at first, for one
    /// that follows from the levels shown: a multiple of 5 dB that stays for as long as it suits them.
    Q_PROPERTY(double minLevel READ minLevel WRITE setMinLevel NOTIFY minLevelChanged)
    /// The level of the palette's highest colour, otherwise as `minLevel`.
    Q_PROPERTY(double maxLevel READ maxLevel WRITE setMaxLevel NOTIFY maxLevelChanged)
    /// The level of the lowest colour at present, in dBm: `minLevel`, or what it follows from. NaN while that is
    /// not known.
    Q_PROPERTY(double lowestLevel READ lowestLevel NOTIFY lowestLevelChanged)
    /// The level of the highest colour at present, otherwise as `lowestLevel`.
    Q_PROPERTY(double highestLevel READ highestLevel NOTIFY highestLevelChanged)
    /// Whether the rows shown stay while new ones come. False at first, and again when the trace is cleared. Written
    /// false, the newest row is shown.
    Q_PROPERTY(bool paused READ isPaused WRITE setPaused NOTIFY pausedChanged)
    /// How many rows are newer than those shown. Written, it counts as far as the trace keeps rows. Above 0 it
    /// grows with each new row, as it does while the view is paused; 0, as at first, follows the newest row.
    Q_PROPERTY(int scroll READ scroll WRITE setScroll NOTIFY scrollChanged)
    /// The height of a row, in pixels from 1 to 64; 1 at first.
    Q_PROPERTY(int rowHeight READ rowHeight WRITE setRowHeight NOTIFY rowHeightChanged)
    /// When the row at the pointer was measured, as `timeAt`; empty while the pointer is elsewhere.
    Q_PROPERTY(QString cursorTime READ cursorTime NOTIFY cursorTimeChanged)
    /// The level at the pointer in dBm, as `levelAt`; NaN while the pointer is elsewhere.
    Q_PROPERTY(double cursorLevel READ cursorLevel NOTIFY cursorLevelChanged)

public:
    /// A waterfall without rows.
    WaterfallView();

    /// Fits `minLevel` and `maxLevel` to the levels shown, from their 1st to their 99.9th percentile. They stay if
    /// there are none.
    Q_INVOKABLE void autoRange();

    /// @param level in dBm
    /// @return its colour at present; transparent for NaN
    Q_INVOKABLE QColor levelColor(double level);

    /// @param y  from the top of the view
    /// @return how many rows are newer than the row there; -1 where there is none
    Q_INVOKABLE int rowAt(double y) const;
    /// @param y  from the top of the view
    /// @return when the row there was measured, as "2024-05-04 21:15:00.308", without zeros at the end of the
    ///         seconds; empty where there is no row, or the traces have no times
    Q_INVOKABLE QString timeAt(double y) const;
    /// @param x  from the left edge of the view
    /// @param y  from the top of the view
    /// @return the level that the pixel there shows, in dBm; NaN where nothing was measured
    Q_INVOKABLE double levelAt(double x, double y) const;

    /// @cond notify signals
Q_SIGNALS:
    void paletteChanged();
    void minLevelChanged();
    void maxLevelChanged();
    void lowestLevelChanged();
    void highestLevelChanged();
    void pausedChanged();
    void scrollChanged();
    void rowHeightChanged();
    void cursorTimeChanged();
    void cursorLevelChanged();
    /// @endcond

protected:
    /// @cond overridden
    void noteTraces() override;
    void noteCleared() override;
    double levelAtPoint(const QPointF& point) const override {
        return levelAt(point.x(), point.y());
    }
    void updatePolish() override;
    QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData* data) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void hoverEnterEvent(QHoverEvent* event) override;
    void hoverMoveEvent(QHoverEvent* event) override;
    void hoverLeaveEvent(QHoverEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    /// @endcond

private:
    static constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

    /// What the history holds.
    struct Counts {
        std::uint64_t generation = 0;
        std::uint64_t rows = 0;  // since it was cleared
        std::size_t kept = 0;
        std::size_t points = 0;
    };
    /// What the strips are reduced to.
    struct Reduction {
        std::uint64_t generation = 0;
        ValueRange shown = {kNone, kNone};
        int width = -1;  // device pixels
    };
    /// Numbers of rows, from the first to before the end.
    struct Rows {
        std::uint64_t first;
        std::uint64_t end;
    };

    QString palette() const { return palette_; }
    void setPalette(const QString& palette);
    static QStringList palettes();
    double minLevel() const { return minLevel_; }
    void setMinLevel(double level);
    double maxLevel() const { return maxLevel_; }
    void setMaxLevel(double level);
    double lowestLevel() const { return range_.low; }
    double highestLevel() const { return range_.high; }
    bool isPaused() const { return isPaused_; }
    void setPaused(bool isPaused);
    int scroll() const { return scroll_; }
    void setScroll(int scroll);
    int rowHeight() const { return rowHeight_; }
    void setRowHeight(int height);
    QString cursorTime() const { return cursorTime_; }
    double cursorLevel() const { return cursorLevel_; }

    bool isHeld() const { return isPaused_ || scroll_ > 0; }
    int deviceRowHeight() const;
    int rowsOfPlot() const;
    Rows shownRows() const;
    std::optional<std::uint64_t> rowThere(double y) const;
    QString timeOf(std::uint64_t row) const;

    void look();
    void restart(bool hadRows);
    void moveTo(int scroll);
    void takeRows();
    void reduceRows(const TraceHistory& history);
    void chooseRange();
    const LevelColors& colors();
    std::vector<RowLabel> timeLabels() const;
    std::vector<RowLabel> numberLabels() const;
    void writeLabels();
    std::vector<WaterfallNode::Line> lines() const;
    std::vector<WaterfallNode::Strip> placedStrips() const;
    void moveCursor(const std::optional<QPointF>& point);
    void tellCursor();

    QString palette_;
    double minLevel_ = kNone;
    double maxLevel_ = kNone;
    LevelRange range_ = {kNone, kNone};  // in use
    std::optional<LevelRange> steady_;   // where it follows from the levels
    std::uint64_t rowsBeforeRange_ = 1;  // new ones, until the levels are looked at again
    std::uint64_t newRows_ = 0;          // since then
    bool isPaused_ = false;
    int scroll_ = 0;
    int rowHeight_ = 1;
    std::optional<QPointF> pointer_;
    QString cursorTime_;
    double cursorLevel_ = kNone;

    const TraceModel* lookedAt_ = nullptr;
    Counts counts_;          // when it was looked at
    std::uint64_t end_ = 0;  // the number behind the row on top
    WaterfallStrips strips_;
    Reduction reduction_;
    std::vector<PackedLevel> row_;  // at hand
    bool isColoured_ = false;       // by palette and range in use
    RowLabels labels_;
};

}  // namespace rfu::qml
