#include "support/tableWriter.h"

#include <QString>
#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

#include "analysis/support/numbers.h"
#include "support/textWidth.h"

namespace rfu::command {

namespace {

constexpr std::string_view kColumnGap = "  ";

bool isPlainAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

/// "\n", "\t" and "\r" by their letter; 0 for every other character.
char escapeLetter(unsigned code) {
    switch (code) {
        case '\n':
            return 'n';
        case '\t':
            return 't';
        case '\r':
            return 'r';
        default:
            return 0;
    }
}

/// A control character as "\n" or with its number in two hexadecimal digits behind a lead.
std::string escapedControl(unsigned code, std::string_view lead) {
    constexpr char kHex[] = "0123456789abcdef";
    if (const char letter = escapeLetter(code)) {
        return {'\\', letter};
    }
    std::string result(lead);
    result += kHex[code >> 4u];
    result += kHex[code & 0xFu];
    return result;
}

bool isAsciiControl(unsigned byte) {
    return byte < 0x20 || byte == 0x7F;
}

std::string escaped(std::string_view text) {
    std::string result = "\"";
    for (const char c : text) {
        const unsigned byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            result += '\\';
            result += c;
        } else if (isAsciiControl(byte)) {
            result += escapedControl(byte, "\\u00");
        } else {
            result += c;
        }
    }
    return result + '"';
}

/// With "\x1b" for an escape and "\n" for a line end: control characters neither break a table nor
/// steer the terminal. Those of U+0080 to U+009F do so as well; in UTF-8 they are two bytes.
std::string printable(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const unsigned byte = static_cast<unsigned char>(text[i]);
        const unsigned next = i + 1 < text.size() ? static_cast<unsigned char>(text[i + 1]) : 0u;
        if (isAsciiControl(byte)) {
            result += escapedControl(byte, "\\x");
        } else if (byte == 0xC2 && next >= 0x80 && next < 0xA0) {
            result += escapedControl(next, "\\x");
            ++i;
        } else {
            result += text[i];
        }
    }
    return result;
}

std::string padded(std::string_view text, std::size_t width, bool alignRight) {
    const std::string fill(width - std::min(width, widthOf(text)), ' ');
    return alignRight ? fill + std::string(text) : std::string(text) + fill;
}

void trimRight(std::string& line) {
    line.erase(line.find_last_not_of(' ') + 1);
}

}  // namespace

std::string jsonString(std::string_view text) {
    if (isPlainAscii(text)) {
        return escaped(text);
    }
    const auto size = static_cast<int>(text.size());
    return escaped(QString::fromUtf8(text.data(), size).toStdString());
}

std::string csvCell(std::string_view text) {
    if (text.find_first_of("\",\n\r") == std::string_view::npos) {
        return std::string(text);
    }
    std::string result = "\"";
    for (const char c : text) {
        result += c;
        if (c == '"') {
            result += c;
        }
    }
    return result + '"';
}

TableWriter::TableWriter(Output& output, Format format, std::vector<std::string> columns,
                         Shape shape)
    : output_(output), format_(format), shape_(shape), columns_(std::move(columns)) {
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        const char* const separator = i == 0 ? "" : ", ";
        jsonKeys_.push_back(separator + jsonString(columns_[i]) + ": ");
        if (format_ == Format::Csv) {
            output_.write(i == 0 ? "" : ",");
            output_.write(csvCell(columns_[i]));
        }
    }
    if (format_ == Format::Csv) {
        output_.write('\n');
    }
    if (format_ == Format::Json && shape_ == Shape::Rows) {
        output_.open("[", "]\n");
    }
}

void TableWriter::startCell() {
    if (format_ == Format::Csv && column_ > 0) {
        row_ += ',';
    }
    if (format_ == Format::Json) {
        if (column_ == 0) {
            row_ += '{';
        }
        row_ += jsonKeys_[column_];
    }
}

void TableWriter::endCell() {
    if (++column_ == columns_.size()) {
        column_ = 0;
        endRow();
    }
}

