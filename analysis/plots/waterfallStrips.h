#pragma once

#include <QImage>
#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <vector>

#include "analysis/plots/decimation.h"
#include "analysis/plots/levelColors.h"
#include "analysis/plots/palette.h"
#include "analysis/statistics/levelHistogram.h"
#include "analysis/statistics/packedLevel.h"

namespace rfu {

/// The rows of a waterfall that a view shows, reduced to its columns by their maximum, as pictures of 64
/// rows each. Levels are kept and coloured when a picture is asked for: a new row changes one picture,
/// and another palette or range needs no row again.
///
/// Rows have numbers that ascend with time. Strip n holds the rows from 64 n on, the newest on top.
class WaterfallStrips {
public:
    static constexpr int kRowsOfStrip = 64;

    static std::uint64_t stripOf(std::uint64_t row) { return row / kRowsOfStrip; }
    /// The line of a row in the picture of its strip.
    static int lineOf(std::uint64_t row) {
        return kRowsOfStrip - 1 - static_cast<int>(row % kRowsOfStrip);
    }

    /// Without columns, coloured by the first palette.
    WaterfallStrips();

    /// Forgets all rows, which had other columns.
    /// @param columns the points of each column, as columnsOfView() has them
    /// @param width of the view in pixels, not negative
    void setColumns(std::vector<ColumnPoints> columns, int width);
    int width() const { return static_cast<int>(width_); }

    /// Lets all pictures be coloured again.
    /// @param range widened where it is narrower than kNarrowestRange
    void setColors(const Palette& palette, const LevelRange& range);
    const LevelColors& colors() const { return *colors_; }

    /// Forgets all rows.
    void clear() { strips_.clear(); }
    /// Forgets the strips without any of the rows from `first` to `last`.
    void keepOnly(std::uint64_t first, std::uint64_t last);

    /// @param time   of the row, as the caller counts it
    /// @param levels of all points
    void setRow(std::uint64_t row, std::int64_t time, const PackedLevel* levels);
    bool hasRow(std::uint64_t row) const;
    /// @pre the row is held
    std::int64_t time(std::uint64_t row) const;
    /// The highest level of a column; kNotMeasured where there is none, no such row or column.
    PackedLevel level(std::uint64_t row, int column) const;
    /// Of all rows that are held, as reduced.
    LevelHistogram histogram() const;

    /// The strips that hold rows, ascending.
    std::vector<std::uint64_t> strips() const;
    /// A number that differs whenever the picture of a strip does; 0 where there is none.
    std::uint64_t revision(std::uint64_t strip) const;
    /// As wide as the view and 64 rows high. What was not measured, and rows that are not held, are
    /// transparent; a picture without them is of the format RGB32, which is drawn faster. Null where there is
    /// no such strip.
    QImage picture(std::uint64_t strip);

private:
    struct Strip {
        std::vector<PackedLevel> levels;  // row by row, from the oldest on
        std::array<std::int64_t, kRowsOfStrip> times = {};
        QImage picture;
        std::uint64_t held = 0;        // one bit for each row
        std::uint64_t uncoloured = 0;  // the same
        std::uint64_t opaque = 0;      // the same
        std::uint64_t revision = 0;
    };

    static std::size_t placeOf(std::uint64_t row) { return row % kRowsOfStrip; }
    static std::uint64_t bitOf(std::uint64_t row) { return std::uint64_t{1} << placeOf(row); }
    const Strip* find(std::uint64_t strip) const;
    bool paintRow(Strip& strip, std::size_t place) const;

    std::vector<ColumnPoints> columns_;
    std::size_t width_ = 0;
    std::unique_ptr<const LevelColors> colors_;
    std::map<std::uint64_t, Strip> strips_;
    std::uint64_t lastRevision_ = 0;
};

}  // namespace rfu
