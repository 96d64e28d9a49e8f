#include "support/table.h"

#include <QString>
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <utility>

#include "analysis/support/numbers.h"
#include "analysis/support/singles.h"
#include "support/errors.h"
#include "support/output.h"
#include "support/text.h"

namespace rfu::command {

namespace {

constexpr std::string_view kColumnGap = "  ";

std::string padded(std::string_view text, std::size_t width, bool alignRight) {
    const std::string fill(width - std::min(width, widthOf(text)), ' ');
    return alignRight ? fill + std::string(text) : std::string(text) + fill;
}

/// A line without the blanks at its end.
void writeTrimmed(std::string line) {
    line.erase(line.find_last_not_of(' ') + 1);
    standardOutput().write(line + '\n');
}

/// Quoted where it holds a comma, a quote or a line end.
std::string csvText(std::string_view text) {
    std::string valid = validUtf8(text);
    if (valid.find_first_of("\",\n\r") == std::string::npos) {
        return valid;
    }
    std::string result = "\"";
    for (const char c : valid) {
        result.append(c == '"' ? 2 : 1, c);
    }
    return result + '"';
}

std::string numberText(double value) {
    return std::string(ShortestText(value).view());
}

void writeCsvRow(const std::vector<Cell>& cells) {
    std::string row;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        row += (i == 0 ? "" : ",") + cells[i].in(Format::Csv);
    }
    standardOutput().write(row + '\n');
}

std::string jsonObject(const std::vector<std::string>& names, const std::vector<Cell>& cells) {
    std::string object = "{";
    for (std::size_t i = 0; i < cells.size(); ++i) {
        object += (i == 0 ? "" : ", ") + jsonString(names[i]) + ": " + cells[i].in(Format::Json);
    }
    return object + '}';
}

}  // namespace

Cell::Cell(float value) : Cell(decimalOf(value), textOf(value)) {}

std::string Cell::in(Format format) const {
    const bool isText = format == Format::Text;
    const bool isJson = format == Format::Json;
    if (const auto* const flag = std::get_if<bool>(&value_)) {
        return isText ? (*flag ? "yes" : "no") : (*flag ? "true" : "false");
    }
    if (const auto* const integer = std::get_if<long long>(&value_)) {
        return std::to_string(*integer);
    }
    if (const auto* const number = std::get_if<double>(&value_)) {
        return isText && !shown_.empty()           ? shown_
               : isJson && !std::isfinite(*number) ? "null"
                                                   : numberText(*number);
    }
    if (const auto* const text = std::get_if<std::string>(&value_)) {
        return isText ? printable(*text) : isJson ? jsonString(*text) : csvText(*text);
    }
    return isText ? std::string(kMissingText) : isJson ? "null" : "";
}

Cell withDecimals(const std::optional<double>& value, int decimals) {
    return value ? Cell(*value, fixedText(*value, decimals)) : Cell();
}

Cell rounded(const std::optional<double>& value) {
    return value ? Cell(*value, readableText(*value)) : Cell();
}

Cell textOrNone(std::string text) {
    return text.empty() ? Cell() : Cell(std::move(text));
}

RowWriter::RowWriter(Format format, std::vector<std::string> names, std::vector<int> spare)
    : format_(format), names_(std::move(names)), spare_(std::move(spare)) {
    spare_.resize(names_.size(), 0);
    isLeftOut_.resize(names_.size(), false);
    if (format_ == Format::Csv) {
        writeCsvRow({names_.begin(), names_.end()});
    } else if (format_ == Format::Json) {
        standardOutput().open("[", "]\n");
    }
}

void RowWriter::add(const std::vector<Cell>& cells) {
    Output& output = standardOutput();
    if (format_ == Format::Csv) {
        writeCsvRow(cells);
    } else if (format_ == Format::Json) {
        output.write(firstRow_ ? "\n  " : ",\n  ");
        output.write(jsonObject(names_, cells));
        output.setEnding("\n]\n");
        firstRow_ = false;
    } else {
        for (const Cell& cell : cells) {
            const std::string text = cell.in(format_);
            cells_.push_back({shortened(text, kMaxCellWidth), cell.isNumber()});
            hasShortened_ = hasShortened_ || cells_.back().text != text;
        }
    }
}

void RowWriter::leaveOutSpareColumns() {
    const auto width = [this] {
        std::size_t sum = 0;
        for (std::size_t i = 0; i < names_.size(); ++i) {
            sum += isLeftOut_[i] ? 0 : widths_[i] + kColumnGap.size();
        }
        return sum - kColumnGap.size();
    };
    for (int place = 1; width() > kMaxWidth; ++place) {
        const auto next = std::find(spare_.begin(), spare_.end(), place);
        if (next == spare_.end()) {
            return;
        }
        isLeftOut_[static_cast<std::size_t>(next - spare_.begin())] = true;
    }
}

void RowWriter::writeRows() {
    if (format_ != Format::Text) {
        return;  // they are out already
    }
    const bool needsHeading = widths_.empty();
    if (needsHeading) {
        std::transform(names_.begin(), names_.end(), std::back_inserter(widths_), widthOf);
        alignRight_.resize(names_.size(), false);
    }
    for (std::size_t i = 0; i < cells_.size(); ++i) {
        const std::size_t column = i % names_.size();
        widths_[column] = std::max(widths_[column], widthOf(cells_[i].text));
        // A heading stands over the side on which its values are aligned.
        if (cells_[i].alignRight && cells_[i].text != kMissingText) {
            alignRight_[column] = true;
        }
    }
    if (needsHeading) {
        leaveOutSpareColumns();
    }
    std::string line;
    const auto addCell = [&](std::size_t column, std::string_view text) {
        if (!isLeftOut_[column]) {
            line += padded(text, widths_[column], alignRight_[column]);
            line += kColumnGap;
        }
        if (column + 1 == names_.size()) {
            writeTrimmed(line);
            line.clear();
        }
    };
    for (std::size_t column = 0; needsHeading && column < names_.size(); ++column) {
        addCell(column, names_[column]);
    }
    for (std::size_t i = 0; i < cells_.size(); ++i) {
        addCell(i % names_.size(), cells_[i].text);
    }
    cells_.clear();
}

void RowWriter::finish() {
    if (format_ == Format::Json) {
        standardOutput().close();
    } else {
        writeRows();
        if (hasShortened_) {
            standardOutput().flush();  // the note follows the table
            printNote("cells of more than " + std::to_string(kMaxCellWidth) +
                      " characters are shortened; --format csv has them whole");
        }
        std::string leftOut;
        for (std::size_t i = 0; i < names_.size(); ++i) {
            leftOut += isLeftOut_[i] ? (leftOut.empty() ? "" : ", ") + names_[i] : "";
        }
        if (!leftOut.empty()) {
            standardOutput().flush();
            printNote("left out to fit " + std::to_string(kMaxWidth) + " columns: " + leftOut +
                      "; --format csv has all");
        }
    }
}

void writeObject(Format format, const std::vector<Field>& fields) {
    std::vector<std::string> names;
    std::vector<Cell> cells;
    std::size_t width = 0;
    for (const Field& field : fields) {
        names.emplace_back(field.name);
        cells.push_back(field.cell);
        width = std::max(width, widthOf(field.name));
    }
    if (format == Format::Csv) {
        RowWriter(format, names).add(cells);
    } else if (format == Format::Json) {
        standardOutput().write(jsonObject(names, cells) + '\n');
    } else {
        for (const Field& field : fields) {
            writeTrimmed(padded(field.name, width, false).append(kColumnGap) +
                         field.cell.in(format));
        }
    }
}

}  // namespace rfu::command