void TableWriter::endRow() {
    if (format_ == Format::Csv) {
        output_.write(row_);
        output_.write('\n');
    } else if (format_ == Format::Json) {
        if (shape_ == Shape::Rows) {
            output_.write(firstRow_ ? "\n  " : ",\n  ");
            output_.setEnding("\n]\n");
        }
        output_.write(row_);
        output_.write('}');
    }
    row_.clear();
    firstRow_ = false;
}

void TableWriter::raw(std::string_view text, std::string_view shown, bool alignRight) {
    startCell();
    if (format_ == Format::Text) {
        cells_.push_back({std::string(shown), alignRight});
    } else {
        row_ += text;
    }
    endCell();
}

TableWriter& TableWriter::text(std::string_view value) {
    switch (format_) {
        case Format::Text:
            raw({}, printable(value), false);
            break;
        case Format::Csv:
            raw(csvCell(value), {}, false);
            break;
        case Format::Json:
            raw(jsonString(value), {}, false);
            break;
    }
    return *this;
}

TableWriter& TableWriter::textOrNone(std::string_view value) {
    return value.empty() ? none() : text(value);
}

TableWriter& TableWriter::number(double value, int decimals) {
    if (format_ == Format::Text && decimals >= 0) {
        raw({}, fixedText(value, decimals), true);
    } else if (format_ == Format::Json && !std::isfinite(value)) {
        raw("null", {}, true);
    } else {
        const ShortestText shortest(value);
        raw(shortest.view(), shortest.view(), true);
    }
    return *this;
}

TableWriter& TableWriter::number(double value, std::string_view shown) {
    if (format_ != Format::Text) {
        return number(value);
    }
    raw({}, shown, true);
    return *this;
}

TableWriter& TableWriter::integer(long long value) {
    const std::string digits = std::to_string(value);
    raw(digits, digits, true);
    return *this;
}

TableWriter& TableWriter::flag(bool value) {
    raw(value ? "true" : "false", value ? "yes" : "no", false);
    return *this;
}

TableWriter& TableWriter::none() {
    raw(format_ == Format::Json ? "null" : "", kMissingText, true);
    return *this;
}

void TableWriter::writeRows() {
    if (format_ != Format::Text) {
        return;  // they are out already
    }
    const bool needsHeading = widths_.empty();
    if (needsHeading) {
        std::transform(columns_.begin(), columns_.end(), std::back_inserter(widths_), widthOf);
        alignRight_.resize(columns_.size(), false);
    }
    for (std::size_t i = 0; i < cells_.size(); ++i) {
        const std::size_t column = i % columns_.size();
        widths_[column] = std::max(widths_[column], widthOf(cells_[i].text));
        // A heading stands over the side on which its values are aligned.
        if (cells_[i].alignRight && cells_[i].text != kMissingText) {
            alignRight_[column] = true;
        }
    }
    std::string line;
    const auto addCell = [&](std::size_t column, std::string_view text, bool right) {
        line += column == 0 ? "" : kColumnGap;
        line += padded(text, widths_[column], right);
        if (column + 1 == columns_.size()) {
            trimRight(line);
            line += '\n';
            output_.write(line);
            line.clear();
        }
    };
    for (std::size_t column = 0; needsHeading && column < columns_.size(); ++column) {
        addCell(column, columns_[column], alignRight_[column]);
    }
    for (std::size_t i = 0; i < cells_.size(); ++i) {
        addCell(i % columns_.size(), cells_[i].text, alignRight_[i % columns_.size()]);
    }
    cells_.clear();
}

void TableWriter::writeObjectAsText() {
    std::size_t width = 0;
    for (const std::string& column : columns_) {
        width = std::max(width, widthOf(column));
    }
    for (std::size_t i = 0; i < cells_.size(); ++i) {
        std::string line = padded(columns_[i], width, false) + std::string(kColumnGap);
        line += cells_[i].text;
        trimRight(line);
        output_.write(line + '\n');
    }
}

void TableWriter::finish() {
    if (format_ == Format::Text) {
        shape_ == Shape::Rows ? writeRows() : writeObjectAsText();
    } else if (format_ == Format::Json && shape_ == Shape::Rows) {
        output_.close();
    } else if (format_ == Format::Json) {
        output_.write('\n');
    }
}

}  // namespace rfu::command
