#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "support/format.h"
#include "support/output.h"

namespace rfu::command {

/// What stands in text format where there is no value.
inline constexpr std::string_view kMissingText = "-";

/// Rows of named columns in the format that was asked for:
///  - text: columns aligned for people, a heading line first; missing cells read "-";
///  - CSV: a header line, quoted where a cell needs it; missing cells are empty;
///  - JSON: an array with one object per line, keys in column order; missing cells are null.
/// CSV and JSON carry numbers in the shortest text that reads back to the same number; JSON has no
/// infinities and NaN, they are null there.
/// Whole CSV and JSON rows go out as they come, text waits for finish() to know its widths.
class TableWriter {
public:
    enum class Shape {
        Rows,   ///< a table of any number of rows
        Object  ///< one row: text shows "name  value" lines, JSON a bare object
    };

    TableWriter(Output& output, Format format, std::vector<std::string> columns,
                Shape shape = Shape::Rows);

    // The cells of a row in column order; a row is complete with its last cell.
    /// UTF-8; broken sequences become U+FFFD in JSON, control characters "\x1b" or "\n" in text.
    TableWriter& text(std::string_view value);
    /// As text(), with the empty text as no value.
    TableWriter& textOrNone(std::string_view value);
    /// @param decimals in text format; negative: the shortest text
    TableWriter& number(double value, int decimals = -1);
    /// @param shown in text format, e.g. with a unit; aligned like a number
    TableWriter& number(double value, std::string_view shown);
    TableWriter& integer(long long value);
    TableWriter& flag(bool value);
    /// No value: not measured, not known.
    TableWriter& none();

    /// Writes the rows so far, also in text format, where the rows that follow get no heading and
    /// at least the widths of these.
    void writeRows();

    /// Ends the table; nothing may follow.
    void finish();

private:
    struct Cell {
        std::string text;
        bool alignRight;
    };

    void startCell();
    void endCell();
    void endRow();
    void raw(std::string_view text, std::string_view shown, bool alignRight);
    void writeObjectAsText();

    Output& output_;
    Format format_;
    Shape shape_;
    std::vector<std::string> columns_;
    std::vector<std::string> jsonKeys_;
    std::size_t column_ = 0;
    std::string row_;  // as far as it is complete; CSV and JSON only
    bool firstRow_ = true;
    // Text format only.
    std::vector<Cell> cells_;
    std::vector<std::size_t> widths_;
    std::vector<bool> alignRight_;
};

/// A text as a JSON string, with its quotes.
std::string jsonString(std::string_view text);
/// A text as a CSV cell, quoted where it holds a comma, a quote or a line end.
std::string csvCell(std::string_view text);

}  // namespace rfu::command
