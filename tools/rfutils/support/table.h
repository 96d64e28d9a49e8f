#pragma once

#include <QString>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include "support/format.h"

namespace rfu::command {

/// A missing value in text format.
inline constexpr std::string_view kMissingText = "-";

/// The value of a cell, or none. Columns return the value itself, which converts to a cell.
///  - text: flags as yes and no, control characters as "\x1b" or "\n", a missing value as "-";
///  - CSV: the shortest text that reads back to the same number; a missing value is empty;
///  - JSON: the same; infinities, NaN and missing values are null, invalid UTF-8 becomes U+FFFD.
class Cell {
public:
    Cell() = default;
    Cell(bool value) : value_(value) {}
    template <typename Integer, typename = std::enable_if_t<std::is_integral_v<Integer>>>
    Cell(Integer value) : value_(static_cast<long long>(value)) {}
    /// @param shown its text in text format; empty for the shortest one
    Cell(double value, std::string shown = {}) : value_(value), shown_(std::move(shown)) {}
    /// A single-precision number by its shortest decimal: 0.1F is 0.1.
    Cell(float value);
    Cell(const char* text) : value_(std::string(text)) {}
    Cell(std::string_view text) : value_(std::string(text)) {}
    Cell(std::string text) : value_(std::move(text)) {}
    Cell(const QString& text) : Cell(text.toStdString()) {}
    Cell(QStringView text) : Cell(text.toString()) {}
    template <typename T>
    Cell(const std::optional<T>& value) {
        if (value) {
            *this = Cell(*value);
        }
    }

    std::string in(Format format) const;
    bool isNumber() const {
        return std::holds_alternative<long long>(value_) || std::holds_alternative<double>(value_);
    }

private:
    std::variant<std::monostate, bool, long long, double, std::string> value_;
    std::string shown_;
};

/// A number with a fixed count of decimals in text format.
Cell withDecimals(const std::optional<double>& value, int decimals);
/// A number that text format rounds to six significant digits or to a whole number.
Cell rounded(const std::optional<double>& value);
/// An empty text is a missing value.
Cell textOrNone(std::string text);

/// Writes rows of cells to standardOutput():
///  - text: columns aligned, a heading line first; cells of more than kMaxCellWidth columns are
///    shortened with a note, so that one of them does not widen every row. Spare columns are left
///    out with a note where the table would be wider than kMaxWidth;
///  - CSV: a header line;
///  - JSON: an array with one object per line, keys in column order.
/// CSV and JSON rows are written as they come, text at the end, when all widths are known.
class RowWriter {
public:
    static constexpr std::size_t kMaxCellWidth = 80;
    static constexpr std::size_t kMaxWidth = 80;

    /// @param spare of each column 0, or its place in the order in which columns are left out
    RowWriter(Format format, std::vector<std::string> names, std::vector<int> spare = {});

    /// @param cells as many as there are names
    void add(const std::vector<Cell>& cells);

    /// Writes the rows so far in text format too. Later rows get no heading and are at least as wide.
    void writeRows();

    /// Ends the table; nothing may follow.
    void finish();

private:
    void leaveOutSpareColumns();

    struct ShownCell {
        std::string text;
        bool alignRight;
    };

    Format format_;
    std::vector<std::string> names_;
    std::vector<int> spare_;
    bool firstRow_ = true;
    bool hasShortened_ = false;
    // Text format only.
    std::vector<ShownCell> cells_;
    std::vector<std::size_t> widths_;
    std::vector<bool> alignRight_;
    std::vector<bool> isLeftOut_;
};

/// A column of a table: its name, and its cell of a row.
template <typename Row>
struct Column {
    const char* name;
    std::function<Cell(const Row& row)> cell;
    bool isShown = true;
    int spare = 0;  // see RowWriter
};

template <typename Row>
class Table {
public:
    Table(Format format, std::vector<Column<Row>> columns)
        : columns_(shown(std::move(columns))),
          writer_(format, namesOf(columns_), spareOf(columns_)) {}

    void add(const Row& row) {
        cells_.clear();
        for (const Column<Row>& column : columns_) {
            cells_.push_back(column.cell(row));
        }
        writer_.add(cells_);
    }
    void writeRows() { writer_.writeRows(); }
    void finish() { writer_.finish(); }

private:
    static std::vector<Column<Row>> shown(std::vector<Column<Row>> columns) {
        std::vector<Column<Row>> result;
        for (Column<Row>& column : columns) {
            if (column.isShown) {
                result.push_back(std::move(column));
            }
        }
        return result;
    }
    static std::vector<std::string> namesOf(const std::vector<Column<Row>>& columns) {
        std::vector<std::string> names;
        names.reserve(columns.size());
        for (const Column<Row>& column : columns) {
            names.emplace_back(column.name);
        }
        return names;
    }
    static std::vector<int> spareOf(const std::vector<Column<Row>>& columns) {
        std::vector<int> spare;
        spare.reserve(columns.size());
        for (const Column<Row>& column : columns) {
            spare.push_back(column.spare);
        }
        return spare;
    }

    std::vector<Column<Row>> columns_;
    std::vector<Cell> cells_;
    RowWriter writer_;
};

struct Field {
    const char* name;
    Cell cell;
};

/// Writes an object to standardOutput(): a line per field in text, a table of one row in CSV.
void writeObject(Format format, const std::vector<Field>& fields);

}  // namespace rfu::command
